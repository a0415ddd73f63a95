// The document record of bars, after the series' own record: the shared bar settings (XML
// element "Bars"), the labels (element "Labels"), then either the captions' data binding or the
// captions themselves; a chained block adds the whole label font and the bar style.
#include "QyBars.h"
#include "QyClassRegistry.h"
#include "QyIO.h"
#include "QyRecordMedia.h"
#include "QyRichLabel.h"

QY_REGISTER_CLASS(TQyBars);

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;

TQyBars* Bars(QObject* o) { return static_cast<TQyBars*>(o); }
const TQyBars* Bars(const QObject* o) { return static_cast<const TQyBars*>(o); }

TQyRecordEntry Shared(const QString& key, T type, const char* property, const QString& ini) {
  return QyField(key, type, property).At("Bars").Ini(ini).InChain(1);
}
TQyRecordEntry Label(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Labels").Ini(property).InChain(1);
}

// The stream's first block names the label font by name and style only.
TQyRecordEntry FontPart(const QString& key, T type, const char* property) {
  const TQyRecordEntry field = QyField(key, type, property);
  return QyField(key, type, [field](const QObject* o) { return QyGetField(Bars(o)->GetFont(), field); },
                 [field](QObject* o, const QVariant& v) { QySetField(Bars(o)->GetFont(), field, v); })
      .Only(QyMedia::Stream)
      .InChain(1);
}

void BindDataSource(QObject* o, TQyDocumentMedium& m, const QString& ref, const QString& field) {
  m.Defer(o, [o, ref, field] {
    if (auto* model = qobject_cast<QAbstractItemModel*>(GetComponentFromRef(ref))) {
      Bars(o)->SetCaptionsField(field);
      Bars(o)->SetDataSource(model);
    }
  });
}

QVariantList Items(const QStringList& texts) { return QVariantList(texts.begin(), texts.end()); }

// Binding or captions. The stream writes the binding's flag, then the link or a count (-1 when
// the document holds no data: the list is then left as it is) and the texts. XML writes the
// element "Database" or "Captions" as the record's last child; it reads back only a list of
// more than one caption. INI writes the flag and the link or counted keys.
void WriteCaptions(const QObject* o, TQyRecordMedium& medium) {
  auto& m = static_cast<TQyDocumentMedium&>(medium);
  const bool linked = Bars(o)->FromDatabase();
  const QStringList captions = Bars(o)->GetCaptions();
  const QString source = GetComponentRef(Bars(o)->GetDataSource());
  if (m.Kind() != TKind::Node) m.Write("FromDatabase", T::Bool, linked);
  if (linked && m.EnterElement(m.Kind() == TKind::Node ? "Database" : QString())) {
    m.Write("DataSource", T::Reference, source);
    m.Write("CaptionsField", T::String, Bars(o)->GetCaptionsField());
    return m.Leave();
  }
  if (m.Kind() == TKind::Stream && !m.WithData) return m.Write("Count", T::Int32, -1);
  if (m.Kind() != TKind::Node || m.WithData) QyWriteNumberedTexts(m, "Captions", "Captions.Count", captions);
}

void ReadCaptions(QObject* o, TQyRecordMedium& medium) {
  auto& m = static_cast<TQyDocumentMedium&>(medium);
  bool linked = false;
  if (m.Kind() == TKind::Node) {
    linked = m.EnterElement("Database");
    if (linked) m.Leave();
  } else {
    linked = m.Read("FromDatabase", T::Bool, false).toBool();
  }
  if (linked && m.EnterElement(m.Kind() == TKind::Node ? "Database" : QString())) {
    const QString source = m.Read("DataSource", T::Reference, QString()).toString();
    BindDataSource(o, m, source, m.Read("CaptionsField", T::String, QString()).toString());
    return m.Leave();
  }
  if (m.Kind() == TKind::Stream) {
    const qint32 n = m.Read("Count", T::Int32, -1).toInt();
    if (n < 0) return;
    QStringList captions;
    for (qint32 i = 0; i < n; ++i) captions << m.Read("Item", T::String, {}).toString(); // a short stream raises first
    if (!Bars(o)->FromDatabase()) Bars(o)->SetCaptions(captions);
    return;
  }
  if (m.Kind() == TKind::Ini && !m.Read("Captions.Count", T::Int32, {}).isValid()) return; // none: kept
  const QStringList captions = QyReadNumberedTexts(m, "Captions", "Captions.Count");
  if (m.Kind() == TKind::Node && captions.size() < 2) return; // a single caption is not read back
  if (!Bars(o)->FromDatabase()) Bars(o)->SetCaptions(captions);
}
} // namespace

QY_REGISTER_RECORD(TQyBars, {
    Shared("OverlayStyle", T::Enum, "OverlayStyle", "OverlayStyle"),
    Shared("Horizontal", T::Bool, "BarsHorizontal", "BarsHorizontal"),
    Shared("BarStyle", T::Enum, "BarStyle", "BarStyle").Only(QyMedia::Node | QyMedia::Ini),
    Shared("Depth3D", T::Double, "Depth3D", "Depth3D"),
    Shared("ClassesDistance", T::Double, "ClassesDistance", "ClassesDistance"),
    QyField("Font", T::Object, "Font").At("Labels").Only(QyMedia::Node | QyMedia::Ini).InChain(1),
    // After the font, whose size scales the labels' size.
    Label("Size", T::Single, "LabelSize").AfterReferences(),
    Label("Vertical", T::Bool, "LabelVertical"),
    Label("Color", T::Color, "LabelColor"),
    Label("Position", T::Enum, "LabelPosition"),
    Label("From", T::Enum, "LabelFrom"),
    Label("Format", T::String, "LabelFormat"),
    FontPart("FontName", T::String, "Name"),
    FontPart("FontStyle", T::Enum, "Style"),
    QyCustomField("Captions", WriteCaptions, ReadCaptions).InChain(1),
    QyField("Font", T::Object, "Font").Only(QyMedia::Stream).InChain(1).InBlock(1),
    Shared("BarStyle", T::Enum, "BarStyle", "BarStyle").Only(QyMedia::Stream).InBlock(1),
});
