#include "QyPieChart.h"
#include "QyClassRegistry.h"
#include "QyLabelText.h"
#include "QyStyles.h"
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace {
// The nearest value in [low, high]; a value that is no number takes the lower bound.
float Clamp(float v, float low, float high) { return std::isnan(v) ? low : std::clamp(v, low, high); }
// Any finite value; a value that is no number or infinite becomes `fallback`.
float Finite(float v, float fallback = 0) { return std::isfinite(v) ? v : fallback; }
} // namespace

TQyPieChart::TQyPieChart(QWidget* parent) : TQyCustomGraph(parent) {
  resize(250, 250);
  const TQyColor frame = ColorToARGB(QStringLiteral("WindowFrame"));
  FSegmentBorder = new TQyLineSettings([this] { update(); }, this);
  FSegmentBorder->SetColor(0xFF000000);
  FCalloutArrow = new TQyArrowSettings([this] { update(); }, this);
  FCalloutArrow->SetColor(frame);
  FCalloutFrame = new TQyLineSettings([this] { update(); }, this);
  FCalloutFrame->SetColor(frame);
  FCalloutGradient = new TQyGradientSettings([this] { update(); }, this);
  FCalloutBackColor = ColorToARGB(QStringLiteral("Info"));
  FDefaultFill = new TQyFillSettings({}, this);
  FLabelFontReferenceSize = GetCaptionFont()->GetSize();
  connect(GetCaptionFont(), &TQyStyleObject::PropertyChanged, this, &TQyPieChart::FontModified);
  FPollingThread->OnPoll = [this](QObject*) { PiePoll(); };
}

TQyPieChart::~TQyPieChart() {
  FDestroying = true;
  StopPolling();
  for (TQyCustomDoubleVector* v : {FValues.data(), FExplodePercent.data()})
    if (v) v->RemoveListener(this);
}

// ---- setters: out-of-range values become the nearest bound, silently

void TQyPieChart::SetStartAngle(float v) {
  QyAssign(this, FStartAngle, float(QyFitTo360Degrees(v)), QyRes::PieStartAngle, "StartAngle", [this] { Modified(); });
}

// 10 .. 360; values beyond are folded into a turn first, and then raised to 10.
void TQyPieChart::SetTotalAngle(float v) {
  if (!(v >= 0 && v <= 360)) v = float(QyFitTo360Degrees(v));
  QyAssign(this, FTotalAngle, std::max(v, 10.0f), QyRes::PieTotalAngle, "TotalAngle", [this] { Modified(); });
}

void TQyPieChart::SetThreeDElevation(float v) {
  QyAssign(this, FThreeDElevation, Clamp(v, 10, 80), QyRes::PieElevation, "ThreeDElevation", [this] { Modified(); });
}

void TQyPieChart::SetThreeDPieHeight(float v) {
  QyAssign(this, FThreeDPieHeight, Clamp(v, 0.001f, 100), QyRes::PieHeight, "ThreeDPieHeight", [this] { Modified(); });
}

// Changes no extent: the hole is only drawn.
void TQyPieChart::SetDonutHoleSize(float v) {
  QyAssign(this, FDonutHoleSize, Clamp(v, 1, 99), QyRes::PieDonutHoleSize, "DonutHoleSize", [this] { update(); });
}

// A font height in percent of the pie's width: kept positive, so that a label always has a font.
void TQyPieChart::SetLabelSize(float v) {
  QyAssign(this, FLabelSize, Clamp(v, 0.01f, 1000), QyRes::PieLabelSize, "LabelSize", [this] { Modified(); });
}

void TQyPieChart::SetCalloutDistanceToPie(float v) {
  QyAssign(this, FCalloutDistanceToPie, Clamp(Finite(v), 0, 1000), QyRes::PieCalloutDistanceToPie,
           "CalloutDistanceToPie", [this] { Modified(); });
}

