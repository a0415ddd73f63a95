#include "QyGraphMouse.h"
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QyInput.h"
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

namespace {
// The frame of a gesture, corners in order.
QRect OrderedRect(QPoint a, QPoint b) {
  return QRect(QPoint(std::min(a.x(), b.x()), std::min(a.y(), b.y())), QPoint(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
}
// A gesture ends within 4 pixels of its start in both directions: a click, not a drag.
bool Small(QPoint a, QPoint b) { return std::abs(a.x() - b.x()) < 4 && std::abs(a.y() - b.y()) < 4; }
// One notch of the wheel (120 units) shows 80 % of the range.
constexpr double WheelStep = 0.8;
constexpr int WheelGestureMs = 350;
void Fire(const std::function<void(QObject*)>& event, QObject* sender) {
  if (event) event(sender);
}
} // namespace

// ---- the frame ---------------------------------------------------------------------------------

TQyZoomFrame::TQyZoomFrame(QWidget* graph) : QWidget(graph) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_OpaquePaintEvent);
  hide();
}

void TQyZoomFrame::Begin() {
  FPicture = parentWidget()->grab(); // the graph and its children as they stand, once per frame
  setGeometry(parentWidget()->rect());
  FFrame = QRect();
  raise();
  show();
}

void TQyZoomFrame::SetFrame(const QRect& frame) {
  const QRect old = FFrame;
  FFrame = frame;
  update(old.united(frame).adjusted(-2, -2, 2, 2));
}

void TQyZoomFrame::End() {
  hide();
  FPicture = QPixmap();
}

// A dotted frame over a white one reads on any background, as a focus rectangle does.
void TQyZoomFrame::paintEvent(QPaintEvent* e) {
  QPainter g(this);
  g.drawPixmap(e->rect(), FPicture, QRectF(QPointF(e->rect().topLeft()) * FPicture.devicePixelRatio(),
                                           QSizeF(e->rect().size()) * FPicture.devicePixelRatio()));
  if (FFrame.isNull()) return;
  g.setPen(QPen(Qt::white, 1));
  g.drawRect(FFrame);
  g.setPen(QPen(Qt::black, 1, Qt::DotLine));
  g.drawRect(FFrame);
}

// ---- the pointer -------------------------------------------------------------------------------

TQyGraphMouse::TQyGraphMouse(TQyGraph2D* graph) : QObject(graph), FGraph(graph), FFrame(new TQyZoomFrame(graph)) {
  graph->installEventFilter(this);
  graph->setFocusPolicy(Qt::ClickFocus); // Escape reaches a graph being dragged on
  FWheelEnd.setSingleShot(true);
  FWheelEnd.setInterval(WheelGestureMs);
  connect(&FWheelEnd, &QTimer::timeout, this, [this] { EndWheelGesture(); });
}

bool TQyGraphMouse::eventFilter(QObject* watched, QEvent* e) {
  if (watched != FGraph) return false;
  switch (e->type()) {
  case QEvent::MouseButtonPress: {
    auto* m = static_cast<QMouseEvent*>(e);
    FClicked = m->button() == Qt::LeftButton;
    MouseDown(QyShiftState(m->buttons(), m->modifiers()), m->position().toPoint());
    break;
  }
  case QEvent::MouseButtonDblClick: { // the second press of a double click carries ssDouble
    auto* m = static_cast<QMouseEvent*>(e);
    FClicked = false;
    DblClick(m->position().toPoint());
    MouseDown(QyShiftState(m->buttons(), m->modifiers(), true), m->position().toPoint());
    break;
  }
  case QEvent::MouseMove: MouseMove(static_cast<QMouseEvent*>(e)->position().toPoint()); break;
  case QEvent::MouseButtonRelease: {
    auto* m = static_cast<QMouseEvent*>(e);
    MouseUp();
    if (FClicked && m->button() == Qt::LeftButton && FGraph->rect().contains(m->position().toPoint()))
      Click(m->position().toPoint());
    FClicked = false;
    break;
  }
  case QEvent::Wheel: Wheel(static_cast<QWheelEvent*>(e)); break;
  case QEvent::KeyPress:
    if (FZooming && static_cast<QKeyEvent*>(e)->key() == Qt::Key_Escape) {
      CancelFrame();
      return true;
    }
    break;
  default: break;
  }
  return false; // the graph's own handlers and the application's events follow
}

