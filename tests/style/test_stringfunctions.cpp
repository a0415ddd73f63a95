// String helpers (QyStringFunctions). Expected values worked out by hand from the rules.
#include "QyExpect.h"
#include <QyExceptions.h>
#include <QyStringFunctions.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>
#include <vector>

namespace {
TFormatSettings CommaSettings() {
  TFormatSettings fs = DefaultFormatSettings();
  fs.DecimalSeparator = ',';
  fs.ThousandSeparator = '.';
  return fs;
}
} // namespace

// ---- Positions and characters

TEST(StringFunctionsPositions, LastPosIsOneBasedOrMinusOne) {
  for (auto [c, text, pos] : {std::tuple{'.', "a.b.c", 4}, {'a', "a", 1}, {'x', "abc", -1}, {'.', "", -1}})
    EXPECT_EQ(LastPos(c, text), pos) << text;
  EXPECT_EQ(std::pair(LastPointPos("Form1.Graph1.Axis"), LastPointPos("Graph1")), std::pair(13, -1));
  EXPECT_EQ(std::tuple(CharIn('b', "abc"), CharIn('d', "abc"), CharIn('a', "")), std::tuple(true, false, false));
}

TEST(StringFunctionsPositions, DigitClasses) {
  for (QChar c : QString("0123456789+-")) EXPECT_TRUE(IsIntegerDigit(c)) << c.toLatin1();
  for (QChar c : QString(".eEx ,")) EXPECT_FALSE(IsIntegerDigit(c)) << c.toLatin1();
  for (QChar c : QString("0123456789+-.eE")) EXPECT_TRUE(IsAmericanNumberDigit(c)) << c.toLatin1();
  for (QChar c : QString(",xdD $")) EXPECT_FALSE(IsAmericanNumberDigit(c)) << c.toLatin1();
}

// ---- IndexToAlphabet: spreadsheet column names

TEST(StringFunctionsIndexToAlphabet, ColumnNames) {
  const struct { int index; const char* expected; } cases[] = {
      {-5, ""},     {0, ""},      {1, "A"},       {2, "B"},        {26, "Z"},     {27, "AA"},
      {28, "AB"},   {52, "AZ"},   {53, "BA"},     {702, "ZZ"},     {703, "AAA"},  {704, "AAB"},
      {16384, "XFD"}, {18278, "ZZZ"}, {18279, "AAAA"}};
  for (const auto& c : cases) EXPECT_EQ(IndexToAlphabet(c.index).toStdString(), c.expected) << c.index;
}

// ---- Numbers as text

TEST(StringFunctionsNumbers, RealToStrDigitsLowersThePrecisionUntilTheTextFits) {
  // Width 0: FloatToStr. 1234567 in 6: 1.23457E6, 1.2346E6, 1.235E6, 1.23E6; 0.000123456 goes
  // down to precision 1; -1.5 in 2 is precision 1, tie away from zero.
  const struct { double x; int width; const char* text; } cases[] = {
      {1.5, 0, "1.5"},         {1234567, 0, "1234567"},  {123456, 6, "123456"}, {1234567, 6, "1.23E6"},
      {0.000123456, 6, "0.0001"}, {1.0 / 3, 6, "0.3333"}, {5.123456, 6, "5.1235"}, {-1.5, 2, "-2"},
      {99999.95, 5, "1E5"}};
  for (const auto& c : cases) EXPECT_EQ(RealToStrDigits(c.x, c.width).toStdString(), c.text) << c.x;
}

TEST(StringFunctionsNumbers, AmericanizeSwapsTheSettingsDecimalSeparator) {
  EXPECT_EQ(Americanize("1.5;2.5"), "1.5;2.5"); // default settings: already a point
  EXPECT_EQ(DeAmericanize("1.5"), "1.5");
  const TFormatSettings fs = CommaSettings();
  EXPECT_EQ(Americanize("1,5;2,5", fs), "1.5;2.5");
  EXPECT_EQ(DeAmericanize("1.5;2.5", fs), "1,5;2,5");
}

