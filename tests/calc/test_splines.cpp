// The three piecewise cubics against scipy (Akima1DInterpolator, CubicSpline with not-a-knot ends,
// make_smoothing_spline with lam = 1) and against curves they must reproduce exactly.
#include <QyExceptions.h>
#include <QySplines.h>
#include <cmath>
#include <gtest/gtest.h>

namespace {
#include "calc_reference.inc"

TQyCubicPieces Knots(const double* x, const double* y, int n) {
  TQyCubicPieces p;
  p.X.assign(x, x + n);
  p.A.assign(y, y + n);
  return p;
}
TQyCubicPieces Reference() { return Knots(SplineX, SplineY, int(std::size(SplineX))); }

void ExpectCurve(const TQyCubicPieces& p, const double* value, const double* slope, const double* curvature,
                 double tol, const char* what) {
  for (size_t i = 0; i < std::size(SplineProbe); ++i) {
    const double x = SplineProbe[i];
    EXPECT_NEAR(p.Value(x), value[i], tol) << what << " value at " << x;
    if (slope) {
      EXPECT_NEAR(p.Slope(x), slope[i], tol) << what << " slope at " << x;
    }
    if (curvature) {
      EXPECT_NEAR(p.Curvature(x), curvature[i], tol) << what << " curvature at " << x;
    }
  }
}
} // namespace

TEST(QySplines, AgainstScipy) {
  TQyCubicPieces akima = Reference(), cubic = Reference(), smooth1 = Reference(), smooth005 = Reference();
  AkimaCoeffs(akima);
  NormalSplineCoeffs(cubic);
  const std::vector<double> w(std::begin(SplineW), std::end(SplineW));
  std::vector<double> w005 = w;
  for (double& v : w005) v *= 0.05;
  ApproximativeSplineCoeffs(smooth1, w);
  ApproximativeSplineCoeffs(smooth005, w005);
  // Generic data: Akima's rule for equal slope differences never applies, so scipy's applies.
  ExpectCurve(akima, AkimaValue, AkimaSlope, nullptr, 1e-11, "akima");
  ExpectCurve(cubic, CubicValue, CubicSlope, CubicCurvature, 1e-10, "cubic");
  // The smoothing spline has a continuous curvature: scipy's twice-differentiable curve.
  ExpectCurve(smooth1, Smoothing1Value, Smoothing1Slope, Smoothing1Curvature, 1e-9, "smoothing 1");
  ExpectCurve(smooth005, Smoothing005Value, Smoothing005Slope, Smoothing005Curvature, 1e-9, "smoothing 0.05");
  for (size_t i = 0; i < std::size(SplineProbe); ++i) {
    const int k = cubic.FindIndex(SplineProbe[i]);
    double integral = 0;
    for (int j = 0; j < k; ++j) integral += cubic.IntegralAt(j, cubic.X[j + 1] - cubic.X[j]);
    integral += cubic.IntegralAt(k, SplineProbe[i] - cubic.X[k]);
    EXPECT_NEAR(integral, CubicIntegral[i], 1e-10) << SplineProbe[i];
  }
}

TEST(QySplines, ExactCurves) {
  // The not-a-knot spline reproduces a cubic, including beyond the knots; 3 knots give the
  // parabola through them; Akima reproduces a straight line.
  auto cubicPoly = [](double x) { return 0.5 * x * x * x - 2 * x * x + x - 3; };
  const double xs[] = {-2, -1.2, 0, 0.7, 2, 3.5, 4};
  double ys[7];
  for (int i = 0; i < 7; ++i) ys[i] = cubicPoly(xs[i]);
  TQyCubicPieces cubic = Knots(xs, ys, 7);
  NormalSplineCoeffs(cubic);
  for (double x = -3; x <= 5; x += 0.25) {
    EXPECT_NEAR(cubic.Value(x), cubicPoly(x), 1e-10) << x;
    EXPECT_NEAR(cubic.Slope(x), 1.5 * x * x - 4 * x + 1, 1e-10) << x;
  }
  const double px[] = {0, 1, 3}, py[] = {1, 0, 4}; // y = x^2 - 2x + 1
  TQyCubicPieces three = Knots(px, py, 3);
  NormalSplineCoeffs(three);
  for (double x = -1; x <= 4; x += 0.5) EXPECT_NEAR(three.Value(x), (x - 1) * (x - 1), 1e-12) << x;
  const double lx[] = {0, 1, 2.5}, ly[] = {1, 3, 6};
  TQyCubicPieces line = Knots(lx, ly, 3);
  AkimaCoeffs(line);
  for (double x = -1; x <= 4; x += 0.5) EXPECT_NEAR(line.Value(x), 2 * x + 1, 1e-12) << x;
}

TEST(QySplines, AkimaEqualSlopeDifferencesTakeTheRightSecant) {
  // y = |x - 2|: at knot 2 the secants are -1, -1, 1, 1. The textbook (and scipy) take the mean
  // of the two middle ones, 0; this system takes the mean of the right secant and the next: 1.
  const double x[] = {0, 1, 2, 3, 4}, y[] = {2, 1, 0, 1, 2};
  TQyCubicPieces p = Knots(x, y, 5);
  AkimaCoeffs(p);
  EXPECT_EQ(p.Slope(2), 1.0);
  EXPECT_EQ(p.Slope(1), -1.0);
}

