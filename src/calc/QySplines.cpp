#include "QySplines.h"
#include "QyExceptions.h"
#include "QyLinearAlgebra.h"
#include "QyLocalize.h"
#include <algorithm>
#include <cmath>
#include <limits>

int QySegmentOf(const double* x, int n, double at) {
  if (n == 0 || at >= x[n - 1]) return n - 1 < 0 ? 0 : n - 1;
  // The first knot after `at`, found by bisection: sampling once per pixel stays cheap.
  return int(std::upper_bound(x + 1, x + n, at) - x) - 1;
}

int TQyCubicPieces::FindIndex(double x) const { return QySegmentOf(X.data(), Count(), x); }

double TQyCubicPieces::Value(double x) const {
  const int k = FindIndex(x);
  return ValueAt(k, x - X[k]);
}

double TQyCubicPieces::Slope(double x) const {
  const int k = FindIndex(x);
  return SlopeAt(k, x - X[k]);
}

double TQyCubicPieces::Curvature(double x) const {
  const int k = FindIndex(x);
  return 6 * D[k] * (x - X[k]) + 2 * C[k];
}

namespace {
// Sizes B, C, D and sets the last knot's segment as the continuation of the one before it.
void ContinueLastSegment(TQyCubicPieces& p) {
  const int n = p.Count(), k = n - 2;
  const TQyCubic last = p.Segment(k).Shifted(p.X[n - 1] - p.X[k]);
  p.A[n - 1] = last.A, p.B[n - 1] = last.B, p.C[n - 1] = last.C, p.D[n - 1] = last.D;
}

// Every routine writes each coefficient, so resizing (which keeps the memory of earlier fits) is
// all the arrays need.
void SizeCoefficients(TQyCubicPieces& p) {
  const size_t n = p.X.size();
  p.A.resize(n), p.B.resize(n), p.C.resize(n), p.D.resize(n);
}

void RequireKnots(const TQyCubicPieces& p, int least) {
  if (p.Count() < least) throw EMathError(QyText(QyRes::MathNotEnoughPoints));
}
} // namespace

// ---- Akima ------------------------------------------------------------------------------------

namespace {
// The slope at a knot from the four secants around it (m[1] and m[2] meet at the knot).
double AkimaKnotSlope(const double* m) {
  const double u = std::fabs(m[3] - m[2]), v = std::fabs(m[1] - m[0]);
  return (m[0] == m[1] && m[2] == m[3]) ? (m[3] + m[2]) / 2 : (u * m[1] + v * m[2]) / (u + v);
}

// The segment of width h from value a with slopes b0, b1 at its ends and secant s.
TQyCubic Hermite(double a, double b0, double b1, double s, double h) {
  return {a, b0, (3 * s - 2 * b0 - b1) / h, (b0 + b1 - 2 * s) / (h * h)};
}
} // namespace

void AkimaCoeffs(TQyCubicPieces& p) {
  RequireKnots(p, 3);
  SizeCoefficients(p);
  const int n = p.Count();
  // Secant slopes, two extra at each end: s[j + 2] is the slope of segment j.
  TDoubleDynArray& s = p.Work[0];
  s.resize(n + 3); // every entry is written below
  for (int j = 0; j + 1 < n; ++j) s[j + 2] = (p.A[j + 1] - p.A[j]) / (p.X[j + 1] - p.X[j]);
  s[1] = 2 * s[2] - s[3];
  s[0] = 2 * s[1] - s[2];
  s[n + 1] = 2 * s[n] - s[n - 1];
  s[n + 2] = 2 * s[n + 1] - s[n];
  for (int j = 0; j < n; ++j) p.B[j] = AkimaKnotSlope(&s[j]); // the four secants around knot j
  for (int j = 0; j + 1 < n; ++j) {
    const TQyCubic c = Hermite(p.A[j], p.B[j], p.B[j + 1], s[j + 2], p.X[j + 1] - p.X[j]);
    p.C[j] = c.C, p.D[j] = c.D;
  }
  ContinueLastSegment(p);
}

void TQyAkimaCurve::Assign(const double* x, const double* a, int n) {
  FX = x, FA = a, FN = 0;
  if (n < 3) throw EMathError(QyText(QyRes::MathNotEnoughPoints));
  // One pass: widths must be positive, and widths, secants and values finite (v * 0 is NaN otherwise).
  double poison = 0;
  for (int j = 0; j + 1 < n; ++j) {
    const double h = x[j + 1] - x[j];
    if (!(h > 0)) throw EZeroDivide(QyText(QyRes::ExprFloatZeroDivide));
    poison += (a[j + 1] - a[j]) / h * 0 + (h + a[j]) * 0;
  }
  if (poison != 0 || !std::isfinite(a[n - 1])) throw EOverflow(QyText(QyRes::ExprFloatOverflow));
  FN = n;
}

