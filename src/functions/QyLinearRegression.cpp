#include "QyLinearRegression.h"
#include "QyAxis.h"
#include "QyExceptions.h"
#include "QyMath.h"
#include "QyRounding.h"
#include "QyServices.h"
#include <QPainter>
#include <cmath>

namespace {
// Quotients and roots that raise instead of giving a value that is no number: the standard
// errors of too few points, or of points on one X, end as an exception.
double Quotient(double a, double b) {
  const double q = a / b;
  if (std::isnan(q)) throw EInvalidOp(QyText(QyRes::InvalidFloatOperation));
  if (std::isinf(q)) throw EZeroDivide(QyText(QyRes::ExprFloatZeroDivide));
  return q;
}
double Root(double v) {
  if (!(v >= 0)) throw EInvalidOp(QyText(QyRes::InvalidFloatOperation));
  return std::sqrt(v);
}
} // namespace

// ---- the engine -------------------------------------------------------------------------------

// The results read 1 until the first calculation; the offset is a setting and starts at 0.
TQyLinearRegressionCalculation::TQyLinearRegressionCalculation() {
  for (double* f : {&Slope, &DeltaSlope, &DeltaOffset, &AverageX, &AverageY, &VarianceX,
                    &VarianceY, &Probability, &Correlation, &SumOfResiduals})
    *f = 1.0;
}

double TQyLinearRegressionCalculation::Xi(int idx) {
  const double v = TQyCalculation::Xi(idx);
  return XLog ? std::log10(v) : v;
}

double TQyLinearRegressionCalculation::Yi(int idx) {
  const double v = TQyCalculation::Yi(idx);
  return YLog ? std::log10(v) : v;
}

// The range is compared in data units; the logarithms are taken of the values collected.
void TQyLinearRegressionCalculation::Calculate() {
  RequireVectors();
  CollectValid(FValidX, FValidY, FValidW);
  if (XLog) for (double& v : FValidX) v = std::log10(v);
  if (YLog) for (double& v : FValidY) v = std::log10(v);
  Regress(FValidX.data(), FValidY.data(), FValidW.data(), int(FValidX.size()));
}

void TQyLinearRegressionCalculation::Regress(const double* x, const double* y, const double* w, int n) {
  SumX = SumY = SumW = SumWXX = SumWXY = SumWdXY = Qxx = Qyy = 0;
  Slope = Probability = Correlation = SumOfResiduals = 0;
  DeltaSlope = -QyMaxDouble, DeltaOffset = QyMaxDouble;
  if (FixedOffset) RegressFixed(x, y, w, n);
  else RegressFree(x, y, w, n);
}

void TQyLinearRegressionCalculation::Means(const double* x, const double* y, const double* w, int n) {
  for (int i = 0; i < n; ++i) SumW += w[i], SumX += x[i] * w[i], SumY += y[i] * w[i];
  AverageX = SumX / SumW, AverageY = SumY / SumW;
}

void TQyLinearRegressionCalculation::SquareSums(const double* x, const double* y, const double* w, int n) {
  for (int i = 0; i < n; ++i) {
    const double dx = x[i] - AverageX, dy = y[i] - AverageY;
    Qxx += w[i] * dx * dx, Qyy += w[i] * dy * dy, SumWdXY += w[i] * dx * y[i];
  }
}

double TQyLinearRegressionCalculation::Residuals(const double* x, const double* y, const double* w, int n) const {
  double sum = 0;
  for (int i = 0; i < n; ++i) {
    const double d = y[i] - Slope * x[i] - Offset;
    sum += w[i] * d * d;
  }
  return sum;
}

