// Ranges of an axis: the hull of its series' data, the end modes, the repair and rounding of the
// ends, the choice between logarithmic and linear mapping, and slave axes.
#include "QyAxis.h"
#include "QyCalendar.h"
#include "QyMath.h"
#include "QyRounding.h"
#include <cmath>

namespace {
bool Usable(double lo, double hi) { return std::isfinite(lo) && std::isfinite(hi) && lo <= hi; }
bool IsLog(TQyAxisScaling s) { return s == TQyAxisScaling::Log || s == TQyAxisScaling::LogEE; }
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
  FDataMin = QyMaxDouble;
  FDataMax = -QyMaxDouble;
  ZoomClearBuffer();
  FRangeChanged = true;
  DoInvalidate();
}

void TQyAxis::GetNewRanges() {
  if (!FRangeChanged) return;
  double lo = QyMaxDouble, hi = -QyMaxDouble;
  for (IQyAxisSeries* s : Series()) {
    double smin, smax;
    s->DataExtent(GetHorizontal(), smin, smax);
    if (!Usable(smin, smax)) continue; // no data, or non-finite values: no say in the range
    lo = std::min(lo, smin);
    hi = std::max(hi, smax);
  }
  if (hi >= lo && lo == FDataMin && hi == FDataMax) {
    FRangeChanged = false;
    return; // unchanged data: nothing to repaint
  }
  FHullMin = lo, FHullMax = hi;
  if (hi < lo) lo = FSetStart, hi = FSetStop;
  FDataMin = lo;
  FDataMax = hi;
  if (FStopEnd != TQyAxisEnd::MovingSlit) {
    switch (FStartEnd) {
    case TQyAxisEnd::AutoRange: break;
    case TQyAxisEnd::FirstSet: lo = std::min(FDataMin, FStart); break;
    default: lo = FStart, FDataMin = FStart; break;
    }
    switch (FStopEnd) {
    case TQyAxisEnd::AutoRange: break;
    case TQyAxisEnd::FirstSet: hi = FDataMax <= FStop ? FStop : FDataMax; break;
    default: hi = FStop, FDataMax = FStop; break;
    }
  } else {
    double width = FMovingSlitWidth > 0 ? FMovingSlitWidth : FSetStop - FSetStart;
    if (!(width > 0)) width = 1;
    double inc = FMovingSlitIncrement;
    if (inc <= 0 || inc > width) inc = width / 3;
    double t = FSetStart + width;
    // Whole increments, counted rather than looped, so that far data cannot stall a paint.
    if (t < FDataMax) t += std::ceil((FDataMax - t) / inc) * inc;
    hi = t;
    lo = t - width <= FDataMin ? FSetStart : t - width;
  }
  RoundEnds(lo, hi);
  // Data that grow inside the rounded ends change nothing on screen but the clip: no layout, and
  // the series' points go on incrementally. This keeps appending to a live series cheap.
  const bool sameEnds = lo == FStart && hi == FStop && !FNeedsCalc;
  FLastStart = FStart = lo;
  FLastStop = FStop = hi;
  if (sameEnds) DoInvalidate();
  else Modified();
  FEndsRounded = true; // RoundEnds has just run for these ends
  FRangeChanged = false;
}

// The smallest positive value below `below` among the points of the attached series.
double TQyAxis::SmallestPositiveData(double below) const {
  double best = QyMaxDouble;
  for (IQyAxisSeries* s : Series()) {
    const double v = s->SmallestPositive(GetHorizontal(), below);
    if (v > 0 && v < best) best = v;
  }
  return best < QyMaxDouble ? best : 0;
}

