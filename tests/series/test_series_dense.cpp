// Millions of values: the block index of a vector's extremes under every kind of change, and the
// pictures of thinned, banded lines against the plain polyline through every value.
#include "QyPixelProbe.h"
#include "QyTestGraph.h"
#include <QPainter>
#include <QySeries.h>
#include <QyStyles.h>
#include <QyVectors.h>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <thread>

namespace {
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Inf = std::numeric_limits<double>::infinity();

// The definition: the first index of the lowest and of the highest finite value in [a, b).
std::pair<int, int> Scan(const TQyDoubleVector& v, int a, int b) {
  int lo = -1, hi = -1;
  for (int i = a; i < b; ++i) {
    const double x = v.Data()[i];
    if (!std::isfinite(x)) continue;
    if (lo < 0 || x < v.Data()[lo]) lo = i;
    if (hi < 0 || x > v.Data()[hi]) hi = i;
  }
  return {lo, hi};
}

// Every range that starts or ends near a block boundary or the ends, plus a few long ones.
void ExpectIndexAgrees(TQyDoubleVector& v, const char* step) {
  auto lock = v.ReadLock();
  const int n = v.Count();
  std::vector<int> cuts = {0, 1, n / 3, n / 2, n - 1, n};
  for (int k = 1; k * 256 <= n; ++k) cuts.insert(cuts.end(), {k * 256 - 1, k * 256, k * 256 + 1});
  for (int a : cuts)
    for (int b : cuts) {
      if (a < 0 || b > n || a >= b) continue;
      int lo, hi;
      v.Extremes(a, b, lo, hi);
      ASSERT_EQ(std::pair(lo, hi), Scan(v, a, b)) << step << " range " << a << ".." << b;
    }
}

double Noise(int i) { return std::sin(i * 0.37) * 40 + ((i * 7919) % 101 - 50); }
} // namespace

// The index follows appends, changes in the middle (to a new extreme and not), inserts, deletes,
// non-finite values, outliers (which it ignores: the series decide about them) and a clear.
TEST(ExtremesIndex, FollowsEveryChangeOfTheVector) {
  QObject owner;
  TQyDoubleVector v(&owner);
  std::vector<double> values(3000);
  for (int i = 0; i < 3000; ++i) values[size_t(i)] = Noise(i);
  v.AddRange(values);
  const std::vector<std::pair<const char*, std::function<void()>>> steps = {
      {"appended", [] {}},
      {"append one by one", [&] { for (int i = 0; i < 700; ++i) v.Add(Noise(i + 5)); }},
      {"new highest in the middle", [&] { v.SetValue(1000, 500); }},
      {"former highest lowered", [&] { v.SetValue(1000, 0); }},
      {"plain change in a block", [&] { v.SetValue(2049, 3.5); }},
      {"tie with the lowest, later", [&] { v.SetValue(3333, v.GetMinimum()); }},
      {"insert", [&] { v.Insert(700, -400); }},
      {"delete", [&] { v.Delete(300); v.Delete(v.Count() - 1); }},
      {"not finite", [&] { v.SetValue(5, NaN); v.SetValue(600, Inf); v.SetValue(601, -Inf); }},
      {"a block without finite values", [&] { for (int i = 512; i < 768; ++i) v.SetValue(i, NaN); }},
      {"outliers", [&] { v.AddOutlier(10); v.AddOutlier(2500); }},
      {"cleared and refilled", [&] { v.Clear(); v.AddRange(values); }},
  };
  for (const auto& [name, step] : steps) {
    step();
    ExpectIndexAgrees(v, name);
  }
}

