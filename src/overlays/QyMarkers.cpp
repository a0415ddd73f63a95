// Horizontal and vertical markers (one geometry, laid out along and across the line) and the
// cross hair.
#include "QyMarkers.h"
#include "QyAxis.h"
#include "QyClassRegistry.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include <QEvent>
#include <QPainter>
#include <algorithm>

QY_REGISTER_CLASS(TQyHorizontalMarker);
QY_REGISTER_CLASS(TQyVerticalMarker);
QY_REGISTER_CLASS(TQyCrossHair);

namespace {
// A point or rectangle along/across a line, laid into x/y for the line's direction.
QRect Laid(bool horizontal, int along, int across, int alongSize, int acrossSize) {
  return horizontal ? QRect(along, across, alongSize, acrossSize) : QRect(across, along, acrossSize, alongSize);
}

// Runs `f` with `marker` not recording: the cross hair's lines follow it, the user did not move them.
template <class F> void Quietly(TQyMovable* marker, F f) {
  TQyUndoRecorder* stack = marker->UndoRecorder();
  marker->SetUndoStack(nullptr);
  f();
  marker->SetUndoStack(stack);
}
} // namespace

// ---- line markers -----------------------------------------------------------------------------

TQyLineMarker::TQyLineMarker(bool horizontal, QWidget* parent) : TQyMovable(parent), FHorizontal(horizontal) {
  FLine = new TQySimpleLineSettings([this] { LineChanged(); }, this);
  if (!horizontal) FCaptionPosition = TQyContentAlignment::TopCenter;
  setCursor(QyCursorShape(horizontal ? crSizeNS : crSizeWE));
}

int TQyLineMarker::Thickness() const { return std::max(5, RoundI(FLine->GetWidth())); }

void TQyLineMarker::Span(int& start, int& length) const {
  TQyGraph2D* g = Graph();
  if (FClipToData && g) {
    const QRectF a = g->DataArea();
    start = RoundI(FHorizontal ? a.left() : a.top());
    length = RoundI(FHorizontal ? a.right() : a.bottom()) - start;
  } else {
    const QSize p = ParentSize();
    start = 0;
    length = parentWidget() ? (FHorizontal ? p.width() : p.height()) : 300;
  }
  length = std::max(1, length);
}

// Along the line the caption stands at its start, centre or end (column of CaptionPosition for a
// horizontal line, row for a vertical one); across it before, on or after the line. A caption on
// the middle row at an end stands outside the line. The delta along the line moves the caption
// (and at an end lets it stick out); the widget grows to hold line and caption box.
void TQyLineMarker::SetHotDelta() {
  const int t = Thickness();
  int spanStart = 0, length = 0;
  Span(spanStart, length);
  int a0 = 0, a1 = length, c0 = 0, c1 = t; // extent along and across, relative to the line
  int boxA = 0, boxC = 0, boxAlong = 0, boxAcross = 0;
  if (CaptionShown()) {
    const QSize box = CaptionBoxSize();
    boxAlong = FHorizontal ? box.width() : box.height();
    boxAcross = FHorizontal ? box.height() : box.width();
    const int position = int(FCaptionPosition);
    const int along = FHorizontal ? position % 3 : position / 3; // 0 start, 1 centre, 2 end
    const int across = FHorizontal ? position / 3 : position % 3; // 0 before, 1 on, 2 after
    const int dA = FHorizontal ? FCaptionDeltaX : FCaptionDeltaY;
    const int dC = FHorizontal ? FCaptionDeltaY : FCaptionDeltaX;
    const bool outside = across == 1 && along != 1;
    if (along == 1) boxA = length / 2 + dA - boxAlong / 2;
    else if (along == 0) boxA = outside ? dA - boxAlong : -dA;
    else boxA = outside ? length + dA : length + dA - boxAlong;
    boxC = across == 0 ? dC - boxAcross : across == 1 ? t / 2 - boxAcross / 2 + dC : t + dC;
    a0 = std::min(0, boxA), a1 = std::max(length, boxA + boxAlong);
    c0 = std::min(0, boxC), c1 = std::max(t, boxC + boxAcross);
    if (FShadowEffective && FCaptionBackVisible) a1 += 5, c1 += 5;
  }
  FLineRect = Laid(FHorizontal, -a0, -c0, length, t);
  FCaptionRect = CaptionShown() ? Laid(FHorizontal, boxA - a0, boxC - c0, boxAlong, boxAcross) : QRect();
  if (CaptionShown()) AnchorCaption(FCaptionRect);
  const int acrossDelta = t / 2 - c0;
  const int acrossOrigin = FHorizontal ? y() : x(); // across, the widget stands where it is
  FMarkerBounds = Laid(FHorizontal, spanStart + a0, acrossOrigin, a1 - a0, c1 - c0);
  FHotDeltaX = FHorizontal ? 0 : acrossDelta;
  FHotDeltaY = FHorizontal ? acrossDelta : 0;
  FHotX = FMarkerBounds.left() + FHotDeltaX;
  FHotY = FMarkerBounds.top() + FHotDeltaY;
}

