// Zoom commands of the graph: a frame to zoom to, back, redo, a stage, reset, and the zoom about
// a point of the wheel. Every axis keeps its own history (stage 0 is the unzoomed range); graphs
// coupled by a shared X axis go through the same stages, so that "back" stays aligned in all.
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include "QySeries.h"
#include "QyVectors.h"
#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double Huge = std::numeric_limits<double>::max();

// The axes that stand in `g` itself (a child graph's shared X axis stands in its master).
QList<TQyAxis*> OwnAxes(const TQyGraph2D* g) {
  QList<TQyAxis*> out;
  for (TQyAxis* a : g->Axes())
    if (a->parentWidget() == g) out.append(a);
  return out;
}
} // namespace

QList<TQyGraph2D*> TQyGraph2D::CoupledGroup() {
  TQyGraph2D* master = CoupledMaster();
  if (!master) return {this};
  QList<TQyGraph2D*> group = master->ChildGraphs();
  group.prepend(master);
  return group;
}

void TQyGraph2D::ForCoupledAxes(const std::function<void(TQyAxis*)>& op) {
  for (TQyGraph2D* g : CoupledGroup()) {
    for (TQyAxis* a : OwnAxes(g)) op(a);
    g->SeriesModified();
  }
}

// The other graphs of the group take a stage of their present ends, so that every axis of the
// group counts the same stages (the shared X axis has taken its own already).
void TQyGraph2D::FixChildZoomStack() {
  for (TQyGraph2D* g : CoupledGroup())
    if (g != this)
      for (TQyAxis* a : OwnAxes(g))
        if (a != FPrimaryXAxis) a->ZoomIn(a->GetStart(), a->GetStop());
}

// Stack or ring: the axes keep a ring; the stack is made by these answers.
bool TQyGraph2D::GetCanZoomBack() const {
  if (FZoom->GetBufferType() == TQyZoomBufferType::AsStack) return GetCurrentZoomStage() > 0;
  return (FPrimaryXAxis && FPrimaryXAxis->GetCanZoomBack()) || (FPrimaryYAxis && FPrimaryYAxis->GetCanZoomBack());
}

bool TQyGraph2D::GetCanRedoZoom() const {
  if (FZoom->GetBufferType() == TQyZoomBufferType::AsStack) return GetCurrentZoomStage() < GetZoomBufferSize() - 1;
  return GetCanZoomBack();
}

int TQyGraph2D::GetCurrentZoomStage() const { return FPrimaryYAxis ? FPrimaryYAxis->GetCurrentZoomStage() : 0; }

int TQyGraph2D::GetZoomBufferSize() const { return FPrimaryYAxis ? FPrimaryYAxis->GetZoomBufferSize() : 0; }

void TQyGraph2D::ZoomBack() {
  if (GetCanZoomBack()) ForCoupledAxes([](TQyAxis* a) { a->ZoomBack(); });
}

void TQyGraph2D::RedoZoom() {
  if (GetCanRedoZoom()) ForCoupledAxes([](TQyAxis* a) { a->RedoZoom(); });
}

void TQyGraph2D::ZoomToStage(int stage) {
  if (GetCanZoomBack() && stage < GetZoomBufferSize()) ForCoupledAxes([stage](TQyAxis* a) { a->ZoomToStage(stage); });
}

// Every axis takes its automatic ends again and forgets its history (no test of the history).
void TQyGraph2D::ZoomReset() {
  ForCoupledAxes([](TQyAxis* a) { a->RangeModified(); });
}

namespace {
struct TFrameRange {
  double Lo, Hi;
};
// The range an axis shows between two pixels, in order.
TFrameRange Between(TQyAxis* a, float p1, float p2) {
  const double u = a->WorldToNumber(p1), v = a->WorldToNumber(p2);
  return {std::min(u, v), std::max(u, v)};
}
} // namespace

