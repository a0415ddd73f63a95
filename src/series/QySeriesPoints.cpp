// From data to pixel points: the visible window, the thinning per pixel column, band points.
#include "QyAxis.h"
#include "QySeries.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include <cmath>

void TQySeries::GetCalcPoint(int i, QPointF& point) {
  point.setX(FXAxis->NumberToWorld(TransformX(FXData->GetValue(i), i)));
  point.setY(FYAxis->NumberToWorld(TransformY(FYData->GetValue(i), i)));
}

// The index range to turn into points: from CalculatedCount to the last value; on ascending X only
// the window of the X axis, with one point outside on each side so that the line runs on to the
// border. Without a transformation the window is found by binary search.
void TQySeries::GetCalcPointsStartStop(int& start, int& stop) {
  start = FCalculatedCount;
  stop = FCount - 1;
  if (FXData->GetOnlyAscending() && stop - start >= 21) {
    const double lo = FXAxis->GetStart(), hi = FXAxis->GetStop();
    if (!XValueTransformation) {
      const double* x = FXData == FDataIndexer ? nullptr : FXData->Data();
      auto value = [&](int i) { return x ? x[i] : double(i); };
      // First index whose successor is at or past the start; last whose predecessor is below stop.
      int a = start, b = stop;
      while (a < b) { const int m = a + (b - a) / 2; if (value(m + 1) < lo) a = m + 1; else b = m; }
      start = a;
      a = start + 1, b = stop;
      while (a < b) { const int m = a + (b - a + 1) / 2; if (value(m - 1) >= hi) b = m - 1; else a = m; }
      stop = std::max(a, start);
    } else {
      while (start < stop && TransformX(FXData->GetValue(start + 1), start + 1) < lo) ++start;
      while (stop - 1 > start && TransformX(FXData->GetValue(stop - 1), stop - 1) >= hi) --stop;
    }
  }
  if (start > stop) start = stop;
  while (start < stop && !HasValuesAt(start)) ++start;
  while (stop > start && !HasValuesAt(stop)) --stop;
}

// The body of a per-value loop: inlined into the loop of TQyPointSource::ForEach.
#define QY_INNER_LOOP __attribute__((always_inline))

// Turns data indices into pixel points. When nothing intervenes (no transformation, no
// outliers to skip, linear axes) the values come straight from the arrays through the axes'
// linear maps: the one pass over millions of values then costs a few nanoseconds a value.
// Values that are not finite have no point: they are never drawn.
class TQyLineSeries::TQyPointSource {
public:
  explicit TQyPointSource(TQyLineSeries& s) : FS(s) {
    FFast = !s.XValueTransformation && !s.YValueTransformation && s.EveryIndexHasValues() &&
            s.FXAxis->LinearMap(FMapX) && s.FYAxis->LinearMap(FMapY);
    FX = s.FXData == s.FDataIndexer ? nullptr : s.FXData->Data();
    FY = s.FYData == s.FDataIndexer ? nullptr : s.FYData->Data();
  }
  // Values straight from the arrays through the linear maps (nullptr: the index is the value).
  bool Straight() const { return FFast; }
  const double* X() const { return FX; }
  const double* Y() const { return FY; }
  const TQyLinearMap& MapX() const { return FMapX; }
  const TQyLinearMap& MapY() const { return FMapY; }
  // Calls fn(i, point) for each index from start to stop that has a point, in order. The two
  // loops are instantiated separately so that the straight one compiles to a tight loop.
  template <class Fn> void ForEach(int start, int stop, Fn&& fn) const {
    QPointF p;
    if (FFast) {
      for (int i = start; i <= stop; ++i) {
        const double x = FX ? FX[i] : double(i), y = FY ? FY[i] : double(i);
        if (!std::isfinite(x) || !std::isfinite(y)) continue;
        p.setX(FMapX.Map(x));
        p.setY(FMapY.Map(y));
        fn(i, p);
      }
      return;
    }
    for (int i = start; i <= stop; ++i) {
      if (!FS.HasValuesAt(i)) continue;
      const double x = FS.TransformX(FS.FXData->GetValue(i), i);
      const double y = FS.TransformY(FS.FYData->GetValue(i), i);
      if (!std::isfinite(x) || !std::isfinite(y)) continue;
      p.setX(FS.FXAxis->NumberToWorld(x));
      p.setY(FS.FYAxis->NumberToWorld(y));
      fn(i, p);
    }
  }

private:
  TQyLineSeries& FS;
  bool FFast = false;
  TQyLinearMap FMapX, FMapY;
  const double* FX = nullptr;
  const double* FY = nullptr;
};

