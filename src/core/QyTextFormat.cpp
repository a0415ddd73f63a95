// Runtime text formatting (FloatToStr, FloatToStrF, FormatFloat, FormatDateTime, StrToFloat,
// Format) by the system's documented text formatting rules.
//
// Locale independence: digits come from std::to_chars / std::from_chars (locale-free by the
// standard) and all other text is built by hand; printf, strtod, iostreams and QLocale are never
// used, so setlocale() has no effect on any result.
//
// Decimal conversion: a double is first turned into its shortest round-trip decimal digits
// (at most 17 significant digits); every later rounding works on those digits, half away from
// zero. So FormatFloat("0.00", 1.005) = "1.01" although the binary value is 1.00499999...
#include "QyTextFormat.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include "QyRounding.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

const TFormatSettings& DefaultFormatSettings() {
  static const TFormatSettings fs = [] {
    TFormatSettings s;
    s.ShortMonthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    s.LongMonthNames = {"January", "February", "March",     "April",   "May",      "June",
                        "July",    "August",   "September", "October", "November", "December"};
    s.ShortDayNames = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    s.LongDayNames = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
    return s;
  }();
  return fs;
}

namespace {

// ------------------------------------------------------------------------------------------------
// Decimal digits of a double: value = 0.d1d2d3... * 10^Exponent (the runtime's TFloatRec).

struct TDecimal {
  bool Negative = false;
  std::string Digits; // no leading or trailing zeros; empty for zero
  int Exponent = 0;
};

constexpr int MaxPrecision = 18;  // FloatToStrF, Format: precision is clamped to 1..18
constexpr int FmtPrecision = 15;  // FormatFloat (non-scientific) and FloatToStr: 15 digits
constexpr int MaxFieldSize = 10000; // Format: largest width or precision

TDecimal ShortestDecimal(double v) {
  TDecimal d;
  d.Negative = std::signbit(v);
  if (v == 0) return d;
  char buf[48];
  const auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(v), std::chars_format::scientific);
  // "d[.ddd]e[+-]xx"
  const char* p = buf;
  while (p < res.ptr && *p != 'e') {
    if (*p != '.') d.Digits += *p;
    ++p;
  }
  int e10 = 0;
  bool eneg = false;
  if (p < res.ptr) ++p; // 'e'
  if (p < res.ptr && (*p == '+' || *p == '-')) eneg = *p++ == '-';
  while (p < res.ptr) e10 = e10 * 10 + (*p++ - '0');
  if (eneg) e10 = -e10;
  while (!d.Digits.empty() && d.Digits.back() == '0') d.Digits.pop_back();
  d.Exponent = e10 + 1;
  return d;
}

// Keeps `count` significant digits (count may be 0 or negative), rounding half away from zero
// on the decimal digits.
void RoundDigits(TDecimal& d, int count) {
  if (static_cast<int>(d.Digits.size()) <= count) return;
  if (count < 0) {
    d.Digits.clear();
    d.Exponent = 0;
    return;
  }
  const bool up = d.Digits[count] >= '5'; // round-away-ok (ties away from zero, on decimal digits)
  d.Digits.resize(count);
  if (up) {
    while (!d.Digits.empty() && d.Digits.back() == '9') d.Digits.pop_back();
    if (d.Digits.empty()) {
      d.Digits.push_back('1'); // all nines: 0.99.. -> 0.1e+1
      d.Exponent += 1;
    } else {
      d.Digits.back() += 1;
    }
  }
  while (!d.Digits.empty() && d.Digits.back() == '0') d.Digits.pop_back();
  if (d.Digits.empty()) d.Exponent = 0;
}

// The runtime's FloatToDecimal: at most `precision` significant digits and at most `decimals`
// digits after the decimal point.
TDecimal FloatToDecimal(double v, int precision, int decimals) {
  TDecimal d = ShortestDecimal(v);
  if (d.Digits.empty()) return d;
  const long long byDecimals = static_cast<long long>(d.Exponent) + decimals;
  RoundDigits(d, static_cast<int>(std::min<long long>(precision, byDecimals)));
  return d;
}

char DigitAt(const TDecimal& d, long long index) {
  return index >= 0 && index < static_cast<long long>(d.Digits.size()) ? d.Digits[index] : '0';
}

