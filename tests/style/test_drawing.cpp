// Drawing helpers, checked by what was drawn: vertices through the recording device, colours by
// pixel probes on rendered images.
#include "QyDrawing.h"
#include "QyPixelProbe.h"
#include "QyRecordingDevice.h"
#include <QImage>
#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>

namespace {
constexpr double Eps = 1e-4;

void ExpectPoint(const QPointF& actual, double x, double y) {
  EXPECT_NEAR(actual.x(), x, Eps);
  EXPECT_NEAR(actual.y(), y, Eps);
}

// Records one symbol: pen width 2, size 22, so the radius inside the border is 10.
std::vector<QyPrimitive> RecordSymbol(TQyPointSymbol symbol, float size = 22, float width = 2) {
  QyRecordingDevice device;
  QPainter p(&device);
  DrawPointSymbol(&p, QPen(Qt::blue, width), QBrush(Qt::yellow), 100, 50, size, symbol);
  p.end();
  return device.Primitives();
}

// The end points of every line drawn, relative to the centre (100, 50).
std::vector<QPointF> SpokeEnds(const std::vector<QyPrimitive>& prims) {
  std::vector<QPointF> ends;
  for (const auto& p : prims) {
    EXPECT_EQ(p.kind, QyPrimitive::Line);
    for (int i = 0; i + 1 < p.points.size(); i += 2) {
      ExpectPoint(p.points[i], 100, 50); // every line starts at the centre
      ends.push_back(p.points[i + 1] - QPointF(100, 50));
    }
  }
  return ends;
}

double Side(const QPointF& a, const QPointF& b) { return QLineF(a, b).length(); }

QImage Canvas(int w = 200, int h = 120) {
  QImage image(w, h, QImage::Format_ARGB32);
  image.fill(Qt::white);
  return image;
}
} // namespace

TEST(PointSymbols, LineSymbolsAreSpokesFromTheCentre) {
  auto cross = SpokeEnds(RecordSymbol(TQyPointSymbol::Cross));
  ASSERT_EQ(cross.size(), 4u);
  const QPointF crossEnds[] = {{0, -10}, {10, 0}, {0, 10}, {-10, 0}};
  for (int i = 0; i < 4; ++i) ExpectPoint(cross[i], crossEnds[i].x(), crossEnds[i].y());
  auto ex = SpokeEnds(RecordSymbol(TQyPointSymbol::Ex));
  ASSERT_EQ(ex.size(), 4u);
  for (const QPointF& e : ex) {
    EXPECT_NEAR(std::fabs(e.x()), 10, Eps);
    EXPECT_NEAR(std::fabs(e.y()), 10, Eps);
  }
  // Star: the cross, and an ex whose arms are as long as the cross's (r/sqrt 2 on each axis).
  auto star = SpokeEnds(RecordSymbol(TQyPointSymbol::Star));
  ASSERT_EQ(star.size(), 8u);
  for (const QPointF& e : star) EXPECT_NEAR(std::hypot(e.x(), e.y()), 10, 1e-3);
}

// The inner radius is (size - pen width) / 2, a pen of width 0 counting as 1; a dot is a square
// of the pen width in the pen colour; circle and square are filled and outlined in one.
TEST(PointSymbols, DotCircleAndSquareBoxes) {
  using P = TQyPointSymbol;
  const struct { P symbol; float size, width; QyPrimitive::Kind kind; QRectF rect; } cases[] = {
      {P::Dot, 22, 4, QyPrimitive::Rect, {98, 48, 4, 4}},        {P::Circle, 22, 2, QyPrimitive::Ellipse, {90, 40, 20, 20}},
      {P::Square, 22, 2, QyPrimitive::Rect, {90, 40, 20, 20}},   {P::Circle, 3, 3, QyPrimitive::Ellipse, {100, 50, 0, 0}},
      {P::Square, 11, 0, QyPrimitive::Rect, {95, 45, 10, 10}}};
  for (const auto& c : cases) {
    const auto prims = RecordSymbol(c.symbol, c.size, c.width);
    ASSERT_EQ(prims.size(), 1u);
    EXPECT_EQ(prims[0].kind, c.kind);
    EXPECT_EQ(prims[0].rect, c.rect) << int(c.symbol) << " size " << c.size << " width " << c.width;
    EXPECT_EQ(prims[0].brush.color(), QColor(c.symbol == P::Dot ? Qt::blue : Qt::yellow));
    EXPECT_EQ(prims[0].pen.style() == Qt::NoPen, c.symbol == P::Dot);
  }
  EXPECT_EQ(RecordSymbol(P::Circle)[0].pen.color(), QColor(Qt::blue));
  // Values beyond the enumeration draw nothing.
  EXPECT_TRUE(RecordSymbol(static_cast<TQyPointSymbol>(42)).empty());
}

