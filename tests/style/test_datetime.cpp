// Date-time helpers (QyDateTime). Calendar values before the zero date come from
// Python's datetime (tests/style/gen_datetime.py prints the tables below); the rest by hand.
#include <QyDateTime.h>
#include <QyExceptions.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {
constexpr double Day = 1.0;
constexpr double Hour = 1.0 / 24;
constexpr double Minute = 1.0 / 1440;
constexpr double Second = 1.0 / 86400;
} // namespace

TEST(QyDateTimeSecondsToString, Ranges) {
  using R = TQySecondsFormatRange;
  const struct { double seconds; R range; const char* expected; } cases[] = {
      {3661, R::Hour, "01:01:01"}, {0, R::Hour, "00:00:00"}, {0, R::Second, "0"},
      {12.5, R::Second, "12.5"}, {0.25, R::Second, "0.25"}, {1.234567, R::Second, "1.2346"},
      {0.0000001, R::Second, "0"}, {75, R::Second, "75"}, {59.5, R::Minute, "00:59.5"},
      {5.5, R::Minute, "00:05.5"}, {125, R::Minute, "02:05"}, {7200, R::Minute, "120:00"},
      {1e-7, R::Minute, "00:00"}, {3661.5, R::Hour, "01:01:01.5"}, {360000, R::Hour, "100:00:00"},
      {3661.0004, R::Hour, "01:01:01"}, {3661.0006, R::Hour, "01:01:01.001"},
      {90061.5, R::Day, "1.01:01:01.5"}, {3600, R::Day, "01:00:00"}, {86399.9996, R::Day, "1.00:00:00"},
      {864000, R::Day, "10.00:00:00"}, {-30, R::Minute, "-00:30"}, {-3661, R::Hour, "-01:01:01"},
      // Beyond 64-bit milliseconds: 1e16 = 115740740740 * 86400 + 64000 = 2777777777777 * 3600
      // + 2800; 9.5e15 = 158333333333333 * 60 + 20; 1e300 = 1.1574074074074075e295 days + 63360 s
      // (the remainder by Python's math.fmod, which is exact).
      {1e16, R::Day, "115740740740.17:46:40"}, {1e16, R::Hour, "2777777777777:46:40"},
      {-9.5e15, R::Minute, "-158333333333333:20"}, {1e300, R::Day, "1.15740740740741E295.17:36:00"}};
  for (const auto& c : cases)
    EXPECT_EQ(SecondsToString(c.seconds, c.range).toStdString(), c.expected)
        << c.seconds << " range " << static_cast<int>(c.range);
}

TEST(QyDateTimeTotals, SpanInUnits) {
  EXPECT_DOUBLE_EQ(TotalHours(1.5), 36);
  EXPECT_DOUBLE_EQ(TotalMinutes(0.5), 720);
  EXPECT_DOUBLE_EQ(TotalSeconds(1), 86400);
  EXPECT_DOUBLE_EQ(TotalMilliSeconds(0.001), 86400);
  EXPECT_DOUBLE_EQ(TotalSeconds(-0.25), -21600);
}

// ---- Increments

using IncFn = double (*)(double, std::int64_t);

TEST(QyDateTimeIncrements, AgreeWithTheCalendar) {
  const IncFn H = MyIncHours, M = MyIncMinutes, S = MyIncSeconds, Ms = MyIncMilliSeconds;
  // From gen_datetime.py (Python's datetime); the comment gives the calendar reading.
  const struct { IncFn inc; double t; std::int64_t n; double expected; } cases[] = {
      {H, -1.75, 12, 0.25},                            // 1899-12-29 18:00 + 12 h = 1899-12-30 06:00
      {H, -1.25, 1, -1.2916666666666667},              // 1899-12-29 06:00 + 1 h = 07:00
      {H, -1.25, -7, -2.9583333333333335},             // 1899-12-29 06:00 - 7 h = 1899-12-28 23:00
      {H, 0.25, -12, -1.75},                           // 1899-12-30 06:00 - 12 h = 1899-12-29 18:00
      {M, 0.0, -1, -1.9993055555555554},               // 1899-12-30 00:00 - 1 min = 1899-12-29 23:59
      {M, -2.9993055555555554, 2, -1.0006944444444446}, // 1899-12-28 23:59 + 2 min = 12-29 00:01
      {S, -1.999988425925926, 1, 0.0},                 // 1899-12-29 23:59:59 + 1 s = 12-30 00:00
      {S, -36463.0, -1, -36464.99998842592},           // 1800-03-01 00:00 - 1 s = 1800-02-28 23:59:59
      {Ms, -1.5000057870370371, 600, -1.5000127314814815}, // 12:00:00.500 + 600 ms
      {Ms, -1.0, -1, -2.999999988425926},              // 1899-12-29 00:00 - 1 ms = 12-28 23:59:59.999
      {H, 45350.958333333336, 2, 45351.041666666664},  // 2024-02-28 23:00 + 2 h = 02-29 01:00
      {Ms, 36526.0, 259200005, 36529.00000005787},     // 2000-01-01 + 3 days 5 ms
      // After the zero date they are plain additions.
      {H, 36526.5, 3, 36526.5 + 3 * Hour}, {M, 36526.5, -90, 36526.5 - 90 * Minute},
      {S, 36526.5, 86400, 36526.5 + Day}, {Ms, 36526.5, 1500, 36526.5 + 1.5 * Second}};
  for (const auto& c : cases) EXPECT_NEAR(c.inc(c.t, c.n), c.expected, 1e-9) << c.t << " + " << c.n;
  // Zero leaves the date alone, exactly.
  for (double t : {-1.3, -0.5, 0.0, 36526.123456789})
    for (IncFn inc : {H, M, S, Ms}) EXPECT_EQ(inc(t, 0), t);
}

