#pragma once
// The functions formulas can call: the built-in operators and the named functions that fill the
// function register at start-up, plus the check that turns a floating-point fault into an
// exception (the system treats division by zero, invalid operations and overflow as errors).
#include "QyRegisters.h"

namespace QyExprFunctions {
// Operators; the two-argument ones take the left operand first.
double Add(double a, double b);
double Subtract(double a, double b);
double Multiply(double a, double b);
double Divide(double a, double b);
double Power(double base, double exponent);
double Negate(double x);
double Identity(double x);

// The built-in named functions, in their documented order.
TQyFunctionsList BuiltInFunctions();

// Raise when a computed value is not finite: EZeroDivide, EInvalidOp or EOverflow. The function
// and arguments are computed once more with cleared status flags to tell the fault's kind.
[[noreturn]] void RaiseFault1(TQyOnePrmFunction f, double x);
[[noreturn]] void RaiseFault2(TQyTwoPrmFunction f, double a, double b);
// A value that came in from outside (a getter) and is not finite.
[[noreturn]] void RaiseBadValue(double value);
} // namespace QyExprFunctions