TEST(PointSymbols, DiamondAndFiveStarVertices) {
  auto diamond = RecordSymbol(TQyPointSymbol::Diamond);
  ASSERT_EQ(diamond.size(), 1u);
  EXPECT_EQ(diamond[0].points, QPolygonF({{100, 40}, {110, 50}, {100, 60}, {90, 50}, {100, 40}}));
  auto star = RecordSymbol(TQyPointSymbol::FiveStar);
  ASSERT_EQ(star.size(), 1u);
  const QPolygonF s = star[0].points;
  ASSERT_EQ(s.size(), 11);
  const double unit[11][2] = {{0, -1.04}, {0.27, -0.3}, {1, -0.3}, {0.4, 0.12}, {0.64, 0.82}, {0, 0.4},
                              {-0.64, 0.82}, {-0.4, 0.12}, {-1, -0.3}, {-0.27, -0.3}, {0, -1.04}};
  for (int i = 0; i < 11; ++i) ExpectPoint(s[i], 100 + 10 * unit[i][0], 50 + 10 * unit[i][1]);
}

TEST(PointSymbols, TrianglesAreEquilateralAroundTheirIncircle) {
  for (auto symbol : {TQyPointSymbol::Delta, TQyPointSymbol::Nabla}) {
    auto prims = RecordSymbol(symbol);
    ASSERT_EQ(prims.size(), 1u);
    const QPolygonF t = prims[0].points;
    ASSERT_EQ(t.size(), 3);
    // Side 2r, all equal; the centroid is the centre; the incircle radius is side/(2*sqrt 3).
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(Side(t[i], t[(i + 1) % 3]), 20, 1e-3);
    ExpectPoint((t[0] + t[1] + t[2]) / 3, 100, 50);
    const double apexY = symbol == TQyPointSymbol::Delta ? 50 - 20 / std::sqrt(3.0) : 50 + 20 / std::sqrt(3.0);
    const auto apex = std::find_if(t.begin(), t.end(), [](const QPointF& p) { return std::fabs(p.x() - 100) < Eps; });
    ASSERT_NE(apex, t.end());
    EXPECT_NEAR(apex->y(), apexY, 1e-3); // Delta points up, Nabla down
  }
}

TEST(PointSymbols, ExcludeSymbolSpaceClipsAreaSymbolsOnly) {
  auto render = [](TQyPointSymbol symbol) {
    QImage image = Canvas();
    QPainter p(&image);
    ExcludeSymbolSpace(&p, 100, 60, 21, symbol); // radius 10
    p.fillRect(image.rect(), Qt::red);
    p.end();
    return image;
  };
  const QImage square = render(TQyPointSymbol::Square);
  EXPECT_EQ(QyProbe::At(square, 93, 53), 0xFFFFFFFFu);  // inside: kept
  EXPECT_EQ(QyProbe::Count(square, square.rect(), Qt::white), 400); // and nothing else
  const QImage circle = render(TQyPointSymbol::Circle);
  EXPECT_EQ(QyProbe::At(circle, 100, 60), 0xFFFFFFFFu);
  EXPECT_EQ(QyProbe::At(circle, 92, 52), 0xFFFF0000u); // corner of the box is outside the circle
  for (auto line : {TQyPointSymbol::Dot, TQyPointSymbol::Cross, TQyPointSymbol::Ex, TQyPointSymbol::Star})
    EXPECT_EQ(QyProbe::At(render(line), 100, 60), 0xFFFF0000u);
}

