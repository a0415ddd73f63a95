// The pie legend: items from the chart's segments; placed on a side of the chart during its
// calculation, where it uses up margin so that the pie and further legends keep clear of it.
#include "QyPieLegend.h"
#include "QyClassRegistry.h"
#include "QyRounding.h"

QY_REGISTER_CLASS(TQyPieLegend);

namespace {
// The chart's Modified tells its legends, whose Modified tells the chart: one round only.
bool GModifyingChart = false;
} // namespace

TQyPieLegend::TQyPieLegend(QWidget* parent) : TQyCustomLegend(parent) { FItemWidth = 20.0f; }

TQyPieLegend::~TQyPieLegend() { FDestroying = true; }

void TQyPieLegend::SetPieChart(TQyPieChart* chart) {
  QyAssign(this, FPieChart, chart, QyRes::PieLegendChart, "PieChart", [this] { Modified(); });
}

void TQyPieLegend::Modified() {
  FListChanged = true;
  if (FPieChart && parentWidget() == FPieChart && !GModifyingChart) {
    GModifyingChart = true;
    FPieChart->Modified();
    GModifyingChart = false;
  }
  DoInvalidate();
}

void TQyPieLegend::GraphChanged(TQyGraphChange change) {
  if (change == TQyGraphChange::Legends) Modified();
}

// ---- the items ---------------------------------------------------------------------------------

void TQyPieLegend::CollectItems() {
  FValueIndices.clear();
  if (!FPieChart) return;
  for (int s = 0; s < FPieChart->SegmentCount(); ++s) FValueIndices.push_back(FPieChart->GetLegendItemIndex(s));
}

bool TQyPieLegend::CanRebuild() const { return FPieChart && !FPieChart->Updating(); }

void TQyPieLegend::PreparePaint() {
  if (FDestroying) return;
  if (!FPieChart)
    if (auto* chart = qobject_cast<TQyPieChart*>(parentWidget())) FPieChart = chart;
  TQyCustomLegend::PreparePaint();
}

QString TQyPieLegend::ItemCaption(int i) const {
  return FPieChart ? FPieChart->GetSegmentCaption(FValueIndices.at(size_t(i)), FLabelsFrom, FLabelFormat) : QString();
}

// The segment's fill: the palette entry of item i, the segment's drawing position.
QObject* TQyPieLegend::ItemObject(int i) const {
  return FPieChart ? const_cast<TQyFillSettings*>(FPieChart->PaletteItem(i)) : nullptr;
}

void TQyPieLegend::DrawItem(int i, const TQyLegendItemDrawArgs& args) {
  if (FPieChart) FPieChart->PaletteItem(i)->DrawListItem(args.Graphics, args.Rect);
}

// ---- placement on the chart --------------------------------------------------------------------

TQyPieChart* TQyPieLegend::LayoutChart() const {
  auto* chart = qobject_cast<TQyPieChart*>(parentWidget());
  return chart && (!FPieChart || FPieChart == chart) ? chart : nullptr;
}

// At the running margins, on the side of the position; centred between the opposite margins.
// The margin of that side grows by the legend's extent and the distance to the pie.
void TQyPieLegend::TakeMargins(TQyLayoutMargins& m, QSizeF client) {
  if (!LayoutChart() || !FVisible) return;
  PreparePaint();
  using P = TQyPieLegendPosition;
  const float w = width(), h = height(), d = FDistanceToPie;
  const float right = float(client.width()) - w - m.Right, bottom = float(client.height()) - m.Bottom - h;
  const float middleY = m.Top + (float(client.height()) - m.Top - m.Bottom - h) / 2;
  const float middleX = m.Left + (float(client.width()) - m.Left - m.Right - w) / 2;
  float left = m.Left, top = m.Top;
  switch (FPosition) {
  case P::LeftTop: break;
  case P::LeftCenter: top = middleY; break;
  case P::LeftBottom: top = bottom; break;
  case P::CenterTop: left = middleX; break;
  case P::CenterBottom: left = middleX, top = bottom; break;
  case P::RightTop: left = right; break;
  case P::RightCenter: left = right, top = middleY; break;
  case P::RightBottom: left = right, top = bottom; break;
  }
  FSettingBounds = true;
  move(RoundI(left), RoundI(top));
  FSettingBounds = false;
  switch (FPosition) {
  case P::LeftTop: case P::LeftCenter: case P::LeftBottom: m.Left += w + d; break;
  case P::CenterTop: m.Top += h + d; break;
  case P::CenterBottom: m.Bottom += h + d; break;
  default: m.Right += w + d; break;
  }
}
