#pragma once
// Piecewise cubics through data: the coefficients of Akima's interpolation, of the cubic spline
// whose end curvature continues linearly, and of the smoothing spline with natural ends; their
// value, slope, curvature and integral, and the local extrema of each.
#include "QyLinearAlgebra.h"
#include "QyPairedArrays.h"
#include <array>
#include <functional>
#include <vector>

struct TQyDoublePoint {
  double X, Y;
};
using TQyDoublePointArray = std::vector<TQyDoublePoint>;

// One segment: A + B t + C t^2 + D t^3.
struct TQyCubic {
  double A, B, C, D;
  double Value(double t) const { return ((D * t + C) * t + B) * t + A; }
  double Slope(double t) const { return (3 * D * t + 2 * C) * t + B; }
  // The same cubic about t = h.
  TQyCubic Shifted(double h) const { return {Value(h), Slope(h), C + 3 * D * h, D}; }
};

// The segment of `at` among n ascending knots: 0 left of the second knot, n - 1 from the last on.
int QySegmentOf(const double* x, int n, double at);

// On segment k the curve is A + B t + C t^2 + D t^3 with t = x - X[k]. X is ascending. The
// segment of the last knot continues the cubic of the segment before it, so that the curve, its
// slope and curvature are continuous there and extrapolate beyond it.
struct TQyCubicPieces {
  TDoubleDynArray X, A, B, C, D;
  // Scratch of the fits, kept with the pieces: a refit over millions of knots reuses its memory
  // instead of faulting in fresh arrays.
  std::array<TDoubleDynArray, 7> Work;
  TQyBandMatrix Band{0, 2, 2};

  int Count() const { return int(X.size()); }
  // The segment of x: 0 left of the second knot, the last knot's from the last knot on.
  int FindIndex(double x) const;
  double Value(double x) const;
  double Slope(double x) const;
  double Curvature(double x) const;
  TQyCubic Segment(int k) const { return {A[k], B[k], C[k], D[k]}; }
  double ValueAt(int k, double t) const { return Segment(k).Value(t); }
  double SlopeAt(int k, double t) const { return Segment(k).Slope(t); }
  // The integral of segment k from its knot to knot + t.
  double IntegralAt(int k, double t) const {
    return (((D[k] / 4 * t + C[k] / 3) * t + B[k] / 2) * t + A[k]) * t;
  }
};

// Each takes X and A (the data, at least 3 knots, ascending) and sets B, C, D.
// Akima: slopes at the knots from the four neighbouring secant slopes, the secants extended at
// both ends by two so that they grow by the same step. Where both slope differences are zero the
// knot takes the mean of its right secant and the next one.
void AkimaCoeffs(TQyCubicPieces& p);
// The same curve over knots that the caller keeps, without coefficients: each answer reads the six
// knots around its segment. Setting it up is one check of the knots, so a curve through millions
// of knots that is sampled once per pixel costs the pixels, not the knots.
class TQyAkimaCurve {
public:
  // x strictly ascending, n >= 3 ("Not enough data points ..."); equal X raise EZeroDivide,
  // values or secants that overflow EOverflow. The arrays must stay as they are while in use.
  void Assign(const double* x, const double* a, int n);
  double Value(double at) const;

private:
  double Secant(int j) const; // of segment j, extended by two beyond each end
  TQyCubic Segment(int k) const;

  const double* FX = nullptr;
  const double* FA = nullptr;
  int FN = 0;
};
// Interpolating cubic spline whose third derivative is continuous at the second and the last
// but one knot (the end curvature continues linearly); 3 knots give the parabola through them.
void NormalSplineCoeffs(TQyCubicPieces& p);
// Smoothing spline with natural ends: minimises sum w[i] (y[i] - f(x[i]))^2 + integral of f''^2.
// The knots' values A move to the curve. Needs at least 6 knots ("Not enough data points ...").
void ApproximativeSplineCoeffs(TQyCubicPieces& p, const TDoubleDynArray& w);

// Local extrema of the value (zeros of the slope inside a segment; a parabolic segment has none).
void FindValueExtrema(const TQyCubicPieces& p, TQyDoublePointArray& minima, TQyDoublePointArray& maxima);
// Local extrema of the slope: the inflection point of each segment, a minimum when the slope
// there is not above the segment's slope at its knot.
void FindSlopeExtrema(const TQyCubicPieces& p, TQyDoublePointArray& minima, TQyDoublePointArray& maxima);
// Local extrema of the integral: the zeros of the curve, found by halving steps from a third of
// the segment's rise; `integral` gives the Y of each.
void FindIntegralExtrema(const TQyCubicPieces& p, const std::function<double(double)>& integral,
                         TQyDoublePointArray& minima, TQyDoublePointArray& maxima);
