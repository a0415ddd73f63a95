// The document record of a pie legend: the legend box's record with the chart it lists and how
// its texts are made in place of a graph and an order of series.
#include "QyLegendRecord.h"
#include "QyPieLegend.h"
#include "QyRecordMedia.h"

namespace {
using T = TQyFieldType;

const TQyRecordRegistration PieLegendRecord(
    TQyPieLegend::staticMetaObject,
    QyLegendBoxRecord(QyLegendProperty("PieChart", T::Reference, "PieChart"), {},
                      {QyLegendProperty("LabelsFrom", T::Enum, "LabelsFrom"),
                       QyLegendProperty("LabelFormat", T::String, "LabelFormat"),
                       QyLegendProperty("DistanceToPie", T::Single, "DistanceToPie")}));
} // namespace

QY_DOCUMENT_MEMBERS_IMPL(TQyPieLegend)
