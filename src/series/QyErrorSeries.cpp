// Error bars: four delta vectors, their share of the axis extent, bar ends in pixels, drawing
// and the legend sample.
#include "QyAxis.h"
#include "QyPointSeries.h"
#include "QyVectors.h"
#include <QPainter>
#include <cmath>

namespace {
constexpr double MaxDouble = 1.7976931348623157e308;
constexpr const char* DeltaCaptions[4] = {QyRes::ErrorBarsDeltaXPlus, QyRes::ErrorBarsDeltaXMinus,
                                          QyRes::ErrorBarsDeltaYPlus, QyRes::ErrorBarsDeltaYMinus};
constexpr const char* DeltaNames[4] = {"DeltaXPlus", "DeltaXMinus", "DeltaYPlus", "DeltaYMinus"};
} // namespace

TQyPointWithErrorSeries::TQyPointWithErrorSeries(QObject* owner) : TQyPointSeries(owner) {
  FErrorIndicator = new TQyLineSettings([this] { PointsModified(); TestVisibleChanged(); }, this);
  FErrorIndicator->SetColor(0xFF808080); // gray
  FErrorPen = TQyPen(0xFF808080, 1);
}

TQyPointWithErrorSeries::~TQyPointWithErrorSeries() {
  for (auto& v : FDelta)
    if (v) v->RemoveListener(this);
}

void TQyPointWithErrorSeries::SetDelta(Direction d, TQyCustomDoubleVector* v) {
  TQyCustomDoubleVector* old = FDelta[d];
  QyAssign(this, FDelta[d], v, DeltaCaptions[d], DeltaNames[d], [&] {
    if (old) old->RemoveListener(this);
    if (v) v->AddListener(this);
    RangesModified(); // the extent includes the bars
    if (FGraph) FGraph->SeriesModified();
  });
}

void TQyPointWithErrorSeries::VectorDestroyed(TQyCustomDoubleVector* vector) {
  for (int d = XPlus; d <= YMinus; ++d)
    if (FDelta[d] == vector) SetDelta(Direction(d), nullptr);
  TQyPointSeries::VectorDestroyed(vector);
}

double TQyPointWithErrorSeries::GetDelta(Direction d, int i) {
  TQyCustomDoubleVector* v = FDelta[d];
  double value = v && i >= 0 && i < v->GetCount() ? v->GetValue(i) : 0.0;
  const TQyValueTransformation* tf[4] = {&DxPlusTransformation, &DxMinusTransformation, &DyPlusTransformation,
                                         &DyMinusTransformation};
  if (*tf[d]) value = (*tf[d])(this, {value, i});
  return std::fabs(value);
}

bool TQyPointWithErrorSeries::HasAnyDelta() const {
  return HasDelta(XPlus) || HasDelta(XMinus) || HasDelta(YPlus) || HasDelta(YMinus);
}

bool TQyPointWithErrorSeries::IndicatorsShown() const { return FErrorIndicator->GetVisible() && HasAnyDelta(); }

bool TQyPointWithErrorSeries::HasValuesAt(int i) const {
  if (!TQyPointSeries::HasValuesAt(i)) return false;
  if (FOutliersVisible) return true;
  for (const auto& v : FDelta)
    if (v && i < v->GetCount() && v->IsOutlier(i)) return false;
  return true;
}

bool TQyPointWithErrorSeries::EveryIndexHasValues() const {
  if (!TQyPointSeries::EveryIndexHasValues()) return false;
  if (FOutliersVisible) return true;
  for (const auto& v : FDelta)
    if (v && v->HasOutliers()) return false;
  return true;
}

bool TQyPointWithErrorSeries::SeriesVisible() const {
  return TQyPointSeries::SeriesVisible() || (FVisible && IndicatorsShown());
}

bool TQyPointWithErrorSeries::PureScatter() const { return !IndicatorsShown() && TQyPointSeries::PureScatter(); }

