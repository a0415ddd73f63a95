// Tick partitioning of an axis: where the ticks stand, which are major, and the label texts.
#include "QyAxis.h"
#include "QyRounding.h"
#include "QyTextFormat.h"
#include <QFontMetricsF>
#include <cmath>

namespace {
// Label steps tried, as multiples of a power of ten, finest first.
constexpr double LabelMultiples[] = {1, 2, 5};
constexpr int MaxTicks = 20000; // guards against absurd requests; a sane axis has a few hundred
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

QString TQyAxis::LabelText(double value) const {
  QString text;
  if (FScaling == TQyAxisScaling::Rubrics) {
    const long long i = Round(value);
    text = i >= 0 && i < FRubrics.size() ? FRubrics[int(i)] : QString();
  } else {
    text = FloatToStr(value);
  }
  if (OnGetScaleLabel) OnGetScaleLabel(const_cast<TQyAxis*>(this), value, text);
  return text;
}

void TQyAxis::AddLabel(double value, float pixel) {
  auto label = std::make_unique<TQyRichCaptionObject>();
  label->Font()->Assign(*FFont);
  label->Font()->SetFillColor(FNumbersColor);
  label->SetCaption(LabelText(value));
  const float gap = FDistanceAxisLabels + (FTicksPointToData ? 2.0f : FMajorTickLength + 2.0f);
  switch (FPosition) {
  case TQyAxisPosition::Bottom:
    label->Alignment = TQyContentAlignment::TopCenter;
    label->X = pixel, label->Y = FOriginY + gap;
    break;
  case TQyAxisPosition::Top:
    label->Alignment = TQyContentAlignment::BottomCenter;
    label->X = pixel, label->Y = FOriginY - gap;
    break;
  case TQyAxisPosition::Left:
    label->Alignment = TQyContentAlignment::MiddleRight;
    label->X = FOriginX - gap, label->Y = pixel;
    break;
  case TQyAxisPosition::Right:
    label->Alignment = TQyContentAlignment::MiddleLeft;
    label->X = FOriginX + gap, label->Y = pixel;
    break;
  }
  label->ParseForSize(nullptr, this);
  FMaxLabelWidth = std::max(FMaxLabelWidth, label->Width());
  FMaxLabelHeight = std::max(FMaxLabelHeight, label->Height());
  FTickLabels.push_back(std::move(label));
}

// The smallest label step whose labels do not crowd each other on the axis.
static double ChooseLabelStep(const TQyAxis& axis, double start, double stop, double unitsPerPixel,
                              const QFontMetricsF& fm, float factor, bool horizontal,
                              double& multiple) {
  const double range = stop - start;
  int e = int(std::floor(std::log10(range))) - 2;
  for (int guard = 0; guard < 8; ++guard, ++e) {
    for (double m : LabelMultiples) {
      const double step = m * std::pow(10.0, e);
      if (range / step > MaxTicks / 10.0) continue;
      const double need = horizontal
                              ? std::max(fm.horizontalAdvance(FloatToStr(start)),
                                         fm.horizontalAdvance(FloatToStr(stop))) + fm.height()
                              : fm.height() * 1.5;
      if (step / unitsPerPixel >= need * factor) {
        multiple = m;
        return step;
      }
    }
  }
  multiple = 1;
  return range;
}

void TQyAxis::CalculateTicks() {
  if (FAxisLength <= 0) FAxisLength = 100;
  FScale = FLogActive ? (FLogStop - FLogStart) / FAxisLength : (FStop - FStart) / FAxisLength;
  if (!(FScale > 0) || !std::isfinite(FScale)) FScale = 1.0 / FAxisLength; // repaired range
  ClearTicks();
  const bool horizontal = GetHorizontal();
  auto addTick = [&](double v, bool major, bool label) {
    const float p = NumberToWorld(v);
    FTickPositions.Add(p);
    FMajorFlags.Add(major);
    FGridFlags.Add(FMajorGridMode == TQyMajorGridMode::AtLabel ? label : major);
    if (label && FNumbersVisible) AddLabel(v, p);
  };
  if (FLogActive) {
    const int d0 = int(std::floor(FLogStart + 1e-9)), d1 = int(std::ceil(FLogStop - 1e-9));
    for (int d = d0; d <= d1 && FTickPositions.Count() < MaxTicks; ++d)
      for (int k = 1; k <= 9; ++k) {
        const double v = k * std::pow(10.0, d);
        if (v < FStart * (1 - 1e-12) || v > FStop * (1 + 1e-12)) continue;
        addTick(v, k == 1, k == 1);
      }
  } else if (FScaling == TQyAxisScaling::Rubrics) {
    for (double v = std::ceil(FStart); v <= FStop && FTickPositions.Count() < MaxTicks; v += 1)
      addTick(v, true, true);
  } else {
    double multiple = 1;
    const QFontMetricsF fm(FFont->ToQFont());
    const double label = ChooseLabelStep(*this, FStart, FStop, FScale, fm, FLabelDistanceFactor,
                                         horizontal, multiple);
    const double major = multiple == 5 ? label / 5 : label / 2;
    const double minor = label / 10;
    const double unit = std::pow(10.0, FRangeExponent);
    if (FAutoTickParts) {
      FLabelPart = label / unit;
      FMajorTickPart = major / unit;
      FTickPart = minor / unit;
    }
    const long long k0 = (long long)std::ceil(FStart / minor - 1e-9);
    const long long k1 = (long long)std::floor(FStop / minor + 1e-9);
    const long long perMajor = std::max<long long>(1, Round(major / minor));
    const long long perLabel = std::max<long long>(1, Round(label / minor));
    for (long long k = k0; k <= k1 && FTickPositions.Count() < MaxTicks; ++k) {
      double v = k * minor;
      if (std::fabs(v) < minor * 1e-9) v = 0; // no "-0" or "1E-17" at zero
      addTick(v, k % perMajor == 0, k % perLabel == 0);
    }
  }
  if (OnGetTicks) OnGetTicks(this);
}
