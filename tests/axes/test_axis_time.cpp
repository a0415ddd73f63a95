#include "QyTestGraph.h"
#include <QyAxis.h>
#include <QyCalendar.h>
#include <cmath>
#include <gtest/gtest.h>

namespace {
struct CalendarRow {
  double t;
  int year, month, day, hour, minute, second, ms, dayOfWeek;
  double nextMonth, thirteenBack;
};
const CalendarRow CalendarRows[] = {
#include "calendar_reference.inc"
};

struct TimeAxis : QyTestGraph {
  TimeAxis(TQyAxisScaling scaling, double start, double stop, int width = 600) : QyTestGraph(width, 300) {
    X()->SetScaling(scaling);
    X()->SetStartEnd(TQyAxisEnd::Fixed);
    X()->SetStopEnd(TQyAxisEnd::Fixed);
    X()->SetStart(start);
    X()->SetStop(stop);
    Render();
  }
  QStringList Labels() const {
    QStringList out;
    for (int i = 0; i < X()->LabelCount(); ++i) out << X()->Label(i).PlainText();
    return out;
  }
};
} // namespace

TEST(AxisCalendar, AgreesWithPythonDatetime) {
  for (const CalendarRow& r : CalendarRows) {
    const TQyDateParts d = DecodeDateTime(r.t);
    EXPECT_EQ(std::tuple(d.Year, d.Month, d.Day, d.Hour, d.Minute, d.Second, d.MilliSecond, DayOfWeek(r.t)),
              std::tuple(r.year, r.month, r.day, r.hour, r.minute, r.second, r.ms, r.dayOfWeek)) << r.t;
    EXPECT_NEAR(EncodeDateTime(d), r.t, 1e-8) << r.t;
    if (r.year < 9999) {
      EXPECT_NEAR(IncMonth(r.t, 1), r.nextMonth, 1e-8) << r.t;
    }
    if (r.year > 1) {
      EXPECT_NEAR(IncMonth(r.t, -13), r.thirteenBack, 1e-8) << r.t;
    }
  }
}

TEST(AxisDateTime, LaddersFromMillisecondsToCenturies) {
  const double day = 45000; // 2023-03-15
  {
    TimeAxis f(TQyAxisScaling::DateTime, day + 10.0 / 24, day + 11.0 / 24); // one hour
    const TQyDtParameters& p = f.X()->DtParameters();
    EXPECT_EQ(p.LabelRegion, TQyDtRegion::Minute);
    EXPECT_EQ(p.TickRegion, TQyDtRegion::Minute);
    for (const QString& l : f.Labels()) EXPECT_FALSE(l.contains('/')) << l.toStdString(); // no date
    EXPECT_EQ(f.Labels().front(), "10:00 AM");
  }
  {
    TimeAxis f(TQyAxisScaling::DateTime, day, day + 2.0 / 86400); // two seconds
    const TQyDtParameters& p = f.X()->DtParameters();
    EXPECT_EQ(p.TickRegion, TQyDtRegion::MilliSecond);
    EXPECT_GT(f.Labels().size(), 2);
  }
  {
    TimeAxis f(TQyAxisScaling::DateTime, day + 0.3, day + 3.3); // three days
    const TQyDtParameters& p = f.X()->DtParameters();
    EXPECT_EQ(p.LabelRegion, TQyDtRegion::Hour);
    EXPECT_TRUE(p.FormatString == f.X()->TimeFormats().Day || p.FormatString == f.X()->TimeFormats().DayAndHour);
  }
  {
    TimeAxis f(TQyAxisScaling::DateTime, day, day + 800, 1200); // over two years, wide: months
    const TQyDtParameters& p = f.X()->DtParameters();
    EXPECT_EQ(p.TickRegion, TQyDtRegion::Month);
    EXPECT_TRUE(f.Labels().contains("Jun 23") || f.Labels().contains("Jul 23")) << f.Labels().join(",").toStdString();
  }
  {
    // 1801 .. 2099 on 550 pixels. Year rows measure the stop in their format "MMM yy" (6 signs
    // of 12 * 1.6 pixels, 115.2): the 100-year row needs 4 * 0.48 * 115.2 + 3 * 120 = 581 > 550
    // pixels, so the 200-year row stands (a bare year, 4 signs, would have fitted with 507).
    TimeAxis f(TQyAxisScaling::DateTime, -36000, 73000, 550);
    EXPECT_EQ(f.X()->DtParameters().LabelRegion, TQyDtRegion::Year);
    EXPECT_EQ(f.X()->DtParameters().LabelCount, 200);
    for (const QString& l : f.Labels()) EXPECT_EQ(l.toInt() % 200, 0);
  }
  int fiftyRows = 0; // the 50 and 500 ms rows have majors of two fifths of the label
  for (double seconds : {0.3, 0.5, 1.0, 3.0, 5.0})
    for (int width : {300, 600, 1200}) {
      TimeAxis f(TQyAxisScaling::DateTime, day, day + seconds / 86400, width);
      const TQyDtParameters& p = f.X()->DtParameters();
      if (p.LabelRegion != TQyDtRegion::MilliSecond || (p.LabelCount != 50 && p.LabelCount != 500)) continue;
      ++fiftyRows;
      EXPECT_EQ(p.MajorCount, p.LabelCount * 2 / 5) << seconds << " s on " << width;
    }
  EXPECT_GT(fiftyRows, 0);
  {
    TimeAxis f(TQyAxisScaling::DateTime, day, day); // one minute wider
    EXPECT_NEAR(f.X()->GetStop() - f.X()->GetStart(), 1.0 / 1440, 1e-9);
  }
}