TEST(StringFunctionsNumbers, DoubleToStrAndBackAlwaysUseThePoint) {
  const TFormatSettings fs = CommaSettings();
  EXPECT_EQ(DoubleToStr(0.5), "0.5");
  EXPECT_EQ(DoubleToStr(0.5, fs), "0.5");
  EXPECT_EQ(DoubleToStr(-1.25e-7, fs), "-1.25E-7");
  EXPECT_EQ(DoubleToStr(1e20), "1E20");
  EXPECT_DOUBLE_EQ(DoubleFromStr("0.5"), 0.5);
  EXPECT_DOUBLE_EQ(DoubleFromStr("0.5", fs), 0.5);
  EXPECT_DOUBLE_EQ(DoubleFromStr("2.5E-3", fs), 0.0025);
  EXPECT_THROW(DoubleFromStr("abc"), EConvertError);
  EXPECT_EQ(DoubleFromStr(DoubleToStr(0.1 + 0.2)), 0.3);
}

TEST(StringFunctionsNumbers, DoubleToStrUnderACommaCLocale) {
  const char* old = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = old ? old : "C";
  if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && !std::setlocale(LC_NUMERIC, "de_DE.utf8"))
    GTEST_SKIP() << "locale de_DE.UTF-8 is not installed";
  const QString text = DoubleToStr(0.5);
  const double back = DoubleFromStr("0.5");
  std::setlocale(LC_NUMERIC, saved.c_str());
  EXPECT_EQ(text, "0.5");
  EXPECT_EQ(back, 0.5);
}

TEST(StringFunctionsNumbers, IntegersAsText) {
  int v = 0;
  EXPECT_TRUE(TryStrToInt("42", v));
  EXPECT_EQ(v, 42);
  // Val also takes a bare "x" as the hexadecimal prefix.
  for (auto [text, value] : {std::pair{" +7", 7}, {"-2147483648", -2147483647 - 1}, {"$FF", 255}, {"0x10", 16},
                             {"x1F", 31}})
    EXPECT_EQ(StrToInt(text), value) << text;
  // Val: no trailing blanks.
  for (const char* text : {"2147483648", "", "1.5", "42 "}) EXPECT_THROW(StrToInt(text), EConvertError) << text;
  EXPECT_EQ(QyMessageOf<EConvertError>([] { StrToInt("1x"); }), "'1x' is not a valid integer value");
  EXPECT_EQ(IntToStr(-123), "-123");
}

// ---- Lists of numbers

TEST(StringFunctionsLists, StringToDoubleArray) {
  // A trailing ";" ends the list.
  for (auto [text, values] : {std::pair{"1.5;2;-3e2", QVector<double>{1.5, 2, -300}}, {"7", {7}}, {" 1 ; 2 ", {1, 2}},
                              {"1;2;", {1, 2}}})
    EXPECT_EQ(StringToDoubleArray(text), values) << text;
  EXPECT_EQ(StringToDoubleArray("1.5;2,5", CommaSettings()), (QVector<double>{1.5, 2.5}));
  for (const char* text : {"", ";", "1;;2", "1,5", "abc"}) // at least one item, each a number
    EXPECT_THROW(StringToDoubleArray(text), EConvertError) << text;
}

TEST(StringFunctionsLists, DoubleArrayToString) {
  EXPECT_EQ(DoubleArrayToString({}), "");
  EXPECT_EQ(DoubleArrayToString({1.5, -2, 1e20, 0.1 + 0.2}), "1.5;-2;1E20;0.3");
  EXPECT_EQ(DoubleArrayToString({1.5, 0.25}, CommaSettings()), "1.5;0.25");
  const QVector<double> a{3.25, -1e-9, 42};
  EXPECT_EQ(StringToDoubleArray(DoubleArrayToString(a)), a);
}

TEST(StringFunctionsLists, IntegerArrays) {
  EXPECT_EQ(StringToIntegerArray("1;-2;$10"), (QVector<int>{1, -2, 16}));
  EXPECT_EQ(StringToIntegerArray("5;"), (QVector<int>{5}));
  EXPECT_THROW(StringToIntegerArray(""), EConvertError);
  EXPECT_THROW(StringToIntegerArray("1;2.5"), EConvertError);
  EXPECT_EQ(IntegerArrayToString({}), "");
  EXPECT_EQ(IntegerArrayToString({1, -2, 3}), "1;-2;3");
}

// ---- Reading numbers out of free text

TEST(StringFunctionsExtract, EraseToNumber) {
  const struct { const char* in; const char* out; } cases[] = {
      {"abc", ""},        {"", ""},         {"  12", "12"},     {"x=-3", "-3"},   {"ab-c", ""},
      {"E5", "5"},        {"xe-3", "-3"},   {"..5", ".5"},      {"Fig. 3", "3"},  {"foo NaN 1", "NaN 1"},
      {"+.5", "+.5"},     {"- 5", "5"},     {"value 7", "7"},   {"1e5", "1e5"}};
  for (const auto& c : cases) {
    QString s = c.in;
    EraseToNumber(s);
    EXPECT_EQ(s.toStdString(), c.out) << "'" << c.in << "'";
  }
}

