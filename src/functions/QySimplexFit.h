#pragma once
// A free formula fitted to data: a parsed expression in X with the coefficients A to P, or a
// function of the application, whose coefficients the downhill simplex moves until the
// weighted squared deviations (or the area form of the deviations, with DoCovariance) are least.
#include "QyFunctionSeries.h"
#include "QyInterpolation.h"
#include "QySimplex.h"
#include <memory>
#include <span>

class TQyFunctionParser;

struct TQyFittingFunctionArgs {
  double X = 0;
  std::span<const double> Coefficients;
};
using TQyFittingFunctionHandler = std::function<double(QObject* sender, const TQyFittingFunctionArgs& args)>;
using TQyFittingCornerHandler = std::function<void(QObject* sender, std::span<const double> coefficients)>;

class TQySimplexFit : public TQyCalculation {
public:
  TQySimplexFit();
  ~TQySimplexFit() override;

  // No function of the application is set: the expression is fitted.
  bool FromExpression() const { return !FFittingFkt; }
  // The fitted function at X with the present coefficients.
  double GetY(double atX);
  // Ends the fit at the end of the running round; the best corner so far is kept.
  void StopIterations() { FStopIterations = true; }
  void Calculate() override;

  const TDoubleDynArray& Coefficients() const { return FCoefs; }
  void SetCoefficients(const TDoubleDynArray& coefs);
  int Order() const { return FOrder; }
  // Below 0 counts as 0; new coefficients start at 0.5.
  void SetOrder(int order);
  bool DoCovariance = false;
  int Iterations = 300;
  int CurrentIteration() const { return FIteration; }
  double SumOfResiduals() const { return FCurrentChiSquare; }
  double AverageX() const { return FAverageX; }
  double AverageY() const { return FAverageY; }
  double VarianceX() const { return FVarianceX; }
  double VarianceY() const { return FVarianceY; }
  double Probability() const { return FProbability; }
  const QString& Expression() const { return FExpression; }
  // Parses and checks at once unless a function of the application is set.
  void SetExpression(const QString& text);
  // Raises what SetExpression would raise for `text`, changing nothing.
  void CheckExpression(const QString& text) const;
  const TQyFittingFunctionHandler& FittingFunction() const { return FFittingFkt; }
  void SetFittingFunction(TQyFittingFunctionHandler handler);

  TQyNotifyEvent OnIteration;
  TQyFittingCornerHandler OnNewCorner;

private:
  TQyFittingFunctionHandler ParsedFunction();
  void PrepareParser();
  // The order from the highest coefficient letter that stands alone in the text; X must too.
  void CheckExpression();
  void SetPrms();
  void SetupCovar();
  double Error(const double* corner);
  double Residual(int idx);
  double CovarianceResidual(int idx);
  void GetStatistics();
  double F(double x) { return FCalcChi(Sender, {x, std::span<const double>(FCurrentCorner, FOrder > 0 ? FOrder : 0)}); }

  bool FStopIterations = false;
  int FCount = 0, FIteration = 0, FOrder = -1;
  double FCurrentChiSquare = 1.0;
  double FAverageX = 1.0, FAverageY = 1.0, FVarianceX = 1.0, FVarianceY = 1.0, FProbability = 1.0;
  double FX = 0;
  const double* FCurrentCorner = nullptr; // the corner being evaluated: the parser reads it
  TDoubleDynArray FCoefs;
  TQySimplex FSimplex;
  // The area form: inverse interpolations X(Y), one per run of strictly rising or falling Y,
  // each with the last index it serves.
  std::vector<std::unique_ptr<TQyInterpolationCalculation>> FSplines;
  std::vector<int> FRangeIdx;
  QString FExpression;
  TQyFittingFunctionHandler FCalcChi; // the function in force
  TQyFittingFunctionHandler FFittingFkt;
  std::unique_ptr<TQyFunctionParser> FFunctionParser;
};

class TQyFittedLine : public TQyFunctionSeries {
  Q_OBJECT
  Q_PROPERTY(int Order READ GetOrder WRITE SetOrder)
  Q_PROPERTY(int Iterations READ GetIterations WRITE SetIterations)
  Q_PROPERTY(QString Expression READ GetExpression WRITE SetExpression)
  Q_PROPERTY(QList<double> Coefficients READ GetCoefficients WRITE SetCoefficients)
  Q_PROPERTY(bool DoCovariance READ GetDoCovariance WRITE SetDoCovariance)

public:
  explicit TQyFittedLine(QObject* owner = nullptr);

  int GetOrder() const { return FFit.Order(); }
  void SetOrder(int value);
  int GetIterations() const { return FFit.Iterations; }
  void SetIterations(int value);
  QString GetExpression() const { return FFit.Expression(); }
  void SetExpression(const QString& value);
  QList<double> GetCoefficients() const;
  void SetCoefficients(const QList<double>& value);
  bool GetDoCovariance() const { return FFit.DoCovariance; }
  void SetDoCovariance(bool value);
  void SetFittingFunction(TQyFittingFunctionHandler handler);
  void SetOnIteration(TQyNotifyEvent handler) { FFit.OnIteration = std::move(handler); }
  void SetOnNewCorner(TQyFittingCornerHandler handler) { FFit.OnNewCorner = std::move(handler); }

  // Raises "Fitted line: Index of variable out of range" for i >= Order.
  double GetCoeff(int i) const;
  double GetAverageX() const { return FFit.AverageX(); }
  double GetAverageY() const { return FFit.AverageY(); }
  double GetVarianceX() const { return FFit.VarianceX(); }
  double GetVarianceY() const { return FFit.VarianceY(); }
  double Getr2() const { return FFit.Probability(); }
  double GetSumOfResiduals() const { return FFit.SumOfResiduals(); }

  TQySimplexFit& Engine() { return FFit; }
  // The curve: a formula that cannot be evaluated at x (a pole) leaves a gap there.
  double GetY(double x) override;
  QString GetFormula() const override { return FFit.Expression(); }
  void RegisterVariables() override;

private:
  TQySimplexFit FFit;
};
