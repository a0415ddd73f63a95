// The series' record for the settings documents. The media (stream, XML, INI) are built on top
// of this record; it holds plain values, style groups as nested records, references as names.
#include "QyPointSeries.h"
#include "QyStyles.h"
#include <QMetaProperty>

namespace {
// The stored properties of a style group, nested groups as records of their own.
QVariantMap StyleRecord(const QObject* style) {
  QVariantMap r;
  const QMetaObject* m = style->metaObject();
  for (int k = QObject::staticMetaObject.propertyCount(); k < m->propertyCount(); ++k) {
    const QMetaProperty p = m->property(k);
    const QVariant v = p.read(style);
    if (auto* nested = v.value<QObject*>()) r[p.name()] = StyleRecord(nested);
    else r[p.name()] = p.isEnumType() ? QVariant(v.toInt()) : v; // enumerations as integers
  }
  return r;
}

void ReadStyle(QObject* style, const QVariant& record) {
  const QVariantMap r = record.toMap();
  const QMetaObject* m = style->metaObject();
  for (int k = QObject::staticMetaObject.propertyCount(); k < m->propertyCount(); ++k) {
    const QMetaProperty p = m->property(k);
    if (!r.contains(p.name())) continue;
    if (auto* nested = p.read(style).value<QObject*>()) ReadStyle(nested, r[p.name()]);
    else if (p.isWritable()) p.write(style, r[p.name()]);
  }
}

QString NameOf(const QObject* o) { return o ? o->objectName() : QString(); }

constexpr const char* SymbolKeys[] = {"Visible", "Size", "BorderLineWidth", "BorderColor", "FillColor", "Symbol"};

void WriteSymbol(QVariantMap& r, const QString& prefix, const TQyPointSymbolSettings* s) {
  r[prefix + "Visible"] = s->GetVisible();
  r[prefix + "Size"] = s->GetSize();
  r[prefix + "BorderLineWidth"] = s->GetBorderLineWidth();
  r[prefix + "BorderColor"] = s->GetBorderColor();
  r[prefix + "FillColor"] = s->GetFillColor();
  r[prefix + "Symbol"] = int(s->GetPointSymbol());
}

void ReadSymbol(const QVariantMap& r, const QString& prefix, TQyPointSymbolSettings* s) {
  auto has = [&](const char* key) { return r.contains(prefix + key); };
  auto at = [&](const char* key) { return r[prefix + key]; };
  if (has("Visible")) s->SetVisible(at("Visible").toBool());
  if (has("Size")) s->SetSize(at("Size").toFloat());
  if (has("BorderLineWidth")) s->SetBorderLineWidth(at("BorderLineWidth").toFloat());
  if (has("BorderColor")) s->SetBorderColor(at("BorderColor").toUInt());
  if (has("FillColor")) s->SetFillColor(at("FillColor").toUInt());
  if (has("Symbol")) s->SetPointSymbol(TQyPointSymbol(at("Symbol").toInt()));
}

template <class T> T* Resolve(const QVariantMap& r, const char* key, const TQySeries::TQyReferenceResolver& resolve) {
  const QString name = r[key].toString();
  return name.isEmpty() || !resolve ? nullptr : qobject_cast<T*>(resolve(name));
}
} // namespace

QStringList TQySeries::SeriesStreamOrder() {
  QStringList keys{"Type", "Name", "Caption", "Visible", "OutliersVisible", "IncludeInLegend", "AutoUpdate",
                   "Layer", "Line", "Area", "XData", "YData", "XAxis", "YAxis", "MergeLegendItemWith",
                   "DrawBandTo"};
  for (const char* k : SymbolKeys) keys << QString("PointSymbol.") + k;
  for (const char* k : SymbolKeys) keys << QString("OutOfRangeSymbol.") + k;
  keys << "RangeFromFunction";
  return keys;
}

