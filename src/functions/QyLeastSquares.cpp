#include "QyLeastSquares.h"
#include "QyExceptions.h"
#include "QyLinearAlgebra.h"
#include "QyMath.h"
#include "QyStringFunctions.h"
#include <cmath>

// ---- the engine -------------------------------------------------------------------------------

void TQyCustomGeneralLinearLeastSquaresCalculation::SetOrder(int order) {
  FOrder = ClampedOrder(order);
  ResizeCoefficients();
}

void TQyCustomGeneralLinearLeastSquaresCalculation::ResizeCoefficients() {
  Coeffs.assign(FOrder + 1, 1.0);
  DeltaCoeffs.assign(FOrder + 1, 0.0);
}

// The integer power when the basis is the powers of X.
double TQyCustomGeneralLinearLeastSquaresCalculation::Basis(double x, int index) const {
  if (mGetBasisFn) return mGetBasisFn(FSender, {x, index});
  double p = 1;
  for (int k = 0; k < index; ++k) p *= x;
  return p;
}

double TQyCustomGeneralLinearLeastSquaresCalculation::GetFnWithCoeffs(double x) const {
  if (!mGetBasisFn) return Polynom(x, Coeffs.data(), int(Coeffs.size()));
  double sum = 0;
  for (int i = 0; i < int(Coeffs.size()); ++i) sum += mGetBasisFn(FSender, {x, i}) * Coeffs[i];
  return sum;
}

void TQyCustomGeneralLinearLeastSquaresCalculation::Calculate() {
  RequireVectors();
  if (!mGetBasisFn && FSender && !Polynomial) throw EMathError(QyText(QyRes::LsqNoBasisFunction));
  FCount = DataCount();
  TDoubleDynArray &x = FValidX, &y = FValidY, &w = FValidW;
  CollectValid(x, y, w);
  // Points of weight 0 add nothing to any sum and take no row of the matrix; a Y that is not a
  // number is a gap, not a value.
  int n = 0;
  for (int i = 0; i < int(x.size()); ++i)
    if (w[i] > 0 && std::isfinite(y[i])) x[n] = x[i], y[n] = y[i], w[n++] = w[i];
  x.resize(n), y.resize(n), w.resize(n);
  double sumW = 0, sumX = 0, sumY = 0;
  for (int i = 0; i < n; ++i) sumX += x[i] * w[i], sumY += y[i] * w[i], sumW += w[i];
  AverageX = sumX / sumW, AverageY = sumY / sumW;
  CheckPointCount(x);
  Solve(x, y, w);
  Statistics(x, y, w);
}

// Fewer points than coefficients, or exactly as many with two at one X, leave the system
// underdetermined.
void TQyCustomGeneralLinearLeastSquaresCalculation::CheckPointCount(const TDoubleDynArray& x) {
  const int n = int(x.size());
  bool enough = n >= FOrder + 1;
  if (enough && n == FOrder + 1) {
    TDoubleDynArray sorted = x;
    std::sort(sorted.begin(), sorted.end());
    enough = std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
  }
  if (!enough) throw EMathError(QyText(QyRes::MathNotEnoughPoints));
}

// Rows scaled by the square root of the weight, so the decomposition minimises the weighted
// squared residuals.
void TQyCustomGeneralLinearLeastSquaresCalculation::Solve(const TDoubleDynArray& x, const TDoubleDynArray& y,
                                                          const TDoubleDynArray& w) {
  const int n = int(x.size()), m = FOrder + 1;
  TQyMatrix a(n, TQyVector(m));
  TQyVector b(n), sv(m);
  TQyMatrix v(m, TQyVector(m));
  for (int r = 0; r < n; ++r) {
    const double s = std::sqrt(w[r]);
    for (int j = 0; j < m; ++j) a[r][j] = s * Basis(x[r], j);
    b[r] = s * y[r];
  }
  SingularValueDecomposition(a, sv, v);
  Coeffs = SvdBackSubstitution(a, sv, v, b);
  const TQyMatrix cov = SvdCovariance(sv, v);
  for (int j = 0; j < m; ++j) DeltaCoeffs[j] = std::sqrt(cov[j][j]);
  if (!std::all_of(Coeffs.begin(), Coeffs.end(), [](double c) { return std::isfinite(c); }))
    throw EOverflow(QyText(QyRes::ExprFloatOverflow));
}

