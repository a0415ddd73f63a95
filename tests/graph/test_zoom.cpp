// Zoom, pan, wheel and scroll bars on a live graph: real mouse, wheel and key events sent to a
// shown widget.
#include "QyExpect.h"
#include "QyFakeRecorder.h"
#include "QyTestGraph.h"
#include <QScrollBar>
#include <QWheelEvent>
#include <QTest>
#include <QyGraph2D.h>
#include <QyGraphScroll.h>
#include <QyInput.h>
#include <QyPointSeries.h>
#include <QyUndoStack.h>
#include <gtest/gtest.h>

namespace {
using QyShift::ssAlt;
using QyShift::ssCtrl;
using QyShift::ssDouble;
using QyShift::ssLeft;
using QyShift::ssRight;
using QyShift::ssShift;

// A graph of y = x on 0 .. 100 (or 1 .. 1000 on a logarithmic X) whose ends are the data's (no
// rounding), shown offscreen.
struct ZoomGraph : QyTestGraph {
  explicit ZoomGraph(bool logX = false) {
    std::vector<double> v;
    for (int i = 0; i <= 100; ++i) v.push_back(logX ? std::pow(10.0, i * 0.03) : i);
    AddSeries(v, v);
    if (logX) X()->SetScaling(TQyAxisScaling::Log);
    for (TQyAxis* a : {X(), Y()}) a->SetEndRounding(TQyAxisEndRounding::RndNothing);
    form->resize(graph->size());
    form->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(form.get()));
    Settle();
  }
  // Lays out and paints as the screen would.
  void Settle() {
    graph->repaint();
    QCoreApplication::processEvents();
    graph->repaint();
  }
  QPoint At(double x, double y) const {
    return QPoint(int(std::lround(X()->NumberToWorld(x))), int(std::lround(Y()->NumberToWorld(y))));
  }
  // A press, moves in steps, a release: one gesture of the given button and keys.
  void Drag(QPoint a, QPoint b, Qt::KeyboardModifiers keys = {}, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(graph, button, keys, a);
    for (int k = 1; k <= 4; ++k) QTest::mouseMove(graph, a + (b - a) * k / 4);
    QTest::mouseRelease(graph, button, keys, b);
    Settle();
  }
  void Click(QPoint p) {
    QTest::mouseClick(graph, Qt::LeftButton, {}, p);
    Settle();
  }
  QPoint Beside() const { return QPoint(2, 2); } // the top left corner: no data area there
  void ExpectEnds(TQyAxis* a, double start, double stop, double tol = 1.0) const {
    EXPECT_NEAR(a->GetStart(), start, tol);
    EXPECT_NEAR(a->GetStop(), stop, tol);
  }
};
} // namespace