// As AkimaCoeffs extends its secant array: two more at each end, growing by the same step.
double TQyAkimaCurve::Secant(int j) const {
  if (j < 0) return 2 * Secant(j + 1) - Secant(j + 2);
  if (j > FN - 2) return 2 * Secant(j - 1) - Secant(j - 2);
  return (FA[j + 1] - FA[j]) / (FX[j + 1] - FX[j]);
}

TQyCubic TQyAkimaCurve::Segment(int k) const {
  double m[5];
  for (int i = 0; i < 5; ++i) m[i] = Secant(k - 2 + i);
  return Hermite(FA[k], AkimaKnotSlope(m), AkimaKnotSlope(m + 1), m[2], FX[k + 1] - FX[k]);
}

// The last knot's segment continues the one before it, as in TQyCubicPieces.
double TQyAkimaCurve::Value(double at) const {
  if (FN < 3) return std::numeric_limits<double>::quiet_NaN();
  const int k = QySegmentOf(FX, FN, at);
  if (k < FN - 1) return Segment(k).Value(at - FX[k]);
  return Segment(k - 1).Shifted(FX[k] - FX[k - 1]).Value(at - FX[k]);
}

// ---- interpolating cubic spline ---------------------------------------------------------------

namespace {
// B and D of each segment from the knots' values and curvature halves C.
void SegmentsFromCurvature(TQyCubicPieces& p, const TDoubleDynArray& h) {
  for (int i = 0; i + 1 < p.Count(); ++i) {
    p.B[i] = (p.A[i + 1] - p.A[i]) / h[i] - (2 * p.C[i] + p.C[i + 1]) * h[i] / 3;
    p.D[i] = (p.C[i + 1] - p.C[i]) / (3 * h[i]);
  }
  ContinueLastSegment(p);
}
} // namespace

void NormalSplineCoeffs(TQyCubicPieces& p) {
  RequireKnots(p, 3);
  SizeCoefficients(p);
  const int n = p.Count(), rows = n - 2;
  const TDoubleDynArray& y = p.A;
  TDoubleDynArray &h = p.Work[0], &r = p.Work[1], &lower = p.Work[2], &diag = p.Work[3], &upper = p.Work[4];
  h.resize(n - 1), r.resize(rows), lower.resize(rows), diag.resize(rows), upper.resize(rows); // all written
  for (int i = 0; i + 1 < n; ++i) h[i] = p.X[i + 1] - p.X[i];
  for (int i = 0; i < rows; ++i) {
    r[i] = 3 * ((y[i + 2] - y[i + 1]) / h[i + 1] - (y[i + 1] - y[i]) / h[i]);
    lower[i] = h[i], upper[i] = h[i + 1], diag[i] = 2 * (h[i] + h[i + 1]);
  }
  if (n == 3) {
    // One unknown, and all three curvatures equal: the parabola through the points.
    p.C[0] = p.C[1] = p.C[2] = r[0] / 3 / (diag[0] / 2);
  } else {
    // The end curvatures continue the next ones linearly; folded into the first and last rows.
    r[0] *= h[1] / (h[0] + h[1]);
    r[n - 3] *= h[n - 3] / (h[n - 2] + h[n - 3]);
    diag[0] -= h[0], upper[0] -= h[0];
    diag[n - 3] -= h[n - 2], lower[n - 3] -= h[n - 2];
    SolveTridiagonalEquationSystem(rows, lower, diag, r, upper);
    for (int i = 0; i < rows; ++i) p.C[i + 1] = r[i];
    p.C[0] = (p.C[1] - p.C[2]) * h[0] / h[1] + p.C[1];
    p.C[n - 1] = (p.C[n - 2] - p.C[n - 3]) * h[n - 2] / h[n - 3] + p.C[n - 2];
  }
  SegmentsFromCurvature(p, h);
}

// ---- smoothing spline -------------------------------------------------------------------------