QString PaddedNumber(long long n, int minDigits) {
  QString s = QString::number(n < 0 ? -n : n);
  if (s.size() < minDigits) s = QString(minDigits - s.size(), '0') + s;
  return n < 0 ? "-" + s : s;
}

void AppendExponent(QString& out, QChar e, int exp, bool forcePlus, int minDigits) {
  out += e;
  if (exp < 0) out += '-';
  else if (forcePlus) out += '+';
  out += PaddedNumber(exp < 0 ? -exp : exp, minDigits);
}

QString SpecialText(double v) {
  if (std::isnan(v)) return QStringLiteral("NAN");
  return v > 0 ? QStringLiteral("INF") : QStringLiteral("-INF");
}

// Integer digits with thousand separators.
QString Grouped(const QString& digits, QChar sep) {
  if (sep.isNull() || digits.size() <= 3) return digits;
  QString out;
  const qsizetype n = digits.size();
  for (qsizetype i = 0; i < n; ++i) {
    out += digits[i];
    const qsizetype rest = n - 1 - i;
    if (rest > 0 && rest % 3 == 0) out += sep;
  }
  return out;
}

QString FormatGeneral(const TDecimal& d, int precision, int expDigits, const TFormatSettings& fs) {
  if (d.Digits.empty()) return QStringLiteral("0");
  QString out;
  if (d.Negative) out += '-';
  const int n = static_cast<int>(d.Digits.size());
  if (d.Exponent > precision || d.Exponent < -3) {
    out += QLatin1Char(d.Digits[0]);
    if (n > 1) {
      out += fs.DecimalSeparator;
      out += QLatin1String(d.Digits.data() + 1, n - 1);
    }
    AppendExponent(out, 'E', d.Exponent - 1, false, expDigits);
    return out;
  }
  if (d.Exponent <= 0) {
    out += '0';
    out += fs.DecimalSeparator;
    out += QString(-d.Exponent, '0');
    out += QLatin1String(d.Digits.data(), n);
    return out;
  }
  for (int i = 0; i < d.Exponent; ++i) out += QLatin1Char(DigitAt(d, i));
  if (n > d.Exponent) {
    out += fs.DecimalSeparator;
    out += QLatin1String(d.Digits.data() + d.Exponent, n - d.Exponent);
  }
  return out;
}

QString ApplyCurrency(const QString& number, bool negative, const TFormatSettings& fs) {
  const QString& c = fs.CurrencyString;
  if (!negative) {
    switch (fs.CurrencyFormat) {
    case 1: return number + c;
    case 2: return c + ' ' + number;
    case 3: return number + ' ' + c;
    default: return c + number;
    }
  }
  switch (fs.NegCurrFormat) {
  case 1: return '-' + c + number;
  case 2: return c + '-' + number;
  case 3: return c + number + '-';
  case 4: return '(' + number + c + ')';
  case 5: return '-' + number + c;
  case 6: return number + '-' + c;
  case 7: return number + c + '-';
  case 8: return '-' + number + ' ' + c;
  case 9: return '-' + c + ' ' + number;
  case 10: return number + ' ' + c + '-';
  case 11: return c + ' ' + number + '-';
  case 12: return c + ' ' + '-' + number;
  case 13: return number + '-' + ' ' + c;
  case 14: return '(' + c + ' ' + number + ')';
  case 15: return '(' + number + ' ' + c + ')';
  default: return '(' + c + number + ')';
  }
}

// ------------------------------------------------------------------------------------------------
// FormatFloat

struct TSectionInfo {
  int IntPlaces = 0;      // digit placeholders before the decimal point
  int DecPlaces = 0;      // digit placeholders after it
  int FirstIntZero = -1;  // index (among IntPlaces) of the leftmost '0' before the point
  int LastDecZero = 0;    // 1-based index (among DecPlaces) of the rightmost '0' after the point
  bool Thousands = false;
  bool Scientific = false;
};

// Splits at ';' outside quotes; at most three sections count.
QStringList SplitSections(const QString& format) {
  QStringList sections;
  QString cur;
  QChar quote;
  for (QChar c : format) {
    if (!quote.isNull()) {
      if (c == quote) quote = QChar();
    } else if (c == '\'' || c == '"') {
      quote = c;
    } else if (c == ';') {
      sections << cur;
      cur.clear();
      continue;
    }
    cur += c;
  }
  sections << cur;
  while (sections.size() > 3) sections.removeLast();
  return sections;
}

