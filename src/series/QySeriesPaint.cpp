// Drawing of a series: the area under or between curves, the polyline, and the order of both
// with error bars and symbols.
#include "QyAxis.h"
#include "QyColumnBand.h"
#include "QyKeptLayer.h"
#include "QyRounding.h"
#include "QySeries.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <type_traits>

namespace {
// Thick or dashed polylines are drawn in pieces: the raster engine's cost for one wide path grows
// with the number of its edges that cross each scanline, which long pieces (and dense zigzags in
// few pixel columns) drive up. A piece ends after ChunkPoints points or PieceLength pixels.
constexpr int ChunkPoints = 1000;
constexpr double PieceLength = 256;
// Lines of fewer points are always stroked: they cost less than a layer.
constexpr int KeptLineAbove = 1000;

// Draws the polyline with the painter's pen, in pieces when the pen is thick or dashed. A dashed
// piece continues the pattern where the previous one stopped.
template <class P> void DrawPolylineInPieces(QPainter* g, const P* pts, int n) {
  QPen pen = g->pen();
  const bool plain = pen.widthF() <= 1 && pen.style() == Qt::SolidLine;
  if (plain || n <= 2) {
    if constexpr (std::is_same_v<P, QPointF>) QyDrawPolylineWithBands(g, pts, n);
    else g->drawPolyline(pts, n);
    return;
  }
  const bool dashed = pen.style() != Qt::SolidLine && pen.style() != Qt::NoPen;
  const double unit = pen.widthF() > 0 ? pen.widthF() : 1.0; // dash offsets count in pen widths
  double offset = pen.dashOffset();
  int first = 0;
  double length = 0;
  for (int k = 1; k < n; ++k) {
    length += std::hypot(double(pts[k].x() - pts[k - 1].x()), double(pts[k].y() - pts[k - 1].y()));
    if (k < n - 1 && k - first < ChunkPoints && length < PieceLength) continue;
    if (dashed) {
      pen.setDashOffset(offset);
      g->setPen(pen);
      offset += length / unit;
    }
    g->drawPolyline(pts + first, k - first + 1); // pieces share their end points
    first = k, length = 0;
  }
}

// Whether a polyline is worth keeping on a layer: when stroking it costs more than blending the
// layer, that is when its length in pixels reaches a tenth of the area it spans (the raster
// engine strokes an antialiased pixel about ten times slower than it blends one). bounds: the
// points' bounding rectangle.
bool WorthKeeping(const QPointF* pts, int n, QRectF& bounds) {
  constexpr double StrokeToBlendCost = 10;
  double length = 0, left = pts[0].x(), right = left, top = pts[0].y(), bottom = top;
  for (int k = 1; k < n; ++k) {
    length += std::abs(pts[k].x() - pts[k - 1].x()) + std::abs(pts[k].y() - pts[k - 1].y());
    left = std::min(left, pts[k].x()), right = std::max(right, pts[k].x());
    top = std::min(top, pts[k].y()), bottom = std::max(bottom, pts[k].y());
  }
  bounds = QRectF(QPointF(left, top), QPointF(right, bottom));
  return std::isfinite(length) && length * StrokeToBlendCost >= (right - left + 1) * (bottom - top + 1);
}
} // namespace

// Translucent symbols cut their holes first, so that neither the line nor the error bars show
// through them. The symbols come on top later: the graph draws them above the axes.
void TQyLineSeries::PaintGr(QPainter* g) {
  if (!FXAxis || !FYAxis || !FGraph || !SeriesVisible()) return;
  if (FPointsStale) CalculatePoints();
  if (FPointCount == 0) return;
  const bool holes = FPointCount > 1 && NeedsHoles();
  if (holes) {
    g->save();
    ShootHolesToClip(g);
  }
  if (FPointCount > 1) DrawLine(g);
  DrawIndicators(g);
  if (holes) g->restore();
}

// A partial repaint that moves an edge of a non-solid area cannot be drawn piecewise.
bool TQyLineSeries::NeedsWholeRepaint() const {
  return FVisible && FArea->GetVisible() && !FArea->Solid();
}

void TQyLineSeries::DrawLine(QPainter* g) {
  if (FArea->GetVisible()) DrawArea(g);
  if (!FLine->GetVisible()) return;
  g->setBrush(Qt::NoBrush);
  if (OnGetPen) DrawSegments(g);
  else if (CanDoCanvasDraw()) DrawCanvasLine(g);
  else DrawPlainLine(g);
}

