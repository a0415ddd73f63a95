// Symbols, the out-of-range look, thinning to one symbol per pixel, holes for translucent
// symbols, error bars, legend samples and the document record of series.
#include "QyPixelProbe.h"
#include "QyRecordingDevice.h"
#include "QyTestGraph.h"
#include <QPainter>
#include <QyPointSeries.h>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {
// Draws the series' legend sample into `r` of the emptied device.
void DrawItem(TQySeries* s, QyRecordingDevice& dev, const QRectF& r) {
  dev.Clear();
  QPainter p(&dev);
  s->DrawListItem({&p, r, 0});
}

// Symbol primitives (circles) by fill colour, centres in device pixels.
std::vector<QPointF> Circles(const QyRecordingDevice& dev, QColor fill) {
  std::vector<QPointF> out;
  for (const QyPrimitive* p : dev.OfKind(QyPrimitive::Ellipse))
    if (p->brush.color() == fill) out.push_back(p->DeviceRect().center());
  return out;
}
} // namespace

// Every point gets its symbol, drawn once, above the axes; points
// outside the X range of RangeFromFunction take the second look; the symbol handler may change
// or hide a point's symbol.
TEST(SeriesSymbols, LooksOutOfRangeAndHandler) {
  QyTestGraph f;
  auto* s = f.Add<TQyPointSeries>({0, 1, 2, 3, 4}, {1, 2, 3, 2, 1});
  s->PointSymbol()->SetPointSymbol(TQyPointSymbol::Circle);
  s->PointSymbol()->SetFillColor(0xFF00FF00);
  s->OutOfRangePointSymbol()->SetPointSymbol(TQyPointSymbol::Circle);
  s->GetLine()->SetVisible(false);
  EXPECT_TRUE(s->SeriesVisible()); // symbols alone keep the series visible
  QyTestGraph::Fix(f.X(), -1, 5);
  QyTestGraph::Fix(f.Y(), 0, 4);
  QyRecordingDevice dev;
  f.Paint(dev);
  auto green = Circles(dev, QColor(0, 255, 0));
  ASSERT_EQ(green.size(), 5u);
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(green[i], QPointF(f.X()->NumberToWorld(i), f.Y()->NumberToWorld(std::vector<double>{1, 2, 3, 2, 1}[i])));

  TQyLineSeries* range = f.AddSeries({0.5, 3}, {0, 0}); // stands in for a calculated curve
  s->SetRangeFromFunction(range);
  f.Paint(dev);
  auto grey = Circles(dev, QColor(0xD3, 0xD3, 0xD3));
  green = Circles(dev, QColor(0, 255, 0));
  ASSERT_EQ(grey.size(), 2u);  // x = 0 and x = 4
  ASSERT_EQ(green.size(), 3u); // x = 1, 2, 3 (3 is the bound, included)
  EXPECT_EQ(grey[0].x(), f.X()->NumberToWorld(0));
  EXPECT_EQ(grey[1].x(), f.X()->NumberToWorld(4));
  s->OutOfRangePointSymbol()->SetVisible(false);
  f.Paint(dev);
  EXPECT_TRUE(Circles(dev, QColor(0xD3, 0xD3, 0xD3)).empty());
  EXPECT_EQ(Circles(dev, QColor(0, 255, 0)).size(), 3u);

  s->SetRangeFromFunction(nullptr);
  s->OnGetPointSymbol = [](TQySeries*, PointSymbolEventArgs& a) {
    if (a.Index == 2) a.Visible = false;
    if (a.Index == 3) a.Symbol = TQyPointSymbol::Square, a.Brush = QBrush(Qt::red);
  };
  f.Paint(dev);
  EXPECT_EQ(Circles(dev, QColor(0, 255, 0)).size(), 3u); // 0, 1, 4
  EXPECT_EQ(dev.Select([](const QyPrimitive& p) { return p.kind == QyPrimitive::Rect && p.brush.color() == Qt::red; })
                .size(),
            1u);
}

