// The pie chart control: setters and their undo captions, the values as segments, the picture
// (recorded primitives, pixel probes, SVG) and the fit of labels and callouts.
#include "QyFakeRecorder.h"
#include "QyPieFixture.h"
#include "QyPixelProbe.h"
#include "QyRecordingDevice.h"
#include <QBuffer>
#include <QPainter>
#include <gtest/gtest.h>
#include <cmath>

TEST(PieChart, SettersClampSilently) {
  PieFixture f({1});
  TQyPieChart* p = f.pie;
  struct Row {
    std::function<void(float)> set;
    std::function<float()> get;
    float in, out;
  } rows[] = {
      {[p](float v) { p->SetTotalAngle(v); }, [p] { return p->GetTotalAngle(); }, 5, 10},
      {[p](float v) { p->SetTotalAngle(v); }, [p] { return p->GetTotalAngle(); }, 400, 40},
      {[p](float v) { p->SetTotalAngle(v); }, [p] { return p->GetTotalAngle(); }, 720, 10},
      {[p](float v) { p->SetTotalAngle(v); }, [p] { return p->GetTotalAngle(); }, -30, 330},
      {[p](float v) { p->SetTotalAngle(v); }, [p] { return p->GetTotalAngle(); }, 360, 360},
      {[p](float v) { p->SetStartAngle(v); }, [p] { return p->GetStartAngle(); }, -90, 270},
      {[p](float v) { p->SetStartAngle(v); }, [p] { return p->GetStartAngle(); }, 450, 90},
      {[p](float v) { p->SetThreeDElevation(v); }, [p] { return p->GetThreeDElevation(); }, 5, 10},
      {[p](float v) { p->SetThreeDElevation(v); }, [p] { return p->GetThreeDElevation(); }, 90, 80},
      {[p](float v) { p->SetThreeDPieHeight(v); }, [p] { return p->GetThreeDPieHeight(); }, 0, 0.001f},
      {[p](float v) { p->SetThreeDPieHeight(v); }, [p] { return p->GetThreeDPieHeight(); }, 200, 100},
      {[p](float v) { p->SetDonutHoleSize(v); }, [p] { return p->GetDonutHoleSize(); }, 0, 1},
      {[p](float v) { p->SetDonutHoleSize(v); }, [p] { return p->GetDonutHoleSize(); }, 100, 99},
      {[p](float v) { p->SetDonutHoleSize(v); }, [p] { return p->GetDonutHoleSize(); }, NAN, 1},
  };
  for (const Row& r : rows) {
    r.set(r.in);
    EXPECT_FLOAT_EQ(r.get(), r.out) << "in " << r.in;
  }
}

TEST(PieChart, SettersRecordUnderTheirCaptions) {
  PieFixture f({1});
  QyFakeRecorder rec;
  f.pie->SetUndoStack(&rec);
  TQyPieChart* p = f.pie;
  p->SetPieChartType(TQyPieChartType::ThreeDDonut);
  p->SetValues(nullptr);
  p->SetStartAngle(10);
  p->SetTotalAngle(200);
  p->SetThreeDElevation(30);
  p->SetThreeDPieHeight(20);
  p->SetDonutHoleSize(50);
  p->SetDropShadow(true);
  p->SetOrderAscending(true);
  p->SetCaptions({"a"});
  p->SetLabelPosition(TQyPieLabelPosition::Callouts);
  p->SetLabelFrom(TQyLabelStyle::Percent);
  p->SetLabelSize(5);
  p->SetCalloutSpaceToBorder(3);
  p->SetCalloutArrowVisibleMode(TQyCalloutArrowVisibleMode::AllVisible);
  p->SetStartAngle(370); // folds to 10: no change, no record
  QStringList captions;
  for (const auto& push : rec.Pushes) captions << push.caption;
  EXPECT_EQ(captions, (QStringList{"Pie/Donut 3D chart type", "Pie/Donut values data", "Pie/Donut start angle",
                                   "Pie/Donut total angle", "Pie/Donut 3D elevation", "Height of pie in 3D mode",
                                   "Donut size of hole", "Drop shadow below pie chart", "Order pie segments",
                                   "Pie/Donut captions", "Labels position", "Labels from list/values/percent",
                                   "Label size", "Calllout space to border", "Visibility mode of callouts"}));
  EXPECT_EQ(rec.Pushes[1].valueBefore.value<TQyCustomDoubleVector*>(), f.values);
}