// Each setting with its default and the caption its change is recorded under; the start keys
// refuse to become equal.
TEST(ZoomSettings, DefaultsCaptionsAndEqualStartKeys) {
  QyTestGraph t;
  TQyZoomSettings* z = t.graph->GetZoom();
  QyFakeRecorder rec;
  t.graph->SetUndoStack(&rec);
  const struct { const char* name; QVariant def, other; const char* caption; } rows[] = {
      {"Auto", true, false, "Graph auto zooming"},
      {"BufferType", QVariant::fromValue(TQyZoomBufferType::AsStack), QVariant::fromValue(TQyZoomBufferType::AsCircularBuffer), nullptr},
      {"OptimizeSeries", false, true, "Graph zoom optimize for series data"},
      {"BackOnClickBeside", true, false, "Graph zoom back clicking beside data"},
      {"BackOnRightBottomLeftTopFrame", false, true, "Graph zoom back clicking beside data"},
      {"ResetOnDoubleClickBeside", true, false, "Graph zoom reset double clicking beside data"},
      {"ResetOnRightBottomLeftTopFrame", false, true, "Graph zoom reset dragging bottom/right top/left"},
      {"StartZoom", QVariant::fromValue(TShiftState(ssLeft)), QVariant::fromValue(TShiftState(ssLeft | ssCtrl)), "Graph zoom start keys"},
      {"StartPanning", QVariant::fromValue(TShiftState(ssLeft | ssShift)), QVariant::fromValue(TShiftState(ssRight)), "Graph panning start keys"},
      {"PanningCursor", -21, -22, nullptr},
      {"HScrollbarVisible", true, false, "Graph zoomed show horizontal scrollbar"},
      {"VScrollbarVisible", true, false, "Graph zoomed show vertical scrollbar"},
      {"ScrollSmallIncrement", QVariant::fromValue(TQyScrollIncrement::MinorTick), QVariant::fromValue(TQyScrollIncrement::Pixel), "Graph scrollbars small increment"},
      {"ScrollLargeIncrement", QVariant::fromValue(TQyScrollIncrement::Page), QVariant::fromValue(TQyScrollIncrement::MajorTick), "Graph scrollbars large increment"},
      {"WheelZoom", true, false, "Graph zoom with the mouse wheel"},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.name);
    EXPECT_EQ(z->property(r.name), r.def);
    rec.Pushes.clear();
    ASSERT_TRUE(z->setProperty(r.name, r.other));
    EXPECT_EQ(z->property(r.name), r.other);
    if (r.caption) {
      ASSERT_EQ(rec.Pushes.size(), 1u);
      EXPECT_EQ(rec.Pushes[0].caption, QString(r.caption));
      EXPECT_EQ(rec.Pushes[0].valueBefore, r.def);
    } else {
      EXPECT_TRUE(rec.Pushes.empty());
    }
  }
  const TShiftState panKeys = z->GetStartPanning();
  const QString same = "Zooming and panning not allowed to start with same parameters";
  EXPECT_EQ(QyMessageOf<EExternal>([&] { z->SetStartZoom(panKeys); }), same);
  EXPECT_EQ(z->GetStartZoom(), TShiftState(ssLeft | ssCtrl));
  EXPECT_EQ(QyMessageOf<EExternal>([&] { z->SetStartPanning(z->GetStartZoom()); }), same);
  EXPECT_EQ(z->GetStartPanning(), panKeys);
}

// Buttons and keys become the framework's set; cursor numbers the shapes their names say.
TEST(ZoomInput, ShiftStateAndCursorTable) {
  EXPECT_EQ(QyShiftState(Qt::LeftButton, Qt::ShiftModifier), TShiftState(ssShift | ssLeft));
  EXPECT_EQ(ShiftStateToInt(QyShiftState(Qt::RightButton | Qt::MiddleButton, Qt::AltModifier | Qt::ControlModifier, true)),
            2 + 4 + 16 + 32 + 64);
  const struct { int number; Qt::CursorShape shape; } rows[] = {
      {0, Qt::ArrowCursor},       {-1, Qt::BlankCursor},     {-3, Qt::CrossCursor},         {-4, Qt::IBeamCursor},
      {-7, Qt::SizeVerCursor},    {-9, Qt::SizeHorCursor},   {-14, Qt::SplitHCursor},       {-15, Qt::SplitVCursor},
      {-18, Qt::ForbiddenCursor}, {-21, Qt::PointingHandCursor}, {-22, Qt::SizeAllCursor}, {-99, Qt::ArrowCursor}};
  for (const auto& r : rows) EXPECT_EQ(QyCursorShape(r.number), r.shape) << r.number;
}