// A dense noisy scatter keeps one point per pixel: the kept points are exactly the first value
// to reach each pixel, counted independently over all values.
TEST(SeriesSymbols, DenseScatterKeepsOnePointPerPixel) {
  QyTestGraph f(400, 300);
  const int n = 200'000;
  std::mt19937 rng(3);
  std::uniform_real_distribution<double> noise(-100, 100);
  std::vector<double> xs(n), ys(n);
  for (int i = 0; i < n; ++i) xs[i] = i, ys[i] = 1000 * std::sin(i / 20000.0) + noise(rng);
  auto* s = f.Add<TQyPointSeries>(xs, ys);
  s->GetLine()->SetVisible(false);
  s->PointSymbol()->SetPointSymbol(TQyPointSymbol::Circle);
  f.Render();
  std::set<std::pair<long, long>> pixels;
  std::vector<int> firsts;
  for (int i = 0; i < n; ++i) {
    const double px = f.X()->NumberToWorld(xs[i]), py = f.Y()->NumberToWorld(ys[i]);
    if (pixels.insert({long(std::floor(px)), long(std::floor(py))}).second) firsts.push_back(i);
  }
  ASSERT_EQ(s->PointCount(), int(firsts.size()));
  for (int k = 0; k < s->PointCount(); ++k) ASSERT_EQ(s->PointIndices()[k], firsts[k]);
  EXPECT_LT(s->PointCount(), n / 4);

  // With a line the points follow the line, and the symbols are still thinned when drawn.
  s->GetLine()->SetVisible(true);
  f.Render();
  EXPECT_GT(s->PointCount(), int(firsts.size()));
  QyRecordingDevice dev(400, 300);
  f.Paint(dev);
  const size_t symbols = dev.OfKind(QyPrimitive::Ellipse).size();
  EXPECT_LE(symbols, firsts.size());
  EXPECT_GE(symbols, firsts.size() * 9 / 10);
}

// Many symbols in an image are stamped from one picture per look: each still sits on its point.
TEST(SeriesSymbols, StampedSymbolsSitOnTheirPoints) {
  QyTestGraph f(500, 400);
  std::vector<double> xs, ys;
  for (int i = 0; i < 1600; ++i) xs.push_back(i % 40), ys.push_back(i / 40);
  auto* s = f.Add<TQyPointSeries>(xs, ys);
  s->GetLine()->SetVisible(false);
  s->PointSymbol()->SetPointSymbol(TQyPointSymbol::Square);
  s->PointSymbol()->SetSize(5);
  s->PointSymbol()->SetFillColor(0xFF00FF00);
  s->PointSymbol()->SetBorderColor(0xFF0000FF);
  QyTestGraph::Fix(f.X(), -1, 40);
  QyTestGraph::Fix(f.Y(), -1, 40);
  const QImage img = f.Render();
  ASSERT_EQ(s->PointCount(), 1600);
  int onPoint = 0;
  for (int i = 0; i < 1600; ++i) {
    const int x = int(std::floor(f.X()->NumberToWorld(xs[i]))), y = int(std::floor(f.Y()->NumberToWorld(ys[i])));
    onPoint += QyProbe::Count(img, QRect(x - 1, y - 1, 3, 3), QColor(0, 255, 0), 30) >= 4;
  }
  EXPECT_EQ(onPoint, 1600);
  // Nothing green far from the points: between columns of points there is background only.
  const int between = int((f.X()->NumberToWorld(10) + f.X()->NumberToWorld(11)) / 2);
  EXPECT_EQ(QyProbe::Count(img, QRect(between, 50, 1, 250), QColor(0, 255, 0), 30), 0);
  // The stamped picture is kept for the next paint; it must follow a new look and a new range.
  EXPECT_EQ(f.Render(), img);
  s->PointSymbol()->SetFillColor(0xFFFF0000);
  const QImage red = f.Render();
  const int x0 = int(std::floor(f.X()->NumberToWorld(0))), y0 = int(std::floor(f.Y()->NumberToWorld(0)));
  EXPECT_GE(QyProbe::Count(red, QRect(x0 - 1, y0 - 1, 3, 3), QColor(255, 0, 0), 30), 4);
  EXPECT_EQ(QyProbe::Count(red, red.rect(), QColor(0, 255, 0), 30), 0);
  QyTestGraph::Fix(f.X(), 9.5, 49.5); // the first ten columns leave the picture
  const QImage moved = f.Render();
  EXPECT_EQ(QyProbe::Count(moved, QRect(x0 - 1, y0 - 1, 3, 3), QColor(255, 0, 0), 30), 0);
}

