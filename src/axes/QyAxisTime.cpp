// Time scalings of an axis: durations in seconds with steps that divide minutes and hours, and
// calendar dates whose steps land on whole minutes, Sundays, month and year starts.
#include "QyAxis.h"
#include "QyCalendar.h"
#include "QyMath.h"
#include "QyRounding.h"
#include <cmath>

namespace {
constexpr int MaxTimeTicks = 5000;

// Seconds of one unit of a seconds-axis region.
double RegionSeconds(TQyDtRegion r) {
  switch (r) {
  case TQyDtRegion::Day: return 86400;
  case TQyDtRegion::Hour: return 3600;
  case TQyDtRegion::Minute: return 60;
  default: return 1;
  }
}

bool Near(double a, double b) { return std::fabs(a - b) < 0.01; }

// The next label step of a seconds ladder; 0 means "restart the ladder a decade finer".
double LadderNext(int ladder, double p) {
  struct Step { double from, to; };
  static const std::vector<Step> ladders[] = {
      {{1.0, 0.5}, {0.5, 0.2}},                           // 0
      {{0.6, 0.3}, {0.3, 0.15}},                          // 1
      {{0.6, 0.3}, {1.0, 0.5}, {0.5, 0.3}, {0.3, 0.15}},  // 2
      {{2.4, 1.2}, {1.2, 0.6}, {0.6, 0.3}},               // 3
      {{1.0, 0.5}, {0.5, 0.2}},                           // 4
      {{1.0, 0.5}, {0.5, 0.2}},                           // 5
      {{1.0, 0.4}, {0.4, 0.2}},                           // 6
  };
  for (const Step& s : ladders[ladder])
    if (Near(p, s.from)) return s.to;
  return 0;
}

double LadderStart(int ladder) { return ladder == 1 || ladder == 2 ? 0.6 : ladder == 3 ? 2.4 : 1.0; }

// Where a ladder starts again a decade finer: ladder 2 begins at 0.6 but goes on from 1.0.
double LadderRestart(int ladder) { return ladder == 1 ? 0.6 : ladder == 3 ? 2.4 : 1.0; }

// Divisors of the label step that give the major and minor steps, by ladder and final step.
void LadderDivisors(int ladder, double p, double& major, double& minor) {
  struct Row { double p, major, minor; };
  static const std::vector<Row> rows[] = {
      {{1.0, 2, 10}, {0.5, 1, 5}, {-1, 2, 10}},
      {{0.6, 2, 12}, {0.3, 2, 6}, {-1, 3, 15}},
      {{1.0, 2, 10}, {0.5, 2, 10}, {0.6, 2, 12}, {0.3, 2, 6}, {-1, 3, 15}},
      {{2.4, 2, 24}, {1.2, 2, 12}, {0.6, 2, 12}, {-1, 3, 18}},
      {{1.0, 2, 10}, {0.5, 1, 5}, {-1, 2, 8}},
      {{1.0, 2, 8}, {0.5, 1, 8}, {-1, 2, 24}},
      {{1.0, 2, 8}, {0.4, 2, 8}, {-1, 2, 8}},
  };
  for (const Row& r : rows[ladder])
    if (r.p < 0 || Near(p, r.p)) {
      major = r.major, minor = r.minor;
      return;
    }
}

// The running number of a date in units of `region` (whole hours, minutes, ... since the zero
// date, so that steps like 48 hours or 2 seconds stay regular across day and minute borders).
std::int64_t RunningCount(const TQyDateParts& d, TQyDtRegion r) {
  const std::int64_t hours = d.DayIndex * 24 + d.Hour;
  switch (r) {
  case TQyDtRegion::Year: return d.Year;
  case TQyDtRegion::Month: return std::int64_t(d.Year) * 12 + d.Month - 1;
  case TQyDtRegion::Day: return d.Day - 1;
  case TQyDtRegion::Hour: return hours;
  case TQyDtRegion::Minute: return hours * 60 + d.Minute;
  case TQyDtRegion::Second: return (hours * 60 + d.Minute) * 60 + d.Second;
  case TQyDtRegion::MilliSecond: break;
  }
  return ((hours * 60 + d.Minute) * 60 + d.Second) * 1000 + d.MilliSecond;
}

std::int64_t PositiveMod(std::int64_t a, std::int64_t n) { return ((a % n) + n) % n; }

double IncRegion(double t, TQyDtRegion r, std::int64_t n) {
  switch (r) {
  case TQyDtRegion::Year: return IncYear(t, n);
  case TQyDtRegion::Month: return IncMonth(t, n);
  case TQyDtRegion::Day: return IncDay(t, n);
  case TQyDtRegion::Hour: return MyIncHours(t, n);
  case TQyDtRegion::Minute: return MyIncMinutes(t, n);
  case TQyDtRegion::Second: return MyIncSeconds(t, n);
  case TQyDtRegion::MilliSecond: break;
  }
  return MyIncMilliSeconds(t, n);
}

// Clears one field towards the next (up) or this (down) unit of the coarser field.
double ClearField(double t, TQyDtRegion r, int value, int modulus, bool up) {
  if (value <= 0) return t;
  return IncRegion(t, r, up ? modulus - value : -value);
}

// Rows of the date-time ladder, finest first. Counts are in the tick region's units except
// where the label region is Year (label in years); the week rows use the Sunday rule.
struct DtRow {
  double unitDays, divisor;
  TQyDtRegion label, tick;
  int formatKey; // 0 ms, 1 second, 2 minute-or-day-and-hour, 3 day-and-hour, 4 day, 5 long month, 6 short month
  int labelCount, majorCount, tickCount;
};
constexpr double Ms = 1.0 / 86400000, Sec = 1.0 / 86400, Min = 1.0 / 1440, Hr = 1.0 / 24;
constexpr double MonthDays = 365.2425 / 12, YearDays = 365.2425;
using R = TQyDtRegion;
// Majors of the 50 and 500 ms rows are two fifths of the label (20, 200). A label needs a major
// under it, so these rows label every 100 and 1000 ms: that is the rule as it stands.
const DtRow DtRows[] = {
    {Ms, 5, R::MilliSecond, R::MilliSecond, 0, 5, 5, 1},
    {Ms, 10, R::MilliSecond, R::MilliSecond, 0, 10, 5, 1},
    {Ms, 20, R::MilliSecond, R::MilliSecond, 0, 20, 10, 2},
    {Ms, 50, R::MilliSecond, R::MilliSecond, 0, 50, 20, 5},
    {Ms, 100, R::MilliSecond, R::MilliSecond, 0, 100, 50, 10},
    {Ms, 200, R::MilliSecond, R::MilliSecond, 0, 200, 200, 20},
    {Ms, 500, R::MilliSecond, R::MilliSecond, 0, 500, 200, 50},
    {Sec, 1, R::Second, R::MilliSecond, 1, 1000, 500, 100},
    {Sec, 2, R::Second, R::MilliSecond, 1, 2000, 1000, 100},
    {Sec, 5, R::Second, R::MilliSecond, 1, 5000, 2500, 500},
    {Sec, 10, R::Second, R::Second, 1, 10, 5, 1},
    {Sec, 20, R::Second, R::Second, 1, 20, 10, 1},
    {Sec, 30, R::Second, R::Second, 1, 30, 10, 2},
    {Sec, 60, R::Minute, R::Second, 2, 60, 30, 5},
    {Sec, 120, R::Minute, R::Second, 2, 120, 60, 10},
    {Sec, 300, R::Minute, R::Second, 2, 300, 300, 30},
    {Min, 10, R::Minute, R::Minute, 2, 10, 5, 1},
    {Min, 15, R::Minute, R::Minute, 2, 15, 5, 1},
    {Min, 30, R::Minute, R::Minute, 2, 30, 15, 5},
    {Min, 60, R::Minute, R::Minute, 2, 60, 15, 5},
    {Min, 180, R::Minute, R::Minute, 2, 180, 60, 15},
    {Hr, 6, R::Hour, R::Hour, 3, 6, 3, 1},
    {Hr, 12, R::Hour, R::Hour, 3, 12, 6, 1},
    {Hr, 24, R::Hour, R::Hour, 4, 24, 12, 3},
    {Hr, 48, R::Hour, R::Hour, 4, 48, 24, 6},
    {1, 7, R::Day, R::Day, 4, 1, 7, 1},
    {1, 14, R::Day, R::Day, 4, 2, 7, 1},
    {1, 30.5, R::Month, R::Day, 5, 1, 1, 1},
    {1, 30.5, R::Month, R::Day, 6, 1, 1, 1},
    {MonthDays, 3, R::Month, R::Month, 6, 3, 3, 1},
    {MonthDays, 6, R::Month, R::Month, 6, 6, 3, 1},
    {MonthDays, 12, R::Year, R::Month, 6, 1, 12, 1},
    {MonthDays, 24, R::Year, R::Month, 6, 2, 12, 3},
    {YearDays, 5, R::Year, R::Year, 6, 5, 5, 1},
    {YearDays, 10, R::Year, R::Year, 6, 10, 5, 1},
    {YearDays, 20, R::Year, R::Year, 6, 20, 10, 2},
    {YearDays, 25, R::Year, R::Year, 6, 25, 25, 5},
    {YearDays, 50, R::Year, R::Year, 6, 50, 25, 5},
    {YearDays, 100, R::Year, R::Year, 6, 100, 50, 10},
    {YearDays, 200, R::Year, R::Year, 6, 200, 100, 25},
    {YearDays, 500, R::Year, R::Year, 6, 500, 250, 50},
    {YearDays, 1000, R::Year, R::Year, 6, 1000, 500, 100},
    {YearDays, 0, R::Year, R::Year, 6, 2000, 1000, 100}, // no test: the last resort
};
} // namespace