// A frame zooms to what it encloses once it is wider and higher than 4 pixels; a click beside the
// data goes back one stage (nothing at stage 0 of a stack).
TEST(Zoom, FrameZoomsOnlyAboveFourPixelsAndClickBesideGoesBack) {
  ZoomGraph t;
  const QPoint a = t.At(20, 60);
  const struct { int dx, dy; bool zooms; } rows[] = {{4, 40, false}, {40, 4, false}, {3, 3, false}, {5, 5, true}, {40, 40, true}};
  for (const auto& r : rows) {
    SCOPED_TRACE(testing::Message() << r.dx << "x" << r.dy);
    t.graph->ZoomReset();
    t.Settle();
    const double x1 = t.X()->WorldToNumber(float(a.x() + r.dx)), y1 = t.Y()->WorldToNumber(float(a.y() + r.dy));
    t.Drag(a, a + QPoint(r.dx, r.dy));
    EXPECT_EQ(t.graph->GetCurrentZoomStage(), r.zooms ? 1 : 0);
    if (r.zooms) {
      t.ExpectEnds(t.X(), 20, x1, 0.6);
      t.ExpectEnds(t.Y(), y1, 60, 0.6);
    } else {
      t.ExpectEnds(t.X(), 0, 100, 1e-9);
    }
  }
  t.Click(t.Beside());
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 0);
  t.ExpectEnds(t.X(), 0, 100, 1e-9);
  t.Click(t.Beside()); // at stage 0 of a stack nothing happens
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 0);
  t.ExpectEnds(t.X(), 0, 100, 1e-9);
}

// The frame is an overlay: dragging it paints the graph once (its picture), never per move, and
// the frame shows; Escape drops it and the release zooms nothing.
TEST(Zoom, FrameIsAnOverlayAndEscapeCancels) {
  ZoomGraph t;
  int paints = 0;
  struct Counter : QObject {
    int* n;
    explicit Counter(int* c) : n(c) {}
    bool eventFilter(QObject*, QEvent* e) override {
      if (e->type() == QEvent::Paint) ++*n;
      return false;
    }
  } counter(&paints);
  const QPoint a = t.At(20, 80), b = t.At(60, 30);
  QTest::mousePress(t.graph, Qt::LeftButton, {}, a);
  QCoreApplication::processEvents();
  t.graph->installEventFilter(&counter);
  for (int k = 1; k <= 10; ++k) {
    QTest::mouseMove(t.graph, a + (b - a) * k / 10);
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(paints, 0);
  const QImage shown = t.graph->grab().toImage();
  int dots = 0;
  for (int y = b.y() + 2; y < a.y() - 2; ++y) dots += shown.pixelColor(b.x(), y) == Qt::black;
  EXPECT_GT(dots, (a.y() - b.y()) / 5); // the dotted right edge of the frame
  QTest::keyClick(t.graph, Qt::Key_Escape);
  QTest::mouseRelease(t.graph, Qt::LeftButton, {}, b);
  t.graph->removeEventFilter(&counter);
  t.Settle();
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 0);
  t.ExpectEnds(t.X(), 0, 100, 1e-9);
}