void TQySeries::WriteRecord(QVariantMap& r) const {
  r["Type"] = metaObject()->className();
  r["Name"] = objectName();
  r["Caption"] = FCaption;
  r["Visible"] = FVisible;
  r["OutliersVisible"] = FOutliersVisible;
  r["AutoUpdate"] = FAutoUpdate;
  r["IncludeInLegend"] = FIncludeInLegend;
  r["Layer"] = FLayer;
  // The indexer that stands in for a missing vector is written as no reference.
  r["XData"] = FXData == FDataIndexer ? QString() : NameOf(FXData);
  r["YData"] = FYData == FDataIndexer ? QString() : NameOf(FYData);
  r["XAxis"] = NameOf(FXAxis);
  r["YAxis"] = NameOf(FYAxis);
  r["MergeLegendItemWith"] = NameOf(FMergeLegendItemWith);
}

void TQyLineSeries::WriteRecord(QVariantMap& r) const {
  TQySeries::WriteRecord(r);
  r["Line"] = StyleRecord(FLine);
  r["Area"] = StyleRecord(FArea);
  r["DrawBandTo"] = NameOf(FDrawBandTo);
  WriteSymbol(r, "PointSymbol.", FPointSymbol);
  WriteSymbol(r, "OutOfRangeSymbol.", FOutOfRangePointSymbol);
  r["RangeFromFunction"] = NameOf(FRangeFromFunction);
}

void TQySeries::ReadRecord(const QVariantMap& r, const TQyReferenceResolver& resolve) {
  if (r.contains("Caption")) SetCaption(r["Caption"].toString());
  if (r.contains("Visible")) SetVisible(r["Visible"].toBool());
  if (r.contains("OutliersVisible")) SetOutliersVisible(r["OutliersVisible"].toBool());
  if (r.contains("AutoUpdate")) SetAutoUpdate(r["AutoUpdate"].toBool());
  if (r.contains("IncludeInLegend")) SetIncludeInLegend(r["IncludeInLegend"].toBool());
  if (r.contains("XData")) SetXData(Resolve<TQyCustomDoubleVector>(r, "XData", resolve));
  if (r.contains("YData")) SetYData(Resolve<TQyCustomDoubleVector>(r, "YData", resolve));
  if (r.contains("XAxis")) SetXAxis(Resolve<TQyAxis>(r, "XAxis", resolve));
  if (r.contains("YAxis")) SetYAxis(Resolve<TQyAxis>(r, "YAxis", resolve));
  if (r.contains("MergeLegendItemWith")) SetMergeLegendItemWith(Resolve<TQySeries>(r, "MergeLegendItemWith", resolve));
  // After the references: joining a graph numbers the layer.
  if (r.contains("Layer")) SetLayer(r["Layer"].toInt());
}

void TQyLineSeries::ReadRecord(const QVariantMap& r, const TQyReferenceResolver& resolve) {
  if (r.contains("Line")) ReadStyle(FLine, r["Line"]);
  if (r.contains("Area")) ReadStyle(FArea, r["Area"]);
  TQySeries::ReadRecord(r, resolve);
  if (r.contains("DrawBandTo")) SetDrawBandTo(Resolve<TQySeries>(r, "DrawBandTo", resolve));
  ReadSymbol(r, "PointSymbol.", FPointSymbol);
  ReadSymbol(r, "OutOfRangeSymbol.", FOutOfRangePointSymbol);
  if (r.contains("RangeFromFunction")) SetRangeFromFunction(Resolve<TQySeries>(r, "RangeFromFunction", resolve));
}

// ---- error bars: the indicator's look and the four delta vectors

namespace {
constexpr const char* DeltaKeys[4] = {"DeltaXPlus", "DeltaXMinus", "DeltaYPlus", "DeltaYMinus"};
}

void TQyPointWithErrorSeries::WriteRecord(QVariantMap& r) const {
  TQyPointSeries::WriteRecord(r);
  r["ErrorIndicator"] = StyleRecord(FErrorIndicator);
  for (int d = 0; d < 4; ++d) r[DeltaKeys[d]] = NameOf(FDelta[d]);
}

void TQyPointWithErrorSeries::ReadRecord(const QVariantMap& r, const TQyReferenceResolver& resolve) {
  TQyPointSeries::ReadRecord(r, resolve);
  if (r.contains("ErrorIndicator")) ReadStyle(FErrorIndicator, r["ErrorIndicator"]);
  for (int d = 0; d < 4; ++d)
    if (r.contains(DeltaKeys[d])) SetDelta(Direction(d), Resolve<TQyCustomDoubleVector>(r, DeltaKeys[d], resolve));
}