TQyAxisTimeFormats TQyAxisTimeFormats::FromSettings(const TFormatSettings& fs) {
  TQyAxisTimeFormats f;
  f.ShortMonth = "MMM yy";
  f.LongMonth = "MMMM yyyy";
  f.Day = QString(fs.ShortDateFormat).replace("yyyy", "yy").replace("dd", "d").replace("MM", "M");
  f.Minute = fs.ShortTimeFormat;
  const int s = f.Minute.indexOf('s');
  if (s >= 0) f.Minute.remove(std::max(0, s - 1), s > 0 ? 2 : 1);
  const int s2 = f.Minute.indexOf('s');
  if (s2 >= 0) f.Minute.remove(s2, 1);
  f.DayAndHour = f.Day + " " + f.Minute;
  f.Second = fs.LongTimeFormat;
  f.MilliSecond = QString("s") + fs.DecimalSeparator + "fff";
  return f;
}

// ---- seconds ----------------------------------------------------------------------------------

TQySecParameters TQyAxis::GetSecParameters(double start, double stop) {
  const double S = stop - start, Mi = S / 60, H = Mi / 60, D = H / 24;
  FRangeExponent = Real10thExponent(S);
  struct Choice { TQyDtRegion region; double v; int ladder; };
  const Choice c = D > 20 ? Choice{R::Day, D, 0} : D > 7 ? Choice{R::Day, D, 6} : D > 3 ? Choice{R::Day, D, 5}
                 : H > 10 ? Choice{R::Hour, H, 3} : H > 3 ? Choice{R::Hour, H, 4}
                 : Mi > 50 ? Choice{R::Minute, Mi, 2} : Mi > 3 ? Choice{R::Minute, Mi, 0}
                 : S >= 60 ? Choice{R::Second, S, 1} : Choice{R::Second, S, 0};
  FSecParameters.Region = c.region;
  FSecParameters.Exponent = c.region == R::Second ? FRangeExponent : Real10thExponent(c.v);
  GetExponentAndDigits(start, stop); // the time level: the largest unit a label shows
  const TQySecondsFormatRange fmt = FSecParameters.Format;
  const double len = 1.4 * std::max(ApproxLen(start, SecondsToString(start, fmt)), ApproxLen(stop, SecondsToString(stop, fmt)));
  const double span = ExpMinus(c.v, FSecParameters.Exponent);
  const double extent = LabelExtent();
  double p = LadderStart(c.ladder), f = 10;
  for (int guard = 0; guard < 200; ++guard) {
    const double n = double(Trunc(span / (p * f) + 0.5));
    if (!(n * len + (n - 1) * 70 * FLabelDistanceFactor < extent)) break;
    const double next = LadderNext(c.ladder, p);
    if (next == 0) p = LadderRestart(c.ladder), f /= 10;
    else p = next;
  }
  double major = 2, minor = 10;
  LadderDivisors(c.ladder, p, major, minor);
  FLabelPart = p * f;
  FMajorTickPart = FLabelPart / major;
  FTickPart = FLabelPart / minor;
  return FSecParameters;
}

