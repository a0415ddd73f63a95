// Date-time helpers (QyDateTime). Calendar values before the zero date come from
// Python's datetime (tests/style/gen_datetime.py prints the tables below); the rest by hand.
#include <QyDateTime.h>
#include <QyExceptions.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <sstream>
#include <string>

namespace {
constexpr double Day = 1.0;
constexpr double Hour = 1.0 / 24;
constexpr double Minute = 1.0 / 1440;
constexpr double Second = 1.0 / 86400;

std::string Num(double x) {
  std::ostringstream os;
  os.precision(17);
  os << x;
  return os.str();
}
} // namespace

// ---- SecondsToString

struct SecondsCase {
  double seconds;
  TQySecondsFormatRange range;
  const char* expected;
};
void PrintTo(const SecondsCase& c, std::ostream* os) {
  *os << Num(c.seconds) << " range " << static_cast<int>(c.range) << " is <" << c.expected << ">";
}

class QyDateTimeSecondsToString : public testing::TestWithParam<SecondsCase> {};

TEST_P(QyDateTimeSecondsToString, Text) {
  const auto& c = GetParam();
  EXPECT_EQ(SecondsToString(c.seconds, c.range).toStdString(), c.expected)
      << c.seconds << " range " << static_cast<int>(c.range);
}

using R = TQySecondsFormatRange;
INSTANTIATE_TEST_SUITE_P(
    Ranges, QyDateTimeSecondsToString,
    testing::Values(
        SecondsCase{3661, R::Hour, "01:01:01"}, SecondsCase{0, R::Hour, "00:00:00"},
        SecondsCase{0, R::Second, "0"}, SecondsCase{12.5, R::Second, "12.5"},
        SecondsCase{0.25, R::Second, "0.25"}, SecondsCase{1.234567, R::Second, "1.2346"},
        SecondsCase{0.0000001, R::Second, "0"}, SecondsCase{75, R::Second, "75"},
        SecondsCase{59.5, R::Minute, "00:59.5"}, SecondsCase{5.5, R::Minute, "00:05.5"},
        SecondsCase{125, R::Minute, "02:05"}, SecondsCase{7200, R::Minute, "120:00"},
        SecondsCase{1e-7, R::Minute, "00:00"}, SecondsCase{3661.5, R::Hour, "01:01:01.5"},
        SecondsCase{360000, R::Hour, "100:00:00"}, SecondsCase{3661.0004, R::Hour, "01:01:01"},
        SecondsCase{3661.0006, R::Hour, "01:01:01.001"}, SecondsCase{90061.5, R::Day, "1.01:01:01.5"},
        SecondsCase{3600, R::Day, "01:00:00"}, SecondsCase{86399.9996, R::Day, "1.00:00:00"},
        SecondsCase{864000, R::Day, "10.00:00:00"}, SecondsCase{-30, R::Minute, "-00:30"},
        SecondsCase{-3661, R::Hour, "-01:01:01"}));

// ---- Totals

TEST(QyDateTimeTotals, SpanInUnits) {
  EXPECT_DOUBLE_EQ(TotalHours(1.5), 36);
  EXPECT_DOUBLE_EQ(TotalMinutes(0.5), 720);
  EXPECT_DOUBLE_EQ(TotalSeconds(1), 86400);
  EXPECT_DOUBLE_EQ(TotalMilliSeconds(0.001), 86400);
  EXPECT_DOUBLE_EQ(TotalSeconds(-0.25), -21600);
}

// ---- Increments

enum class Unit { Hours, Minutes, Seconds, MilliSeconds };

struct IncCase {
  Unit unit;
  double t;
  std::int64_t n;
  double expected;
};
void PrintTo(const IncCase& c, std::ostream* os) {
  *os << Num(c.t) << " plus " << c.n << " of unit " << static_cast<int>(c.unit) << " is " << Num(c.expected);
}