bool IsExponentAt(const QString& s, qsizetype i) {
  return (s[i] == 'E' || s[i] == 'e') && i + 1 < s.size() && (s[i + 1] == '+' || s[i + 1] == '-');
}

TSectionInfo ScanSection(const QString& s) {
  TSectionInfo info;
  bool point = false;
  for (qsizetype i = 0; i < s.size(); ++i) {
    const QChar c = s[i];
    if (c == '\'' || c == '"') {
      const qsizetype end = s.indexOf(c, i + 1);
      i = end < 0 ? s.size() : end;
    } else if (c == '0' || c == '#') {
      if (!point) {
        if (c == '0' && info.FirstIntZero < 0) info.FirstIntZero = info.IntPlaces;
        ++info.IntPlaces;
      } else {
        ++info.DecPlaces;
        if (c == '0') info.LastDecZero = info.DecPlaces;
      }
    } else if (c == '.') {
      point = true;
    } else if (c == ',') {
      info.Thousands = true;
    } else if (!info.Scientific && IsExponentAt(s, i)) {
      info.Scientific = true;
      i += 2;
      while (i < s.size() && s[i] == '0') ++i;
      --i;
    }
  }
  return info;
}

// Writes the section with the digits of `d` (already rounded as the section needs).
void ApplySection(QString& out, const QString& s, const TSectionInfo& info, const TDecimal& d,
                  const TFormatSettings& fs) {
  QString intDigits, decDigits;
  int exp10 = 0;
  if (info.Scientific) {
    // The mantissa keeps exactly IntPlaces digits before the point.
    const int total = info.IntPlaces + info.DecPlaces;
    for (int i = 0; i < info.IntPlaces; ++i) intDigits += QLatin1Char(DigitAt(d, i));
    for (int i = info.IntPlaces; i < total; ++i) decDigits += QLatin1Char(DigitAt(d, i));
    exp10 = d.Digits.empty() ? 0 : d.Exponent - info.IntPlaces;
  } else {
    for (int i = 0; i < d.Exponent; ++i) intDigits += QLatin1Char(DigitAt(d, i));
    const int minInt = info.FirstIntZero >= 0 ? info.IntPlaces - info.FirstIntZero : 0;
    if (intDigits.size() < minInt) intDigits = QString(minInt - intDigits.size(), '0') + intDigits;
    for (int i = 0; i < info.DecPlaces; ++i)
      decDigits += QLatin1Char(DigitAt(d, static_cast<long long>(d.Exponent) + i));
  }
  while (decDigits.size() > info.LastDecZero && decDigits.endsWith('0')) decDigits.chop(1);

  const qsizetype nInt = intDigits.size();
  const qsizetype extra = nInt - info.IntPlaces; // digits beyond the placeholders go first
  auto putInt = [&](qsizetype j) {
    out += intDigits[j];
    const qsizetype rest = nInt - 1 - j;
    if (info.Thousands && rest > 0 && rest % 3 == 0 && !fs.ThousandSeparator.isNull())
      out += fs.ThousandSeparator;
  };
  auto putAllInt = [&]() {
    for (qsizetype j = 0; j < nInt; ++j) putInt(j);
  };
  int intSeen = 0, decSeen = 0;
  bool point = false, exponentDone = false;
  for (qsizetype i = 0; i < s.size(); ++i) {
    const QChar c = s[i];
    if (c == '\'' || c == '"') {
      const qsizetype end = s.indexOf(c, i + 1);
      out += s.mid(i + 1, (end < 0 ? s.size() : end) - i - 1);
      i = end < 0 ? s.size() : end;
    } else if (c == '0' || c == '#') {
      if (!point) {
        if (intSeen == 0)
          for (qsizetype j = 0; j < extra; ++j) putInt(j);
        const qsizetype j = extra + intSeen;
        if (j >= 0) putInt(j);
        ++intSeen;
      } else {
        if (decSeen == 0 && !decDigits.isEmpty()) out += fs.DecimalSeparator;
        if (decSeen < decDigits.size()) out += decDigits[decSeen];
        ++decSeen;
      }
    } else if (c == '.') {
      if (!point && info.IntPlaces == 0) putAllInt(); // no place before the point: digits go here
      point = true;
    } else if (c == ',') {
      // only switches thousand separators on
    } else if (info.Scientific && !exponentDone && IsExponentAt(s, i)) {
      exponentDone = true;
      const bool plus = s[i + 1] == '+';
      int zeros = 0;
      qsizetype k = i + 2;
      while (k < s.size() && s[k] == '0') ++zeros, ++k;
      AppendExponent(out, c, exp10, plus, std::min(zeros, 4));
      i = k - 1;
    } else {
      out += c;
    }
  }
}