double TQyAxis::SecondsRound(double value, double part, int exponent, bool up) const {
  const double unit = RegionSeconds(FSecParameters.Region);
  const double v = value / unit;
  return (up ? RoundUp(v, part, exponent) : RoundDown(v, part, exponent)) * unit;
}

void TQyAxis::SecondsTicks() {
  const TQySecParameters& sp = FSecParameters;
  const double first = TicksFromRoundedEnds() ? RoundEnd(FStart, true, false) : FStart;
  double nextMajor = RoundEnd(FStart, true, true);
  double nextLabel = SecondsRound(FStart, FLabelPart, sp.Exponent, true);
  const double step = Exp10(sp.Exponent) * FTickPart * RegionSeconds(sp.Region);
  if (!(step > 0) || (FStop - first) / step > MaxTimeTicks) return; // no sane partition
  const double eps = 0.004 * step;
  for (long long i = 0;; ++i) {
    const double x = first + double(i) * step;
    if (x > FStop + eps) break;
    const float p = NumberToWorld(x);
    bool grid = false;
    if (FNumbersVisible && std::fabs(x - nextLabel) < eps) {
      AddLabel(SecondsToString(nextLabel, sp.Format), x, p);
      nextLabel = SecondsRound(x + eps, FLabelPart, sp.Exponent, true);
      grid = FMajorGridMode == TQyMajorGridMode::AtLabel;
    }
    const bool major = std::fabs(x - nextMajor) < eps;
    if (major) {
      grid = grid || FMajorGridMode == TQyMajorGridMode::AtMajorTick;
      nextMajor = SecondsRound(x + eps, FMajorTickPart, sp.Exponent, true);
    }
    FTickPositions.Add(p);
    FMajorFlags.Add(major);
    FGridFlags.Add(grid);
  }
}

