// The document record of a legend box, in the order of its stream: place and what it lists, size,
// items, font and frame, distances, caption, and a chained block with the shadow and gradient.
// XML groups them into child elements; INI keys carry the group as a prefix. The graph's legend
// lists the graph's series in an order of its own.
#include "QyLegendRecord.h"
#include "QyClassRegistry.h"
#include "QyLegend.h"
#include "QyRecordMedia.h"

QY_REGISTER_CLASS(TQyLegend);

namespace {
using T = TQyFieldType;

TQyCustomLegend* Legend(QObject* o) { return static_cast<TQyCustomLegend*>(o); }
const TQyCustomLegend* Legend(const QObject* o) { return static_cast<const TQyCustomLegend*>(o); }

TQyRecordEntry Props(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Properties");
}

TQyRecordEntry Size(const QString& key, bool wide) {
  return QyField(key, T::Int32, [wide](const QObject* o) { return QVariant(wide ? Legend(o)->width() : Legend(o)->height()); },
                 [wide](QObject* o, const QVariant& v) {
                   QWidget* w = Legend(o);
                   w->resize(wide ? v.toInt() : w->width(), wide ? w->height() : v.toInt());
                 })
      .At("Properties");
}

// The parent widget the legend lies on (bound after the document, like every reference).
TQyRecordEntry Parent() {
  return QyField("Parent", T::Reference, [](const QObject* o) { return QVariant::fromValue<QObject*>(Legend(o)->parentWidget()); },
                 [](QObject* o, const QVariant& v) {
                   if (auto* parent = qobject_cast<QWidget*>(v.value<QObject*>()); parent && parent != Legend(o)->parentWidget()) {
                     Legend(o)->setParent(parent);
                     Legend(o)->setVisible(Legend(o)->GetVisible());
                   }
                 })
      .At("Properties");
}

void WriteOrder(const QObject* o, TQyRecordMedium& m) {
  QyWriteNumberedTexts(m, "ItemsOrderList", "ItemsOrderList.Count", static_cast<const TQyLegend*>(o)->GetItemsOrderList());
}

void ReadOrder(QObject* o, TQyRecordMedium& m) {
  static_cast<TQyLegend*>(o)->SetItemsOrderList(QyReadNumberedTexts(m, "ItemsOrderList", "ItemsOrderList.Count"));
}

TQyRecordEntry Distance(const QString& key, const char* property) {
  return QyField(key, T::Single, property).At("Distances").Ini("Distance." + key);
}

TQyRecordEntry CaptionProps(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Caption/Properties").Ini("Caption." + key);
}
} // namespace

TQyRecordEntry QyLegendProperty(const QString& key, TQyFieldType type, const char* property) {
  return Props(key, type, property);
}

TQyRecordTable QyLegendBoxRecord(const TQyRecordEntry& source, const TQyRecordTable& colors, const TQyRecordTable& items) {
  TQyRecordTable table{
    QyField("Name", T::Name, "objectName").Only(QyMedia::Stream | QyMedia::Node),
    Parent(),
    Props("Visible", T::Bool, "Visible"),
    Props("Hint", T::String, "toolTip"),
    QyParentShowHintField(),
    QyShowHintField(),
    Props("Position", T::Enum, "Position"),
    source,
    Props("Top", T::Int32, "Top"),
    Props("Left", T::Int32, "Left"),
    Props("AutoSize", T::Bool, "AutoSize"),
    Size("Width", true),
    Size("Height", false),
    // The stream keeps the height in force; documents in text keep the setting.
    QyField("ItemHeight", T::Single, [](const QObject* o) { return QVariant(Legend(o)->EffectiveItemHeight()); },
            [](QObject* o, const QVariant& v) { Legend(o)->SetItemHeight(v.toFloat()); })
        .Only(QyMedia::Stream),
    Props("ItemHeight", T::Single, "ItemHeight").Only(QyMedia::Node | QyMedia::Ini),
    Props("ItemWidth", T::Single, "ItemWidth"),
    Props("ForeColor", T::Color, "ForeColor"),
    Props("BackColor", T::Color, "BackColor"),
  };
  table.insert(table.end(), colors.begin(), colors.end());
  table.insert(table.end(), {
    Props("ItemsOrder", T::Enum, "ItemsOrder"),
    Props("Rows", T::Int32, "Rows"),
    Props("Columns", T::Int32, "Columns"),
  });
  table.insert(table.end(), items.begin(), items.end());
  table.insert(table.end(), {
    QyField("Font", T::Object, "Font"),
    QyField("Frame", T::Object, "Frame"),
    Distance("CornerRounding", "CornerRounding").Ini("CornerRounding"),
    Distance("ItemCaption", "DistanceItemCaption"),
    Distance("BetweenLines", "DistanceBetweenLines"),
    Distance("BetweenColumns", "DistanceBetweenColumns"),
    Distance("ToBorder", "DistanceToBorder"),
    CaptionProps("Visible", T::Bool, "CaptionVisible"),
    QyField("Text", T::String, "Caption").At("Caption").Ini("Caption"),
    CaptionProps("Alignment", T::Enum, "CaptionAlignment"),
    CaptionProps("Color", T::Color, "CaptionColor"),
    CaptionProps("DistanceBefore", T::Single, "CaptionDistanceBefore"),
    CaptionProps("DistanceAfter", T::Single, "CaptionDistanceAfter"),
    QyField("Font", T::Object, "CaptionFont").At("Caption").Ini("Caption.Font"),
    Props("DropShadow", T::Bool, "DropShadow").InBlock(1),
    QyField("Gradient", T::Object, "BackgroundGradient").Ini("BackgroundGradient").InBlock(1),
  });
  return table;
}

static const TQyRecordRegistration LegendRecord(
    TQyLegend::staticMetaObject,
    QyLegendBoxRecord(QyLegendProperty("Graph", T::Reference, "Graph"),
                      {QyLegendProperty("LegendCaptionColorFrom", T::Enum, "LegendCaptionColorFrom")},
                      {QyCustomField("ItemsOrderList", WriteOrder, ReadOrder)}));

QY_DOCUMENT_MEMBERS_IMPL(TQyLegend)