// Only the slope is free: the line through (0, Offset). Its offset has no error.
void TQyLinearRegressionCalculation::RegressFixed(const double* x, const double* y, const double* w, int n) {
  for (int i = 0; i < n; ++i) SumWXX += x[i] * x[i] * w[i], SumWXY += (y[i] - Offset) * x[i] * w[i];
  Means(x, y, w, n);
  SquareSums(x, y, w, n);
  SumWdXY = 0; // not a sum of this form
  Slope = Quotient(SumWXY, SumWXX);
  SumOfResiduals = Residuals(x, y, w, n);
  DeltaOffset = 0;
  DeltaSlope = Root(Quotient(SumOfResiduals, (SumW - 1) * SumWXX));
  Probability = 1 - Quotient(SumOfResiduals, Qyy);
  VarianceX = Qxx / (SumW - 1), VarianceY = Qyy / (SumW - 1);
}

void TQyLinearRegressionCalculation::RegressFree(const double* x, const double* y, const double* w, int n) {
  Offset = 0;
  Means(x, y, w, n);
  if (n < 2) throw EMathError(QyText(QyRes::MathNotEnoughPoints));
  SquareSums(x, y, w, n);
  if (SumW > 1) VarianceX = Qxx / (SumW - 1), VarianceY = Qyy / (SumW - 1);
  if (Qxx <= 0) { // all X equal
    Slope = Offset = QyMaxDouble;
    Correlation = Probability = 1.0;
    SumOfResiduals = 0;
  } else {
    Slope = Quotient(SumWdXY, Qxx);
    Offset = AverageY - Slope * AverageX;
    SumOfResiduals = Residuals(x, y, w, n);
    Correlation = std::sqrt(VarianceX) * Slope / std::sqrt(VarianceY);
    Probability = 1 - SumOfResiduals / Qyy;
  }
  DeltaSlope = Root(Quotient(SumOfResiduals, (SumW - 2) * Qxx));
  DeltaOffset = Root(Quotient((AverageX * AverageX / Qxx + 1 / SumW) * SumOfResiduals, SumW - 2));
}

double TQyLinearRegressionCalculation::Confidence(double t) const {
  const double d = t - AverageX;
  return std::sqrt((d * d / Qxx + 1 / SumW) * (Qyy / (SumW - 2)) * T95);
}

// ---- the series -------------------------------------------------------------------------------

TQyLinearRegression::TQyLinearRegression(QObject* owner) : TQyFunctionSeries(owner) {
  SetCalculation(&FRegr);
  auto modified = [this] { PointsModified(); TestVisibleChanged(); };
  FConfidenceIntervalLine = new TQyLineSettings(modified, this);
  FConfidenceIntervalArea = new TQyAreaSettings(modified, this);
  FConfidenceIntervalLine->SetDashStyle(QyGDI::TDashStyle(1));
  FConfidenceIntervalLine->SetColor(FLine->GetColor());
  FConfidenceIntervalLine->SetVisible(false);
  FConfidenceIntervalArea->SetVisible(false);
}

void TQyLinearRegression::SetFixedOffset(bool value) {
  AssignToEngine(GetFixedOffset(), value, QyRes::RegressionFixedOffset, "FixedOffset", [&] {
    FRegr.FixedOffset = value;
    Recalculate();
  });
}

void TQyLinearRegression::SetOffset(double value) {
  if (!GetFixedOffset() && !QyEqual(GetOffset(), value)) {
    if (QyPrompt::MessageDlg(QyText(QyRes::RegressionOffsetNeedsFixed), TQyMsgDlgType::Confirmation, true) !=
        TQyModalResult::Yes)
      return;
    SetFixedOffset(true);
  }
  AssignToEngine(GetOffset(), value, QyRes::RegressionOffset, "Offset", [&] {
    FRegr.Offset = value;
    Recalculate();
  });
}

double TQyLinearRegression::GetY(double x) {
  const bool logX = FXAxis && FXAxis->LogActive(), logY = FYAxis && FYAxis->LogActive();
  const double y = FRegr.GetY(logX ? std::log10(x) : x);
  return logY ? std::pow(10.0, y) : y;
}