void TQySeries::CalculatePoints() { FPointsStale = false; }

bool TQySeries::EveryIndexHasValues() const {
  return FOutliersVisible || (!FXData->HasOutliers() && !FYData->HasOutliers());
}

void TQyLineSeries::CalculatePoints() {
  if (FCalculatedCount == 0) {
    FPoints.Clear();
    FPointIndices.Clear();
    FPointCount = 0;
    FColumnPoint = 0;
    if (FGraph) {
      const int m = int(std::ceil(FPointSymbol->GetSize())) + 1; // symbols just outside still show
      FScatterCells.Reset(QRect(QPoint(0, 0), FGraph->LayoutSize()).adjusted(-m, -m, m, m));
    }
  }
  FCount = GetCount();
  if (FCount == 0 || !FXAxis || !FYAxis) {
    FPointsStale = false;
    return;
  }
  auto lock = FXData->ReadLock();
  auto lockY = FYData->ReadLock();
  // Appended values may still fall into the last pixel column: recompute that column.
  if (FCalculatedCount > 0 && FPointCount > 0 && !FPointSymbol->GetVisible()) {
    FPointCount = FColumnPoint;
    FCalculatedCount = FPointIndices[FColumnPoint];
  }
  int start, stop;
  GetCalcPointsStartStop(start, stop);
  if (PureScatter()) KeepOccupyingPoints(start, stop);
  else if (FPointSymbol->GetVisible()) KeepDistinctPoints(start, stop);
  else CompressRuns(start, stop);
  FCalculatedCount = FCount;
  AddBandPoints();
  FPointsStale = false;
  ++FPointsVersion;
}

// With symbols: a point is kept when it lies more than a pixel from the last kept point.
void TQyLineSeries::KeepDistinctPoints(int start, int stop) {
  QPointF last(1e30, 1e30);
  if (FPointCount > 0) last = FPoints[FPointCount - 1];
  TQyPointSource(*this).ForEach(start, stop, [&](int i, const QPointF& p) QY_INNER_LOOP {
    if (FPointCount > 0 && i != start && std::fabs(p.x() - last.x()) <= 1 && std::fabs(p.y() - last.y()) <= 1)
      return;
    FPoints.SetValue(FPointCount, p);
    FPointIndices.SetValue(FPointCount++, i);
    last = p;
  });
}

// Symbols alone (no line, no area): a point is kept when its pixel is not yet taken. Dense noisy
// data jump back and forth, so comparing with the last kept point alone would keep nearly all.
void TQyLineSeries::KeepOccupyingPoints(int start, int stop) {
  TQyPointSource(*this).ForEach(start, stop, [&](int i, const QPointF& p) QY_INNER_LOOP {
    if (!FScatterCells.Claim(p)) return;
    FPoints.SetValue(FPointCount, p);
    FPointIndices.SetValue(FPointCount++, i);
  });
}

bool TQyLineSeries::PureScatter() const {
  return FPointSymbol->GetVisible() && !FLine->GetVisible() && !FArea->GetVisible() && !IsFunctionSeries() &&
         FGraph;
}

// Appends one pixel column's points in data order: first, lowest and highest in whichever order
// they came, last; an index is never kept twice in a row.
void TQyLineSeries::PutColumn(const TQyKeptPoint& first, const TQyKeptPoint& low, const TQyKeptPoint& high,
                              const TQyKeptPoint& last) {
  FColumnPoint = FPointCount;
  const bool lowFirst = low.I < high.I;
  for (const TQyKeptPoint* k : {&first, lowFirst ? &low : &high, lowFirst ? &high : &low, &last}) {
    if (FPointCount > FColumnPoint && FPointIndices[FPointCount - 1] == k->I) continue;
    FPoints.SetValue(FPointCount, k->P);
    FPointIndices.SetValue(FPointCount++, k->I);
  }
}

// Without symbols: the points of one pixel column collapse to at most four (first, lowest and
// highest in data order, last), which draws the same polyline as all of them.
void TQyLineSeries::CompressRuns(int start, int stop) {
  if (CompressColumns(start, stop)) return;
  TQyKeptPoint first{}, low{}, high{}, last{};
  double firstColumn = 0;
  bool open = false;
  TQyPointSource(*this).ForEach(start, stop, [&](int i, const QPointF& p) QY_INNER_LOOP {
    const TQyKeptPoint k{p, i};
    const double column = std::floor(p.x());
    if (open && column == firstColumn) {
      if (p.y() < low.P.y()) low = k;
      if (p.y() > high.P.y()) high = k;
      last = k;
      return;
    }
    if (open) PutColumn(first, low, high, last);
    first = low = high = last = k;
    firstColumn = column;
    open = true;
  });
  if (open) PutColumn(first, low, high, last);
}