// ---- DateTimeSpan

TEST(QyDateTimeSpan, SignedDays) {
  // From gen_datetime.py. -1.75 is 18:00 on the day before the zero date: a quarter of a day before
  // its midnight (the naive difference would be 1.75); -1.25 is 06:00 of that day: 18 hours before.
  const double cases[][3] = {{-1.75, 0.0, 0.25}, {-1.25, 0.0, 0.75}, {-2.25, 1.75, 3.5},
                             {-36522.5, -36522.25, -0.25}, {36526.25, 36528.75, 2.5}, {0.0, -1.75, -0.25},
                             {5.5, 5.5, 0.0}};
  for (const auto& c : cases) EXPECT_NEAR(DateTimeSpan(c[0], c[1]), c[2], 1e-12) << c[0] << " -> " << c[1];
  EXPECT_DOUBLE_EQ(DateTimeSpan(-2.999999999999999, -1.0), 1.0); // magnitude > 0.99999999999999
}

// ---- MyDateTimeToString

TEST(QyDateTimeToString, FffIsTheMilliseconds) {
  const double t = 36527 + (13 * 3600 + 4 * 60 + 5.006) / 86400; // 2000-01-02 13:04:05.006
  QString s;
  MyDateTimeToString(s, "hh:nn:ss.fff", t);
  EXPECT_EQ(s, "13:04:05.006");
  EXPECT_EQ(MyDateTimeToString("yyyy-mm-dd fff", t), "2000-01-02 006");
  EXPECT_EQ(MyDateTimeToString("fff", 0.5), "000");
  EXPECT_EQ(MyDateTimeToString("ss.fff", 36527 + 45.045 / 86400), "45.045");
  EXPECT_EQ(MyDateTimeToString("ss.fff", 36527 + 45.78 / 86400), "45.780");
  EXPECT_EQ(MyDateTimeToString("hh:nn", t), "13:04"); // without fff: plain FormatDateTime
  EXPECT_EQ(MyDateTimeToString("hh:nn:ss.fff", -1.25 - 0.123 / 86400), "06:00:00.123");
}

// ---- Time spans as text

// Rows: a span and its text, both ways unless the text cannot give the span back (rounding up to
// a whole day; day numbers beyond 64 bits are whole, written as float text without a time).
TEST(QyDateTimeSpanText, SpansAndTheirTexts) {
  const struct { double value; const char* text; bool readsBack; } cases[] = {
      {1.5, "1.12:00:00.000", true},       {0.5, "12:00:00.000", true},   {0, "00:00:00.000", true},
      {43200.5 / 86400, "12:00:00.500", true}, {2 + (3 * 3600 + 4 * 60 + 5.678) / 86400, "2.03:04:05.678", true},
      {-1.5, "-1.12:00:00.000", true},     {-0.25, "-06:00:00.000", true}, {400, "400.00:00:00.000", true},
      {0.99999999999, "1.00:00:00.000", false}, {1.3e219, "1.3E219.00:00:00.000", false},
      {-1e19, "-1E19.00:00:00.000", false}};
  for (const auto& c : cases) {
    EXPECT_EQ(DoubleToTimeSpanStr(c.value), c.text) << c.value;
    if (c.readsBack) {
      EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr(c.text), c.value) << c.text;
    }
  }
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("1.02:03:04"), 1 + (2 * 3600 + 3 * 60 + 4) / 86400.0);
  TFormatSettings fs = DefaultFormatSettings();
  fs.DecimalSeparator = ',';
  EXPECT_EQ(DoubleToTimeSpanStr(1.5 + 0.25 / 86400, fs), "1.12:00:00,250");
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("1.12:00:00,250", fs), 1.5 + 0.25 / 86400);
  for (const char* bad : {"abc", "1:2", "x.01:02:03.000"}) EXPECT_THROW(DoubleFomTimeSpanStr(bad), EConvertError) << bad;
  EXPECT_THROW(DoubleToTimeSpanStr(std::numeric_limits<double>::quiet_NaN()), EInvalidOp);
}

TEST(QyDateTimeSpanText, RoundTrips) {
  for (double x : {3.0 + 17 * Second, 123.456, -7.891}) { // milliseconds that no row has
    const double back = DoubleFomTimeSpanStr(DoubleToTimeSpanStr(x));
    EXPECT_NEAR(back, x, 0.0005 * Second) << x << " " << DoubleToTimeSpanStr(x).toStdString();
  }
}