// Only a press with exactly the configured buttons and keys starts a zoom frame or a pan.
void TQyGraphMouse::MouseDown(TShiftState shift, QPoint p) {
  TQyZoomSettings* zoom = FGraph->GetZoom();
  if (!zoom->GetAuto()) return;
  EndWheelGesture();
  FDown = FCurrent = p;
  if (shift == zoom->GetStartZoom()) {
    FZooming = true;
    FFrame->Begin();
    FFrame->SetFrame(OrderedRect(FDown, FCurrent));
    Fire(FGraph->OnBeginZoom, FGraph);
  }
  if (FGraph->GetCanZoomBack() && shift == zoom->GetStartPanning()) BeginPanning();
}

void TQyGraphMouse::BeginPanning() {
  FGraph->SetPanning(true);
  FSavedCursor = FGraph->cursor();
  FGraph->setCursor(QyCursorShape(FGraph->GetZoom()->GetPanningCursor()));
  const QList<TQyAxis*> axes = FGraph->Axes();
  FPanStart.assign(axes.size(), 0);
  FPanStop.assign(axes.size(), 0);
  for (int i = 0; i < axes.size(); ++i) {
    const bool log = axes[i]->LogActive();
    FPanStart[i] = log ? std::log10(axes[i]->GetStart()) : axes[i]->GetStart();
    FPanStop[i] = log ? std::log10(axes[i]->GetStop()) : axes[i]->GetStop();
  }
  Fire(FGraph->OnBeginPanning, FGraph);
}

void TQyGraphMouse::MouseMove(QPoint p) {
  if (FZooming) {
    FCurrent = p;
    FFrame->SetFrame(OrderedRect(FDown, FCurrent));
  }
  if (FGraph->IsPanning()) {
    // The point is kept while panning too, so that the click ending a pan beside the data sees a
    // drag and does not take the pan back.
    FCurrent = p;
    PanTo(p);
  }
}

// Every axis moves by the pointer's way in the primary axes' units; an axis whose data would
// leave its unzoomed range stays, the others move on. A movement exactly along one axis moves
// nothing.
void TQyGraphMouse::PanTo(QPoint p) {
  TQyAxis* px = FGraph->GetPrimaryXAxis();
  TQyAxis* py = FGraph->GetPrimaryYAxis();
  const int dX = FDown.x() - p.x(), dY = p.y() - FDown.y();
  if (dX == 0 || dY == 0 || !px || !py) return;
  const double shiftX = dX * px->Scale(), shiftY = dY * py->Scale();
  const QList<TQyAxis*> axes = FGraph->Axes();
  for (int i = 0; i < axes.size() && i < int(FPanStart.size()); ++i) {
    TQyAxis* a = axes[i];
    // The data follow the pointer when each axis turns the way by its own direction once. (Turning
    // it also by the primary axis' direction would pan a twisted axis against the pointer.)
    const double delta = (a->GetHorizontal() ? shiftX : shiftY) * (a->GetTwisted() ? -1 : 1);
    double start = FPanStart[i] + delta, stop = FPanStop[i] + delta;
    if (a->LogActive()) start = std::pow(10.0, start), stop = std::pow(10.0, stop);
    if (a->GetScrollStart() <= start && a->GetScrollStop() >= stop) a->SetStartStop(start, stop);
  }
  FGraph->SeriesModified();
  FGraph->RepaintChildGraphs();
}

void TQyGraphMouse::MouseUp() {
  if (FZooming) EndZoomFrame();
  if (FGraph->IsPanning()) EndPanning();
}