// QRel divides by the weight sum less the order, one degree of freedom more than n - (order + 1).
void TQyCustomGeneralLinearLeastSquaresCalculation::Statistics(const TDoubleDynArray& x, const TDoubleDynArray& y,
                                                               const TDoubleDynArray& w) {
  double sumW = 0;
  VarianceX = VarianceY = SumOfResiduals = 0;
  for (int i = 0; i < int(x.size()); ++i) {
    VarianceX += w[i] * (x[i] - AverageX) * (x[i] - AverageX);
    VarianceY += w[i] * (y[i] - AverageY) * (y[i] - AverageY);
    const double r = y[i] - GetFnWithCoeffs(x[i]);
    SumOfResiduals += w[i] * r * r;
    sumW += w[i];
  }
  Probability = VarianceY <= 0 ? 1.0 : 1 - SumOfResiduals / VarianceY;
  VarianceY /= sumW - 1;
  VarianceX /= sumW - 1;
  QRel = std::sqrt(SumOfResiduals / (sumW - FOrder));
}

// ---- the series -------------------------------------------------------------------------------

TQyCustomGeneralLinearLeastSquares::TQyCustomGeneralLinearLeastSquares(QObject* owner) : TQyFunctionSeries(owner) {
  SetCalculation(&FPoly);
  FPoly.SetOrder(2);
  FMinimumCount = 3;
}

void TQyCustomGeneralLinearLeastSquares::SetOrder(int order) {
  QyAssign(this, FPoly.FOrder, FPoly.ClampedOrder(order), QyRes::LsqOrder, "Order", [this] {
    FPoly.ResizeCoefficients();
    Recalculate();
  });
}

void TQyCustomGeneralLinearLeastSquares::CheckIndex(int i) const {
  if (i < 0 || i > GetOrder()) throw EMathError(QyText(QyRes::LsqIndexOutOfRange));
}

double TQyCustomGeneralLinearLeastSquares::Coefficients(int i) const {
  CheckIndex(i);
  return FPoly.Coeffs[i];
}

double TQyCustomGeneralLinearLeastSquares::DeltaCoefficient(int i) const {
  CheckIndex(i);
  return FPoly.DeltaCoeffs[i];
}

void TQyCustomGeneralLinearLeastSquares::CalculateFunction() {
  FPoly.FSender = this;
  TQyFunctionSeries::CalculateFunction();
}

QString TQyCustomGeneralLinearLeastSquares::GetFormula() const {
  return QStringLiteral(u"Y=\u03A3\\-i\\-a\\-i\\-Xf\\-i\\-(X)");
}

void TQyCustomGeneralLinearLeastSquares::RegisterVariables() {
  TQyFunctionSeries::RegisterVariables();
  RegisterNumbers({{"AverageX", QyRes::FitVarAverageX, &FPoly.AverageX},
                   {"AverageY", QyRes::FitVarAverageY, &FPoly.AverageY},
                   {"VarianceX", QyRes::FitVarVarianceX, &FPoly.VarianceX},
                   {"VarianceY", QyRes::FitVarVarianceY, &FPoly.VarianceY},
                   {"Probability", QyRes::FitVarProbability, &FPoly.Probability},
                   {"QRel", QyRes::LsqVarQRel, &FPoly.QRel},
                   {"SumOfResiduals", QyRes::FitVarSumOfResiduals, &FPoly.SumOfResiduals}});
  RegisterArrayVariable(this, "Coefficients", QyText(QyRes::FitVarCoefficients),
                        [this](int i) { return Coefficients(i); });
  RegisterArrayVariable(this, "DeltaCoefficients", QyText(QyRes::LsqVarDeltaCoefficients),
                        [this](int i) { return DeltaCoefficient(i); });
}

void TQyGeneralLinearLeastSquares::SetBasisFunction(TQyGeneralLinearFittingHandler handler) {
  FPoly.mGetBasisFn = std::move(handler);
  Recalculate();
}

// ---- the polynomial ---------------------------------------------------------------------------

TQyPolynomial::TQyPolynomial(QObject* owner) : TQyCustomGeneralLinearLeastSquares(owner) {
  FPoly.Polynomial = true;
}

// "Y=a+bX+cX^2..." with the exponents raised; from order 6 on the middle terms are elided.
QString TQyPolynomial::GetFormula() const {
  const int order = GetOrder();
  const auto term = [](int letter, int power) {
    return IndexToAlphabet(letter).toLower() + "X\\+" + QString::number(power) + "\\+";
  };
  QString s = "Y=a+bX";
  for (int i = 2; i <= (order >= 6 ? 4 : order); ++i) s += "+" + term(i + 1, i);
  if (order > 5) s += "+...+" + term(order, order);
  return s;
}
