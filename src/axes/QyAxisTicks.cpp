// Tick walks of an axis: where the ticks stand, which are major, which carry labels and grid
// lines, and where labels, extra exponent and caption are placed.
#include "QyAxis.h"
#include "QyMath.h"
#include "QyRounding.h"
#include "QyTextFormat.h"
#include <cmath>

namespace {
// Bounds that keep any setting of the parts to a sane axis: a walk never makes more ticks, and an
// axis never more labels, than these.
constexpr int MaxTicks = 5000;
constexpr int MaxLabels = 500;
} // namespace

const TQyRichCaptionObject& TQyAxis::Label(int i) const {
  if (i < 0 || i >= LabelCount()) QyRaiseIndexError(i);
  return *FTickLabels[i];
}

void TQyAxis::ClearTicks() {
  FTickPositions.Clear();
  FMajorFlags.Clear();
  FGridFlags.Clear();
  FTickLabels.clear();
  FMaxLabelWidth = FMaxLabelHeight = 0;
}

bool TQyAxis::InPanDrag() const { return Graph() && Graph()->InDrag(); }

// Ends that were not rounded to the partition: the walk then starts and stops at the first and
// last whole tick inside them.
bool TQyAxis::TicksFromRoundedEnds() const {
  if (InPanDrag() || FEndRounding == TQyAxisEndRounding::RndNothing) return true;
  return GetCanZoomBack() && (FEndRounding == TQyAxisEndRounding::RndToMajorZoomToNothing ||
                              FEndRounding == TQyAxisEndRounding::RndToMinorZoomToNothing);
}

// The point labels hang from: beyond the major ticks unless the ticks point to the data.
void TQyAxis::LabelBasePoint() {
  const float d = FDistanceAxisLabels + (FTicksPointToData ? 0.0f : FMajorTickLength);
  FLabelBaseX = FOriginX, FLabelBaseY = FOriginY;
  switch (FPosition) {
  case TQyAxisPosition::Bottom: FLabelBaseY = FOriginY + d; break;
  case TQyAxisPosition::Left: FLabelBaseX = FOriginX - d; break;
  case TQyAxisPosition::Top: FLabelBaseY = FOriginY - d; break;
  case TQyAxisPosition::Right: FLabelBaseX = FOriginX + d; break;
  }
}

void TQyAxis::CalculateTicks() {
  if (OnGetTicks) OnGetTicks(this);
  if (!(FAxisLength > 0)) FAxisLength = 100;
  ClearTicks();
  const int angle = RoundI(FRubricsAngle);
  FOblique = angle != 0 && angle != 90 && angle != 180 && angle != 270;
  FUx = FFontSize * FSinAngle * 0.8f;
  FUy = FFontSize * FCosAngle * 0.8f;
  LabelBasePoint();
  if (FLogActive) FScale = (FLogStop - FLogStart) / FAxisLength;
  else if (FScaling == TQyAxisScaling::DateTime) FScale = DateTimeSpan(FStart, FStop) / FAxisLength;
  else FScale = (FStop - FStart) / FAxisLength;
  if (!(FScale > 0) || !std::isfinite(FScale)) FScale = 1.0 / FAxisLength; // range not yet repaired
  if (!FAutoTickParts && !FLogActive) FRangeExponent = Real10thExponent(FStop - FStart);
  if (FLogActive) LogTicks();
  else if (FScaling == TQyAxisScaling::Seconds) SecondsTicks();
  else if (FScaling == TQyAxisScaling::DateTime) DateTimeTicks();
  else if (FScaling == TQyAxisScaling::Rubrics) RubricsTicks();
  else LinearTicks();
  PlaceCaption();
}