// Panning needs a zoom; the value under the pointer follows it on straight and twisted axes; a
// way exactly along one axis moves nothing; an axis whose data would leave stops, the other goes
// on; the end of the pan is one stage, and the click that ends it beside the data keeps it.
TEST(Zoom, PanFollowsThePointer) {
  for (bool twisted : {false, true}) {
    SCOPED_TRACE(twisted ? "twisted" : "straight");
    ZoomGraph t;
    t.X()->SetTwisted(twisted);
    t.Y()->SetTwisted(twisted);
    t.Settle();
    t.Drag(t.At(40, 40), t.At(40, 40) + QPoint(40, 40), Qt::ShiftModifier); // no zoom yet: no pan

    EXPECT_EQ(t.graph->GetCurrentZoomStage(), 0);
    t.graph->ZoomTo(t.At(40, 60), t.At(60, 40));
    t.Settle();
    ASSERT_EQ(t.graph->GetCurrentZoomStage(), 1);
    t.ExpectEnds(t.X(), 40, 60, 0.3);
    const QPoint from = t.At(45, 45), along = from + QPoint(30, 0);
    QTest::mousePress(t.graph, Qt::LeftButton, Qt::ShiftModifier, from);
    QTest::mouseMove(t.graph, along);
    t.Settle();
    t.ExpectEnds(t.X(), 40, 60, 0.3); // exactly along X: nothing moves
    const QPoint to = from + QPoint(twisted ? -20 : 20, twisted ? -20 : 20);
    QTest::mouseMove(t.graph, to);
    t.Settle();
    EXPECT_NEAR(t.X()->WorldToNumber(float(to.x())), 45, 0.3);
    EXPECT_NEAR(t.Y()->WorldToNumber(float(to.y())), 45, 0.3);
    QTest::mouseRelease(t.graph, Qt::LeftButton, Qt::ShiftModifier, to);
    t.Settle();
    EXPECT_EQ(t.graph->GetCurrentZoomStage(), 2);
    // A long way down: Y would leave its data and stays; X moves on.
    const double y0 = t.Y()->GetStart(), x0 = t.X()->GetStart();
    const QPoint start = t.At(45, 45);
    QTest::mousePress(t.graph, Qt::LeftButton, Qt::ShiftModifier, start);
    QTest::mouseMove(t.graph, start + QPoint(200, 2000));
    t.Settle();
    EXPECT_EQ(t.Y()->GetStart(), y0);
    EXPECT_GT(std::abs(t.X()->GetStart() - x0), 5);
    QTest::mouseRelease(t.graph, Qt::LeftButton, Qt::ShiftModifier, start + QPoint(200, 2000));
    t.Settle();
    EXPECT_EQ(t.graph->GetCurrentZoomStage(), 3);
  }
}

// The release that ends a pan beside the data is a click there: it must not take the pan back.
TEST(Zoom, PanEndingBesideTheDataStays) {
  ZoomGraph t;
  t.graph->ZoomTo(t.At(40, 60), t.At(60, 40));
  t.Settle();
  const QPoint from = t.At(50, 50);
  QTest::mousePress(t.graph, Qt::LeftButton, Qt::ShiftModifier, from);
  QTest::mouseMove(t.graph, from + QPoint(-60, 30));
  QTest::mouseMove(t.graph, QPoint(2, 3));
  QTest::mouseRelease(t.graph, Qt::LeftButton, Qt::ShiftModifier, QPoint(2, 3));
  t.Settle();
  EXPECT_GT(t.X()->GetStart(), 45);
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 2);
}

// With OptimizeSeries the frame shrinks to the data inside it; over no data nothing changes.
TEST(Zoom, OptimizeSeriesShrinksToTheDataOrLeavesAll) {
  ZoomGraph t;
  t.graph->GetZoom()->SetOptimizeSeries(true);
  t.graph->ZoomTo(t.At(20.5, 80), t.At(30.5, 2)); // y = x: points 21 .. 30
  t.Settle();
  t.ExpectEnds(t.X(), 21, 30, 1e-9);
  t.ExpectEnds(t.Y(), 21, 30, 1e-9);
  t.graph->ZoomTo(t.At(22, 30), t.At(24, 28)); // above the line: no point
  t.Settle();
  t.ExpectEnds(t.X(), 21, 30, 1e-9);
  t.ExpectEnds(t.Y(), 21, 30, 1e-9);
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 1);
}

