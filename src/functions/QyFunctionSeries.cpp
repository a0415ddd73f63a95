#include "QyFunctionSeries.h"
#include "QyAxis.h"
#include "QyExceptions.h"
#include "QyRounding.h"
#include "QyVectors.h"
#include <algorithm>
#include <cmath>

// ---- the engine -------------------------------------------------------------------------------

double TQyCalculation::Xi(int idx) {
  const double v = XData->GetValue(idx);
  return mXValueTransformation ? mXValueTransformation(Sender, {v, idx}) : v;
}

double TQyCalculation::Yi(int idx) {
  const double v = YData->GetValue(idx);
  return mYValueTransformation ? mYValueTransformation(Sender, {v, idx}) : v;
}

double TQyCalculation::Wi(int idx) {
  const double w = Weight ? std::fabs(Weight->GetValue(idx)) : 1.0;
  return mWeightValueTransformation ? std::fabs(mWeightValueTransformation(Sender, {w, idx})) : w;
}

bool TQyCalculation::Outlier(int idx) const {
  if (OutliersVisible) return false;
  return XData->IsOutlier(idx) || YData->IsOutlier(idx) || (Weight && Weight->IsOutlier(idx));
}

bool TQyCalculation::IsValid(int idx) { return InRange(Xi(idx)) && !Outlier(idx); }

void TQyCalculation::RequireVectors() const {
  if (!XData) throw EMathError(QyText(QyRes::CalcNoXVector));
  if (!YData) throw EMathError(QyText(QyRes::CalcNoYVector));
}

int TQyCalculation::DataCount() const {
  int n = std::min(XData->GetCount(), YData->GetCount());
  return Weight ? std::min(n, Weight->GetCount()) : n;
}

// The arrays of a stored vector, or nullptr for a computed one (the indexer).
const double* TQyCalculation::StoredValues(TQyCustomDoubleVector* v) {
  return qobject_cast<TQyDoubleVector*>(v) ? v->Data() : nullptr;
}

bool TQyCalculation::Straight(const double*& xs, const double*& ys, const double*& ws) const {
  if (mXValueTransformation || mYValueTransformation || mWeightValueTransformation) return false;
  if (!OutliersVisible && (XData->HasOutliers() || YData->HasOutliers() || (Weight && Weight->HasOutliers())))
    return false;
  xs = StoredValues(XData), ys = StoredValues(YData), ws = Weight ? StoredValues(Weight) : nullptr;
  return xs && ys && (!Weight || ws);
}

// Nothing intervenes: one pass over the arrays, which is what a recalculation over millions of
// values costs at the least.
bool TQyCalculation::CollectStraight(int n, TDoubleDynArray& x, TDoubleDynArray& y, TDoubleDynArray& w) {
  const double *xs, *ys, *ws;
  if (!Straight(xs, ys, ws)) return false;
  for (int i = 0; i < n; ++i) {
    if (!InRange(xs[i])) continue;
    x.push_back(xs[i]);
    y.push_back(ys[i]);
    w.push_back(ws ? std::fabs(ws[i]) : 1.0);
  }
  return true;
}

// Strictly ascending X (which excludes NaN) puts the range's points in one run: two bisections.
// The order of X says nothing of outliers' values, which count when they are shown.
bool TQyCalculation::ValidInPlace(TQyValidRun& run) {
  const double *xs, *ys, *ws;
  if (Weight || XData->HasOutliers() || !Straight(xs, ys, ws) || !XData->GetOnlyAscending()) return false;
  const int n = DataCount();
  const double* lo = std::lower_bound(xs, xs + n, Start);
  const double* hi = std::upper_bound(lo, xs + n, Stop);
  run = {lo, ys + (lo - xs), nullptr, int(hi - lo)};
  return true;
}

void TQyCalculation::CollectValid(TDoubleDynArray& x, TDoubleDynArray& y, TDoubleDynArray& w) {
  const int n = DataCount();
  x.clear(), y.clear(), w.clear();
  x.reserve(n), y.reserve(n), w.reserve(n);
  const TQyVectorReadLocks hold({XData.data(), YData.data(), Weight.data()});
  if (CollectStraight(n, x, y, w)) return;
  for (int i = 0; i < n; ++i) {
    const double xi = Xi(i);
    if (!InRange(xi) || Outlier(i)) continue;
    x.push_back(xi);
    y.push_back(Yi(i));
    w.push_back(Wi(i));
  }
}