// ---- date-time --------------------------------------------------------------------------------

TQyDtParameters TQyAxis::GetDtParameters(double start, double stop) {
  const double span = DateTimeSpan(start, stop);
  const double extent = LabelExtent();
  const QString formats[] = {FTimeFormats.MilliSecond, FTimeFormats.Second,
                             span <= 1 ? FTimeFormats.Minute : FTimeFormats.DayAndHour,
                             FTimeFormats.DayAndHour, FTimeFormats.Day, FTimeFormats.LongMonth,
                             FTimeFormats.ShortMonth};
  const DtRow* chosen = &DtRows[std::size(DtRows) - 1];
  for (const DtRow& row : DtRows) {
    if (row.divisor == 0) break;
    // The sample is the stop in the row's format, also on year rows whose labels are bare years.
    const QString sample = row.formatKey == 5 ? QString("February 9999") : MyDateTimeToString(formats[row.formatKey], stop);
    const double len = ApproxLen(stop, sample);
    const double count = span / row.unitDays / row.divisor;
    const double n = double(Trunc(count + 0.5) + 1);
    if (count < 1000 && !(n * len * 0.48 + (n - 1) * 120 * FLabelDistanceFactor > extent)) {
      chosen = &row;
      break;
    }
  }
  TQyDtParameters& dp = FDtParameters;
  dp.LabelRegion = chosen->label, dp.TickRegion = chosen->tick;
  dp.LabelCount = chosen->labelCount, dp.MajorCount = chosen->majorCount, dp.TickCount = chosen->tickCount;
  dp.FormatString = formats[chosen->formatKey];
  FLabelPart = dp.LabelCount, FMajorTickPart = dp.MajorCount, FTickPart = dp.TickCount;
  return dp;
}

// Clears the fields below the tick region, then brings the running field to a multiple of the
// major or minor count (weeks of a day region start on Sunday).
double TQyAxis::DateTimeRound(double value, bool up, bool major) const {
  const TQyDtParameters& dp = FDtParameters;
  double t = std::clamp(value, MinDateTime, MaxDateTime);
  auto coarser = [&](TQyDtRegion r) { return int(dp.TickRegion) < int(r); };
  TQyDateParts d = DecodeDateTime(t);
  if (coarser(R::MilliSecond)) t = ClearField(t, R::MilliSecond, d.MilliSecond, 1000, up), d = DecodeDateTime(t);
  if (coarser(R::Second)) t = ClearField(t, R::Second, d.Second, 60, up), d = DecodeDateTime(t);
  if (coarser(R::Minute)) t = ClearField(t, R::Minute, d.Minute, 60, up), d = DecodeDateTime(t);
  if (coarser(R::Hour)) t = ClearField(t, R::Hour, d.Hour, 24, up), d = DecodeDateTime(t);
  const bool dayToo = major && dp.LabelRegion == R::Month && dp.TickRegion == R::Day;
  const bool monthToo = major && dp.LabelRegion == R::Year && dp.TickRegion == R::Month;
  if ((coarser(R::Day) || dayToo) && d.Day > 1)
    t = IncDay(t, up ? DaysInMonth(d.Year, d.Month) - d.Day + 1 : -(d.Day - 1)), d = DecodeDateTime(t);
  if ((coarser(R::Month) || monthToo) && d.Month > 1) t = IncMonth(t, up ? 13 - d.Month : 1 - d.Month), d = DecodeDateTime(t);
  const int n = major ? dp.MajorCount : dp.TickCount;
  if (n <= 1) return t;
  if (dp.TickRegion == R::Day && n == 7) {
    const int w = DayOfWeek(t) - 1;
    return w > 0 ? IncDay(t, up ? 7 - w : -w) : t;
  }
  const std::int64_t rest = PositiveMod(RunningCount(d, dp.TickRegion), n);
  if (rest == 0) return t;
  if (dp.TickRegion == R::Year && up && d.Year + n >= 9999) return t;
  return IncRegion(t, dp.TickRegion, up ? n - rest : -rest);
}