// ------------------------------------------------------------------------------------------------
// FormatDateTime

struct TDecodedDateTime {
  long long Year = 0;
  int Month = 0, Day = 0, DayOfWeek = 0; // DayOfWeek: 1 = Sunday ... 7 = Saturday
  int Hour = 0, Minute = 0, Second = 0, MilliSecond = 0;
};

TDecodedDateTime DecodeDateTime(double t) {
  if (!std::isfinite(t) || std::fabs(t) > 1.0e9)
    throw EInvalidOp(QyText(QyRes::InvalidFloatOperation));
  const double ip = std::trunc(t);
  long long day = static_cast<long long>(ip);
  long long ms = Round(std::fabs(t - ip) * 86400000.0);
  if (ms >= 86400000) { // the time of day rounds up to midnight of the following day
    ms -= 86400000;
    day += 1;
  }
  TDecodedDateTime r;
  // Civil date from a day count (proleptic Gregorian; H. Hinnant's algorithm, epoch 1970-01-01).
  const long long z0 = day - 25569; // 1899-12-30 is 25569 days before 1970-01-01
  const long long z = z0 + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  r.Day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  r.Month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  r.Year = yoe + era * 400 + (r.Month <= 2 ? 1 : 0);
  r.DayOfWeek = static_cast<int>(((z0 % 7) + 7 + 4) % 7) + 1; // 1970-01-01 was a Thursday
  r.Hour = static_cast<int>(ms / 3600000);
  r.Minute = static_cast<int>(ms / 60000 % 60);
  r.Second = static_cast<int>(ms / 1000 % 60);
  r.MilliSecond = static_cast<int>(ms % 1000);
  return r;
}

bool StartsWithCI(const QString& s, qsizetype i, const char* what) {
  const qsizetype n = static_cast<qsizetype>(std::strlen(what));
  return i + n <= s.size() && QStringView(s).mid(i, n).compare(QLatin1String(what), Qt::CaseInsensitive) == 0;
}

QString NameAt(const QStringList& names, int index) {
  return index >= 0 && index < names.size() ? names[index] : QString();
}