// The curvature halves c at the inner knots solve (R + Q^T diag(6 / w) Q) c = 3 Q^T y, where R is
// the tridiagonal (h, 2 (h + h'), h') of the interpolating spline and Q the second differences
// (1 / h); the values then move by y - (2 / w) Q c. Natural ends: c = 0 at the end knots.
void ApproximativeSplineCoeffs(TQyCubicPieces& p, const TDoubleDynArray& w) {
  RequireKnots(p, 6);
  SizeCoefficients(p);
  const int n = p.Count(), rows = n - 2;
  if (int(w.size()) < n) QyRaiseIndexError(n - 1);
  TDoubleDynArray &h = p.Work[0], &q = p.Work[1], &qq = p.Work[2], &b = p.Work[3], &d = p.Work[4],
                  &c = p.Work[5], &rhs = p.Work[6];
  h.resize(n - 1), q.resize(n - 1), qq.resize(n - 1), b.resize(n), d.resize(n - 1), c.resize(n), rhs.resize(rows);
  c[0] = c[n - 1] = 0; // natural ends; the rest is written below
  for (int i = 0; i + 1 < n; ++i) {
    h[i] = p.X[i + 1] - p.X[i];
    q[i] = 1 / h[i];
    qq[i] = q[i] * q[i];
  }
  for (int i = 0; i < n; ++i) b[i] = 6 / w[i];
  for (int i = 1; i + 1 < n; ++i) d[i] = q[i - 1] + q[i];
  // Row i stands for inner knot i + 1; cells 0..4 are the columns i - 2 .. i + 2.
  TQyBandMatrix& m = p.Band;
  m.Reset(rows);
  for (int i = 0; i < rows; ++i) {
    m(i, 2) = d[i + 1] * d[i + 1] * b[i + 1] + 2 * (h[i] + h[i + 1]) + b[i] * qq[i] + b[i + 2] * qq[i + 1];
    if (i >= 1) m(i, 1) = m(i - 1, 3) = h[i] - b[i] * q[i] * d[i] - b[i + 1] * q[i] * d[i + 1];
    if (i >= 2) m(i, 0) = m(i - 2, 4) = b[i] * q[i - 1] * q[i];
  }
  for (int i = 0; i < rows; ++i)
    rhs[i] = 3 * ((p.A[i + 2] - p.A[i + 1]) * q[i + 1] - (p.A[i + 1] - p.A[i]) * q[i]);
  SolveBandMatrix(rows, m, rhs);
  for (int i = 0; i < rows; ++i) c[i + 1] = rhs[i];
  // Move the points by (2 / w) times the second differences of the curvature halves.
  p.A[0] -= b[0] / 3 * q[0] * (c[1] - c[0]);
  for (int i = 1; i + 1 < n; ++i) p.A[i] -= (c[i - 1] * q[i - 1] - d[i] * c[i] + c[i + 1] * q[i]) * b[i] / 3;
  p.A[n - 1] -= (c[n - 2] - c[n - 1]) * q[n - 2] * b[n - 1] / 3;
  p.C.swap(c);
  SegmentsFromCurvature(p, h);
}

// ---- extrema ----------------------------------------------------------------------------------

void FindValueExtrema(const TQyCubicPieces& p, TQyDoublePointArray& minima, TQyDoublePointArray& maxima) {
  minima.reserve(p.Count() / 4), maxima.reserve(p.Count() / 4);
  for (int k = 0; k + 1 < p.Count(); ++k) {
    const double disc = p.C[k] * p.C[k] - 3 * p.D[k] * p.B[k];
    if (p.D[k] == 0 || disc < 0) continue;
    for (double sign : {1.0, -1.0}) {
      const double x = p.X[k] + (-p.C[k] + sign * std::sqrt(disc)) / (3 * p.D[k]);
      if (!(p.X[k] <= x && x < p.X[k + 1])) continue;
      (p.Curvature(x) > 0 ? minima : maxima).push_back({x, p.Value(x)});
    }
  }
}

void FindSlopeExtrema(const TQyCubicPieces& p, TQyDoublePointArray& minima, TQyDoublePointArray& maxima) {
  for (int k = 1; k < p.Count(); ++k) {
    if (p.D[k - 1] == 0) continue;
    const double x = p.X[k - 1] - p.C[k - 1] / (3 * p.D[k - 1]);
    if (!(p.X[k - 1] <= x && x < p.X[k])) continue;
    const double slope = p.Slope(x);
    (slope <= p.B[k - 1] ? minima : maxima).push_back({x, slope});
  }
}

namespace {
// Where segment k comes nearest to zero: two probes a step apart, halving the step about the
// better one. The first step is a third of the rise of Y across the segment, not of its width.
double ZeroInSegment(const TQyCubicPieces& p, int k) {
  constexpr long double Smallest = 0x1p-1074L;
  double step = std::fabs(p.A[k + 1] - p.A[k]) / 3, t1 = step, t2 = 2 * step, best = t1;
  for (int round = 0; round < 4096 && std::isfinite(step); ++round) {
    best = std::fabs(p.ValueAt(k, t1)) < std::fabs(p.ValueAt(k, t2)) ? t1 : t2;
    step /= 2;
    t1 = best - step, t2 = best + step;
    if (step <= Smallest || std::fabs(t1) <= Smallest || std::fabs(t2) <= Smallest) break;
  }
  return best;
}
} // namespace

void FindIntegralExtrema(const TQyCubicPieces& p, const std::function<double(double)>& integral,
                         TQyDoublePointArray& minima, TQyDoublePointArray& maxima) {
  for (int k = 0; k < p.Count(); ++k) {
    double t;
    if (p.A[k] == 0) t = 0;
    else if (k + 1 < p.Count() && (p.A[k] < 0) != (p.A[k + 1] < 0) && p.A[k + 1] != 0) t = ZeroInSegment(p, k);
    else continue;
    const double x = p.X[k] + t;
    (p.SlopeAt(k, t) < 0 ? maxima : minima).push_back({x, integral(x)});
  }
}
