#include "QyInterpolation.h"
#include "QyExceptions.h"
#include "QyRounding.h"
#include "QyServices.h"
#include "QyVectors.h"
#include <algorithm>
#include <cmath>

// ---- the engine: settings ---------------------------------------------------------------------

void TQyInterpolationCalculation::SetAllStale() {
  FRecalculate = FSearchExtrema = FSearchDiffExtrema = FSearchIntExtrema = true;
}

void TQyInterpolationCalculation::SetInterpolationMethod(TQyInterpolationMethod method) {
  FInterpolationMethod = method;
  if (method == TQyInterpolationMethod::ApproximativeSpline && FDoSmoothing) {
    QyPrompt::ShowMessage(QyText(QyRes::InterpolationNoSmoothing));
    FDoSmoothing = false;
  }
  SetAllStale();
}

void TQyInterpolationCalculation::SetSmoothPoints(bool on) {
  if (on && FInterpolationMethod == TQyInterpolationMethod::ApproximativeSpline) {
    QyPrompt::ShowMessage(QyText(QyRes::InterpolationNoSmoothing));
    return;
  }
  FDoSmoothing = on;
  FRecalculate = true;
}

void TQyInterpolationCalculation::SetSmoothingRange(double m) {
  FSmoothM = m;
  if (FInterpolationMethod != TQyInterpolationMethod::ApproximativeSpline) FRecalculate = true;
}

void TQyInterpolationCalculation::SetElasticityFactor(double factor) {
  FElasticityFactor = factor <= 0 ? 1e-300 : factor;
  if (FInterpolationMethod == TQyInterpolationMethod::ApproximativeSpline) FRecalculate = true;
}

// ---- the engine: fitting ----------------------------------------------------------------------

void TQyInterpolationCalculation::ClearExtrema() {
  for (TQyDoublePointArray* a : {&FMinima, &FMaxima, &FDiffMinima, &FDiffMaxima, &FIntMinima, &FIntMaxima})
    a->clear();
}

void TQyInterpolationCalculation::Calculate() {
  RequireVectors();
  TDoubleDynArray &x = FValidX, &y = FValidY, &w = FValidW;
  CollectValid(x, y, w);
  // Points of weight 0 take no part.
  const bool approximative = FInterpolationMethod == TQyInterpolationMethod::ApproximativeSpline;
  size_t kept = 0;
  for (size_t i = 0; i < x.size(); ++i) {
    if (!(w[i] > 0)) continue;
    x[kept] = x[i], y[kept] = y[i], w[kept] = approximative ? w[i] * FElasticityFactor : w[i];
    ++kept;
  }
  x.resize(kept), y.resize(kept), w.resize(kept);
  Fit(x, y, w, XData->GetOnlyAscending());
}

namespace {
// Equal X values become one knot, from the last pair down: each merge takes the mean of the knot
// and the merged knot after it (and of their weights).
void MergeEqualX(TDoubleDynArray& x, TDoubleDynArray& y, TDoubleDynArray& w) {
  const int n = int(x.size());
  int out = n - 1;
  for (int i = n - 2; i >= 0; --i) {
    if (x[i] == x[out]) {
      y[out] = (y[i] + y[out]) / 2, w[out] = (w[i] + w[out]) / 2;
    } else {
      --out;
      x[out] = x[i], y[out] = y[i], w[out] = w[i];
    }
  }
  for (TDoubleDynArray* a : {&x, &y, &w}) a->erase(a->begin(), a->begin() + std::max(out, 0));
}

bool AllFinite(const TDoubleDynArray& a) {
  return std::all_of(a.begin(), a.end(), [](double v) { return std::isfinite(v); });
}
} // namespace