// A stack refuses redo at its newest stage and back at stage 0; a ring wraps both ways.
TEST(Zoom, StackAndRingAnswers) {
  for (auto type : {TQyZoomBufferType::AsStack, TQyZoomBufferType::AsCircularBuffer}) {
    const bool ring = type == TQyZoomBufferType::AsCircularBuffer;
    SCOPED_TRACE(ring ? "ring" : "stack");
    ZoomGraph t;
    t.graph->GetZoom()->SetBufferType(type);
    EXPECT_FALSE(t.graph->GetCanZoomBack());
    t.graph->ZoomTo(t.At(10, 90), t.At(90, 10));
    t.Settle();
    t.graph->ZoomTo(t.At(20, 80), t.At(80, 20));
    t.Settle();
    EXPECT_EQ(t.graph->GetZoomBufferSize(), 3);
    EXPECT_EQ(t.graph->GetCanRedoZoom(), ring);
    t.graph->RedoZoom();
    EXPECT_EQ(t.graph->GetCurrentZoomStage(), ring ? 0 : 2);
    t.graph->ZoomToStage(0);
    EXPECT_EQ(t.graph->GetCanZoomBack(), ring);
    t.graph->ZoomBack();
    EXPECT_EQ(t.graph->GetCurrentZoomStage(), ring ? 2 : 0);
  }
}

// A press with the same keys but another button, or an extra key, starts nothing; the reset
// setting resets on a click without a drag; a double click beside the data resets.
TEST(Zoom, ExactKeysResetFrameAndDoubleClick) {
  ZoomGraph t;
  t.Drag(t.At(20, 80), t.At(60, 30), Qt::ControlModifier);
  t.Drag(t.At(20, 80), t.At(60, 30), {}, Qt::RightButton);
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 0);
  t.Drag(t.At(20, 80), t.At(60, 30));
  t.Drag(t.At(30, 60), t.At(50, 40));
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 2);
  QTest::mouseDClick(t.graph, Qt::LeftButton, {}, t.Beside());
  t.Settle();
  EXPECT_FALSE(t.graph->GetCanZoomBack());
  t.ExpectEnds(t.X(), 0, 100, 1e-9);
  t.graph->GetZoom()->SetResetOnRightBottomLeftTopFrame(true);
  t.Drag(t.At(20, 80), t.At(60, 30));
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 1);
  t.Click(t.At(50, 50)); // inside the data, no drag: reset as the setting says
  EXPECT_FALSE(t.graph->GetCanZoomBack());
  t.ExpectEnds(t.X(), 0, 100, 1e-9);
}

namespace {
void Wheel(QWidget* w, QPoint p) {
  QWheelEvent e(p, w->mapToGlobal(p), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(w, &e);
}
} // namespace

// The wheel zooms about the pointer; a gesture of several notches is one stage; off when the
// setting says so.
TEST(Zoom, WheelZoomsAboutThePointerOneStagePerGesture) {
  ZoomGraph t;
  const QPoint p = t.At(25, 75);
  for (int k = 0; k < 3; ++k) Wheel(t.graph, p); // quicker than a picture: the mapping holds
  QTest::qWait(500);
  t.Settle();
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 1);
  const double k = 0.8 * 0.8 * 0.8;
  t.ExpectEnds(t.X(), 25 - 25 * k, 25 + 75 * k, 0.4);
  t.ExpectEnds(t.Y(), 75 - 75 * k, 75 + 25 * k, 0.4);
  t.graph->ZoomBack();
  t.ExpectEnds(t.X(), 0, 100, 1e-9);
  t.graph->GetZoom()->SetWheelZoom(false);
  Wheel(t.graph, p);
  QTest::qWait(500);
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 0);
}

// Coupled graphs zoom together: stages stay aligned and back goes back in both.
TEST(Zoom, CoupledGraphsStayAligned) {
  ZoomGraph t;
  auto* child = new TQyGraph2D(t.form.get());
  child->setObjectName("Graph2");
  child->setGeometry(0, 400, 600, 300);
  child->SetPrimaryXAxis(t.X());
  child->TestPrimaryAxis();
  child->show();
  auto* s = new TQyLineSeries(t.form.get());
  s->SetXData(t.Vector({0, 50, 100}));
  s->SetYData(t.Vector({1, 2, 3}));
  s->SetXAxis(t.X());
  s->SetYAxis(child->GetPrimaryYAxis());
  t.form->resize(600, 700);
  t.Settle();
  child->repaint();
  t.graph->ZoomTo(t.At(20, 80), t.At(60, 30));
  t.Settle();
  child->repaint();
  EXPECT_EQ(child->GetCurrentZoomStage(), 1);
  EXPECT_EQ(child->GetZoomBufferSize(), 2);
  EXPECT_DOUBLE_EQ(child->DataArea().left(), t.graph->DataArea().left());
  EXPECT_DOUBLE_EQ(child->DataArea().right(), t.graph->DataArea().right());
  child->ZoomBack();
  t.Settle();
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), 0);
  t.ExpectEnds(t.X(), 0, 100, 1e-9);
  EXPECT_EQ(child->GetCurrentZoomStage(), 0);
}