void TQyPieChart::SetCalloutSpaceToBorder(float v) {
  QyAssign(this, FCalloutSpaceToBorder, Clamp(Finite(v), 0, 1000), QyRes::PieCalloutSpaceToBorder,
           "CalloutSpaceToBorder", [this] { Modified(); });
}

void TQyPieChart::SetCalloutRounding(float v) {
  QyAssign(this, FCalloutRounding, Clamp(Finite(v), 0, 1000), QyRes::PieCalloutRounding, "CalloutRounding",
           [this] { update(); });
}

void TQyPieChart::SetValues(TQyCustomDoubleVector* vector) {
  SetVector(FValues, vector, QyRes::PieValues, "Values");
}

void TQyPieChart::SetExplodePercent(TQyCustomDoubleVector* vector) {
  SetVector(FExplodePercent, vector, QyRes::PieExplodePercent, "ExplodePercent");
}

// The chart listens to the vectors it shows (a vector used twice keeps the chart as a listener).
void TQyPieChart::SetVector(QPointer<TQyCustomDoubleVector>& field, TQyCustomDoubleVector* vector,
                            const char* caption, const char* name) {
  TQyCustomDoubleVector* old = field;
  QyAssign(this, field, vector, caption, name, [&] {
    if (old && old != FValues && old != FExplodePercent) old->RemoveListener(this);
    if (vector) vector->AddListener(this);
    Modified();
  });
}

void TQyPieChart::SetSegmentSettingsPalette(TQyFillPalette* palette) {
  TQyFillPalette* old = FPalette;
  QyAssign(this, FPalette, palette, nullptr, "SegmentSettingsPalette", [&] {
    if (old) disconnect(old, &TQyFillPalette::Changed, this, nullptr);
    if (palette) connect(palette, &TQyFillPalette::Changed, this, [this] { update(); });
    update();
  });
}

void TQyPieChart::SetUndoStack(TQyUndoRecorder* stack) {
  TQyCustomGraph::SetUndoStack(stack);
  for (QObject* c : children())
    if (auto* part = qobject_cast<IQyGraphPart*>(c)) part->SetUndoStack(stack);
}

// A new size of the chart's font scales the labels along.
void TQyPieChart::FontModified(const QString& property) {
  if (property != QLatin1String("Size") || !FReady) return;
  const float size = GetCaptionFont()->GetSize();
  if (FLabelFontReferenceSize > 0) FLabelSize = Clamp(size / FLabelFontReferenceSize * FLabelSize, 0.01f, 1000);
  FLabelFontReferenceSize = size;
  Modified();
}

const TQyFillSettings* TQyPieChart::PaletteItem(int s) const {
  if (!FPalette || FPalette->GetCount() == 0) return FDefaultFill;
  const int n = FPalette->GetCount();
  return FPalette->GetItem(((s % n) + n) % n);
}

// ---- flags

void TQyPieChart::Modified() {
  if (!FAutoUpdate || !FReady) return;
  FNeedsCalculate = true;
  for (QObject* c : children())
    if (auto* part = qobject_cast<IQyGraphPart*>(c)) part->GraphChanged(TQyGraphChange::Legends);
  if (!Updating()) update();
}

void TQyPieChart::VectorChanged(TQyCustomDoubleVector*, TQyVectorChange, int) { Modified(); }

void TQyPieChart::VectorDestroyed(TQyCustomDoubleVector* vector) {
  if (vector == FValues) SetValues(nullptr);
  if (vector == FExplodePercent) SetExplodePercent(nullptr);
}

void TQyPieChart::PiePoll() {
  if (Updating() || FNeedsCalculate || !FAutoUpdate || !FValues) return;
  FValues->UpdateDB();
  if (FValues->GetCount() != FPolledCount) Modified();
}

double TQyPieChart::TransformValue(double value, int index) {
  return ValueTransformation ? ValueTransformation(this, {value, index}) : value;
}

// ---- the values

