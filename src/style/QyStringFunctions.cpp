#include "QyStringFunctions.h"
#include "QyExceptions.h"
#include "QyLocalize.h"

#include <cmath>
#include <limits>

namespace {

bool IsAsciiDigit(QChar c) { return c >= '0' && c <= '9'; }

// Length of the longest prefix of `s` that is a number in the runtime's Val syntax with a point:
// [sign] digits [. digits] [(e|E) [sign] digits], at least one mantissa digit ("1." and ".5" are
// numbers). With `real` false: [sign] digits.
qsizetype NumberPrefix(QStringView s, bool real) {
  const qsizetype n = s.size();
  qsizetype i = 0;
  if (i < n && (s[i] == '+' || s[i] == '-')) ++i;
  qsizetype digits = 0;
  while (i < n && IsAsciiDigit(s[i])) ++i, ++digits;
  if (real && i < n && s[i] == '.') {
    qsizetype j = i + 1, fraction = 0;
    while (j < n && IsAsciiDigit(s[j])) ++j, ++fraction;
    if (digits + fraction > 0) {
      i = j;
      digits += fraction;
    }
  }
  if (digits == 0) return 0;
  if (real && i < n && (s[i] == 'e' || s[i] == 'E')) {
    qsizetype j = i + 1, expDigits = 0;
    if (j < n && (s[j] == '+' || s[j] == '-')) ++j;
    while (j < n && IsAsciiDigit(s[j])) ++j, ++expDigits;
    if (expDigits > 0) i = j;
  }
  return i;
}

bool StartsWithNaN(const QString& s) {
  return s.size() >= 3 && QStringView(s).left(3).compare(QLatin1String("NAN"), Qt::CaseInsensitive) == 0;
}

[[noreturn]] void RaiseInvalidInteger(const QString& text) {
  throw EConvertError(QyFormatMessage(QyRes::InvalidInteger, {text}));
}

[[noreturn]] void RaiseInvalidFloat(const QString& text) {
  throw EConvertError(QyFormatMessage(QyRes::InvalidFloat, {text}));
}

// [sign] decimal digits into an int; false on overflow or bad syntax.
bool DecimalToInt(QStringView s, int& value) {
  qsizetype i = 0;
  bool negative = false;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) negative = s[i++] == '-';
  if (i >= s.size()) return false;
  long long v = 0;
  for (; i < s.size(); ++i) {
    if (!IsAsciiDigit(s[i])) return false;
    v = v * 10 + (s[i].unicode() - '0');
    if (v > 2147483648LL) return false;
  }
  if (negative) v = -v;
  if (v > std::numeric_limits<int>::max() || v < std::numeric_limits<int>::min()) return false;
  value = static_cast<int>(v);
  return true;
}

} // namespace

// ---- Positions and characters

int LastPos(QChar c, const QString& s) {
  const qsizetype p = s.lastIndexOf(c);
  return p < 0 ? -1 : static_cast<int>(p) + 1;
}

int LastPointPos(const QString& s) { return LastPos('.', s); }

bool CharIn(QChar c, const QString& s) { return s.contains(c); }

bool IsIntegerDigit(QChar c) { return IsAsciiDigit(c) || c == '+' || c == '-'; }

bool IsAmericanNumberDigit(QChar c) { return IsIntegerDigit(c) || c == '.' || c == 'e' || c == 'E'; }

// ---- Integers as text

QString IntToStr(long long value) { return QString::number(value); }