// Appends from a worker while the interface thread reads extremes under the read lock.
TEST(ExtremesIndex, StaysRightUnderAppendsFromAWorker) {
  QObject owner;
  TQyDoubleVector v(&owner);
  std::thread worker([&] {
    for (int i = 0; i < 20000; ++i) v.Add(Noise(i));
  });
  for (int k = 0; k < 200; ++k) {
    auto lock = v.ReadLock();
    const int n = v.Count();
    int lo, hi;
    v.Extremes(0, n, lo, hi);
    ASSERT_EQ(std::pair(lo, hi), Scan(v, 0, n)) << n;
  }
  worker.join();
  ExpectIndexAgrees(v, "after the worker");
}

namespace {
// Draws the antialiased polyline through pts in the series' pen, clipped to the data area.
QImage WithPolyline(QImage image, const std::vector<QPointF>& pts, QColor color, const QRectF& area) {
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  p.setClipRect(area);
  p.setPen(QPen(color, 1));
  p.drawPolyline(pts.data(), int(pts.size()));
  return image;
}

// The pixels of `drawn` in `area` that stray from `plain`: darker or lighter by more than a
// quarter of full coverage than the plain pixel and both its horizontal neighbours are (a
// thinned column may place its strokes anywhere inside the column), out of the inked pixels.
struct Strays { int count = 0, inked = 0; };
Strays Compare(const QImage& drawn, const QImage& plain, const QRect& area) {
  Strays r;
  auto red = [](const QImage& im, int x, int y) { return qRed(im.pixel(x, y)); }; // coverage shows in red
  for (int y = area.top(); y <= area.bottom(); ++y)
    for (int x = area.left() + 1; x < area.right(); ++x) {
      const int a = red(drawn, x, y), b = red(plain, x, y);
      const int lo = std::min({b, red(plain, x - 1, y), red(plain, x + 1, y)});
      const int hi = std::max({b, red(plain, x - 1, y), red(plain, x + 1, y)});
      if (std::min(a, b) < 250) ++r.inked;
      if (a < lo - 64 || a > hi + 64) ++r.count;
    }
  return r;
}

struct Shape {
  const char* name;
  int n;
  std::function<double(int)> y;
};
} // namespace

// The series thins many values to at most four points per pixel column and fills runs of dense
// columns as bands. Against the stroke of its own points the band strays in at most 1 in 100 inked
// pixels; against the full polyline through every value the picture strays in at most 1 in 8
// (the thinned column's corners, and the raster engine's own shading of long runs of tiny
// collinear segments in the full polyline).
TEST(DenseLines, PictureEqualsThePlainPolylineWithinAntialiasing) {
  const std::vector<Shape> shapes = {
      {"dense noise", 200000, [](int i) { return std::sin(i / 3000.0) * 50 + Noise(i) * 0.4; }},
      {"sparse", 150, [](int i) { return std::sin(i / 9.0) * 60; }},
      {"steps", 100000, [](int i) { return (i / 7000) % 2 ? 40.0 : -30.0; }},
      {"spikes", 100000, [](int i) { return i % 9973 == 0 ? 95.0 : std::sin(i / 500.0) * 5; }},
      {"gaps and outliers", 100000, [](int i) {
         return i % 20000 < 3000 ? NaN : i == 55555 ? 1e12 : std::sin(i / 2000.0) * 70 + Noise(i) * 0.2;
       }},
  };
  const QColor color(0, 0, 200);
  for (const Shape& shape : shapes) {
    QyTestGraph f(500, 320);
    std::vector<double> xs(size_t(shape.n)), ys(size_t(shape.n));
    for (int i = 0; i < shape.n; ++i) xs[size_t(i)] = i, ys[size_t(i)] = shape.y(i);
    TQyLineSeries* s = f.AddSeries(xs, ys, 0xFF0000C8u);
    QyTestGraph::Fix(f.X(), 0, shape.n - 1);
    QyTestGraph::Fix(f.Y(), -100, 100);
    const QImage drawn = f.graph->RenderToImage(f.graph->size(), true);
    const std::vector<QPointF> thinned(s->Points().Data(), s->Points().Data() + s->PointCount());
    s->GetLine()->SetColor(0x000000C8u); // the same layout without the line
    const QImage empty = f.graph->RenderToImage(f.graph->size(), true);
    std::vector<QPointF> full;
    for (int i = 0; i < shape.n; ++i)
      if (std::isfinite(ys[size_t(i)])) full.emplace_back(f.X()->NumberToWorld(xs[size_t(i)]), f.Y()->NumberToWorld(ys[size_t(i)]));
    const QRectF area = f.graph->DataArea();
    const Strays band = Compare(drawn, WithPolyline(empty, thinned, color, area), area.toAlignedRect());
    const Strays all = Compare(drawn, WithPolyline(empty, full, color, area), area.toAlignedRect());
    EXPECT_GT(all.inked, 0) << shape.name;
    EXPECT_LE(band.count * 100, band.inked) << shape.name << ": " << band.count << " of " << band.inked;
    EXPECT_LE(all.count * 8, all.inked) << shape.name << ": " << all.count << " of " << all.inked;
  }
}

