#pragma once
// Interpolated curves: a piecewise cubic through the data by Akima's method, a cubic spline or a
// smoothing (approximative) spline, drawn as the curve itself, its slope or its running integral.
#include "QyFunctionSeries.h"
#include "QySplines.h"

namespace QyInterpolation {
Q_NAMESPACE
enum class TQyInterpolationMethod { Akima, CubicSpline, ApproximativeSpline };
Q_ENUM_NS(TQyInterpolationMethod)
} // namespace QyInterpolation
using QyInterpolation::TQyInterpolationMethod;

// The engine: value, slope, curvature and running integral at any X, and the local extrema of
// each. Each answer runs the calculation first when the data or a setting made it stale.
class TQyInterpolationCalculation : public TQyCalculation {
public:
  void Calculate() override;
  // Fits the knots x, y (weights w for the smoothing spline; empty: all 1) directly: sorted and
  // merged first unless `ascending` says they come in order.
  void Fit(const TDoubleDynArray& x, const TDoubleDynArray& y, const TDoubleDynArray& w, bool ascending);

  double Interpolate(double x);
  double Slope(double x);
  double Curvature(double x);
  // The integral from the first knot. Rising X continues the last call's running sum.
  double Integral(double x);

  TQyInterpolationMethod GetInterpolationMethod() const { return FInterpolationMethod; }
  void SetInterpolationMethod(TQyInterpolationMethod method);
  bool GetSmoothPoints() const { return FDoSmoothing; }
  void SetSmoothPoints(bool on);
  double GetSmoothingRange() const { return FSmoothM; }
  void SetSmoothingRange(double m);
  bool GetLogSmoothing() const { return FLogSmoothing; }
  void SetLogSmoothing(bool on) { FLogSmoothing = on, FRecalculate = true; }
  double GetElasticityFactor() const { return FElasticityFactor; }
  void SetElasticityFactor(double factor);
  bool Stale() const { return FRecalculate; }

  const TQyDoublePointArray& Minima() { return Extrema(FSearchExtrema, FMinima); }
  const TQyDoublePointArray& Maxima() { return Extrema(FSearchExtrema, FMaxima); }
  const TQyDoublePointArray& DifferentialMinima() { return Extrema(FSearchDiffExtrema, FDiffMinima); }
  const TQyDoublePointArray& DifferentialMaxima() { return Extrema(FSearchDiffExtrema, FDiffMaxima); }
  const TQyDoublePointArray& IntegralMinima() { return Extrema(FSearchIntExtrema, FIntMinima); }
  const TQyDoublePointArray& IntegralMaxima() { return Extrema(FSearchIntExtrema, FIntMaxima); }
  const TQyCubicPieces& Pieces() const { return FPieces; }

private:
  void EnsureCalculated();
  const TQyDoublePointArray& Extrema(bool& stale, const TQyDoublePointArray& list);
  void SetAllStale();
  void ClearExtrema();

  TQyCubicPieces FPieces;
  TDoubleDynArray FWeights;
  int FLastIntK = 0;
  bool FRecalculate = true;
  bool FSearchExtrema = true, FSearchDiffExtrema = true, FSearchIntExtrema = true;
  bool FDoSmoothing = false, FLogSmoothing = false;
  double FSmoothM = 0, FElasticityFactor = 1.0;
  double FLastIntKX = std::numeric_limits<double>::max(), FLastIntSum = 0;
  TQyInterpolationMethod FInterpolationMethod = TQyInterpolationMethod::Akima;
  TQyDoublePointArray FMinima, FMaxima, FDiffMinima, FDiffMaxima, FIntMinima, FIntMaxima;
};

// The interpolated curve itself.
class TQyInterpolation : public TQyFunctionSeries {
  Q_OBJECT
  Q_PROPERTY(QyInterpolation::TQyInterpolationMethod InterpolationMethod READ GetInterpolationMethod WRITE SetInterpolationMethod)
  Q_PROPERTY(bool SmoothPoints READ GetSmoothPoints WRITE SetSmoothPoints)
  Q_PROPERTY(double SmoothingRange READ GetSmoothingRange WRITE SetSmoothingRange)
  Q_PROPERTY(double ElasticityFactor READ GetElasticityFactor WRITE SetElasticityFactor)

public:
  explicit TQyInterpolation(QObject* owner = nullptr);

  // The settings live in the engine; the setters record, hand them on and recalculate when the
  // engine's method makes them matter.
  TQyInterpolationMethod GetInterpolationMethod() const { return FInterpolation.GetInterpolationMethod(); }
  void SetInterpolationMethod(TQyInterpolationMethod method);
  bool GetSmoothPoints() const { return FInterpolation.GetSmoothPoints(); }
  void SetSmoothPoints(bool on);
  double GetSmoothingRange() const { return FInterpolation.GetSmoothingRange(); }
  void SetSmoothingRange(double m);
  double GetElasticityFactor() const { return FInterpolation.GetElasticityFactor(); }
  void SetElasticityFactor(double factor);

  TQyInterpolationCalculation& Engine() { return FInterpolation; }
  // The extrema of what this series draws (value, slope or integral).
  virtual const TQyDoublePointArray& GetMinima() { return FInterpolation.Minima(); }
  virtual const TQyDoublePointArray& GetMaxima() { return FInterpolation.Maxima(); }
  double GetXMinima(int i) { return At(GetMinima(), i).X; }
  double GetYMinima(int i) { return At(GetMinima(), i).Y; }
  double GetXMaxima(int i) { return At(GetMaxima(), i).X; }
  double GetYMaxima(int i) { return At(GetMaxima(), i).Y; }

  double GetY(double x) override { return FInterpolation.Interpolate(x); }
  QString GetFormula() const override;
  void RegisterVariables() override;

protected:
  // "<kind> (Akima)" and its two siblings.
  QString FormulaOf(const char* akima, const char* cubic, const char* approximative) const;
  static const TQyDoublePoint& At(const TQyDoublePointArray& list, int i);
  bool Approximative() const { return GetInterpolationMethod() == TQyInterpolationMethod::ApproximativeSpline; }

  TQyInterpolationCalculation FInterpolation;
};

// The slope of the interpolated curve.
class TQyDifferential : public TQyInterpolation {
  Q_OBJECT
public:
  using TQyInterpolation::TQyInterpolation;
  double GetY(double x) override { return FInterpolation.Slope(x); }
  const TQyDoublePointArray& GetMinima() override { return FInterpolation.DifferentialMinima(); }
  const TQyDoublePointArray& GetMaxima() override { return FInterpolation.DifferentialMaxima(); }
  QString GetFormula() const override;
  // A slope is in other units than its curve: the graph's first vertical axis besides the primary
  // one that is not a slave axis, if any.
  void SetDefaultAxis(IQySeriesHost* graph) override;
};

// The running integral of the interpolated curve from its first knot.
class TQyIntegral : public TQyDifferential {
  Q_OBJECT
public:
  using TQyDifferential::TQyDifferential;
  double GetY(double x) override { return FInterpolation.Integral(x); }
  const TQyDoublePointArray& GetMinima() override { return FInterpolation.IntegralMinima(); }
  const TQyDoublePointArray& GetMaxima() override { return FInterpolation.IntegralMaxima(); }
  QString GetFormula() const override;
};
