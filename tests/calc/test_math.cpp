#include <QyMath.h>
#include <cmath>
#include <gtest/gtest.h>

TEST(QyMath, DecimalExponentsAndSignificantDigits) {
  EXPECT_EQ(Real10thExponent(0), 0);
  EXPECT_EQ(Real10thExponent(10), 1);
  EXPECT_EQ(Real10thExponent(9.99999999), 1); // rounds to 1.000000E+1 in seven digits
  EXPECT_EQ(Real10thExponent(9.99999), 0);
  EXPECT_EQ(Real10thExponent(0.00012), -4);
  EXPECT_EQ(Real10thExponent(-2500), 3);
  EXPECT_EQ(Real10thExponent(1e-300), -300);
  EXPECT_EQ(Real10thExponent(1e300), 300);
  EXPECT_EQ(Real10thExponent(std::nan("")), 0);
  EXPECT_EQ(Real10thExponent(INFINITY), 0);
  EXPECT_EQ(LastSignificant(0.5), 1);
  EXPECT_EQ(LastSignificant(0.25), 2);
  EXPECT_EQ(LastSignificant(0.2), 1);   // 0.2 is not exact in binary; 16 digits hide that
  EXPECT_EQ(LastSignificant(0.125), 3);
  EXPECT_EQ(LastSignificant(-15), 2);
  EXPECT_DOUBLE_EQ(ExpMinus(1234, 0), 1234);
  EXPECT_DOUBLE_EQ(ExpMinus(1234, 3), 1.234);
  EXPECT_DOUBLE_EQ(ExpMinus(1.5, -2), 150);
  EXPECT_DOUBLE_EQ(ExpMinus(3e-300, -300), 3.0); // extended intermediate: no underflow
  EXPECT_DOUBLE_EQ(Exp10(0.0), 1.0);
  EXPECT_DOUBLE_EQ(Exp10(3), 1000.0);
  EXPECT_DOUBLE_EQ(Exp10(-2), 0.01);
}

TEST(QyMath, RoundingToDecimalSteps) {
  EXPECT_DOUBLE_EQ(RoundUp(1.0, 0.5, 0), 1.0); // on the grid: stays
  EXPECT_DOUBLE_EQ(RoundUp(1.01, 0.5, 0), 1.5);
  EXPECT_DOUBLE_EQ(RoundDown(1.49, 0.5, 0), 1.0);
  EXPECT_DOUBLE_EQ(RoundUp(7.3, 0, 0), 7.3); // step 0: unchanged
  EXPECT_DOUBLE_EQ(RoundUp(1234, 0.2, 3), 1400);
  EXPECT_DOUBLE_EQ(RoundDown(1234, 0.2, 3), 1200);
  EXPECT_DOUBLE_EQ(RoundDown(-0.37, 0.1, 0), -0.4);
  EXPECT_DOUBLE_EQ(RoundUp(-0.37, 0.1, 0), -0.3);
  EXPECT_NEAR(RoundUp(2.3e-299, 0.1, -298), 3e-299, 1e-312);
  EXPECT_TRUE(std::isfinite(RoundUp(1e300, 1e-5, -300))); // a huge step count stays finite
}

TEST(QyMath, RoundingLogarithmicEnds) {
  // Whole decades with step 1.
  EXPECT_DOUBLE_EQ(RoundLogUp(350, 1, 1), 1000);
  EXPECT_DOUBLE_EQ(RoundLogDown(350, 1, 1), 100);
  EXPECT_DOUBLE_EQ(RoundLogUp(0.035, 1, 1), 0.1);
  EXPECT_DOUBLE_EQ(RoundLogDown(0.035, 1, 1), 0.01);
  EXPECT_DOUBLE_EQ(RoundLogUp(100, 1, 1), 100);
  // Mantissa steps of 0.1 of the decade's upper power: 1, 2, ... 9 times the decade.
  EXPECT_NEAR(RoundLogUp(350, 1, 0.1), 400, 1e-9);
  EXPECT_NEAR(RoundLogDown(350, 1, 0.1), 300, 1e-9);
  EXPECT_NEAR(RoundLogUp(0.035, 1, 0.1), 0.04, 1e-15);
  EXPECT_NEAR(RoundLogDown(0.035, 1, 0.1), 0.03, 1e-15);
  EXPECT_NEAR(RoundLogDown(150, 1, 0.2), 100, 1e-9); // a mantissa rounding to 0 falls a decade
  // Over one decade: powers whose exponent is a multiple of 3, beyond the value.
  EXPECT_DOUBLE_EQ(RoundLogUp(5000, 3, 1), 1e6);
  EXPECT_DOUBLE_EQ(RoundLogDown(5000, 3, 1), 1e3);
  EXPECT_DOUBLE_EQ(RoundLogUp(1000, 3, 1), 1e3);
  EXPECT_DOUBLE_EQ(RoundLogDown(3e-4, 3, 1), 1e-6);
  EXPECT_DOUBLE_EQ(RoundLogUp(3e-4, 3, 1), 1e-3);
  for (double v : {2.0, 47.0, 0.0123, 8e5, 3.3e-7})
    for (double step : {0.1, 0.2, 1.0}) {
      EXPECT_GE(RoundLogUp(v, 1, step), v * (1 - 1e-12));
      EXPECT_LE(RoundLogDown(v, 1, step), v * (1 + 1e-12));
    }
}

TEST(QyMath, AnglesAndQuadrants) {
  EXPECT_DOUBLE_EQ(FitTo360Degrees(360), 0);
  EXPECT_DOUBLE_EQ(FitTo360Degrees(-1), 359);
  EXPECT_DOUBLE_EQ(FitTo360Degrees(725), 5);
  EXPECT_DOUBLE_EQ(FitTo360Degrees(-720), 0);
  EXPECT_LT(FitTo360Degrees(1e30), 360); // no hang on absurd angles
  EXPECT_EQ(Quadrant(0), 1);
  EXPECT_EQ(Quadrant(89.9), 1);
  EXPECT_EQ(Quadrant(90), 2);
  EXPECT_EQ(Quadrant(269), 3);
  EXPECT_EQ(Quadrant(300), 4);
}
