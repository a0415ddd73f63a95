// Table-driven tests of the runtime text formatting (QyTextFormat). Expected strings come from the
// runtime's documentation (the FormatFloat table, the Format and FormatDateTime specifier lists)
// and from hand reasoning about the documented rules, never from this implementation's output.
// CTest runs this suite again under a comma-decimal locale: every result here must hold there too.
#include "QyExpect.h"
#include <QyExceptions.h>
#include <QyTextFormat.h>
#include <QDate>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Inf = std::numeric_limits<double>::infinity();

// Days since 1899-12-30, counted by Qt's calendar (independent of the library's calendar code).
double DayNumber(int y, int m, int d) { return double(QDate(1899, 12, 30).daysTo(QDate(y, m, d))); }

double Stamp(int y, int mo, int d, int h = 0, int n = 0, int s = 0, int ms = 0) {
  return DayNumber(y, mo, d) + ((h * 60.0 + n) * 60.0 + s + ms / 1000.0) / 86400.0;
}

TFormatSettings Settings(QChar decimal, QChar thousand) {
  TFormatSettings fs = DefaultFormatSettings();
  fs.DecimalSeparator = decimal;
  fs.ThousandSeparator = thousand;
  return fs;
}

} // namespace

// ---- FloatToStr: general format, 15 significant digits ------------------------------------------

TEST(TextFormatFloatToStr, MatchesTheRuntime) {
  const struct { double value; const char* expected; } cases[] = {
    {0.0, "0"}, {-0.0, "0"}, {1.0, "1"}, {-1.5, "-1.5"}, {100.0, "100"}, {1e20, "1E20"},
    {0.1 + 0.2, "0.3"}, {1e15, "1E15"}, {123456789012345.0, "123456789012345"},
    {999999999999999.9, "1E15"}, // rounds to 16 digits left of the point
    {0.0001, "0.0001"}, {0.00001, "1E-5"}, {-0.000012345, "-1.2345E-5"},
    {1.0 / 3, "0.333333333333333"}, {2.0 / 3, "0.666666666666667"}, {1e-10, "1E-10"},
    {1.5e300, "1.5E300"}, {3.14159, "3.14159"}, {1234567.125, "1234567.125"},
    {12345678901234567890.0, "1.23456789012346E19"}, {1.7976931348623157e308, "1.79769313486232E308"},
    {NaN, "NAN"}, {Inf, "INF"}, {-Inf, "-INF"}};
  for (const auto& c : cases) EXPECT_EQ(FloatToStr(c.value).toStdString(), c.expected) << c.value;
}

// ---- FloatToStrF ----------------------------------------------------------------------------------

TEST(TextFormatFloatToStrF, MatchesTheRuntime) {
constexpr TFloatFormat General = TFloatFormat::General, Exponent = TFloatFormat::Exponent,
                       Fixed = TFloatFormat::Fixed, Number = TFloatFormat::Number,
                       Currency = TFloatFormat::Currency;
  const struct { double value; TFloatFormat format; int precision, digits; const char* expected; } cases[] = {
    // General: fixed while the integer digits fit the precision and the value is >= 0.00001;
    // otherwise scientific with `digits` as the minimum exponent digits.
    {1234.5678, General, 6, 0, "1234.57"}, {1234.5678, General, 3, 0, "1.23E3"},
    {1234.5678, General, 3, 2, "1.23E03"}, {0.000012345, General, 4, 0, "1.235E-5"},
    {0.5, General, 15, 0, "0.5"},
    // Exponent: `precision` digits in all, sign and at least `digits` exponent digits.
    {1234.5678, Exponent, 6, 0, "1.23457E+3"}, {1234.5678, Exponent, 6, 3, "1.23457E+003"},
    {-0.00012, Exponent, 3, 2, "-1.20E-04"}, {0.0, Exponent, 4, 2, "0.000E+00"},
    {1.0, Exponent, 15, 3, "1.00000000000000E+000"}, {9.99999999, Exponent, 7, 0, "1.000000E+1"},
    {1.0, Exponent, 3, 9, "1.00E+0000"}, // digits clamp to 4
    // Fixed: `digits` decimals, ties away from zero on the decimal digits.
    {1234.5678, Fixed, 15, 2, "1234.57"}, {0.5, Fixed, 15, 0, "1"}, {-0.5, Fixed, 15, 0, "-1"},
    {2.5, Fixed, 15, 0, "3"}, {1.005, Fixed, 15, 2, "1.01"}, {0.0, Fixed, 15, 3, "0.000"},
    {1.23456789, Fixed, 4, 6, "1.235000"}, // precision limits the digits
    {1e-20, Fixed, 15, 2, "0.00"},
    {-0.001, Fixed, 15, 2, "0.00"},     // a value that rounds to zero has no sign
    {12345.678, Fixed, 4, 2, "1.235E4"}, // more integer digits than precision
    // Number: fixed with thousand separators.
    {1234567.891, Number, 15, 2, "1,234,567.89"}, {-1234.5, Number, 15, 0, "-1,235"},
    {999.999, Number, 15, 2, "1,000.00"}, {123.0, Number, 15, 1, "123.0"},
    // Currency: CurrencyString "$", CurrencyFormat 0 ("$1"), NegCurrFormat 0 ("($1)").
    {1234.5, Currency, 15, 2, "$1,234.50"}, {-1234.5, Currency, 15, 2, "($1,234.50)"},
    {0.0, Currency, 15, 0, "$0"}, {NaN, Fixed, 15, 2, "NAN"}, {-Inf, Exponent, 15, 2, "-INF"}};
  for (const auto& c : cases)
    EXPECT_EQ(FloatToStrF(c.value, c.format, c.precision, c.digits).toStdString(), c.expected)
        << c.value << " precision " << c.precision << " digits " << c.digits;
}

