// What a line series draws: areas, bands, per-segment pens and brushes, pieces of long thick
// lines, and the plain fast path; asserted on the primitives of the recording device.
#include "QyPixelProbe.h"
#include "QyRecordingDevice.h"
#include "QyTestGraph.h"
#include <QPainter>
#include <QySeries.h>
#include <cmath>
#include <gtest/gtest.h>

namespace {
std::vector<const QyPrimitive*> WithBrush(const QyRecordingDevice& dev, QyPrimitive::Kind kind, QColor c) {
  return dev.Select([&](const QyPrimitive& p) { return p.kind == kind && p.brush.style() != Qt::NoBrush && p.brush.color() == c; });
}

const QColor Fill(0x20, 0x80, 0x20);
} // namespace

// The area is one polygon: the line's points, then down to the baseline (zero when the axis
// shows it) and back; with a band it returns along the other series instead.
TEST(SeriesDrawing, AreaAndBandPolygons) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 1, 2, 3}, {2, 4, 3, 5});
  s->GetArea()->SetVisible(true);
  s->GetArea()->SetForeColor(0xFF208020);
  QyTestGraph::Fix(f.Y(), -1, 6);
  QyTestGraph::Fix(f.X(), 0, 3);
  QyRecordingDevice dev;
  f.Paint(dev);
  auto areas = WithBrush(dev, QyPrimitive::Polygon, Fill);
  ASSERT_EQ(areas.size(), 1u);
  const QPolygonF poly = areas[0]->DevicePoints();
  ASSERT_EQ(poly.size(), 6);
  const double base = f.Y()->NumberToWorld(0) - 0.5;
  for (int i = 0; i < 4; ++i) EXPECT_EQ(poly[i], s->Points()[i]);
  EXPECT_EQ(poly.mid(4), QPolygonF(QList<QPointF>{{f.X()->NumberToWorld(3), base}, {f.X()->NumberToWorld(0), base}}));

  // A band to a lower series: forward along this one, back along the other. A band is an area:
  // it makes the area visible.
  TQyLineSeries* lower = f.AddSeries({0, 1, 2, 3}, {1, 1.5, 0.5, 2}, 0xFF000000);
  s->GetArea()->SetVisible(false);
  s->SetDrawBandTo(lower);
  f.Paint(dev);
  areas = WithBrush(dev, QyPrimitive::Polygon, Fill);
  ASSERT_EQ(areas.size(), 1u);
  const QPolygonF band = areas[0]->DevicePoints();
  ASSERT_EQ(band.size(), 8);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(band[i], QPointF(f.X()->NumberToWorld(i), f.Y()->NumberToWorld(std::vector<double>{2, 4, 3, 5}[i])));
    EXPECT_EQ(band[7 - i], QPointF(f.X()->NumberToWorld(i), f.Y()->NumberToWorld(std::vector<double>{1, 1.5, 0.5, 2}[i])));
  }

  // The baseline follows the axis start when zero is not shown.
  s->SetDrawBandTo(nullptr);
  QyTestGraph::Fix(f.Y(), 1, 6);
  f.Render();
  ASSERT_EQ(s->TotalPointCount(), 6);
  EXPECT_DOUBLE_EQ(s->Points()[4].y(), f.Y()->NumberToWorld(1) - 0.5);
}

// A brush handler gets each segment with its data index and values; it may change the brush,
// which stays for the following segments, or refuse a segment.
TEST(SeriesDrawing, BrushAndPenHandlersWorkPerSegment) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 1, 2, 3, 4}, {1, 3, 2, 4, 3}, 0xFF123456);
  s->GetArea()->SetVisible(true);
  s->GetArea()->SetForeColor(0xFF208020);
  QyTestGraph::Fix(f.Y(), 0, 5);
  std::vector<int> seen;
  s->OnGetBrush = [&](TQySeries*, TQyBrushEventArgs& a) {
    seen.push_back(a.Index);
    EXPECT_DOUBLE_EQ(a.X, a.Index);
    if (a.Index == 1) a.Draw = false;
    if (a.Index == 2) a.Brush = QBrush(Qt::magenta);
  };
  f.Render();
  seen.clear();
  QyRecordingDevice dev;
  f.Paint(dev);
  EXPECT_EQ(seen, (std::vector<int>{0, 1, 2, 3}));
  auto green = WithBrush(dev, QyPrimitive::Polygon, Fill);
  auto magenta = WithBrush(dev, QyPrimitive::Polygon, Qt::magenta);
  ASSERT_EQ(green.size(), 1u);   // segment 0; segment 1 refused
  ASSERT_EQ(magenta.size(), 2u); // segment 2 and, keeping the brush, segment 3
  const QPolygonF q = green[0]->DevicePoints();
  const double base = f.Y()->NumberToWorld(0) - 0.5;
  EXPECT_EQ(q, QPolygonF({s->Points()[1], s->Points()[0], {s->Points()[0].x(), base}, {s->Points()[1].x(), base}}));

  // Pens: segment 2 is not drawn, the line breaks there; a replaced pen carries on.
  s->GetArea()->SetVisible(false);
  s->OnGetPen = [&](TQySeries*, TQyPenEventArgs& a) {
    const std::vector<double> ys{1, 3, 2, 4, 3};
    EXPECT_DOUBLE_EQ(a.Y, ys[a.Index]);
    if (a.Index == 2) a.Draw = false;
    if (a.Index == 3) a.Pen.setColor(Qt::blue);
  };
  f.Paint(dev);
  auto own = dev.WithPenColor(QColor(0x12, 0x34, 0x56));
  auto blue = dev.WithPenColor(Qt::blue);
  ASSERT_EQ(own.size(), 2u);
  ASSERT_EQ(blue.size(), 1u);
  for (int k = 0; k < 2; ++k) EXPECT_EQ(own[k]->DevicePoints(), QPolygonF({s->Points()[k], s->Points()[k + 1]}));
  EXPECT_EQ(blue[0]->DevicePoints()[0], s->Points()[3]);
  for (const QyPrimitive* p : dev.OfKind(QyPrimitive::Line)) // nothing from point 2 to point 3
    EXPECT_FALSE(p->DevicePoints().size() == 2 && p->DevicePoints()[0] == s->Points()[2]);
}

