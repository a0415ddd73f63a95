#pragma once
// The geometry of a pie, free of any widget: segment angles from values, the order of painting
// in 3D, the shifts of exploded segments, the fit of the picture into the control, and points
// and arcs on the pie's ellipse. Angles are degrees, clockwise on the screen from the positive x
// axis. Extents are in the unit space of the fit: the pie is one unit across, and each extent is
// how far the picture reaches beyond the pie on that side.
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <vector>

// `angle` folded into [0, 360); a non-finite angle gives 0.
double QyFitTo360Degrees(double angle);
// 1 for 0 .. 90 (90 included), 2 up to 180, 3 up to 270, 4 beyond.
int QyPieQuadrant(double angle);

// A value that gets a segment: its index in the values and its (transformed) value, above 0.
struct TQyPieValue {
  int Index = -1;
  double Value = 0;
};

// The segments of a pie, in drawing position order.
struct TQyPieSegments {
  double Sum = 0;                 // the sum that the total angle stands for
  std::vector<float> Sweeps, Starts;
  std::vector<int> Indices;       // the value index of each segment
};

// The sum of the values is spread over `totalAngle`; each segment starts where the last ended,
// the first at `startAngle`. With `orderAscending` the segments are sorted by sweep first.
TQyPieSegments QyPieSegments(const std::vector<TQyPieValue>& values, double startAngle,
                             double totalAngle, bool orderAscending);

// Back to front for 3D pies: each segment's key is the lower of the sines just inside its two
// ends, times (1 + explode percent / 100); ascending keys, so that the segment reaching highest
// up the screen is painted first. `explodePercent` per segment (empty: none).
std::vector<int> QyPie3DPaintOrder(const std::vector<float>& starts, const std::vector<float>& sweeps,
                                   const std::vector<double>& explodePercent);

// How far the picture reaches beyond the pie on each side, in units of the pie's diameter.
struct TQyPieExtents {
  double Top = 0, Bottom = 0, Left = 0, Right = 0;
  void Include(const TQyPieExtents& other); // the larger reach on each side
};

// The shift of each exploded segment (unit space: radius 1) and the extents that the shifted
// segments add. `percent` per segment, clipped to 0 .. 100.
struct TQyPieExplosion {
  std::vector<QPointF> Offsets;
  TQyPieExtents Extents;
  bool AnyExploded = false;
};
TQyPieExplosion QyPieExplode(const std::vector<float>& starts, const std::vector<float>& sweeps,
                             const std::vector<double>& percent);

// Space kept free at the control's edges, in pixels.
struct TQyPieMargins {
  double Left = 0, Top = 0, Right = 0, Bottom = 0;
};

// The pie's rectangle for a control of `client` size: as large as the extents allow, its height
// `elevation` times its width, and the picture with its extents centred in the free space.
// A control too small for the margins gives an empty rectangle.
struct TQyPieFit {
  QRectF PieRect, PlotRect;
};
TQyPieFit QyFitPie(const TQyPieExtents& extents, double elevation, QSizeF client,
                   const TQyPieMargins& margins);

// The point of the ellipse in `r` at the screen angle `angle`: on an ellipse the angle seen on
// the screen differs from the angle of the circle it is squeezed from.
QPointF QyPieRimPoint(const QRectF& r, double angle);
// Adds the arc of the ellipse in `r` from the screen angle `start` over `sweep` (negative runs
// counter-clockwise). The arc joins the path's last point by a line, or starts a new figure when
// `newFigure`.
void QyPieArc(QPainterPath& path, const QRectF& r, double start, double sweep, bool newFigure = false);
// The donut's hole in the pie rectangle `r`: `holePercent` of its size, centred.
QRectF QyDonutHole(const QRectF& r, double holePercent);
