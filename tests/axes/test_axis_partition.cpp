#include "QyTestGraph.h"
#include <QyAxis.h>
#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace {
// A free horizontal axis, by default 400 pixels wide, with the default 12-point font.
struct FreeAxis {
  std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
  TQyAxis* a = new TQyAxis(form.get());
  FreeAxis(double start, double stop, int width = 400, TQyAxisScaling scaling = TQyAxisScaling::Normal) {
    a->resize(width, 20);
    a->SetScaling(scaling);
    a->SetStartStop(start, stop);
    a->Calculate();
  }
  QStringList Labels() const {
    QStringList out;
    for (int i = 0; i < a->LabelCount(); ++i) out << a->Label(i).PlainText();
    return out;
  }
};
} // namespace

TEST(AxisPartition, RoundRangeFindsTheFirstCandidateThatNoLongerFits) {
  // 0 .. 10 on 400 pixels: estimates 38.4 px per label ("10"); candidates need 38.4, 38.4,
  // 146.8, 146.8, 255.2, then 580.4 >= 400, kept: parts 0.2 / 0.1 / 0.02 of 10^1.
  FreeAxis f(0, 10);
  TQyAxis* a = f.a;
  EXPECT_EQ(std::tuple(a->GetLabelPart(), a->GetMajorTickPart(), a->GetTickPart()), std::tuple(0.2, 0.1, 0.02));
  EXPECT_EQ(std::tuple(a->RangeExponent(), a->LabelExponent(), a->Digits(), a->ExtraExponentOn()),
            std::tuple(1, 1, 1, false));
  EXPECT_EQ(std::tuple(a->GetStart(), a->GetStop()), std::tuple(0.0, 10.0));
  EXPECT_EQ(f.Labels(), QStringList({"0", "2", "4", "6", "8", "10"}));
  // Minor ticks every 0.2, majors at each whole number.
  ASSERT_EQ(a->TickPositions().Count(), 51);
  for (int i = 0; i < 51; ++i) {
    EXPECT_EQ(bool(a->MajorFlags()[i]), i % 5 == 0) << i;
    EXPECT_NEAR(a->TickPositions()[i], a->NumberToWorld(0.2 * i), 1e-3) << i;
  }
  EXPECT_EQ(std::pair(a->MajorIncrement(), a->MinorIncrement()), std::pair(1.0, 0.2));
  // Labels stand at their ticks, below the axis line.
  EXPECT_NEAR(a->Label(1).X, a->NumberToWorld(2), 0.01);
  EXPECT_GT(a->Label(1).Y, a->OriginY() + a->GetMajorTickLength());
}

TEST(AxisPartition, DigitsExtraExponentAndExtraDigits) {
  {
    FreeAxis f(0, 1e6); // exponent 6 > 3: mantissas and one extra exponent
    EXPECT_TRUE(f.a->ExtraExponentOn());
    EXPECT_EQ(f.a->LabelExponent(), 6);
    const QStringList l = f.Labels();
    ASSERT_GE(l.size(), 3);
    EXPECT_EQ(l.back(), "1.0");
    EXPECT_EQ(f.a->ExtraExponentCaption().PlainText(), QString::fromUtf8("\u00B7106"));
    // The last label stands at the axis end: no room past it, so it stands between the last two.
    EXPECT_LT(f.a->ExtraExponentCaption().X, f.a->Label(l.size() - 1).X);
    EXPECT_GT(f.a->ExtraExponentCaption().X, f.a->Label(l.size() - 2).X);
  }
  // Exponent -4 < -3: mantissas again; decimals follow the label step; extra digits add decimals.
  const struct { double start, stop; int extraDigits; bool extraExponent; const char *first, *last; } cases[] = {
      {0.0001, 0.0002, 0, true, "1.0", "2.0"}, {0, 1, 0, false, "0.0", "1.0"}, {0, 10, 2, false, "0.00", "10.00"}};
  for (const auto& c : cases) {
    FreeAxis f(c.start, c.stop);
    f.a->SetExtraDigits(c.extraDigits);
    f.a->Calculate();
    EXPECT_EQ(f.a->ExtraExponentOn(), c.extraExponent) << c.stop;
    EXPECT_EQ(std::pair(f.Labels().front(), f.Labels().back()), std::pair(QString(c.first), QString(c.last)));
  }
  EXPECT_EQ(FreeAxis(0.0001, 0.0002).a->LabelExponent(), -4);
  EXPECT_TRUE(FreeAxis(0, 1).Labels().contains("0.2"));
  {
    FreeAxis f(-250, 750); // start 0 rule aside: the larger exponent decides
    EXPECT_EQ(f.a->LabelExponent(), 2);
    EXPECT_FALSE(f.a->ExtraExponentOn());
    EXPECT_TRUE(f.Labels().contains("-200") || f.Labels().contains("-250"));
  }
}