TEST(PieChart, OnlyValuesWithASegmentMakeTheSum) {
  // Zero, negative and missing values get no segment and stay out of the sum, so the segments
  // fill the total angle exactly: 10 and 30 of 40 are 90 and 270 degrees.
  PieFixture f({10, 0, -5, std::nan(""), 30});
  f.pie->SetCaptions({"ten", "", "", "", "thirty"});
  f.Calculate();
  EXPECT_EQ(f.pie->Sweeps(), (std::vector<float>{90, 270}));
  EXPECT_EQ(f.pie->SegmentIndices(), (std::vector<int>{0, 4}));
  EXPECT_EQ(f.pie->GetLegendItemIndex(1), 4);
  EXPECT_EQ(f.pie->ValueSum(), 40);
  struct Row {
    TQyLabelStyle style;
    const char* format;
    const char* text;
  } rows[] = {{TQyLabelStyle::Percent, "", "75%"},        {TQyLabelStyle::Value, "", "30"},
              {TQyLabelStyle::CaptionsList, "", "thirty"}, {TQyLabelStyle::CaptionAndPercent, "0.0", "thirty 75.0%"},
              {TQyLabelStyle::CaptionAndValue, "0.00", "thirty 30.00"}};
  for (const Row& r : rows) EXPECT_EQ(f.pie->GetSegmentCaption(4, r.style, r.format), r.text);
  // Outliers are left out unless shown.
  f.values->AddOutlier(4);
  f.Calculate();
  EXPECT_EQ(f.pie->Sweeps(), (std::vector<float>{360}));
  f.pie->SetOutliersVisible(true);
  f.Calculate();
  EXPECT_EQ(f.pie->Sweeps().size(), 2u);
}

TEST(PieChart, SegmentColoursFollowThePaletteByPosition) {
  // Two equal halves: the first from 0 to 180 degrees, the lower half on the screen.
  PieFixture f({1, 1});
  f.pie->GetSegmentBorder()->SetVisible(false);
  QImage img = f.pie->RenderToImage();
  EXPECT_TRUE(QyProbe::Any(img, QRect(95, 140, 10, 10), Named("CornflowerBlue"), 2));
  EXPECT_TRUE(QyProbe::Any(img, QRect(95, 50, 10, 10), Named("Maroon"), 2));
  // Ascending order swaps the segments, and the colours stay with the positions.
  f.values->SetValue(0, 3);
  f.pie->SetOrderAscending(true);
  img = f.pie->RenderToImage();
  EXPECT_TRUE(QyProbe::Any(img, QRect(130, 130, 10, 10), Named("CornflowerBlue"), 2)); // 1 of 4: 0..90
  EXPECT_TRUE(QyProbe::Any(img, QRect(95, 30, 10, 10), Named("Maroon"), 2));
  // Without a palette every segment is light grey; the ninth of the defaults starts over.
  EXPECT_EQ(f.pie->PaletteItem(8)->GetForeColor(), ColorToARGB("CornflowerBlue"));
  f.pie->SetSegmentSettingsPalette(nullptr);
  img = f.pie->RenderToImage();
  EXPECT_TRUE(QyProbe::Any(img, QRect(95, 30, 10, 10), Named("LightGray"), 2));
}

TEST(PieChart, HalfPieAndEmptyPie) {
  PieFixture f({1, 2});
  f.pie->SetTotalAngle(180);
  QImage img = f.pie->RenderToImage();
  EXPECT_EQ(QyProbe::Count(img, QRect(0, 0, 200, 95), Named("Maroon"), 2) +
                QyProbe::Count(img, QRect(0, 0, 200, 95), Named("CornflowerBlue"), 2),
            0);
  EXPECT_GT(QyProbe::Count(img, QRect(0, 105, 200, 95), Named("Maroon"), 2), 1000);
  // All values zero or negative: the outline and the word "empty".
  f.values->SetValue(0, 0);
  f.values->SetValue(1, -1);
  for (TQyPieChartType type : {TQyPieChartType::FlatPie, TQyPieChartType::ThreeDPie}) {
    f.pie->SetPieChartType(type);
    QyRecordingDevice dev(200, 200);
    {
      QPainter p(&dev);
      f.pie->PaintTo(&p, QSize(200, 200));
    }
    EXPECT_EQ(dev.WithText("empty").size(), 1u);
    EXPECT_TRUE(f.pie->Sweeps().empty());
  }
}

TEST(PieChart, ThreeDFacesArePaintedBackToFront) {
  // Four quarters from 10 degrees: back to front 2, 3, 1, 0 (pie_reference.py). The outer walls
  // that face the viewer (3: 360..370, 1: 100..180, 0: 10..100; 2 lies behind) come before the
  // first top face, and the tops follow the same order.
  PieFixture f({1, 1, 1, 1}, QSize(300, 300));
  f.pie->SetStartAngle(10);
  f.pie->SetPieChartType(TQyPieChartType::ThreeDPie);
  QyRecordingDevice dev(300, 300);
  {
    QPainter p(&dev);
    f.pie->PaintTo(&p, QSize(300, 300));
  }
  ASSERT_EQ(f.pie->PaintOrder(), (std::vector<int>{2, 3, 1, 0}));
  const char* names[] = {"CornflowerBlue", "Maroon", "LemonChiffon", "PaleTurquoise"};
  std::vector<int> solids; // segment of each solid fill, in drawing order
  for (const QyPrimitive& prim : dev.Primitives())
    for (int s = 0; s < 4; ++s)
      if (prim.brush.style() == Qt::SolidPattern && prim.brush.color() == Named(names[s])) solids.push_back(s);
  EXPECT_EQ(solids, (std::vector<int>{3, 1, 0, 2, 3, 1, 0}));
}