TEST(TextFormatFloatToStrF, CurrencyPlacementsFollowTheSettings) {
  TFormatSettings fs = DefaultFormatSettings();
  fs.CurrencyString = "EUR";
  const struct { int format, neg; const char* pos; const char* negText; } cases[] = {
      {0, 0, "EUR1.50", "(EUR1.50)"},  {1, 1, "1.50EUR", "-EUR1.50"},   {2, 2, "EUR 1.50", "EUR-1.50"},
      {3, 3, "1.50 EUR", "EUR1.50-"},  {0, 4, "EUR1.50", "(1.50EUR)"},  {0, 5, "EUR1.50", "-1.50EUR"},
      {0, 6, "EUR1.50", "1.50-EUR"},   {0, 7, "EUR1.50", "1.50EUR-"},   {0, 8, "EUR1.50", "-1.50 EUR"},
      {0, 9, "EUR1.50", "-EUR 1.50"},  {0, 10, "EUR1.50", "1.50 EUR-"}, {0, 11, "EUR1.50", "EUR 1.50-"},
      {0, 12, "EUR1.50", "EUR -1.50"}, {0, 13, "EUR1.50", "1.50- EUR"}, {0, 14, "EUR1.50", "(EUR 1.50)"},
      {0, 15, "EUR1.50", "(1.50 EUR)"}};
  for (const auto& c : cases) {
    fs.CurrencyFormat = c.format;
    fs.NegCurrFormat = c.neg;
    EXPECT_EQ(FloatToStrF(1.5, TFloatFormat::Currency, 15, 2, fs).toStdString(), c.pos) << c.format;
    EXPECT_EQ(FloatToStrF(-1.5, TFloatFormat::Currency, 15, 2, fs).toStdString(), c.negText) << c.neg;
  }
}

// ---- FormatFloat ------------------------------------------------------------------------------------

// The table of the runtime's FormatFloat documentation: values 1234, -1234, 0.5, 0.
TEST(TextFormatFormatFloat, DocumentationTable) {
  const struct { const char* format; const char* expected[4]; } rows[] = {
      {"", {"1234", "-1234", "0.5", "0"}},
      {"0", {"1234", "-1234", "1", "0"}},
      {"0.00", {"1234.00", "-1234.00", "0.50", "0.00"}},
      {"#.##", {"1234", "-1234", ".5", ""}},
      {"#,##0.00", {"1,234.00", "-1,234.00", "0.50", "0.00"}},
      {"#,##0.00;(#,##0.00)", {"1,234.00", "(1,234.00)", "0.50", "0.00"}},
      {"#,##0.00;;Zero", {"1,234.00", "-1,234.00", "0.50", "Zero"}},
      {"0.000E+00", {"1.234E+03", "-1.234E+03", "5.000E-01", "0.000E+00"}},
      {"#.###E-0", {"1.234E3", "-1.234E3", "5E-1", "0E0"}}};
  const double values[4] = {1234, -1234, 0.5, 0};
  for (const auto& row : rows)
    for (int i = 0; i < 4; ++i)
      EXPECT_EQ(FormatFloat(row.format, values[i]).toStdString(), row.expected[i]) << row.format << " " << values[i];
}