// A dense line is kept on a layer between paints. The kept picture follows a new pen and new
// values, and serves a partial repaint, exactly as a graph drawn afresh.
TEST(DenseLines, KeptPictureIsTheFreshPictureAfterEveryChange) {
  auto values = [](int n) {
    std::vector<double> xs(static_cast<size_t>(n)), ys(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) xs[size_t(i)] = i, ys[size_t(i)] = std::sin(i / 3000.0) * 50 + Noise(i) * 0.4;
    return std::pair(xs, ys);
  };
  auto fresh = [&](int n, TQyColor color) {
    QyTestGraph g(500, 320);
    const auto [xs, ys] = values(n);
    g.AddSeries(xs, ys, color);
    return g.graph->RenderToImage(g.graph->size(), true);
  };
  QyTestGraph f(500, 320);
  const auto [xs, ys] = values(100000);
  TQyLineSeries* s = f.AddSeries(xs, ys, 0xFF0000C8u);
  const QImage first = f.graph->RenderToImage(f.graph->size(), true);
  EXPECT_EQ(first, fresh(100000, 0xFF0000C8u));
  EXPECT_EQ(f.graph->RenderToImage(f.graph->size(), true), first);
  s->GetLine()->SetColor(0xFFC80000u);
  EXPECT_EQ(f.graph->RenderToImage(f.graph->size(), true), fresh(100000, 0xFFC80000u)) << "new pen";
  const auto [xs2, ys2] = values(120000);
  static_cast<TQyDoubleVector*>(s->GetXData())->AddRange(std::vector<double>(xs2.begin() + 100000, xs2.end()));
  static_cast<TQyDoubleVector*>(s->GetYData())->AddRange(std::vector<double>(ys2.begin() + 100000, ys2.end()));
  const QImage grown = fresh(120000, 0xFFC80000u);
  EXPECT_EQ(f.graph->RenderToImage(f.graph->size(), true), grown) << "new values";
  const QRect r(100, 50, 200, 150);
  QImage partial = first.convertToFormat(QImage::Format_ARGB32_Premultiplied); // stale outside r
  f.graph->render(&partial, r.topLeft(), QRegion(r));
  QImage whole(partial.size(), partial.format());
  f.graph->render(&whole);
  // A repaint through a widget cannot write pixels straight: equal up to rounding in the last bit.
  EXPECT_LE(QyProbe::MaxChannelDifference(partial.copy(r), whole.copy(r)), 1) << "partial repaint";
  // Painted as a child inside its window's picture, where the painter's device is the graph but
  // the coordinates are the window's.
  f.form->resize(560, 380);
  f.graph->move(40, 30);
  QImage window(f.form->size(), whole.format());
  for (int k = 0; k < 2; ++k) f.form->render(&window);
  EXPECT_EQ(window.copy(QRect(QPoint(40, 30), whole.size())), whole) << "inside a window";
}