void TQyInterpolationCalculation::Fit(const TDoubleDynArray& xs, const TDoubleDynArray& ys,
                                      const TDoubleDynArray& ws, bool ascending) {
  ClearExtrema();
  FRecalculate = true;
  FLastIntK = 0, FLastIntKX = QyMaxDouble;
  // The knots go into the arrays of the last fit, whose memory is reused.
  TDoubleDynArray &x = FPieces.X, &y = FPieces.A, &w = FWeights;
  x.assign(xs.begin(), xs.end());
  y.assign(ys.begin(), ys.end());
  w.assign(ws.begin(), ws.end());
  w.resize(x.size(), 1.0);
  // Ascending input keeps its equal X values, which then divide by zero below.
  if (!ascending || !std::is_sorted(x.begin(), x.end())) {
    if (!x.empty()) QuickSortYWtoX(0, int(x.size()) - 1, x.data(), y.data(), w.data());
    MergeEqualX(x, y, w);
  }
  const bool approximative = FInterpolationMethod == TQyInterpolationMethod::ApproximativeSpline;
  if (int(x.size()) < (approximative ? 6 : 3)) throw EMathError(QyText(QyRes::MathNotEnoughPoints));
  if (std::adjacent_find(x.begin(), x.end()) != x.end()) throw EZeroDivide(QyText(QyRes::ExprFloatZeroDivide));
  if (!approximative && FDoSmoothing) {
    if (FLogSmoothing) SmoothLog10(FSmoothM, x, y);
    else Smooth(FSmoothM, x, y);
  }
  switch (FInterpolationMethod) {
  case TQyInterpolationMethod::Akima: AkimaCoeffs(FPieces); break;
  case TQyInterpolationMethod::CubicSpline: NormalSplineCoeffs(FPieces); break;
  case TQyInterpolationMethod::ApproximativeSpline: ApproximativeSplineCoeffs(FPieces, w); break;
  }
  for (const TDoubleDynArray* a : {&FPieces.A, &FPieces.B, &FPieces.C, &FPieces.D})
    if (!AllFinite(*a)) throw EOverflow(QyText(QyRes::ExprFloatOverflow));
  FRecalculate = false;
  FSearchExtrema = FSearchDiffExtrema = FSearchIntExtrema = true;
}

// ---- the engine: answers ----------------------------------------------------------------------

void TQyInterpolationCalculation::EnsureCalculated() {
  if (FRecalculate) Calculate();
}

double TQyInterpolationCalculation::Interpolate(double x) {
  EnsureCalculated();
  return FPieces.Value(x);
}

double TQyInterpolationCalculation::Slope(double x) {
  EnsureCalculated();
  return FPieces.Slope(x);
}

double TQyInterpolationCalculation::Curvature(double x) {
  EnsureCalculated();
  return FPieces.Curvature(x);
}

// The running sum stands at knot FLastIntK; X below it starts again from the first knot. The walk
// stops at the last knot, whose segment carries on beyond it.
double TQyInterpolationCalculation::Integral(double x) {
  EnsureCalculated();
  const TQyCubicPieces& p = FPieces;
  if (x < FLastIntKX) FLastIntK = 0, FLastIntSum = 0;
  const int k0 = FLastIntK;
  while (FLastIntK + 1 < p.Count() && p.X[FLastIntK + 1] <= x) ++FLastIntK;
  FLastIntKX = p.X[FLastIntK];
  for (int i = k0; i < FLastIntK; ++i) FLastIntSum += p.IntegralAt(i, p.X[i + 1] - p.X[i]);
  return FLastIntSum + p.IntegralAt(FLastIntK, x - FLastIntKX);
}

const TQyDoublePointArray& TQyInterpolationCalculation::Extrema(bool& stale, const TQyDoublePointArray& list) {
  if (!XData || !YData) return list;
  EnsureCalculated();
  if (stale) {
    if (&stale == &FSearchExtrema) {
      FMinima.clear(), FMaxima.clear();
      FindValueExtrema(FPieces, FMinima, FMaxima);
    } else if (&stale == &FSearchDiffExtrema) {
      FDiffMinima.clear(), FDiffMaxima.clear();
      FindSlopeExtrema(FPieces, FDiffMinima, FDiffMaxima);
    } else {
      FIntMinima.clear(), FIntMaxima.clear();
      FindIntegralExtrema(FPieces, [this](double x) { return Integral(x); }, FIntMinima, FIntMaxima);
    }
    stale = false;
  }
  return list;
}

// ---- the series -------------------------------------------------------------------------------

TQyInterpolation::TQyInterpolation(QObject* owner) : TQyFunctionSeries(owner) {
  SetCalculation(&FInterpolation);
  FMinimumCount = 3;
}

