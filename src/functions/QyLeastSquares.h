#pragma once
// Least squares over basis functions: Y = sum of a[i] f[i](X), linear in the coefficients and
// solved by singular value decomposition. The polynomial takes the powers of X as its basis;
// the general fit asks the application for the basis values through BasisFunction.
#include "QyFunctionSeries.h"
#include <algorithm>

struct TQyGeneralLinearFittingArgs {
  double X;
  int Index;
};
using TQyGeneralLinearFittingHandler = std::function<double(QObject* sender, const TQyGeneralLinearFittingArgs& args)>;

class TQyCustomGeneralLinearLeastSquaresCalculation : public TQyCalculation {
public:
  TQyCustomGeneralLinearLeastSquaresCalculation() { ResizeCoefficients(); }
  void Calculate() override;
  // The fitted value: with a basis handler the sum of its values times the coefficients,
  // otherwise the polynomial of the coefficients.
  double GetFnWithCoeffs(double x) const;
  // Stores the highest index (at least 2 for a polynomial, at least 0 otherwise); the
  // coefficients start again at 1.
  void SetOrder(int order);
  int Order() const { return FOrder; }
  int ClampedOrder(int order) const { return std::max(order, Polynomial ? 2 : 0); }
  // Order + 1 coefficients, all 1.
  void ResizeCoefficients();

  int FCount = 0;
  TQyGeneralLinearFittingHandler mGetBasisFn;
  QObject* FSender = nullptr; // the series, handed to the basis handler
  bool Polynomial = false;    // the basis is the powers of X: no handler needed
  int FOrder = 2;             // the highest index: FOrder + 1 coefficients
  TDoubleDynArray Coeffs, DeltaCoeffs;
  double AverageX = 1, AverageY = 1, VarianceX = 1, VarianceY = 1, Probability = 1, QRel = 1, SumOfResiduals = 1;

private:
  double Basis(double x, int index) const;
  void CheckPointCount(const TDoubleDynArray& x);
  void Solve(const TDoubleDynArray& x, const TDoubleDynArray& y, const TDoubleDynArray& w);
  void Statistics(const TDoubleDynArray& x, const TDoubleDynArray& y, const TDoubleDynArray& w);
};

class TQyGeneralLinearLeastSquaresCalculation : public TQyCustomGeneralLinearLeastSquaresCalculation {};
class TQyPolynomialCalculation : public TQyCustomGeneralLinearLeastSquaresCalculation {};

class TQyCustomGeneralLinearLeastSquares : public TQyFunctionSeries {
  Q_OBJECT
  Q_PROPERTY(int Order READ GetOrder WRITE SetOrder)

public:
  explicit TQyCustomGeneralLinearLeastSquares(QObject* owner = nullptr);

  int GetOrder() const { return FPoly.Order(); }
  void SetOrder(int order);
  // Raise "... Index of variable out of range" for an index outside 0..Order.
  double Coefficients(int i) const;
  double DeltaCoefficient(int i) const;
  double AverageX() const { return FPoly.AverageX; }
  double AverageY() const { return FPoly.AverageY; }
  double VarianceX() const { return FPoly.VarianceX; }
  double VarianceY() const { return FPoly.VarianceY; }
  double Probability() const { return FPoly.Probability; }
  double QRel() const { return FPoly.QRel; }
  double SumOfResiduals() const { return FPoly.SumOfResiduals; }

  TQyCustomGeneralLinearLeastSquaresCalculation& Engine() { return FPoly; }
  double GetY(double x) override { return FPoly.GetFnWithCoeffs(x); }
  QString GetFormula() const override;
  void RegisterVariables() override;

protected:
  void CalculateFunction() override;
  TQyCustomGeneralLinearLeastSquaresCalculation FPoly;

private:
  void CheckIndex(int i) const;
};

class TQyGeneralLinearLeastSquares : public TQyCustomGeneralLinearLeastSquares {
  Q_OBJECT
public:
  using TQyCustomGeneralLinearLeastSquares::TQyCustomGeneralLinearLeastSquares;
  TQyGeneralLinearFittingHandler GetBasisFunction() const { return FPoly.mGetBasisFn; }
  void SetBasisFunction(TQyGeneralLinearFittingHandler handler);
};

class TQyPolynomial : public TQyCustomGeneralLinearLeastSquares {
  Q_OBJECT
public:
  explicit TQyPolynomial(QObject* owner = nullptr);
  QString GetFormula() const override;
};