void TQyAxis::DateTimeTicks() {
  const TQyDtParameters& dp = FDtParameters;
  double t = DateTimeRound(FStart, true, false);
  bool toggle = false;
  for (int i = 0; i < MaxTimeTicks && DateTimeSpan(t, FStop) >= -FScale; ++i) {
    const float p = NumberToWorld(t);
    const TQyDateParts d = DecodeDateTime(t);
    const std::int64_t c = RunningCount(d, dp.TickRegion);
    bool major, label;
    if (dp.LabelRegion == R::Day && dp.MajorCount == 7) {
      major = DayOfWeek(t) == 1;
      toggle = !toggle;
      label = dp.LabelCount == 1 || toggle;
    } else {
      major = dp.LabelRegion == R::Month && dp.MajorCount == 1 ? d.Day == 1 : PositiveMod(c, dp.MajorCount) == 0;
      label = dp.LabelRegion == R::Year ? PositiveMod(d.Year, dp.LabelCount) == 0 : PositiveMod(c, dp.LabelCount) == 0;
    }
    bool grid = FMajorGridMode == TQyMajorGridMode::AtMajorTick && major;
    if (major && label && FNumbersVisible) {
      QString text = dp.LabelRegion == R::Year ? QString::number(d.Year) : MyDateTimeToString(dp.FormatString, t);
      for (int k = 0; dp.LabelRegion == R::MilliSecond && k < 2 && text.endsWith('0'); ++k) text.chop(1);
      AddLabel(text, t, p);
      grid = grid || FMajorGridMode == TQyMajorGridMode::AtLabel;
    }
    FTickPositions.Add(p);
    FMajorFlags.Add(major);
    FGridFlags.Add(grid);
    const double next = IncRegion(t, dp.TickRegion, dp.TickCount);
    if (!(next > t)) break; // the end of the calendar
    t = next;
  }
}

// ---- increments -------------------------------------------------------------------------------

namespace {
double RegionDays(TQyDtRegion r) {
  // Lower bounds of a unit (28-day months, 0.99-day days), so that estimates never overshoot.
  static constexpr double days[] = {365, 28, 0.99, 1.0 / 24, 1.0 / 1440, 1.0 / 86400, 1.0 / 86400000};
  return days[int(r)];
}
} // namespace

double TQyAxis::MinorIncrement() const {
  switch (FScaling) {
  case TQyAxisScaling::Seconds:
    // The region factors are those of SecondsRound, applied the other way round: the result is
    // not in seconds. Kept so, as the increments have always been.
    return ExpMinus(FTickPart, -FSecParameters.Exponent) / RegionSeconds(FSecParameters.Region);
  case TQyAxisScaling::DateTime: return RegionDays(FDtParameters.TickRegion) * FDtParameters.TickCount;
  default: break;
  }
  return FLogActive ? 0.04 : ExpMinus(FTickPart, -FRangeExponent);
}

double TQyAxis::MajorIncrement() const {
  switch (FScaling) {
  case TQyAxisScaling::Seconds:
    return ExpMinus(FMajorTickPart, -FSecParameters.Exponent) / RegionSeconds(FSecParameters.Region);
  case TQyAxisScaling::DateTime: {
    // The major count counts tick-region units, except on month rows with daily ticks, where a
    // major is each month's first day.
    const TQyDtParameters& dp = FDtParameters;
    if (dp.LabelRegion == R::Month && dp.TickRegion == R::Day && dp.MajorCount == 1) return RegionDays(R::Month);
    return RegionDays(dp.TickRegion) * dp.MajorCount;
  }
  default: break;
  }
  return FLogActive ? FMajorTickPart : ExpMinus(FMajorTickPart, -FRangeExponent);
}