// One label: measured once here, hung from its tick across the axis; an oblique label hangs from
// its end at the tick rather than from its centre.
void TQyAxis::AddLabel(QString text, double value, float pixel) {
  if (int(FTickLabels.size()) >= MaxLabels) return;
  if (OnGetScaleLabel) OnGetScaleLabel(this, value, text);
  auto label = std::make_unique<TQyRichCaptionObject>();
  label->Font()->Assign(*FFont);
  label->FillColorOverride = FNumbersColor; // before parsing: the runs take their colour then
  label->SetCaption(text);
  label->Alignment = TQyContentAlignment::MiddleCenter;
  label->Angle = FRubricsAngle;
  label->ParseForSize(nullptr, this);
  const float w = label->Width(), h = label->Height();
  const float across = w * FSinAngle + h * FCosAngle; // vertical extent
  const float along = w * FCosAngle + h * FSinAngle;  // horizontal extent
  FMaxLabelHeight = std::max(FMaxLabelHeight, across);
  FMaxLabelWidth = std::max(FMaxLabelWidth, along);
  float x = GetHorizontal() ? pixel : FLabelBaseX;
  float y = GetHorizontal() ? FLabelBaseY : pixel;
  if (FOblique) {
    const bool odd = Quadrant(FRubricsAngle) % 2 == 1; // quadrants 1 and 3
    switch (FPosition) {
    case TQyAxisPosition::Bottom: x += odd ? FUx - along / 2 : -FUx + along / 2; break;
    case TQyAxisPosition::Top: x += odd ? -FUx + along / 2 : FUx - along / 2; break;
    case TQyAxisPosition::Left: y += odd ? -FUy + across / 2 : FUy - across / 2; break;
    case TQyAxisPosition::Right: y += odd ? FUy - across / 2 : -FUy + across / 2; break;
    }
  }
  switch (FPosition) {
  case TQyAxisPosition::Bottom: y += across / 2; break;
  case TQyAxisPosition::Left: x -= along / 2; break;
  case TQyAxisPosition::Top: y -= across / 2; break;
  case TQyAxisPosition::Right: x += along / 2; break;
  }
  label->X = x, label->Y = y;
  FTickLabels.push_back(std::move(label));
}

// Decimal ticks. Parts too fine for the range are coarsened by tens for the walk only, so that
// any setting ends with a bounded axis.
void TQyAxis::LinearTicks() {
  double first = FStart, last = FStop;
  double tick = FTickPart == 0 ? 1.0 : FTickPart;
  if (TicksFromRoundedEnds()) {
    first = RoundUp(FStart, tick, FRangeExponent);
    last = RoundDown(FStop, tick, FRangeExponent);
  }
  const double units = ExpMinus(last - first, FRangeExponent);
  if (!std::isfinite(units) || !(tick > 0) || !std::isfinite(tick)) return; // no walk the axis can show
  double major = std::max(FMajorTickPart, tick), label = std::max(FLabelPart, tick);
  for (int guard = 0; units / tick > MaxTicks && guard < 400; ++guard) tick *= 10, major *= 10, label *= 10;
  for (int guard = 0; units / label > MaxLabels && guard < 400; ++guard) label *= 10;
  const long long n = std::max<long long>(2, Round(units / tick + 1.0));
  const double step = (last - first) / double(n - 1);
  const double eps = 0.6 * step;
  double nextMajor = RoundUp(FStart, major, FRangeExponent);
  double nextLabel = RoundUp(FStart, label, FRangeExponent);
  for (long long i = 0; i < n; ++i) {
    const double x = first + double(i) * step; // no drift over many steps
    const float p = NumberToWorld(x);
    bool grid = false;
    if (FNumbersVisible && std::fabs(x - nextLabel) < eps) {
      AddLabel(NormalCaption(x), x, p);
      nextLabel = RoundUp(x + eps, label, FRangeExponent);
      grid = FMajorGridMode == TQyMajorGridMode::AtLabel;
    }
    const bool isMajor = std::fabs(x - nextMajor) < eps;
    if (isMajor) {
      grid = grid || FMajorGridMode == TQyMajorGridMode::AtMajorTick;
      nextMajor = RoundUp(x + step, major, FRangeExponent);
    }
    FTickPositions.Add(p);
    FMajorFlags.Add(isMajor);
    FGridFlags.Add(grid);
  }
  PlaceExtraExponent();
}