// A translucent symbol shows no line through it: the line is clipped around the symbol.
TEST(SeriesSymbols, TranslucentSymbolsCutTheLine) {
  QyTestGraph f(300, 200);
  auto* s = f.Add<TQyPointSeries>({0, 1, 2}, {1, 1, 1});
  QyTestGraph::Fix(f.X(), -1, 3);
  QyTestGraph::Fix(f.Y(), 0, 2);
  s->GetLine()->SetColor(0xFFFF0000);
  s->GetLine()->SetWidth(3);
  s->PointSymbol()->SetSize(21);
  s->PointSymbol()->SetPointSymbol(TQyPointSymbol::Square);
  s->PointSymbol()->SetFillColor(0x00FFFFFF); // fully transparent
  s->PointSymbol()->SetBorderColor(0xFF0000FF);
  const QImage img = f.Render();
  const int cx = int(f.X()->NumberToWorld(1)), cy = int(f.Y()->NumberToWorld(1));
  const int mid = int((f.X()->NumberToWorld(1) + f.X()->NumberToWorld(2)) / 2);
  EXPECT_EQ(QyProbe::Count(img, QRect(cx - 6, cy - 3, 13, 7), QColor(Qt::red), 60), 0);
  EXPECT_GT(QyProbe::Count(img, QRect(mid - 3, cy - 3, 7, 7), QColor(Qt::red), 60), 5);
  EXPECT_GT(QyProbe::Count(img, QRect(cx - 11, cy - 11, 23, 23), QColor(Qt::blue), 60), 40);
  // An opaque fill needs no holes; the symbol covers the line.
  s->PointSymbol()->SetFillColor(0xFFFFFFFF);
  const QImage opaque = f.Render();
  EXPECT_EQ(QyProbe::Count(opaque, QRect(cx - 6, cy - 3, 13, 7), QColor(Qt::red), 60), 0);
}