void AppendDateTime(QString& out, const QString& f, const TDecodedDateTime& dt,
                    const TFormatSettings& fs, int level) {
  if (level >= 3) return; // nested formats (ddddd, c, t inside the settings) stop at two levels
  QChar lastToken = ' ';
  for (qsizetype i = 0; i < f.size(); ++i) {
    const QChar starter = f[i];
    qsizetype count = 1;
    auto getCount = [&]() {
      while (i + 1 < f.size() && f[i + 1] == starter) ++i, ++count;
    };
    QChar token = starter.toUpper();
    const bool letter = token >= 'A' && token <= 'Z';
    if (letter) {
      if (token == 'M' && lastToken == 'H') token = 'N';
      lastToken = token;
    }
    switch (letter ? token.unicode() : starter.unicode()) {
    case 'Y':
      getCount();
      if (count <= 2) out += PaddedNumber(((dt.Year % 100) + 100) % 100, 2);
      else out += PaddedNumber(dt.Year, 4);
      break;
    case 'M':
      getCount();
      if (count <= 2) out += PaddedNumber(dt.Month, static_cast<int>(count));
      else if (count == 3) out += NameAt(fs.ShortMonthNames, dt.Month - 1);
      else out += NameAt(fs.LongMonthNames, dt.Month - 1);
      break;
    case 'D':
      getCount();
      if (count <= 2) out += PaddedNumber(dt.Day, static_cast<int>(count));
      else if (count == 3) out += NameAt(fs.ShortDayNames, dt.DayOfWeek - 1);
      else if (count == 4) out += NameAt(fs.LongDayNames, dt.DayOfWeek - 1);
      else if (count == 5) AppendDateTime(out, fs.ShortDateFormat, dt, fs, level + 1);
      else AppendDateTime(out, fs.LongDateFormat, dt, fs, level + 1);
      break;
    case 'H': {
      getCount();
      // 12-hour clock when an am/pm token follows before the next hour token (quotes skipped).
      bool twelve = false;
      QChar quote;
      for (qsizetype k = i + 1; k < f.size(); ++k) {
        const QChar c = f[k];
        if (!quote.isNull()) {
          if (c == quote) quote = QChar();
        } else if (c == '\'' || c == '"') {
          quote = c;
        } else if (c == 'a' || c == 'A') {
          twelve = StartsWithCI(f, k, "am/pm") || StartsWithCI(f, k, "a/p") || StartsWithCI(f, k, "ampm");
          break;
        } else if (c == 'h' || c == 'H') {
          break;
        }
      }
      int h = dt.Hour;
      if (twelve) {
        h %= 12;
        if (h == 0) h = 12;
      }
      out += PaddedNumber(h, static_cast<int>(std::min<qsizetype>(count, 2)));
      break;
    }
    case 'N':
      getCount();
      out += PaddedNumber(dt.Minute, static_cast<int>(std::min<qsizetype>(count, 2)));
      break;
    case 'S':
      getCount();
      out += PaddedNumber(dt.Second, static_cast<int>(std::min<qsizetype>(count, 2)));
      break;
    case 'Z':
      getCount();
      out += PaddedNumber(dt.MilliSecond, static_cast<int>(std::min<qsizetype>(count, 3)));
      break;
    case 'T':
      getCount();
      AppendDateTime(out, count == 1 ? fs.ShortTimeFormat : fs.LongTimeFormat, dt, fs, level + 1);
      break;
    case 'C':
      getCount();
      AppendDateTime(out, fs.ShortDateFormat, dt, fs, level + 1);
      if (dt.Hour != 0 || dt.Minute != 0 || dt.Second != 0 || dt.MilliSecond != 0) {
        out += ' ';
        AppendDateTime(out, fs.LongTimeFormat, dt, fs, level + 1);
      }
      break;
    case 'A':
      if (StartsWithCI(f, i, "am/pm")) {
        out += f.mid(dt.Hour >= 12 ? i + 3 : i, 2);
        i += 4;
      } else if (StartsWithCI(f, i, "a/p")) {
        out += f.mid(dt.Hour >= 12 ? i + 2 : i, 1);
        i += 2;
      } else if (StartsWithCI(f, i, "ampm")) {
        out += dt.Hour < 12 ? fs.TimeAMString : fs.TimePMString;
        i += 3;
      } else if (StartsWithCI(f, i, "aaaa")) {
        out += NameAt(fs.LongDayNames, dt.DayOfWeek - 1);
        i += 3;
      } else if (StartsWithCI(f, i, "aaa")) {
        out += NameAt(fs.ShortDayNames, dt.DayOfWeek - 1);
        i += 2;
      } else {
        out += starter;
      }
      break;
    case '/':
      if (!fs.DateSeparator.isNull()) out += fs.DateSeparator;
      break;
    case ':':
      if (!fs.TimeSeparator.isNull()) out += fs.TimeSeparator;
      break;
    case '\'':
    case '"': {
      const qsizetype end = f.indexOf(starter, i + 1);
      out += f.mid(i + 1, (end < 0 ? f.size() : end) - i - 1);
      i = end < 0 ? f.size() : end;
      break;
    }
    default:
      out += starter;
      break;
    }
  }
}

// ------------------------------------------------------------------------------------------------
// Format

[[noreturn]] void RaiseFormatError(const char* id, const QString& format) {
  throw EConvertError(QyFormatMessage(id, {format}));
}

bool IsIntegerVariant(const QVariant& v) {
  switch (v.typeId()) {
  case QMetaType::Int: case QMetaType::UInt: case QMetaType::Long: case QMetaType::ULong:
  case QMetaType::LongLong: case QMetaType::ULongLong: case QMetaType::Short:
  case QMetaType::UShort: case QMetaType::SChar: case QMetaType::UChar:
    return true;
  default:
    return false;
  }
}

bool IsUnsignedVariant(const QVariant& v) {
  switch (v.typeId()) {
  case QMetaType::UInt: case QMetaType::ULong: case QMetaType::ULongLong: case QMetaType::UShort:
  case QMetaType::UChar:
    return true;
  default:
    return false;
  }
}

// Width of the integer type in bits (for %u and %x of negative values).
int IntegerBits(const QVariant& v) {
  switch (v.typeId()) {
  case QMetaType::LongLong: case QMetaType::ULongLong: return 64;
  case QMetaType::Long: case QMetaType::ULong: return static_cast<int>(sizeof(long) * 8);
  default: return 32;
  }
}