TEST(Rectangles, OrderedAndOverlapping) {
  EXPECT_EQ(OrderedRect(10, 20, 5, 2), QRect(5, 2, 5, 18));
  EXPECT_EQ(OrderedRect(10.5f, 2.0f, 5.5f, 20.0f), QRectF(5.5, 2, 5, 18));
  // Touching counts, and so does a rectangle inside the other.
  for (auto [b, overlap] : {std::pair{QRectF(5, 5, 10, 10), true}, {QRectF(10, 0, 5, 5), true}, {QRectF(2, 2, 2, 2), true},
                            {QRectF(10.5, 0, 5, 5), false}, {QRectF(0, -6, 5, 5), false}})
    EXPECT_EQ(RectanglesOverlaping(QRectF(0, 0, 10, 10), b), overlap) << b.x() << "," << b.y();
}

namespace {
QImage Fill(const QBrush& brush, const QRectF& r, int w = 200, int h = 120) {
  QImage image = Canvas(w, h);
  QPainter p(&image);
  p.fillRect(r, brush);
  return image;
}

void ExpectColorNear(QRgb actual, TQyColor expected, int tolerance) {
  EXPECT_NEAR(qRed(actual), GetR(expected), tolerance);
  EXPECT_NEAR(qGreen(actual), GetG(expected), tolerance);
  EXPECT_NEAR(qBlue(actual), GetB(expected), tolerance);
}
} // namespace

TEST(GradientBrushes, LinearRunsFromFirstOverMiddleToLast) {
  const QRectF r(0, 0, 200, 20);
  const QImage across = Fill(LinearBrush(r, 0, 0.25f, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF), r);
  // Pixel centres sit half a pixel inside, and the gradient reaches one pixel beyond the edge.
  ExpectColorNear(QyProbe::At(across, 0, 10), 0xFFFF0000, 12);
  ExpectColorNear(QyProbe::At(across, 50, 10), 0xFF00FF00, 8); // the middle colour at `center`
  ExpectColorNear(QyProbe::At(across, 199, 10), 0xFF0000FF, 12);
  const QRectF tall(0, 0, 20, 100);
  const QImage down = Fill(LinearBrush(tall, 90, 0.5f, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF), tall);
  ExpectColorNear(QyProbe::At(down, 10, 0), 0xFFFF0000, 12);
  ExpectColorNear(QyProbe::At(down, 10, 99), 0xFF0000FF, 12);
}

TEST(GradientBrushes, LinearKeepsThreeStopsAtTheEnds) {
  for (float center : {0.0f, 1.0f}) {
    const QBrush b = LinearBrush(QRectF(0, 0, 10, 10), 0, center, 1, 2, 3);
    ASSERT_EQ(b.gradient()->stops().size(), 3) << center;
    EXPECT_NEAR(b.gradient()->stops()[1].first, center, 1e-5);
    EXPECT_EQ(b.gradient()->stops()[1].second, QColor::fromRgba(2));
  }
}

TEST(GradientBrushes, RadialHasLastAtTheCentrePointAndFirstAtTheRim) {
  const QRectF r(0, 0, 200, 120);
  const QImage centred = Fill(RadialBrush(r, {0.5, 0.5}, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF), r);
  ExpectColorNear(QyProbe::At(centred, 100, 60), 0xFF0000FF, 8);
  ExpectColorNear(QyProbe::At(centred, 0, 0), 0xFFFF0000, 12); // corners lie on the circle
  // Middle colour half way from the centre to the rim along the diagonal.
  const double half = std::hypot(100.0, 60.0) / 2;
  ExpectColorNear(QyProbe::At(centred, int(100 + half * 100 / std::hypot(100.0, 60.0)),
                              int(60 + half * 60 / std::hypot(100.0, 60.0))), 0xFF00FF00, 16);
  const QImage shifted = Fill(RadialBrush(r, {0.25, 0.75}, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF), r);
  ExpectColorNear(QyProbe::At(shifted, 50, 90), 0xFF0000FF, 8);
}

TEST(GradientBrushes, EllipticalFollowsTheRectangleProportions) {
  const QRectF r(0, 0, 200, 40);
  const QImage image = Fill(EllipticalBrush(r, {0.5, 0.5}, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF), r);
  ExpectColorNear(QyProbe::At(image, 100, 20), 0xFF0000FF, 16); // pixel centre off by half a pixel
  // The ellipse passes through the corners: a corner has the rim colour; and points at the same
  // fraction of each half-axis have the same colour.
  ExpectColorNear(QyProbe::At(image, 0, 0), 0xFFFF0000, 16);
  const QRgb alongX = QyProbe::At(image, 100 + 50, 20), alongY = QyProbe::At(image, 100, 20 + 10);
  EXPECT_NEAR(qRed(alongX), qRed(alongY), 10);
  EXPECT_NEAR(qBlue(alongX), qBlue(alongY), 10);
}