namespace {
// The graph zoomed to the window 40 .. 60 of 0 .. 100 (or one decade, 10 .. 100, of 1 .. 1000).
struct ScrollGraph : ZoomGraph {
  explicit ScrollGraph(bool logX = false) : ZoomGraph(logX) {
    for (TQyAxis* a : {X(), Y()}) a->ZoomIn(logX && a == X() ? 10 : 40, logX && a == X() ? 100 : 60);
    Settle();
  }
  TQyGraphScrollBars* Bars() const { return graph->findChild<TQyGraphScrollBars*>(); }
  void Scroll(bool horizontal, TQyScrollCode code, int pos = 0) {
    Bars()->Scroll(horizontal ? Bars()->Horizontal() : Bars()->Vertical(), code, pos);
    Settle();
  }
};
} // namespace

// The bars show while an axis hides data, each only if its setting allows; the thumb is the
// visible part of the unzoomed range.
TEST(ZoomScroll, BarsShowWhileDataIsHidden) {
  ScrollGraph t;
  QScrollBar* h = t.Bars()->Horizontal();
  QScrollBar* v = t.Bars()->Vertical();
  EXPECT_TRUE(h->isVisible());
  EXPECT_TRUE(v->isVisible());
  EXPECT_EQ(h->pageStep(), 2000);
  EXPECT_EQ(h->maximum(), 8000);
  EXPECT_EQ(h->value(), 4000);
  EXPECT_EQ(v->value(), 4000); // 10000 - position of the stop: the top shows the high values
  EXPECT_LE(h->geometry().bottom(), t.graph->height());
  EXPECT_GE(h->geometry().top(), t.graph->DataArea().bottom());
  t.graph->GetZoom()->SetHScrollbarVisible(false);
  t.graph->Modified();
  t.Settle();
  EXPECT_FALSE(h->isVisible());
  EXPECT_TRUE(v->isVisible());
  t.graph->ZoomReset();
  t.Settle();
  EXPECT_FALSE(v->isVisible());
}