bool TryStrToInt(const QString& text, int& value) {
  qsizetype i = 0;
  const qsizetype n = text.size();
  while (i < n && text[i] == ' ') ++i;
  bool negative = false;
  if (i < n && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  int base = 10;
  if (i < n && text[i] == '$') {
    base = 16;
    ++i;
  } else if (i + 1 < n && text[i] == '0' && (text[i + 1] == 'x' || text[i + 1] == 'X')) {
    base = 16;
    i += 2;
  } else if (i < n && (text[i] == 'x' || text[i] == 'X')) {
    base = 16;
    ++i;
  }
  if (i >= n) return false;
  unsigned long long v = 0;
  for (; i < n; ++i) {
    const QChar c = text[i];
    int d;
    if (IsAsciiDigit(c)) d = c.unicode() - '0';
    else if (base == 16 && c.toUpper() >= 'A' && c.toUpper() <= 'F') d = c.toUpper().unicode() - 'A' + 10;
    else return false;
    v = v * base + d;
    if (v > 0xFFFFFFFFULL) return false;
  }
  if (base == 16) { // hexadecimal: the 32 bits of the integer
    value = static_cast<int>(static_cast<unsigned>(v));
    if (negative) value = -value;
    return true;
  }
  if (negative ? v > 2147483648ULL : v > 2147483647ULL) return false;
  value = negative ? static_cast<int>(-static_cast<long long>(v)) : static_cast<int>(v);
  return true;
}

int StrToInt(const QString& text) {
  int v = 0;
  if (!TryStrToInt(text, v)) RaiseInvalidInteger(text);
  return v;
}

// ---- Numbers as text

QString RealToStrDigits(double x, int width) {
  if (width <= 0) return FloatToStr(x);
  int precision = width;
  QString s = FloatToStrF(x, TFloatFormat::General, precision, 0);
  while (s.size() > width && precision > 1) {
    --precision;
    s = FloatToStrF(x, TFloatFormat::General, precision, 0);
  }
  return s;
}

QString IndexToAlphabet(int i) {
  QString s;
  while (i > 0) {
    s.prepend(QChar('A' + (i - 1) % 26));
    i = (i - 1) / 26;
  }
  return s;
}

QString Americanize(const QString& s, const TFormatSettings& fs) {
  if (fs.DecimalSeparator == '.') return s;
  QString r = s;
  r.replace(fs.DecimalSeparator, '.');
  return r;
}

QString DeAmericanize(const QString& s, const TFormatSettings& fs) {
  if (fs.DecimalSeparator == '.') return s;
  QString r = s;
  r.replace('.', fs.DecimalSeparator);
  return r;
}

QString DoubleToStr(double x, const TFormatSettings& fs) { return Americanize(FloatToStr(x, fs), fs); }

double DoubleFromStr(const QString& s, const TFormatSettings& fs) { return StrToFloat(DeAmericanize(s, fs), fs); }

// ---- Lists of numbers

namespace {
// Items of a ";" list: at least one; a trailing ";" ends the list.
QStringList ListItems(const QString& s) {
  QStringList items = s.split(';');
  if (items.size() > 1 && items.last().isEmpty()) items.removeLast();
  return items;
}
} // namespace

QVector<double> StringToDoubleArray(const QString& s, const TFormatSettings& fs) {
  QVector<double> a;
  for (const QString& item : ListItems(DeAmericanize(s, fs))) a.append(StrToFloat(item, fs));
  return a;
}

QString DoubleArrayToString(const QVector<double>& a, const TFormatSettings& fs) {
  QStringList items;
  for (double x : a) items << FloatToStr(x, fs);
  return Americanize(items.join(';'), fs);
}

QVector<int> StringToIntegerArray(const QString& s) {
  QVector<int> a;
  for (const QString& item : ListItems(s)) a.append(StrToInt(item));
  return a;
}

QString IntegerArrayToString(const QVector<int>& a) {
  QStringList items;
  for (int x : a) items << IntToStr(x);
  return items.join(';');
}

// ---- Reading numbers out of free text

void EraseToNumber(QString& s) {
  qsizetype i = 0;
  while (i < s.size() && NumberPrefix(QStringView(s).mid(i), true) == 0 &&
         !StartsWithNaN(s.mid(i, 3)))
    ++i;
  s.remove(0, i);
}

int ExtractOneInt(QString& s) {
  qsizetype i = 0;
  while (i < s.size() && NumberPrefix(QStringView(s).mid(i), false) == 0) ++i;
  s.remove(0, i);
  qsizetype run = 0;
  while (run < s.size() && IsIntegerDigit(s[run])) ++run;
  const qsizetype used = NumberPrefix(QStringView(s).left(run), false); // the part before a bad position
  int value = 0;
  if (used == 0 || !DecimalToInt(QStringView(s).left(used), value)) RaiseInvalidInteger(s.left(run));
  s.remove(0, used);
  return value;
}

double ExtractOneDouble(QString& s) {
  EraseToNumber(s);
  double value = 0;
  if (StartsWithNaN(s)) {
    value = std::numeric_limits<double>::quiet_NaN();
    s.remove(0, 3);
  } else {
    qsizetype run = 0;
    while (run < s.size() && IsAmericanNumberDigit(s[run])) ++run;
    const qsizetype used = NumberPrefix(QStringView(s).left(run), true);
    if (used == 0 || !TryStrToFloat(s.left(used), value, DefaultFormatSettings()))
      RaiseInvalidFloat(s.left(run));
    s.remove(0, used);
  }
  EraseToNumber(s);
  return value;
}

// ---- Shift states

int ShiftStateToInt(TShiftState state) { return static_cast<int>(state.toInt() & 0xFFFF); }

TShiftState IntToShiftState(int i) { return TShiftState::fromInt(i & 0xFFFF); }

QString ShiftStateToStr(TShiftState state) { return IntToStr(ShiftStateToInt(state)); }

TShiftState StrToShiftState(const QString& s) { return IntToShiftState(StrToInt(s)); }
