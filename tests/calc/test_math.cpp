#include <QyMath.h>
#include <cmath>
#include <gtest/gtest.h>

TEST(QyMath, DecimalExponentsAndSignificantDigits) {
  // 9.99999999 rounds to 1.000000E+1 in seven digits.
  const std::pair<double, int> exponents[] = {{0, 0},      {10, 1},       {9.99999999, 1}, {9.99999, 0},
                                              {0.00012, -4}, {-2500, 3},  {1e-300, -300},  {1e300, 300},
                                              {std::nan(""), 0}, {INFINITY, 0}};
  for (auto [x, e] : exponents) EXPECT_EQ(Real10thExponent(x), e) << x;
  // 0.2 is not exact in binary; 16 digits hide that.
  const std::pair<double, int> lasts[] = {{0.5, 1}, {0.25, 2}, {0.2, 1}, {0.125, 3}, {-15, 2}};
  for (auto [x, n] : lasts) EXPECT_EQ(LastSignificant(x), n) << x;
  EXPECT_DOUBLE_EQ(ExpMinus(1234, 0), 1234);
  EXPECT_DOUBLE_EQ(ExpMinus(1234, 3), 1.234);
  EXPECT_DOUBLE_EQ(ExpMinus(1.5, -2), 150);
  EXPECT_DOUBLE_EQ(ExpMinus(3e-300, -300), 3.0); // extended intermediate: no underflow
  EXPECT_DOUBLE_EQ(Exp10(0.0), 1.0);
  EXPECT_DOUBLE_EQ(Exp10(3), 1000.0);
  EXPECT_DOUBLE_EQ(Exp10(-2), 0.01);
}

TEST(QyMath, RoundingToDecimalSteps) {
  // Rows: value, step, exponent of the step, rounded up, rounded down. Step 0: unchanged.
  const double cases[][5] = {{1.0, 0.5, 0, 1.0, 1.0},    {1.01, 0.5, 0, 1.5, 1.0},     {1.49, 0.5, 0, 1.5, 1.0},
                             {7.3, 0, 0, 7.3, 7.3},       {1234, 0.2, 3, 1400, 1200},   {-0.37, 0.1, 0, -0.3, -0.4}};
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(RoundUp(c[0], c[1], int(c[2])), c[3]) << c[0] << " step " << c[1];
    EXPECT_DOUBLE_EQ(RoundDown(c[0], c[1], int(c[2])), c[4]) << c[0] << " step " << c[1];
  }
  EXPECT_NEAR(RoundUp(2.3e-299, 0.1, -298), 3e-299, 1e-312);
  EXPECT_TRUE(std::isfinite(RoundUp(1e300, 1e-5, -300))); // a huge step count stays finite
}

TEST(QyMath, RoundingLogarithmicEnds) {
  // Rows: value, decades, mantissa step, rounded up, rounded down. Step 1: whole decades; steps
  // of 0.1 of the decade's upper power: 1, 2, ... 9 times the decade; a mantissa rounding to 0
  // falls a decade (150 by 0.2); over one decade: powers whose exponent is a multiple of 3.
  const double cases[][5] = {{350, 1, 1, 1000, 100},   {0.035, 1, 1, 0.1, 0.01},   {100, 1, 1, 100, 100},
                             {350, 1, 0.1, 400, 300},  {0.035, 1, 0.1, 0.04, 0.03}, {150, 1, 0.2, 200, 100},
                             {5000, 3, 1, 1e6, 1e3},   {1000, 3, 1, 1e3, 1e3},     {3e-4, 3, 1, 1e-3, 1e-6}};
  for (const auto& c : cases) {
    EXPECT_NEAR(RoundLogUp(c[0], c[1], c[2]), c[3], 1e-12 * c[3]) << c[0] << " step " << c[2];
    EXPECT_NEAR(RoundLogDown(c[0], c[1], c[2]), c[4], 1e-12 * c[4]) << c[0] << " step " << c[2];
  }
  for (double v : {2.0, 47.0, 0.0123, 8e5, 3.3e-7})
    for (double step : {0.1, 0.2, 1.0}) {
      EXPECT_GE(RoundLogUp(v, 1, step), v * (1 - 1e-12));
      EXPECT_LE(RoundLogDown(v, 1, step), v * (1 + 1e-12));
    }
}

TEST(QyMath, AnglesAndQuadrants) {
  for (auto [a, fitted] : {std::pair{360.0, 0.0}, {-1.0, 359.0}, {725.0, 5.0}, {-720.0, 0.0}})
    EXPECT_DOUBLE_EQ(FitTo360Degrees(a), fitted) << a;
  EXPECT_LT(FitTo360Degrees(1e30), 360); // no hang on absurd angles
  for (auto [a, q] : {std::pair{0.0, 1}, {89.9, 1}, {90.0, 2}, {269.0, 3}, {300.0, 4}}) EXPECT_EQ(Quadrant(a), q) << a;
}
