// Bars: the corners of every bar in drawing coordinates, the depth of three-dimensional bars,
// and hit testing on the bar rectangles.
#include "QyAxis.h"
#include "QyBars.h"
#include "QyDrawing.h"
#include <QScopedValueRollback>
#include <cmath>

namespace {
constexpr double MaxDouble = 1.7976931348623157e308;
}

// Corners, depth and labels are rebuilt whole: every bar depends on the group and the narrowest
// class, so appended data cannot continue where the last calculation ended.
void TQyBars::CalculatePoints() {
  const QScopedValueRollback<bool> calculating(FCalculating, true);
  FPoints.Clear();
  FPointIndices.Clear();
  FSecondCorners.Clear();
  FCaptionObjects.Clear();
  FPointCount = 0;
  const int count = FGraph && FXAxis && FYAxis ? GetCount() : 0;
  if (count >= 1) {
    // A stacked bar starts where the bar below ends: that series' corners come first.
    if (FOverlayStyle == TQyBarsOverlayStyle::Stack && !FStackedBelow.isEmpty())
      if (TQyBars* below = FStackedBelow.last(); below && below->FPointsStale) below->CalculatePoints();
    ComputeCorners(count);
    UpdateDB();
    MakeLabels(count);
  }
  FPointCount = FPoints.Count();
  FCalculatedCount = FCount;
  FPointsStale = false;
}

void TQyBars::ComputeCorners(int count) {
  // The group: side by side, each series takes the k-th of n slices of a class.
  int n = 1, k = 1;
  double distance = FClassesDistance, depth = FDepth3D;
  if (FOverlayStyle == TQyBarsOverlayStyle::Shift) {
    int members = 0;
    for (TQyBars* b : GraphBars())
      if (b->SeriesVisible() && b->FOverlayStyle == TQyBarsOverlayStyle::Shift && SameGroup(b)) {
        ++members;
        if (b == this) k = members;
        distance = std::max(distance, b->FClassesDistance);
        depth = std::max(depth, b->FDepth3D);
      }
    n = std::max(members, 1);
    k = std::min(k, n);
  }
  TQyAxis* classAxis = ClassAxis();
  TQyAxis* valueAxis = ValueAxis();
  // Bars stand on 0; on a logarithmic axis, which has no 0, on the axis' start.
  const bool logValues = valueAxis->LogActive();
  const float base = valueAxis->NumberToWorld(logValues ? valueAxis->GetStart() : 0.0);
  TQyBars* below = FOverlayStyle == TQyBarsOverlayStyle::Stack && !FStackedBelow.isEmpty() ? FStackedBelow.last().data() : nullptr;
  double narrowest = MaxDouble, w = 0;
  FPoints.CheckCount(count);
  FSecondCorners.CheckCount(count);
  FPointIndices.CheckCount(count);
  for (int i = 0; i < count; ++i) {
    const float p = classAxis->NumberToWorld(ClassBoundary(i));
    const float q = classAxis->NumberToWorld(ClassBoundary(i + 1));
    w = std::fabs(q - p);
    const double m = w * distance / 200;
    w -= 2 * m;
    const double slice = w / n;
    const float end = valueAxis->NumberToWorld(ValueAt(i));
    QPointF first, second;
    if (!FBarsHorizontal) {
      const double a = std::min(p, q); // the left end of the class
      const float bottom = below && below->FPoints.Count() > i ? below->FPoints[i].y() : base;
      first = QPointF(m + a + slice * (k - 1), end);
      second = QPointF(m + a + slice * k, bottom);
    } else {
      const double a = std::max(p, q); // the lower end of the class on screen
      const float start = below && below->FSecondCorners.Count() > i ? below->FSecondCorners[i].x() : base + 1;
      first = QPointF(start, a - slice * k - m);
      second = QPointF(end, a - slice * (k - 1) - m);
    }
    FPoints[i] = first;
    FSecondCorners[i] = second;
    FPointIndices[i] = i;
    narrowest = std::min(narrowest, w);
  }
  FDepth3DX = float(w * depth / 240);
  FDepth3DY = float(w * depth / 400);
  if (!(FDepth3DX > 0)) FDepth3DX = 1.0f;
  if (!(FDepth3DY > 0)) FDepth3DY = 1.0f;
  FCylinderShift = FBarStyle == TQyBarStyle::Cylinder ? (FBarsHorizontal ? FDepth3DY : FDepth3DX) : 0.0f;
  if (!(narrowest > 0)) narrowest = 100.0;
  FNarrowestClass = float(narrowest);
}

QRectF TQyBars::BarRect(int j) const {
  const QPointF p = FPoints[j], q = FSecondCorners[j];
  return OrderedRect(float(p.x()), float(p.y()), float(q.x()), float(q.y()));
}

// A bar is hit on its front and on its depth (up and to the right), bounds included.
int TQyBars::FindPoint(float x, float y) {
  if (FPointsStale) return -1;
  const bool deep = FBarStyle != TQyBarStyle::Flat;
  for (int j = 0; j < FPointCount; ++j) {
    const QRectF r = BarRect(j);
    const double right = r.right() + (deep ? FDepth3DX : 0), top = r.top() - (deep ? FDepth3DY : 0);
    if (x >= r.left() && x <= right && y >= top && y <= r.bottom()) return FPointIndices[j];
  }
  return -1;
}

int TQyBars::FindPoint(float x, float y, float) { return FindPoint(x, y); }

// The box of the graph takes the depth of three-dimensional bars.
bool TQyBars::GraphDepth(float& depthX, float& depthY) {
  if (FBarStyle == TQyBarStyle::Flat || !FGraph || !FXAxis || !FYAxis || !SeriesVisible()) return false;
  if (FPointsStale) CalculatePoints();
  if (FPointCount < 1) return false;
  depthX = FDepth3DX;
  depthY = FDepth3DY;
  return true;
}