// The values that get a segment: above 0 (raw and transformed), finite, and no hidden outlier.
// The sum is taken over these alone: a value that is no number would make every sweep no number,
// and a negative one would lower the sum without a segment of its own, so that the segments
// reached past the total angle.
std::vector<TQyPieValue> TQyPieChart::TakenValues() {
  std::vector<TQyPieValue> taken;
  if (!FValues) return taken;
  TQyVectorLock hold = FValues->ReadLock();
  const int n = FValues->GetCount();
  FPolledCount = n;
  for (int i = 0; i < n; ++i) {
    const double raw = FValues->GetValue(i);
    if (!(raw > 0) || (!FOutliersVisible && FValues->IsOutlier(i))) continue;
    const double v = TransformValue(raw, i);
    if (v > 0 && std::isfinite(v)) taken.push_back({i, v});
  }
  return taken;
}

// Per segment: its entry of ExplodePercent (0 without one), through the transformation.
std::vector<double> TQyPieChart::ExplodePercents() {
  std::vector<double> p(FSweeps.size(), 0.0);
  if (!FExplodePercent && !ExplodePercentTransformation) return p;
  const int n = FExplodePercent ? FExplodePercent->GetCount() : 0;
  for (size_t s = 0; s < p.size(); ++s) {
    const int i = FSegmentIndices[s];
    double d = i < n ? FExplodePercent->GetValue(i) : 0.0;
    if (ExplodePercentTransformation) d = ExplodePercentTransformation(this, {d, i});
    p[s] = std::isfinite(d) ? d : 0.0;
  }
  return p;
}

QString TQyPieChart::GetSegmentCaption(int index, TQyLabelStyle style, const QString& format) {
  if (FNeedsCalculate) {
    double sum = 0;
    for (const TQyPieValue& v : TakenValues()) sum += v.Value;
    FPercentFactor = sum > 0 ? 100 / sum : 0;
  }
  const QString caption = index >= 0 && index < FCaptions.size() ? FCaptions[index] : QString();
  const double raw = FValues && index >= 0 && index < FValues->GetCount() ? FValues->GetValue(index) : 0.0;
  const double value = TransformValue(raw, index);
  TQyPieLabelEventArgs args{QyLabelText(style, format, value, value * FPercentFactor, caption), index};
  if (OnGetLabel) OnGetLabel(this, args);
  return args.Caption;
}

// ---- the geometry

TQyPieMargins TQyPieChart::StartMargins() {
  TQyPieMargins m{FDistanceAtLeft, FDistanceAtTop, FDistanceAtRight, FDistanceAtBottom};
  if (FCaptionVisible && !FCaption.isEmpty()) {
    FCaptionObject->ParseForSize(nullptr, this);
    m.Top += FCaptionObject->Height() + FCaptionDistanceBefore + FCaptionDistanceAfter;
    FCaptionObject->Y = FCaptionDistanceBefore;
  }
  if (FLabelPosition == TQyPieLabelPosition::Callouts && FCalloutShadow) {
    m.Bottom += 4;
    m.Right += 5;
  }
  return m;
}

// Legends and other parts on the chart take their room from the sides.
void TQyPieChart::PlaceParts(TQyPieMargins& m) {
  TQyLayoutMargins margins{float(m.Left), float(m.Top), float(m.Right), float(m.Bottom)};
  for (QObject* c : children()) {
    auto* part = qobject_cast<IQyGraphPart*>(c);
    auto* w = qobject_cast<QWidget*>(c);
    if (part && w && !w->isHidden() && part->PartVisible()) part->TakeMargins(margins, LayoutSize());
  }
  m = {margins.Left, margins.Top, margins.Right, margins.Bottom};
}