// ---- the series -------------------------------------------------------------------------------

TQyFunctionSeries::TQyFunctionSeries(QObject* owner) : TQyLineSeries(owner) { FMinimumCount = 2; }

TQyFunctionSeries::~TQyFunctionSeries() {
  FDestroying = true;
  if (FWeight) FWeight->RemoveListener(this);
}

void TQyFunctionSeries::SetCalculation(TQyCalculation* calculation) {
  FCalculation = calculation;
  FCalculation->Sender = this;
}

QString TQyFunctionSeries::GetFormula() const {
  throw EMethodNotFound(QyText(QyRes::FunctionFormulaNotOverridden));
}

void TQyFunctionSeries::Recalculate() {
  SetLastCount(0);
  Invalidate();
}

// ---- setters ----------------------------------------------------------------------------------

// Clearing an automatic flag records the fixed value with it, so that undo brings it back.
void TQyFunctionSeries::AssignAutoFlag(bool& flag, bool value, const char* caption, const char* name,
                                       const char* fixedName) {
  if (flag == value) return;
  TQyUndoRecorder* stack = UndoRecorder();
  if (!flag && stack && stack->IsRecording()) {
    TQyUndoGroup group(stack, caption);
    stack->PushProperty(this, QString(), fixedName);
    stack->PushProperty(this, QString(), name);
    QyAssign(this, flag, value, nullptr, name, [] {});
  } else {
    QyAssign(this, flag, value, caption, name, [] {});
  }
  if (flag) Recalculate();
}

void TQyFunctionSeries::SetAutoStart(bool value) {
  AssignAutoFlag(FAutoStart, value, QyRes::FunctionAutoStart, "AutoStart", "CalculationStart");
}
void TQyFunctionSeries::SetAutoStop(bool value) {
  AssignAutoFlag(FAutoStop, value, QyRes::FunctionAutoStop, "AutoStop", "CalculationStop");
}
void TQyFunctionSeries::SetDisplayAutoStart(bool value) {
  AssignAutoFlag(FDisplayAutoStart, value, QyRes::FunctionDisplayAutoStart, "DisplayAutoStart", "DisplayStart");
}
void TQyFunctionSeries::SetDisplayAutoStop(bool value) {
  AssignAutoFlag(FDisplayAutoStop, value, QyRes::FunctionDisplayAutoStop, "DisplayAutoStop", "DisplayStop");
}

void TQyFunctionSeries::SetCoupleCalculationAndDisplay(bool value) {
  if (FCoupleCalculationAndDisplay == value) return;
  TQyUndoRecorder* stack = UndoRecorder();
  if (value && stack && stack->IsRecording()) {
    TQyUndoGroup group(stack, QyRes::FunctionCouple);
    for (const char* name : {"DisplayStop", "DisplayStart", "CoupleCalculationAndDisplay"})
      stack->PushProperty(this, QString(), name);
    QyAssign(this, FCoupleCalculationAndDisplay, value, nullptr, "CoupleCalculationAndDisplay", [] {});
  } else {
    QyAssign(this, FCoupleCalculationAndDisplay, value, QyRes::FunctionCouple, "CoupleCalculationAndDisplay", [] {});
  }
  Recalculate();
}

void TQyFunctionSeries::SetCalculationStart(double value) {
  QyAssign(this, FCalcStart, value, QyRes::FunctionCalculationStart, "CalculationStart", [this] { Recalculate(); });
}
void TQyFunctionSeries::SetCalculationStop(double value) {
  QyAssign(this, FCalcStop, value, QyRes::FunctionCalculationStop, "CalculationStop", [this] { Recalculate(); });
}