void TQyGraph2D::ZoomTo(QPoint p1, QPoint p2) {
  const QRectF area = FDataArea;
  auto floorI = [](double v) { return -CeilI(-v); }; // saturating, as CeilI
  const float l = float(std::max(std::min(p1.x(), p2.x()), floorI(area.x())));
  const float r = float(std::min(std::max(p1.x(), p2.x()), CeilI(area.x() + area.width())));
  const float t = float(std::max(std::min(p1.y(), p2.y()), floorI(area.y())));
  const float b = float(std::min(std::max(p1.y(), p2.y()), CeilI(area.y() + area.height())));
  const QList<TQyAxis*> axes = Axes();
  std::vector<double> starts(axes.size(), Huge), stops(axes.size(), -Huge);
  BeginUpdate();
  if (!FZoom->GetOptimizeSeries()) {
    for (int i = 0; i < axes.size(); ++i) {
      const TFrameRange f = axes[i]->GetHorizontal() ? Between(axes[i], l, r) : Between(axes[i], b, t);
      starts[i] = f.Lo, stops[i] = f.Hi;
    }
  } else {
    ShrinkFrameToData(axes, l, r, t, b, starts, stops);
  }
  for (int i = 0; i < axes.size(); ++i) {
    if (starts[i] <= stops[i]) axes[i]->ZoomIn(starts[i], stops[i]);
    else update(); // nothing of the data in the frame: this axis stays
  }
  FixChildZoomStack();
  EndUpdate();
}

// The frame shrinks to the hull of the data points inside it, per axis.
void TQyGraph2D::ShrinkFrameToData(const QList<TQyAxis*>& axes, float l, float r, float t, float b,
                                   std::vector<double>& starts, std::vector<double>& stops) {
  const TQyVectorReadLocks hold = HoldSeriesData();
  auto index = [&axes](TQyAxis* a, int fallback) {
    const int i = axes.indexOf(a);
    return i >= 0 ? i : std::min<int>(fallback, int(axes.size()) - 1);
  };
  for (TQySeries* s : FRelatedSeries) {
    if (!s->SeriesVisible() || !s->GetXAxis() || !s->GetYAxis() || axes.isEmpty()) continue;
    const int xa = index(s->GetXAxis(), 0), ya = index(s->GetYAxis(), 1);
    const TFrameRange fx = Between(s->GetXAxis(), l, r), fy = Between(s->GetYAxis(), b, t);
    const int n = s->GetCount();
    for (int i = 0; i < n; ++i) {
      if (!s->HasValuesAt(i)) continue;
      const double x = s->TransformX(s->GetXData()->GetValue(i), i);
      const double y = s->TransformY(s->GetYData()->GetValue(i), i);
      if (x < fx.Lo || x > fx.Hi || y < fy.Lo || y > fy.Hi) continue;
      starts[xa] = std::min(starts[xa], x), stops[xa] = std::max(stops[xa], x);
      starts[ya] = std::min(starts[ya], y), stops[ya] = std::max(stops[ya], y);
    }
  }
}

// The wheel: every axis is scaled by `factor` about the value under `p` (in decades on a log axis).
// The value is read from the present ends and the axis' pixel extent, which hold between two
// layouts. An end stops at the data's limit, or at the end it had when the gesture began (`from`)
// if that lies beyond: the stage taken at the end of the gesture (ZoomIn takes ends within the
// data only) then shows what the gesture showed.
void TQyGraph2D::ScaleAxesAbout(QPointF p, double factor, const std::vector<QPair<double, double>>& from) {
  const QList<TQyAxis*> axes = Axes();
  for (int i = 0; i < axes.size() && i < int(from.size()); ++i) {
    TQyAxis* a = axes[i];
    const double lo = std::min(from[i].first, a->DataMin()), hi = std::max(from[i].second, a->DataMax());
    const bool log = a->LogActive() && a->GetStart() > 0;
    if (!(lo < hi) || !(a->AxisLength() > 0)) continue;
    auto in = [log](double v) { return log ? std::log10(v) : v; };
    auto out = [log](double v) { return log ? std::pow(10.0, v) : v; };
    const bool forward = a->GetHorizontal() != a->GetTwisted();
    const double along = (a->GetHorizontal() ? p.x() - a->OriginX() : p.y() - a->OriginY()) / a->AxisLength();
    const double s0 = in(a->GetStart()), e0 = in(a->GetStop());
    const double c = s0 + (e0 - s0) * (forward ? along : 1 - along);
    const double s = std::max(out(c + (s0 - c) * factor), lo), e = std::min(out(c + (e0 - c) * factor), hi);
    if (std::isfinite(s) && std::isfinite(e) && s < e) a->SetStartStop(s, e);
  }
  SeriesModified();
}
