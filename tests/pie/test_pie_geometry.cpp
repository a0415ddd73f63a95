// The pie's geometry without a widget: angles, order, shifts, fit, rim points, label placement.
// Expected values are hand-computed (in the comments) or come from pie_reference.py.
#include "QyPieGeometry.h"
#include "QyPieLabels.h"
#include <gtest/gtest.h>
#include <cmath>

namespace {
std::vector<TQyPieValue> Taken(std::initializer_list<double> values) {
  std::vector<TQyPieValue> v;
  int i = 0;
  for (double x : values) v.push_back({i++, x});
  return v;
}
} // namespace

TEST(PieGeometry, SweepsStartsAndOrder) {
  struct Row {
    const char* what;
    std::vector<TQyPieValue> values;
    double start, total;
    bool ascending;
    std::vector<float> sweeps, starts;
    std::vector<int> indices;
  } rows[] = {
      {"one segment", Taken({5}), 0, 360, false, {360}, {0}, {0}},
      {"thirds", {{0, 1}, {2, 2}}, 0, 360, false, {120, 240}, {0, 120}, {0, 2}},
      {"half pie", Taken({1, 1}), 0, 180, false, {90, 90}, {0, 90}, {0, 1}},
      {"starts fold into a turn", Taken({1, 3}), 300, 360, false, {90, 270}, {300, 30}, {0, 1}},
      {"ascending carries the indices", Taken({3, 1, 2}), 0, 360, true, {60, 120, 180}, {0, 60, 180}, {1, 2, 0}},
  };
  for (const Row& r : rows) {
    const TQyPieSegments s = QyPieSegments(r.values, r.start, r.total, r.ascending);
    EXPECT_EQ(s.Sweeps, r.sweeps) << r.what;
    EXPECT_EQ(s.Starts, r.starts) << r.what;
    EXPECT_EQ(s.Indices, r.indices) << r.what;
  }
  EXPECT_TRUE(QyPieSegments({}, 0, 360, false).Sweeps.empty());
}

TEST(PieGeometry, ThreeDPaintOrderIsBackToFront) {
  const std::vector<float> starts{10, 100, 190, 280}, sweeps{90, 90, 90, 90};
  EXPECT_EQ(QyPie3DPaintOrder(starts, sweeps, {}), (std::vector<int>{2, 3, 1, 0}));
  // A far shift of the segment at the back brings it first (pie_reference.py).
  EXPECT_EQ(QyPie3DPaintOrder(starts, sweeps, {0, 0, 0, 100}), (std::vector<int>{3, 2, 1, 0}));
}

TEST(PieGeometry, ExplosionReachesBeyondTheCircle) {
  // [0, 90] shifted by half a radius along 45 degrees: it passes 0 and 90, so it reaches right
  // and down by its whole shift, sqrt(2)/4 radii, which is sqrt(2)/8 of the unit.
  TQyPieExplosion e = QyPieExplode({0}, {90}, {50});
  ASSERT_TRUE(e.AnyExploded);
  EXPECT_NEAR(e.Offsets[0].x(), std::sqrt(2.0) / 4, 1e-6);
  EXPECT_NEAR(e.Extents.Right, std::sqrt(2.0) / 8, 1e-6);
  EXPECT_NEAR(e.Extents.Bottom, std::sqrt(2.0) / 8, 1e-6);
  EXPECT_EQ(e.Extents.Left, 0);
  EXPECT_EQ(e.Extents.Top, 0);
  // [100, 170] shifted a whole radius: passes neither 90 nor 180 (pie_reference.py).
  e = QyPieExplode({100}, {70}, {250}); // clipped to 100
  EXPECT_NEAR(e.Extents.Left, 0.345957267, 1e-6);
  EXPECT_NEAR(e.Extents.Bottom, 0.345957267, 1e-6);
  EXPECT_FALSE(QyPieExplode({0}, {90}, {std::nan("")}).AnyExploded);
}

TEST(PieGeometry, FitCentresThePictureInAnySize) {
  struct Row {
    const char* what;
    TQyPieExtents extents;
    double elevation;
    QSizeF client;
    TQyPieMargins margins;
    QRectF pie;
  } rows[] = {
      {"square", {}, 1, {250, 250}, {}, {0, 0, 249, 249}},
      {"very wide", {}, 1, {1000, 100}, {}, {450, 0, 99, 99}},
      {"very wide, flattened", {}, 0.5, {1000, 100}, {}, {400.5, 0, 198, 99}},
      // Room for a reach of half the unit to the right: 249 / 1.5 = 166 across, centred down.
      {"reach to the right", {0, 0, 0, 0.5}, 1, {250, 250}, {}, {0, 41.5, 166, 166}},
      // 209 by 189 free: the height limits, and the pie is centred across.
      {"margins", {}, 1, {250, 250}, {10, 20, 30, 40}, {20, 20, 189, 189}},
  };
  for (const Row& r : rows) EXPECT_EQ(QyFitPie(r.extents, r.elevation, r.client, r.margins).PieRect, r.pie) << r.what;
  // Too small for its margins: nothing to draw, nothing negative.
  const QRectF tiny = QyFitPie({}, 1, {10, 10}, {20, 20, 20, 20}).PieRect;
  EXPECT_EQ(tiny.width(), 0);
  EXPECT_EQ(tiny.height(), 0);
}

