#pragma once
// A smoothed line through data: each valid point's weighted average of its neighbours, joined by
// Akima's interpolation so that the line can be sampled anywhere.
#include "QyInterpolation.h"
#include "QyMovingAverages.h"
#include "QyValueStore.h"

class TQyMovingAverageCalculation : public TQyCalculation {
public:
  void Calculate() override;
  double GetY(double atX);

  TQyAveraging Averaging;
  void Invalidate() { FRecalculate = true; }

private:
  bool FRecalculate = true;
  // The averaged points, kept between runs for the curve through them: X in FKnotX when the data
  // were read in place, else the collected FValidX. Stores of huge pages, reused from run to run.
  TQyValueStore FKnotX, FAverages;
  // Evaluated where sampled: a fit of every averaged point would cost more than the averaging.
  TQyAkimaCurve FCurve;
};

class TQyMovingAverage : public TQyFunctionSeries {
  Q_OBJECT
  Q_PROPERTY(QyMovingAverage::TQyAveragingMethod AveragingMethod READ GetAveragingMethod WRITE SetAveragingMethod)
  Q_PROPERTY(QyMovingAverage::TQyAveragingDirection AveragingDirection READ GetAveragingDirection WRITE SetAveragingDirection)
  Q_PROPERTY(QyMovingAverage::TQyAveragingRangeMethod AveragingRangeMethod READ GetAveragingRangeMethod WRITE SetAveragingRangeMethod)
  Q_PROPERTY(double N READ GetN WRITE SetN)
  Q_PROPERTY(double ExponentialFactorForN READ GetExponentialFactorForN WRITE SetExponentialFactorForN)

public:
  explicit TQyMovingAverage(QObject* owner = nullptr);

  TQyAveragingMethod GetAveragingMethod() const { return FAvg.Averaging.Method; }
  TQyAveragingDirection GetAveragingDirection() const { return FAvg.Averaging.Direction; }
  TQyAveragingRangeMethod GetAveragingRangeMethod() const { return FAvg.Averaging.RangeMethod; }
  double GetN() const { return FAvg.Averaging.N; }
  double GetExponentialFactorForN() const { return FAvg.Averaging.ExponentialFactor; }
  void SetAveragingMethod(TQyAveragingMethod value);
  void SetAveragingDirection(TQyAveragingDirection value);
  void SetAveragingRangeMethod(TQyAveragingRangeMethod value);
  // Stored as its magnitude.
  void SetN(double value);
  // Stored as its magnitude, at most 1.
  void SetExponentialFactorForN(double value);

  TQyMovingAverageCalculation& Engine() { return FAvg; }
  double GetY(double x) override { return FAvg.GetY(x); }
  QString GetFormula() const override;
  void RegisterVariables() override;

private:
  template <class T> void Assign(T& field, T value, const char* caption, const char* name);

  TQyMovingAverageCalculation FAvg;
};
