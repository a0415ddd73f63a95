// Ranges of an axis: the hull of its series' data, the end modes, the repair and rounding of the
// ends, the choice between logarithmic and linear mapping, and slave axes.
#include "QyAxis.h"
#include "QyCalendar.h"
#include "QyMath.h"
#include "QyRounding.h"
#include <algorithm>
#include <cmath>

namespace {
bool Usable(double lo, double hi) { return std::isfinite(lo) && std::isfinite(hi) && lo <= hi; }
bool IsLog(TQyAxisScaling s) { return s == TQyAxisScaling::Log || s == TQyAxisScaling::LogEE; }
} // namespace

void TQyAxis::RangeModified() {
  if (IQyAxisHost* g = Graph(); g && g->Reading()) return; // the document holds the ranges
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
  RoundEnds(lo, hi, true);
  // Data that grow inside the rounded ends change nothing on screen but the clip: no layout, and
  // the series' points go on incrementally. This keeps appending to a live series cheap.
  const bool sameEnds = lo == FStart && hi == FStop && !FNeedsCalc;
  FLastStart = FStart = lo;
  FLastStop = FStop = hi;
  if (sameEnds) DoInvalidate();
  else Modified(); // the layout rounds these ends again, to the same ends and parts
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

namespace {
// The widest ends a range may have: their difference stays a finite double even after each end
// has been rounded outward by a part, so that the scale and the tick walk stay finite.
constexpr double WidestEnd = QyMaxDouble / 4;
// Rounding rounds after new parts: a few rounds settle any range (one or two in practice).
constexpr int MaxSettleRounds = 4;
} // namespace

// Repairs impossible ends, decides log or linear mapping, finds the parts, and rounds the ends
// as EndRounding asks. The parts depend on the ends and rounding moves the ends, so parts and
// rounding repeat until the ends stay: the result rounds to itself, and a later layout that
// rounds the ends again (after any change of the axis) shows the same picture.
void TQyAxis::RoundEnds(double& start, double& stop, bool padToData) {
  // The label-fit search below sizes labels by the font: read it now, since ranging may run
  // before the first layout pass has read it (the first picture would differ from later ones).
  FFontSize = FFont->GetSize();
  FExtraExponentOn = false;
  RepairEnds(start, stop);
  const bool pan = InPanDrag();
  if (padToData && FAutoTickParts && !pan && !FLogActive) PadEnds(start, stop);
  for (int round = 0; round < MaxSettleRounds; ++round) {
    FindParts(start, stop, pan);
    if (pan || !RoundToParts(start, stop)) break;
  }
  if (FScaling == TQyAxisScaling::DateTime) start = std::max(start, MinDateTime), stop = std::min(stop, MaxDateTime);
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

// Ends that no axis can show become ends it can: finite, ordered, apart, inside the calendar on a
// date-time axis, positive on a logarithmic one, and not so far apart that their difference
// overflows. Decides the logarithmic mapping.
void TQyAxis::RepairEnds(double& start, double& stop) {
  const bool log = IsLog(FScaling), dateTime = FScaling == TQyAxisScaling::DateTime;
  if (!std::isfinite(start) || !std::isfinite(stop)) start = log ? 1 : 0, stop = log ? 10 : 100;
  // Both ends into the calendar: an end beyond it on either side has no date to show.
  if (dateTime) start = std::clamp(start, MinDateTime, MaxDateTime), stop = std::clamp(stop, MinDateTime, MaxDateTime);
  if (!std::isfinite(stop - start)) start = std::max(start, -WidestEnd), stop = std::min(stop, WidestEnd);
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
      if (!std::isfinite(stop - start) || start == stop) start = 0, stop = 100;
    }
  }
  FLogActive = false;
  if (log) {
    if (start <= 0) {
      start = FDataMin > 0 && FDataMin < QyMaxDouble ? FDataMin : SmallestPositiveData(stop);
      if (start <= 0) start = 0.01;
    }
    if (stop <= 0) stop = 1.0;
    if (start >= stop) stop = std::isfinite(start * 10) ? start * 10 : QyMaxDouble, start = std::min(start, stop / 10);
    FLogStart = std::log10(start);
    FLogStop = std::log10(stop);
    FLogActive = FLogToNormalScalingLevel == 0 || FLogStop - FLogStart > FLogToNormalScalingLevel;
  }
}

// Room around the data: a fraction of the range beyond each end that follows the data. Ends of
// other modes hold a value of their own, which would grow with every ranging.
void TQyAxis::PadEnds(double& start, double& stop) const {
  const double r = stop - start;
  const double s = FStartEnd == TQyAxisEnd::AutoRange && FStartPadding > 0 ? start - r * FStartPadding : start;
  const double e = FStopEnd == TQyAxisEnd::AutoRange && FStopPadding > 0 ? stop + r * FStopPadding : stop;
  if (std::isfinite(e - s)) start = s, stop = e;
}

// The label, major and minor parts for the ends (kept while panning, so that labels walk along).
void TQyAxis::FindParts(double start, double stop, bool pan) {
  if (FAutoTickParts && !pan) {
    if (FLogActive) GetLogAxisParts(start, stop);
    else switch (FScaling) {
      case TQyAxisScaling::Seconds: GetSecParameters(start, stop); break;
      case TQyAxisScaling::DateTime: GetDtParameters(start, stop); break;
      case TQyAxisScaling::Rubrics: FLabelPart = FMajorTickPart = FTickPart = 1.0, FRangeExponent = 0; break;
      default: GetNormalAxisParts(start, stop); break;
      }
  } else if (FLogActive) {
    FRangeExponent = int(Round(std::log10(stop) - std::log10(start)));
  } else if (FScaling != TQyAxisScaling::Seconds && FScaling != TQyAxisScaling::DateTime) {
    FRangeExponent = Real10thExponent(stop - start);
  }
}

// Rounds the ends to the parts as EndRounding asks; true when an end moved. An end whose rounding
// the axis could not show (beyond the largest double, at or below 0 on a logarithmic axis, ends
// too far apart) keeps its value; -0 becomes 0.
bool TQyAxis::RoundToParts(double& start, double& stop) const {
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
  if (mode == 0) return false;
  auto showable = [this](double v) { return std::isfinite(v) && (!FLogActive || v > 0); };
  double s = RoundEnd(start, false, mode == 2) + 0.0, e = RoundEnd(stop, true, mode == 2) + 0.0;
  if (!showable(s)) s = start;
  if (!showable(e)) e = stop;
  if (!(s < e) || !std::isfinite(e - s)) return false;
  const bool moved = s != start || e != stop;
  start = s, stop = e;
  return moved;
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