QRegion TQyLineMarker::HitRegion() const {
  if (!CaptionShown()) return QRegion(rect());
  return QRegion(FLineRect) + QRegion(FCaptionRect);
}

void TQyLineMarker::RecordMoveStart() {
  const TQyUndoGroup group(UndoRecorder(), QyRes::MarkerMove);
  QyRecordChange(UndoRecorder(), this, QyRes::MarkerMove, FHorizontal ? "Y" : "X");
}

// Only the coordinate across the line follows the mouse; along it the widget keeps its place.
void TQyLineMarker::DoMouseMove(const QPoint& global) {
  FollowMouse(global, !FHorizontal, FHorizontal);
  if (FHorizontal) FHotX = FMarkerBounds.left() + FHotDeltaX;
  else FHotY = FMarkerBounds.top() + FHotDeltaY;
  Place();
  UpdateBkOnMove();
  DoMarkerMoving();
}

bool TQyLineMarker::ValueShown() const {
  TQyAxis* axis = FHorizontal ? FYAxis : FXAxis;
  if (!FClipToData || !axis) return true;
  const double v = FHorizontal ? FRealY : FRealX;
  const double lo = std::min(axis->GetStart(), axis->GetStop()), hi = std::max(axis->GetStart(), axis->GetStop());
  return v >= lo && v <= hi;
}

// The line runs through the hot spot; a caption on the line breaks it around the caption's box.
void TQyLineMarker::PaintGr(QPainter* g) {
  if (!ValueShown()) return;
  const float w = FLine->GetWidth();
  g->save();
  g->setPen(FLine->GetPen(GetClipRect()));
  const int at = FHorizontal ? FHotDeltaY : FHotDeltaX;
  const int from = FHorizontal ? FLineRect.left() : FLineRect.top();
  const int to = FHorizontal ? FLineRect.right() : FLineRect.bottom();
  const int boxLo = FHorizontal ? FCaptionRect.top() : FCaptionRect.left();
  const int boxHi = FHorizontal ? FCaptionRect.bottom() : FCaptionRect.right();
  const int gapLo = FHorizontal ? FCaptionRect.left() : FCaptionRect.top();
  const int gapHi = FHorizontal ? FCaptionRect.right() : FCaptionRect.bottom();
  auto line = [&](int a, int b) {
    if (FHorizontal) g->drawLine(QPointF(a, at), QPointF(b, at));
    else g->drawLine(QPointF(at, a), QPointF(at, b));
  };
  const bool broken = CaptionShown() && !FCaptionRect.isEmpty() && at < boxHi + w / 2 - 1.5f && at >= boxLo - w / 2 + 3;
  if (!broken) {
    line(from, to);
  } else {
    if (gapLo > from) line(from, gapLo);
    if (gapHi < to) line(gapHi, to);
  }
  g->restore();
  PaintCaption(g);
}

// ---- cross hair -------------------------------------------------------------------------------

TQyCrossHair::TQyCrossHair(QWidget* parent) : TQyMovable(parent) {
  FLine = new TQySimpleLineSettings([this] { LineChanged(); }, this);
  FCaptionVisible = true;
  FCaptionObject->Alignment = TQyContentAlignment::BottomLeft;
  FHorizontalMarker = new TQyHorizontalMarker(parent);
  FHorizontalMarker->setObjectName("HorizontalMarker");
  FVerticalMarker = new TQyVerticalMarker(parent);
  FVerticalMarker->setObjectName("VertikalMarker");
  QySetSubComponent(FHorizontalMarker); // the cross hair's record holds them
  QySetSubComponent(FVerticalMarker);
  // Dragging one line (or undoing its drag) moves the centre along it. The centre follows
  // without recording: the line's own drag was recorded.
  auto follow = [this] { FollowTo(FVerticalMarker->GetX(), FHorizontalMarker->GetY()); };
  for (TQyMovable* line : {(TQyMovable*)FHorizontalMarker, (TQyMovable*)FVerticalMarker}) {
    connect(line, &TQyMovable::MarkerMoving, this, [this, follow] { follow(), DoMarkerMoving(); });
    connect(line, &TQyMovable::MarkerMoved, this, follow);
  }
  setCursor(QyCursorShape(crSizeAll));
  SyncLines();
}

TQyCrossHair::~TQyCrossHair() {
  FDestroying = true;
  delete FHorizontalMarker;
  delete FVerticalMarker;
}

void TQyCrossHair::SetHorizontalCursor(int value) {
  QyAssign(this, FHorizontalCursor, value, nullptr, "HorizontalCursor", [this] { SyncLines(); });
}

void TQyCrossHair::SetVerticalCursor(int value) {
  QyAssign(this, FVerticalCursor, value, nullptr, "VerticalCursor", [this] { SyncLines(); });
}

