#pragma once
// Calculated curves: a series whose curve is computed from a pair of data vectors rather than
// stored. TQyCalculation is the numeric engine and knows nothing of drawing; TQyFunctionSeries
// feeds it the data and the calculation range, and samples the engine's curve once per pixel of
// the X axis within the display range.
#include "QyPairedArrays.h"
#include "QySeries.h"
#include <exception>
#include <initializer_list>
#include <functional>
#include <limits>

// The engine of a calculated curve. Its only access to the data is Xi, Yi, Wi and IsValid.
class TQyCalculation {
public:
  TQyCalculation() = default;
  virtual ~TQyCalculation() = default;
  TQyCalculation(const TQyCalculation&) = delete;
  TQyCalculation& operator=(const TQyCalculation&) = delete;

  TQySeries* Sender = nullptr;
  double Start = -std::numeric_limits<double>::max(), Stop = std::numeric_limits<double>::max(); // the calculation range, bounds included
  QPointer<TQyCustomDoubleVector> XData, YData, Weight;
  bool OutliersVisible = false;
  TQyValueTransformation mXValueTransformation, mYValueTransformation, mWeightValueTransformation;

  // The X (Y) value at idx, through the transformation if one is set.
  virtual double Xi(int idx);
  virtual double Yi(int idx);
  // |weight| at idx (1 without a weight vector), through the transformation, again as magnitude.
  double Wi(int idx);
  // X within Start..Stop and, unless OutliersVisible, no vector marks idx as an outlier.
  bool IsValid(int idx);
  virtual void Calculate() {}

protected:
  // Raises "No X (Y) vector defined for calculation" when a data vector is missing.
  void RequireVectors() const;
  // The smaller count of the data vectors (and the weight vector, if any).
  int DataCount() const;
  // Xi, Yi and Wi of every valid index, in index order.
  void CollectValid(TDoubleDynArray& x, TDoubleDynArray& y, TDoubleDynArray& w);
  // The valid points as one run of the stored arrays (w nullptr: weights 1), when they can be read
  // in place: stored values in strictly ascending X, no weight vector, nothing transformed, no
  // outlier in X, nor one to skip in Y. The caller holds the vectors' read locks while it reads them.
  struct TQyValidRun { const double *X, *Y, *W; int Count; };
  bool ValidInPlace(TQyValidRun& run);
  // Work arrays kept from one calculation to the next: their memory is reused, not faulted in.
  TDoubleDynArray FValidX, FValidY, FValidW;

private:
  static const double* StoredValues(TQyCustomDoubleVector* v);
  // Stored arrays that need neither a transformation nor a look at outliers, else false.
  bool Straight(const double*& xs, const double*& ys, const double*& ws) const;
  bool CollectStraight(int n, TDoubleDynArray& x, TDoubleDynArray& y, TDoubleDynArray& w);
  bool Outlier(int idx) const;
  bool InRange(double x) const { return x >= Start && x <= Stop; }
};

using TQyCalculationErrorHandler = std::function<void(QObject* sender, const std::exception& e)>;
using TQyNotifyEvent = std::function<void(QObject* sender)>;

class TQyFunctionSeries : public TQyLineSeries {
  Q_OBJECT
  Q_PROPERTY(TQyCustomDoubleVector* Weight READ GetWeight WRITE SetWeight)
  QY_PROPERTY_CUSTOM(bool, AutoStart) = true;
  QY_PROPERTY_CUSTOM(bool, AutoStop) = true;
  Q_PROPERTY(double CalculationStart READ GetCalculationStart WRITE SetCalculationStart)
  Q_PROPERTY(double CalculationStop READ GetCalculationStop WRITE SetCalculationStop)
  QY_PROPERTY(bool, ClipYValues, QyRes::FunctionClipYValues, Recalculate()) = true;
  QY_PROPERTY_CUSTOM(bool, DisplayAutoStart) = true;
  QY_PROPERTY_CUSTOM(bool, DisplayAutoStop) = true;
  Q_PROPERTY(double DisplayStart READ GetDisplayStart WRITE SetDisplayStart)
  Q_PROPERTY(double DisplayStop READ GetDisplayStop WRITE SetDisplayStop)
  QY_PROPERTY_CUSTOM(bool, CoupleCalculationAndDisplay) = true;
  Q_PROPERTY(QString Formula READ GetFormula)

public:
  // A derived class makes its engine and hands it over with SetCalculation.
  explicit TQyFunctionSeries(QObject* owner = nullptr);
  ~TQyFunctionSeries() override;

