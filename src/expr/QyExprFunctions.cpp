#include "QyExprFunctions.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include "QyRounding.h"
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace QyExprFunctions {
namespace {
constexpr double TwoTo63 = 9223372036854775808.0;

[[noreturn]] void RaiseByFlags(int flags, double value) {
  if (flags & FE_DIVBYZERO) throw EZeroDivide(QyText(QyRes::ExprFloatZeroDivide));
  if (flags & FE_INVALID) throw EInvalidOp(QyText(QyRes::ExprFloatInvalidOp));
  if (flags & FE_OVERFLOW) throw EOverflow(QyText(QyRes::ExprFloatOverflow));
  RaiseBadValue(value);
}

// Truncation to a 64-bit integer; out of range is an invalid operation, as the hardware says.
std::int64_t CheckedTrunc(double x) {
  if (!(std::fabs(x) < TwoTo63)) throw EInvalidOp(QyText(QyRes::ExprFloatInvalidOp));
  return Trunc(x);
}
// Ceil and Floor pass through a 32-bit integer: larger values wrap around, as they always did.
double Wrap32(std::int64_t v, int step) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(v) + step));
}

double FAbs(double x) { return std::fabs(x); }
double FArcCos(double x) { return std::acos(x); }
double FArcCosh(double x) { return std::acosh(x); }
double FArcSin(double x) { return std::asin(x); }
double FArcSinh(double x) { return std::asinh(x); }
double FArcTan(double x) { return std::atan(x); }
double FArcTanh(double x) { return std::atanh(x); }
double FCeil(double x) {
  const std::int64_t t = CheckedTrunc(x);
  return Wrap32(t, x - static_cast<double>(t) > 0 ? 1 : 0);
}
double FCos(double x) { return std::cos(x); }
double FCosh(double x) { return std::cosh(x); }
double FCotan(double x) { return 1.0 / std::tan(x); }
double FDegToRad(double x) { return x * (std::numbers::pi / 180.0); }
double FExp(double x) { return std::exp(x); }
double FFloor(double x) {
  const std::int64_t t = CheckedTrunc(x);
  return Wrap32(t, x - static_cast<double>(t) < 0 ? -1 : 0);
}
double FFrac(double x) { return x - std::trunc(x); }
double FInt(double x) { return std::trunc(x); }
double FLn(double x) { return std::log(x); }
double FLg10(double x) { return std::log10(x); }
double FLg2(double x) { return std::log2(x); }
double FRadToDeg(double x) { return x * (180.0 / std::numbers::pi); }
double FRound(double x) {
  if (!(std::fabs(x) < TwoTo63)) throw EInvalidOp(QyText(QyRes::ExprFloatInvalidOp));
  return static_cast<double>(Round(x));
}
double FSin(double x) { return std::sin(x); }
double FSinh(double x) { return std::sinh(x); }
double FSqrt(double x) { return std::sqrt(x); }
double FSqr(double x) { return x * x; }
double FTan(double x) { return std::tan(x); }
double FTanh(double x) { return std::tanh(x); }
} // namespace

double Add(double a, double b) { return a + b; }
double Subtract(double a, double b) { return a - b; }
double Multiply(double a, double b) { return a * b; }
double Divide(double a, double b) { return a / b; }
double Power(double base, double exponent) { return std::pow(base, exponent); }
double Negate(double x) { return -x; }
double Identity(double x) { return x; }

TQyFunctionsList BuiltInFunctions() {
  auto help = [](const char* id) { return QyText(id); };
  return {
      {"Abs", help(QyRes::ExprAbsHelp), FAbs},
      {"ArcCos", help(QyRes::ExprArcCosHelp), FArcCos},
      {"ArcCosh", help(QyRes::ExprArcCoshHelp), FArcCosh},
      {"ArcSin", help(QyRes::ExprArcSinHelp), FArcSin},
      {"ArcSinh", help(QyRes::ExprArcSinhHelp), FArcSinh},
      {"ArcTan", help(QyRes::ExprArcTanHelp), FArcTan},
      {"ArcTanh", help(QyRes::ExprArcTanhHelp), FArcTanh},
      {"Ceil", help(QyRes::ExprCeilHelp), FCeil},
      {"Cos", help(QyRes::ExprCosHelp), FCos},
      {"Cosh", help(QyRes::ExprCoshHelp), FCosh},
      {"Cotan", help(QyRes::ExprCotanHelp), FCotan},
      {"DegToRad", help(QyRes::ExprDegToRadHelp), FDegToRad},
      {"Exp", help(QyRes::ExprExpHelp), FExp},
      {"Floor", help(QyRes::ExprFloorHelp), FFloor},
      {"Frac", help(QyRes::ExprFracHelp), FFrac},
      {"Int", help(QyRes::ExprIntHelp), FInt},
      {"Ln", help(QyRes::ExprLnHelp), FLn},
      {"Lg10", help(QyRes::ExprLg10Help), FLg10},
      {"Lg", help(QyRes::ExprLg10Help), FLg10},
      {"Lg2", help(QyRes::ExprLg2Help), FLg2},
      {"RadToDeg", help(QyRes::ExprDegToRadHelp), FRadToDeg},
      {"Round", help(QyRes::ExprRoundHelp), FRound},
      {"Sin", help(QyRes::ExprSinHelp), FSin},
      {"Sinh", help(QyRes::ExprSinhHelp), FSinh},
      {"Sqrt", help(QyRes::ExprSqrtHelp), FSqrt},
      {"Sqr", help(QyRes::ExprSqrHelp), FSqr},
      {"Tan", help(QyRes::ExprTanHelp), FTan},
      {"Tanh", help(QyRes::ExprTanhHelp), FTanh},
  };
}

void RaiseFault1(TQyOnePrmFunction f, double x) {
  std::feclearexcept(FE_ALL_EXCEPT);
  volatile double r = f(x);
  RaiseByFlags(std::fetestexcept(FE_ALL_EXCEPT), r);
}

void RaiseFault2(TQyTwoPrmFunction f, double a, double b) {
  std::feclearexcept(FE_ALL_EXCEPT);
  volatile double r = f(a, b);
  RaiseByFlags(std::fetestexcept(FE_ALL_EXCEPT), r);
}

void RaiseBadValue(double value) {
  if (std::isinf(value)) throw EOverflow(QyText(QyRes::ExprFloatOverflow));
  throw EInvalidOp(QyText(QyRes::ExprFloatInvalidOp));
}
} // namespace QyExprFunctions
