// The document record of bars: the shared bar settings (XML element "Bars"), the labels (element
// "Labels"), and either the captions' data binding or the captions themselves.
#include "QyBars.h"
#include "QyClassRegistry.h"
#include "QyRecordSchema.h"

QY_REGISTER_CLASS(TQyBars);

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;

TQyBars* Bars(QObject* o) { return static_cast<TQyBars*>(o); }
const TQyBars* Bars(const QObject* o) { return static_cast<const TQyBars*>(o); }

TQyRecordEntry Shared(const QString& key, T type, const char* property, const QString& ini) {
  return QyField(key, type, property).At("Bars").Ini(ini).InBlock(4);
}
TQyRecordEntry Label(const QString& key, T type, const char* property) {
  return QyField(key, type, property).At("Labels").Ini(property).InBlock(4);
}

// Captions: a count and each text in a stream, the element "Captions" with its items in XML,
// "Captions.Count" and one key "Captions(i)" each in INI. A series bound to a data model reads
// its captions from there. XML reads back only lists of more than one caption.
void WriteCaptions(const QObject* o, TQyRecordMedium& m) {
  const QStringList captions = Bars(o)->GetCaptions();
  if (m.Kind() != TKind::Ini) return m.WriteItems("Captions", T::String, QVariantList(captions.begin(), captions.end()));
  m.Write("Captions.Count", T::Int32, captions.size());
  for (int i = 0; i < captions.size(); ++i) m.Write(QString("Captions(%1)").arg(i), T::String, captions[i]);
}

void ReadCaptions(QObject* o, TQyRecordMedium& m) {
  QStringList captions;
  if (m.Kind() != TKind::Ini) {
    for (const QVariant& v : m.ReadItems("Captions", T::String)) captions << v.toString();
    if (m.Kind() == TKind::Node && captions.size() < 2) return;
  } else {
    const int n = m.Read("Captions.Count", T::Int32, 0).toInt();
    for (int i = 0; i < n; ++i) captions << m.Read(QString("Captions(%1)").arg(i), T::String, QString()).toString();
  }
  if (!Bars(o)->FromDatabase()) Bars(o)->SetCaptions(captions);
}
} // namespace

QY_REGISTER_RECORD(TQyBars, {
    Shared("OverlayStyle", T::Enum, "OverlayStyle", "OverlayStyle"),
    Shared("Horizontal", T::Bool, "BarsHorizontal", "BarsHorizontal"),
    Shared("Depth3D", T::Double, "Depth3D", "Depth3D"),
    Shared("ClassesDistance", T::Double, "ClassesDistance", "ClassesDistance"),
    Label("Size", T::Single, "LabelSize"),
    Label("Vertical", T::Bool, "LabelVertical"),
    Label("Color", T::Color, "LabelColor"),
    Label("Position", T::Enum, "LabelPosition"),
    Label("From", T::Enum, "LabelFrom"),
    Label("Format", T::String, "LabelFormat"),
    QyField("FromDatabase", T::Bool, [](const QObject* o) { return QVariant(Bars(o)->FromDatabase()); })
        .Only(QyMedia::Stream | QyMedia::Ini).InBlock(4),
    QyField("DataSource", T::Reference, "DataSource").At("Database").InBlock(4),
    QyField("CaptionsField", T::String, "CaptionsField").At("Database").InBlock(4),
    QyCustomField("Captions", WriteCaptions, ReadCaptions).InBlock(4),
    QyField("Font", T::Object, "Font").At("Labels").InBlock(5),
    Shared("BarStyle", T::Enum, "BarStyle", "BarStyle").InBlock(5),
});
