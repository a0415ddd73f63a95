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