// The same columns on the straight path over ascending X, without a step per value: each column's
// end is found by a galloping search on X, and its extremes by the Y vector's block index. The
// work then grows with the pixel columns (times a logarithm), not with the values, which is what
// a new X window on millions of values needs. The mapping is monotone, so the data extremes are
// the pixel extremes; a pixel tie keeps the first point, as the walk above does.
bool TQyLineSeries::CompressColumns(int start, int stop) {
  const TQyPointSource source(*this);
  const double* y = source.Y();
  if (!source.Straight() || !y || stop - start < 2 * TQyMinMaxIndex::BlockSize ||
      !FXData->GetOnlyAscending())
    return false;
  const double* xs = source.X();
  auto x = [&](int i) { return xs ? xs[i] : double(i); };
  if (!std::isfinite(x(start)) || !std::isfinite(x(stop))) return false; // infinities at the ends
  const TQyLinearMap& mx = source.MapX();
  const TQyLinearMap& my = source.MapY();
  auto column = [&](int i) { return std::floor(double(mx.Map(x(i)))); };
  auto kept = [&](int i) { return TQyKeptPoint{QPointF(mx.Map(x(i)), my.Map(y[i])), i}; };
  int width = 1; // values in the last column: evenly spaced X makes it the next column's width
  for (int a = start; a <= stop;) {
    // [a, b) is the column of a. Every probe may miss the cache (and the page tables) on large
    // data, so the search starts at the guess from the last column's width and gallops from there
    // in whichever direction it is off; then it halves. Evenly spaced data need two probes.
    const double c = column(a);
    const int g = int(std::min<long long>(stop + 1, (long long)a + width));
    int lo = a, hi = stop + 1; // column(lo) is c; hi is past the data or in another column
    if (g <= stop && column(g) == c) {
      lo = g;
      for (long long step = 1; g + step <= stop; step *= 2) {
        const int probe = g + int(step);
        if (column(probe) != c) { hi = probe; break; }
        lo = probe;
      }
    } else {
      hi = g;
      for (long long step = 1; g - step > a; step *= 2) {
        const int probe = g - int(step);
        if (column(probe) == c) { lo = probe; break; }
        hi = probe;
      }
    }
    while (hi - lo > 1) {
      const int m = lo + (hi - lo) / 2;
      (column(m) == c ? lo : hi) = m;
    }
    const int b = hi;
    width = b - a;
    int f = a, l = b - 1;
    while (f < b && !std::isfinite(y[f])) ++f;
    while (l > f && !std::isfinite(y[l])) --l;
    if (f < b) {
      int iLow, iHigh;
      FYData->Extremes(f, l + 1, iLow, iHigh);
      const TQyKeptPoint first = kept(f), p = kept(iLow), q = kept(iHigh);
      TQyKeptPoint top = p.P.y() <= q.P.y() ? p : q, bottom = p.P.y() <= q.P.y() ? q : p;
      if (first.P.y() == top.P.y()) top = first;
      if (first.P.y() == bottom.P.y()) bottom = first;
      PutColumn(first, top, bottom, kept(l));
    }
    a = b;
  }
  return true;
}

// Closes the polygon of a filled area: to the other series of a band, or down to the baseline.
void TQyLineSeries::AddBandPoints() {
  FTotalPointCount = FPointCount;
  if (FPointCount == 0) return;
  FPoints.CheckCount(FPointCount);
  TQySeries* band = FDrawBandTo;
  if (band && band->Graph()) {
    if (band->PointsStale()) band->CalculatePoints();
    if (band->PointCount() > 0) {
      FArea->SetVisible(true); // a band is drawn as the area between the two series
      for (int k = band->PointCount() - 1; k >= 0; --k) FPoints.SetValue(FTotalPointCount++, band->Points()[k]);
      return;
    }
  }
  const double base = Baseline();
  FPoints.SetValue(FTotalPointCount++, QPointF(FPoints[FPointCount - 1].x(), base));
  FPoints.SetValue(FTotalPointCount++, QPointF(FPoints[0].x(), base));
}

// ---- picking ----------------------------------------------------------------------------------

