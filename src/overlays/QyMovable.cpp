// The marker base: properties, the two coordinate systems, the caption box and painting. The
// drag and the snapping search stand in QyMovableDrag.cpp.
#include "QyMovable.h"
#include "QyAxis.h"
#include "QyDrawing.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include "QySeries.h"
#include <QMoveEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <cmath>

TQyMovable::TQyMovable(QWidget* parent) : QWidget(parent) {
  FCaptionObject = std::make_unique<TQyRichCaptionObject>([this] { ParseCaption(); }, this);
  FCaptionObject->Font()->SetUndoCaption(QyRes::MarkerFont);
  FCaptionBackGradient = new TQyGradientSettings([this] { Relayout(); }, this);
  FCaptionBackFrame = new TQyLineSettings([this] { Modified(); }, this);
  FCaptionBackFrame->SetVisible(false);
  FForeColor = FCaptionObject->Font()->GetFillColor();
  setAttribute(Qt::WA_NoSystemBackground);
  setMouseTracking(false);
  setGeometry(1, 1, 11, 11);
  DeferInit(this);
}

TQyMovable::~TQyMovable() {
  FDestroying = true;
  RemoveVariablesOfOwner(this);
}

void TQyMovable::AfterConstruction() {
  TQyDeferredInit::AfterConstruction();
  RegisterVariables();
}

void TQyMovable::RegisterVariables() {
  RegisterDoubleVariable(this, "X", QyText(QyRes::MarkerVarX), [this] { return FRealX; });
  RegisterDoubleVariable(this, "Y", QyText(QyRes::MarkerVarY), [this] { return FRealY; });
}

TQyFont* TQyMovable::GetFont() const { return FCaptionObject->Font(); }

TQyGraph2D* TQyMovable::Graph() const { return qobject_cast<TQyGraph2D*>(parentWidget()); }

// The size the parent lays out for: a graph rendering to another device answers the target's.
QSize TQyMovable::ParentSize() const {
  if (TQyGraph2D* g = Graph()) return g->LayoutSize();
  return parentWidget() ? parentWidget()->size() : QSize(300, 300);
}

// ---- setters ----------------------------------------------------------------------------------

void TQyMovable::SetCaption(TQyRichCaption value) {
  QyAssign(this, FCaption, value, QyRes::MarkerCaption, "Caption", [this] {
    FCaptionObject->SetCaption(FCaption);
    Relayout();
  });
}

void TQyMovable::SetForeColor(TQyColor value) {
  QyAssign(this, FForeColor, value, QyRes::MarkerForeColor, "ForeColor", [this] {
    FCaptionObject->FillColorOverride = FForeColor;
    Modified();
  });
}

void TQyMovable::SetClipToData(bool value) {
  QyAssign(this, FClipToData, value, QyRes::MarkerClipToData, "ClipToData", [this] { ClipToDataChanged(); });
}

void TQyMovable::SetXAxis(TQyAxis* axis) {
  QyAssign(this, FXAxis, axis, QyRes::MarkerXAxis, "XAxis", [this] {
    if (!UndoRecorder() && FXAxis) SetUndoRecorder(FXAxis->UndoRecorder());
    UpdatePosition();
    Modified();
  });
}

void TQyMovable::SetYAxis(TQyAxis* axis) {
  QyAssign(this, FYAxis, axis, QyRes::MarkerYAxis, "YAxis", [this] {
    if (!UndoRecorder() && FYAxis) SetUndoRecorder(FYAxis->UndoRecorder());
    UpdatePosition();
    Modified();
  });
}

void TQyMovable::SetX(double value) { SetCoordinate(true, value); }

void TQyMovable::SetY(double value) { SetCoordinate(false, value); }

// X and Y store first and record after (the new value is recorded), without comparing.
void TQyMovable::SetCoordinate(bool isX, double value) {
  (isX ? FRealX : FRealY) = value;
  RecordChange(this, isX ? QyRes::MarkerX : QyRes::MarkerY, isX ? "X" : "Y");
  if (FNeedsDelta) SetHotDelta();
  TQyAxis* axis = isX ? FXAxis : FYAxis;
  (isX ? FHotX : FHotY) = axis ? RoundI(axis->NumberToWorld(value)) : RoundI(value);
  Place();
  DoMarkerMoved();
  Modified();
  EmitPropertyChanged(isX ? "X" : "Y");
}

// A series set from outside is the only one the snapping search asks.
void TQyMovable::SetSnappedSeries(TQySeries* series) {
  QyAssign(this, FSnappedSeries, series, QyRes::MarkerSnappedSeries, "SnappedSeries", [this] {
    FSnapFixed = FSnappedSeries != nullptr;
    WatchSnappedSeries();
    if (FSnappedSeries && !FSnapToFunctions && FSnappedSeries->IsFunctionSeries()) SetSnapToFunctions(true);
  });
}

void TQyMovable::SetSnappedIdx(int index) {
  if (index < 0) index = -1;
  if (index == FSnappedIdx) return;
  FSnappedIdx = index;
  TQySeries* s = FSnappedSeries;
  if (!s || !FSnapToSeriesValues || index < 0 || index >= s->GetCount()) return;
  if (s->GetXData()) SetX(s->GetXData()->GetValue(index));
  if (s->GetYData()) SetY(s->GetYData()->GetValue(index));
}

