#pragma once
// The legend of a pie chart: one item per segment, in drawing order, with the segment's fill as
// sample and its label text. On its chart it takes room from a side, and the pie shrinks.
#include "QyCustomLegend.h"
#include "QyPieChart.h"
#include <QPointer>
#include <vector>

namespace QyPieLegend {
Q_NAMESPACE
enum class TQyPieLegendPosition {
  LeftTop, LeftCenter, LeftBottom, CenterTop, CenterBottom, RightTop, RightCenter, RightBottom
};
Q_ENUM_NS(TQyPieLegendPosition)
} // namespace QyPieLegend
using QyPieLegend::TQyPieLegendPosition;

class TQyPieLegend : public TQyCustomLegend {
  Q_OBJECT
  Q_PROPERTY(TQyPieChart* PieChart READ GetPieChart WRITE SetPieChart)
  QY_PROPERTY(QyPieLegend::TQyPieLegendPosition, Position, QyRes::LegendPosition, Modified()) =
      TQyPieLegendPosition::RightCenter;
  QY_PROPERTY(QyTypes::TQyLabelStyle, LabelsFrom, QyRes::PieLegendLabelsFrom, Modified()) = TQyLabelStyle::CaptionsList;
  QY_PROPERTY(QString, LabelFormat, QyRes::PieLabelFormat, Modified());
  QY_PROPERTY(float, DistanceToPie, QyRes::PieLegendDistance, Modified()) = 8.0f;
  QY_DOCUMENT_MEMBERS // the record stands in QyPieLegendRecord.cpp

public:
  explicit TQyPieLegend(QWidget* parent = nullptr);
  ~TQyPieLegend() override;

  TQyPieChart* GetPieChart() const { return FPieChart; }
  void SetPieChart(TQyPieChart* chart);

  // ---- the items: the segments
  int ItemCount() const override { return int(FValueIndices.size()); }
  QString ItemCaption(int i) const override;
  void DrawItem(int i, const TQyLegendItemDrawArgs& args) override;
  QObject* ItemObject(int i) const override;
  int ItemEventIndex(int i) const override { return FValueIndices.at(size_t(i)); }

  void Modified() override;
  void PreparePaint() override;

  // ---- as a part of its chart: takes its room from the running margins
  void TakeMargins(TQyLayoutMargins& margins, QSizeF client) override;
  void GraphChanged(TQyGraphChange change) override;

protected:
  void CollectItems() override;
  bool CanRebuild() const override;

private:
  // The chart this legend lies on and takes room from, or nullptr.
  TQyPieChart* LayoutChart() const;

  QPointer<TQyPieChart> FPieChart;
  std::vector<int> FValueIndices; // per item (segment), the value index
};