void TQyGraphMouse::EndZoomFrame() {
  TQyZoomSettings* zoom = FGraph->GetZoom();
  FZooming = false;
  FFrame->End();
  const bool upLeft = FDown.x() >= FCurrent.x() && FDown.y() >= FCurrent.y();
  if (zoom->GetResetOnRightBottomLeftTopFrame() && upLeft) {
    FGraph->ZoomReset(); // a click without a drag resets too, as the setting says
  } else if (std::abs(FDown.x() - FCurrent.x()) > 4 && std::abs(FDown.y() - FCurrent.y()) > 4) {
    if (zoom->GetBackOnRightBottomLeftTopFrame() && upLeft) {
      FGraph->ZoomBack();
    } else {
      FGraph->ZoomTo(FDown, FCurrent);
      Fire(FGraph->OnEndZoom, FGraph);
    }
  } else {
    FGraph->update();
  }
}

// The end of a pan is one stage of every axis.
void TQyGraphMouse::EndPanning() {
  FGraph->SetPanning(false);
  FGraph->setCursor(FSavedCursor);
  for (TQyAxis* a : FGraph->Axes()) a->ZoomIn(a->GetStart(), a->GetStop());
  FGraph->FixChildZoomStack();
  Fire(FGraph->OnEndPanning, FGraph);
}

void TQyGraphMouse::CancelFrame() {
  FZooming = false;
  FClicked = false;
  FFrame->End();
}

// The click and double click work with automatic zooming only, as the press and drag do: the
// points they judge by are those of the last press.
void TQyGraphMouse::Click(QPoint p) {
  TQyZoomSettings* zoom = FGraph->GetZoom();
  if (zoom->GetAuto() && zoom->GetBackOnClickBeside() && FGraph->GetCanZoomBack() && Small(FDown, FCurrent) &&
      !FGraph->MouseInDataArea(p))
    FGraph->ZoomBack();
}

void TQyGraphMouse::DblClick(QPoint p) {
  TQyZoomSettings* zoom = FGraph->GetZoom();
  if (zoom->GetAuto() && zoom->GetResetOnDoubleClickBeside() && FGraph->GetCanZoomBack() && !FGraph->MouseInDataArea(p))
    FGraph->ZoomReset();
}

// ---- the wheel ---------------------------------------------------------------------------------

// Each notch scales every axis about the value under the pointer; the gesture (notches in quick
// succession, or a touchpad's scroll from its begin to its end) becomes one stage at its end.
void TQyGraphMouse::Wheel(QWheelEvent* e) {
  TQyZoomSettings* zoom = FGraph->GetZoom();
  const QPointF p = e->position();
  if (!zoom->GetAuto() || !zoom->GetWheelZoom() || FZooming || FGraph->IsPanning() || !FGraph->MouseInDataArea(p)) return;
  e->accept();
  const int delta = e->angleDelta().y();
  if (delta != 0) {
    if (FWheelFrom.empty())
      for (TQyAxis* a : FGraph->Axes()) FWheelFrom.push_back({a->GetStart(), a->GetStop()});
    FGraph->ScaleAxesAbout(p, std::pow(WheelStep, delta / 120.0), FWheelFrom);
  }
  if (e->phase() == Qt::ScrollEnd) EndWheelGesture();
  else if (!FWheelFrom.empty()) FWheelEnd.start();
}

// The axes go back to where the gesture began and zoom in to where it ended: stage 0 is then the
// range before the first zoom, and the new stage the range the gesture showed.
void TQyGraphMouse::EndWheelGesture() {
  FWheelEnd.stop();
  if (FWheelFrom.empty()) return;
  const QList<TQyAxis*> axes = FGraph->Axes();
  for (int i = 0; i < axes.size() && i < int(FWheelFrom.size()); ++i) {
    TQyAxis* a = axes[i];
    const double start = a->GetStart(), stop = a->GetStop();
    a->SetStartStop(FWheelFrom[size_t(i)].first, FWheelFrom[size_t(i)].second);
    a->ZoomIn(start, stop);
  }
  FWheelFrom.clear();
  FGraph->FixChildZoomStack();
  FGraph->SeriesModified();
}