// A marker on a point of a series follows the point when the series' data change: inserted and
// deleted values shift the index, a deleted or cleared point lets the marker go where it stands.
void TQyMovable::WatchSnappedSeries() {
  disconnect(FSnapConnection);
  if (FSnappedSeries)
    FSnapConnection = connect(FSnappedSeries, &TQySeries::LinkedMarkers, this,
                              [this](TQyVectorChange change, int index) { FollowSnappedPoint(change, index); });
}

void TQyMovable::FollowSnappedPoint(TQyVectorChange change, int index) {
  if (FSnappedIdx < 0) return;
  switch (change) {
  case TQyVectorChange::Inserted: if (index <= FSnappedIdx) ++FSnappedIdx; return;
  case TQyVectorChange::Deleted:
    if (index < FSnappedIdx) --FSnappedIdx;
    else if (index == FSnappedIdx) FSnappedIdx = -1;
    return;
  case TQyVectorChange::Cleared: FSnappedIdx = -1; return;
  default: break;
  }
  TQySeries* s = FSnappedSeries;
  if (!s || !s->GetXData() || !s->GetYData() || FSnappedIdx >= s->GetCount()) return;
  // The data moved, not the user: nothing is recorded.
  FollowTo(s->GetXData()->GetValue(FSnappedIdx), s->GetYData()->GetValue(FSnappedIdx));
}

void TQyMovable::SetUndoStack(TQyUndoRecorder* stack) { SetUndoRecorder(stack); }

// ---- the two coordinate systems ---------------------------------------------------------------

void TQyMovable::Calculate() {
  if (!parentWidget()) return;
  FNeedsDelta = false;
  MeasureCaption();
  SetHotDelta();
  const QScopedValueRollback guard(FInternalBounds, true);
  setGeometry(FMarkerBounds);
}

void TQyMovable::UpdatePosition() {
  if (!parentWidget()) return;
  SetHotDelta();
  FHotX = FXAxis ? RoundI(FXAxis->NumberToWorld(FRealX)) : FMarkerBounds.left() + FHotDeltaX;
  FHotY = FYAxis ? RoundI(FYAxis->NumberToWorld(FRealY)) : FMarkerBounds.top() + FHotDeltaY;
  Place();
}

void TQyMovable::FollowTo(double realX, double realY) {
  FRealX = realX, FRealY = realY;
  UpdatePosition();
}

void TQyMovable::SetRealPoint() {
  FRealX = FXAxis ? FXAxis->WorldToNumber(float(FHotX)) : FHotX;
  FRealY = FYAxis ? FYAxis->WorldToNumber(float(FHotY)) : FHotY;
}

void TQyMovable::SetHotDelta() {
  FMarkerBounds = geometry();
  FHotDeltaX = width() / 2;
  FHotDeltaY = height() / 2;
}

void TQyMovable::Place() {
  if (CaptionHasValues()) {
    const int hx = FHotX, hy = FHotY;
    MeasureCaption();
    SetHotDelta();
    FHotX = hx, FHotY = hy;
  }
  const QScopedValueRollback guard(FInternalBounds, true);
  setGeometry(FHotX - FHotDeltaX, FHotY - FHotDeltaY, FMarkerBounds.width(), FMarkerBounds.height());
  FMarkerBounds = geometry();
  const QRegion hit = HitRegion();
  if (hit.isEmpty() || hit == QRegion(rect())) clearMask();
  else setMask(hit);
}

QRegion TQyMovable::HitRegion() const { return QRegion(rect()); }

void TQyMovable::SetBounds(int left, int top, int w, int h) {
  if (FInternalBounds || (left == x() && top == y())) return setGeometry(left, top, w, h);
  const QScopedValueRollback guard(FInternalBounds, true);
  setGeometry(left, top, w, h);
  SetHotDelta();
  FHotX = FMarkerBounds.left() + FHotDeltaX;
  FHotY = FMarkerBounds.top() + FHotDeltaY;
  SetRealPoint();
  setGeometry(FMarkerBounds);
}

// ---- caption ----------------------------------------------------------------------------------

bool TQyMovable::CaptionShown() const { return FCaptionVisible && !FCaption.isEmpty(); }

bool TQyMovable::CaptionHasValues() const { return CaptionShown() && FCaption.contains(QLatin1String("<%")); }

float TQyMovable::CaptionB() const {
  return FCaptionBackVisible ? GetFont()->GetSize() * FCaptionBackSpaceToBorder * 0.02f : 0.0f;
}

int TQyMovable::CaptionW() const { return RoundI(FCaptionObject->Width() + 2 * CaptionB()); }

int TQyMovable::CaptionH() const { return RoundI(FCaptionObject->Height() + 2 * CaptionB()); }

QSize TQyMovable::CaptionBoxSize() const {
  return FCaptionVertical ? QSize(CaptionH(), CaptionW()) : QSize(CaptionW(), CaptionH());
}

