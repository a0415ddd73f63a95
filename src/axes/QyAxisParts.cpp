// Partition finders of an axis: how coarse the labels may be so that they fit, how many digits a
// label needs, and when a common power of ten leaves the labels for one extra exponent.
#include "QyAxis.h"
#include "QyMath.h"
#include "QyMeasure.h"
#include "QyRounding.h"
#include "QyTextFormat.h"
#include <cmath>

namespace {
// A search gives up after this many candidates; a sane range needs a dozen.
constexpr int MaxPartSearch = 60;
} // namespace

// The room labels have: the control's extent along the axis. On a graph that is the graph's
// client extent, which the layout gives the control anyway; reading it from the graph keeps the
// first layout of a new axis from fitting labels into the control's initial size.
int TQyAxis::LabelExtent() const {
  const QSize room = Graph() ? Graph()->LayoutSize() : size();
  return GetHorizontal() ? room.width() : room.height();
}

// Estimated extent of a label along the axis, before any layout: no canvas needed. The factors
// are for a screen's 96 dots per inch; output of another resolution scales them.
float TQyAxis::ApproxLen(double value, QString text) const {
  if (OnGetScaleLabel) OnGetScaleLabel(const_cast<TQyAxis*>(this), value, text);
  const QPaintDevice* device = QyMeasureDevice();
  const float size = FFontSize * (device ? device->logicalDpiY() / 96.0f : 1.0f);
  const float a = float(text.size()) * size * 1.6f;
  const float b = size * 2.5f;
  return GetHorizontal() ? a * FCosAngle + b * FSinAngle : a * FSinAngle + b * FCosAngle;
}

// Label steps 10, 5, 2, 1, 0.5, ... of 10^FRangeExponent, finest first that no longer fits with a
// 70-pixel gap per interval; that candidate is kept, the gap being the margin that makes it safe.
void TQyAxis::GetNormalAxisParts(double start, double stop) {
  const double extent = LabelExtent();
  FRangeExponent = Real10thExponent(stop - start);
  const double span = ExpMinus(stop - start, FRangeExponent);
  int index = 0;
  double factor = 10.0;
  for (int guard = 0; guard < MaxPartSearch; ++guard) {
    const double part = FLabelPartitions[index];
    FLabelPart = part * factor;
    GetExponentAndDigits(start, stop);
    const float len = std::max(ApproxLen(start, NormalCaption(start)), ApproxLen(stop, NormalCaption(stop)));
    const double count = std::trunc(span / (part * factor) + 0.5) + 1; // a count, kept as a double
    const double need = count * len + (count - 1) * 70 * FLabelDistanceFactor;
    if (!(need < extent)) break;
    if (++index > 2) {
      index = 0;
      factor /= 10;
    }
  }
  FLabelPart = FLabelPartitions[index] * factor;
  FMajorTickPart = FMajorPartitions[index] * factor;
  FTickPart = FMinorPartitions[index] * factor;
  GetExponentAndDigits(start, stop); // digits for the kept candidate
}

// Decades per label on a logarithmic axis; past 3 decades the parts come in thirds of decades.
void TQyAxis::GetLogAxisParts(double start, double stop) {
  const double extent = LabelExtent();
  FRangeExponent = int(Round(std::log10(stop) - std::log10(start)));
  FLabelPart = 1;
  auto estimate = [this](double x) {
    if (FScaling == TQyAxisScaling::LogEE)
      return ApproxLen(x, "10" + QString::number(Round(std::log10(x))));
    return ApproxLen(x, FloatToStr(x));
  };
  const double len = 0.51 * std::max(estimate(start), estimate(stop));
  for (int guard = 0; guard < 10000; ++guard) {
    const double count = std::trunc(FRangeExponent / FLabelPart + 0.5) + 1;
    const double need = count * len + (count - 1) * 30 * FLabelDistanceFactor;
    if (need <= extent) break;
    FLabelPart += 1.0;
  }
  if (FLabelPart < 3) {
    FMajorTickPart = 1.0;
    FTickPart = 0.1;
  } else {
    FLabelPart = 3.0 * double(Round(FLabelPart / 3));
    FMajorTickPart = FLabelPart;
    FTickPart = FMajorTickPart / 3;
  }
  if (FTickPart < 0.1) FTickPart = 0.1;
}

// The exponent of the larger end (an end exactly 0 does not count), the digit count of labels,
// and whether that exponent leaves the labels.
void TQyAxis::GetExponentAndDigits(double start, double stop) {
  const int ea = Real10thExponent(start), eb = Real10thExponent(stop);
  if (eb > ea) FLabelExponent = stop == 0 ? ea : eb;
  else FLabelExponent = start == 0 ? eb : ea;
  if (FScaling == TQyAxisScaling::DateTime) return;
  if (FScaling == TQyAxisScaling::Seconds) {
    const double m = std::max(start, stop);
    FSecParameters.Format = m / 86400 >= 1 ? TQySecondsFormatRange::Day
                          : m / 3600 >= 1  ? TQySecondsFormatRange::Hour
                          : m / 60 >= 1    ? TQySecondsFormatRange::Minute
                                           : TQySecondsFormatRange::Second;
  } else {
    FDigits = FLabelExponent - FRangeExponent - Real10thExponent(FLabelPart) + LastSignificant(FLabelPart) - 1;
    FExtraExponentOn = (Real10thExponent(FMaxForExtraExponent) < FLabelExponent && FLabelExponent >= FDigits) ||
                       Real10thExponent(FMinForExtraExponent) > FLabelExponent;
    FDigits += FExtraDigits;
    if (FDigits < 0) FDigits = 0;
    if (FExtraDigits > 0 && FLabelExponent + FExtraDigits >= FDigits && !FExtraExponentOn)
      FDigits = FLabelExponent + FExtraDigits;
  }
  if (FTickPart < 1e-5) FTickPart = 0.1;
  if (FMajorTickPart < FTickPart) FMajorTickPart = FTickPart;
  if (FLabelPart < FTickPart) FLabelPart = FTickPart;
}

// The text of a linear label: a mantissa under the extra exponent, else the value with the
// decimals the partition needs.
QString TQyAxis::NormalCaption(double value) const {
  if (FExtraExponentOn)
    return FloatToStrF(ExpMinus(value, FLabelExponent), TFloatFormat::Fixed, 18, std::clamp(FDigits, 0, 18));
  const int decimals = FLabelExponent < FDigits ? FDigits - FLabelExponent : 0;
  return FloatToStrF(value, TFloatFormat::Fixed, 18, std::clamp(decimals, 0, 18));
}