void TQyCrossHair::SyncLines() {
  if (FDestroying) return;
  for (TQyLineMarker* m : {(TQyLineMarker*)FHorizontalMarker, (TQyLineMarker*)FVerticalMarker}) {
    if (!m) continue;
    if (m->parentWidget() != parentWidget()) m->setParent(parentWidget());
    Quietly(m, [&] {
      m->SetClipToData(FClipToData);
      m->GetLine()->Assign(*FLine);
      m->SetMouseDrag(FMouseDrag);
    });
  }
  if (FHorizontalMarker) {
    FHorizontalMarker->setCursor(QyCursorShape(FHorizontalCursor));
    Quietly(FHorizontalMarker, [&] { FHorizontalMarker->SetYAxis(FYAxis); });
  }
  if (FVerticalMarker) {
    FVerticalMarker->setCursor(QyCursorShape(FVerticalCursor));
    Quietly(FVerticalMarker, [&] { FVerticalMarker->SetXAxis(FXAxis); });
  }
  MoveLines();
  LinesToFront();
}

// The lines stand below the centre, so the centre takes the mouse where they cross.
void TQyCrossHair::LinesToFront() {
  if (FHorizontalMarker) FHorizontalMarker->raise();
  if (FVerticalMarker) FVerticalMarker->raise();
  raise();
}

void TQyCrossHair::MoveLines() {
  if (FHorizontalMarker) FHorizontalMarker->FollowTo(FRealX, FRealY);
  if (FVerticalMarker) FVerticalMarker->FollowTo(FRealX, FRealY);
}

// The lines follow first, quietly: the cross hair records the change.
void TQyCrossHair::SetX(double value) {
  if (FVerticalMarker) Quietly(FVerticalMarker, [&] { FVerticalMarker->SetX(value); });
  TQyMovable::SetX(value);
}

void TQyCrossHair::SetY(double value) {
  if (FHorizontalMarker) Quietly(FHorizontalMarker, [&] { FHorizontalMarker->SetY(value); });
  TQyMovable::SetY(value);
}

void TQyCrossHair::SetXAxis(TQyAxis* axis) {
  TQyMovable::SetXAxis(axis);
  SyncLines();
}

void TQyCrossHair::SetYAxis(TQyAxis* axis) {
  TQyMovable::SetYAxis(axis);
  SyncLines();
}

void TQyCrossHair::SetRealPoint() {
  TQyMovable::SetRealPoint();
  MoveLines();
}

void TQyCrossHair::ClipToDataChanged() {
  SyncLines();
  Relayout();
}

void TQyCrossHair::LineChanged() {
  SyncLines();
  Modified();
}

void TQyCrossHair::DoMouseMove(const QPoint& global) {
  TQyMovable::DoMouseMove(global);
  MoveLines();
  UpdateBkOnMove();
}

// A new parent, a show or a hide reach the lines too.
bool TQyCrossHair::event(QEvent* e) {
  const bool result = TQyMovable::event(e);
  const bool shown = e->type() == QEvent::ShowToParent, hidden = e->type() == QEvent::HideToParent;
  if (e->type() == QEvent::ParentChange) SyncLines();
  for (QWidget* line : {(QWidget*)FHorizontalMarker, (QWidget*)FVerticalMarker})
    if (line && (shown || hidden)) line->setVisible(shown);
  return result;
}

// Margins around the centre: the hot radius, plus 6 without a caption; with one, the caption's
// box stands in its quadrant, CaptionDeltaX and CaptionDeltaY away from the hot radius, and the
// margins grow to hold it (and its shadow).
void TQyCrossHair::SetHotDelta() {
  const int r = HotRadius();
  int left = r + 6, right = r + 6, top = r + 6, bottom = r + 6;
  QRect box;
  if (CaptionShown()) {
    const QSize size = CaptionBoxSize();
    const bool rightSide = FCaptionPosition == TQyXHairCaptionPosition::RightTop ||
                           FCaptionPosition == TQyXHairCaptionPosition::RightBottom;
    const bool below = FCaptionPosition == TQyXHairCaptionPosition::RightBottom ||
                       FCaptionPosition == TQyXHairCaptionPosition::LeftBottom;
    const int bx = rightSide ? r + FCaptionDeltaX : -(r + FCaptionDeltaX) - size.width();
    const int by = below ? r + FCaptionDeltaY : -(r + FCaptionDeltaY) - size.height();
    box = QRect(bx, by, size.width(), size.height()); // relative to the centre
    left = std::max(r, -box.left()), right = std::max(r, box.left() + box.width());
    top = std::max(r, -box.top()), bottom = std::max(r, box.top() + box.height());
    if (FShadowEffective) right += 5, bottom += 5;
  }
  FHotDeltaX = left, FHotDeltaY = top;
  FCaptionRect = box.translated(left, top);
  if (CaptionShown()) AnchorCaption(FCaptionRect);
  FMarkerBounds = QRect(FHotX - left, FHotY - top, left + right + 1, top + bottom + 1);
}

void TQyCrossHair::PaintGr(QPainter* g) {
  const bool clip = FClipToData && Graph();
  g->save();
  if (clip) g->setClipRect(FClipRect, Qt::IntersectClip);
  PaintCaption(g);
  g->restore();
}
