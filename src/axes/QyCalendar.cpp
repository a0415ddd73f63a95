#include "QyCalendar.h"
#include "QyRounding.h"
#include <cmath>

namespace {
constexpr std::int64_t ZeroDateFromUnix = -25569; // 1899-12-30 counted from 1970-01-01
constexpr std::int64_t MsPerDay = 86400000;

// Days since 1970-01-01 of a proleptic Gregorian date (civil calendar arithmetic on eras).
std::int64_t DaysFromCivil(std::int64_t y, int m, int d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yoe = y - era * 400;
  const std::int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

void CivilFromDays(std::int64_t z, int& y, int& m, int& d) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const std::int64_t doe = z - era * 146097;
  const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const std::int64_t mp = (5 * doy + 2) / 153;
  d = int(doy - (153 * mp + 2) / 5 + 1);
  m = int(mp < 10 ? mp + 3 : mp - 9);
  y = int(yoe + era * 400 + (m <= 2));
}

// A day index and milliseconds of its day as a day number.
double Compose(std::int64_t day, std::int64_t ms) {
  const double time = double(ms) / double(MsPerDay);
  return day >= 0 ? double(day) + time : double(day) - time;
}
} // namespace

TQyDateParts DecodeDateTime(double t) {
  TQyDateParts p;
  if (!std::isfinite(t)) return p;
  std::int64_t day = Trunc(t);
  std::int64_t ms = Round(std::fabs(t - double(day)) * double(MsPerDay));
  if (ms >= MsPerDay) ms -= MsPerDay, day += 1;
  p.DayIndex = day;
  CivilFromDays(day + ZeroDateFromUnix, p.Year, p.Month, p.Day);
  p.Hour = int(ms / 3600000);
  p.Minute = int(ms / 60000 % 60);
  p.Second = int(ms / 1000 % 60);
  p.MilliSecond = int(ms % 1000);
  return p;
}

double EncodeDateTime(int year, int month, int day, int hour, int minute, int second, int ms) {
  const std::int64_t index = DaysFromCivil(year, month, day) - ZeroDateFromUnix;
  return Compose(index, ((std::int64_t(hour) * 60 + minute) * 60 + second) * 1000 + ms);
}

double EncodeDateTime(const TQyDateParts& p) {
  return EncodeDateTime(p.Year, p.Month, p.Day, p.Hour, p.Minute, p.Second, p.MilliSecond);
}

bool IsLeapYear(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int DaysInMonth(int year, int month) {
  static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : days[(month - 1 + 12) % 12];
}

int DayOfWeek(double t) {
  const std::int64_t day = DecodeDateTime(t).DayIndex; // day 0 was a Saturday
  return int(((day - 1) % 7 + 7) % 7) + 1;
}

double IncMonth(double t, std::int64_t months) {
  TQyDateParts p = DecodeDateTime(t);
  const std::int64_t m = std::int64_t(p.Year) * 12 + (p.Month - 1) + months;
  p.Year = int(Floor(double(m) / 12));
  p.Month = int(m - std::int64_t(p.Year) * 12) + 1;
  p.Day = std::min(p.Day, DaysInMonth(p.Year, p.Month));
  return EncodeDateTime(p);
}

double IncYear(double t, std::int64_t years) { return IncMonth(t, years * 12); }

double IncDay(double t, std::int64_t days) {
  const TQyDateParts p = DecodeDateTime(t);
  const std::int64_t ms = ((std::int64_t(p.Hour) * 60 + p.Minute) * 60 + p.Second) * 1000 + p.MilliSecond;
  return Compose(p.DayIndex + days, ms);
}