TEST(AxisPartition, ScaleLabelEventChangesEstimateAndText) {
  FreeAxis plain(0, 10);
  const double before = plain.a->GetLabelPart();
  FreeAxis f(0, 10);
  f.a->OnGetScaleLabel = [](TQyAxis*, double v, QString& text) { text = QString::number(v) + " units"; };
  f.a->SetStartStop(0, 10);
  f.a->Calculate();
  EXPECT_GT(f.a->GetLabelPart(), before); // longer texts: a coarser partition
  ASSERT_GT(f.a->LabelCount(), 0);
  EXPECT_TRUE(f.a->Label(0).PlainText().endsWith(" units"));
}

TEST(AxisPartition, LogarithmicParts) {
  {
    FreeAxis f(1, 1000, 400, TQyAxisScaling::Log);
    ASSERT_TRUE(f.a->LogActive());
    EXPECT_EQ(std::tuple(f.a->GetLabelPart(), f.a->GetMajorTickPart(), f.a->GetTickPart()), std::tuple(1.0, 1.0, 0.1));
    EXPECT_EQ(f.Labels(), QStringList({"1", "10", "100", "1000"}));
    // 1..9 per decade plus the last power: 28 ticks, majors on the powers of ten.
    ASSERT_EQ(f.a->TickPositions().Count(), 28);
    EXPECT_NEAR(f.a->TickPositions()[1], f.a->NumberToWorld(2), 1e-3);
    EXPECT_NEAR(f.a->TickPositions()[9], f.a->NumberToWorld(10), 1e-3);
    EXPECT_TRUE(f.a->MajorFlags()[9]);
    EXPECT_FALSE(f.a->MajorFlags()[8]);
  }
  {
    // LogEE over 1 .. 1e6 on 100 pixels: the label part grows past 3, to a multiple of 3.
    FreeAxis f(1, 1e6, 100, TQyAxisScaling::LogEE);
    EXPECT_DOUBLE_EQ(std::fmod(f.a->GetLabelPart(), 3.0), 0);
    EXPECT_GE(f.a->GetLabelPart(), 3);
    EXPECT_DOUBLE_EQ(f.a->GetMajorTickPart(), f.a->GetLabelPart());
    const QStringList l = f.Labels();
    ASSERT_FALSE(l.isEmpty());
    EXPECT_EQ(std::pair(l.front(), l.back()), std::pair(QString("100"), QString("106"))); // 10 with superscripts
  }
}

TEST(AxisPartition, RubricsCentredInTheirIntervals) {
  FreeAxis f(0, 5, 400, TQyAxisScaling::Rubrics);
  f.a->SetRubrics({"Mon", "Tue", "Wed", "Thu", "Fri"});
  f.a->Calculate();
  EXPECT_EQ(f.Labels(), QStringList({"Mon", "Tue", "Wed", "Thu", "Fri"})); // none for index 5
  const float unit = f.a->NumberToWorld(1) - f.a->NumberToWorld(0);
  EXPECT_NEAR(f.a->Label(0).X, f.a->NumberToWorld(0) + unit / 2, 1.0);
  EXPECT_NEAR(f.a->Label(4).X, f.a->NumberToWorld(4) + unit / 2, 1.0);
}
