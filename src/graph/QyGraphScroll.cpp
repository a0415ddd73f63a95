#include "QyGraphScroll.h"
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

namespace {
// Scroll arithmetic runs in decades on a logarithmic axis.
struct TScale {
  bool Log;
  double In(double v) const { return Log ? std::log10(v) : v; }
  double Out(double v) const { return Log ? std::pow(10.0, v) : v; }
};

bool RoundsEnds(TQyAxisEndRounding r) {
  return r == TQyAxisEndRounding::RndToMajorZoomToMinor || r == TQyAxisEndRounding::RndToMajor ||
         r == TQyAxisEndRounding::RndToMinor;
}
} // namespace

TQyGraphScrollBars::TQyGraphScrollBars(TQyGraph2D* graph) : QObject(graph), FGraph(graph) {
  FBars[0] = new QScrollBar(Qt::Horizontal, graph);
  FBars[1] = new QScrollBar(Qt::Vertical, graph);
  for (QScrollBar* bar : FBars) {
    bar->setRange(0, Range);
    bar->hide();
    Connect(bar);
  }
}

// Qt's slider actions stand for the framework's codes: single step = line, page step = page,
// a move = track. A move without the thumb held (the wheel over the bar) is a track that ends.
void TQyGraphScrollBars::Connect(QScrollBar* bar) {
  connect(bar, &QAbstractSlider::actionTriggered, this, [this, bar](int action) {
    switch (action) {
    case QAbstractSlider::SliderSingleStepSub: Scroll(bar, TQyScrollCode::LineUp, bar->sliderPosition()); break;
    case QAbstractSlider::SliderSingleStepAdd: Scroll(bar, TQyScrollCode::LineDown, bar->sliderPosition()); break;
    case QAbstractSlider::SliderPageStepSub: Scroll(bar, TQyScrollCode::PageUp, bar->sliderPosition()); break;
    case QAbstractSlider::SliderPageStepAdd: Scroll(bar, TQyScrollCode::PageDown, bar->sliderPosition()); break;
    case QAbstractSlider::SliderToMinimum: Scroll(bar, TQyScrollCode::Top, 0); break;
    case QAbstractSlider::SliderToMaximum: Scroll(bar, TQyScrollCode::Bottom, bar->maximum()); break;
    case QAbstractSlider::SliderMove:
      Scroll(bar, TQyScrollCode::Track, bar->sliderPosition());
      if (!bar->isSliderDown()) Scroll(bar, TQyScrollCode::EndScroll, bar->sliderPosition());
      break;
    default: break;
    }
  });
  connect(bar, &QAbstractSlider::sliderReleased, this,
          [this, bar] { Scroll(bar, TQyScrollCode::EndScroll, bar->sliderPosition()); });
}

void TQyGraphScrollBars::Scroll(QScrollBar* sender, TQyScrollCode code, int pos) {
  const bool wasTracking = FGraph->IsPanning();
  FGraph->SetPanning(code == TQyScrollCode::Track); // a track lays out the ticks only
  const bool horizontal = sender == FBars[0];
  TQyAxis* driving = horizontal ? FGraph->GetPrimaryXAxis() : FGraph->GetPrimaryYAxis();
  if (!driving) return;
  int dir = horizontal ? 1 : -1;
  if (driving->GetTwisted()) dir = -dir;
  const TScale sc{driving->LogActive()};
  const double range = sc.In(driving->GetScrollStop()) - sc.In(driving->GetScrollStart());
  double f = range > 0 ? Amount(driving, code, pos, dir) / range : 0;
  if (!std::isfinite(f)) f = 0;
  if (driving->GetTwisted()) f = -f;
  // Codes that move nothing (the end of a scroll, a position report) make no stage: else every
  // arrow click, which the bar follows with its end message, would add a stage on every axis.
  const bool makeStage = f != 0 && code != TQyScrollCode::LineUp && code != TQyScrollCode::LineDown &&
                         code != TQyScrollCode::Track;
  for (TQyAxis* a : FGraph->Axes()) {
    if (a->GetHorizontal() == horizontal) {
      if (f != 0) Shift(a, f, makeStage);
    } else if (makeStage) {
      a->ZoomIn(a->GetStart(), a->GetStop()); // the stages of all axes stay aligned
    }
  }
  FGraph->SeriesModified();
  if (makeStage) FGraph->FixChildZoomStack();
  if (wasTracking && code != TQyScrollCode::Track) FGraph->Modified(); // the drag is over: a whole layout
  FGraph->RepaintChildGraphs();
}

