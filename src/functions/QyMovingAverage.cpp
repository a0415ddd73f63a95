#include "QyMovingAverage.h"
#include "QyExceptions.h"
#include "QyVectors.h"
#include <algorithm>
#include <cmath>

void TQyMovingAverageCalculation::Calculate() {
  RequireVectors();
  FRecalculate = true; // until the curve is set again: it points into the arrays below
  const double* knots;
  int m;
  {
    const TQyVectorReadLocks hold({XData.data(), YData.data(), Weight.data()});
    TQyValidRun run;
    if (ValidInPlace(run)) { // the data in place; only X is kept for the curve
      m = run.Count;
      FKnotX.resize(m), FAverages.resize(m);
      std::copy_n(run.X, m, FKnotX.data());
      MovingAverage(Averaging, run.X, run.Y, run.W, m, FAverages.data());
      knots = FKnotX.data();
    } else {
      TDoubleDynArray &x = FValidX, &y = FValidY, &w = FValidW;
      CollectValid(x, y, w);
      m = int(x.size());
      // Equal X values stay as they are: the curve then divides by zero.
      if (m > 0 && !XData->GetOnlyAscending()) QuickSortYWtoX(0, m - 1, x.data(), y.data(), w.data());
      FAverages.resize(m);
      MovingAverage(Averaging, x.data(), y.data(), w.data(), m, FAverages.data());
      knots = x.data();
    }
  }
  FCurve.Assign(knots, FAverages.data(), m);
  FRecalculate = false;
}

double TQyMovingAverageCalculation::GetY(double atX) {
  if (FRecalculate) Calculate();
  return FCurve.Value(atX);
}

TQyMovingAverage::TQyMovingAverage(QObject* owner) : TQyFunctionSeries(owner) {
  SetCalculation(&FAvg);
}

template <class T> void TQyMovingAverage::Assign(T& field, T value, const char* caption, const char* name) {
  QyAssign(this, field, value, caption, name, [this] {
    FAvg.Invalidate();
    Recalculate();
  });
}

void TQyMovingAverage::SetAveragingMethod(TQyAveragingMethod value) {
  Assign(FAvg.Averaging.Method, value, QyRes::AverageMethod, "AveragingMethod");
}
void TQyMovingAverage::SetAveragingDirection(TQyAveragingDirection value) {
  Assign(FAvg.Averaging.Direction, value, QyRes::AverageDirection, "AveragingDirection");
}
void TQyMovingAverage::SetAveragingRangeMethod(TQyAveragingRangeMethod value) {
  Assign(FAvg.Averaging.RangeMethod, value, QyRes::AverageRangeMethod, "AveragingRangeMethod");
}
void TQyMovingAverage::SetN(double value) { Assign(FAvg.Averaging.N, std::fabs(value), QyRes::AverageN, "N"); }
void TQyMovingAverage::SetExponentialFactorForN(double value) {
  Assign(FAvg.Averaging.ExponentialFactor, std::fabs(value) > 1 ? 1.0 : std::fabs(value),
         QyRes::AverageExponentialFactor, "ExponentialFactorForN");
}

QString TQyMovingAverage::GetFormula() const {
  switch (GetAveragingMethod()) {
  case TQyAveragingMethod::Simple: return QyText(QyRes::AverageFormulaSimple);
  case TQyAveragingMethod::LinearWeighted: return QyText(QyRes::AverageFormulaLinear);
  default: return QyText(QyRes::AverageFormulaExponential);
  }
}

void TQyMovingAverage::RegisterVariables() {
  TQyFunctionSeries::RegisterVariables();
  RegisterDoubleVariable(this, "N", QyText(QyRes::AverageVarN), [this] { return GetN(); });
  RegisterDoubleVariable(this, "ExponentialFactorForN", QyText(QyRes::AverageVarExponentialFactor),
                         [this] { return GetExponentialFactorForN(); });
}