// Long thick or dashed lines are drawn in pieces of at most 1000 segments that share their end
// points and together pass through every point; a dashed piece continues the dash pattern of the one before.
TEST(SeriesDrawing, ThickAndDashedLinesInPieces) {
  QyTestGraph f(800, 400);
  const int n = 3000;
  std::vector<double> xs(n), ys(n);
  for (int i = 0; i < n; ++i) xs[i] = i, ys[i] = (i % 2) * 10.0; // zigzag: one point per value stays
  TQyLineSeries* s = f.AddSeries(xs, ys, 0xFF123456);
  s->PointSymbol()->SetVisible(true); // keeps all points (more than a pixel apart in Y)
  s->PointSymbol()->SetSize(1);
  s->GetLine()->SetWidth(3);
  s->GetLine()->SetDashStyle(QyGDI::TDashStyle::DashStyleDash);
  f.Render();
  ASSERT_EQ(s->PointCount(), n);
  QyRecordingDevice dev(800, 400);
  f.Paint(dev);
  auto pieces = dev.WithPenColor(QColor(0x12, 0x34, 0x56));
  std::vector<const QyPrimitive*> lines;
  for (auto* p : pieces)
    if (p->kind == QyPrimitive::Polyline) lines.push_back(p);
  ASSERT_GE(lines.size(), 3u);
  double length = 0;
  int k = 0;
  for (size_t c = 0; c < lines.size(); ++c) {
    const QPolygonF v = lines[c]->DevicePoints();
    EXPECT_LE(v.size(), 1001);
    EXPECT_NEAR(lines[c]->pen.dashOffset(), length / 3.0, 1e-6 * (1 + length)) << "piece " << c;
    if (c > 0) --k; // shares the previous piece's last point
    for (int j = 0; j < v.size(); ++j, ++k) {
      EXPECT_EQ(v[j], s->Points()[k]);
      if (j > 0) length += std::hypot(v[j].x() - v[j - 1].x(), v[j].y() - v[j - 1].y());
    }
  }
  EXPECT_EQ(k, n);
}

// Many points with an opaque solid line and no smoothing take the plain path on screen: whole
// pixels, no antialiasing, clipped to the data area. Images always take the smooth path.
TEST(SeriesDrawing, PlainFastPathOnScreen) {
  QyTestGraph f;
  std::vector<double> ys(500);
  for (size_t i = 0; i < ys.size(); ++i) ys[i] = std::sin(i / 30.0);
  TQyLineSeries* s = f.AddSeries({}, ys, 0xFF123456);
  f.graph->SetSmoothingMode(TQySmoothingMode::None);
  QyRecordingDevice dev;
  f.Paint(dev);
  EXPECT_TRUE(s->CanDoCanvasDraw());
  auto lines = dev.WithPenColor(QColor(0x12, 0x34, 0x56));
  ASSERT_EQ(lines.size(), 1u);
  const QyPrimitive& p = *lines[0];
  EXPECT_FALSE(p.antialiased);
  ASSERT_TRUE(p.clipped);
  EXPECT_TRUE(f.graph->DataArea().toRect().adjusted(-1, -1, 1, 1).contains(p.clip.boundingRect().toRect()));
  const QPolygonF v = p.DevicePoints();
  ASSERT_EQ(v.size(), s->PointCount());
  for (int k = 0; k < v.size(); ++k) {
    EXPECT_EQ(v[k].x(), std::nearbyint(s->Points()[k].x()));
    EXPECT_EQ(v[k].y(), std::nearbyint(s->Points()[k].y()));
  }
  // A translucent line, or smoothing, leaves the fast path.
  s->GetLine()->SetColor(0x80123456);
  EXPECT_FALSE(s->CanDoCanvasDraw());
  s->GetLine()->SetColor(0xFF123456);
  f.graph->SetSmoothingMode(TQySmoothingMode::AntiAlias);
  EXPECT_FALSE(s->CanDoCanvasDraw());
}
