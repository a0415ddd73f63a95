// Ranges of an axis: the hull of its series' data, the end modes, and the rounding of the ends.
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include "QySeries.h"
#include <cmath>

namespace {
constexpr double MaxDouble = 1.7976931348623157e308;

// Decimal exponent of |x| (0 for 0): the power of ten at or below it.
int TenthExponent(double x) {
  x = std::fabs(x);
  if (x == 0 || !std::isfinite(x)) return 0;
  int e = int(std::floor(std::log10(x)));
  if (std::pow(10.0, e) > x) --e; // guard against log10 rounding up
  return e;
}

bool Usable(double lo, double hi) { return std::isfinite(lo) && std::isfinite(hi) && lo <= hi; }
} // namespace

void TQyAxis::RangeModified() {
  if (!FZoomStarts.empty()) {
    if (FStartEnd != TQyAxisEnd::AutoRange) SetStart(FZoomStarts.front());
    if (FStopEnd != TQyAxisEnd::AutoRange) SetStop(FZoomStops.front());
  }
  if (Series().isEmpty()) {
    Modified();
    return;
  }
  FDataMin = MaxDouble;
  FDataMax = -MaxDouble;
  ZoomClearBuffer();
  FRangeChanged = true;
  DoInvalidate();
}

void TQyAxis::GetNewRanges() {
  if (!FRangeChanged) return;
  double lo = MaxDouble, hi = -MaxDouble;
  for (TQySeries* s : Series()) {
    const double smin = GetHorizontal() ? s->LimitMinX() : s->LimitMinY();
    const double smax = GetHorizontal() ? s->LimitMaxX() : s->LimitMaxY();
    if (!Usable(smin, smax)) continue;
    lo = std::min(lo, smin);
    hi = std::max(hi, smax);
  }
  if (hi >= lo && lo == FDataMin && hi == FDataMax) {
    FRangeChanged = false;
    return; // unchanged data: nothing to repaint
  }
  FHullMin = lo, FHullMax = hi;
  if (hi < lo) {
    lo = FSetStart;
    hi = FSetStop;
  }
  FDataMin = lo;
  FDataMax = hi;
  if (FStopEnd != TQyAxisEnd::MovingSlit) {
    switch (FStartEnd) {
    case TQyAxisEnd::AutoRange: break;
    case TQyAxisEnd::FirstSet: lo = std::min(FDataMin, FStart); break;
    default: lo = FStart; FDataMin = FStart; break;
    }
    switch (FStopEnd) {
    case TQyAxisEnd::AutoRange: break;
    case TQyAxisEnd::FirstSet: hi = FDataMax <= FStop ? FStop : FDataMax; break;
    default: hi = FStop; FDataMax = FStop; break;
    }
  } else {
    double width = FMovingSlitWidth > 0 ? FMovingSlitWidth : FSetStop - FSetStart;
    if (width <= 0) width = 1;
    double inc = FMovingSlitIncrement;
    if (inc <= 0 || inc > width) inc = width / 3;
    double t = FSetStart + width;
    // Jump in whole increments; computed, not looped, so that far data cannot hang the paint.
    if (t < FDataMax) t += std::ceil((FDataMax - t) / inc) * inc;
    hi = t;
    lo = t - width <= FDataMin ? FSetStart : t - width;
  }
  RoundEnds(lo, hi);
  FLastStart = FStart = lo;
  FLastStop = FStop = hi;
  Modified();
  FEndsRounded = true; // RoundEnds has just run for these ends
  FRangeChanged = false;
}

// Repairs the range, chooses log or linear mapping, and rounds the ends to whole ticks.
void TQyAxis::RoundEnds(double& start, double& stop) {
  FExtraExponentOn = false;
  const bool log = FScaling == TQyAxisScaling::Log || FScaling == TQyAxisScaling::LogEE;
  if (!std::isfinite(start) || !std::isfinite(stop)) {
    start = log ? 1 : 0;
    stop = log ? 10 : 100;
  }
  if (start > stop) {
    start = log ? 1 : 0;
    stop = log ? 10 : 100;
  }
  if (start == stop) {
    const double d = stop != 0 ? std::pow(10.0, TenthExponent(start)) : 1.0;
    if (FStartEnd == TQyAxisEnd::AutoRange) start -= d;
    if (FStopEnd == TQyAxisEnd::AutoRange || FStartEnd != TQyAxisEnd::AutoRange) stop += d;
  }
  FLogActive = false;
  if (log) {
    if (start <= 0) start = FDataMin > 0 && FDataMin < stop ? FDataMin : 0.01;
    if (stop <= 0) stop = 1.0;
    FLogStart = std::log10(start);
    FLogStop = std::log10(stop);
    FLogActive = FLogToNormalScalingLevel == 0 || FLogStop - FLogStart > FLogToNormalScalingLevel;
  }
  if (FLogActive) {
    // Whole decades outward.
    start = std::pow(10.0, std::floor(FLogStart + 1e-9));
    stop = std::pow(10.0, std::ceil(FLogStop - 1e-9));
    FLogStart = std::log10(start);
    FLogStop = std::log10(stop);
    FRangeExponent = int(Round(FLogStop - FLogStart));
    return;
  }
  const double r = stop - start;
  start -= r * FStartPadding;
  stop += r * FStopPadding;
  FRangeExponent = TenthExponent(stop - start);
  if (FAutoTickParts) {
    FLabelPart = 0.2; // refined by the tick partitioning for the pixels at hand
    FMajorTickPart = 0.1;
    FTickPart = 0.02;
  }
  if (FEndRounding == TQyAxisEndRounding::RndNothing) return;
  const double step = MajorIncrement();
  if (step > 0 && std::isfinite(step) && (stop - start) / step < 1e6) {
    start = std::floor(start / step + 1e-9) * step;
    stop = std::ceil(stop / step - 1e-9) * step;
  }
}

double TQyAxis::MajorIncrement() const {
  return (FLogActive ? 1.0 : std::pow(10.0, FRangeExponent)) * FMajorTickPart;
}

double TQyAxis::MinorIncrement() const {
  return (FLogActive ? 1.0 : std::pow(10.0, FRangeExponent)) * FTickPart;
}

// The visible range cuts data off. Measured against the data hull itself, so that data beyond a
// fixed end is clipped at the data area too rather than drawn over the axes.
bool TQyAxis::GetIsClipped() const {
  if (FRangeChanged || !Graph() || Series().isEmpty() || !(FHullMin < FHullMax)) return false;
  const double m = (FStop - FStart) * 1e-8;
  return FStart - m > FHullMin || FStop + m < FHullMax;
}
