// The document record of a data vector: its settings, its database binding and its values with
// their outliers.
#include "QyClassRegistry.h"
#include "QyRecordMedia.h"
#include "QyRecordSchema.h"
#include "QyVectors.h"

QY_REGISTER_CLASS(TQyDoubleVector);

namespace {
using T = TQyFieldType;
using TKind = TQyRecordMedium::TKind;

TQyDoubleVector* Vector(QObject* o) { return static_cast<TQyDoubleVector*>(o); }
const TQyDoubleVector* Vector(const QObject* o) { return static_cast<const TQyDoubleVector*>(o); }

void WriteValues(const QObject* o, TQyRecordMedium& m) {
  const TQyDoubleVector* v = Vector(o);
  if (m.Kind() == TKind::Node && v->FromDatabase()) return; // the model holds them
  QVariantList values;
  values.reserve(v->Count());
  for (double x : *v) values << x;
  m.WriteItems("Values", T::Double, values);
}

void ReadValues(QObject* o, TQyRecordMedium& m) {
  const QVariantList items = m.ReadItems("Values", T::Double);
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
  m.WriteItems("Outliers", T::Int32, indices);
}

void ReadOutliers(QObject* o, TQyRecordMedium& m) {
  TQyDoubleVector* v = Vector(o);
  if (m.Kind() == TKind::Stream && !m.Read("HasOutliers", T::Bool, false).toBool()) {
    v->ClearOutlieres();
    return;
  }
  const QVariantList indices = m.ReadItems("Outliers", T::Int32);
  v->ClearOutlieres();
  for (const QVariant& i : indices)
    if (i.toInt() >= 0 && i.toInt() < v->Count()) v->AddOutlier(i.toInt());
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
    QyField("DataSource", T::Reference, "DataSource").At("Database"),
    QyField("DataField", T::String, "DataField").At("Database").Only(QyMedia::Stream | QyMedia::Node),
    QyField("DataField", T::String, IniDataField, SetIniDataField).Only(QyMedia::Ini),
    QyCustomField("Values", WriteValues, ReadValues),
    QyCustomField("Outliers", WriteOutliers, ReadOutliers),
});

QY_DOCUMENT_MEMBERS_IMPL(TQyDoubleVector)