double TQyLinearRegression::BandAt(double x, int side) const {
  const bool logX = FXAxis && FXAxis->LogActive(), logY = FYAxis && FYAxis->LogActive();
  const double t = logX ? std::log10(x) : x;
  const double y = FRegr.GetY(t) + side * FRegr.Confidence(t);
  return logY ? std::pow(10.0, y) : y;
}

QString TQyLinearRegression::GetFormula() const {
  const bool logX = FXAxis && FXAxis->LogActive(), logY = FYAxis && FYAxis->LogActive();
  return QyText(logY ? QyRes::RegressionFormulaLogY : QyRes::RegressionFormulaY) +
         QyText(logX ? QyRes::RegressionFormulaLogX : QyRes::RegressionFormulaX);
}

void TQyLinearRegression::RegisterVariables() {
  TQyFunctionSeries::RegisterVariables();
  const struct { const char* name; const char* help; const double* value; } numbers[] = {
      {"Offset", QyRes::RegressionVarOffset, &FRegr.Offset},
      {"Slope", QyRes::RegressionVarSlope, &FRegr.Slope},
      {"DeltaSlope", QyRes::RegressionVarDeltaSlope, &FRegr.DeltaSlope},
      {"DeltaOffset", QyRes::RegressionVarDeltaOffset, &FRegr.DeltaOffset},
      {"AverageX", QyRes::FitVarAverageX, &FRegr.AverageX},
      {"AverageY", QyRes::FitVarAverageY, &FRegr.AverageY},
      {"VarianceX", QyRes::FitVarVarianceX, &FRegr.VarianceX},
      {"VarianceY", QyRes::FitVarVarianceY, &FRegr.VarianceY},
      {"Probability", QyRes::FitVarProbability, &FRegr.Probability},
      {"Correlation", QyRes::RegressionVarCorrelation, &FRegr.Correlation},
      {"SumOfResiduals", QyRes::FitVarSumOfResiduals, &FRegr.SumOfResiduals}};
  for (const auto& n : numbers) {
    const double* value = n.value;
    RegisterDoubleVariable(this, n.name, QyText(n.help), [value] { return *value; });
  }
}

void TQyLinearRegression::TestVisibleChanged() {
  TQyFunctionSeries::TestVisibleChanged();
  if (ConfidenceShown() == FConfidenceVisible) return;
  FConfidenceVisible = ConfidenceShown();
  RangesModified();
  Invalidate();
}

// ---- calculation ------------------------------------------------------------------------------

// A logarithmic axis that shows small ranges linearly would bend the regressed line.
void TQyLinearRegression::ForbidLogScaling(TQyAxis* axis, const char* message) {
  const TQyAxisScaling scaling = axis->GetScaling();
  const bool logarithmic = scaling == TQyAxisScaling::Log || scaling == TQyAxisScaling::LogEE;
  if (!logarithmic || !(axis->GetLogToNormalScalingLevel() > 0)) return;
  QyPrompt::ShowMessage(QyText(message));
  axis->SetLogToNormalScalingLevel(0);
}

void TQyLinearRegression::CalculateFunction() {
  if (FCount <= 1) return;
  ForbidLogScaling(FXAxis, QyRes::RegressionLogX);
  ForbidLogScaling(FYAxis, QyRes::RegressionLogY);
  FeedEngine();
  FRegr.XLog = FXAxis->LogActive(), FRegr.YLog = FYAxis->LogActive();
  FRegr.Calculate();
  double y1 = GetY(GetCalculationStart()), y2 = GetY(GetCalculationStop());
  if (ConfidenceShown()) {
    FRegr.T95 = T95Percent(FRegr.SumW);
    y1 = BandAt(GetCalculationStart(), -1), y2 = BandAt(GetCalculationStop(), +1);
  }
  ClaimYRange(std::min(y1, y2), std::max(y1, y2));
  if (OnCalculated) OnCalculated(this);
}

