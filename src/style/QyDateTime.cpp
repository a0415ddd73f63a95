#include "QyDateTime.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include "QyRounding.h"
#include "QyStringFunctions.h"

#include <cmath>

namespace {

constexpr double MSecsPerDay = 86400000.0;

// Day number and time of day of a TDateTime: before the zero date the fraction is the time of day
// as a magnitude, counted forward from the (negative) day. A magnitude over 0.99999999999999 is
// taken as 0.
void SplitDateTime(double t, double& day, double& fraction) {
  day = std::trunc(t);
  fraction = std::fabs(t - day);
  if (fraction > 0.99999999999999) fraction = 0;
}

double ComposeDateTime(double day, double fraction) { return day < 0 ? day - fraction : day + fraction; }

double IncDateTime(double t, std::int64_t n, double unitsPerDay) {
  if (n == 0) return t;
  const double plain = (t * unitsPerDay + static_cast<double>(n)) / unitsPerDay;
  if (t >= 0 && plain >= 0) return plain; // the standard increment of the date utilities
  double day, fraction;
  SplitDateTime(t, day, fraction);
  fraction += static_cast<double>(n) / unitsPerDay;
  const double carry = std::floor(fraction);
  return ComposeDateTime(day + carry, fraction - carry);
}

// Milliseconds of the time of day as FormatDateTime rounds them.
long long MilliSecondsOfDay(double t) {
  const long long ms = Round(std::fabs(t - std::trunc(t)) * MSecsPerDay);
  return ms >= 86400000 ? ms - 86400000 : ms;
}

// A whole number as text, also one beyond 64 bits (the days of an astronomic span).
QString WholeToStr(double whole) { return QyFitsInt64(whole) ? IntToStr(Trunc(whole)) : FloatToStr(whole); }
QString TwoDigits(double v) { return v < 10 ? "0" + WholeToStr(v) : WholeToStr(v); }

// Takes the whole units off a non-negative `rest` (exactly: fmod) and gives their count.
double TakeWhole(double& rest, double unit) {
  const double part = std::fmod(rest, unit);
  const double whole = std::nearbyint((rest - part) / unit);
  rest = part;
  return whole;
}

// Beyond this many seconds a double has no millisecond digits left to round.
constexpr double SecondsWithMilliseconds = 9007199254740.992;

} // namespace

QString SecondsToString(double seconds, TQySecondsFormatRange range) {
  if (!std::isfinite(seconds)) return FloatToStr(seconds);
  double x = seconds;
  if (range > TQySecondsFormatRange::Second && std::fabs(x) < SecondsWithMilliseconds)
    x = static_cast<double>(Round(x * 1000.0)) / 1000.0;
  QString sign;
  if (x < 0) {
    sign = "-";
    x = -x;
  }
  QString text;
  double rest = x;
  if (range == TQySecondsFormatRange::Day) {
    const double days = TakeWhole(rest, 86400.0);
    if (days > 0) text += WholeToStr(days) + ".";
  }
  if (range >= TQySecondsFormatRange::Hour) text += TwoDigits(TakeWhole(rest, 3600.0)) + ":";
  if (range >= TQySecondsFormatRange::Minute) text += TwoDigits(TakeWhole(rest, 60.0)) + ":";
  if (!text.isEmpty() && rest <= 9.999999) text += "0";
  if (rest <= 0.000001) text += "0";
  else text += RealToStrDigits(rest, 6);
  return sign + text;
}

double TotalMilliSeconds(double span) { return span * 86400000.0; }
double TotalSeconds(double span) { return span * 86400.0; }
double TotalMinutes(double span) { return span * 1440.0; }
double TotalHours(double span) { return span * 24.0; }

double MyIncMilliSeconds(double t, std::int64_t n) { return IncDateTime(t, n, 86400000.0); }
double MyIncSeconds(double t, std::int64_t n) { return IncDateTime(t, n, 86400.0); }
double MyIncMinutes(double t, std::int64_t n) { return IncDateTime(t, n, 1440.0); }
double MyIncHours(double t, std::int64_t n) { return IncDateTime(t, n, 24.0); }

void MyDateTimeToString(QString& result, const QString& format, double t, const TFormatSettings& fs) {
  QString f = format;
  if (std::isfinite(t) && f.contains(QLatin1String("fff"))) {
    QString ms = IntToStr(MilliSecondsOfDay(t) % 1000);
    if (ms.size() == 1) ms = "00" + ms;
    else if (ms.size() == 2) ms = "0" + ms;
    f.replace(QLatin1String("fff"), ms);
  }
  result = FormatDateTime(f, t, fs);
}

QString MyDateTimeToString(const QString& format, double t, const TFormatSettings& fs) {
  QString result;
  MyDateTimeToString(result, format, t, fs);
  return result;
}

double DateTimeSpan(double earlier, double later) {
  double dayE, fracE, dayL, fracL;
  SplitDateTime(earlier, dayE, fracE);
  SplitDateTime(later, dayL, fracL);
  return (fracL - fracE) + (dayL - dayE);
}

QString DoubleToTimeSpanStr(double x, const TFormatSettings& fs) {
  const QString timeFormat = QStringLiteral("hh:nn:ss") + fs.DecimalSeparator + QStringLiteral("zzz");
  if (!std::isfinite(x)) return FormatDateTime(timeFormat, x, fs); // raises EInvalidOp
  double days = std::trunc(x);
  long long ms = Round(std::fabs(x - days) * MSecsPerDay);
  if (ms >= 86400000) { // rounds up to a whole day
    ms -= 86400000;
    days += x < 0 ? -1 : 1;
  }
  QString s;
  if (days != 0) s = WholeToStr(days) + ".";
  else if (x < 0 && ms > 0) s = "-";
  return s + FormatDateTime(timeFormat, static_cast<double>(ms) / MSecsPerDay, fs);
}

double DoubleFomTimeSpanStr(const QString& s, const TFormatSettings& fs) {
  QString t = s.trimmed();
  const bool negative = t.startsWith('-');
  // The fraction of the seconds: after the last decimal separator, if that follows the last ':'.
  double fraction = 0;
  const int decimalPos = LastPos(fs.DecimalSeparator, t);
  if (decimalPos > 0 && decimalPos > LastPos(fs.TimeSeparator, t)) {
    const QString digits = t.mid(decimalPos);
    t.truncate(decimalPos - 1);
    for (QChar c : digits)
      if (c < '0' || c > '9') throw EConvertError(QyFormatMessage(QyRes::InvalidFloat, {s}));
    if (!digits.isEmpty()) fraction = StrToFloat(QStringLiteral("0.") + digits);
  }
  long long days = 0;
  const int dayPos = LastPos('.', t);
  if (dayPos > 0) {
    days = StrToInt(t.left(dayPos - 1));
    t.remove(0, dayPos);
  } else if (negative) {
    t.remove(0, 1);
  }
  const QStringList parts = t.split(fs.TimeSeparator);
  if (parts.size() != 3) throw EConvertError(QyFormatMessage(QyRes::InvalidFloat, {s}));
  const double seconds = StrToInt(parts[0]) * 3600.0 + StrToInt(parts[1]) * 60.0 + StrToInt(parts[2]) + fraction;
  const double time = seconds / 86400.0;
  return days < 0 || (days == 0 && negative) ? static_cast<double>(days) - time : static_cast<double>(days) + time;
}