bool IsFloatVariant(const QVariant& v) {
  return v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float;
}

bool IsStringVariant(const QVariant& v) {
  switch (v.typeId()) {
  case QMetaType::QString: case QMetaType::QByteArray: case QMetaType::QChar: case QMetaType::Char:
    return true;
  default:
    return false;
  }
}

QString UnsignedText(unsigned long long magnitude, int base) {
  return QString::number(magnitude, base).toUpper();
}

} // namespace

// ------------------------------------------------------------------------------------------------

QString FloatToStrF(double value, TFloatFormat format, int precision, int digits,
                    const TFormatSettings& fs) {
  if (!std::isfinite(value)) return SpecialText(value);
  precision = std::clamp(precision, 1, MaxPrecision);
  switch (format) {
  case TFloatFormat::General:
    return FormatGeneral(FloatToDecimal(value, precision, 9999), precision, std::clamp(digits, 0, 4), fs);
  case TFloatFormat::Exponent: {
    TDecimal d = FloatToDecimal(value, precision, 9999);
    QString out;
    if (d.Negative && !d.Digits.empty()) out += '-';
    out += QLatin1Char(DigitAt(d, 0));
    if (precision > 1) {
      out += fs.DecimalSeparator;
      for (int i = 1; i < precision; ++i) out += QLatin1Char(DigitAt(d, i));
    }
    AppendExponent(out, 'E', d.Digits.empty() ? 0 : d.Exponent - 1, true, std::clamp(digits, 0, 4));
    return out;
  }
  case TFloatFormat::Fixed:
  case TFloatFormat::Number:
  case TFloatFormat::Currency: {
    digits = std::clamp(digits, 0, 18);
    TDecimal d = FloatToDecimal(value, precision, digits);
    if (d.Exponent > precision) // more integer digits than the precision: scientific (general) form
      return FormatGeneral(d, precision, 0, fs);
    QString intPart;
    for (int i = 0; i < d.Exponent; ++i) intPart += QLatin1Char(DigitAt(d, i));
    if (intPart.isEmpty()) intPart = "0";
    if (format != TFloatFormat::Fixed) intPart = Grouped(intPart, fs.ThousandSeparator);
    QString number = intPart;
    if (digits > 0) {
      number += fs.DecimalSeparator;
      for (int i = 0; i < digits; ++i) number += QLatin1Char(DigitAt(d, static_cast<long long>(d.Exponent) + i));
    }
    const bool negative = d.Negative && !d.Digits.empty();
    if (format == TFloatFormat::Currency) return ApplyCurrency(number, negative, fs);
    return negative ? '-' + number : number;
  }
  }
  return QString();
}

QString FloatToStr(double value, const TFormatSettings& fs) {
  return FloatToStrF(value, TFloatFormat::General, FmtPrecision, 0, fs);
}

QString FormatFloat(const QString& format, double value, const TFormatSettings& fs) {
  if (!std::isfinite(value)) return SpecialText(value);
  const QStringList sections = SplitSections(format);
  auto pick = [&](int index) { return index < sections.size() && !sections[index].isEmpty() ? index : 0; };
  const int wanted = value > 0 ? 0 : value < 0 ? 1 : 2;
  int sec = pick(wanted);
  if (sections[sec].isEmpty()) return FloatToStr(value, fs);
  TSectionInfo info = ScanSection(sections[sec]);
  TDecimal d;
  if (info.Scientific) {
    d = FloatToDecimal(value, std::clamp(info.IntPlaces + info.DecPlaces, 1, MaxPrecision), 9999);
  } else {
    d = FloatToDecimal(value, FmtPrecision, info.DecPlaces);
    if (d.Exponent > 18) return FloatToStr(value, fs);
  }
  if (d.Digits.empty() && wanted != 2) { // rounds to zero: the zero section applies
    const int z = pick(2);
    if (z != sec) {
      sec = z;
      info = ScanSection(sections[sec]);
    }
  }
  QString out;
  if (sec == 0 && value < 0 && !d.Digits.empty()) out += '-';
  if (d.Digits.empty()) d = TDecimal();
  ApplySection(out, sections[sec], info, d, fs);
  return out;
}

