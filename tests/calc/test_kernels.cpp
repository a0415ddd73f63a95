// Sorting of paired arrays, smoothing, the band and tridiagonal solvers, the singular value
// decomposition and the t table, against numpy/scipy values (calc_reference.inc) and analytic ones.
#include "QyExpect.h"
#include <QyExceptions.h>
#include <QyLinearAlgebra.h>
#include <QyMath.h>
#include <QyMovingAverages.h>
#include <QyPairedArrays.h>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

namespace {
#include "calc_reference.inc"

} // namespace

TEST(QyKernels, SortCarriesPartnersAndMeansMergeLater) {
  std::vector<double> x = {5, 1, 4, 1, 3, 9, 2}, y = {50, 10, 40, 11, 30, 90, 20}, w = {5, 1, 4, 1, 3, 9, 2};
  QuickSortYWtoX(0, 6, x.data(), y.data(), w.data());
  EXPECT_TRUE(std::is_sorted(x.begin(), x.end()));
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(w[i], x[i]);                                 // weights travel with their X
    EXPECT_EQ(std::floor(y[i] / 10), x[i]) << "pair " << i; // 10 and 11 both belong to 1
  }
  // A million sorted or reversed values: the middle pivot keeps this quick and the stack shallow.
  std::vector<double> big(1000000), partner(big.size());
  for (size_t i = 0; i < big.size(); ++i) big[i] = double(big.size() - i), partner[i] = -big[i];
  QuickSortYtoX(0, int(big.size()) - 1, big.data(), partner.data());
  EXPECT_TRUE(std::is_sorted(big.begin(), big.end()));
  EXPECT_EQ(partner.front(), -1.0);
}

TEST(QyKernels, DistanceWeightedSmoothing) {
  std::vector<double> x(21), y(21), z(21);
  for (int i = 0; i < 21; ++i) x[i] = i, y[i] = 2 * i + 1, z[i] = i % 2;
  std::vector<double> line = y;
  Smooth(0, x, line); // M = 0 changes nothing
  EXPECT_EQ(line, y);
  Smooth(3, x, line); // a symmetric window keeps a straight line inside
  for (int i = 3; i < 18; ++i) EXPECT_NEAR(line[i], y[i], 1e-12);
  // Alternating 0/1 with M = 2: weights 0.5, 1, 0.5 give 0.5 * (neighbours) + point, over 2.
  Smooth(2, x, z);
  for (int i = 1; i < 20; ++i) EXPECT_NEAR(z[i], 0.5, 1e-12);
  // Logarithmic distance: points 10 and 100 apart by one decade, the same as 1 and 10.
  std::vector<double> lx = {1, 10, 100}, ly = {0, 3, 6};
  SmoothLog10(2, lx, ly);
  EXPECT_NEAR(ly[1], 3, 1e-12);
  EXPECT_NEAR(ly[0], (0 + 0.5 * 3) / 1.5, 1e-12);
}

TEST(QyKernels, BandSolverAgainstNumpy) {
  TQyBandMatrix m(9, 2, 2);
  std::copy(std::begin(BandCells), std::end(BandCells), m.Cells.begin());
  std::vector<double> v(std::begin(BandRight), std::end(BandRight));
  SolveBandMatrix(9, m, v);
  for (int i = 0; i < 9; ++i) EXPECT_NEAR(v[i], BandSolution[i], 1e-12) << i;
  TQyBandMatrix small(2, 1, 1), wide(4, 3, 2), negative(4, -1, 1);
  std::vector<double> r(4);
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SolveBandMatrix(2, small, r); }), "Not enough data points to calculate function");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SolveBandMatrix(4, wide, r); }), "Not enough data points to calculate function");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SolveBandMatrix(4, negative, r); }), "The dimension of the matrix must be positive");
  TQyBandMatrix zero(3, 1, 1);
  EXPECT_THROW(SolveBandMatrix(3, zero, r), EZeroDivide); // a zero pivot: no silent infinity
}

TEST(QyKernels, TridiagonalSolver) {
  // 4 x + y = 5, x + 4 y + z = 6, y + 4 z = 5: x = y = z = 1.
  std::vector<double> lower = {0, 1, 1}, diag = {4, 4, 4}, right = {5, 6, 5}, upper = {1, 1, 0};
  SolveTridiagonalEquationSystem(3, lower, diag, right, upper);
  for (double v : right) EXPECT_NEAR(v, 1, 1e-15);
  std::vector<double> zeroFirst = {0, 4, 4}, one = {1};
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SolveTridiagonalEquationSystem(3, lower, zeroFirst, right, upper); }), "Matrix is not tridiagonal");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SolveTridiagonalEquationSystem(1, one, one, one, one); }),
            "Not enough data, matrix is to small to solve");
}