// Logarithmic ticks: by whole decades (or their multiples) when the major part exceeds one
// decade, else at 1 .. 9 (by TickPart) within each decade.
void TQyAxis::LogTicks() {
  const double first = TicksFromRoundedEnds() ? RoundLogUp(FStart, FMajorTickPart, FTickPart) : FStart;
  const double lg = std::log10(first);
  if (!std::isfinite(lg) || !(FTickPart > 0) || !std::isfinite(FMajorTickPart)) return; // nothing to walk
  double mant = FMajorTickPart > 1.0 ? 0 : lg - std::trunc(lg);
  double decade = std::trunc(lg);
  const double pad = FTickPart <= 0.1001 ? 0.1 : 0;
  if (mant != 0) {
    mant = Exp10(mant);
    if (mant >= 1.0) mant *= 0.1;
    if (lg < 0) decade -= 1;
    // The walk writes the k-th tick of a decade as (mant + pad)*10^(decade+1): start so that the
    // first tick is `first` itself, not one step past it.
    mant -= pad;
  }
  // Counts from parts the user may set to anything saturate: a label every 2^30 decades is none.
  const int labelEvery = std::max(1, RoundI(FLabelPart));
  auto text = [this](double x) {
    return FScaling == TQyAxisScaling::Log ? FloatToStr(x) : "10\\+" + QString::number(Real10thExponent(x));
  };
  auto add = [&](double x, bool major, bool labelled) {
    const float p = NumberToWorld(x);
    bool grid = FMajorGridMode == TQyMajorGridMode::AtMajorTick && major;
    if (labelled && FNumbersVisible && x <= FStop * (1 + 1e-12)) {
      AddLabel(text(x), x, p);
      grid = grid || FMajorGridMode == TQyMajorGridMode::AtLabel;
    }
    FTickPositions.Add(p);
    FMajorFlags.Add(major);
    FGridFlags.Add(grid);
  };
  double x = 0;
  if (FMajorTickPart > 1.001) {
    const int stride = std::max(1, RoundI(FTickPart));
    long long k = 0;
    // Start at a multiple of the major part, so that majors (and labels) fall on its multiples
    // even when the start end was only rounded to a multiple of 3 decades; ticks before the start
    // are skipped.
    decade = std::floor(decade / FMajorTickPart) * FMajorTickPart;
    int steps = 0; // ticks before the start are walked but not kept: bound the walk itself
    do {
      x = Exp10(double(k) + decade);
      if (x >= FStart * (1 - 1e-9)) add(x, k == 0, k == 0 && RoundI(std::fabs(decade)) % labelEvery == 0);
      k += stride;
      if (double(k) >= FMajorTickPart) k = 0, decade += FMajorTickPart;
    } while (x < FStop && FTickPositions.Count() < MaxTicks && ++steps < 2 * MaxTicks);
  } else {
    do {
      x = mant > 0 ? Exp10(decade) * (mant + pad) * 10.0 : Exp10(decade);
      const bool labelled = (FLabelPart <= 1.0 && RoundI(mant * 10.0 / FLabelPart) % 10 == 0) ||
                            (mant == 0 && RoundI(std::fabs(decade)) % labelEvery == 0);
      add(x, mant == 0, labelled);
      mant += FTickPart;
      if (mant + pad >= 0.99) mant = 0, decade += 1;
    } while (x < FStop && FTickPositions.Count() < MaxTicks);
  }
}

// Rubrics: a text names the interval right of its index, so it stands half a label step on.
void TQyAxis::RubricsTicks() {
  FRangeExponent = 0;
  double first = FStart, last = FStop;
  const double tick = FTickPart == 0 ? 1.0 : FTickPart;
  if (TicksFromRoundedEnds()) first = RoundUp(FStart, tick, 0), last = RoundDown(FStop, tick, 0);
  const double nd = (last - first) / tick + 1.0;
  const long long n = std::isfinite(nd) && nd < MaxTicks ? Round(nd) : 0;
  if (n < 2) return; // one tick gives no interval: nothing is drawn
  const double step = (last - first) / double(n - 1);
  const double eps = 0.004 * step;
  float shift = float(RoundI(FLabelPart / FScale * 0.5));
  if (FTwisted) shift = -shift;
  if (!GetHorizontal()) shift = -shift;
  double nextMajor = RoundUp(FStart, FMajorTickPart, 0);
  double nextLabel = RoundUp(FStart, FLabelPart, 0);
  double x = first;
  for (long long i = 0; i < n; ++i) {
    const float p = NumberToWorld(x);
    bool major = false, grid = false;
    if (std::fabs(x - nextMajor) < eps) {
      major = grid = true;
      if (FNumbersVisible && std::fabs(x - nextLabel) < eps) {
        const int index = RoundI(x); // saturates far beyond any list of rubrics
        if (x < FStop && index >= 0 && index < FRubrics.size()) AddLabel(FRubrics[index], x, p + shift);
        nextLabel = RoundUp(x + step, FLabelPart, 0);
      }
    }
    FTickPositions.Add(p);
    FMajorFlags.Add(major);
    FGridFlags.Add(grid);
    x += step;
    nextMajor = RoundUp(x, FMajorTickPart, 0);
  }
}

