// The drag of a marker as a two-state machine (idle, Moving), and the snapping search.
// Distances are taken from the mouse's screen position at the start of the drag, so that the
// widget moving under the mouse does not disturb them.
#include "QyAxis.h"
#include "QyInput.h"
#include "QyMovable.h"
#include "QyRounding.h"
#include "QySeries.h"
#include <QMouseEvent>
#include <algorithm>
#include <limits>

// A press that starts no drag goes on to the graph (its zoom and pan).
void TQyMovable::mousePressEvent(QMouseEvent* e) {
  DoMouseDown(e->globalPosition().toPoint(), QyShiftState(e->buttons(), e->modifiers()));
  e->setAccepted(FMoving);
}

void TQyMovable::mouseDoubleClickEvent(QMouseEvent* e) {
  DoMouseDown(e->globalPosition().toPoint(), QyShiftState(e->buttons(), e->modifiers(), true));
  e->setAccepted(FMoving);
}

void TQyMovable::mouseMoveEvent(QMouseEvent* e) {
  if (FMoving) DoMouseMove(e->globalPosition().toPoint());
  e->setAccepted(FMoving);
}

void TQyMovable::mouseReleaseEvent(QMouseEvent* e) {
  const bool moving = FMoving;
  if (moving) DoMouseUp();
  e->setAccepted(moving);
}

// Starts only with exactly the keys and buttons of StartMovingKeys.
void TQyMovable::DoMouseDown(const QPoint& global, TShiftState shift) {
  if (!FMouseDrag || FMoving || shift != FStartMovingKeys) return;
  RecordMoveStart();
  FMoving = true;
  FDragMouseX = global.x(), FDragMouseY = global.y();
  FDragHotX = FTargetX = FHotX;
  FDragHotY = FTargetY = FHotY;
}

void TQyMovable::RecordMoveStart() {
  TQyUndoRecorder* stack = UndoRecorder();
  const TQyUndoGroup group(stack, QyRes::MarkerMove);
  QyRecordChange(stack, this, QyRes::MarkerMove, "X");
  QyRecordChange(stack, this, QyRes::MarkerMove, "Y");
}

void TQyMovable::DoMouseMove(const QPoint& global) {
  FollowMouse(global, true, true);
  Place();
  UpdateBkOnMove();
  DoMarkerMoving();
}

void TQyMovable::DoMouseUp() {
  FMoving = false;
  DoMarkerMoved();
}

// The hot spot takes the mouse's offset on the axes that move, clamped to the parent; then the
// position in axis units follows, from the hot spot or from the point snapped to.
void TQyMovable::FollowMouse(const QPoint& global, bool alongX, bool alongY) {
  const QSize parent = ParentSize();
  if (alongX) {
    FTargetX = FDragHotX + global.x() - FDragMouseX;
    FHotX = std::clamp(FTargetX, 0, std::max(0, parent.width() - 1));
  }
  if (alongY) {
    FTargetY = FDragHotY + global.y() - FDragMouseY;
    FHotY = std::clamp(FTargetY, 0, std::max(0, parent.height() - 1));
  }
  if (FSnapToSeriesValues) SearchSeriesSnap();
  else SetRealPoint();
}

// The nearest point to the target (not the clamped hot spot): by distance with both axes, along
// the one axis otherwise. Of two equally near, the first wins.
void TQyMovable::SearchSeriesSnap() {
  FSnappedIdx = -1;
  if (!FXAxis && !FYAxis) return SetRealPoint();
  QList<TQySeries*> candidates;
  if (FSnapFixed) {
    if (FSnappedSeries) candidates << FSnappedSeries;
  } else {
    FSnappedSeries = nullptr;
    for (IQyAxisSeries* s : (FXAxis ? FXAxis : FYAxis)->Series())
      if (auto* series = dynamic_cast<TQySeries*>(s)) candidates << series;
  }
  float best = std::numeric_limits<float>::infinity();
  TQySeries* winner = nullptr;
  TQyNearestPointResult hit;
  for (TQySeries* s : candidates) {
    if (!FSnapToFunctions && s->IsFunctionSeries()) continue;
    const TQyNearestPointResult r = FXAxis && FYAxis ? s->NearestPoint(QPointF(FTargetX, FTargetY))
                                    : FXAxis        ? s->NearestX(float(FTargetX))
                                                    : s->NearestY(float(FTargetY));
    if (r.Found && r.Distance < best) best = r.Distance, winner = s, hit = r;
  }
  if (!winner) return;
  FSnappedSeries = winner;
  FSnappedIdx = hit.Index;
  FRealX = hit.X, FRealY = hit.Y;
  FHotX = RoundI(hit.Point.x()), FHotY = RoundI(hit.Point.y());
  WatchSnappedSeries();
}

void TQyMovable::DoMarkerMoving() {
  Q_EMIT MarkerMoving();
  if (OnMarkerMoving) OnMarkerMoving(this);
}

void TQyMovable::DoMarkerMoved() {
  Q_EMIT MarkerMoved();
  if (OnMarkerMoved) OnMarkerMoved(this);
}
