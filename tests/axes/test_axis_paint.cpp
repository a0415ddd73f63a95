// What an axis draws: the arrow at the end where the values grow and the room kept for it, the
// colours of numbers and caption, and an axis outside a graph, which draws itself.
#include "QyRecordingDevice.h"
#include "QyTestGraph.h"
#include <QyAxis.h>
#include <QyStyles.h>
#include <gtest/gtest.h>

namespace {
// Everything drawn with a pen or a fill of `color`, in graph coordinates.
QRectF DrawnIn(const QyRecordingDevice& dev, QColor color) {
  QRectF drawn;
  for (const QyPrimitive* p : dev.Select([&](const QyPrimitive& q) {
         return (q.pen.style() != Qt::NoPen && q.pen.color() == color) ||
                (q.brush.style() != Qt::NoBrush && q.brush.color() == color);
       })) {
    const QRectF r = p->kind == QyPrimitive::Path ? p->transform.map(p->path).boundingRect()
                                                  : p->DevicePoints().boundingRect();
    drawn = drawn.isNull() ? r : drawn.united(r);
  }
  return drawn;
}
} // namespace

// The arrow stands at the stop end: top or right, bottom or left when twisted. The layout keeps
// 3 point lengths for it there, so that the tip stays on the graph; the other primary axis is
// put on the opposite side, where it cannot lend its own band.
TEST(AxisPaint, ArrowStandsAtTheStopEndWithRoomKeptThere) {
  struct Row { bool vertical, twisted; };
  for (const Row r : {Row{true, false}, Row{true, true}, Row{false, false}, Row{false, true}}) {
    QyTestGraph f(500, 400);
    QyTestGraph::Fix(f.X(), 0, 10);
    QyTestGraph::Fix(f.Y(), 0, 10);
    TQyAxis* a = r.vertical ? f.Y() : f.X();
    TQyAxis* other = r.vertical ? f.X() : f.Y();
    if (r.twisted)
      other->SetPosition(r.vertical ? TQyAxisPosition::Top : TQyAxisPosition::Right);
    a->SetTwisted(r.twisted);
    a->SetForeColor(0xFF00A000u);
    a->GetArrowPoint()->SetVisible(true);
    const float room = 3 * a->GetArrowPoint()->GetPointLength();
    f.Render();
    QyRecordingDevice dev(500, 400);
    f.Paint(dev);
    const QRectF drawn = DrawnIn(dev, QColor(0, 0xA0, 0));
    const std::string at = std::string(r.vertical ? "vertical" : "horizontal") + (r.twisted ? " twisted" : "");
    ASSERT_FALSE(drawn.isNull()) << at;
    const float start = (r.vertical ? a->y() + a->OriginY() : a->x() + a->OriginX());
    const float end = start + a->AxisLength();
    // Screen ends: the stop end is up or right unless twisted.
    const bool tipLow = r.vertical != r.twisted; // tip at the smaller coordinate
    const double tip = r.vertical ? (tipLow ? drawn.top() : drawn.bottom()) : (tipLow ? drawn.left() : drawn.right());
    EXPECT_NEAR(tip, tipLow ? start - room : end + room, 1.0) << at;
    const double limit = r.vertical ? 400 : 500;
    EXPECT_GE(tip, -0.5) << at;
    EXPECT_LE(tip, limit + 0.5) << at;
  }
}

// Numbers and caption take their own colours, also when these change after the first picture;
// a run coloured by mark-up keeps its colour.
TEST(AxisPaint, NumbersAndCaptionColours) {
  QyTestGraph f;
  QyTestGraph::Fix(f.X(), 0, 10);
  f.X()->SetCaption("Volts \\c[A=255,R=255,G=0,B=0]red");
  f.Render();
  f.X()->SetNumbersColor(0xFF123456u);
  f.X()->SetCaptionColor(0xFF654321u);
  f.Render();
  QyRecordingDevice dev;
  f.Paint(dev);
  for (const QString label : {"0", "10"}) {
    const auto texts = dev.WithText(label);
    ASSERT_FALSE(texts.empty()) << label.toStdString();
    EXPECT_EQ(texts.front()->pen.color().rgba(), 0xFF123456u) << label.toStdString();
  }
  const auto caption = dev.WithText("Volts ");
  ASSERT_EQ(caption.size(), 1u);
  EXPECT_EQ(caption.front()->pen.color().rgba(), 0xFF654321u);
  const auto red = dev.WithText("red");
  ASSERT_EQ(red.size(), 1u);
  EXPECT_EQ(red.front()->pen.color().rgba(), 0xFFFF0000u);
}

// Outside a graph an axis paints itself when its parent is painted.
TEST(AxisPaint, AnAxisOutsideAGraphDrawsItself) {
  QWidget panel;
  panel.resize(500, 80);
  auto* a = new TQyAxis(&panel);
  a->SetStartEnd(TQyAxisEnd::Fixed), a->SetStopEnd(TQyAxisEnd::Fixed);
  a->SetStartStop(0, 10);
  a->SetForeColor(0xFF00A000u);
  QyRecordingDevice dev(500, 80);
  panel.render(&dev);
  EXPECT_FALSE(DrawnIn(dev, QColor(0, 0xA0, 0)).isNull()); // the axis line
  EXPECT_FALSE(dev.WithText("10").empty());
}

// Captions that show values of a series (its caption and name) follow them: the series tells the
// axis, so that the next picture lays out the new width, and the graph title.
TEST(AxisCaption, FollowsTheValuesItShows) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 1}, {0, 1});
  s->SetCaption("Pressure");
  f.Y()->SetCaption("<%Form1.Series1.Caption%>");
  f.graph->SetCaptionVisible(true);
  f.graph->SetCaption("<%Form1.Series1.Caption%> / <%Form1.Series1.Name%>");
  f.Render();
  EXPECT_EQ(f.Y()->CaptionObject()->PlainText(), "Pressure");
  EXPECT_EQ(f.graph->CaptionObject()->PlainText(), "Pressure / Series1");
  s->SetCaption("Flow");
  EXPECT_TRUE(f.Y()->NeedsCalc());
  EXPECT_EQ(f.graph->CaptionObject()->PlainText(), "Flow / Series1");
  f.Render();
  EXPECT_EQ(f.Y()->CaptionObject()->PlainText(), "Flow");
}