// The series asks for 6 points with the interpolating methods and 3 with the smoothing spline,
// the reverse of what the engine needs: kept as designed.
void TQyInterpolation::SetInterpolationMethod(TQyInterpolationMethod method) {
  AssignToEngine(GetInterpolationMethod(), method, QyRes::InterpolationMethod, "InterpolationMethod", [&] {
    FInterpolation.SetInterpolationMethod(method);
    FMinimumCount = Approximative() ? 3 : 6;
    Recalculate();
  });
}

void TQyInterpolation::SetSmoothPoints(bool on) {
  if (on && Approximative()) return FInterpolation.SetSmoothPoints(on); // only the notice
  AssignToEngine(GetSmoothPoints(), on, QyRes::InterpolationSmoothPoints, "SmoothPoints", [&] {
    FInterpolation.SetSmoothPoints(on);
    if (!Approximative() && GetSmoothingRange() != 0) Recalculate(); // else the curve stays as it is
  });
}

void TQyInterpolation::SetSmoothingRange(double m) {
  AssignToEngine(GetSmoothingRange(), m, QyRes::InterpolationSmoothingRange, "SmoothingRange", [&] {
    FInterpolation.SetSmoothingRange(m);
    if (!Approximative()) Recalculate();
  });
}

void TQyInterpolation::SetElasticityFactor(double factor) {
  AssignToEngine(GetElasticityFactor(), factor, QyRes::InterpolationElasticity, "ElasticityFactor", [&] {
    FInterpolation.SetElasticityFactor(factor);
    if (Approximative()) Recalculate();
  });
}

const TQyDoublePoint& TQyInterpolation::At(const TQyDoublePointArray& list, int i) {
  if (i < 0 || i >= int(list.size())) QyRaiseIndexError(i);
  return list[size_t(i)];
}

QString TQyInterpolation::FormulaOf(const char* akima, const char* cubic, const char* approximative) const {
  switch (GetInterpolationMethod()) {
  case TQyInterpolationMethod::Akima: return QyText(akima);
  case TQyInterpolationMethod::CubicSpline: return QyText(cubic);
  default: return QyText(approximative);
  }
}

QString TQyInterpolation::GetFormula() const {
  return FormulaOf(QyRes::InterpolationFormulaAkima, QyRes::InterpolationFormulaCubic,
                   QyRes::InterpolationFormulaApproximative);
}

QString TQyDifferential::GetFormula() const {
  return FormulaOf(QyRes::DifferentialFormulaAkima, QyRes::DifferentialFormulaCubic,
                   QyRes::DifferentialFormulaApproximative);
}

void TQyDifferential::SetDefaultAxis(IQySeriesHost* graph) {
  TQyInterpolation::SetDefaultAxis(graph);
  auto* widget = dynamic_cast<QObject*>(graph);
  if (!widget) return;
  for (TQyAxis* a : widget->findChildren<TQyAxis*>(Qt::FindDirectChildrenOnly))
    if (a != graph->GetPrimaryYAxis() && !a->GetHorizontal() && !a->GetIsSlaveAxis()) return SetYAxis(a);
}

QString TQyIntegral::GetFormula() const {
  return FormulaOf(QyRes::IntegralFormulaAkima, QyRes::IntegralFormulaCubic, QyRes::IntegralFormulaApproximative);
}

void TQyInterpolation::RegisterVariables() {
  TQyFunctionSeries::RegisterVariables();
  RegisterDoubleVariable(this, "SmoothingRange", QyText(QyRes::InterpolationVarSmoothingRange),
                         [this] { return GetSmoothingRange(); });
  RegisterDoubleVariable(this, "ElasticityFactor", QyText(QyRes::InterpolationVarElasticity),
                         [this] { return GetElasticityFactor(); });
  const QString maxima = QyText(QyRes::InterpolationVarMaxima), minima = QyText(QyRes::InterpolationVarMinima);
  RegisterArrayVariable(this, "Maxima.X", maxima, [this](int i) { return GetXMaxima(i); });
  RegisterArrayVariable(this, "Maxima.Y", maxima, [this](int i) { return GetYMaxima(i); });
  RegisterArrayVariable(this, "Minima.X", minima, [this](int i) { return GetXMinima(i); });
  RegisterArrayVariable(this, "Minima.Y", minima, [this](int i) { return GetYMinima(i); });
}