  TQyCustomDoubleVector* GetWeight() const { return FWeight; }
  void SetWeight(TQyCustomDoubleVector* vector);
  double GetCalculationStart() const { return FCalcStart; }
  double GetCalculationStop() const { return FCalcStop; }
  void SetCalculationStart(double value);
  void SetCalculationStop(double value);
  double GetDisplayStart() const { return FDisplayStart; }
  double GetDisplayStop() const { return FDisplayStop; }
  void SetDisplayStart(double value);
  void SetDisplayStop(double value);
  void SetWeightValueTransformation(TQyValueTransformation transformation);
  int GetMinimumCount() const { return FMinimumCount; }

  TQyNotifyEvent OnCalculated;
  TQyCalculationErrorHandler OnCalculationError;

  // The text that names the curve's calculation; each kind of curve gives its own.
  virtual QString GetFormula() const;
  double GetCalcStart() const override { return FCalcStart; }
  double GetCalcStop() const override { return FCalcStop; }

  bool IsFunctionSeries() const override { return true; }
  QList<TQyCustomDoubleVector*> DataVectors() const override { return TQyLineSeries::DataVectors() << FWeight; }
  int GetCount() override { return TQySeries::GetCount(); }
  void Calculate() override;
  void CalculatePoints() override;
  void CheckDBVectors() override;
  void VectorDestroyed(TQyCustomDoubleVector* vector) override;
  using TQySeries::FindPoint;
  int FindPoint(float x, float y, float tolerance) override;
  void RegisterVariables() override;
  // True when the Y axis carries a visible series that is not calculated.
  bool AnyOtherSeries() const;

protected:
  void SetCalculation(TQyCalculation* calculation);
  // Publishes numbers that live in fields of the series or its engine.
  struct TQyPublishedNumber { const char* Name; const char* Help; const double* Value; };
  void RegisterNumbers(std::initializer_list<TQyPublishedNumber> numbers);
  // Runs the engine over the calculation range and samples the display range for the Y extent.
  virtual void CalculateFunction();
  void SetLimits();
  // SetLimits, then hands the engine the data, the range and the transformations.
  void FeedEngine();
  // The Y extent the curve claims: none beside a data series with ClipYValues, else lo .. hi.
  void ClaimYRange(double lo, double hi);
  // The last calculation raised: there is no curve until it runs again.
  bool Failed() const { return FFailed; }
  // The next Calculate runs the engine again.
  void Recalculate();
  // The setter of a property that lives in the engine: record, apply, tell the listeners.
  template <class T, class Apply>
  void AssignToEngine(const T& old, const T& value, const char* caption, const char* name, Apply apply) {
    if (QyEqual(old, value)) return;
    RecordChange(this, caption, name);
    apply();
    EmitPropertyChanged(name);
  }

private:
  void AssignAutoFlag(bool& flag, bool value, const char* caption, const char* name, const char* fixedName);
  // Calls f(x) at the display samples within lo..hi, one per pixel of the X axis.
  template <class F> void ForEachSample(double lo, double hi, bool logarithmic, F f);

  TQyCalculation* FCalculation = nullptr;
  QPointer<TQyCustomDoubleVector> FWeight;
  double FCalcStart = 0, FCalcStop = 0, FDisplayStart = 0, FDisplayStop = 0;
  bool FFailed = false; // the last calculation raised: no curve until it runs again
};