// The way a code moves the driving axis, in its units (decades on a log axis).
double TQyGraphScrollBars::Amount(TQyAxis* driving, TQyScrollCode code, int pos, int dir) const {
  const TScale sc{driving->LogActive()};
  auto step = [&](TQyScrollIncrement inc) {
    switch (inc) {
    case TQyScrollIncrement::Page: return sc.In(driving->GetStop()) - sc.In(driving->GetStart());
    case TQyScrollIncrement::MajorTick: return driving->MajorIncrement();
    case TQyScrollIncrement::MinorTick: return driving->MinorIncrement();
    case TQyScrollIncrement::Pixel: return driving->Scale();
    }
    return 0.0;
  };
  const TQyZoomSettings* zoom = FGraph->GetZoom();
  const double s0 = sc.In(driving->GetScrollStart()), s1 = sc.In(driving->GetScrollStop());
  switch (code) {
  case TQyScrollCode::LineUp: return -dir * step(zoom->GetScrollSmallIncrement());
  case TQyScrollCode::LineDown: return dir * step(zoom->GetScrollSmallIncrement());
  case TQyScrollCode::PageUp: return -dir * step(zoom->GetScrollLargeIncrement());
  case TQyScrollCode::PageDown: return dir * step(zoom->GetScrollLargeIncrement());
  case TQyScrollCode::Track:
    if (dir > 0) return s0 + (s1 - s0) * pos / Range - sc.In(driving->GetStart());
    return s0 + (s1 - s0) * (Range - pos) / Range - sc.In(driving->GetStop());
  default: return 0;
  }
}

// Moves an axis by `fraction` of its unzoomed range, keeping the width of its window. The window
// stays inside the unzoomed range, and beyond the data no further than it already reaches: a
// stage takes ends within the data only (ZoomIn), so the window keeps its width there too.
void TQyGraphScrollBars::Shift(TQyAxis* a, double fraction, bool makeStage) const {
  const TScale sc{a->LogActive()};
  const double s0 = sc.In(a->GetScrollStart()), s1 = sc.In(a->GetScrollStop());
  const double start = sc.In(a->GetStart()), width = sc.In(a->GetStop()) - start;
  double lo = s0, hi = s1;
  if (!sc.Log || a->DataMin() > 0) lo = std::max(lo, std::min(sc.In(a->DataMin()), start));
  if (!sc.Log || a->DataMax() > 0) hi = std::min(hi, std::max(sc.In(a->DataMax()), start + width));
  double s = fraction * (s1 - s0) * (a->GetTwisted() ? -1 : 1);
  double newStart = start + s;
  if (!FGraph->IsPanning() && RoundsEnds(a->GetEndRounding())) {
    s *= s <= 0 ? 1.0001 : 0.9999; // so that rounding does not fall back onto the old tick
    newStart = start + s;
    if (!sc.Log) {
      const bool major = a->GetEndRounding() == TQyAxisEndRounding::RndToMajor;
      const double up = a->RoundEnd(newStart, true, major);
      // A way back shorter than a tick rounds up onto the old start: round down then, so that a
      // step of a pixel or a line still moves.
      newStart = s < 0 && up >= start ? a->RoundEnd(newStart, false, major) : up;
    }
  }
  newStart = std::max(newStart, lo);
  double newStop = newStart + width;
  if (newStop > hi) newStop = hi, newStart = hi - width; // not rounded again: the width stays
  if (makeStage) a->ZoomIn(sc.Out(newStart), sc.Out(newStop));
  else a->SetStartStop(sc.Out(newStart), sc.Out(newStop));
}

void TQyGraphScrollBars::TakeMargins(TQyLayoutMargins& margins, QSizeF) {
  bool clipped[2] = {false, false};
  for (TQyAxis* a : FGraph->Axes())
    if (a->GetIsClipped()) clipped[a->GetHorizontal() ? 0 : 1] = true;
  FNeeded[0] = clipped[0] && FGraph->GetZoom()->GetHScrollbarVisible();
  FNeeded[1] = clipped[1] && FGraph->GetZoom()->GetVScrollbarVisible();
  if (FNeeded[0]) margins.Bottom += FBars[0]->sizeHint().height();
  if (FNeeded[1]) margins.Left += FBars[1]->sizeHint().width();
}

// On screen only: a picture for another device has no bars (the room stays, and is cut off).
void TQyGraphScrollBars::PlaceInLayout(const QRectF& area) {
  if (FGraph->RenderingToImage()) return;
  const int h = FBars[0]->sizeHint().height(), w = FBars[1]->sizeHint().width();
  if (FNeeded[0] && FGraph->GetPrimaryXAxis())
    Place(0, FGraph->GetPrimaryXAxis(),
          QRect(RoundI(area.x()), FGraph->LayoutSize().height() - h, RoundI(area.width()), h));
  if (FNeeded[1] && FGraph->GetPrimaryYAxis())
    Place(1, FGraph->GetPrimaryYAxis(), QRect(0, RoundI(area.y()), w, RoundI(area.height())));
  for (int i : {0, 1}) FBars[i]->setVisible(FNeeded[i]);
}

// The thumb is the visible part of the unzoomed range; a bar's value is where the thumb starts
// (the top of a vertical bar shows the high values of an upright axis).
void TQyGraphScrollBars::Place(int which, TQyAxis* axis, const QRect& bounds) {
  QScrollBar* bar = FBars[which];
  const QSignalBlocker block(bar);
  const int page = axis->ScrollRangeSize(axis->GetStart(), axis->GetStop());
  const bool fromStart = (which == 0) != axis->GetTwisted();
  const int pos = fromStart ? axis->ScrollPosition(axis->GetStart()) : Range - axis->ScrollPosition(axis->GetStop());
  bar->setRange(0, Range - page);
  bar->setPageStep(std::max(page, 1));
  bar->setSingleStep(std::max(page / 10, 1));
  bar->setValue(std::clamp(pos, 0, Range - page));
  bar->setGeometry(bounds);
}
