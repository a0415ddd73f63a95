// The document records of the line, point and error-bar series, and their registration by class
// name. References (data vectors, axes, other series) are bound after the whole document is read;
// the indexer that stands in for a missing vector is written as no reference.
#include "QyClassRegistry.h"
#include "QyPointSeries.h"
#include "QyRecordMedia.h"
#include "QyRecordSchema.h"
#include "QyStyles.h"

QY_REGISTER_CLASS(TQyLineSeries);
QY_REGISTER_CLASS(TQyPointSeries);
QY_REGISTER_CLASS(TQyPointWithErrorSeries);

namespace {
using T = TQyFieldType;
constexpr quint8 TextMedia = QyMedia::Node | QyMedia::Ini;

const TQyLineSeries* Series(const QObject* o) { return static_cast<const TQyLineSeries*>(o); }

TQyRecordEntry Link(const QString& key, const char* property) {
  return QyField(key, T::Reference, property).At("Links");
}

// A property of point series only; every series keeps it. XML: an attribute of the series.
TQyRecordEntry RangeFromFunction() {
  return QyField("RangeFromFunction", T::Reference,
                 [](const QObject* o) { return QVariant::fromValue<QObject*>(Series(o)->GetRangeFromFunction()); },
                 [](QObject* o, const QVariant& v) {
                   static_cast<TQyLineSeries*>(o)->SetRangeFromFunction(qobject_cast<TQySeries*>(v.value<QObject*>()));
                 });
}

TQyRecordEntry Symbol(const QString& key, TQyPointSymbolSettings* (TQyLineSeries::*get)() const) {
  return QyField(key, T::Inline, [get](const QObject* o) {
    return QVariant::fromValue<QObject*>((Series(o)->*get)());
  });
}
} // namespace

// The record of a series as the first class that publishes all of it, the line series, has it.
QY_REGISTER_RECORD(TQyLineSeries, {
    // XML names the class by the element (in a graph document's list).
    QyField("Type", T::String, [](const QObject* o) { return QVariant(o->metaObject()->className()); })
        .Only(QyMedia::Stream | QyMedia::Ini),
    QyField("Name", T::Name, "objectName"),
    QyField("Text", T::String, "Caption").At("Caption").Ini("Caption"),
    QyField("Visible", T::Bool, "Visible").At("Properties"),
    // The stream repeats Visible where a reader takes OutliersVisible: kept as it stands.
    QyField("OutliersVisible", T::Bool, [](const QObject* o) { return QVariant(Series(o)->GetVisible()); },
            [](QObject* o, const QVariant& v) { static_cast<TQySeries*>(o)->SetOutliersVisible(v.toBool()); })
        .Only(QyMedia::Stream),
    QyField("OutliersVisible", T::Bool, "OutliersVisible").At("Properties").Only(QyMedia::Node | QyMedia::Ini),
    // The text media list AutoUpdate before IncludeInLegend, the stream after it.
    QyField("AutoUpdate", T::Bool, "AutoUpdate").At("Properties").Only(TextMedia),
    QyField("IncludeInLegend", T::Bool, "IncludeInLegend").At("Properties"),
    QyField("AutoUpdate", T::Bool, "AutoUpdate").Only(QyMedia::Stream),
    // After the references: joining a graph numbers the layer.
    QyField("Layer", T::Int32, "Layer").At("Properties").AfterReferences(),
    QyField("Line", T::Object, "Line"),
    QyField("Area", T::Object, "Area"),
    Link("XData", "XData"),
    Link("YData", "YData"),
    Link("XAxis", "XAxis"),
    Link("YAxis", "YAxis"),
    Link("MergeLegendItemWith", "MergeLegendItemWith").InBlock(1),
    Link("DrawBandTo", "DrawBandTo").InBlock(1),
    Symbol("PointSymbol", &TQyLineSeries::PointSymbol).InBlock(2),
    RangeFromFunction().InBlock(2).Only(TextMedia), // the text media have it before the second symbol
    Symbol("OutOfRangeSymbol", &TQyLineSeries::OutOfRangePointSymbol).InBlock(3),
    RangeFromFunction().InBlock(3).Only(QyMedia::Stream),
});

QY_REGISTER_RECORD(TQyPointWithErrorSeries, {
    QyField("ErrorIndicator", T::Object, "ErrorIndicator").InBlock(4),
    Link("DeltaXPlus", "DeltaXPlus").InBlock(4),
    Link("DeltaXMinus", "DeltaXMinus").InBlock(4),
    Link("DeltaYPlus", "DeltaYPlus").InBlock(4),
    Link("DeltaYMinus", "DeltaYMinus").InBlock(4),
});

QY_DOCUMENT_MEMBERS_IMPL(TQySeries)
