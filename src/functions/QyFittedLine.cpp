// The fitted line: the series that feeds the simplex fit and draws the fitted formula.
#include "QyExceptions.h"
#include "QySimplexFit.h"
#include <cmath>

TQyFittedLine::TQyFittedLine(QObject* owner) : TQyFunctionSeries(owner) {
  SetCalculation(&FFit);
  FMinimumCount = 0;
}

double TQyFittedLine::GetY(double x) {
  if (FFit.FromExpression() && FFit.Expression().isEmpty()) return std::nan("");
  try {
    return FFit.GetY(x);
  } catch (const EQyException&) {
    return std::nan("");
  }
}

void TQyFittedLine::SetOrder(int value) {
  AssignToEngine(GetOrder(), value, QyRes::FitCoefficients, "Order", [&] {
    FFit.SetOrder(value);
    Recalculate();
  });
}

void TQyFittedLine::SetIterations(int value) {
  AssignToEngine(GetIterations(), value, QyRes::FitIterations, "Iterations", [&] {
    FFit.Iterations = value;
    Recalculate();
  });
}

// A text that the fit cannot take raises before anything is recorded or changed.
void TQyFittedLine::SetExpression(const QString& value) {
  FFit.CheckExpression(value);
  AssignToEngine(GetExpression(), value, QyRes::FitExpression, "Expression", [&] {
    FFit.SetExpression(value);
    Recalculate();
  });
}

QList<double> TQyFittedLine::GetCoefficients() const {
  const TDoubleDynArray& c = FFit.Coefficients();
  return QList<double>(c.begin(), c.end());
}

void TQyFittedLine::SetCoefficients(const QList<double>& value) {
  AssignToEngine(GetCoefficients(), value, QyRes::FitCoefficients, "Coefficients", [&] {
    FFit.SetCoefficients(TDoubleDynArray(value.begin(), value.end()));
    Recalculate();
  });
}

void TQyFittedLine::SetDoCovariance(bool value) {
  AssignToEngine(GetDoCovariance(), value, QyRes::FitDoCovariance, "DoCovariance", [&] {
    FFit.DoCovariance = value;
    Recalculate();
  });
}

void TQyFittedLine::SetFittingFunction(TQyFittingFunctionHandler handler) {
  FFit.SetFittingFunction(std::move(handler));
  Recalculate();
}

double TQyFittedLine::GetCoeff(int i) const {
  if (i < 0 || i >= GetOrder()) throw EMathError(QyText(QyRes::FitIndexOutOfRange));
  return FFit.Coefficients()[size_t(i)];
}

void TQyFittedLine::RegisterVariables() {
  TQyFunctionSeries::RegisterVariables();
  const struct { const char* name; const char* help; double (TQySimplexFit::*get)() const; } numbers[] = {
      {"AverageX", QyRes::FitVarAverageX, &TQySimplexFit::AverageX},
      {"AverageY", QyRes::FitVarAverageY, &TQySimplexFit::AverageY},
      {"VarianceX", QyRes::FitVarVarianceX, &TQySimplexFit::VarianceX},
      {"VarianceY", QyRes::FitVarVarianceY, &TQySimplexFit::VarianceY},
      {"Probability", QyRes::FitVarProbability, &TQySimplexFit::Probability},
      {"SumOfResiduals", QyRes::FitVarSumOfResiduals, &TQySimplexFit::SumOfResiduals}};
  for (const auto& n : numbers) {
    const auto get = n.get;
    RegisterDoubleVariable(this, n.name, QyText(n.help), [this, get] { return (FFit.*get)(); });
  }
  RegisterArrayVariable(this, "Coefficients", QyText(QyRes::FitVarCoefficients), [this](int i) { return GetCoeff(i); });
}