// The common power of ten stands once, between the last two labels unless there is room past
// the last one.
void TQyAxis::PlaceExtraExponent() {
  const int n = int(FTickLabels.size());
  if (!FNumbersVisible || !FExtraExponentOn || n < 2) return;
  TQyRichCaptionObject& e = *FExtraExponentCaption;
  e.SetCaption(QString::fromUtf8("\u00B710\\+") + QString::number(FLabelExponent));
  const TQyRichCaptionObject& last = *FTickLabels[n - 1];
  const TQyRichCaptionObject& prev = *FTickLabels[n - 2];
  const float d = FDistanceAxisExtraExponent;
  if (GetHorizontal()) {
    e.X = FOriginX + FAxisLength > last.X ? (last.X + FOriginX + FAxisLength) / 2 : (last.X + prev.X) / 2;
    const bool bottom = FPosition == TQyAxisPosition::Bottom;
    e.Y = bottom ? FLabelBaseY + d : FLabelBaseY - d;
    e.Alignment = bottom ? TQyContentAlignment::TopCenter : TQyContentAlignment::BottomCenter;
  } else {
    e.Y = last.Y > FOriginY ? (FOriginY + last.Y) / 2 : (last.Y + prev.Y) / 2;
    const bool left = FPosition == TQyAxisPosition::Left;
    e.X = left ? FLabelBaseX - d : FLabelBaseX + d;
    e.Alignment = left ? TQyContentAlignment::MiddleRight : TQyContentAlignment::MiddleLeft;
  }
  e.FillColorOverride = FNumbersColor;
  e.ParseForSize(nullptr, this);
}

// The caption stands beyond the labels (or at their base point without labels), upright on a
// vertical axis unless asked to stay horizontal; left-justified means at the axis's start.
void TQyAxis::PlaceCaption() {
  using A = TQyContentAlignment;
  TQyRichCaptionObject& c = *FCaptionObject;
  const bool h = FCaptionHorizontalOnVerticalAxis;
  const float d = GetDistanceNumbersCaption();
  const bool numbers = FNumbersVisible && !FTickLabels.empty();
  c.Angle = !GetHorizontal() && !h ? 90 : 0;
  const int col = FCaptionAlignment == TAlignment::LeftJustify ? 0 : FCaptionAlignment == TAlignment::RightJustify ? 1 : 2;
  switch (FPosition) {
  case TQyAxisPosition::Bottom:
  case TQyAxisPosition::Top: {
    const bool bottom = FPosition == TQyAxisPosition::Bottom;
    c.Y = !numbers ? FLabelBaseY : bottom ? FLabelBaseY + d + FMaxLabelHeight : FLabelBaseY - d - FMaxLabelHeight;
    const float xs[] = {FOriginX, FOriginX + FAxisLength, FAxisLength / 2 + FOriginX};
    const A bottoms[] = {A::TopLeft, A::TopRight, A::TopCenter};
    const A tops[] = {A::BottomLeft, A::BottomRight, A::BottomCenter};
    c.X = xs[col];
    c.Alignment = bottom ? bottoms[col] : tops[col];
    break;
  }
  case TQyAxisPosition::Left:
  case TQyAxisPosition::Right: {
    const bool left = FPosition == TQyAxisPosition::Left;
    c.X = !numbers ? FLabelBaseX : left ? FLabelBaseX - d - FMaxLabelWidth : FLabelBaseX + d + FMaxLabelWidth;
    const float ys[] = {FOriginY + FAxisLength, FOriginY, FAxisLength / 2 + FOriginY};
    const A lefts[] = {A::BottomLeft, A::BottomRight, A::BottomCenter};
    const A leftsH[] = {A::BottomRight, A::TopRight, A::MiddleRight};
    const A rights[] = {A::TopLeft, A::TopRight, A::TopCenter};
    const A rightsH[] = {A::BottomLeft, A::TopLeft, A::MiddleLeft};
    c.Y = ys[col];
    c.Alignment = left ? (h ? leftsH[col] : lefts[col]) : (h ? rightsH[col] : rights[col]);
    break;
  }
  }
}