double Inc(Unit u, double t, std::int64_t n) {
  switch (u) {
  case Unit::Hours: return MyIncHours(t, n);
  case Unit::Minutes: return MyIncMinutes(t, n);
  case Unit::Seconds: return MyIncSeconds(t, n);
  default: return MyIncMilliSeconds(t, n);
  }
}

class QyDateTimeIncrements : public testing::TestWithParam<IncCase> {};

TEST_P(QyDateTimeIncrements, AgreeWithTheCalendar) {
  const auto& c = GetParam();
  EXPECT_NEAR(Inc(c.unit, c.t, c.n), c.expected, 1e-9) << c.t << " + " << c.n;
}

using U = Unit;
// From gen_datetime.py (Python's datetime); the comment gives the calendar reading.
INSTANTIATE_TEST_SUITE_P(
    Calendar, QyDateTimeIncrements,
    testing::Values(
        IncCase{U::Hours, -1.75, 12, 0.25},                              // 1899-12-29 18:00 + 12 h = 1899-12-30 06:00
        IncCase{U::Hours, -1.25, 1, -1.2916666666666667},                // 1899-12-29 06:00 + 1 h = 07:00
        IncCase{U::Hours, -1.25, -7, -2.9583333333333335},               // 1899-12-29 06:00 - 7 h = 1899-12-28 23:00
        IncCase{U::Hours, 0.25, -12, -1.75},                             // 1899-12-30 06:00 - 12 h = 1899-12-29 18:00
        IncCase{U::Minutes, 0.0, -1, -1.9993055555555554},               // 1899-12-30 00:00 - 1 min = 1899-12-29 23:59
        IncCase{U::Minutes, -2.9993055555555554, 2, -1.0006944444444446}, // 1899-12-28 23:59 + 2 min = 12-29 00:01
        IncCase{U::Seconds, -1.999988425925926, 1, 0.0},                 // 1899-12-29 23:59:59 + 1 s = 12-30 00:00
        IncCase{U::Seconds, -36463.0, -1, -36464.99998842592},           // 1800-03-01 00:00 - 1 s = 1800-02-28 23:59:59
        IncCase{U::MilliSeconds, -1.5000057870370371, 600, -1.5000127314814815}, // 12:00:00.500 + 600 ms
        IncCase{U::MilliSeconds, -1.0, -1, -2.999999988425926},          // 1899-12-29 00:00 - 1 ms = 12-28 23:59:59.999
        IncCase{U::Hours, 45350.958333333336, 2, 45351.041666666664},    // 2024-02-28 23:00 + 2 h = 02-29 01:00
        IncCase{U::MilliSeconds, 36526.0, 259200005, 36529.00000005787})); // 2000-01-01 + 3 days 5 ms

TEST(QyDateTimeIncrements, ZeroLeavesTheDateAlone) {
  for (double t : {-1.3, -0.5, 0.0, 36526.123456789}) {
    EXPECT_EQ(MyIncHours(t, 0), t);
    EXPECT_EQ(MyIncMinutes(t, 0), t);
    EXPECT_EQ(MyIncSeconds(t, 0), t);
    EXPECT_EQ(MyIncMilliSeconds(t, 0), t);
  }
}

TEST(QyDateTimeIncrements, AfterTheZeroDateTheyArePlainAdditions) {
  const double t = 36526.5;
  EXPECT_NEAR(MyIncHours(t, 3), t + 3 * Hour, 1e-10);
  EXPECT_NEAR(MyIncMinutes(t, -90), t - 90 * Minute, 1e-10);
  EXPECT_NEAR(MyIncSeconds(t, 86400), t + Day, 1e-10);
  EXPECT_NEAR(MyIncMilliSeconds(t, 1500), t + 1.5 * Second, 1e-10);
}

// ---- DateTimeSpan

struct SpanCase {
  double earlier, later, expected;
};
void PrintTo(const SpanCase& c, std::ostream* os) {
  *os << Num(c.earlier) << " to " << Num(c.later) << " is " << Num(c.expected);
}

class QyDateTimeSpan : public testing::TestWithParam<SpanCase> {};