// Each row reads numbers one after the other from the text; after each, the text is what is left
// (not checked where `rest` is null). Texts without a number raise the conversion error.
struct ExtractStep {
  double value; // NaN: not a number
  const char* rest;
};
struct ExtractCase {
  const char* text;
  std::vector<ExtractStep> steps;
};
template <class F>
void ExpectExtraction(F extract, std::initializer_list<ExtractCase> cases, std::initializer_list<const char*> bad) {
  for (const auto& c : cases) {
    QString s = c.text;
    for (const auto& step : c.steps) {
      const double v = extract(s);
      EXPECT_TRUE(std::isnan(step.value) ? std::isnan(v) : v == step.value) << c.text << " gave " << v;
      if (step.rest) {
        EXPECT_EQ(s.toStdString(), step.rest) << c.text;
      }
    }
  }
  for (const char* text : bad) {
    QString s = text;
    EXPECT_THROW(extract(s), EConvertError) << "'" << text << "'";
  }
}

TEST(StringFunctionsExtract, ExtractOneIntReadsAndDeletes) {
  ExpectExtraction([](QString& s) { return double(ExtractOneInt(s)); },
                   {{"abc 12 def", {{12, " def"}}},
                    {"x-5y", {{-5, "y"}}},
                    {"12-3", {{12, "-3"}, {-3, ""}}}, // a run that is no integer: the part before the bad position
                    {"+-5", {{-5, nullptr}}},
                    {"1e5", {{1, "e5"}}},
                    {"a - b 7", {{7, nullptr}}}},
                   {"", "abc", "- +", "99999999999"});
  QString s = "x 99999999999";
  EXPECT_EQ(QyMessageOf<EConvertError>([&] { ExtractOneInt(s); }), "'99999999999' is not a valid integer value");
}

TEST(StringFunctionsExtract, ExtractOneDoubleReadsAndDeletes) {
  const double NaN = std::nan("");
  ExpectExtraction(ExtractOneDouble,
                   {{"x=1.5 y=2", {{1.5, "2"}, {2, ""}}}, // erased to the next number
                    {"(-.5; 2.5e-3)", {{-0.5, nullptr}, {0.0025, ""}}},
                    {"Temperature 5", {{5, nullptr}}},
                    {"NAN;3", {{NaN, "3"}, {3, nullptr}}},
                    {"a nan", {{NaN, ""}}},
                    {"NaN5", {{NaN, "5"}}},
                    {"-NAN", {{NaN, nullptr}}}, // the sign alone starts no number
                    // Partial parses.
                    {"1.5.3", {{1.5, ".3"}, {0.3, nullptr}}},
                    {"1e5e3", {{1e5, "3"}}}, // "e3" is an exponent left over and is erased
                    {"1e", {{1, ""}}},
                    {"2-3", {{2, nullptr}, {-3, nullptr}}},
                    {"7.", {{7, nullptr}}}},
                   {"", "abc", "e", "1e400"});
  QString s = "v 1e999";
  EXPECT_EQ(QyMessageOf<EConvertError>([&] { ExtractOneDouble(s); }), "'1e999' is not a valid floating point value");
}

// ---- Shift states

TEST(StringFunctionsShiftState, SixteenLowBitsAsDecimal) {
  using namespace QyShift;
  EXPECT_EQ(ShiftStateToInt(TShiftState(ssShift) | ssCtrl), 5);
  EXPECT_EQ(ShiftStateToStr(TShiftState(ssLeft)), "8");
  EXPECT_EQ(ShiftStateToStr(TShiftState()), "0");
  EXPECT_EQ(StrToShiftState("9"), TShiftState(ssShift) | ssLeft);
  EXPECT_EQ(IntToShiftState(0x10008), TShiftState(ssLeft)); // bits above 15 are dropped
  EXPECT_EQ(ShiftStateToInt(IntToShiftState(0xFFFFF)), 0xFFFF);
  EXPECT_EQ(ShiftStateToInt(TShiftState(ssHorizontal)), 1024);
  const TShiftState all = TShiftState(ssShift) | ssAlt | ssCtrl | ssLeft | ssRight | ssMiddle | ssDouble;
  EXPECT_EQ(StrToShiftState(ShiftStateToStr(all)), all);
  EXPECT_THROW(StrToShiftState("x"), EConvertError);
}
