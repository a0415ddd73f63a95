#include "QyPieGeometry.h"
#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
constexpr double DegToRad = M_PI / 180.0;

double SinDeg(double a) { return std::sin(a * DegToRad); }
double CosDeg(double a) { return std::cos(a * DegToRad); }

// Whether a segment from `start` (in 0 .. 360) over `sweep` passes the direction `angle`.
bool Passes(double start, double sweep, double angle) {
  const double end = start + sweep;
  return (start <= angle && angle <= end) || (start <= angle + 360 && angle + 360 <= end);
}

// How far a shifted segment reaches beyond the circle in one direction: `shift` is the shift
// along it, `nearest` the larger of the segment's ends projected on it. A segment that passes the
// direction reaches by its whole shift.
double Reach(double shift, bool passes, double nearest) {
  if (shift <= 0) return 0;
  return std::max(0.0, passes ? shift : shift - (1 - nearest));
}

// The circle's parametric angle (radians) of the point at the screen angle `angle` on an
// ellipse of `width` by `height`, taken on the same turn as `angle`.
double ParametricAngle(double width, double height, double angle) {
  const double g = angle * DegToRad;
  const double t = std::atan2(std::sin(g) * width, std::cos(g) * height);
  return t + 2 * M_PI * std::nearbyint((g - t) / (2 * M_PI));
}
} // namespace

double QyFitTo360Degrees(double angle) {
  if (!std::isfinite(angle)) return 0;
  double a = std::fmod(angle, 360.0);
  if (a < 0) a += 360.0;
  return a >= 360.0 ? 0.0 : a;
}

int QyPieQuadrant(double angle) {
  if (angle <= 90) return 1;
  if (angle <= 180) return 2;
  return angle <= 270 ? 3 : 4;
}

TQyPieSegments QyPieSegments(const std::vector<TQyPieValue>& values, double startAngle,
                             double totalAngle, bool orderAscending) {
  TQyPieSegments s;
  for (const TQyPieValue& v : values) s.Sum += v.Value;
  if (!(s.Sum > 0) || !std::isfinite(s.Sum)) return s;
  for (const TQyPieValue& v : values) {
    s.Sweeps.push_back(float(v.Value * (totalAngle / s.Sum)));
    s.Indices.push_back(v.Index);
  }
  if (orderAscending) {
    std::vector<size_t> order(s.Sweeps.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return s.Sweeps[a] < s.Sweeps[b]; });
    std::vector<float> sweeps;
    std::vector<int> indices;
    for (size_t i : order) sweeps.push_back(s.Sweeps[i]), indices.push_back(s.Indices[i]);
    s.Sweeps.swap(sweeps);
    s.Indices.swap(indices);
  }
  double start = startAngle;
  for (float sweep : s.Sweeps) {
    s.Starts.push_back(float(start));
    start = QyFitTo360Degrees(start + sweep);
  }
  return s;
}

std::vector<int> QyPie3DPaintOrder(const std::vector<float>& starts, const std::vector<float>& sweeps,
                                   const std::vector<double>& explodePercent) {
  const size_t n = sweeps.size();
  std::vector<double> key(n);
  for (size_t i = 0; i < n; ++i) {
    const double p = i < explodePercent.size() ? explodePercent[i] : 0.0;
    key[i] = std::min(SinDeg(starts[i] + 0.001 * sweeps[i]), SinDeg(starts[i] + 0.999 * sweeps[i])) *
             (1 + 0.01 * p);
  }
  std::vector<int> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return key[a] < key[b]; });
  return order;
}

void TQyPieExtents::Include(const TQyPieExtents& o) {
  Top = std::max(Top, o.Top);
  Bottom = std::max(Bottom, o.Bottom);
  Left = std::max(Left, o.Left);
  Right = std::max(Right, o.Right);
}

TQyPieExplosion QyPieExplode(const std::vector<float>& starts, const std::vector<float>& sweeps,
                             const std::vector<double>& percent) {
  TQyPieExplosion e;
  e.Offsets.assign(sweeps.size(), QPointF());
  double right = 0, left = 0, down = 0, up = 0; // reaches in radii
  for (size_t i = 0; i < sweeps.size(); ++i) {
    const double d = i < percent.size() ? percent[i] : 0.0;
    if (!(d > 0)) continue;
    e.AnyExploded = true;
    const double k = 0.01 * std::min(d, 100.0);
    const double a = starts[i], w = sweeps[i], m = a + w / 2;
    const double sx = k * CosDeg(m), sy = k * SinDeg(m);
    e.Offsets[i] = QPointF(sx, sy);
    right = std::max(right, Reach(sx, Passes(a, w, 0), std::max(CosDeg(a), CosDeg(a + w))));
    left = std::max(left, Reach(-sx, Passes(a, w, 180), std::max(-CosDeg(a), -CosDeg(a + w))));
    down = std::max(down, Reach(sy, Passes(a, w, 90), std::max(SinDeg(a), SinDeg(a + w))));
    up = std::max(up, Reach(-sy, Passes(a, w, 270), std::max(-SinDeg(a), -SinDeg(a + w))));
  }
  // A radius is half the unit of the fit.
  e.Extents = {up * 0.5, down * 0.5, left * 0.5, right * 0.5};
  return e;
}

TQyPieFit QyFitPie(const TQyPieExtents& x, double elevation, QSizeF client, const TQyPieMargins& m) {
  const double W = client.width() - m.Left - m.Right - 1;
  const double H = client.height() - m.Top - m.Bottom - 1;
  TQyPieFit fit;
  fit.PlotRect = QRectF(m.Left, m.Top, W, H);
  const double ux = x.Left + 1 + x.Right, uy = x.Top + 1 + x.Bottom;
  double pw = std::max(0.0, W / ux), ph = pw * elevation;
  if (std::max(0.0, H / uy) < ph) {
    ph = std::max(0.0, H / uy);
    pw = ph / elevation;
  }
  // The picture with all its extents is centred in the free space.
  fit.PieRect = QRectF(x.Left * pw + (W - ux * pw) * 0.5 + m.Left, x.Top * ph + (H - uy * ph) * 0.5 + m.Top, pw, ph);
  return fit;
}

QPointF QyPieRimPoint(const QRectF& r, double angle) {
  const double t = ParametricAngle(r.width(), r.height(), angle);
  return r.center() + QPointF(std::cos(t) * r.width() / 2, std::sin(t) * r.height() / 2);
}

void QyPieArc(QPainterPath& path, const QRectF& r, double start, double sweep, bool newFigure) {
  if (newFigure || path.elementCount() == 0) path.moveTo(QyPieRimPoint(r, start));
  const double t0 = ParametricAngle(r.width(), r.height(), start);
  const double t1 = ParametricAngle(r.width(), r.height(), start + sweep);
  // The painter path counts its angles counter-clockwise on the screen.
  path.arcTo(r, -t0 / DegToRad, -(t1 - t0) / DegToRad);
}

QRectF QyDonutHole(const QRectF& r, double holePercent) {
  const double f = holePercent * 0.01;
  return QRectF(r.x() + 0.5 * r.width() - r.width() * f * 0.5, r.y() + 0.5 * r.height() - r.height() * f * 0.5,
                r.width() * f, r.height() * f);
}
