// The label-with-arrow marker and its three grips.
#include "QyArrowMarker.h"
#include "QyClassRegistry.h"
#include "QyDrawing.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include <QEnterEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>
#include <cmath>

QY_REGISTER_CLASS(TQyLabelWithArrowMarker);

namespace {
constexpr int GripSize = 9;   // the glyph of the arrow end and caption grips
constexpr int BentGripLong = 18, BentGripShort = 4;
int Sign(int v) { return v < 0 ? -1 : 1; }

// A band of half-width `h` around the segment a-b, as a region.
QRegion Band(QPointF a, QPointF b, double h) {
  const QLineF line(a, b);
  const double length = line.length();
  if (!std::isfinite(length)) return {};
  if (length < 1e-9) return QRegion(QRectF(a - QPointF(h, h), QSizeF(2 * h, 2 * h)).toAlignedRect());
  const QPointF n = QPointF(-line.dy(), line.dx()) / length * h;
  const QPointF u = QPointF(line.dx(), line.dy()) / length * h;
  const QPolygonF band{a - u + n, b + u + n, b + u - n, a - u - n};
  return QRegion(band.toPolygon());
}
} // namespace

// ---- the marker -------------------------------------------------------------------------------

TQyLabelWithArrowMarker::TQyLabelWithArrowMarker(QWidget* parent) : TQyMovable(parent) {
  FLine = new TQyArrowSettings([this] { LineChanged(); }, this);
  FCaptionVisible = true;
  FCaptionObject->Alignment = TQyContentAlignment::BottomLeft;
  FArrowEndGrip = new TQyArrowGrip(this, parent);
  FBentGrip = new TQyBentLengthGrip(this, parent);
  FCaptionGrip = new TQyCaptionGrip(this, parent);
  FArrowEndGrip->setCursor(QyCursorShape(FArrowEndGripCursor));
  FBentGrip->setCursor(QyCursorShape(FBentLengthGripCursor));
  FCaptionGrip->setCursor(QyCursorShape(FCaptionGripCursor));
  setCursor(QyCursorShape(crHandPoint));
}

TQyLabelWithArrowMarker::~TQyLabelWithArrowMarker() {
  FDestroying = true;
  delete FArrowEndGrip;
  delete FBentGrip;
  delete FCaptionGrip;
}

float TQyLabelWithArrowMarker::GetArrowLength() const { return float(std::hypot(FArrowDeltaX, FArrowDeltaY)); }

float TQyLabelWithArrowMarker::GetArrowAngle() const {
  if (FArrowDeltaX == 0) return FArrowDeltaY < 0 ? 90.0f : 270.0f;
  double a = qRadiansToDegrees(std::atan(double(-FArrowDeltaY) / FArrowDeltaX));
  if (FArrowDeltaX < 0) a += 180;
  else if (a < 0) a += 360;
  return float(a);
}

void TQyLabelWithArrowMarker::SetDeltasByPolar(double angle, double length) {
  FArrowDeltaX = RoundI(length * std::cos(qDegreesToRadians(angle)));
  FArrowDeltaY = RoundI(-length * std::sin(qDegreesToRadians(angle)));
  Relayout();
}

void TQyLabelWithArrowMarker::SetArrowAngle(float value) {
  if (QyEqual(value, GetArrowAngle())) return;
  RecordChange(this, QyRes::MarkerArrowAngle, "ArrowAngle");
  SetDeltasByPolar(value, GetArrowLength());
  EmitPropertyChanged("ArrowAngle");
}

void TQyLabelWithArrowMarker::SetArrowLength(float value) {
  if (QyEqual(value, GetArrowLength())) return;
  RecordChange(this, QyRes::MarkerArrowLength, "ArrowLength");
  SetDeltasByPolar(GetArrowAngle(), value);
  EmitPropertyChanged("ArrowLength");
}

void TQyLabelWithArrowMarker::SetBentLength(int value) {
  QyAssign(this, FBentLength, std::abs(value), QyRes::MarkerArrowBentLength, "BentLength", [this] { Relayout(); });
}

