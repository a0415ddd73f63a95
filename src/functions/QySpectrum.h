#pragma once
// The amplitude spectrum of the data over frequency, with the phase spectrum in a second series
// that is hidden until shown. Unevenly sampled data is first resampled to 1024 points through an
// Akima interpolation.
#include "QyFourier.h"
#include "QyFunctionSeries.h"
#include "QyVectors.h"

class TQyDiscreteFourierCalculation : public TQyCalculation {
public:
  void Calculate() override;
  double Frequency(int i) const { return i * Delta; }
  TQyDoubleVector* Phase() { return &FPhase; }
  TQyDoubleVector* Amplitude() { return &FAmplitude; }

  TComplexArray CalcArr;
  double Delta = 0; // the frequency step, 1 / (Stop - Start)
  int FPointsN = 0;  // after a run: the number of frequencies, N div 2

private:
  bool NeedsResampling();
  void Resample();
  void TakeSamples();
  TQyDoubleVector FPhase, FAmplitude;
};

// A plain drawn series that lives inside another one (the phase of a spectrum).
class TQyChildSeries : public TQyLineSeries {
  Q_OBJECT
  Q_PROPERTY(TQyPointSymbolSettings* PointSymbol READ PointSymbol)
public:
  using TQyLineSeries::TQyLineSeries;
};

class TQyDiscreteFourier : public TQyFunctionSeries {
  Q_OBJECT
  Q_PROPERTY(TQyChildSeries* Phase READ Phase)
  Q_PROPERTY(TQyPointSymbolSettings* PointSymbol READ PointSymbol)

public:
  explicit TQyDiscreteFourier(QObject* owner = nullptr);
  ~TQyDiscreteFourier() override;

  TQyChildSeries* Phase() const { return FPhaseSeries; }
  TQyDiscreteFourierCalculation& Engine() { return FCalc; }
  // The frequency of the point at args.Index: the phase series' X value.
  double GetFrequency(const TQyTransformEventArgs& args) const { return FCalc.Frequency(args.Index); }

  void SetXAxis(TQyAxis* axis) override;
  void SetYAxis(TQyAxis* axis) override;
  // The amplitude at x, linear between the frequencies; 0 until the points are made.
  double GetY(double x) override;
  QString GetFormula() const override;
  void CalculatePoints() override;
  using TQySeries::FindPoint;
  // The index of the point found, or -1.
  int FindPoint(float x, float y, float tolerance) override;

protected:
  void CalculateFunction() override;

private:
  TQyDiscreteFourierCalculation FCalc;
  QPointer<TQyChildSeries> FPhaseSeries;
};