TEST_P(QyDateTimeSpan, SignedDays) {
  const auto& c = GetParam();
  EXPECT_NEAR(DateTimeSpan(c.earlier, c.later), c.expected, 1e-12) << c.earlier << " -> " << c.later;
}

// From gen_datetime.py. -1.75 is 18:00 on the day before the zero date: a quarter of a day before
// its midnight (the naive difference would be 1.75); -1.25 is 06:00 of that day: 18 hours before.
INSTANTIATE_TEST_SUITE_P(Calendar, QyDateTimeSpan,
                         testing::Values(SpanCase{-1.75, 0.0, 0.25}, SpanCase{-1.25, 0.0, 0.75},
                                         SpanCase{-2.25, 1.75, 3.5}, SpanCase{-36522.5, -36522.25, -0.25},
                                         SpanCase{36526.25, 36528.75, 2.5}, SpanCase{0.0, -1.75, -0.25},
                                         SpanCase{5.5, 5.5, 0.0}));

TEST(QyDateTimeSpan, AlmostWholeFractionCountsAsZero) {
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

TEST(QyDateTimeSpanText, DoubleToTimeSpanStr) {
  EXPECT_EQ(DoubleToTimeSpanStr(1.5), "1.12:00:00.000");
  EXPECT_EQ(DoubleToTimeSpanStr(0.5), "12:00:00.000");
  EXPECT_EQ(DoubleToTimeSpanStr(0), "00:00:00.000");
  EXPECT_EQ(DoubleToTimeSpanStr(2 + (3 * 3600 + 4 * 60 + 5.678) / 86400), "2.03:04:05.678");
  EXPECT_EQ(DoubleToTimeSpanStr(-1.5), "-1.12:00:00.000");
  EXPECT_EQ(DoubleToTimeSpanStr(-0.25), "-06:00:00.000");
  EXPECT_EQ(DoubleToTimeSpanStr(0.99999999999), "1.00:00:00.000"); // rounds up to a whole day
  EXPECT_EQ(DoubleToTimeSpanStr(400), "400.00:00:00.000");
  TFormatSettings fs = DefaultFormatSettings();
  fs.DecimalSeparator = ',';
  EXPECT_EQ(DoubleToTimeSpanStr(1.5 + 0.25 / 86400, fs), "1.12:00:00,250");
}

TEST(QyDateTimeSpanText, DoubleFomTimeSpanStr) {
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("1.12:00:00.000"), 1.5);
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("12:00:00.500"), 43200.5 / 86400);
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("-1.12:00:00.000"), -1.5);
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("-06:00:00.000"), -0.25);
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("1.02:03:04"), 1 + (2 * 3600 + 3 * 60 + 4) / 86400.0);
  TFormatSettings fs = DefaultFormatSettings();
  fs.DecimalSeparator = ',';
  EXPECT_DOUBLE_EQ(DoubleFomTimeSpanStr("1.12:00:00,250", fs), 1.5 + 0.25 / 86400);
  EXPECT_THROW(DoubleFomTimeSpanStr("abc"), EConvertError);
  EXPECT_THROW(DoubleFomTimeSpanStr("1:2"), EConvertError);
  EXPECT_THROW(DoubleFomTimeSpanStr("x.01:02:03.000"), EConvertError);
}

TEST(QyDateTimeSpanText, RoundTrips) {
  for (double x : {0.0, 0.5, 1.5, -1.5, -0.25, 3.0 + 17 * Second, 123.456, -7.891}) {
    const double back = DoubleFomTimeSpanStr(DoubleToTimeSpanStr(x));
    EXPECT_NEAR(back, x, 0.0005 * Second) << x << " " << DoubleToTimeSpanStr(x).toStdString();
  }
}

TEST(QyDateTimeSpanText, NaNRaises) {
  EXPECT_THROW(DoubleToTimeSpanStr(std::numeric_limits<double>::quiet_NaN()), EInvalidOp);
}
