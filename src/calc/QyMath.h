#pragma once
// Number routines shared by axes and calculated curves: decimal exponents, rounding to decimal
// and logarithmic steps, and angle normalisation. Intermediate values are 80-bit extended where
// a step grid must be hit exactly.

// 10 to an integer power (exact for the powers a double holds; 0 and inf beyond them).
double Exp10(int power);
// 10 to a real power; exactly 1 for 0.
double Exp10(double power);
// The decimal exponent of `value` as its 7-digit exponent form writes it: 9.99999999 gives 1
// (it rounds to 1.000000E+1), 0 gives 0, non-finite values give 0.
int Real10thExponent(double value);
// `value` / 10^exponent; `value` itself for exponent 0.
double ExpMinus(double value, int exponent);
// `value` rounded up (down) to a whole multiple of `step`, both counted in units of 10^exponent.
// A value already on the grid stays there; a step of 0 returns `value`.
double RoundUp(double value, double step, int exponent);
double RoundDown(double value, double step, int exponent);
// Ends of logarithmic axes. With decades > 1: the power of ten at or beyond `value` whose
// exponent is a multiple of 3. With step 1: the whole decade. Otherwise `value`'s mantissa within
// its decade (0.1 .. 1 of the decade's upper power) rounded to a multiple of `step`.
double RoundLogUp(double value, double decades, double step);
double RoundLogDown(double value, double decades, double step);
// Digits of |value| up to its last non-zero one in 16-digit exponent form: 0.5 -> 1, 0.25 -> 2.
int LastSignificant(double value);
// The angle brought into 0 <= angle < 360 degrees.
double FitTo360Degrees(double angle);
// 1 below 90 degrees, 2 below 180, 3 below 270, 4 otherwise.
int Quadrant(double angle);
// Horner's rule: coeffs[k] is the coefficient of x^k.
double Polynom(double x, const double* coeffs, int count);
// -1 below 0, otherwise +1 (0 counts as positive).
inline int MySign(int value) { return value < 0 ? -1 : 1; }
inline double MySign(double value) { return value < 0 ? -1.0 : 1.0; }
// The two-sided 95 % Student t value from a table by degrees of freedom: the first row whose
// degrees are at or above `degreesOfFreedom` (12.706 up to 1, 1.96 above 500).
double T95Percent(double degreesOfFreedom);
