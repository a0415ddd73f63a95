// The pie legend: its settings, its items against the chart's values, its room on the chart and
// the colour of its samples.
#include "QyFakeRecorder.h"
#include "QyPieFixture.h"
#include "QyPieLegend.h"
#include "QyPixelProbe.h"
#include <gtest/gtest.h>

namespace {
struct LegendFixture : PieFixture {
  explicit LegendFixture(std::initializer_list<double> v, QSize size = QSize(300, 200)) : PieFixture(v, size) {}
  TQyPieLegend* AddLegend(TQyPieLegendPosition position = TQyPieLegendPosition::RightCenter) {
    auto* legend = new TQyPieLegend(pie);
    legend->SetPosition(position);
    return legend;
  }
  QStringList Texts(TQyPieLegend* legend) {
    pie->Calculate();
    QStringList texts;
    for (int i = 0; i < legend->ItemCount(); ++i) texts << legend->ItemCaptions()[i]->Caption;
    return texts;
  }
};
} // namespace

TEST(PieLegend, DefaultsAndUndoCaptions) {
  LegendFixture f({1});
  TQyPieLegend* l = f.AddLegend(TQyPieLegendPosition::RightCenter);
  EXPECT_EQ(l->GetPosition(), TQyPieLegendPosition::RightCenter);
  EXPECT_EQ(l->GetLabelsFrom(), TQyLabelStyle::CaptionsList);
  EXPECT_EQ(l->GetLabelFormat(), QString());
  EXPECT_FLOAT_EQ(l->GetDistanceToPie(), 8.0f);
  EXPECT_FLOAT_EQ(l->GetItemWidth(), 20.0f);
  EXPECT_EQ(l->GetPieChart(), nullptr);
  QyFakeRecorder rec;
  l->SetUndoStack(&rec);
  l->SetPieChart(f.pie);
  l->SetPosition(TQyPieLegendPosition::LeftTop);
  l->SetLabelsFrom(TQyLabelStyle::Percent);
  l->SetLabelFormat("0.0");
  l->SetDistanceToPie(3);
  l->SetDistanceToPie(3); // unchanged: no entry
  QStringList captions;
  for (const auto& push : rec.Pushes) captions << push.caption;
  EXPECT_EQ(captions, (QStringList{"Legend pie chart", "Legend position", "Pie legend labels style",
                                   "Labels output format", "Pie legend distance"}));
}

// 1, 3 and 4 of 8 are 12.5, 37.5 and 50 percent; ascending order puts 1 first, then 3, then 4.
TEST(PieLegend, ItemsAreTheSegmentsWithTheirLabelText) {
  LegendFixture f({4, 1, 0, 3});
  f.pie->SetCaptions({"four", "one", "none", "three"});
  TQyPieLegend* l = f.AddLegend();
  struct Row {
    TQyLabelStyle style;
    const char* format;
    bool ascending;
    QStringList texts;
  } rows[] = {
      {TQyLabelStyle::CaptionsList, "", false, {"four", "one", "three"}},
      {TQyLabelStyle::Percent, "", false, {"50%", "12.5%", "37.5%"}},
      {TQyLabelStyle::CaptionAndPercent, "0.0", true, {"one 12.5%", "three 37.5%", "four 50.0%"}},
      {TQyLabelStyle::Value, "0.00", true, {"1.00", "3.00", "4.00"}},
  };
  for (const Row& r : rows) {
    f.pie->SetOrderAscending(r.ascending);
    l->SetLabelsFrom(r.style);
    l->SetLabelFormat(r.format);
    EXPECT_EQ(f.Texts(l), r.texts) << int(r.style);
  }
  EXPECT_EQ(l->GetPieChart(), f.pie); // taken from the parent
}

// The draw handler gets the palette entry of the segment's position and the value index.
TEST(PieLegend, DrawHandlerGetsFillAndValueIndex) {
  LegendFixture f({4, 1, 3});
  f.pie->SetOrderAscending(true);
  TQyPieLegend* l = f.AddLegend();
  std::vector<std::pair<QObject*, int>> seen;
  l->OnDrawLegendItem = [&](QObject* item, const TQyLegendItemDrawArgs& a) { seen.emplace_back(item, a.Index); };
  f.pie->RenderToImage();
  ASSERT_EQ(seen.size(), 3u);
  for (int s = 0; s < 3; ++s) {
    EXPECT_EQ(seen[size_t(s)].first, f.palette->GetItem(s));
    EXPECT_EQ(seen[size_t(s)].second, (std::vector<int>{1, 2, 0})[size_t(s)]);
  }
}

TEST(PieLegend, TakesRoomAndThePieShrinks) {
  LegendFixture f({1, 2, 3}, QSize(200, 200)); // square: a legend on any side shrinks the pie
  f.pie->Calculate();
  const QRectF alone = f.pie->PieRect();
  struct Row {
    TQyPieLegendPosition position;
    bool horizontal;
  } rows[] = {{TQyPieLegendPosition::RightCenter, true},
              {TQyPieLegendPosition::LeftTop, true},
              {TQyPieLegendPosition::CenterBottom, false}};
  for (const Row& r : rows) {
    LegendFixture g({1, 2, 3}, QSize(200, 200));
    TQyPieLegend* l = g.AddLegend(r.position);
    l->SetItemsOrder(r.horizontal ? TQyItemsOrder::ByColumn : TQyItemsOrder::ByRow);
    g.pie->Calculate();
    const QRectF pie = g.pie->PieRect(), box = l->geometry();
    EXPECT_LT(pie.width(), alone.width()) << int(r.position);
    EXPECT_FALSE(pie.intersects(box)) << int(r.position);
    EXPECT_TRUE(QRectF(g.pie->rect()).contains(box)) << int(r.position);
    if (r.position == TQyPieLegendPosition::RightCenter) {
      EXPECT_LE(pie.right(), box.left() - 8 + 1);
      EXPECT_NEAR(box.center().y(), 100, 1); // centred between top and bottom
    }
  }
}

TEST(PieLegend, TwoLegendsOnOneSideDoNotOverlap) {
  LegendFixture f({1, 2});
  TQyPieLegend* a = f.AddLegend(TQyPieLegendPosition::RightTop);
  TQyPieLegend* b = f.AddLegend(TQyPieLegendPosition::RightTop);
  f.pie->Calculate();
  EXPECT_FALSE(a->geometry().intersects(b->geometry()));
  EXPECT_LT(f.pie->PieRect().right(), std::min(a->x(), b->x()));
}

// The ninth segment takes the first palette entry again; its sample shows it.
TEST(PieLegend, SampleShowsTheSegmentsFill) {
  LegendFixture f({1, 1, 1, 1, 1, 1, 1, 1, 1}, QSize(400, 300));
  TQyPieLegend* l = f.AddLegend();
  const QImage img = f.pie->RenderToImage();
  ASSERT_EQ(l->ItemCount(), 9);
  const QPoint at = l->pos();
  const QRect second = l->ItemRects()[1].translated(at).adjusted(2, 2, -2, -2);
  const QRect ninth = l->ItemRects()[8].translated(at).adjusted(2, 2, -2, -2);
  EXPECT_GT(QyProbe::Count(img, second, Named("Maroon"), 2), second.width() * second.height() / 2);
  EXPECT_GT(QyProbe::Count(img, ninth, Named("CornflowerBlue"), 2), ninth.width() * ninth.height() / 2);
  EXPECT_EQ(QyProbe::Count(img, ninth, Named("Maroon"), 2), 0);
}