TEST(TextFormatFormatFloat, Rules) {
  const struct { const char* format; double value; const char* expected; } cases[] = {
    // Ties round half away from zero on the shortest decimal text.
    {"0.00", 2.345, "2.35"}, {"0.00", -2.345, "-2.35"}, {"0.00", 1.005, "1.01"}, {"0.0", 0.05, "0.1"},
    {"0", 2.5, "3"}, {"0", -2.5, "-3"}, {"0.0 'kg'", 2.25, "2.3 kg"},
    // Placeholders: leftmost '0' before and rightmost '0' after the point fix the digits shown.
    {"000.000", 12.3456, "012.346"}, {"###.###", 12.3456, "12.346"}, {"#.###", 12.3, "12.3"},
    {"0.000", 12.3, "12.300"}, {"00000", 42, "00042"}, {"0.###", 1.5, "1.5"}, {"0.0##", 1, "1.0"},
    {"0.0##", 1.23456, "1.235"}, {"#", 0.4, ""}, {"00-00", 1234, "12-34"},
    // Thousand separators: the place of ',' does not matter.
    {"#,#.#", 1234567, "1,234,567"}, {"0,0.0", 1234567, "1,234,567.0"}, {"0,000.0", 2222.22, "2,222.2"},
    {"000,0.0", 2222.22, "2,222.2"}, {"#,##0", 999999.5, "1,000,000"},
    {"#,##0.00", -1234567.891, "-1,234,567.89"},
    // Scientific: digits before the point in the format fix the mantissa.
    {"0.00E+0", 1234567, "1.23E+6"}, {"0.00E+00", 1234567, "1.23E+06"},
    {"0000.00E+00", 2222.22, "2222.22E+00"}, {"00.0E+0", 2222.22, "22.2E+2"},
    {"0.00E+00", -0.000123, "-1.23E-04"}, {"0.0e-00", 12345, "1.2e04"}, {"0.0e-00", 0.012345, "1.2e-02"},
    {"0.0E+0", 9.99, "1.0E+1"},
    // Literal text: quotes of both kinds, and characters that are no specifiers ('%' is plain).
    {"'Value: '0.0", 3.14, "Value: 3.1"}, {"\"#\"0", 5, "#5"}, {"0%", 5, "5%"}, {"0 Euro", 5, "5 Euro"},
    {"$#,##0.00", -5, "-$5.00"}, {"'a;b' 0", 7, "a;b 7"},
    // Sections: a value that rounds to zero takes the zero section; empty sections fall back.
    {"0.00", -0.001, "0.00"}, {"0.00;(0.00);'zero'", -0.001, "zero"}, {"0;(0)", -5, "(5)"},
    {"0;;", 0, "0"}, {"0;", -5, "-5"}, {";(0)", 5, "5"},
    // General format for an empty positive section and more than 18 integer digits.
    {"", 1e20, "1E20"}, {"0", 1e20, "1E20"}, {"0", 123456789012345678.0, "123456789012346000"},
    {"0.00", NaN, "NAN"}, {"0.00", -Inf, "-INF"}};
  for (const auto& c : cases)
    EXPECT_EQ(FormatFloat(c.format, c.value).toStdString(), c.expected) << c.format << " of " << c.value;
}

// ---- FormatDateTime ------------------------------------------------------------------------------

// Sunday 2 January 2000, 13:04:05.006
const double Sunday = Stamp(2000, 1, 2, 13, 4, 5, 6);
const double Morning = Stamp(1999, 12, 31, 0, 7, 0, 0);

struct DateTimeCase {
  const char* format;
  double value;
  const char* expected;
};
void ExpectDateTimes(const std::vector<DateTimeCase>& cases) {
  for (const auto& c : cases)
    EXPECT_EQ(FormatDateTime(c.format, c.value).toStdString(), c.expected) << c.format << " of " << c.value;
}