// A long line (millions of values thinned to a few points per pixel column) is kept on a layer
// while its points and pen stay the same: the next paint blends the layer instead of stroking it.
void TQyLineSeries::DrawPlainLine(QPainter* g) {
  const QPointF* pts = FPoints.Data();
  g->setPen(FPen);
  QRectF bounds;
  if (FPointCount < KeptLineAbove || !QyCanKeepLayer(g) || !WorthKeeping(pts, FPointCount, bounds)) {
    DrawPolylineInPieces(g, pts, FPointCount);
    return;
  }
  const double margin = std::max(1.0, FPen.widthF()) + 2; // the pen's reach beyond the points
  const QRect area = bounds.adjusted(-margin, -margin, margin, margin).toAlignedRect();
  FLineLayer.Paint(g, {FPointsVersion, QyLookOf(FPen)}, area, [&](QPainter* layer) {
    layer->setPen(FPen);
    DrawPolylineInPieces(layer, pts, FPointCount);
  });
}

// The level an area falls to: the axis start when it is above zero, else zero.
float TQyLineSeries::Baseline() const {
  const double start = FYAxis->GetStart();
  return float(FYAxis->NumberToWorld(start > 0 ? start : 0) - 0.5);
}

void TQySeries::ElementAt(int k, int& index, double& x, double& y) {
  if (IsFunctionSeries()) {
    index = -1;
    x = FXAxis->WorldToNumber(FPoints[k].x());
    y = GetY(x);
    return;
  }
  index = FPointIndices[k];
  x = TransformX(FXData->GetValue(index), index);
  y = TransformY(FYData->GetValue(index), index);
}

// Asks the handler about each segment in turn, starting from `first`; what it hands back carries
// on to the next segment, and a segment it refuses is not drawn.
template <class Args, class Handler, class Value, class Draw>
void TQyLineSeries::EachHandledSegment(const Handler& handler, Value Args::*field, Value first, Draw draw) {
  Value value = first;
  for (int k = 0; k + 1 < FPointCount; ++k) {
    Args args;
    ElementAt(k, args.Index, args.X, args.Y);
    args.*field = value;
    handler(this, args);
    value = args.*field;
    if (args.Draw) draw(k, value);
  }
}

// The area: one polygon along the line and back over the band or baseline points; with a brush
// handler one quadrilateral per segment down to the baseline.
void TQyLineSeries::DrawArea(QPainter* g) {
  const QPointF* pts = FPoints.Data();
  g->setPen(Qt::NoPen);
  if (!OnGetBrush) {
    if (FTotalPointCount < 3) return;
    g->setBrush(FBrush);
    g->drawPolygon(pts, FTotalPointCount);
    return;
  }
  const double base = Baseline();
  EachHandledSegment<TQyBrushEventArgs>(OnGetBrush, &TQyBrushEventArgs::Brush, FBrush,
                                        [&](int k, const QBrush& brush) {
    const QPointF quad[4] = {pts[k + 1], pts[k], {pts[k].x(), base}, {pts[k + 1].x(), base}};
    g->setBrush(brush);
    g->drawPolygon(quad, 4);
  });
}

// One line per segment with the pen the handler chooses; a segment it refuses is left out.
void TQyLineSeries::DrawSegments(QPainter* g) {
  const QPointF* pts = FPoints.Data();
  EachHandledSegment<TQyPenEventArgs>(OnGetPen, &TQyPenEventArgs::Pen, QPen(FPen),
                                      [&](int k, const QPen& pen) {
    g->setPen(pen);
    g->drawLine(pts[k], pts[k + 1]);
  });
}

// The fast path for many points with an opaque thin or solid line: whole-pixel vertices, no
// antialiasing, bevelled joins, clipped to the data area. The painter already works in the
// graph's client coordinates, so no offset for partial repaints is needed.
void TQyLineSeries::DrawCanvasLine(QPainter* g) {
  std::vector<QPoint> pts(static_cast<size_t>(FPointCount));
  for (int k = 0; k < FPointCount; ++k)
    pts[size_t(k)] = QPoint(int(Round(FPoints[k].x())), int(Round(FPoints[k].y())));
  QPen pen(TQyColorToQColor(FLine->GetColor() | 0xFF000000u));
  pen.setWidth(int(Round(FLine->GetWidth())));
  pen.setStyle(FPen.style());
  pen.setJoinStyle(Qt::BevelJoin);
  g->save();
  g->setRenderHint(QPainter::Antialiasing, false);
  g->setClipRect(DataArea().toRect(), Qt::IntersectClip);
  g->setPen(pen);
  DrawPolylineInPieces(g, pts.data(), FPointCount);
  g->restore();
}