void TQyPointWithErrorSeries::CheckDBVectors() {
  TQyPointSeries::CheckDBVectors();
  for (const auto& v : FDelta)
    if (v) v->UpdateDB();
}

// The extent of value minus the lower delta to value plus the upper one; a logarithmic axis
// leaves non-positive values out of the minimum.
void TQyPointWithErrorSeries::ExtendExtent(TQyCustomDoubleVector* v, bool isX, double& lo, double& hi) {
  const TQyAxis* axis = isX ? FXAxis : FYAxis;
  const bool log = axis->LogActive() || axis->GetScaling() == TQyAxisScaling::Log ||
                   axis->GetScaling() == TQyAxisScaling::LogEE;
  lo = MaxDouble, hi = -MaxDouble;
  for (int i = 0; i < FCount; ++i) {
    if (!HasValuesAt(i)) continue;
    const double x = isX ? TransformX(v->GetValue(i), i) : TransformY(v->GetValue(i), i);
    const double a = x - GetDelta(isX ? XMinus : YMinus, i), b = x + GetDelta(isX ? XPlus : YPlus, i);
    if (!std::isfinite(a) || !std::isfinite(b)) continue;
    if (!log || a > 0) lo = std::min(lo, a);
    else if (x > 0) lo = std::min(lo, x);
    hi = std::max(hi, b);
  }
}

void TQyPointWithErrorSeries::GetExtent(double& minX, double& maxX, double& minY, double& maxY) {
  if (!IndicatorsShown()) {
    TQyPointSeries::GetExtent(minX, maxX, minY, maxY);
    return;
  }
  ExtendExtent(FXData, true, minX, maxX);
  ExtendExtent(FYData, false, minY, maxY);
}

// The inherited points, then the pixel end of every bar, recomputed for all points: they are
// few after thinning, and an append may have rewritten the last pixel column.
void TQyPointWithErrorSeries::CalculatePoints() {
  TQyPointSeries::CalculatePoints();
  for (auto& v : FBarEnds) v.Clear();
  if (FPointCount == 0 || !IndicatorsShown()) return;
  constexpr float None = std::numeric_limits<float>::quiet_NaN();
  for (int n = 0; n < FPointCount; ++n) {
    const int i = FPointIndices[n];
    const double x = TransformX(FXData->GetValue(i), i), y = TransformY(FYData->GetValue(i), i);
    const double ends[4] = {FXAxis->NumberToWorld(x + GetDxPlus(i)), FXAxis->NumberToWorld(x - GetDxMinus(i)),
                            FYAxis->NumberToWorld(y + GetDyPlus(i)), FYAxis->NumberToWorld(y - GetDyMinus(i))};
    for (int d = 0; d < 4; ++d) {
      const bool has = FDelta[d] && i < FDelta[d]->GetCount(); // a shorter vector: no bar beyond it
      FBarEnds[d].Add(has ? float(ends[d]) : None);
    }
  }
}

void TQyPointWithErrorSeries::TestVisibleChanged() {
  if (FGraph) {
    FErrorPen = FErrorIndicator->GetPen(DataArea());
    const bool shown = FErrorIndicator->GetVisible();
    if (shown != FLastIndicatorVisible) {
      FLastIndicatorVisible = shown;
      if (FYAxis && FYAxis->GetCurrentZoomStage() <= 0) RangesModified();
    }
  }
  TQyPointSeries::TestVisibleChanged();
}

int TQyPointWithErrorSeries::GetItemHeight() {
  const bool yBars = FErrorIndicator->GetVisible() && (HasDelta(YPlus) || HasDelta(YMinus));
  return TQyPointSeries::GetItemHeight() + (yBars ? 8 : 0);
}