// A display end beyond the data widens the X extent: that needs the whole calculation.
void TQyFunctionSeries::SetDisplayStart(double value) {
  QyAssign(this, FDisplayStart, value, QyRes::FunctionDisplayStart, "DisplayStart", [this] {
    if (FDisplayStart < FLimitMinX) Recalculate();
    else PointsModified();
  });
}
void TQyFunctionSeries::SetDisplayStop(double value) {
  QyAssign(this, FDisplayStop, value, QyRes::FunctionDisplayStop, "DisplayStop", [this] {
    if (FDisplayStop > FLimitMaxX) Recalculate();
    else PointsModified();
  });
}

void TQyFunctionSeries::SetWeight(TQyCustomDoubleVector* vector) {
  TQyCustomDoubleVector* old = FWeight;
  QyAssign(this, FWeight, vector, QyRes::FunctionWeight, "Weight", [&] {
    if (old) old->RemoveListener(this);
    if (vector) vector->AddListener(this);
    Recalculate();
  });
}

void TQyFunctionSeries::SetWeightValueTransformation(TQyValueTransformation transformation) {
  FCalculation->mWeightValueTransformation = std::move(transformation);
  RangesModified();
}

void TQyFunctionSeries::VectorDestroyed(TQyCustomDoubleVector* vector) {
  if (FWeight == vector) SetWeight(nullptr);
  TQyLineSeries::VectorDestroyed(vector);
}

void TQyFunctionSeries::CheckDBVectors() {
  TQyLineSeries::CheckDBVectors();
  if (FWeight) FWeight->UpdateDB();
}

void TQyFunctionSeries::RegisterVariables() {
  TQyLineSeries::RegisterVariables();
  RegisterStringVariable(this, "Formula", QyText(QyRes::FunctionVarFormula), [this] { return GetFormula(); });
  RegisterNumbers({{"CalculationStart", QyRes::FunctionVarCalculationStart, &FCalcStart},
                   {"CalculationStop", QyRes::FunctionVarCalculationStop, &FCalcStop},
                   {"DisplayStart", QyRes::FunctionVarDisplayStart, &FDisplayStart},
                   {"DisplayStop", QyRes::FunctionVarDisplayStop, &FDisplayStop}});
}

void TQyFunctionSeries::RegisterNumbers(std::initializer_list<TQyPublishedNumber> numbers) {
  for (const TQyPublishedNumber& n : numbers) {
    const double* value = n.Value;
    RegisterDoubleVariable(this, n.Name, QyText(n.Help), [value] { return *value; });
  }
}

// ---- calculation ------------------------------------------------------------------------------

void TQyFunctionSeries::SetLimits() {
  if (FAutoStart) FCalcStart = FLimitMinX;
  if (FAutoStop) FCalcStop = FLimitMaxX;
  if (FCoupleCalculationAndDisplay) {
    FDisplayStart = FCalcStart, FDisplayStop = FCalcStop;
    return;
  }
  if (FDisplayAutoStart) FDisplayStart = FLimitMinX;
  if (FDisplayAutoStop) FDisplayStop = FLimitMaxX;
}

bool TQyFunctionSeries::AnyOtherSeries() const {
  if (!FYAxis) return false;
  for (IQyAxisSeries* s : FYAxis->Series()) {
    auto* series = dynamic_cast<TQySeries*>(s);
    if (series && !series->IsFunctionSeries() && series->SeriesVisible()) return true;
  }
  return false;
}

// Steps accumulate by addition, so the last sample may fall short of hi. The count is bounded
// by the pixels (and a step too small to move X ends the walk).
template <class F> void TQyFunctionSeries::ForEachSample(double lo, double hi, bool logarithmic, F f) {
  const int pixels = std::max(1, int(std::ceil(FXAxis->AxisLength())));
  if (logarithmic) {
    if (!(lo > 0) || !(hi > 0)) return;
    lo = std::log10(lo), hi = std::log10(hi);
  }
  const double step = (hi - lo) / pixels;
  double u = lo;
  for (int k = 0; k <= pixels + 1 && u <= hi; ++k) {
    f(logarithmic ? std::pow(10.0, u) : u);
    const double next = u + step;
    if (!(next > u)) break; // an empty range, or a step lost in the magnitude of X
    u = next;
  }
}

