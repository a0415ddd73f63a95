// The document records of the markers. The movable's record comes first: place, behaviour, line,
// then chained blocks with the caption, the snapped index and the caption's background. Each
// kind of marker adds its position (axes and values) after that record has closed; XML keeps the
// position in the child element "Location". Axes and the snapped series are references, bound
// after the whole document, and the values are set after them, so they land on the right axis.
#include "QyArrowMarker.h"
#include "QyMarkers.h"
#include "QyRecordMedia.h"

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;

TQyMovable* Marker(QObject* o) { return static_cast<TQyMovable*>(o); }
const TQyMovable* Marker(const QObject* o) { return static_cast<const TQyMovable*>(o); }

TQyRecordEntry Props(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Properties");
}

TQyRecordEntry Caption(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Caption").Ini("Caption." + key).InBlock(3);
}

// The parent widget the marker lies on.
TQyRecordEntry Parent() {
  return QyField("Parent", T::Reference, [](const QObject* o) { return QVariant::fromValue<QObject*>(Marker(o)->parentWidget()); },
                 [](QObject* o, const QVariant& v) {
                   if (auto* parent = qobject_cast<QWidget*>(v.value<QObject*>()); parent && parent != Marker(o)->parentWidget()) {
                     const bool shown = !Marker(o)->isHidden();
                     Marker(o)->setParent(parent);
                     Marker(o)->setVisible(shown);
                   }
                 })
      .Only(QyMedia::Stream);
}

// The keys that start a drag: a 2-byte set in a stream, an integer in text.
void WriteKeys(const QObject* o, TQyRecordMedium& m) {
  const uint keys = uint(Marker(o)->GetStartMovingKeys());
  if (m.Kind() != TKind::Stream) return m.Write("StartMovingKeys", T::Int32, keys);
  m.Write("StartMovingKeys", T::Enum, keys & 0xFF);
  m.Write("StartMovingKeys", T::Enum, keys >> 8);
}

void ReadKeys(QObject* o, TQyRecordMedium& m) {
  uint keys = 0;
  if (m.Kind() != TKind::Stream) {
    const QVariant v = m.Read("StartMovingKeys", T::Int32, {});
    if (!v.isValid()) return;
    keys = v.toUInt();
  } else {
    keys = m.Read("StartMovingKeys", T::Enum, {}).toUInt();
    keys |= m.Read("StartMovingKeys", T::Enum, {}).toUInt() << 8;
  }
  Marker(o)->SetStartMovingKeys(QyShift::TShiftState::fromInt(int(keys & 0xFFFF)));
}

// Values go after the references, so that they land on the bound axis.
TQyRecordEntry Location(const char* key, T type) {
  TQyRecordEntry e = QyField(key, type, key).At("Location").InChain(1);
  return type == T::Double ? e.AfterReferences() : e;
}
} // namespace

QY_REGISTER_RECORD(TQyMovable, {
    QyField("Name", T::Name, "objectName").Only(QyMedia::Stream | QyMedia::Node),
    Parent(),
    QyField("Visible", T::Bool, [](const QObject* o) { return QVariant(!Marker(o)->isHidden()); },
            [](QObject* o, const QVariant& v) { Marker(o)->setVisible(v.toBool()); })
        .At("Properties"),
    Props("Hint", T::String, "toolTip"),
    QyParentShowHintField(),
    QyShowHintField(),
    Props("ClipToData", T::Bool, "ClipToData"),
    Props("MouseDrag", T::Bool, "MouseDrag"),
    QyCustomField("StartMovingKeys", WriteKeys, ReadKeys).At("Properties"),
    Props("SnappedSeries", T::Reference, "SnappedSeries"),
    Props("ForeColor", T::Color, "ForeColor"),
    QyField("Line", T::Object, "Line"),
    QyField("Font", T::Object, "Font").At("Caption").Ini("Caption.Font").InBlock(1),
    QyField("Text", T::String, "Caption").At("Caption").Ini("Caption").InBlock(1),
    Caption("Visible", T::Bool, "CaptionVisible").InBlock(1),
    Caption("Vertical", T::Bool, "CaptionVertical").InBlock(1),
    Caption("DeltaX", T::Int32, "CaptionDeltaX").InBlock(1),
    Caption("DeltaY", T::Int32, "CaptionDeltaY").InBlock(1),
    Props("SnappedIdx", T::Int32, "SnappedIdx").AfterReferences().InBlock(2),
    Caption("BackColor", T::Color, "CaptionBackColor"),
    QyField("Gradient", T::Object, "CaptionBackGradient").At("Caption").Ini("Caption.Gradient").InBlock(3),
    QyField("Line", T::Object, "CaptionBackFrame").At("Caption").Ini("Caption.Line").InBlock(3),
    Caption("BackRaised", T::Bool, "CaptionBackRaised"),
    Caption("BackLowered", T::Bool, "CaptionBackLowered"),
    Caption("BackShadow", T::Bool, "CaptionBackShadow"),
    // These two keys of INI files carry the prefix "CaptionBack.": kept so that files stay readable.
    Caption("BackSpaceToBorder", T::Single, "CaptionBackSpaceToBorder").Ini("CaptionBack.SpaceToBorder"),
    Caption("BackRounding", T::Single, "CaptionBackRounding").Ini("CaptionBack.Rounding"),
});

QY_REGISTER_RECORD(TQyHorizontalMarker, {
    Location("YAxis", T::Reference),
    Location("Y", T::Double),
    QyField("Position", T::Enum, "CaptionPosition").At("Caption").Ini("Caption.Position").InChain(1),
});

QY_REGISTER_RECORD(TQyVerticalMarker, {
    Location("XAxis", T::Reference),
    Location("X", T::Double),
    QyField("Position", T::Enum, "CaptionPosition").At("Caption").Ini("Caption.Position").InChain(1),
});

QY_REGISTER_RECORD(TQyCrossHair, {
    Location("XAxis", T::Reference),
    Location("YAxis", T::Reference),
    Location("X", T::Double),
    Location("Y", T::Double),
    QyField("Position", T::Enum, "CaptionPosition").At("Caption").Ini("Caption.Position").InChain(1),
    Props("HorizontalCursor", T::Int32, "HorizontalCursor").InChain(1),
    Props("VerticalCursor", T::Int32, "VerticalCursor").InChain(1),
});

QY_REGISTER_RECORD(TQyLabelWithArrowMarker, {
    Location("XAxis", T::Reference),
    Location("YAxis", T::Reference),
    Location("X", T::Double),
    Location("Y", T::Double),
    Location("ArrowDeltaX", T::Int32),
    Location("ArrowDeltaY", T::Int32),
    Location("BentLength", T::Int32),
    Location("DraggingOptions", T::Enum),
    Location("HoverGrips", T::Bool),
    QyField("Arrow", T::Object, "Arrow").InChain(1),
});

QY_DOCUMENT_MEMBERS_IMPL(TQyMovable)
