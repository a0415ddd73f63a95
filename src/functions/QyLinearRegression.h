#pragma once
// The straight line Y = a + mX through the data in closed form, with the standard errors of slope
// and offset, the correlation and a 95 % confidence band drawn as two lines and a filled area.
// On logarithmic axes the logarithms are regressed, so that the line is straight on screen.
#include "QyFunctionSeries.h"
#include "QyStyles.h"

class TQyLinearRegressionCalculation : public TQyCalculation {
public:
  TQyLinearRegressionCalculation();
  // The base values, then their decimal logarithm on a logarithmic axis.
  double Xi(int idx) override;
  double Yi(int idx) override;
  void Calculate() override;
  // The regression over n points (x, y, weights w), already in the regressed units.
  void Regress(const double* x, const double* y, const double* w, int n);
  double GetY(double t) const { return Slope * t + Offset; }
  // Half the width of the band at t: the square root of
  // ((t - mean X)^2 / Qxx + 1 / SumW) * Qyy / (SumW - 2) * t95, with Qyy and t95 as they stand.
  double Confidence(double t) const;

  double SumX = 0, SumY = 0, SumW = 0, SumWXX = 0, SumWXY = 0, SumWdXY = 0, Qxx = 0, Qyy = 0;
  double Slope, DeltaSlope, Offset = 0, DeltaOffset, AverageX, AverageY, VarianceX, VarianceY,
      Probability, Correlation, SumOfResiduals;
  double T95 = 0; // the t value of the band
  bool FixedOffset = false, XLog = false, YLog = false;

private:
  void RegressFixed(const double* x, const double* y, const double* w, int n);
  void RegressFree(const double* x, const double* y, const double* w, int n);
  void Means(const double* x, const double* y, const double* w, int n);
  void SquareSums(const double* x, const double* y, const double* w, int n);
  double Residuals(const double* x, const double* y, const double* w, int n) const;
};

class TQyLinearRegression : public TQyFunctionSeries {
  Q_OBJECT
  Q_PROPERTY(bool FixedOffset READ GetFixedOffset WRITE SetFixedOffset)
  Q_PROPERTY(double Offset READ GetOffset WRITE SetOffset)
  QY_PROPERTY_OBJECT(TQyLineSettings, ConfidenceIntervalLine);
  QY_PROPERTY_OBJECT(TQyAreaSettings, ConfidenceIntervalArea);

public:
  explicit TQyLinearRegression(QObject* owner = nullptr);

  bool GetFixedOffset() const { return FRegr.FixedOffset; }
  void SetFixedOffset(bool value);
  double GetOffset() const { return FRegr.Offset; }
  // Without a fixed offset it asks first whether to fix it; on no the value is dropped.
  void SetOffset(double value);
  // The offset as a document holds it: no question asked.
  void TakeOffset(double value) { FRegr.Offset = value; }
  double GetSlope() const { return FRegr.Slope; }
  double GetDeltaSlope() const { return FRegr.DeltaSlope; }
  double GetDeltaOffset() const { return FRegr.DeltaOffset; }
  double GetAverageX() const { return FRegr.AverageX; }
  double GetAverageY() const { return FRegr.AverageY; }
  double GetVarianceX() const { return FRegr.VarianceX; }
  double GetVarianceY() const { return FRegr.VarianceY; }
  double Getr2() const { return FRegr.Probability; }
  double GetR() const { return FRegr.Correlation; }
  double GetSumOfResiduals() const { return FRegr.SumOfResiduals; }

  TQyLinearRegressionCalculation& Engine() { return FRegr; }
  const TQyPointVector& UpperConfidencePoints() const { return FUpperConfidencePoints; }
  const TQyPointVector& LowerConfidencePoints() const { return FLowerConfidencePoints; }
  const TQyPointVector& ConfidenceAreaPoints() const { return FConfidenceAreaPoints; }

  double GetY(double x) override;
  QString GetFormula() const override;
  void RegisterVariables() override;
  void CalculatePoints() override;
  void DrawLine(QPainter* graphics) override;
  void TestVisibleChanged() override;

protected:
  void CalculateFunction() override;

private:
  bool ConfidenceShown() const { return FConfidenceIntervalLine->GetVisible() || FConfidenceIntervalArea->GetVisible(); }
  // The band's edge at x in data units (-1 lower, +1 upper), on logarithmic axes too.
  double BandAt(double x, int side) const;
  void AddBand();
  static void ForbidLogScaling(TQyAxis* axis, const char* message);

  TQyLinearRegressionCalculation FRegr;
  TQyPointVector FUpperConfidencePoints, FLowerConfidencePoints, FConfidenceAreaPoints;
  bool FConfidenceVisible = false;
};