TEST(PieGeometry, RimPointsLieOnTheScreenRay) {
  const QRectF r(0, 0, 200, 100);
  struct Row {
    double angle;
    QPointF point;
  } rows[] = {{0, {200, 50}}, {90, {100, 100}}, {180, {0, 50}}, {270, {100, 0}},
              {30, {165.465367071, 87.796447301}}, // pie_reference.py
              {45, {100 + std::sqrt(2000.0), 50 + std::sqrt(2000.0)}}}; // x = y on the ellipse
  for (const Row& row : rows) {
    const QPointF p = QyPieRimPoint(r, row.angle);
    EXPECT_NEAR(p.x(), row.point.x(), 1e-6) << row.angle;
    EXPECT_NEAR(p.y(), row.point.y(), 1e-6) << row.angle;
  }
  // An arc ends where the straight edge meets the rim.
  QPainterPath path;
  QyPieArc(path, r, 30, 60, true);
  EXPECT_NEAR(path.elementAt(0).x, 165.465367071, 1e-6);
  EXPECT_NEAR(path.currentPosition().x(), 100, 1e-6);
  EXPECT_NEAR(path.currentPosition().y(), 100, 1e-6);
}

TEST(PieLabels, CalloutBoxesArePushedJustOutOfThePie) {
  // A square box of half size 0.1 on a diagonal: its inner corner reaches the circle at
  // r = 1 + 0.1 * sqrt(2); the first step of 0.001 at or past it is 1.142, in every quadrant
  // (the third one tests its corner crossing the vertical axis like the others).
  for (double mid : {45.0, 135.0, 225.0, 315.0}) {
    const QPointF p = QyPushOutOfPie(mid, 0.1, 0.1, 0);
    EXPECT_NEAR(std::hypot(p.x(), p.y()), 1.142, 1e-9) << mid;
  }
  // Straight down at 90: a box that straddles the vertical axis goes until its top leaves the
  // circle's height: y - 0.1 > 1.
  const QPointF down = QyPushOutOfPie(90, 0.3, 0.1, 0);
  EXPECT_NEAR(down.x(), 0, 1e-9);
  EXPECT_NEAR(down.y(), 1.101, 1e-9);
  // A wide box at 260 straddles the axis with its right corner: up until y + 0.05 < -1, so
  // r sin 260 < -1.05, r > 1.0662.
  const QPointF up = QyPushOutOfPie(260, 0.5, 0.05, 0);
  EXPECT_NEAR(std::hypot(up.x(), up.y()), 1.067, 1e-9);
}

TEST(PieLabels, CalloutsMoveApartVertically) {
  TQyPieCallout a, b, far;
  a.Position = {0.5, 1.2}, b.Position = {0.6, 1.2}, far.Position = {-3, -1.5};
  a.Rect = b.Rect = far.Rect = QSizeF(0.4, 0.2);
  std::vector<TQyPieCallout> c{a, b, far};
  QyMoveCalloutsApart(c);
  EXPECT_EQ(c[0].Position, QPointF(0.5, 1.2));
  EXPECT_FALSE(c[0].Overlapped);
  EXPECT_NEAR(c[1].Position.y(), 1.4, 1e-12); // by the height of the first
  EXPECT_TRUE(c[1].Overlapped);
  EXPECT_EQ(c[2].Position, QPointF(-3, -1.5));
  EXPECT_FALSE(c[2].Overlapped);
}

TEST(PieLabels, InsideLabelsAndExtents) {
  // The golden section of the radius, of the ring for a donut with a hole of 50 %.
  EXPECT_NEAR(QyInsideLabelPosition(0, false, 50).x(), 0.6180339, 1e-9);
  EXPECT_NEAR(QyInsideLabelPosition(90, true, 50).y(), 0.6180339 * 0.5 + 0.5, 1e-9);
  // Along the radius, never upside down.
  EXPECT_EQ(QyAlignedLabelAngle(30), -30);
  EXPECT_EQ(QyAlignedLabelAngle(120), 60);
  EXPECT_EQ(QyAlignedLabelAngle(300), -300);
  // A box reaching from x = 1.2 to 1.6 lies 0.6 beyond the circle: 0.3 of the unit.
  TQyPieCallout c;
  c.Position = {1.4, 0}, c.Box = QSizeF(0.4, 0.2);
  const TQyPieExtents x = QyCalloutExtents({c});
  EXPECT_NEAR(x.Right, 0.3, 1e-12);
  EXPECT_EQ(x.Left, 0);
  EXPECT_EQ(x.Top, 0);
}