TEST(TextFormatDateTime, Tokens) {
  ExpectDateTimes({
    {"d", Sunday, "2"}, {"dd", Sunday, "02"}, {"ddd", Sunday, "Sun"}, {"dddd", Sunday, "Sunday"},
    {"ddddd", Sunday, "1/2/2000"}, {"dddddd", Sunday, "Sunday, January 2, 2000"}, {"m", Sunday, "1"},
    {"mm", Sunday, "01"}, {"mmm", Sunday, "Jan"}, {"mmmm", Sunday, "January"}, {"yy", Sunday, "00"},
    {"yyyy", Sunday, "2000"}, {"h", Sunday, "13"}, {"hh", Sunday, "13"}, {"n", Sunday, "4"},
    {"nn", Sunday, "04"}, {"s", Sunday, "5"}, {"ss", Sunday, "05"}, {"z", Sunday, "6"},
    {"zzz", Sunday, "006"}, {"t", Sunday, "1:04 PM"}, {"tt", Sunday, "1:04:05 PM"},
    {"am/pm", Sunday, "pm"}, {"AM/PM", Sunday, "PM"}, {"a/p", Sunday, "p"}, {"A/P", Sunday, "P"},
    {"ampm", Sunday, "PM"}, {"c", Sunday, "1/2/2000 1:04:05 PM"}, {"", Sunday, "1/2/2000 1:04:05 PM"},
    {"c", DayNumber(2000, 1, 2), "1/2/2000"}, // midnight: no time
    {"h:nn am/pm", Sunday, "1:04 pm"}, {"h a/p", Sunday, "1 p"},
    {"hh:mm", Sunday, "13:04"}, // m after h is minutes
    {"h:m:s", Sunday, "13:4:5"}, {"d/m/yy hh:mm", Sunday, "2/1/00 13:04"},
    {"yyyy-mm-dd hh:nn:ss.zzz", Sunday, "2000-01-02 13:04:05.006"}, {"dd/mm/yyyy", Sunday, "02/01/2000"},
    {"'Day' d", Sunday, "Day 2"}, {"\"mm\" mm", Sunday, "mm 01"}, {"yyyy 'at' hh", Sunday, "2000 at 13"},
    {"mmmm d, yyyy", Sunday, "January 2, 2000"}, {"hh:nn am/pm", Morning, "12:07 am"},
    {"h AMPM", Stamp(2000, 1, 1, 12), "12 PM"}, {"dd/mm/yy", Morning, "31/12/99"}, {"ddd", Morning, "Fri"}});
}

TEST(TextFormatDateTime, Calendar) {
  ExpectDateTimes({
    {"yyyy-mm-dd hh:nn", 0.0, "1899-12-30 00:00"}, {"dddd", 0.0, "Saturday"},
    // Before the zero date the fraction is the time of day, counted forward from the day.
    {"yyyy-mm-dd hh:nn", -1.25, "1899-12-29 06:00"}, {"yyyy-mm-dd hh:nn", -0.5, "1899-12-30 12:00"},
    {"yyyy-mm-dd hh:nn", -2.75, "1899-12-28 18:00"}, {"ddd", -1.0, "Fri"},
    {"yyyy-mm-dd", -693593.0, "0001-01-01"}, {"yyyy-mm-dd", 2958465.0, "9999-12-31"},
    {"yyyy-mm-dd", 61.0, "1900-03-01"}, {"yyyy-mm-dd", 36585.0, "2000-02-29"},
    {"yyyy-mm-dd", 36526.0, "2000-01-01"},
    // Milliseconds are rounded; a time that rounds to 24:00 belongs to the next day.
    {"yyyy-mm-dd hh:nn:ss.zzz", 0.99999999999, "1899-12-31 00:00:00.000"}, {"zz", Sunday, "06"}});
  EXPECT_THROW(FormatDateTime("yyyy", NaN), EInvalidOp);
}

// ---- StrToFloat, TryStrToFloat ------------------------------------------------------------------

