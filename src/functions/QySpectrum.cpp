#include "QySpectrum.h"
#include "QyAxis.h"
#include "QyExceptions.h"
#include "QyInterpolation.h"
#include "QyStyles.h"
#include <cmath>
#include <numbers>

// ---- the engine -------------------------------------------------------------------------------

// Data counts as evenly sampled when X only ascends. The test takes X[i-1] - X[i] with this
// sign, so ascending data passes it whatever its spacing.
bool TQyDiscreteFourierCalculation::NeedsResampling() {
  if (!XData->GetOnlyAscending()) return true;
  const int count = DataCount();
  if (qobject_cast<TQyIndexer*>(XData) || count < 2) return false;
  const double limit = (Xi(count - 1) - Xi(0)) / (count - 1) / 100;
  for (int i = 1; i < count; ++i)
    if (Xi(i - 1) - Xi(i) > limit) return true;
  return false;
}

// 1024 equally spaced values of the Akima curve through the data, over the calculation range.
void TQyDiscreteFourierCalculation::Resample() {
  TQyInterpolationCalculation akima;
  akima.Sender = Sender;
  akima.XData = XData, akima.YData = YData, akima.Weight = Weight;
  akima.Start = Start, akima.Stop = Stop;
  akima.OutliersVisible = OutliersVisible;
  akima.mXValueTransformation = mXValueTransformation;
  akima.mYValueTransformation = mYValueTransformation;
  akima.mWeightValueTransformation = mWeightValueTransformation;
  FPointsN = 1024;
  CalcArr.assign(FPointsN, {});
  const double step = (Stop - Start) / (FPointsN - 1);
  for (int i = 0; i < FPointsN; ++i) CalcArr[i].Re = akima.Interpolate(Start + i * step);
}

// The valid samples as they stand. A Y that is not a number is a gap, not a value.
void TQyDiscreteFourierCalculation::TakeSamples() {
  CollectValid(FValidX, FValidY, FValidW);
  CalcArr.clear();
  for (std::size_t i = 0; i < FValidY.size(); ++i)
    if (FValidW[i] > 0 && std::isfinite(FValidY[i])) CalcArr.push_back({FValidY[i], 0});
  FPointsN = int(CalcArr.size());
}

void TQyDiscreteFourierCalculation::Calculate() {
  RequireVectors();
  FPhase.SetValues({}), FAmplitude.SetValues({}); // a run that fails leaves no spectrum
  if (NeedsResampling()) Resample();
  else TakeSamples();
  if (FPointsN < 2) throw EMathError(QyText(QyRes::MathNotEnoughPoints));
  if (Stop - Start == 0) throw EZeroDivide(QyText(QyRes::ExprFloatZeroDivide)); // no frequency step
  DiscreteFourierTransform(CalcArr);
  FPointsN /= 2;
  std::vector<double> amplitude(FPointsN), phase(FPointsN);
  for (int i = 0; i < FPointsN; ++i) {
    const TComplex c = CalcArr[i];
    double p = c.Re == 0 ? 0 : std::atan2(c.Im, c.Re);
    if (std::fabs(p - std::numbers::pi) <= 1e-15) p = 0; // the negative real axis counts as phase 0
    amplitude[i] = std::sqrt(c.Re * c.Re + c.Im * c.Im) / FPointsN;
    phase[i] = p;
  }
  FAmplitude.SetValues(std::move(amplitude));
  FPhase.SetValues(std::move(phase));
  Delta = 1 / (Stop - Start);
}

// ---- the series -------------------------------------------------------------------------------

TQyDiscreteFourier::TQyDiscreteFourier(QObject* owner) : TQyFunctionSeries(owner) {
  SetCalculation(&FCalc);
  FPhaseSeries = new TQyChildSeries(this);
  FPhaseSeries->setObjectName("Phase");
  FPhaseSeries->SetYData(FCalc.Phase());
  FPhaseSeries->XValueTransformation = [this](TQySeries*, const TQyTransformEventArgs& args) {
    return GetFrequency(args);
  };
  FPhaseSeries->SetVisible(false);
  FPhaseSeries->GetLine()->SetColor(0xFF008000);
  FClipYValues = false;
}

TQyDiscreteFourier::~TQyDiscreteFourier() { delete FPhaseSeries; } // before the engine's vectors go

void TQyDiscreteFourier::SetXAxis(TQyAxis* axis) {
  TQyFunctionSeries::SetXAxis(axis);
  if (FPhaseSeries) FPhaseSeries->SetXAxis(axis);
}

void TQyDiscreteFourier::SetYAxis(TQyAxis* axis) {
  TQyFunctionSeries::SetYAxis(axis);
  if (FPhaseSeries && axis && !FPhaseSeries->GetYAxis()) FPhaseSeries->SetYAxis(axis);
}

// The X extent becomes the frequencies, the Y extent the amplitudes.
void TQyDiscreteFourier::CalculateFunction() {
  if (FCount < 2) return;
  FeedEngine();
  FCalc.Calculate();
  TQyDoubleVector& amplitude = *FCalc.Amplitude();
  const double* a = amplitude.Data();
  const int n = amplitude.GetCount();
  FLimitMinX = FCalc.Frequency(0), FLimitMaxX = FCalc.Frequency(n);
  FLimitMinY = *std::min_element(a, a + n), FLimitMaxY = *std::max_element(a, a + n);
  FXAxis->RangeModified();
  if (OnCalculated) OnCalculated(this);
  if (!FPhaseSeries) return;
  if (!FPhaseSeries->GetYAxis()) FPhaseSeries->SetYAxis(FYAxis);
  if (FPhaseSeries->SeriesVisible()) FPhaseSeries->Calculate();
}

void TQyDiscreteFourier::CalculatePoints() {
  FPoints.Clear(), FPointIndices.Clear();
  FPointCount = 0;
  TQyDoubleVector& amplitude = *FCalc.Amplitude();
  if (FCount > 1 && FXAxis && FYAxis) {
    for (int i = 0; i < amplitude.GetCount(); ++i) {
      const QPointF p(FXAxis->NumberToWorld(FCalc.Frequency(i)), FYAxis->NumberToWorld(amplitude.Data()[i]));
      FPoints.SetValue(FPointCount, p);
      FPointIndices.SetValue(FPointCount++, i);
    }
    AddBandPoints();
  }
  FCalculatedCount = FCount;
  FPointsStale = false;
}

double TQyDiscreteFourier::GetY(double x) {
  TQyDoubleVector& amplitude = *FCalc.Amplitude();
  const int n = amplitude.GetCount();
  if (FPointsStale || n == 0) return 0;
  const double last = n - 1;
  double fi = std::floor(x / FCalc.Delta);
  fi = fi >= 0 ? std::min(fi, last) : 0; // NaN and negatives to the first
  const int i = int(fi), j = std::min(i + 1, n - 1);
  const double* a = amplitude.Data();
  if (i == j) return a[i];
  return a[i] + (x - FCalc.Frequency(i)) * (a[j] - a[i]) / FCalc.Delta;
}

int TQyDiscreteFourier::FindPoint(float x, float y, float tolerance) {
  if (FPointsStale) return -1;
  for (int k = 0; k < FPointCount; ++k)
    if (std::fabs(FPoints[k].x() - x) <= tolerance && std::fabs(FPoints[k].y() - y) <= tolerance) return k;
  return -1;
}

QString TQyDiscreteFourier::GetFormula() const {
  return QStringLiteral(u"Y\\-k\\- = \u03A3y\\-n\\- e\\+(-2\u03C0i/n kn)");
}
