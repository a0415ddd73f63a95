// The discrete Fourier transform against numpy.fft (spectrum_reference.inc): the positive exponent
// makes it the conjugate of numpy's transform of the conjugate input.
#include <QyFourier.h>
#include <cmath>
#include <gtest/gtest.h>

namespace {
#include "spectrum_reference.inc"

// x[j] = cos(0.3 j) + 0.5 sin(0.011 j^2) + i 0.25 cos(0.7 j + 1), as the script makes it.
TComplexArray Signal(int n) {
  TComplexArray a(n);
  for (int j = 0; j < n; ++j) a[j] = {std::cos(0.3 * j) + 0.5 * std::sin(0.011 * j * j), 0.25 * std::cos(0.7 * j + 1)};
  return a;
}

// The root of unity is rounded to single precision: each part off by at most half an ulp below
// 1, |dw| <= 2^-24.5. Each step of the transform (a halving, an odd factor, the last sum) raises
// its root w^(N/L) to powers below L, so a twiddle is off by at most N |dw|, and each step adds
// that much times sum |x| to an output.
double Tolerance(const TComplexArray& x) {
  const int n = int(x.size());
  int steps = 1;
  for (int m = n, p = 2; m > 1; ++steps) {
    while (m % p != 0) ++p;
    m /= p;
  }
  double sum = 0;
  for (const TComplex& c : x) sum += std::hypot(c.Re, c.Im);
  return steps * n * std::pow(2.0, -24.5) * sum;
}
} // namespace

TEST(QyFourier, MatchesTheConjugateOfNumpysTransform) {
  const struct { int n; const double* re; const double* im; } cases[] = {
      {256, Fourier256Re, Fourier256Im},    // a power of two
      {105, Fourier105Re, Fourier105Im},    // odd: factors 3, 5, 7
      {96, Fourier96Re, Fourier96Im},       // 3 * 2^5
      {1000, Fourier1000Re, Fourier1000Im}, // 8 * 125
      {254, Fourier254Re, Fourier254Im},    // 2 * 127: a prime too long for a direct sum
  };
  for (const auto& c : cases) {
    TComplexArray a = Signal(c.n);
    const double tol = Tolerance(a);
    DiscreteFourierTransform(a);
    double worst = 0;
    for (int k = 0; k < c.n; ++k)
      worst = std::max(worst, std::hypot(a[k].Re - c.re[k], a[k].Im - c.im[k]));
    EXPECT_LT(worst, tol) << c.n;
    EXPECT_GT(std::hypot(a[1].Re, a[1].Im), 10 * tol) << c.n; // the bound tells signal from noise
  }
}

TEST(QyFourier, ShortInputsStayAsTheyAre) {
  TComplexArray none;
  DiscreteFourierTransform(none);
  EXPECT_TRUE(none.empty());
  TComplexArray one{{2.5, -1}};
  DiscreteFourierTransform(one);
  EXPECT_EQ(one[0].Re, 2.5);
  EXPECT_EQ(one[0].Im, -1);
  TComplexArray two{{1, 0}, {3, 0}}; // w = -1: sum and difference
  DiscreteFourierTransform(two);
  EXPECT_DOUBLE_EQ(two[0].Re, 4);
  EXPECT_NEAR(two[1].Re, -2, 1e-7);
}
