#include "QyMath.h"
#include "QyTextFormat.h"
#include <cmath>

namespace {
// Half to even in extended precision (the step counts may exceed 64-bit integers).
long double RoundExt(long double x) { return std::nearbyintl(x); }

long double Exp10Ext(int power) { return std::pow(10.0L, power); }

// The integer after "E" in an exponent-form text ("1.000000E+1" -> 1); 0 without one.
int ExponentOf(const QString& text) {
  const int e = text.indexOf('E');
  return e < 0 ? 0 : text.mid(e + 1).toInt();
}

// One routine for both directions of RoundUp and RoundDown: the offset just under a half keeps a
// value on the grid where it is.
double RoundToStep(double value, double step, int exponent, long double offset) {
  if (step == 0) return value;
  const long double v = exponent == 0 ? (long double)value : value / Exp10Ext(exponent);
  const long double n = RoundExt(v / step + offset);
  return double(exponent == 0 ? n * step : n * step * Exp10Ext(exponent));
}

double RoundLog(double value, double decades, double step, bool up) {
  if (!(value > 0) || !std::isfinite(value)) return value;
  const double lg = std::log10(value);
  double i = std::trunc(lg);
  double f = lg - i; // the fraction carries the sign of lg
  if (decades > 1) {
    // The next exponent that is a multiple of 3, from the decade that contains the value on the
    // side of the rounding: starting from the truncated exponent would round 5000 "up" to 1000.
    long long k = (long long)(up ? std::ceil(lg - 1e-12) : std::floor(lg + 1e-12));
    while (k % 3 != 0) k += up ? 1 : -1;
    return Exp10(int(k));
  }
  if (step == 1) {
    if (up && f > 0) i += 1;
    if (!up && lg < 0 && f < 0) i -= 1;
    f = 0;
  } else if (f != 0) {
    f = std::pow(10.0, f);
    if (lg > 0) {
      f *= 0.1;
      i += 1;
    }
    f = up ? RoundUp(f, step, 0) : RoundDown(f, step, 0);
    if (f <= 0) {
      f += 1.0;
      i -= 1;
    }
    f = std::log10(f);
  }
  return Exp10(i + f);
}
} // namespace

double Exp10(int power) { return double(Exp10Ext(power)); }

double Exp10(double power) { return power == 0 ? 1.0 : std::pow(10.0, power); }

int Real10thExponent(double value) {
  if (!std::isfinite(value)) return 0;
  return ExponentOf(FloatToStrF(value, TFloatFormat::Exponent, 7, 0));
}

double ExpMinus(double value, int exponent) {
  return exponent == 0 ? value : double(value / Exp10Ext(exponent));
}

double RoundUp(double value, double step, int exponent) {
  return RoundToStep(value, step, exponent, 0.499999L);
}

double RoundDown(double value, double step, int exponent) {
  return RoundToStep(value, step, exponent, -0.499999L);
}

double RoundLogUp(double value, double decades, double step) { return RoundLog(value, decades, step, true); }

double RoundLogDown(double value, double decades, double step) { return RoundLog(value, decades, step, false); }

int LastSignificant(double value) {
  if (!std::isfinite(value)) return 0;
  QString text = FloatToStrF(std::fabs(value), TFloatFormat::Exponent, 16, 16);
  text = text.left(text.indexOf('E')).remove('.');
  int n = text.size();
  while (n > 0 && text[n - 1] == '0') --n;
  return n;
}

double FitTo360Degrees(double angle) {
  if (!std::isfinite(angle)) return 0;
  angle = std::fmod(angle, 360.0); // the same as adding or subtracting 360 until it fits
  if (angle < 0) angle += 360.0;
  return angle >= 360.0 ? 0.0 : angle;
}

int Quadrant(double angle) {
  if (angle < 90) return 1;
  if (angle < 180) return 2;
  if (angle < 270) return 3;
  return 4;
}

double Polynom(double x, const double* coeffs, int count) {
  double r = 0;
  for (int k = count - 1; k >= 0; --k) r = r * x + coeffs[k];
  return r;
}

double T95Percent(double degreesOfFreedom) {
  struct Row { double upTo, value; };
  static constexpr Row Table[] = {
      {1, 12.706}, {2, 4.303},  {3, 3.182},  {4, 2.776},  {5, 2.571},  {6, 2.447},  {7, 2.365},
      {8, 2.306},  {9, 2.262},  {10, 2.228}, {11, 2.201}, {12, 2.179}, {13, 2.16},  {14, 2.145},
      {15, 2.131}, {16, 2.12},  {17, 2.11},  {18, 2.101}, {19, 2.093}, {20, 2.086}, {21, 2.08},
      {22, 2.074}, {23, 2.069}, {24, 2.064}, {25, 2.06},  {26, 2.056}, {27, 2.052}, {28, 2.048},
      {29, 2.045}, {30, 2.042}, {40, 2.021}, {50, 2.009}, {60, 2.0},   {70, 1.994}, {80, 1.99},
      {90, 1.987}, {100, 1.984}, {200, 1.972}, {300, 1.968}, {400, 1.966}, {500, 1.965}};
  for (const Row& r : Table)
    if (r.upTo >= degreesOfFreedom) return r.value;
  return 1.96; // also for NaN: no row holds it
}