void TQyLinearRegression::CalculatePoints() {
  for (TQyPointVector* v : {&FPoints, &FUpperConfidencePoints, &FLowerConfidencePoints, &FConfidenceAreaPoints})
    v->Clear();
  FPointIndices.Clear();
  FPointCount = 0;
  if (FCount > 1 && FXAxis && FYAxis && !Failed()) {
    for (double x : {GetDisplayStart(), GetDisplayStop()}) {
      const double y = GetY(x);
      if (!std::isfinite(y)) continue;
      FPoints.SetValue(FPointCount, QPointF(FXAxis->NumberToWorld(x), FYAxis->NumberToWorld(y)));
      FPointIndices.SetValue(FPointCount++, -1);
    }
    AddBandPoints();
    if (ConfidenceShown() && FCount > 2) AddBand();
  }
  FCalculatedCount = FCount;
  FPointsStale = false;
}

// One sample per pixel of the X axis (evenly in the logarithm on a logarithmic axis); the area
// runs along the upper edge and back along the lower one, and is closed.
void TQyLinearRegression::AddBand() {
  double lo = std::max(GetDisplayStart(), FXAxis->GetStart()), hi = std::min(GetDisplayStop(), FXAxis->GetStop());
  const bool logX = FXAxis->LogActive();
  if (logX) {
    if (!(lo > 0) || !(hi > 0)) return;
    lo = std::log10(lo), hi = std::log10(hi);
  }
  if (FClipYValues) { // the band's ends lie beyond the clip
    const double widen = (hi - lo) * 0.1;
    lo -= widen, hi += widen;
  }
  const int pixels = std::max(1, int(std::ceil(FXAxis->AxisLength())));
  const double step = (hi - lo) / pixels;
  for (int k = 0; k <= pixels; ++k) {
    const double x = logX ? std::pow(10.0, lo + k * step) : lo + k * step;
    const double upper = BandAt(x, +1), lower = BandAt(x, -1);
    if (!std::isfinite(upper) || !std::isfinite(lower)) continue;
    const float px = FXAxis->NumberToWorld(x);
    FUpperConfidencePoints.Add(QPointF(px, FYAxis->NumberToWorld(upper)));
    FLowerConfidencePoints.Add(QPointF(px, FYAxis->NumberToWorld(lower)));
  }
  for (const QPointF& p : FUpperConfidencePoints) FConfidenceAreaPoints.Add(p);
  for (int k = FLowerConfidencePoints.Count() - 1; k >= 0; --k) FConfidenceAreaPoints.Add(FLowerConfidencePoints[k]);
  if (FUpperConfidencePoints.Count() > 0) FConfidenceAreaPoints.Add(FUpperConfidencePoints[0]);
}

// The band reaches beyond the axis ends: it is cut to the data area, which the graph clips to
// only where the data themselves reach beyond.
void TQyLinearRegression::DrawLine(QPainter* g) {
  if (FCount > 2 && ConfidenceShown()) {
    g->save();
    g->setClipRect(DataArea(), Qt::IntersectClip);
    if (FConfidenceIntervalLine->GetVisible()) {
      g->setPen(FConfidenceIntervalLine->GetPen(DataArea()));
      g->setBrush(Qt::NoBrush);
      g->drawPolyline(FUpperConfidencePoints.Data(), FUpperConfidencePoints.Count());
      g->drawPolyline(FLowerConfidencePoints.Data(), FLowerConfidencePoints.Count());
    }
    if (FConfidenceIntervalArea->GetVisible()) {
      g->setPen(Qt::NoPen);
      g->setBrush(FConfidenceIntervalArea->GetBrush(DataArea()));
      g->drawPolygon(FConfidenceAreaPoints.Data(), FConfidenceAreaPoints.Count());
    }
    g->restore();
  }
  TQyFunctionSeries::DrawLine(g);
}