void TQyLabelWithArrowMarker::SetArrowEndGripCursor(int value) {
  QyAssign(this, FArrowEndGripCursor, value, nullptr, "ArrowEndGripCursor",
           [this] { FArrowEndGrip->setCursor(QyCursorShape(FArrowEndGripCursor)); });
}

void TQyLabelWithArrowMarker::SetBentLengthGripCursor(int value) {
  QyAssign(this, FBentLengthGripCursor, value, nullptr, "BentLengthGripCursor",
           [this] { FBentGrip->setCursor(QyCursorShape(FBentLengthGripCursor)); });
}

void TQyLabelWithArrowMarker::SetCaptionGripCursor(int value) {
  QyAssign(this, FCaptionGripCursor, value, nullptr, "CaptionGripCursor",
           [this] { FCaptionGrip->setCursor(QyCursorShape(FCaptionGripCursor)); });
}

int TQyLabelWithArrowMarker::BentSign() const { return Sign(FCaptionVertical ? FArrowDeltaY : FArrowDeltaX); }

QPoint TQyLabelWithArrowMarker::ArrowEnd() const { return HotDelta() + QPoint(FArrowDeltaX, FArrowDeltaY); }

QPoint TQyLabelWithArrowMarker::BentEnd() const {
  if (FBentLength < 1) return ArrowEnd();
  const int b = FBentLength * BentSign();
  return ArrowEnd() + (FCaptionVertical ? QPoint(0, b) : QPoint(b, 0));
}

// The widget holds the arrow head at the hot spot, the line, the bent leader and the caption's box.
// The caption stands at the end of the line, away from the tip: beside the end on the side the
// arrow points away to, centred on a bent leader, above or below the end otherwise.
void TQyLabelWithArrowMarker::SetHotDelta() {
  const float w = std::max(1.0f, GetArrow()->GetWidth());
  const int head = CeilI(std::max(GetArrow()->GetPointLength(), GetArrow()->GetPointHeight()) * w + w);
  const QPoint e(FArrowDeltaX, FArrowDeltaY); // relative to the hot spot
  const int b = FBentLength < 1 ? 0 : FBentLength * BentSign();
  const QPoint end = e + (FCaptionVertical ? QPoint(0, b) : QPoint(b, 0));
  QRect bounds(-head, -head, 2 * head + 1, 2 * head + 1);
  const int pad = CeilI(w) + 1;
  bounds |= QRect(e - QPoint(pad, pad), e + QPoint(pad, pad));
  bounds |= QRect(end - QPoint(pad, pad), end + QPoint(pad, pad));
  QRect box;
  if (CaptionShown()) {
    const QSize size = CaptionBoxSize();
    const bool bent = FBentLength >= 1;
    int bx, by;
    if (FCaptionVertical) {
      by = Sign(FArrowDeltaY) > 0 ? end.y() : end.y() - size.height();
      bx = bent ? end.x() - size.width() / 2 : Sign(FArrowDeltaX) > 0 ? end.x() : end.x() - size.width();
    } else {
      bx = Sign(FArrowDeltaX) > 0 ? end.x() : end.x() - size.width();
      by = bent ? end.y() - size.height() / 2 : Sign(FArrowDeltaY) > 0 ? end.y() : end.y() - size.height();
    }
    box = QRect(bx + FCaptionDeltaX, by + FCaptionDeltaY, size.width(), size.height());
    bounds |= box;
    if (FShadowEffective) bounds |= box.adjusted(0, 0, 5, 5);
  }
  FHotDeltaX = -bounds.left(), FHotDeltaY = -bounds.top();
  FCaptionRect = box.translated(FHotDeltaX, FHotDeltaY);
  if (CaptionShown()) AnchorCaption(FCaptionRect);
  FMarkerBounds = QRect(FHotX - FHotDeltaX, FHotY - FHotDeltaY, bounds.width(), bounds.height());
}