TEST(AxisDateTime, RoundingToCalendarUnits) {
  // Three weeks on 800 pixels take a week row. 2023-03-15 is a Wednesday: majors fall on Sundays.
  TimeAxis f(TQyAxisScaling::DateTime, 45000, 45021, 800);
  TQyAxis* x = f.X();
  ASSERT_EQ(x->DtParameters().LabelRegion, TQyDtRegion::Day);
  ASSERT_EQ(x->DtParameters().MajorCount, 7);
  for (int i = 0; i < x->TickPositions().Count(); ++i)
    if (x->MajorFlags()[i]) {
      EXPECT_EQ(DayOfWeek(x->WorldToNumber(x->TickPositions()[i]) + 0.01), 1) << i;
    }
  const double wed = EncodeDateTime(2023, 3, 15, 13, 5, 0, 0);
  EXPECT_NEAR(x->DateTimeRound(wed, true, true), EncodeDateTime(2023, 3, 19, 0, 0, 0, 0), 1e-9);  // Sunday on
  EXPECT_NEAR(x->DateTimeRound(wed, false, true), EncodeDateTime(2023, 3, 12, 0, 0, 0, 0), 1e-9); // Sunday before
  EXPECT_NEAR(x->DateTimeRound(wed, true, false), EncodeDateTime(2023, 3, 16, 0, 0, 0, 0), 1e-9);
  EXPECT_LE(x->MajorIncrement(), 7.0);
  EXPECT_GT(x->MajorIncrement(), 6.0);
}

TEST(AxisSeconds, DurationsLandOnWholeMinutes) {
  TimeAxis f(TQyAxisScaling::Seconds, 0, 90, 600);
  const TQySecParameters& p = f.X()->SecParameters();
  EXPECT_EQ(p.Region, TQyDtRegion::Second);
  EXPECT_EQ(p.Format, TQySecondsFormatRange::Minute);
  const QStringList l = f.Labels();
  ASSERT_GE(l.size(), 3);
  EXPECT_EQ(l.front(), "00:00");
  EXPECT_TRUE(l.contains("01:00")) << l.join(",").toStdString();
  EXPECT_TRUE(l.contains("01:30")) << l.join(",").toStdString();
}

// Region, decade and parts of the seconds ladders (ladder 2 starts at 0.6 but restarts a decade
// finer at 1.0), and the increments with the region factors as they stand: not in seconds.
TEST(AxisSeconds, LadderPartsAndIncrements) {
  struct Row {
    double start, stop;
    int extent, region, exponent;
    double label, major, tick, majorIncrement, minorIncrement;
  };
  const Row rows[] = {
#include "seconds_reference.inc"
  };
  for (const Row& r : rows) {
    TimeAxis f(TQyAxisScaling::Seconds, r.start, r.stop, r.extent);
    const TQyAxis* x = f.X();
    const std::string at = std::to_string(r.stop) + " on " + std::to_string(r.extent);
    EXPECT_EQ(int(x->SecParameters().Region), r.region) << at;
    EXPECT_EQ(x->SecParameters().Exponent, r.exponent) << at;
    EXPECT_NEAR(x->GetLabelPart(), r.label, 1e-9) << at;
    EXPECT_NEAR(x->GetMajorTickPart(), r.major, 1e-9) << at;
    EXPECT_NEAR(x->GetTickPart(), r.tick, 1e-9) << at;
    EXPECT_NEAR(x->MajorIncrement(), r.majorIncrement, 1e-9 * r.majorIncrement) << at;
    EXPECT_NEAR(x->MinorIncrement(), r.minorIncrement, 1e-9 * r.minorIncrement) << at;
  }
}
