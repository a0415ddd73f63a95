#include "QyColumnBand.h"
#include "QyDirectPixels.h"
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <vector>

namespace {
// A pixel column of the polyline: its points [First, Last], its vertical extent (with the parts
// of the segments from and to its neighbours that cross it) and its index.
struct TQyColumn {
  int First, Last;
  double Column, Top, Bottom;
};

// A column whose stroke covers its pixel column across: enough points spread over both halves
// and a tall extent. Thinned columns hold up to four points; a few narrow ones stay stroked.
constexpr int DensePoints = 3;
constexpr double DenseHeight = 3;
constexpr int MinRun = 2; // shorter runs gain nothing

// The y of the segment p -> q where it crosses x.
double YAt(const QPointF& p, const QPointF& q, double x) {
  if (q.x() == p.x()) return q.y();
  return p.y() + (q.y() - p.y()) * (x - p.x()) / (q.x() - p.x());
}

std::vector<TQyColumn> Columns(const QPointF* pts, int n) {
  std::vector<TQyColumn> cols;
  for (int k = 0; k < n;) {
    const double c = std::floor(pts[k].x());
    TQyColumn col{k, k, c, pts[k].y(), pts[k].y()};
    for (; k < n && std::floor(pts[k].x()) == c; ++k) {
      col.Last = k;
      col.Top = std::min(col.Top, pts[k].y());
      col.Bottom = std::max(col.Bottom, pts[k].y());
    }
    cols.push_back(col);
  }
  for (TQyColumn& col : cols) { // the joining segments inside the column
    double ends[2] = {col.Top, col.Top};
    if (col.First > 0) ends[0] = YAt(pts[col.First - 1], pts[col.First], col.Column);
    if (col.Last + 1 < n) ends[1] = YAt(pts[col.Last], pts[col.Last + 1], col.Column + 1);
    for (double y : ends) col.Top = std::min(col.Top, y), col.Bottom = std::max(col.Bottom, y);
  }
  return cols;
}

bool Dense(const TQyColumn& col, const QPointF* pts) {
  if (col.Last - col.First + 1 < DensePoints || col.Bottom - col.Top < DenseHeight) return false;
  double lo = pts[col.First].x(), hi = lo;
  for (int k = col.First; k <= col.Last; ++k) lo = std::min(lo, pts[k].x()), hi = std::max(hi, pts[k].x());
  return lo <= col.Column + 0.5 && hi >= col.Column + 0.5;
}

// One whole pixel column from top to bottom, written straight into the image: the rows it covers
// wholly, and its end rows at the share of them it covers, as the raster engine fills the same
// rectangle. A thousand full-height columns cost the engine's rectangle fill several times the
// writing (QPainter's state per call and its coverage spans).
// Rows outside clip (the pixels' bounds) are never visited: a column far beyond the image costs
// nothing.
void FillColumn(const TQyDirectPixels& pixels, const QRect& clip, int x, double top, double bottom, quint32 color) {
  const auto coverage = [](double share) { return uint(share * 255 + 0.5); };
  top = std::max(top, clip.top() - 1.0), bottom = std::min(bottom, clip.bottom() + 2.0);
  if (!(bottom > top)) return;
  const double first = std::floor(top), last = std::floor(bottom);
  if (first == last) {
    pixels.Span(x, x + 1, int(first), color, coverage(bottom - top));
    return;
  }
  pixels.Span(x, x + 1, int(first), color, coverage(first + 1 - top));
  for (int y = int(first) + 1; y < int(last); ++y) pixels.Span(x, x + 1, y, color, 255);
  if (bottom > last) pixels.Span(x, x + 1, int(last), color, coverage(bottom - last));
}

// The band of the columns [a, b): each column's extent as one rectangle. Adjacent rectangles
// make the same staircase as one polygon would, but the raster engine fills an axis-parallel
// rectangle in time proportional to its pixels, while a polygon of thousands of edges costs it
// about a hundred times more.
void FillBand(QPainter* g, const std::vector<TQyColumn>& cols, int a, int b, const QPointF* pts, double half,
              const QColor& color) {
  TQyDirectPixels pixels;
  pixels.Begin(g);
  const QRect clip = pixels.Bounds();
  for (int j = a; j < b; ++j) {
    const TQyColumn& col = cols[size_t(j)];
    const double left = j == a ? pts[col.First].x() - half : col.Column;
    const double right = j == b - 1 ? pts[col.Last].x() + half : col.Column + 1;
    if (pixels.Active() && left == col.Column && right == col.Column + 1)
      FillColumn(pixels, clip, int(col.Column), col.Top - half, col.Bottom + half, color.rgba());
    else
      g->fillRect(QRectF(left, col.Top - half, right - left, col.Bottom - col.Top + 2 * half), color);
  }
}

bool Bandable(const QPainter* g) {
  const QPen& pen = g->pen();
  return g->testRenderHint(QPainter::Antialiasing) && pen.style() == Qt::SolidLine && pen.widthF() == 1 &&
         pen.brush().style() == Qt::SolidPattern && pen.color().alpha() == 255 && !pen.isCosmetic();
}
} // namespace

void QyDrawPolylineWithBands(QPainter* g, const QPointF* pts, int n) {
  if (n < 2 * MinRun * DensePoints || !Bandable(g)) {
    g->drawPolyline(pts, n);
    return;
  }
  const std::vector<TQyColumn> cols = Columns(pts, n);
  const QPen pen = g->pen();
  const double half = pen.widthF() / 2;
  int strokeFrom = 0; // first point of the stretch still to stroke
  auto stroke = [&](int to) {
    if (to > strokeFrom) g->drawPolyline(pts + strokeFrom, to - strokeFrom + 1);
  };
  for (int a = 0; a < int(cols.size());) {
    int b = a;
    while (b < int(cols.size()) && Dense(cols[size_t(b)], pts) &&
           (b == a || cols[size_t(b)].Column == cols[size_t(b - 1)].Column + 1))
      ++b;
    if (b - a < MinRun) {
      a = std::max(b, a + 1);
      continue;
    }
    stroke(cols[size_t(a)].First);
    FillBand(g, cols, a, b, pts, half, pen.color());
    strokeFrom = cols[size_t(b - 1)].Last;
    a = b;
  }
  stroke(n - 1);
}