void TQyPieChart::PlaceCaption(const TQyPieMargins& m) {
  switch (FCaptionAlignment) {
  case TAlignment::LeftJustify: FCaptionObject->X = m.Left; FCaptionObject->Alignment = TQyContentAlignment::TopLeft; break;
  case TAlignment::RightJustify:
    FCaptionObject->X = LayoutSize().width() - m.Right;
    FCaptionObject->Alignment = TQyContentAlignment::TopRight;
    break;
  case TAlignment::Center:
    FCaptionObject->X = (m.Left + LayoutSize().width() - m.Right) / 2;
    FCaptionObject->Alignment = TQyContentAlignment::TopCenter;
    break;
  }
}

void TQyPieChart::Calculate() {
  if (Updating()) return;
  FReady = false;
  if (FValues) FValues->UpdateDB();
  if (FExplodePercent) FExplodePercent->UpdateDB();
  FSweeps.clear(), FStarts.clear(), FSegmentIndices.clear(), FPaintOrder.clear(), FExplodeOffsets.clear();
  FLabelObjects.Clear();
  FCallouts.clear();
  FAnyExploded = false;
  TQyPieMargins margins = StartMargins();
  const double e = IsThreeD() ? 0.01 * FThreeDElevation : 1.0;
  TQyPieExtents extents;
  if (IsThreeD()) extents.Bottom += 0.01 * FThreeDPieHeight / e;
  if (FDropShadow) extents.Right += 0.04, extents.Bottom += 0.04 / e;
  const TQyPieSegments segments = QyPieSegments(TakenValues(), FStartAngle, FTotalAngle, FOrderAscending);
  FValueSum = segments.Sum;
  FPercentFactor = FValueSum > 0 ? 100 / FValueSum : 0;
  FSweeps = segments.Sweeps, FStarts = segments.Starts, FSegmentIndices = segments.Indices;
  if (!FSweeps.empty()) {
    const std::vector<double> percent = ExplodePercents();
    FPaintOrder.resize(FSweeps.size());
    std::iota(FPaintOrder.begin(), FPaintOrder.end(), 0);
    if (IsThreeD()) FPaintOrder = QyPie3DPaintOrder(FStarts, FSweeps, percent);
    const TQyPieExplosion explosion = QyPieExplode(FStarts, FSweeps, percent);
    FExplodeOffsets = explosion.Offsets, FAnyExploded = explosion.AnyExploded;
    extents.Top += explosion.Extents.Top, extents.Bottom += explosion.Extents.Bottom;
    extents.Left += explosion.Extents.Left, extents.Right += explosion.Extents.Right;
    extents.Include(CalculateLabels(e));
  }
  PlaceParts(margins);
  PlaceCaption(margins);
  const TQyPieFit fit = QyFitPie(extents, e, LayoutSize(), margins);
  FPieRect = fit.PieRect, FPlotRect = fit.PlotRect;
  FPieDepth = IsThreeD() ? float(0.01 * FThreeDPieHeight * FPieRect.width()) : 0.0f;
  MapToPixels(FPieRect.width(), FPieRect.height());
  FReady = true;
  FNeedsCalculate = false;
}

void TQyPieChart::MapToPixels(double pw, double ph) {
  for (QPointF& o : FExplodeOffsets) o = QPointF(o.x() * pw * 0.5, o.y() * ph * 0.5);
  if (FLabelObjects.Count() > 0) MapLabels(pw, ph);
}

void TQyPieChart::PaintParts(QPainter* g) {
  for (TQyPaintPass pass : {TQyPaintPass::Legends, TQyPaintPass::Overlays})
    for (QObject* c : children()) {
      auto* part = qobject_cast<IQyGraphPart*>(c);
      auto* w = qobject_cast<QWidget*>(c);
      if (!part || !w || w->isHidden() || !part->PartVisible() || !QyPaintsIn(part->PaintPasses(), pass)) continue;
      g->save();
      g->translate(w->pos());
      part->PaintPass(pass, g);
      g->restore();
    }
}

void TQyPieChart::paintEvent(QPaintEvent*) {
  QPainter p(this);
  PaintGr(&p);
}

QY_REGISTER_CLASS(TQyPieChart);