TEST(Shadows, DrawShadowDarkensOutsideDownRightOnly) {
  QImage image = Canvas();
  QPainter p(&image);
  QPainterPath path;
  path.addRect(50, 30, 60, 40);
  const QPainterPath before = path;
  DrawShadow(&p, path, 5, 4);
  p.end();
  EXPECT_EQ(path, before);
  EXPECT_EQ(QyProbe::At(image, 80, 50), 0xFFFFFFFFu);  // under the shape: nothing
  EXPECT_EQ(QyProbe::At(image, 45, 25), 0xFFFFFFFFu);  // above left: nothing
  const QRgb near = QyProbe::At(image, 111, 71), far = QyProbe::At(image, 115, 75);
  EXPECT_LT(qRed(near), 200);                          // darkest at the shape
  EXPECT_LT(qRed(near), qRed(far));
  EXPECT_EQ(QyProbe::At(image, 118, 78), 0xFFFFFFFFu); // ends after six one-pixel steps
}

TEST(RoundRects, RadiusIsCappedAndZeroGivesAPlainRectangle) {
  QyRecordingDevice device;
  QPainter p(&device);
  const QRectF r(10, 10, 40, 20);
  DrawRoundRect(&p, QBrush(Qt::red), QPen(Qt::black), r, 100, false, true, false, false);
  DrawRoundRect(&p, QBrush(Qt::red), QPen(Qt::black), r, 0, false, false, false, false);
  p.end();
  const auto& prims = device.Primitives();
  ASSERT_EQ(prims.size(), 2u);
  // Capped: the path stays inside the rectangle; its corner is rounded.
  EXPECT_EQ(std::tuple(prims[0].kind, prims[0].path.boundingRect(), prims[0].pen.color()),
            std::tuple(QyPrimitive::Path, r, QColor(Qt::black)));
  EXPECT_FALSE(prims[0].path.contains(QPointF(10.5, 10.5)));
  // Radius 0 and no frame: a plain rectangle.
  EXPECT_EQ(std::tuple(prims[1].kind, prims[1].pen.style(), prims[1].antialiased), std::tuple(QyPrimitive::Rect, Qt::NoPen, false));
}

TEST(RoundRects, RaisedEdgeIsLightTopLeftAndDarkBottomRight) {
  QImage image = Canvas();
  const QColor gray(128, 128, 128);
  image.fill(gray);
  QPainter p(&image);
  DrawRoundRect(&p, QBrush(gray), QPen(Qt::NoPen), QRectF(20, 20, 100, 60), 0, false, false, true, false);
  p.end();
  // 210-alpha white over 128 gives 128 + 127*210/255 = 233; 90-alpha black 128*165/255 = 83.
  // Top and left edges light, bottom and right dark.
  for (auto [x, y, red] : {std::tuple{60, 20, 233}, {20, 50, 233}, {60, 79, 83}, {119, 50, 83}})
    EXPECT_NEAR(qRed(QyProbe::At(image, x, y)), red, 2) << x << "," << y;
  EXPECT_EQ(QyProbe::At(image, 60, 50), gray.rgba());
}

namespace {
std::vector<QyPrimitive> RecordBar(TQyColor line) {
  QyRecordingDevice device;
  QPainter p(&device);
  Draw3DBar(&p, line, 0xFF4080C0, 60, 100, 20, 40, -8, -6); // reversed corners, negative depths
  p.end();
  return device.Primitives();
}
} // namespace

