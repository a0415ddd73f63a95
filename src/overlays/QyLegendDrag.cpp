// Moving a free legend with the mouse: the press that starts it (exactly the configured buttons
// and keys), the moves that carry it, kept inside its graph, and one undo entry for the place.
#include "QyGraph2D.h"
#include "QyLegend.h"
#include <QMouseEvent>

namespace {
// The buttons and keys of a mouse event as a shift state.
TShiftState ShiftOf(const QMouseEvent* e) {
  TShiftState s;
  const Qt::KeyboardModifiers keys = e->modifiers();
  if (keys & Qt::ShiftModifier) s |= QyShift::ssShift;
  if (keys & Qt::AltModifier) s |= QyShift::ssAlt;
  if (keys & Qt::ControlModifier) s |= QyShift::ssCtrl;
  const Qt::MouseButtons buttons = e->buttons();
  if (buttons & Qt::LeftButton) s |= QyShift::ssLeft;
  if (buttons & Qt::RightButton) s |= QyShift::ssRight;
  if (buttons & Qt::MiddleButton) s |= QyShift::ssMiddle;
  if (e->type() == QEvent::MouseButtonDblClick) s |= QyShift::ssDouble;
  return s;
}
} // namespace

void TQyLegend::mousePressEvent(QMouseEvent* e) {
  if (FPosition != TQyLegendPosition::FreeFloating || !LayoutGraph() ||
      ShiftOf(e) != FStartFreeFloatingMovingKeys) {
    TQyCustomLegend::mousePressEvent(e); // the graph gets it (zoom, pan)
    return;
  }
  FDragging = true;
  {
    TQyUndoGroup group(UndoRecorder(), QyRes::LegendPosition);
    RecordChange(this, QyRes::LegendPosition, "Left");
    RecordChange(this, QyRes::LegendPosition, "Top");
  }
  FDragStart = e->position().toPoint();
  if (OnStartFreeFloating) OnStartFreeFloating(this);
}

void TQyLegend::mouseMoveEvent(QMouseEvent* e) {
  if (!FDragging) return TQyCustomLegend::mouseMoveEvent(e);
  const QWidget* graph = parentWidget();
  const QPoint to = pos() + e->position().toPoint() - FDragStart;
  move(std::clamp(to.x(), 0, std::max(0, graph->width() - width())),
       std::clamp(to.y(), 0, std::max(0, graph->height() - height())));
}

void TQyLegend::mouseReleaseEvent(QMouseEvent* e) {
  if (!FDragging) return TQyCustomLegend::mouseReleaseEvent(e);
  FDragging = false;
}