TEST(TextFormatStrToFloat, MatchesTheRuntime) {
  const struct { const char* text; bool ok; double value; } cases[] = {
    {"1.5", true, 1.5}, {"  1.5  ", true, 1.5}, {"-1.5e3", true, -1500}, {"+2E-2", true, 0.02},
    {".5", true, 0.5}, {"5.", true, 5}, {"0.1", true, 0.1}, {"1e-400", true, 0}, {"INF", true, Inf},
    {"-inf", true, -Inf}, {"NAN", true, NaN}, {"1e400", false, 0}, {"1,5", false, 0},
    {"1 000", false, 0}, {"", false, 0}, {"   ", false, 0}, {"abc", false, 0}, {"1e", false, 0},
    {".", false, 0}, {"1.5x", false, 0}, {"--1", false, 0}, {"\t1", false, 0}};
  for (const auto& c : cases) {
    double v = -12345;
    EXPECT_EQ(TryStrToFloat(c.text, v), c.ok) << "'" << c.text << "'";
    if (c.ok) {
      EXPECT_TRUE(std::isnan(c.value) ? std::isnan(v) : v == c.value) << "'" << c.text << "' gave " << v;
    }
  }
}

TEST(TextFormatStrToFloat, FailureRaisesEConvertErrorWithTheText) {
  EXPECT_EQ(QyMessageOf<EConvertError>([] { StrToFloat("abc"); }),
            "'abc' is not a valid floating point value");
  EXPECT_DOUBLE_EQ(StrToFloat(" 2.5E1 "), 25.0);
}

// ---- Format --------------------------------------------------------------------------------------

TEST(TextFormatFormat, Directives) {
  const std::pair<QString, const char*> cases[] = {
      // Integers.
      {Format("%d", {42}), "42"}, {Format("%5d", {42}), "   42"}, {Format("%-5d|", {42}), "42   |"},
      {Format("%.5d", {-42}), "-00042"}, {Format("%D", {7}), "7"},
      {Format("%d", {qint64(-9000000000LL)}), "-9000000000"}, {Format("%u", {-2}), "4294967294"},
      {Format("%x", {255}), "FF"}, {Format("%.4x", {255}), "00FF"}, {Format("%x", {-1}), "FFFFFFFF"},
      // Floats.
      {Format("%f", {1.0}), "1.00"}, {Format("%.3f", {2.0 / 3}), "0.667"}, {Format("%.2f", {2.345}), "2.35"},
      {Format("%8.2f", {123.456}), "  123.46"}, {Format("%.7f", {1.1234}), "1.1234000"},
      {Format("%e", {1000.0}), "1.00000000000000E+003"}, {Format("%.3e", {1234.5}), "1.23E+003"},
      {Format("%e", {-0.000123}), "-1.23000000000000E-004"}, {Format("%g", {1e20}), "1E20"},
      {Format("%g", {2.2}), "2.2"}, {Format("%.2g", {123.456}), "1.2E2"}, {Format("%n", {4552.2176}), "4,552.22"},
      {Format("%.0n", {1234567.5}), "1,234,568"}, {Format("%m", {1234.5}), "$1,234.50"},
      {Format("%m", {-1234.5}), "($1,234.50)"}, {Format("%f", {NaN}), "NAN"},
      // Strings, indexes and stars.
      {Format("%s", {QString("abc")}), "abc"}, {Format("%.2s", {QString("abc")}), "ab"},
      {Format("[%5s]", {QString("ab")}), "[   ab]"}, {Format("[%-5s]", {QString("ab")}), "[ab   ]"},
      {Format("%1:s %0:s", {QString("a"), QString("b")}), "b a"},
      {Format("%d %d %d %0:d %3:d", {1, 2, 3, 4}), "1 2 3 1 4"}, {Format("%*d", {5, 42}), "   42"},
      {Format("%-*d|", {4, 42}), "42  |"}, {Format("%.*f", {1, 2.25}), "2.3"}, {Format("%%", {}), "%"},
      {Format("100%% of %s", {QString("x")}), "100% of x"}, {Format("%s", {QChar('z')}), "z"}};
  for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].first, cases[i].second) << "row " << i;
}