// Error bars: deltas are magnitudes, a shorter delta vector gives bars only for its length,
// bars end in caps as wide as the symbol, and they widen the axis extent only while shown.
TEST(SeriesErrorBars, BarsCapsAndExtent) {
  QyTestGraph f;
  auto* s = f.Add<TQyPointWithErrorSeries>({1, 2, 3, 4}, {10, 20, 30, 40});
  s->GetLine()->SetVisible(false);
  s->PointSymbol()->SetSize(9);
  s->SetDeltaYPlus(f.Vector({1, -2, 3})); // shorter, one negative
  s->SetDeltaYMinus(f.Vector({5, 5, 5, 5}));
  s->SetDeltaXPlus(f.Vector({0.5, 0.5, 0.5, 0.5}));
  s->GetErrorIndicator()->SetColor(0xFF445566);
  f.Render();
  // Y from 10 - 5 to 40 (40 has no upper delta; 30 + 3 = 33 is below); X to 4 + 0.5.
  EXPECT_EQ(std::tuple(s->LimitMinY(), s->LimitMaxY(), s->LimitMinX(), s->LimitMaxX()), std::tuple(5.0, 40.0, 1.0, 4.5));
  ASSERT_EQ(s->PointCount(), 4);
  const auto& up = s->BarEnds(TQyPointWithErrorSeries::YPlus);
  ASSERT_EQ(up.Count(), 4);
  EXPECT_FLOAT_EQ(up[1], float(f.Y()->NumberToWorld(22)));
  EXPECT_TRUE(std::isnan(up[3]));
  EXPECT_TRUE(std::isnan(s->BarEnds(TQyPointWithErrorSeries::XMinus)[0]));

  QyRecordingDevice dev;
  f.Paint(dev);
  auto bars = dev.WithPenColor(QColor(0x44, 0x55, 0x66));
  ASSERT_EQ(bars.size(), 1u); // one batch of lines
  const QPolygonF v = bars[0]->DevicePoints();
  // Point 1 (x = 2, y = 20): up to 22, down to 15, right to 2.5; each bar with its cap.
  const QPointF p(f.X()->NumberToWorld(2), f.Y()->NumberToWorld(20));
  auto has = [&](QPointF a, QPointF b) {
    for (int k = 0; k + 1 < v.size(); k += 2)
      if ((QLineF(v[k], v[k + 1]).p1() - a).manhattanLength() < 1e-3 && (v[k + 1] - b).manhattanLength() < 1e-3)
        return true;
    return false;
  };
  const double yUp = f.Y()->NumberToWorld(22), xRight = f.X()->NumberToWorld(2.5);
  EXPECT_TRUE(has(p, QPointF(p.x(), yUp)));
  EXPECT_TRUE(has(QPointF(p.x() - 4, yUp), QPointF(p.x() + 4, yUp))); // cap of 2 * (9 - 1) / 2
  EXPECT_TRUE(has(p, QPointF(xRight, p.y())));
  EXPECT_TRUE(has(QPointF(xRight, p.y() - 4), QPointF(xRight, p.y() + 4)));
  EXPECT_EQ(v.size(), 2 * 2 * (3 + 4 + 4)); // 11 bars with caps

  // Hidden indicators: the extent is the data's own.
  s->GetErrorIndicator()->SetVisible(false);
  f.Render();
  EXPECT_EQ(std::tuple(s->LimitMinY(), s->LimitMaxX()), std::tuple(10.0, 4.0));
  f.Paint(dev);
  EXPECT_TRUE(dev.WithPenColor(QColor(0x44, 0x55, 0x66)).empty());
}

// An indicator pen handler may refuse a point's bars or change their pen.
TEST(SeriesErrorBars, IndicatorPenHandler) {
  QyTestGraph f;
  auto* s = f.Add<TQyPointWithErrorSeries>({1, 2, 3}, {1, 2, 3});
  s->SetDeltaYPlus(f.Vector({0.5, 0.5, 0.5}));
  s->GetErrorIndicator()->SetColor(0xFF445566);
  s->OnGetIndicatorsPen = [](TQySeries*, TQyPenEventArgs& a) {
    if (a.Index == 0) a.Draw = false;
    if (a.Index == 2) a.Pen.setColor(Qt::magenta);
  };
  QyRecordingDevice dev;
  f.Paint(dev);
  auto gray = dev.WithPenColor(QColor(0x44, 0x55, 0x66));
  auto magenta = dev.WithPenColor(Qt::magenta);
  ASSERT_EQ(gray.size(), 1u);
  ASSERT_EQ(magenta.size(), 1u);
  EXPECT_EQ(gray[0]->points.size(), 4);    // point 1: bar and cap
  EXPECT_EQ(magenta[0]->points.size(), 4); // point 2
  EXPECT_EQ(gray[0]->DevicePoints()[0], s->Points()[1]);
}