void TQyFunctionSeries::FeedEngine() {
  SetLimits();
  TQyCalculation& c = *FCalculation;
  c.OutliersVisible = FOutliersVisible;
  c.XData = FXData, c.YData = FYData, c.Weight = FWeight;
  c.Start = FCalcStart, c.Stop = FCalcStop;
  c.mXValueTransformation = XValueTransformation;
  c.mYValueTransformation = YValueTransformation;
}

void TQyFunctionSeries::ClaimYRange(double lo, double hi) {
  if (FClipYValues && AnyOtherSeries()) {
    FLimitMinY = QyMaxDouble, FLimitMaxY = -QyMaxDouble; // no claim on the Y range
  } else {
    FLimitMinY = lo, FLimitMaxY = hi;
  }
}

void TQyFunctionSeries::CalculateFunction() {
  if (FCount < FMinimumCount || !FCalculation) return;
  FeedEngine();
  FCalculation->Calculate();
  double lo = QyMaxDouble, hi = -QyMaxDouble;
  ForEachSample(FDisplayStart, FDisplayStop, false, [&](double x) {
    const double y = GetY(x);
    if (std::isfinite(y)) lo = std::min(lo, y), hi = std::max(hi, y);
  });
  ClaimYRange(lo, hi);
  if (OnCalculated) OnCalculated(this);
}

void TQyFunctionSeries::Calculate() {
  if (!FXData || !FYData || !FXAxis || !FYAxis) return;
  if (FXData->GetCount() <= FLastCount && FYData->GetCount() <= FLastCount) return;
  FCount = GetCount();
  if (FCount <= FLastCount || FCount < FMinimumCount) return;
  double minX, maxX;
  ScanExtent(FXData, true, minX, maxX);
  if (!FCoupleCalculationAndDisplay) { // a fixed display range widens what the axis sees
    if (!FDisplayAutoStart && minX > FDisplayStart) minX = FDisplayStart;
    if (!FDisplayAutoStop && maxX < FDisplayStop) maxX = FDisplayStop;
  }
  if (minX != FLimitMinX || maxX != FLimitMaxX) {
    FLimitMinX = minX, FLimitMaxX = maxX;
    FXAxis->RangeModified();
  }
  try {
    CalculateFunction();
    if (VariableObjects.Count() > 0) VariableObjects.Update();
    FYAxis->RangeModified();
    FPointsStale = true;
    FFailed = false;
  } catch (const EQyException& e) {
    // No curve, and no retry until the data or a setting changes.
    FCalculatedCount = FCount;
    FLastCount = FCount;
    FPoints.Clear(), FPointIndices.Clear();
    FPointCount = 0;
    FFailed = true;
    if (!OnCalculationError) throw;
    OnCalculationError(this, e);
  }
  FLastCount = FCount;
  Invalidate();
}

void TQyFunctionSeries::CalculatePoints() {
  FPoints.Clear(), FPointIndices.Clear();
  FPointCount = 0;
  if (FCount >= FMinimumCount && FXAxis && FYAxis && !FFailed) {
    const double lo = std::max(FDisplayStart, FXAxis->GetStart());
    const double hi = std::min(FDisplayStop, FXAxis->GetStop());
    ForEachSample(lo, hi, FXAxis->LogActive(), [&](double x) {
      const double y = GetY(x);
      if (!std::isfinite(y)) return; // never drawn
      FPoints.SetValue(FPointCount, QPointF(FXAxis->NumberToWorld(x), FYAxis->NumberToWorld(y)));
      FPointIndices.SetValue(FPointCount++, -1); // a point of the curve, not of the data
    });
    AddBandPoints();
  }
  FCalculatedCount = FCount;
  FPointsStale = false;
}

int TQyFunctionSeries::FindPoint(float x, float y, float tolerance) {
  if (FPointsStale) return -1;
  for (int k = 0; k < FPointCount; ++k)
    if (std::fabs(FPoints[k].x() - x) <= tolerance && std::fabs(FPoints[k].y() - y) <= tolerance) return 0;
  return -1;
}