TEST(TextFormatFormat, BadDirectivesRaiseEConvertError) {
  EXPECT_THROW(Format("%d", {1.5}), EConvertError);
  EXPECT_THROW(Format("%f", {5}), EConvertError);
  EXPECT_THROW(Format("%s", {5}), EConvertError);
  EXPECT_THROW(Format("%q", {1}), EConvertError);
  EXPECT_THROW(Format("50%", {}), EConvertError);
  // Widths and precisions are capped at 10000: beyond it the directive is bad, not a huge text.
  const struct { QString format; QVariant a, b; } capped[] = {
      {"%10001d", 1, 0}, {"%.10001f", 1.0, 0}, {"%999999999s", QString("x"), 0}, {"%*d", 1 << 30, 1},
      {"%.*d", std::numeric_limits<int>::max(), 1}, {"%-99999999999999999999d", 1, 0}};
  for (const auto& c : capped)
    EXPECT_EQ(QyMessageOf<EConvertError>([&] { Format(c.format, {c.a, c.b}); }),
              "Format '" + c.format + "' invalid or incompatible with argument")
        << c.format.toStdString();
  EXPECT_EQ(Format("%10000d", {1}).size(), 10000);
  EXPECT_EQ(Format("%.10000d", {1}).size(), 10000);
  EXPECT_THAT(QyMessageOf<EConvertError>([] { Format("%d and %d", {1}); }).toStdString(),
              testing::StartsWith("No argument for format"));
}

// ---- Settings: separators, currency, names ----------------------------------------------------

TEST(TextFormatSettings, SeparatorsAndNamesComeFromTheSettings) {
  const TFormatSettings fs = Settings(',', '.');
  EXPECT_EQ(FloatToStrF(1234567.891, TFloatFormat::Number, 15, 2, fs), "1.234.567,89");
  EXPECT_EQ(FloatToStr(0.5, fs), "0,5");
  EXPECT_EQ(FloatToStr(1.5e-7, fs), "1,5E-7");
  EXPECT_EQ(FloatToStrF(1234567.0, TFloatFormat::Number, 15, 0, Settings('.', QChar())), "1234567");
  EXPECT_EQ(FormatFloat("#,##0.00", 1234567.891, fs), "1.234.567,89");
  EXPECT_EQ(FormatFloat("0.000E+00", 1234, fs), "1,234E+03");
  EXPECT_EQ(Format("%.2f|%n|%e", {1.5, 1234.5, 1.5}, fs), "1,50|1.234,50|1,50000000000000E+000");
  EXPECT_DOUBLE_EQ(StrToFloat("1,5", fs), 1.5);
  EXPECT_THROW(StrToFloat("1.5", fs), EConvertError);

  TFormatSettings dt = DefaultFormatSettings();
  dt.DateSeparator = '.';
  dt.TimeSeparator = '-';
  dt.TimeAMString = "vorm.";
  dt.TimePMString = "nachm.";
  dt.LongMonthNames[0] = "Januar";
  EXPECT_EQ(FormatDateTime("dd/mm/yyyy hh:nn", Sunday, dt), "02.01.2000 13-04");
  EXPECT_EQ(FormatDateTime("h ampm", Sunday, dt), "1 nachm.");
  EXPECT_EQ(FormatDateTime("mmmm", Sunday, dt), "Januar");
}

// ---- Robustness: random formats never crash, and 17 digits round-trip exactly ------------------

TEST(TextFormatRobustness, RandomFormatsAndTexts) {
  std::mt19937 rng(20240611);
  const std::string alphabet = "0#.,;E+-e'\"%dmyhnsztca/:p x*123";
  const double values[] = {0.0, -0.0, 1.5, -2.345, 1e20, -1e-20, 123456789.125, NaN, Inf, 36526.75, -1.25, 5e-324};
  auto randomText = [&](size_t maxLen) {
    std::string s;
    const size_t n = rng() % (maxLen + 1);
    for (size_t i = 0; i < n; ++i) s += alphabet[rng() % alphabet.size()];
    return QString::fromStdString(s);
  };
  for (int round = 0; round < 3000; ++round) {
    const QString f = randomText(12);
    const double v = values[rng() % std::size(values)];
    (void)FormatFloat(f, v);
    try {
      (void)FormatDateTime(f, v);
    } catch (const EInvalidOp&) {
    }
    try {
      (void)Format(f, {v, 7, QString("s")});
    } catch (const EConvertError&) {
    }
    double out = 0;
    (void)TryStrToFloat(randomText(8), out);
  }
}

TEST(TextFormatRobustness, SeventeenDigitsRoundTripExactly) {
  std::mt19937_64 rng(7);
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t bits = rng();
    double x;
    std::memcpy(&x, &bits, sizeof x);
    if (!std::isfinite(x)) continue;
    const QString text = FloatToStrF(x, TFloatFormat::General, 17, 0);
    EXPECT_EQ(StrToFloat(text), x) << text.toStdString();
  }
}