TEST(Bars3D, FacesAndOutlines) {
  const auto prims = RecordBar(0xFF000000);
  // Silhouette, front, top, side.
  ASSERT_EQ(prims.size(), 4u);
  ExpectPoint(prims[0].points[2], 68, 34);
  EXPECT_EQ(prims[0].pen.style(), Qt::NoPen);
  const QPolygonF front = prims[1].points, top = prims[2].points, side = prims[3].points;
  EXPECT_EQ(front.boundingRect(), QRectF(20, 40, 40, 60));
  EXPECT_EQ(top.mid(0, 4), QPolygonF({{20, 40}, {60, 40}, {68, 34}, {28, 34}}));
  ExpectPoint(side[0], 60, 40);
  ExpectPoint(side[2], 68, 94);
  for (int i = 1; i < 4; ++i) {
    EXPECT_NE(prims[size_t(i)].pen.style(), Qt::NoPen) << i;
    EXPECT_DOUBLE_EQ(prims[size_t(i)].pen.widthF(), 1.0);
  }
  // A transparent line colour leaves out all outlines.
  for (const auto& p : RecordBar(QyTransparent)) EXPECT_EQ(p.pen.style(), Qt::NoPen);
  // A translucent fill has no silhouette.
  QyRecordingDevice device;
  QPainter p(&device);
  Draw3DBar(&p, QyTransparent, 0x804080C0, 20, 40, 60, 100, 8, 6);
  p.end();
  EXPECT_EQ(device.Primitives().size(), 3u);
}

TEST(Bars3D, FacesAreShadedFromTheFillColour) {
  QImage image = Canvas();
  QPainter p(&image);
  Draw3DBar(&p, QyTransparent, 0xFF4080C0, 40, 40, 100, 110, 16, 12);
  p.end();
  const int lightFront = GetBrightness(QyProbe::At(image, 70, 80)) * 1000;
  const int lightTop = GetBrightness(QyProbe::At(image, 78, 34)) * 1000;
  const int lightSide = GetBrightness(QyProbe::At(image, 108, 80)) * 1000;
  EXPECT_GT(lightTop, lightFront);
  EXPECT_LT(lightSide, lightFront);
}

TEST(Cylinders, ShearedEllipseAngleIsWhereTheOutlineRunsVertical) {
  // Independent check: at the returned polar angle, the sheared outline x + k*y has a vertical
  // tangent (d/dtheta of the sheared x is zero).
  for (auto [a, b, k] : {std::tuple{1.0, 0.5, 0.0}, {1.0, 0.5, 0.5}, {2.0, 1.0, -1.3}, {10.0, 3.0, -0.8}}) {
    const double phi = ShearedEllipseAngle(a, b, k) * M_PI / 180;
    const double theta = std::atan2(a * std::sin(phi), b * std::cos(phi));
    EXPECT_NEAR(-a * std::sin(theta) + k * b * std::cos(theta), 0, 1e-9) << a << " " << b << " " << k;
  }
  EXPECT_NEAR(std::fabs(ShearedEllipseAngle(1, 0.5, 0)), 180, 1e-9);
}

TEST(Cylinders, CapSitsAtTheValueEnd) {
  QImage image = Canvas();
  QPainter p(&image);
  DrawCylinderVertical(&p, QyTransparent, 0xFF2060C0, 40, 100, 80, 40, 0, 10);
  DrawCylinderHorizontal(&p, QyTransparent, 0xFF2060C0, 100, 60, 170, 100, 0, 10);
  p.end();
  // Vertical: the cap ellipse stands above the rectangle's top (40) by its height.
  // Horizontal: the cap ellipse lies beyond the right end (170). Rows: x, y, painted.
  const struct { int x, y; bool painted; } probes[] = {
      {60, 34, true}, {60, 28, false}, {60, 99, true}, {60, 106, false}, // 99: the bottom ellipse
      {175, 80, true}, {183, 80, false}, {101, 80, true}, {93, 80, false}};
  for (const auto& q : probes) EXPECT_EQ(QyProbe::At(image, q.x, q.y) != 0xFFFFFFFFu, q.painted) << q.x << "," << q.y;
}

TEST(Arrows, ArrowLineStopsAtTheNotchAndTheTipIsOnTheEnd) {
  QyRecordingDevice device;
  QPainter p(&device);
  QPen pen(Qt::black, 2);
  DrawArrowLine(&p, pen, {0, 0}, {100, 0}, ArrowPointCap(5, 3, 2), 3);
  p.end();
  const auto& prims = device.Primitives();
  ASSERT_EQ(prims.size(), 2u);
  ExpectPoint(prims[0].points[1], 94, 0); // 3 widths of 2 short of the tip
  const QPolygonF head = prims[1].transform.map(prims[1].path.toFillPolygon());
  ExpectPoint(head[1], 100, 0);           // the tip
  ExpectPoint(head[0], 90, -4);           // the barbs at 5 widths back, 2 widths aside
  ExpectPoint(head[2], 90, 4);
}
