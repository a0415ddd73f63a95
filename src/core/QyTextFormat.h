#pragma once
// Runtime text formatting: follows the system's documented text formatting rules in
// FloatToStr, FloatToStrF, FormatFloat, FormatDateTime, StrToFloat, TryStrToFloat and
// Format. Results never depend on the machine's locale: only the TFormatSettings passed in count.
//
// Decisions (where the documentation leaves room):
// - Settings. DefaultFormatSettings() is a fixed US-English set: '.' and ',', '/' and ':',
//   M/d/yyyy, "dddd, MMMM d, yyyy", h:nn AMPM, h:nn:ss AMPM, AM/PM, English month and day names,
//   "$" before the amount, negative amounts in brackets "($1.00)", 2 currency decimals. A null
//   QChar as a separator leaves the separator out.
// - Digits. A double is first turned into its shortest round-trip decimal digits (at most 17);
//   every rounding after that works on those digits, ties away from zero:
//   FormatFloat("0.00", 1.005) = "1.01". FloatToStr and FormatFloat (non-scientific) keep at most
//   15 significant digits; FloatToStrF and Format clamp the precision to 1..18.
// - General: fixed notation while the integer digits fit the precision and the value is at least
//   0.00001 (0.0001 -> "0.0001", 0.00001 -> "1E-5"); else "d.dddE[-]x" with `digits` (0..4) as the
//   minimum exponent digits and no '+'. Exponent: "d.ddd" with `precision` digits, "E", a sign
//   always, at least `digits` (0..4) exponent digits; Format's %e asks for 3 ("1.00000000000000E+003").
//   Fixed, Number, Currency: `digits` (0..18) decimals; with more integer digits than the
//   precision the general format is used instead.
// - A value that rounds to zero is written without a minus sign everywhere ("0.00", not "-0.00");
//   NaN is "NAN", the infinities "INF" and "-INF".
// - FormatFloat: up to three sections (positive; negative; zero), an empty negative or zero
//   section means the positive one, an empty positive section or format means FloatToStr. A value
//   that rounds to zero in its section takes the zero section. '0' '#' '.' ',' and E+ E- e+ e-
//   (followed by up to four '0') are specifiers; '...' and "..." are literal text; everything else,
//   '%' included, is literal. More than 18 integer digits without E: FloatToStr.
// - FormatDateTime: c d dd ddd dddd ddddd dddddd m mm mmm mmmm (minutes right after h/hh) yy yyyy
//   h hh n nn s ss z zz zzz t tt am/pm a/p ampm aaa aaaa / : and quoted text; h is on the 12-hour
//   clock when the next 'a' outside quotes, before any further h, starts am/pm, a/p or ampm (as the
//   runtime looks ahead); an empty format means "c"; era tokens
//   (e, g) are not supported and stay literal. The day is Trunc(t), the time of day |Frac(t)|,
//   rounded to milliseconds (half to even); 24:00 carries into the next day. NaN, the infinities
//   and |t| > 1e9 raise EInvalidOp.
// - StrToFloat: blanks (spaces) around, [sign] digits [separator digits] [E|e [sign] digits] with
//   at least one digit, the settings' decimal separator only, no thousand separators; "INF",
//   "-INF", "NAN" (any case) as FloatToStr writes them. Overflow fails; underflow gives 0.
// - Format: %[index:][-][width][.precision]type with * for index, width or precision. Argument
//   kinds as the runtime demands: integers for d u x and *, floating point (double, float) for
//   e f g n m, strings and characters for s; %u and %x show negatives in the argument's width
//   (32 bits for int). Defaults: e g 15 digits, f n 2 decimals, m CurrencyDecimals. A wrong kind,
//   a missing argument, an unknown type or a width or precision above 10000 raise EConvertError.
#include <QString>
#include <QStringList>
#include <QVariant>
#include <initializer_list>
enum class TFloatFormat { General, Exponent, Fixed, Number, Currency };
struct TFormatSettings {            // fixed invariant default, never the machine locale
  QChar DecimalSeparator = '.';  QChar ThousandSeparator = ',';
  QChar DateSeparator = '/';     QChar TimeSeparator = ':';
  QString ShortDateFormat = "M/d/yyyy", LongDateFormat = "dddd, MMMM d, yyyy";
  QString ShortTimeFormat = "h:nn AMPM", LongTimeFormat = "h:nn:ss AMPM";
  QString TimeAMString = "AM", TimePMString = "PM";
  QStringList ShortMonthNames, LongMonthNames, ShortDayNames, LongDayNames; // English, filled by DefaultFormatSettings()
  QString CurrencyString = "$"; int CurrencyFormat = 0, NegCurrFormat = 0, CurrencyDecimals = 2;
};
const TFormatSettings& DefaultFormatSettings();
QString FloatToStr(double value, const TFormatSettings& fs = DefaultFormatSettings());
QString FloatToStrF(double value, TFloatFormat format, int precision, int digits, const TFormatSettings& fs = DefaultFormatSettings());
QString FormatFloat(const QString& format, double value, const TFormatSettings& fs = DefaultFormatSettings());
QString FormatDateTime(const QString& format, double dateTime, const TFormatSettings& fs = DefaultFormatSettings());
double StrToFloat(const QString& text, const TFormatSettings& fs = DefaultFormatSettings());   // EConvertError
bool TryStrToFloat(const QString& text, double& value, const TFormatSettings& fs = DefaultFormatSettings());
QString Format(const QString& format, std::initializer_list<QVariant> args, const TFormatSettings& fs = DefaultFormatSettings());
