// The scroll bars of a zoomed graph: when they show, and how each code moves the axes.
#include "QyTestGraph.h"
#include <QScrollBar>
#include <QTest>
#include <QyGraph2D.h>
#include <QyGraphScroll.h>
#include <gtest/gtest.h>

namespace {
// A graph of y = x on `lo` .. `hi` (X logarithmic on request), ends at the data, zoomed to the
// window 40 .. 60 of 0 .. 100 (or one decade, 10 .. 100, of 1 .. 1000).
struct ScrollGraph : QyTestGraph {
  bool log;
  explicit ScrollGraph(bool logX = false) : log(logX) {
    std::vector<double> v;
    for (int i = 0; i <= 100; ++i) v.push_back(log ? std::pow(10.0, i * 0.03) : i);
    AddSeries(v, v);
    if (log) X()->SetScaling(TQyAxisScaling::Log);
    for (TQyAxis* a : {X(), Y()}) a->SetEndRounding(TQyAxisEndRounding::RndNothing);
    form->resize(graph->size());
    form->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(form.get()));
    Settle();
    for (TQyAxis* a : {X(), Y()})
      a->ZoomIn(log && a == X() ? 10 : 40, log && a == X() ? 100 : 60);
    Settle();
  }
  void Settle() {
    graph->repaint();
    QCoreApplication::processEvents();
    graph->repaint();
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

// With ends rounded to ticks, a step of one pixel still moves, both ways, to the next tick.
TEST(ZoomScroll, PixelStepMovesWithRoundedEnds) {
  ScrollGraph t;
  t.X()->SetEndRounding(TQyAxisEndRounding::RndToMinor);
  t.graph->GetZoom()->SetScrollSmallIncrement(TQyScrollIncrement::Pixel);
  t.Settle();
  const double start = t.X()->GetStart(), width = t.X()->GetStop() - start, minor = t.X()->MinorIncrement();
  t.Scroll(true, TQyScrollCode::LineUp);
  EXPECT_NEAR(t.X()->GetStart(), start - minor, 1e-9);
  EXPECT_NEAR(t.X()->GetStop() - t.X()->GetStart(), width, 1e-9);
  t.Scroll(true, TQyScrollCode::LineDown);
  EXPECT_NEAR(t.X()->GetStart(), start, 1e-9);
}

// A click on the bar's arrow is a line step: the axis moves and no stage is added by the
// messages that follow it.
TEST(ZoomScroll, ArrowClickMovesWithoutAStage) {
  ScrollGraph t;
  t.graph->GetZoom()->SetScrollSmallIncrement(TQyScrollIncrement::Pixel);
  QScrollBar* h = t.Bars()->Horizontal();
  const int stage = t.graph->GetCurrentZoomStage();
  const double start = t.X()->GetStart(), pixel = t.X()->Scale();
  QTest::mouseClick(h, Qt::LeftButton, {}, QPoint(h->width() - 3, h->height() / 2));
  t.Settle();
  EXPECT_NEAR(t.X()->GetStart(), start + pixel, 1e-9);
  EXPECT_EQ(t.graph->GetCurrentZoomStage(), stage);
}