QString FormatDateTime(const QString& format, double dateTime, const TFormatSettings& fs) {
  const TDecodedDateTime dt = DecodeDateTime(dateTime);
  QString out;
  AppendDateTime(out, format.isEmpty() ? QStringLiteral("C") : format, dt, fs, 0);
  return out;
}

bool TryStrToFloat(const QString& text, double& value, const TFormatSettings& fs) {
  qsizetype b = 0, e = text.size();
  while (b < e && text[b] == ' ') ++b;
  while (e > b && text[e - 1] == ' ') --e;
  const QStringView s = QStringView(text).mid(b, e - b);
  if (s.isEmpty()) return false;

  qsizetype i = 0;
  bool negative = false;
  if (s[i] == '+' || s[i] == '-') negative = s[i++] == '-';
  const QStringView rest = s.mid(i);
  if (rest.compare(QLatin1String("INF"), Qt::CaseInsensitive) == 0) {
    value = negative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    return true;
  }
  if (i == 0 && rest.compare(QLatin1String("NAN"), Qt::CaseInsensitive) == 0) {
    value = std::numeric_limits<double>::quiet_NaN();
    return true;
  }

  std::string ascii;
  ascii.reserve(static_cast<size_t>(s.size()) + 2);
  if (negative) ascii += '-';
  int mantissaDigits = 0;
  long long magnitude = 0; // decimal position of the leading non-zero digit
  bool seenNonZero = false;
  int intDigitsAfterLead = 0, zerosAfterPoint = 0;
  auto isDigit = [](QChar c) { return c >= '0' && c <= '9'; };
  while (i < s.size() && isDigit(s[i])) {
    if (s[i] != '0') seenNonZero = true;
    if (seenNonZero) ++intDigitsAfterLead;
    ascii += static_cast<char>(s[i++].unicode());
    ++mantissaDigits;
  }
  if (i < s.size() && s[i] == fs.DecimalSeparator) {
    ascii += '.';
    ++i;
    while (i < s.size() && isDigit(s[i])) {
      if (s[i] != '0') seenNonZero = true;
      else if (!seenNonZero) ++zerosAfterPoint;
      ascii += static_cast<char>(s[i++].unicode());
      ++mantissaDigits;
    }
  }
  if (mantissaDigits == 0) return false;
  long long exponent = 0;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    ++i;
    bool eneg = false;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) eneg = s[i++] == '-';
    int expDigits = 0;
    ascii += 'e';
    if (eneg) ascii += '-';
    while (i < s.size() && isDigit(s[i])) {
      if (exponent < 100000000) exponent = exponent * 10 + (s[i].unicode() - '0');
      ascii += static_cast<char>(s[i++].unicode());
      ++expDigits;
    }
    if (expDigits == 0) return false;
    if (eneg) exponent = -exponent;
  }
  if (i != s.size()) return false;
  magnitude = (intDigitsAfterLead > 0 ? intDigitsAfterLead : -zerosAfterPoint) + exponent;

  double result = 0;
  const auto res = std::from_chars(ascii.data(), ascii.data() + ascii.size(), result);
  if (res.ec == std::errc::result_out_of_range) {
    if (!seenNonZero || magnitude < 0) result = negative ? -0.0 : 0.0; // underflow to zero
    else return false;                                                  // overflow
  } else if (res.ec != std::errc() || res.ptr != ascii.data() + ascii.size()) {
    return false;
  }
  value = result;
  return true;
}

double StrToFloat(const QString& text, const TFormatSettings& fs) {
  double v = 0;
  if (!TryStrToFloat(text, v, fs)) throw EConvertError(QyFormatMessage(QyRes::InvalidFloat, {text}));
  return v;
}