namespace {
// A bar from the point to its end and a cap of 2h across the end.
void AddBar(std::vector<QLineF>& lines, QPointF p, float end, bool horizontal, float h) {
  if (!std::isfinite(end)) return;
  if (horizontal) {
    if (end == float(p.x())) return;
    lines.emplace_back(p, QPointF(end, p.y()));
    lines.emplace_back(QPointF(end, p.y() - h), QPointF(end, p.y() + h));
  } else {
    if (end == float(p.y())) return;
    lines.emplace_back(p, QPointF(p.x(), end));
    lines.emplace_back(QPointF(p.x() - h, end), QPointF(p.x() + h, end));
  }
}
} // namespace

void TQyPointWithErrorSeries::DrawIndicators(QPainter* g) {
  if (FBarEnds[XPlus].Count() < FPointCount) return; // no bars calculated
  const float h = (FPointSymbol->GetSize() - 1) / 2;
  std::vector<QLineF> lines;
  QPen pen = FErrorPen;
  auto flush = [&] {
    if (lines.empty()) return;
    g->setPen(pen);
    g->drawLines(lines.data(), int(lines.size()));
    lines.clear();
  };
  for (int n = 0; n < FPointCount; ++n) {
    bool draw = FErrorIndicator->GetVisible();
    if (OnGetIndicatorsPen) {
      TQyPenEventArgs args;
      ElementAt(n, args.Index, args.X, args.Y);
      args.Pen = pen;
      args.Draw = draw;
      OnGetIndicatorsPen(this, args);
      if (args.Pen != pen) flush(), pen = args.Pen;
      draw = args.Draw;
    }
    if (!draw) continue;
    for (int d = 0; d < 4; ++d) AddBar(lines, FPoints[n], FBarEnds[d][n], d <= XMinus, h);
  }
  flush();
}

void TQyPointWithErrorSeries::DrawListItem(const TQyLegendItemDrawArgs& args) {
  if (IndicatorsShown()) DrawListItem(args, LegendItemStyle::Filled);
  else TQyPointSeries::DrawListItem(args);
}

// The sample with stubs of the bars: from the symbol's edge to the bar's end, capped.
void TQyPointWithErrorSeries::DrawListItem(const TQyLegendItemDrawArgs& args, LegendItemStyle style) {
  if (!HasAnyDelta()) {
    TQyPointSeries::DrawListItem(args, style);
    return;
  }
  const bool xBars = HasDelta(XPlus) || HasDelta(XMinus);
  if (xBars && style == LegendItemStyle::Filled) style = LegendItemStyle::AscendingDiagonal;
  TQyPointSeries::DrawListItem(args, style);
  if (!FErrorIndicator->GetVisible()) return;
  const QRectF& r = args.Rect;
  const float h = (FPointSymbol->GetSize() - 1) / 2;
  const float w = FErrorIndicator->GetWidth() > 0 ? FErrorIndicator->GetWidth() : 1;
  const float vertical = (r.height() - 2 * w) / 2, horizontal = (r.width() - 2 * w) / 4;
  const QPointF c = FRangeFromFunction || xBars ? r.center() + QPointF(-r.width() / 4, r.height() / 4) : r.center();
  std::vector<QLineF> lines;
  const float sign[4] = {1, -1, -1, 1}; // screen Y grows downwards
  for (int d = 0; d < 4; ++d) {
    if (!HasDelta(Direction(d))) continue;
    const bool isX = d <= XMinus;
    const float len = isX ? horizontal : vertical;
    const QPointF dir = isX ? QPointF(sign[d], 0) : QPointF(0, sign[d]);
    const QPointF from = c + dir * (h + 1), to = c + dir * std::max(len, h + 1);
    lines.emplace_back(from, to);
    const QPointF across = isX ? QPointF(0, h) : QPointF(h, 0);
    lines.emplace_back(to - across, to + across);
  }
  args.Graphics->save();
  args.Graphics->setPen(FErrorPen);
  args.Graphics->drawLines(lines.data(), int(lines.size()));
  args.Graphics->restore();
}
