// What markers draw (in the graph's pictures), their captions, and the arrow marker's grips.
#include "QyMarkerTestKit.h"
#include "QyPixelProbe.h"
#include <QBuffer>
#include <QEnterEvent>
#include <gtest/gtest.h>

namespace {

// The lines of one pen colour the graph draws in its next paint.
std::vector<const QyPrimitive*> LinesOf(QyMarkerGraph& t, QyRecordingDevice& dev, QColor color) {
  t.Paint(dev);
  return dev.Select([&](const QyPrimitive& p) { return p.kind == QyPrimitive::Line && p.pen.color() == color; });
}

// A marker is drawn by the graph: it shows in an exported image and in SVG, and a line marker
// whose value lies outside its axis is left out when it clips to the data.
TEST(MarkerParts, DrawnInExportedPictures) {
  QyMarkerGraph t;
  auto* h = t.Marker<TQyHorizontalMarker>("H");
  h->SetYAxis(t.Y());
  h->SetY(30);
  h->GetLine()->SetColor(0xFF00C000);
  h->GetLine()->SetWidth(1);
  const QImage image = t.graph->RenderToImage(QSize(), false);
  const int row = QyMarkerGraph::Px(t.Y(), 30);
  const QRect area = t.graph->DataArea().toAlignedRect();
  EXPECT_GT(QyProbe::Count(image, QRect(area.left(), row, area.width(), 1), QColor(0, 192, 0)), area.width() * 9 / 10);
  EXPECT_EQ(QyProbe::Count(image, QRect(area.left(), row - 3, area.width(), 2), QColor(0, 192, 0)), 0);
  // An image of another size lays the marker out for it and leaves the control as it was.
  const QPoint place = h->pos();
  const QImage big = t.graph->RenderToImage(QSize(900, 700), false);
  EXPECT_TRUE(QyProbe::Any(big, QRect(700, 0, 150, 700), QColor(0, 192, 0)));
  EXPECT_EQ(h->pos(), place);
  QBuffer svg;
  svg.open(QIODevice::WriteOnly);
  t.graph->RenderToSvg(&svg);
  EXPECT_TRUE(svg.data().contains("#00c000"));
  // Beyond the axis' stop: left out with ClipToData, drawn at the axis' pixel without it.
  h->SetY(150);
  QyRecordingDevice dev;
  EXPECT_TRUE(LinesOf(t, dev, QColor(0, 192, 0)).empty());
  h->SetClipToData(false);
  const auto lines = LinesOf(t, dev, QColor(0, 192, 0));
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_NEAR(lines[0]->DevicePoints()[0].y(), t.Y()->NumberToWorld(150), 1.0);
}

// A caption on the line breaks it around the caption's box; above it, it does not.
TEST(MarkerParts, CaptionOnTheLineBreaksIt) {
  struct Row { TQyContentAlignment position; int pieces; };
  for (const Row& row : {Row{TQyContentAlignment::MiddleCenter, 2}, Row{TQyContentAlignment::TopRight, 1}}) {
    QyMarkerGraph t;
    auto* h = t.Marker<TQyHorizontalMarker>("H");
    h->SetYAxis(t.Y());
    h->SetY(50);
    h->SetCaption("level");
    h->SetCaptionVisible(true);
    h->SetCaptionPosition(row.position);
    h->GetLine()->SetColor(0xFF0000FF);
    t.Settle();
    QyRecordingDevice dev;
    EXPECT_EQ(int(LinesOf(t, dev, QColor(0, 0, 255)).size()), row.pieces);
    EXPECT_FALSE(dev.WithText("level").empty());
    // Line and caption box take the mouse; the rest of the widget does not.
    EXPECT_TRUE(h->LineRect().isValid());
    EXPECT_TRUE(h->rect().contains(h->CaptionRect()));
  }
}

// A caption can show the marker's own values; it follows a drag.
TEST(MarkerParts, CaptionShowsLiveValues) {
  QyMarkerGraph t;
  auto* c = t.Placed<TQyCrossHair>("Cross", 2.5, 50);
  c->SetCaption("x=<%Form1.Graph1.Cross.X;0.00%>");
  t.Settle();
  EXPECT_EQ(c->CaptionObject()->PlainText(), "x=2.50");
  c->SetX(7.25);
  EXPECT_EQ(c->CaptionObject()->PlainText(), "x=7.25");
}

// The arrow's polar form: angle anticlockwise on the screen, 0 length gives 270.
TEST(MarkerParts, ArrowAngleAndLength) {
  struct Row { int dx, dy; float angle, length; };
  TQyLabelWithArrowMarker m;
  for (const Row& row : {Row{50, -50, 45, 70.7107f}, Row{-30, 0, 180, 30}, Row{0, 20, 270, 20},
                         Row{0, -20, 90, 20}, Row{0, 0, 270, 0}, Row{10, 10, 315, 14.1421f}}) {
    m.SetArrowDeltaX(row.dx);
    m.SetArrowDeltaY(row.dy);
    EXPECT_NEAR(m.GetArrowAngle(), row.angle, 1e-4) << row.dx << "," << row.dy;
    EXPECT_NEAR(m.GetArrowLength(), row.length, 1e-3);
  }
  m.SetArrowDeltaX(30), m.SetArrowDeltaY(-40);
  m.SetArrowAngle(180); // keeps length 50
  EXPECT_EQ(m.GetArrowDeltaX(), -50);
  EXPECT_EQ(m.GetArrowDeltaY(), 0);
  m.SetArrowLength(20); // keeps the angle
  EXPECT_EQ(m.GetArrowDeltaX(), -20);
  m.SetBentLength(-12);
  EXPECT_EQ(m.GetBentLength(), 12);
  // Without a caption there is no caption grip.
  m.ShowGrips(true);
  EXPECT_TRUE(m.CaptionGripWidget()->isHidden());
  EXPECT_FALSE(m.ArrowEndGrip()->isHidden());
}

// Each grip drags exactly the part it holds; the tip stays on its point.
TEST(MarkerParts, GripsChangeOnlyTheirPart) {
  struct Row { const char* grip; int arrowDX, arrowDY, captionDX, captionDY, bent; };
  for (const Row& row : {Row{"end", 50 + 15, -50 - 10, 0, 0, 20}, Row{"bent", 50, -50, 0, 0, 20 + 15},
                         Row{"caption", 50, -50, 15, -10, 20}}) {
    SCOPED_TRACE(row.grip);
    QyMarkerGraph t;
    auto* m = t.Placed<TQyLabelWithArrowMarker>("A", 5, 50);
    m->SetCaption("peak");
    m->SetBentLength(20);
    // Hovering shows the grips.
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), m->mapToGlobal(QPointF(1, 1)));
    QApplication::sendEvent(m, &enter);
    const QString grip = row.grip;
    QWidget* w = grip == "end" ? m->ArrowEndGrip() : grip == "bent" ? m->BentLengthGrip() : m->CaptionGripWidget();
    ASSERT_TRUE(w->isVisible());
    const QPoint hot = m->HotSpot();
    EXPECT_EQ(t.Drag(w->geometry().center(), {15, -10}), w);
    EXPECT_EQ(m->GetArrowDeltaX(), row.arrowDX);
    EXPECT_EQ(m->GetArrowDeltaY(), row.arrowDY);
    EXPECT_EQ(m->GetCaptionDeltaX(), row.captionDX);
    EXPECT_EQ(m->GetCaptionDeltaY(), row.captionDY);
    EXPECT_EQ(m->GetBentLength(), row.bent);
    EXPECT_EQ(m->HotSpot(), hot);
    EXPECT_DOUBLE_EQ(m->GetX(), 5);
    // The end grip follows the arrow's end.
    EXPECT_EQ(m->ArrowEndGrip()->geometry().center(), m->pos() + m->ArrowEnd());
  }
}

// The arrow head stands at the hot spot; the caption box lies at the far end of the leader.
TEST(MarkerParts, ArrowDrawnFromItsEndToTheTip) {
  QyMarkerGraph t;
  auto* m = t.Placed<TQyLabelWithArrowMarker>("A", 5, 50);
  m->SetCaption("peak");
  m->GetArrow()->SetColor(0xFF800080);
  t.Settle();
  QyRecordingDevice dev;
  const auto lines = LinesOf(t, dev, QColor(128, 0, 128));
  ASSERT_EQ(lines.size(), 1u);
  const QPolygonF ends = lines[0]->DevicePoints();
  EXPECT_NEAR(ends[0].x(), m->HotSpot().x() + 50, 0.5);
  EXPECT_NEAR(ends[0].y(), m->HotSpot().y() - 50, 0.5);
  const QRect box = m->CaptionRect().translated(m->pos());
  EXPECT_GE(box.left(), m->HotSpot().x() + 50);
  EXPECT_LE(box.bottom(), m->HotSpot().y() - 50 + 1);
  EXPECT_TRUE(m->geometry().contains(box));
}

} // namespace
