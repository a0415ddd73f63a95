#pragma once
// Calendar arithmetic on day numbers (day 0 = 1899-12-30; before it the fraction of a negative
// day number is the time of day counted forward from that day, -1.25 = 1899-12-29 06:00).
#include <cstdint>

inline constexpr double MinDateTime = -657434.0;               // 0100-01-01 00:00
inline constexpr double MaxDateTime = 2958465.99999999;        // 9999-12-31 23:59:59.999

struct TQyDateParts {
  int Year = 1899, Month = 12, Day = 30, Hour = 0, Minute = 0, Second = 0, MilliSecond = 0;
  std::int64_t DayIndex = 0; // whole days since the zero date
};

// Fields of a day number, the time rounded to milliseconds (24:00 carries into the next day).
TQyDateParts DecodeDateTime(double t);
double EncodeDateTime(int year, int month, int day, int hour, int minute, int second, int ms);
double EncodeDateTime(const TQyDateParts& parts);
bool IsLeapYear(int year);
int DaysInMonth(int year, int month);
// 1 = Sunday .. 7 = Saturday.
int DayOfWeek(double t);
// Whole months, years, days on, keeping the time of day; the day of month is capped to the
// length of the target month.
double IncMonth(double t, std::int64_t months);
double IncYear(double t, std::int64_t years);
double IncDay(double t, std::int64_t days);