QString Format(const QString& format, std::initializer_list<QVariant> args, const TFormatSettings& fs) {
  const std::vector<QVariant> argv(args);
  QString out;
  size_t argIndex = 0;
  const qsizetype n = format.size();
  for (qsizetype i = 0; i < n; ++i) {
    const QChar c = format[i];
    if (c != '%') {
      out += c;
      continue;
    }
    const qsizetype start = i;
    if (++i >= n) RaiseFormatError(QyRes::InvalidFormat, format);
    if (format[i] == '%') {
      out += '%';
      continue;
    }
    auto nextArg = [&]() -> const QVariant& {
      if (argIndex >= argv.size()) RaiseFormatError(QyRes::ArgumentMissing, format.mid(start, i - start + 1));
      return argv[argIndex++];
    };
    auto isDigit = [&](qsizetype k) { return k < n && format[k] >= '0' && format[k] <= '9'; };
    // A number or '*' (taken from the arguments); -1 when absent. Above MaxFieldSize it is an
    // error rather than a request for a text of that size.
    auto readNumber = [&]() -> long long {
      long long v = 0;
      if (i < n && format[i] == '*') {
        ++i;
        const QVariant& a = nextArg();
        if (!IsIntegerVariant(a)) RaiseFormatError(QyRes::InvalidFormat, format);
        v = a.toLongLong();
      } else if (!isDigit(i)) {
        return -1;
      }
      for (; isDigit(i); ++i)
        if (v <= MaxFieldSize) v = v * 10 + (format[i].unicode() - '0');
      if (v > MaxFieldSize) RaiseFormatError(QyRes::InvalidFormat, format);
      return v;
    };
    bool left = false;
    long long width = -1, prec = -1;
    long long first = readNumber();
    if (i < n && format[i] == ':') {
      argIndex = static_cast<size_t>(std::max(0LL, first));
      ++i;
      first = -1;
    }
    if (first >= 0) {
      width = first;
    } else {
      if (i < n && format[i] == '-') {
        left = true;
        ++i;
      }
      width = readNumber();
    }
    if (i < n && format[i] == '.') {
      ++i;
      prec = readNumber();
      if (prec < 0) prec = 0;
    }
    if (i >= n) RaiseFormatError(QyRes::InvalidFormat, format);
    const QChar type = format[i].toLower();
    QString s;
    switch (type.unicode()) {
    case 'd':
    case 'u':
    case 'x': {
      const QVariant& v = nextArg();
      if (!IsIntegerVariant(v)) RaiseFormatError(QyRes::InvalidFormat, format);
      bool neg = false;
      unsigned long long mag;
      if (IsUnsignedVariant(v)) {
        mag = v.toULongLong();
      } else {
        const long long x = v.toLongLong();
        if (type == 'd') {
          neg = x < 0;
          mag = neg ? 0ULL - static_cast<unsigned long long>(x) : static_cast<unsigned long long>(x);
        } else { // two's complement in the argument's width
          const int bits = IntegerBits(v);
          mag = static_cast<unsigned long long>(x);
          if (bits < 64) mag &= (1ULL << bits) - 1;
        }
      }
      s = UnsignedText(mag, type == 'x' ? 16 : 10);
      if (prec > s.size()) s = QString(prec - s.size(), '0') + s;
      if (neg) s = '-' + s;
      break;
    }
    case 'e':
    case 'f':
    case 'g':
    case 'n':
    case 'm': {
      const QVariant& v = nextArg();
      if (!IsFloatVariant(v)) RaiseFormatError(QyRes::InvalidFormat, format);
      const double x = v.toDouble();
      const int p = static_cast<int>(std::min<long long>(prec, MaxPrecision));
      switch (type.unicode()) {
      case 'e': s = FloatToStrF(x, TFloatFormat::Exponent, prec < 0 ? 15 : p, 3, fs); break;
      case 'g': s = FloatToStrF(x, TFloatFormat::General, prec < 0 ? 15 : p, 0, fs); break;
      case 'f': s = FloatToStrF(x, TFloatFormat::Fixed, MaxPrecision, prec < 0 ? 2 : p, fs); break;
      case 'n': s = FloatToStrF(x, TFloatFormat::Number, MaxPrecision, prec < 0 ? 2 : p, fs); break;
      default:
        s = FloatToStrF(x, TFloatFormat::Currency, MaxPrecision, prec < 0 ? fs.CurrencyDecimals : p, fs);
        break;
      }
      break;
    }
    case 's': {
      const QVariant& v = nextArg();
      if (!IsStringVariant(v)) RaiseFormatError(QyRes::InvalidFormat, format);
      s = v.typeId() == QMetaType::Char ? QString(QLatin1Char(v.value<char>())) : v.toString();
      if (prec >= 0 && prec < s.size()) s.truncate(prec);
      break;
    }
    default:
      RaiseFormatError(QyRes::InvalidFormat, format);
    }
    if (width > s.size()) {
      const QString pad(static_cast<qsizetype>(width - s.size()), ' ');
      s = left ? s + pad : pad + s;
    }
    out += s;
  }
  return out;
}