TEST(QyKernels, SingularValueDecompositionAgainstNumpy) {
  TQyMatrix a(7, TQyVector(4));
  for (int i = 0; i < 7; ++i)
    for (int j = 0; j < 4; ++j) a[i][j] = SvdMatrix[i * 4 + j];
  const TQyMatrix original = a;
  TQyVector w(4);
  TQyMatrix v(4, TQyVector(4));
  SingularValueDecomposition(a, w, v);
  TQyVector sorted = w;
  std::sort(sorted.begin(), sorted.end());
  for (int j = 0; j < 4; ++j) EXPECT_NEAR(sorted[j], SvdValues[j], 1e-12);
  for (int i = 0; i < 7; ++i) // U diag(W) V^T gives the matrix back
    for (int j = 0; j < 4; ++j) {
      double s = 0;
      for (int k = 0; k < 4; ++k) s += a[i][k] * w[k] * v[j][k];
      EXPECT_NEAR(s, original[i][j], 1e-12);
    }
  const TQyVector x = SvdBackSubstitution(a, w, v, TQyVector(std::begin(SvdRight), std::end(SvdRight)));
  const TQyMatrix cov = SvdCovariance(w, v);
  for (int j = 0; j < 4; ++j) {
    EXPECT_NEAR(x[j], SvdSolution[j], 1e-12);
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(cov[j][k], SvdCovarianceRef[j * 4 + k], 1e-12);
  }
  TQyMatrix wide(2, TQyVector(3)), v3(3, TQyVector(3)), v2(2, TQyVector(3));
  TQyVector w3(3), w2(2);
  TQyMatrix tall(3, TQyVector(3));
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SingularValueDecomposition(wide, w3, v3); }), "SingularValueDecomposition: Matrix has wrong dimension");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SingularValueDecomposition(tall, w2, v3); }), "SingularValueDecomposition: Output vector has wrong dimension");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { SingularValueDecomposition(tall, w3, v2); }), "SingularValueDecomposition: Output matrix has wrong dimension");
}

TEST(QyKernels, StudentTTable) {
  // Each row's value is scipy's t.ppf(0.975, degrees) to three places; between rows the next
  // row up answers.
  for (size_t i = 0; i < std::size(TDegrees); ++i) {
    EXPECT_NEAR(T95Percent(TDegrees[i]), TValues[i], 5e-4) << TDegrees[i];
    if (i > 0) {
      EXPECT_EQ(T95Percent(TDegrees[i] - 0.5), T95Percent(TDegrees[i])) << TDegrees[i];
    }
  }
  EXPECT_EQ(T95Percent(0.5), 12.706);
  EXPECT_EQ(T95Percent(31), 2.021);
  EXPECT_EQ(T95Percent(501), 1.96);
  const double c[] = {1, -2, 3}; // 3 x^2 - 2 x + 1
  EXPECT_EQ(Polynom(2, c, 3), 9);
  EXPECT_EQ(MySign(0.0), 1);
  EXPECT_EQ(MySign(-3), -1);
}

TEST(QyKernels, MovingAveragesAsConvolutions) {
  // Evenly spaced data, 4 neighbours: numpy's convolution with the matching kernel.
  const int m = int(std::size(AverageY));
  std::vector<double> x(m), w(m, 1.0), avg(m);
  for (int i = 0; i < m; ++i) x[i] = 0.5 * i;
  struct Row {
    TQyAveragingMethod method;
    TQyAveragingDirection direction;
    const double* expected;
    int first, last;
  } rows[] = {
      {TQyAveragingMethod::Simple, TQyAveragingDirection::UpAndDownwards, AverageSimpleBoth, 4, m - 5},
      {TQyAveragingMethod::LinearWeighted, TQyAveragingDirection::OnlyDownwards, AverageLinearBack, 4, m - 1},
      {TQyAveragingMethod::ExponentiallyWeighted, TQyAveragingDirection::OnlyDownwards, AverageExponentialBack, 4, m - 1},
  };
  for (const Row& r : rows) {
    TQyAveraging how{r.method, r.direction, TQyAveragingRangeMethod::NasCount, 4, 0.7};
    MovingAverage(how, x.data(), AverageY, w.data(), m, avg.data());
    for (int i = r.first; i <= r.last; ++i) EXPECT_NEAR(avg[i], r.expected[i - r.first], 1e-12) << int(r.method) << " " << i;
    // The same windows by X distance: 4 steps of 0.5 reach exactly 2.0, which is included.
    // (Exponential weights depend on N itself, so only the other two compare.)
    if (r.method == TQyAveragingMethod::ExponentiallyWeighted) continue;
    how.RangeMethod = TQyAveragingRangeMethod::NasXDistance;
    how.N = 2.0;
    std::vector<double> byDistance(m);
    MovingAverage(how, x.data(), AverageY, w.data(), m, byDistance.data());
    for (int i = r.first; i <= r.last; ++i) EXPECT_NEAR(byDistance[i], avg[i], 1e-12) << int(r.method) << " " << i;
  }
  // N = 0 by count: each average is the point; N = 2.5 rounds to 2 (half to even); the first
  // windows are shorter.
  TQyAveraging simple{TQyAveragingMethod::Simple, TQyAveragingDirection::OnlyDownwards,
                      TQyAveragingRangeMethod::NasCount, 0, 0.9};
  MovingAverage(simple, x.data(), AverageY, w.data(), m, avg.data());
  for (int i = 0; i < m; ++i) EXPECT_EQ(avg[i], AverageY[i]);
  simple.N = -2.5;
  MovingAverage(simple, x.data(), AverageY, w.data(), m, avg.data());
  EXPECT_NEAR(avg[10], (AverageY[8] + AverageY[9] + AverageY[10]) / 3, 1e-15);
  EXPECT_NEAR(avg[1], (AverageY[0] + AverageY[1]) / 2, 1e-15);
  // Weight 0 does not count; a window of weight 0 alone is 0 / 0.
  std::vector<double> zero(m, 1.0);
  zero[9] = 0;
  MovingAverage(simple, x.data(), AverageY, zero.data(), m, avg.data());
  EXPECT_NEAR(avg[10], (AverageY[8] + AverageY[10]) / 2, 1e-15);
  simple.N = 0;
  EXPECT_THROW(MovingAverage(simple, x.data(), AverageY, zero.data(), m, avg.data()), EInvalidOp);
}