TEST(PieChart, CalloutsFitTheControlWithoutOverlaps) {
  for (QSize size : {QSize(250, 250), QSize(900, 160), QSize(160, 500)}) {
    PieFixture f({40, 3, 2, 2.5, 1.5, 30, 21}, size);
    f.pie->SetCaptions({"Large", "tiny a", "tiny b", "tiny c", "tiny d", "Medium", "Rest"});
    f.pie->SetLabelPosition(TQyPieLabelPosition::Callouts);
    f.pie->SetLabelFrom(TQyLabelStyle::CaptionAndPercent);
    f.pie->SetLabelSize(6);
    f.Calculate();
    const auto& c = f.pie->Callouts();
    ASSERT_EQ(c.size(), 7u);
    auto box = [](const TQyPieCallout& k) { return QRectF(k.Position - QPointF(k.Box.width(), k.Box.height()) / 2, k.Box); };
    const QRectF client(0, 0, size.width(), size.height());
    bool anyMoved = false;
    for (size_t i = 0; i < c.size(); ++i) {
      EXPECT_TRUE(client.adjusted(-1, -1, 1, 1).contains(box(c[i]))) << size.width() << " " << i;
      anyMoved = anyMoved || c[i].Overlapped;
      for (size_t j = i + 1; j < c.size(); ++j) {
        const bool sameHalf = (c[i].Position.y() > f.pie->PieRect().center().y()) ==
                              (c[j].Position.y() > f.pie->PieRect().center().y());
        // Text is measured at two sizes (before and after the fit), which do not scale exactly.
        if (sameHalf) {
          EXPECT_LT(box(c[i]).intersected(box(c[j])).height(), 3.0) << i << " " << j;
        }
      }
    }
    EXPECT_TRUE(anyMoved); // the tiny ones crowd together
    EXPECT_TRUE(client.contains(f.pie->PieRect()));
  }
}

TEST(PieChart, CalloutArrowsAndTheirMode) {
  PieFixture f({1, 1, 1});
  f.pie->SetLabelPosition(TQyPieLabelPosition::Callouts);
  const QColor arrow(255, 0, 255);
  f.pie->GetCalloutArrow()->SetColor(arrow.rgba());
  auto arrows = [&] {
    QyRecordingDevice dev(200, 200);
    {
      QPainter p(&dev);
      f.pie->PaintTo(&p, QSize(200, 200));
    }
    return dev.WithPenColor(arrow).size();
  };
  EXPECT_EQ(arrows(), 0u); // nothing overlapped: no arrow at all
  f.pie->SetCalloutArrowVisibleMode(TQyCalloutArrowVisibleMode::AllVisible);
  EXPECT_GE(arrows(), 3u);
  f.pie->GetCalloutArrow()->SetVisible(false);
  EXPECT_EQ(arrows(), 0u);
  EXPECT_EQ(f.pie->GetCalloutArrowVisibleMode(), TQyCalloutArrowVisibleMode::None);
}

TEST(PieChart, ExplodedDonutAndSvgOutput) {
  PieFixture f({1, 1, 1, 1}, QSize(240, 240));
  auto* shift = new TQyDoubleVector(&f.form);
  shift->Add(0), shift->Add(50);
  f.pie->SetExplodePercent(shift);
  f.pie->SetPieChartType(TQyPieChartType::FlatDonut);
  f.Calculate();
  EXPECT_TRUE(f.pie->AnyExploded());
  // Segment 1 (90..180) moves down-left by half a radius along 135 degrees.
  const double r = f.pie->PieRect().width() / 2;
  EXPECT_NEAR(f.pie->ExplodeOffsets()[1].x(), -0.5 * r * std::sqrt(0.5), 1e-3);
  EXPECT_NEAR(f.pie->ExplodeOffsets()[1].y(), 0.5 * r * std::sqrt(0.5), 1e-3);
  // The hole shows the background.
  const QImage img = f.pie->RenderToImage();
  const QPoint centre = f.pie->PieRect().center().toPoint();
  EXPECT_EQ(QyProbe::At(img, centre.x(), centre.y()), qRgb(255, 255, 255));
  // Vector output of another size, leaving the control as it was.
  const QRectF before = f.pie->PieRect();
  QBuffer svg;
  svg.open(QIODevice::WriteOnly);
  f.pie->RenderToSvg(&svg, QSize(480, 480));
  EXPECT_TRUE(svg.data().contains("#6495ed")); // CornflowerBlue
  f.pie->RenderToImage();
  EXPECT_EQ(f.pie->PieRect(), before);
}

TEST(PieChart, ValuesAppendedShowAtTheNextPicture) {
  PieFixture f({1});
  f.Calculate();
  EXPECT_FALSE(f.pie->NeedsCalculate());
  f.values->Add(3);
  EXPECT_TRUE(f.pie->NeedsCalculate());
  f.pie->RenderToImage();
  EXPECT_EQ(f.pie->Sweeps(), (std::vector<float>{90, 270}));
  // Frozen while AutoUpdate is off.
  f.pie->SetAutoUpdate(false);
  f.values->Add(4);
  EXPECT_FALSE(f.pie->NeedsCalculate());
}