TEST(QySplines, SmoothingSplineLimits) {
  // A tiny elasticity gives the weighted least-squares line; a large one runs through the data.
  std::vector<double> x(12), y(12), w(12);
  for (int i = 0; i < 12; ++i) x[i] = SplineX[i], y[i] = SplineY[i], w[i] = SplineW[i];
  double sw = 0, sx = 0, sy = 0, sxx = 0, sxy = 0;
  for (int i = 0; i < 12; ++i) sw += w[i], sx += w[i] * x[i], sy += w[i] * y[i], sxx += w[i] * x[i] * x[i], sxy += w[i] * x[i] * y[i];
  const double slope = (sw * sxy - sx * sy) / (sw * sxx - sx * sx), offset = (sy - slope * sx) / sw;
  TQyCubicPieces stiff = Knots(x.data(), y.data(), 12), loose = stiff;
  std::vector<double> tiny(12), huge(12);
  for (int i = 0; i < 12; ++i) tiny[i] = w[i] * 1e-300, huge[i] = w[i] * 1e12;
  ApproximativeSplineCoeffs(stiff, tiny);
  ApproximativeSplineCoeffs(loose, huge);
  for (int i = 0; i < 12; ++i) {
    EXPECT_NEAR(stiff.Value(x[i]), offset + slope * x[i], 1e-9) << i;
    EXPECT_NEAR(loose.Value(x[i]), y[i], 1e-9) << i;
  }
  TQyCubicPieces five = Knots(x.data(), y.data(), 5);
  EXPECT_THROW(ApproximativeSplineCoeffs(five, w), EMathError);
}

TEST(QySplines, Extrema) {
  // A sampled sine: maxima near pi/2 + 2 k pi, minima near 3 pi/2 + 2 k pi; its slope's extrema
  // at the zeros; the integral's at the zeros too (1 - cos has minima at 0, 2 pi; a maximum at pi).
  std::vector<double> x, y;
  for (int i = 0; i <= 80; ++i) x.push_back(i * 0.15), y.push_back(std::sin(i * 0.15));
  TQyCubicPieces p = Knots(x.data(), y.data(), int(x.size()));
  NormalSplineCoeffs(p);
  TQyDoublePointArray minima, maxima, dmin, dmax, imin, imax;
  FindValueExtrema(p, minima, maxima);
  ASSERT_EQ(maxima.size(), 2u);
  ASSERT_EQ(minima.size(), 2u);
  EXPECT_NEAR(maxima[0].X, M_PI / 2, 1e-3);
  EXPECT_NEAR(maxima[0].Y, 1, 1e-4);
  EXPECT_NEAR(minima[1].X, 3.5 * M_PI, 1e-3);
  FindSlopeExtrema(p, dmin, dmax);
  ASSERT_FALSE(dmax.empty());
  ASSERT_FALSE(dmin.empty());
  EXPECT_NEAR(dmin[0].X, M_PI, 2e-2);
  EXPECT_NEAR(dmin[0].Y, -1, 1e-3);
  FindIntegralExtrema(p, [](double x) { return 1 - std::cos(x); }, imin, imax);
  ASSERT_GE(imax.size(), 1u);
  EXPECT_NEAR(imax[0].X, M_PI, 1e-3);
  EXPECT_EQ(imin[0].X, 0.0); // the first knot's value is 0
}

TEST(QySplines, AkimaCurveWithoutCoefficientsEqualsTheFit) {
  // The curve evaluated from the knots around each probe against the coefficients of the whole
  // fit: irregular data, the fewest knots, and knots where the equal-difference rule applies.
  struct Case { std::vector<double> x, y; };
  const Case cases[] = {
      {{SplineX, SplineX + std::size(SplineX)}, {SplineY, SplineY + std::size(SplineY)}},
      {{0, 1, 3}, {1, 0, 4}},
      {{0, 0.5, 2, 2.25}, {3, -1, 2, 2}},
      {{0, 1, 2, 3, 4, 5, 6}, {2, 1, 0, 1, 2, 2, 2}},
  };
  for (const Case& c : cases) {
    const int n = int(c.x.size());
    TQyCubicPieces fit = Knots(c.x.data(), c.y.data(), n);
    AkimaCoeffs(fit);
    TQyAkimaCurve curve;
    curve.Assign(c.x.data(), c.y.data(), n);
    const double width = c.x[n - 1] - c.x[0];
    for (double at = c.x[0] - width / 4; at <= c.x[n - 1] + width / 4; at += width / 97)
      EXPECT_DOUBLE_EQ(curve.Value(at), fit.Value(at)) << n << " knots, at " << at;
    for (double knot : c.x) EXPECT_DOUBLE_EQ(curve.Value(knot), fit.Value(knot)) << n << " knots, at " << knot;
  }
  // What a fit refuses, the curve refuses alike.
  const double x[] = {0, 1, 1, 2}, y[] = {0, 1, 2, 1e308}, huge[] = {-1e308, 1e308, 0, 1};
  TQyAkimaCurve curve;
  EXPECT_THROW(curve.Assign(x, y, 2), EMathError);
  EXPECT_THROW(curve.Assign(x, y, 4), EZeroDivide);
  const double tight[] = {0, 1e-300, 1, 2};
  EXPECT_THROW(curve.Assign(tight, huge, 4), EOverflow);
  EXPECT_TRUE(std::isnan(curve.Value(0))); // no curve after a refusal
}