void TQyMovable::MeasureCaption() {
  FCaptionBackVisible = GetAlpha(FCaptionBackColor) != 0;
  FShadowEffective = FCaptionBackShadow && (GetAlpha(FCaptionBackColor) >= 200 || FCaptionBackGradient->GetVisible());
  FCaptionObject->FillColorOverride = FForeColor;
  try {
    FCaptionObject->ParseForSize(nullptr, this);
  } catch (const std::exception&) {
    // a placeholder that cannot be resolved leaves the last measure; painting shows the text
  }
}

void TQyMovable::ParseCaption() {
  MeasureCaption();
  Modified();
}

// The box (in widget coordinates) holds the caption with CaptionB on every side; a vertical
// caption reads upwards from the box's lower left corner.
void TQyMovable::AnchorCaption(const QRect& box) {
  const float b = CaptionB();
  FCaptionObject->Alignment = TQyContentAlignment::TopLeft;
  FCaptionObject->Angle = FCaptionVertical ? 90.0f : 0.0f;
  FCaptionObject->X = box.left() + b;
  FCaptionObject->Y = FCaptionVertical ? box.bottom() + 1 - b : box.top() + b;
}

void TQyMovable::Relayout() {
  MeasureCaption();
  if (parentWidget() && !FNeedsDelta) UpdatePosition();
  Modified();
}

void TQyMovable::Modified() {
  update();
  if (QWidget* p = parentWidget()) p->update(geometry());
}

void TQyMovable::UpdateBkOnMove() {
  TQyGraph2D* g = Graph();
  if (g && g->GetSmoothingMode() == TQySmoothingMode::None) g->update();
}

QRectF TQyMovable::GetClipRect() const {
  TQyGraph2D* g = Graph();
  const QRectF r = FClipToData && g ? g->DataArea() : QRectF(QPointF(0, 0), ParentSize());
  return r.translated(-x(), -y());
}

// ---- painting ---------------------------------------------------------------------------------

void TQyMovable::PaintBack(QPainter* g) {
  if (!FCaptionBackVisible || !CaptionShown()) return;
  const float w = std::max(1.0f, FCaptionBackFrame->GetWidth());
  const QRectF box(FCaptionRect.left() + w / 2, FCaptionRect.top() + w / 2, FCaptionRect.width() - 1 - w,
                   FCaptionRect.height() - 1 - w);
  g->save();
  if (TQyGraph2D* graph = Graph()) graph->SetHighQuality(g, true);
  const QBrush brush = FCaptionBackGradient->GetVisible() ? FCaptionBackGradient->GetBrush(box)
                                                          : QBrush(TQyColorToQColor(FCaptionBackColor));
  const bool frame = FCaptionBackFrame->GetVisible();
  const QPen pen = frame ? QPen(FCaptionBackFrame->GetPen(box)) : QPen(Qt::NoPen);
  DrawRoundRect(g, brush, pen, box, std::fabs(GetFont()->GetSize() * FCaptionBackRounding * 0.02f),
                FShadowEffective, frame, FCaptionBackRaised, FCaptionBackLowered);
  g->restore();
}

void TQyMovable::PaintCaption(QPainter* g) {
  if (!CaptionShown()) return;
  PaintBack(g);
  FCaptionObject->PaintGr(g);
}

// The base draws the widget's two diagonals; the concrete markers draw themselves.
void TQyMovable::PaintGr(QPainter* g) {
  g->setPen(FLine ? QPen(FLine->GetPen(rect())) : QPen(Qt::black));
  g->drawLine(0, 0, width() - 1, height() - 1);
  g->drawLine(0, height() - 1, width() - 1, 0);
}

void TQyMovable::PaintPass(TQyPaintPass, QPainter* g) {
  try {
    if (FNeedsDelta) {
      Calculate();
      UpdatePosition();
    }
    FClipRect = GetClipRect();
    PaintGr(g);
  } catch (const std::exception&) {
    // painting never raises
  }
}

// A marker under another parent than a graph paints itself.
void TQyMovable::paintEvent(QPaintEvent*) {
  if (Graph()) return;
  QPainter p(this);
  PaintPass(TQyPaintPass::Overlays, &p);
}

// ---- as a part of the graph -------------------------------------------------------------------

void TQyMovable::PlaceInLayout(const QRectF&) {
  FNeedsDelta = false;
  MeasureCaption();
  UpdatePosition();
}

void TQyMovable::GraphChanged(TQyGraphChange change) {
  TQyGraph2D* g = Graph();
  // The next layout places the marker anyway; until then the axes may hold another device's map.
  if (change == TQyGraphChange::Series && g && !g->NeedsCalculate() && !FNeedsDelta) UpdatePosition();
}

// What the marker leaves and what it covers are repainted by the graph.
void TQyMovable::moveEvent(QMoveEvent* e) {
  QWidget::moveEvent(e);
  if (QWidget* p = parentWidget()) {
    p->update(QRect(e->oldPos(), size()));
    p->update(geometry());
  }
}

void TQyMovable::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  if (QWidget* p = parentWidget()) {
    p->update(QRect(pos(), e->oldSize()));
    p->update(geometry());
  }
}