// The value of the polyline at x, by linear interpolation in the raw data.
double TQySeries::GetY(double x) {
  const TQyVectorReadLocks hold(DataVectors()); // captions and markers ask at any time
  const int n = GetCount();
  if (n == 0) return 0;
  if (n == 1) return FYData->GetValue(0);
  TQyCustomDoubleVector& X = *FXData;
  int lo = -1, hi = -1;
  if (X.GetOnlyAscending()) {
    hi = 1;
    while (hi < n && !(HasValuesAt(hi) && X[hi] > x)) ++hi;
    if (hi >= n) for (hi = n - 1; hi > 0 && !HasValuesAt(hi); --hi) {}
    for (lo = hi - 1; lo > 0 && !HasValuesAt(lo); --lo) {}
  } else {
    for (hi = 0; hi < n && !(HasValuesAt(hi) && X[hi] >= x); ++hi) {}
    for (lo = n - 1; lo >= 0 && !(HasValuesAt(lo) && X[lo] <= x); --lo) {}
    if (hi >= n) hi = lo;
    if (lo < 0) lo = hi;
    if (lo == hi && lo > 0) for (--lo; lo > 0 && !HasValuesAt(lo); --lo) {}
  }
  if (lo < 0 || hi < 0) return 0;
  const double xl = X[lo], xh = X[hi];
  if (lo == hi || xh == xl) return FYData->GetValue(lo);
  return FYData->GetValue(lo) + (x - xl) * (FYData->GetValue(hi) - FYData->GetValue(lo)) / (xh - xl);
}

int TQySeries::FindPoint(float x, float y, float tolerance) {
  if (FPointsStale) return -1;
  for (int k = 0; k < FPointCount; ++k) {
    const QPointF& p = FPoints[k];
    if (std::fabs(x - p.x()) <= tolerance && std::fabs(y - p.y()) <= tolerance) return FPointIndices[k];
  }
  return -1;
}

int TQySeries::FindPoint(float x, float y) { return FindPoint(x, y, 1.0f); }

int TQyLineSeries::FindPoint(float x, float y) {
  return FindPoint(x, y, FPointSymbol->GetVisible() ? FPointSymbol->GetSize() : 1.0f);
}

namespace {
template <class Dist>
TQyNearestPointResult Nearest(TQySeries& s, const TQyPointVector& pts, const TQyIntegerVector& idx,
                              int count, const QRectF& area, Dist dist) {
  TQyNearestPointResult r;
  for (int k = 0; k < count; ++k) {
    const QPointF& p = pts[k];
    if (!area.contains(p)) continue;
    const float d = dist(p);
    if (d < r.Distance) {
      r.Found = true, r.Distance = d, r.Index = idx[k], r.Point = p;
    }
  }
  if (r.Found) {
    const TQyVectorReadLocks hold(s.DataVectors());
    if (s.IsFunctionSeries()) { // a point of the curve: its X is where it was sampled
      r.Index = -1;
      r.X = s.GetXAxis()->WorldToNumber(float(r.Point.x()));
      r.Y = s.GetY(r.X);
    } else {
      r.X = s.TransformX(s.GetXData()->GetValue(r.Index), r.Index);
      r.Y = s.TransformY(s.GetYData()->GetValue(r.Index), r.Index);
    }
  }
  return r;
}
} // namespace

TQyNearestPointResult TQySeries::NearestPoint(QPointF point) {
  if (FPointsStale) return {};
  return Nearest(*this, FPoints, FPointIndices, FPointCount, DataArea(),
                 [&](const QPointF& p) { return float(std::hypot(p.x() - point.x(), p.y() - point.y())); });
}

TQyNearestPointResult TQySeries::NearestX(float x) {
  if (FPointsStale) return {};
  return Nearest(*this, FPoints, FPointIndices, FPointCount, DataArea(),
                 [&](const QPointF& p) { return float(std::fabs(p.x() - x)); });
}

TQyNearestPointResult TQySeries::NearestY(float y) {
  if (FPointsStale) return {};
  return Nearest(*this, FPoints, FPointIndices, FPointCount, DataArea(),
                 [&](const QPointF& p) { return float(std::fabs(p.y() - y)); });
}

float TQyLineSeries::ExtraSpaceAt(int) {
  if (!FVisible || !FPointSymbol->GetVisible() || !FXData || FXData->GetCount() < 2) return 0;
  return (FPointSymbol->GetSize() + FPointSymbol->GetBorderLineWidth()) / 2 + 1;
}

int TQyLineSeries::GetItemHeight() {
  float h = 0;
  if (FLine->GetVisible()) h = FLine->GetWidth();
  if (FPointSymbol->GetVisible()) h = std::max(h, FPointSymbol->GetSize() + 2);
  return int(std::nearbyint(h));
}

void TQySeries::SwapDataVecs() {
  std::swap(FXData, FYData);
  std::swap(XValueTransformation, YValueTransformation);
  FDataIndexer->SetPartner(FXData == FDataIndexer ? FYData.data() : FXData.data());
  RangesModified();
}