// The caption's box and a band around the arrow and the leader take the mouse.
QRegion TQyLabelWithArrowMarker::HitRegion() const {
  const double h = std::max(4.0, GetArrow()->GetWidth() / 2.0 + 3);
  QRegion r = Band(HotDelta(), ArrowEnd(), h) + Band(ArrowEnd(), BentEnd(), h);
  if (CaptionShown()) r += FCaptionRect;
  return r;
}

void TQyLabelWithArrowMarker::DoMouseDown(const QPoint& global, TShiftState shift) {
  if (FDraggingOptions & QyArrowMarker::Hotspot) TQyMovable::DoMouseDown(global, shift);
}

void TQyLabelWithArrowMarker::PaintGr(QPainter* g) {
  TQyArrowSettings* arrow = GetArrow();
  if (arrow->GetVisible() && (FArrowDeltaX || FArrowDeltaY)) {
    g->save();
    if (FClipToData && Graph()) g->setClipRect(FClipRect, Qt::IntersectClip);
    if (TQyGraph2D* graph = Graph()) graph->SetHighQuality(g, true);
    const QPointF hot = HotDelta(), end = ArrowEnd();
    const QPen pen = arrow->GetPen(OrderedRect(float(hot.x()), float(hot.y()), float(end.x()), float(end.y())),
                                   -GetArrowAngle());
    DrawArrowLine(g, pen, end, hot, ArrowPointCap(*arrow), arrow->GetInnerLength());
    if (FBentLength >= 1) {
      g->setPen(pen);
      g->drawLine(end, QPointF(BentEnd()));
    }
    g->restore();
  }
  PaintCaption(g);
}

void TQyLabelWithArrowMarker::UpdatePosition() {
  TQyMovable::UpdatePosition();
  PlaceGrips();
}

// ---- grips ------------------------------------------------------------------------------------

void TQyLabelWithArrowMarker::PlaceGrips() {
  if (!FArrowEndGrip || FDestroying) return;
  for (QWidget* grip : {(QWidget*)FArrowEndGrip, (QWidget*)FBentGrip, (QWidget*)FCaptionGrip})
    if (grip->parentWidget() != parentWidget()) grip->setParent(parentWidget());
  const QPoint origin = pos();
  const QPoint end = origin + ArrowEnd();
  FArrowEndGrip->setGeometry(end.x() - GripSize / 2, end.y() - GripSize / 2, GripSize, GripSize);
  const QPoint mid = origin + (ArrowEnd() + BentEnd()) / 2;
  const QSize bent = FCaptionVertical ? QSize(BentGripShort, BentGripLong) : QSize(BentGripLong, BentGripShort);
  FBentGrip->setGeometry(QRect(mid - QPoint(bent.width() / 2, bent.height() / 2), bent));
  const QPoint corner = origin + FCaptionRect.topLeft();
  FCaptionGrip->setGeometry(corner.x() - GripSize / 2, corner.y() - GripSize / 2, GripSize, GripSize);
}

void TQyLabelWithArrowMarker::ShowGrips(bool on) {
  if (!FArrowEndGrip) return;
  const bool arrow = on && GetArrow()->GetVisible() && FMouseDrag;
  PlaceGrips();
  FArrowEndGrip->setVisible(arrow && (FDraggingOptions & QyArrowMarker::ArrowEnd));
  FBentGrip->setVisible(arrow && (FDraggingOptions & QyArrowMarker::BentGrip));
  FCaptionGrip->setVisible(arrow && CaptionShown() && (FDraggingOptions & QyArrowMarker::CaptionGrip));
  for (QWidget* grip : {(QWidget*)FArrowEndGrip, (QWidget*)FBentGrip, (QWidget*)FCaptionGrip})
    if (grip->isVisible()) grip->raise();
}

void TQyLabelWithArrowMarker::HideGripsUnlessHovered() {
  if (!parentWidget() || geometry().contains(parentWidget()->mapFromGlobal(QCursor::pos()))) return;
  for (TQyArrowGrip* grip : {FArrowEndGrip.data(), FBentGrip.data(), FCaptionGrip.data()})
    if (grip && grip->Moving()) return;
  ShowGrips(false);
}

