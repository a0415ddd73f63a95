#pragma once
// Date-time helpers: durations as text, and calendar arithmetic that also holds before
// the zero of TDateTime (1899-12-30), where the fraction of a negative day number is the time of
// day counted forward from that day (-1.25 is 1899-12-29 06:00).
#include "QyTextFormat.h"

#include <QString>
#include <cstdint>

// The largest unit that a duration label shows.
enum class TQySecondsFormatRange { Second, Minute, Hour, Day };

// A duration in seconds as text: "[d.]hh:nn:ss[.fraction]" down to the given range, e.g.
// SecondsToString(3661, Hour) = "01:01:01", SecondsToString(90061.5, Day) = "1.01:01:01.5".
// Negative durations are the text of the magnitude with a leading "-".
QString SecondsToString(double seconds, TQySecondsFormatRange range);

// A span in days as milliseconds, seconds, minutes, hours.
double TotalMilliSeconds(double span);
double TotalSeconds(double span);
double TotalMinutes(double span);
double TotalHours(double span);

// Calendar increments that also work for dates before the zero date (and for results there).
double MyIncMilliSeconds(double t, std::int64_t n);
double MyIncSeconds(double t, std::int64_t n);
double MyIncMinutes(double t, std::int64_t n);
double MyIncHours(double t, std::int64_t n);

// FormatDateTime with "fff" as a further token for the zero-padded milliseconds.
void MyDateTimeToString(QString& result, const QString& format, double t,
                        const TFormatSettings& fs = DefaultFormatSettings());
QString MyDateTimeToString(const QString& format, double t, const TFormatSettings& fs = DefaultFormatSettings());

// Signed days from `earlier` to `later`, with the time of day of negative dates counted forward.
double DateTimeSpan(double earlier, double later);

// A span in days as "[days.]hh:nn:ss<decimal separator>zzz" and back (the name is spelled so).
// A negative span under one day is written with a leading "-" (the day part cannot carry the sign).
QString DoubleToTimeSpanStr(double x, const TFormatSettings& fs = DefaultFormatSettings());
double DoubleFomTimeSpanStr(const QString& s, const TFormatSettings& fs = DefaultFormatSettings());