// Legend samples: a line across the middle, the area filling the rectangle, the symbol in the
// centre; error series add bar stubs; the row height follows line and symbol.
TEST(SeriesLegend, SamplesAndItemHeight) {
  QyTestGraph f;
  auto* s = f.Add<TQyPointSeries>({1, 2}, {1, 2});
  s->PointSymbol()->SetPointSymbol(TQyPointSymbol::Circle);
  s->GetLine()->SetColor(0xFF123456);
  s->GetLine()->SetWidth(2);
  s->GetArea()->SetVisible(true);
  s->GetArea()->SetForeColor(0xFF208020);
  s->PointSymbol()->SetSize(9);
  s->PointSymbol()->SetFillColor(0xFF00FF00);
  f.Render();
  QyRecordingDevice dev;
  const QRectF r(10, 20, 40, 16);
  DrawItem(s, dev, r);
  auto line = dev.WithPenColor(QColor(0x12, 0x34, 0x56));
  ASSERT_EQ(line.size(), 1u);
  EXPECT_EQ(line[0]->DevicePoints(), QPolygonF(QList<QPointF>{{10, 28}, {50, 28}}));
  EXPECT_FALSE(dev.Select([&](const QyPrimitive& p) {
                    return p.brush.color() == QColor(0x20, 0x80, 0x20) && p.DevicePoints().boundingRect() == r;
                  }).empty()); // the area fills the rectangle
  auto sym = Circles(dev, QColor(0, 255, 0));
  ASSERT_EQ(sym.size(), 1u);
  EXPECT_EQ(sym[0], r.center());
  EXPECT_EQ(s->GetItemHeight(), 11); // symbol 9 + 2 beats the line's 2

  auto* e = f.Add<TQyPointWithErrorSeries>({1, 2}, {1, 2});
  e->PointSymbol()->SetSize(9);
  const int plain = e->GetItemHeight();
  e->SetDeltaYPlus(f.Vector({1, 1}));
  e->GetErrorIndicator()->SetColor(0xFF445566);
  EXPECT_EQ(e->GetItemHeight(), plain + 8);
  f.Render();
  DrawItem(e, dev, r);
  auto stubs = dev.WithPenColor(QColor(0x44, 0x55, 0x66));
  ASSERT_EQ(stubs.size(), 1u);
  const QPolygonF v = stubs[0]->DevicePoints();
  ASSERT_EQ(v.size(), 4); // one stub upwards with its cap
  EXPECT_EQ(v[0], r.center() - QPointF(0, 5)); // from the symbol's edge, h + 1 = 5
  EXPECT_LT(v[1].y(), v[0].y());
  EXPECT_EQ(v[2].y(), v[1].y());
  EXPECT_EQ(v[3].x() - v[2].x(), 8.0);
}

// Two series merged into one legend row, both with lines: each draws its line along one
// diagonal of the shared rectangle.
TEST(SeriesLegend, MergedItemsShareTheRectangle) {
  QyTestGraph f;
  TQyLineSeries* a = f.AddSeries({1, 2}, {1, 2}, 0xFF112233);
  TQyLineSeries* b = f.AddSeries({1, 2}, {2, 1}, 0xFF445566);
  a->SetMergeLegendItemWith(b);
  f.Render();
  QyRecordingDevice dev;
  const QRectF r(0, 0, 40, 20);
  DrawItem(a, dev, r);
  auto first = dev.WithPenColor(QColor(0x11, 0x22, 0x33)), second = dev.WithPenColor(QColor(0x44, 0x55, 0x66));
  ASSERT_EQ(first.size(), 1u);
  ASSERT_EQ(second.size(), 1u);
  EXPECT_EQ(first[0]->DevicePoints(), QPolygonF({r.bottomLeft(), r.topRight()}));
  EXPECT_EQ(second[0]->DevicePoints(), QPolygonF({r.topLeft(), r.bottomRight()}));
  // Without the merge each draws its own horizontal line.
  a->SetMergeLegendItemWith(nullptr);
  DrawItem(a, dev, r);
  EXPECT_TRUE(dev.WithPenColor(QColor(0x44, 0x55, 0x66)).empty());
  EXPECT_EQ(dev.WithPenColor(QColor(0x11, 0x22, 0x33))[0]->DevicePoints()[0], QPointF(0, 10));
}