void TQyLabelWithArrowMarker::enterEvent(QEnterEvent* e) {
  TQyMovable::enterEvent(e);
  if (FHoverGrips) ShowGrips(true);
}

void TQyLabelWithArrowMarker::leaveEvent(QEvent* e) {
  TQyMovable::leaveEvent(e);
  HideGripsUnlessHovered();
}

// The grips share the marker's parent.
bool TQyLabelWithArrowMarker::event(QEvent* e) {
  const bool result = TQyMovable::event(e);
  if (e->type() == QEvent::ParentChange) PlaceGrips();
  return result;
}

TQyArrowGrip::TQyArrowGrip(TQyLabelWithArrowMarker* marker, QWidget* parent) : QWidget(parent), FMarker(marker) {
  setAttribute(Qt::WA_NoSystemBackground);
  resize(GripSize, GripSize);
  hide();
}

void TQyArrowGrip::mousePressEvent(QMouseEvent* e) {
  e->accept();
  TQyLabelWithArrowMarker* m = FMarker;
  if (!m || FMoving || QyShiftState(e->buttons(), e->modifiers()) != m->GetStartMovingKeys()) return;
  TQyUndoRecorder* stack = m->UndoRecorder();
  const TQyUndoGroup group(stack, QyRes::MarkerArrowGripMoved);
  for (const char* name : {"ArrowDeltaX", "ArrowDeltaY", "CaptionDeltaX", "CaptionDeltaY", "BentLength"})
    QyRecordChange(stack, m, QyRes::MarkerArrowGripMoved, name);
  FMoving = true;
  FStartMouse = e->globalPosition().toPoint();
  FStartArrowDeltaX = m->FArrowDeltaX, FStartArrowDeltaY = m->FArrowDeltaY;
  FStartCaptionDeltaX = m->FCaptionDeltaX, FStartCaptionDeltaY = m->FCaptionDeltaY;
  FStartBentLength = m->FBentLength;
}

void TQyArrowGrip::mouseMoveEvent(QMouseEvent* e) {
  e->accept();
  if (!FMoving || !FMarker) return;
  const QPoint d = e->globalPosition().toPoint() - FStartMouse;
  Drag(d.x(), d.y());
  FMarker->UpdatePosition();
  FMarker->UpdateBkOnMove();
}

void TQyArrowGrip::mouseReleaseEvent(QMouseEvent* e) {
  e->accept();
  if (!FMoving) return;
  FMoving = false;
  if (FMarker && FMarker->OnArrowEndMoved) FMarker->OnArrowEndMoved(FMarker);
}

void TQyArrowGrip::leaveEvent(QEvent* e) {
  QWidget::leaveEvent(e);
  if (FMarker) FMarker->HideGripsUnlessHovered();
}

// The arrow's end moves; the tip stays on its point.
void TQyArrowGrip::Drag(int dx, int dy) {
  FMarker->FArrowDeltaX = FStartArrowDeltaX + dx;
  FMarker->FArrowDeltaY = FStartArrowDeltaY + dy;
  if (FMarker->OnArrowEndMoving) FMarker->OnArrowEndMoving(FMarker);
}

void TQyBentLengthGrip::Drag(int dx, int dy) {
  const int along = FMarker->FCaptionVertical ? dy * Sign(FMarker->FArrowDeltaY) : dx * Sign(FMarker->FArrowDeltaX);
  FMarker->FBentLength = std::max(0, FStartBentLength + along);
}

void TQyCaptionGrip::Drag(int dx, int dy) {
  FMarker->FCaptionDeltaX = FStartCaptionDeltaX + dx;
  FMarker->FCaptionDeltaY = FStartCaptionDeltaY + dy;
}

void TQyArrowGrip::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(Qt::black, 1));
  p.setBrush(QColor(255, 255, 255, 200));
  p.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void TQyBentLengthGrip::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), QColor(0, 0, 0, 120));
}

void TQyCaptionGrip::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setPen(QPen(Qt::black, 1));
  p.setBrush(QColor(255, 255, 255, 200));
  p.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -1, -1));
}