// Each code on straight, twisted and logarithmic axes: pages move by the window and make a stage;
// a line moves without one; codes that move nothing add no stage; at the end of the data the
// window keeps its width.
TEST(ZoomScroll, CodesOnStraightTwistedAndLogAxes) {
  using C = TQyScrollCode;
  const struct { const char* name; bool horizontal, twisted, log; C code; double start, stop; int stages; } rows[] = {
      {"page right", true, false, false, C::PageDown, 60, 80, 1},
      {"page left", true, false, false, C::PageUp, 20, 40, 1},
      {"page right, twisted", true, true, false, C::PageDown, 20, 40, 1},
      {"page down", false, false, false, C::PageDown, 20, 40, 1},
      {"page down, twisted", false, true, false, C::PageDown, 60, 80, 1},
      {"line right", true, false, false, C::LineDown, 60, 80, 0},
      {"end of scroll", true, false, false, C::EndScroll, 40, 60, 0},
      {"position report", true, false, false, C::Position, 40, 60, 0},
      {"top", true, false, false, C::Top, 40, 60, 0},
      {"page right, log", true, false, true, C::PageDown, 100, 1000, 1},
  };
  for (const auto& r : rows) {
    SCOPED_TRACE(r.name);
    ScrollGraph t(r.log);
    TQyAxis* a = r.horizontal ? t.X() : t.Y();
    a->SetTwisted(r.twisted);
    t.graph->GetZoom()->SetScrollSmallIncrement(TQyScrollIncrement::Page);
    t.Settle();
    const int stage = t.graph->GetCurrentZoomStage();
    t.Scroll(r.horizontal, r.code);
    const double tol = r.log ? 1e-6 * r.stop : 1e-9;
    EXPECT_NEAR(a->GetStart(), r.start, tol);
    EXPECT_NEAR(a->GetStop(), r.stop, tol);
    EXPECT_EQ(t.graph->GetCurrentZoomStage() - stage, r.stages);
    EXPECT_EQ(t.graph->GetZoomBufferSize() - 1, t.graph->GetCurrentZoomStage()); // every axis aligned
    EXPECT_EQ(t.X()->GetZoomBufferSize(), t.Y()->GetZoomBufferSize());
    // Two more pages run into the end of the data: the window keeps its width.
    t.Scroll(r.horizontal, r.code == C::PageUp ? C::PageUp : C::PageDown);
    t.Scroll(r.horizontal, r.code == C::PageUp ? C::PageUp : C::PageDown);
    const double width = r.log ? std::log10(a->GetStop() / a->GetStart()) : a->GetStop() - a->GetStart();
    EXPECT_NEAR(width, r.log ? 1 : 20, 1e-6);
  }
}

// Dragging the thumb is a track: the axes follow its position (only the ticks are laid out), and
// the release ends it with a whole layout, adding no stage.
TEST(ZoomScroll, TrackFollowsTheThumb) {
  ScrollGraph t;
  QScrollBar* h = t.Bars()->Horizontal();
  const QRectF area = t.graph->DataArea();
  const int stage = t.graph->GetCurrentZoomStage();
  h->setSliderDown(true);
  h->setSliderPosition(2500);
  EXPECT_TRUE(t.graph->IsPanning());
  t.Settle();
  EXPECT_NEAR(t.X()->GetStart(), 25, 1e-9);
  EXPECT_NEAR(t.X()->GetStop(), 45, 1e-9);
  EXPECT_EQ(t.graph->DataArea(), area);
  h->setSliderDown(false);
  EXPECT_FALSE(t.graph->IsPanning());
  t.Settle();
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), stage);
  EXPECT_NEAR(t.X()->GetStart(), 25, 1e-9);
}

// A pixel step moves by one pixel without a stage, from the bar's arrow too; with ends rounded
// to ticks it still moves, both ways, to the next tick.
TEST(ZoomScroll, PixelStepsMoveWithoutAStage) {
  ScrollGraph t;
  t.graph->GetZoom()->SetScrollSmallIncrement(TQyScrollIncrement::Pixel);
  QScrollBar* h = t.Bars()->Horizontal();
  const int stage = t.graph->GetCurrentZoomStage();
  const double start = t.X()->GetStart(), pixel = t.X()->Scale();
  QTest::mouseClick(h, Qt::LeftButton, {}, QPoint(h->width() - 3, h->height() / 2));
  t.Settle();
  EXPECT_NEAR(t.X()->GetStart(), start + pixel, 1e-9);
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), stage);
  t.X()->SetEndRounding(TQyAxisEndRounding::RndToMinor);
  t.Settle();
  const double rounded = t.X()->GetStart(), width = t.X()->GetStop() - rounded, minor = t.X()->MinorIncrement();
  t.Scroll(true, TQyScrollCode::LineUp);
  EXPECT_NEAR(t.X()->GetStart(), rounded - minor, 1e-9);
  EXPECT_NEAR(t.X()->GetStop() - t.X()->GetStart(), width, 1e-9);
  t.Scroll(true, TQyScrollCode::LineDown);
  EXPECT_NEAR(t.X()->GetStart(), rounded, 1e-9);
}