// Repairs impossible ends, decides log or linear mapping, finds the parts, and rounds the ends
// as EndRounding asks.
void TQyAxis::RoundEnds(double& start, double& stop) {
  // The label-fit search below sizes labels by the font: read it now, since ranging may run
  // before the first layout pass has read it (the first picture would differ from later ones).
  FFontSize = FFont->GetSize();
  FExtraExponentOn = false;
  const bool log = IsLog(FScaling), dateTime = FScaling == TQyAxisScaling::DateTime;
  if (!std::isfinite(start) || !std::isfinite(stop)) start = log ? 1 : 0, stop = log ? 10 : 100;
  if (dateTime) start = std::max(start, MinDateTime), stop = std::min(stop, MaxDateTime);
  if (FScaling == TQyAxisScaling::Seconds || FScaling == TQyAxisScaling::Rubrics) {
    if (start < 0) start = 0;
    if (stop < 0) stop = 1.0;
  }
  if (start > stop) {
    if (dateTime) std::swap(start, stop);
    else start = log ? 1 : 0, stop = log ? 10 : 100;
  }
  if (start == stop) {
    if (dateTime) {
      stop = start + 1.0 / 1440;
      if (stop > MaxDateTime) start -= 1.0 / 1440, stop = MaxDateTime;
    } else {
      const double d = stop != 0 ? Exp10(Real10thExponent(start)) : 1.0;
      if (FStartEnd == TQyAxisEnd::AutoRange) start -= d;
      if (FStopEnd == TQyAxisEnd::AutoRange || FStartEnd != TQyAxisEnd::AutoRange) stop += d;
      if (!std::isfinite(start) || !std::isfinite(stop) || start == stop) start = 0, stop = 100;
    }
  }
  FLogActive = false;
  if (log) {
    if (start <= 0) {
      start = FDataMin > 0 && FDataMin < QyMaxDouble ? FDataMin : SmallestPositiveData(stop);
      if (start <= 0) start = 0.01;
    }
    if (stop <= 0) stop = 1.0;
    if (start >= stop) stop = start * 10;
    FLogStart = std::log10(start);
    FLogStop = std::log10(stop);
    FLogActive = FLogToNormalScalingLevel == 0 || FLogStop - FLogStart > FLogToNormalScalingLevel;
  }
  const bool pan = InPanDrag();
  if (FAutoTickParts && !pan) {
    if (FLogActive) {
      GetLogAxisParts(start, stop);
    } else {
      const double r = stop - start;
      start -= r * FStartPadding;
      stop += r * FStopPadding;
      switch (FScaling) {
      case TQyAxisScaling::Seconds: GetSecParameters(start, stop); break;
      case TQyAxisScaling::DateTime: GetDtParameters(start, stop); break;
      case TQyAxisScaling::Rubrics: FLabelPart = FMajorTickPart = FTickPart = 1.0, FRangeExponent = 0; break;
      default: GetNormalAxisParts(start, stop); break;
      }
    }
  } else if (FLogActive) {
    FRangeExponent = int(Round(std::log10(stop) - std::log10(start)));
  } else if (FScaling != TQyAxisScaling::Seconds && FScaling != TQyAxisScaling::DateTime) {
    FRangeExponent = Real10thExponent(stop - start);
  }
  if (!pan) {
    const bool zoomed = GetCanZoomBack();
    using E = TQyAxisEndRounding;
    int mode = 0; // 0 none, 1 minor, 2 major
    switch (FEndRounding) {
    case E::RndToMajorZoomToMinor: mode = zoomed ? 1 : 2; break;
    case E::RndToMajorZoomToNothing: mode = zoomed ? 0 : 2; break;
    case E::RndToMajor: mode = 2; break;
    case E::RndToMinorZoomToNothing: mode = zoomed ? 0 : 1; break;
    case E::RndToMinor: mode = 1; break;
    case E::RndNothing: break;
    }
    if (mode > 0) {
      // An end that would round past the largest double keeps its value; -0 becomes 0.
      const double s = RoundEnd(start, false, mode == 2) + 0.0, e = RoundEnd(stop, true, mode == 2) + 0.0;
      if (std::isfinite(s)) start = s;
      if (std::isfinite(e)) stop = e;
    }
  }
  if (dateTime) start = std::max(start, MinDateTime), stop = std::min(stop, MaxDateTime);
  if (FLogActive) {
    FRangeExponent = int(Round(std::log10(stop) - std::log10(start)));
    if (FLabelPart < FTickPart) FLabelPart = FTickPart;
    FLogStart = std::log10(start);
    FLogStop = std::log10(stop);
    if (FTickPart < 0.1) FTickPart = 0.1;
    if (FMajorTickPart < 1.0) FMajorTickPart = 1.0;
    if (FLabelPart < FTickPart) FLabelPart = FTickPart;
  } else {
    GetExponentAndDigits(start, stop);
  }
}

double TQyAxis::RoundEnd(double value, bool up, bool major) const {
  if (FLogActive) {
    const double step = major ? FMajorTickPart : FTickPart;
    return up ? RoundLogUp(value, FMajorTickPart, step) : RoundLogDown(value, FMajorTickPart, step);
  }
  switch (FScaling) {
  case TQyAxisScaling::Seconds:
    return SecondsRound(value, major ? FMajorTickPart : FTickPart, FSecParameters.Exponent, up);
  case TQyAxisScaling::DateTime: return DateTimeRound(value, up, major);
  default: break;
  }
  const double part = major ? FMajorTickPart : FTickPart;
  return up ? RoundUp(value, part, FRangeExponent) : RoundDown(value, part, FRangeExponent);
}

// A slave shows its master's range in its own units (offset + slope * value) and has no range
// logic of its own: rounding runs for its parts and digits only, never for its ends.
void TQyAxis::ApplyMaster() {
  TQyAxis* m = FMasterAxis;
  if (!FIsSlaveAxis || !m || m == this || !(m->FStart <= m->FStop)) return;
  FScaling = m->FScaling;
  if (!m->FEndsRounded) {
    double s = m->FStart, e = m->FStop;
    m->RoundEnds(s, e);
    m->FStart = s, m->FStop = e;
    m->FEndsRounded = true;
  }
  double a = FSlaveOffset + m->FStart * FSlaveSlope, b = FSlaveOffset + m->FStop * FSlaveSlope;
  if (a > b) std::swap(a, b); // a negative slope shows the same numbers, ascending
  const bool plain = FSlaveOffset == 0 && FSlaveSlope == 1;
  double s = a, e = b;
  RoundEnds(s, e);
  FStart = a, FStop = b;
  if (plain) FLabelPart = m->FLabelPart, FMajorTickPart = m->FMajorTickPart, FTickPart = m->FTickPart;
  if (FLogActive) FLogStart = std::log10(a), FLogStop = std::log10(b);
  FEndsRounded = true;
}

// The visible range cuts data off. Measured against the data hull itself, so that data beyond a
// fixed end is clipped at the data area too rather than drawn over the axes.
bool TQyAxis::GetIsClipped() const {
  if (FRangeChanged || !Graph() || Series().isEmpty() || !(FHullMin < FHullMax)) return false;
  const double m = (FStop - FStart) * 1e-8;
  return FStart - m > FHullMin || FStop + m < FHullMax;
}
