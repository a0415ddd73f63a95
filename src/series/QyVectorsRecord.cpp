// The document record of a data vector: its settings, its database binding and its values with
// their outliers.
#include "QyClassRegistry.h"
#include "QyIO.h"
#include "QyRecordMedia.h"
#include "QyRecordSchema.h"
#include "QyStringFunctions.h"
#include "QyVectors.h"

QY_REGISTER_CLASS(TQyDoubleVector);

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;

TQyDoubleVector* Vector(QObject* o) { return static_cast<TQyDoubleVector*>(o); }
const TQyDoubleVector* Vector(const QObject* o) { return static_cast<const TQyDoubleVector*>(o); }

// INI keeps a list in one text, its items joined by ";"; the other media count their items.
void WriteList(TQyRecordMedium& m, const QString& key, TQyFieldType type, const QVariantList& items) {
  if (m.Kind() != TKind::Ini) return m.WriteItems(key, type, items);
  QStringList texts;
  for (const QVariant& v : items) texts << (type == T::Double ? DoubleToStr(v.toDouble()) : v.toString());
  m.Write(key, T::String, texts.join(';'));
}

QVariantList ReadList(TQyRecordMedium& m, const QString& key, TQyFieldType type) {
  if (m.Kind() != TKind::Ini) return m.ReadItems(key, type);
  const QString text = m.Read(key, T::String, QString()).toString();
  QVariantList items;
  if (text.trimmed().isEmpty()) return items;
  if (type != T::Double) {
    for (int i : StringToIntegerArray(text)) items << i;
  } else {
    for (const QString& t : text.split(';')) items << QyFloatFromText(t);
  }
  return items;
}

} // namespace

QVariantList TQyDoubleVector::StoredValues() const {
  QVariantList texts;
  texts.reserve(Count());
  for (double x : *this) texts << DoubleToStr(x);
  return texts;
}

void TQyDoubleVector::LoadValues(const QVariantList& items) {
  std::vector<double> values;
  values.reserve(size_t(items.size()));
  for (const QVariant& v : items)
    values.push_back(v.typeId() == QMetaType::QString ? QyFloatFromText(v.toString()) : v.toDouble());
  Clear(false);
  AddRange(values);
}

namespace {
void WriteValues(const QObject* o, TQyRecordMedium& m) {
  const TQyDoubleVector* v = Vector(o);
  if (m.Kind() == TKind::Node && v->FromDatabase()) return; // the model holds them
  QVariantList values;
  values.reserve(v->Count());
  for (double x : *v) values << x;
  WriteList(m, "Values", T::Double, values);
}

void ReadValues(QObject* o, TQyRecordMedium& m) {
  const QVariantList items = ReadList(m, "Values", T::Double);
  if (m.Kind() != TKind::Stream && items.isEmpty()) return;
  std::vector<double> values;
  values.reserve(size_t(items.size()));
  for (const QVariant& x : items) values.push_back(x.toDouble());
  Vector(o)->SetValues(std::move(values));
}

// In a stream a flag says whether a list of outliers follows.
void WriteOutliers(const QObject* o, TQyRecordMedium& m) {
  const TQyDoubleVector* v = Vector(o);
  if (m.Kind() == TKind::Stream) m.Write("HasOutliers", T::Bool, v->HasOutliers());
  if (m.Kind() == TKind::Stream && !v->HasOutliers()) return;
  QVariantList indices;
  for (int i : v->Outliers()) indices << i;
  WriteList(m, "Outliers", T::Int32, indices);
}

void ReadOutliers(QObject* o, TQyRecordMedium& m) {
  TQyDoubleVector* v = Vector(o);
  if (m.Kind() == TKind::Stream && !m.Read("HasOutliers", T::Bool, false).toBool()) {
    v->ClearOutlieres();
    return;
  }
  const QVariantList indices = ReadList(m, "Outliers", T::Int32);
  v->ClearOutlieres();
  for (const QVariant& i : indices)
    if (i.toInt() >= 0 && i.toInt() < v->Count()) v->AddOutlier(i.toInt());
}

// XML has the element "Database" only for a vector bound to a model; the others have "Values".
const TQyRecordEntry SourceEntry = QyField("DataSource", T::Reference, "DataSource");

void WriteDatabase(const QObject* o, TQyRecordMedium& m) {
  if (!Vector(o)->FromDatabase()) return;
  auto& d = dynamic_cast<TQyDocumentMedium&>(m);
  d.EnterElement("Database");
  m.Write("DataSource", T::Reference, GetComponentRef(Vector(o)->GetDataSource()));
  m.Write("DataField", T::String, Vector(o)->GetDataField());
  d.Leave();
}

// The source is bound after the whole document, as every reference: an empty one sets none, a
// dangling one nothing.
void ReadDatabase(QObject* o, TQyRecordMedium& m) {
  auto& d = dynamic_cast<TQyDocumentMedium&>(m);
  if (!d.EnterElement("Database")) return;
  const QString ref = m.Read("DataSource", T::Reference, QString()).toString();
  const QVariant field = m.Read("DataField", T::String, {});
  d.Leave();
  if (field.isValid()) Vector(o)->SetDataField(field.toString());
  d.Defer(o, [o, ref] {
    QObject* source = ref.isEmpty() ? nullptr : GetComponentFromRef(ref);
    if (source || ref.isEmpty()) QySetField(o, SourceEntry, QVariant::fromValue(source));
  });
}

// INI writes "None" for a vector without a column.
QVariant IniDataField(const QObject* o) {
  const QString f = Vector(o)->GetDataField();
  return f.isEmpty() ? QStringLiteral("None") : f;
}
void SetIniDataField(QObject* o, const QVariant& v) {
  Vector(o)->SetDataField(v.toString() == QLatin1String("None") ? QString() : v.toString());
}
} // namespace

QY_REGISTER_RECORD(TQyDoubleVector, {
    QyField("Name", T::Name, "objectName"),
    QyField("Increment", T::Int32, "Increment"),
    // After the values, which set the capacity to their count.
    QyField("Capacity", T::Int32, "Capacity").AfterReferences(),
    QyField("FromDatabase", T::Bool, [](const QObject* o) { return QVariant(Vector(o)->FromDatabase()); })
        .Only(QyMedia::Stream | QyMedia::Ini),
    QyField("DataSource", T::Reference, "DataSource").Only(QyMedia::Stream | QyMedia::Ini),
    QyField("DataField", T::String, "DataField").Only(QyMedia::Stream),
    QyCustomField("Database", WriteDatabase, ReadDatabase).Only(QyMedia::Node),
    QyField("DataField", T::String, IniDataField, SetIniDataField).Only(QyMedia::Ini),
    QyCustomField("Values", WriteValues, ReadValues),
    QyCustomField("Outliers", WriteOutliers, ReadOutliers),
});

QY_DOCUMENT_MEMBERS_IMPL(TQyDoubleVector)
