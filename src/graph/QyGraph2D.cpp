#include "QyGraph2D.h"
#include "QyAxis.h"
#include "QyComponent.h"
#include "QySeries.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include <QGuiApplication>
#include <QPainter>
#include <QResizeEvent>

// ---- TQyCustomGraph ---------------------------------------------------------------------------

TQyCustomGraph::TQyCustomGraph(QWidget* parent) : QWidget(parent) {
  FCaptionObject = std::make_unique<TQyRichCaptionObject>([this] { Modified(); });
  FBackgroundGradient = new TQyGradientSettings([this] { update(); }, this);
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  resize(600, 400);
  RegisterVariables();
  connect(this, &QObject::objectNameChanged, this, [this] { VariableObjects.Update(); });
}

TQyCustomGraph::~TQyCustomGraph() {
  FDestroying = true;
  DeRegisterVariables();
}

void TQyCustomGraph::RegisterVariables() {
  RegisterStringVariable(this, "Name", QyText(QyRes::GraphVarName), [this] { return objectName(); });
  RegisterStringVariable(this, "Caption", QyText(QyRes::GraphCaption), [this] { return FCaption; });
}

void TQyCustomGraph::DeRegisterVariables() { RemoveVariablesOfOwner(this); }

TQyFont* TQyCustomGraph::GetCaptionFont() const { return FCaptionObject->Font(); }

void TQyCustomGraph::SetUndoStack(TQyUndoRecorder* stack) {
  SetUndoRecorder(stack);
  FBackgroundGradient->SetUndoStack(stack);
  GetCaptionFont()->SetUndoStack(stack);
}

void TQyCustomGraph::SetCaption(QString value) {
  while (!value.isEmpty() && value.back().isSpace()) value.chop(1);
  FCaptionSet = true;
  QyAssign(this, UndoRecorder(), FCaption, value, QyRes::GraphCaption, "Caption", [this] {
    FCaptionObject->SetCaption(FCaption);
    ParseCaption();
    VariableObjects.Update();
  });
}

void TQyCustomGraph::SetCaptionAlignment(TAlignment value) {
  QyAssign(this, UndoRecorder(), FCaptionAlignment, value, QyRes::GraphCaptionAlignment,
           "CaptionAlignment", [this] { Modified(); });
}

void TQyCustomGraph::SetCaptionColor(TQyColor value) {
  QyAssign(this, UndoRecorder(), FCaptionColor, value, QyRes::GraphCaptionColor, "CaptionColor", [this] {
    GetCaptionFont()->SetFillColor(FCaptionColor);
    update();
  });
}

void TQyCustomGraph::ParseCaption() {
  FCaptionObject->ParseForSize(nullptr, this);
  Modified();
}

void TQyCustomGraph::EndUpdate() {
  if (FUpdateCount > 0) --FUpdateCount;
  if (FUpdateCount == 0) update();
}

void TQyCustomGraph::SetHighQuality(QPainter* g, bool on) const {
  const bool aa = on && (FSmoothingMode == TQySmoothingMode::AntiAlias ||
                         FSmoothingMode == TQySmoothingMode::HighQuality);
  g->setRenderHint(QPainter::Antialiasing, aa);
}

void TQyCustomGraph::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  if (e->size() != e->oldSize()) BoundsChanged();
}

// ---- TQyGraph2D -------------------------------------------------------------------------------

TQyGraph2D::TQyGraph2D(QWidget* parent) : TQyCustomGraph(parent) {
  auto look = [this] { update(); };
  FDataAreaFrame = new TQyLineSettings(look, this);
  FDataAreaFrame->SetVisible(false);
  FDataAreaFrame->SetColor(0xFF000000);
  FDataAreaGradient = new TQyGradientSettings(look, this);
  const struct { TQyLineSettings** grid; TQyColor color; } grids[] = {
      {&FMajorGridHorizontal, 0xFF008000}, {&FMinorGridHorizontal, 0xFF808080},
      {&FMajorGridVertical, 0xFF008000}, {&FMinorGridVertical, 0xFF808080}};
  for (const auto& g : grids) {
    *g.grid = new TQyLineSettings(look, this);
    (*g.grid)->SetVisible(false);
    (*g.grid)->SetColor(g.color);
  }
  GetCaptionFont()->OnChange = [this] { Modified(); };
}

TQyGraph2D::~TQyGraph2D() {
  FDestroying = true;
  for (TQySeries* s : QList<TQySeries*>(FRelatedSeries)) s->SetXAxis(nullptr); // each leaves the list
}

void TQyGraph2D::SetUndoStack(TQyUndoRecorder* stack) {
  TQyCustomGraph::SetUndoStack(stack);
  for (TQyStyleObject* s : std::initializer_list<TQyStyleObject*>{
           FDataAreaFrame, FDataAreaGradient, FMajorGridHorizontal, FMinorGridHorizontal,
           FMajorGridVertical, FMinorGridVertical})
    s->SetUndoStack(stack);
  for (TQySeries* s : FRelatedSeries) s->SetUndoStack(stack);
  for (TQyAxis* a : Axes()) a->SetUndoStack(stack);
}

void TQyGraph2D::SetPrimaryXAxis(TQyAxis* axis) {
  if (FPrimaryXAxis == axis) return;
  QyRecordChange(UndoRecorder(), this, QyRes::GraphPrimaryXAxis, "PrimaryXAxis");
  FPrimaryXAxis = axis;
  Modified();
}

void TQyGraph2D::SetPrimaryYAxis(TQyAxis* axis) {
  if (FPrimaryYAxis == axis) return;
  QyRecordChange(UndoRecorder(), this, QyRes::GraphPrimaryYAxis, "PrimaryYAxis");
  FPrimaryYAxis = axis;
  Modified();
}

// ---- flags ------------------------------------------------------------------------------------

void TQyGraph2D::Modified() {
  FNeedsCalculate = true;
  for (QObject* c : children())
    if (auto* a = qobject_cast<TQyAxis*>(c)) {
      a->Modified();
      break;
    }
  update();
}

void TQyGraph2D::SeriesModified() {
  if (FDestroying) return;
  for (TQySeries* s : FRelatedSeries) s->PointsModified();
  update();
}

void TQyGraph2D::LegendsModified() {
  if (FDestroying) return;
  // Legends hook in here once they exist.
}

void TQyGraph2D::BoundsChanged() {
  if (FPrimaryYAxis) FPrimaryYAxis->CheckResize();
  if (FPrimaryXAxis) FPrimaryXAxis->CheckResize();
  Modified();
}

// ---- the deferred work ------------------------------------------------------------------------

void TQyGraph2D::TestSeriesAndAxis() {
  for (TQySeries* s : FRelatedSeries)
    if (s->GetAutoUpdate() && s->SeriesVisible()) {
      s->CheckDBVectors();
      s->Calculate();
    }
  for (TQyAxis* a : Axes()) a->GetNewRanges();
}

TQyAxis* TQyGraph2D::MakePrimaryAxis(const QString& base, const char* caption, TQyAxisPosition position) {
  QObject* owner = ComponentOwner(this);
  auto* axis = new TQyAxis(this);
  axis->setObjectName(UniqueName(owner ? owner : parent(), base));
  axis->SetPosition(position);
  axis->SetAutoSize(true);
  axis->SetCaption(QyText(caption));
  axis->SetUndoStack(UndoRecorder());
  axis->show();
  return axis;
}

void TQyGraph2D::TestPrimaryAxis() {
  if (FCreatingPrimaryAxes || FDestroying) return;
  FCreatingPrimaryAxes = true;
  if (!FPrimaryXAxis) {
    FPrimaryXAxis = MakePrimaryAxis("XAxis", QyRes::GraphDefaultXCaption, TQyAxisPosition::Bottom);
    FPrimaryXAxis->resize(width(), FPrimaryXAxis->height());
  }
  if (!FPrimaryYAxis) {
    FPrimaryYAxis = MakePrimaryAxis("YAxis", QyRes::GraphDefaultYCaption, TQyAxisPosition::Left);
    FPrimaryYAxis->resize(FPrimaryYAxis->width(), height());
  }
  if (FPrimaryYAxis->GetHorizontal()) FPrimaryYAxis->SetPosition(TQyAxisPosition::Left);
  if (!FPrimaryXAxis->GetHorizontal()) FPrimaryXAxis->SetPosition(TQyAxisPosition::Bottom);
  FCreatingPrimaryAxes = false;
}

void TQyGraph2D::Calculate() {
  if (Updating() || !FPrimaryXAxis || !FPrimaryYAxis) return;
  CheckCoupled();
  SortLayers();
  FCaptionObject->ParseForSize(nullptr, this);
  if (FPrimaryXAxis->parentWidget() == this) FPrimaryXAxis->Calculate();
  for (TQySeries* s : FRelatedSeries) s->TestVisibleChanged();
  FNeedsCalculate = false;
}

// The axes themselves are always read from the children (Axes()); this decides the roles.
void TQyGraph2D::CheckCoupled() {
  FChildGraphs.clear();
  FIsMasterGraph = FIsChildGraph = false;
  if (FPrimaryXAxis && FPrimaryXAxis->parentWidget() != this) {
    FIsChildGraph = true; // the primary X axis belongs to another graph
    return;
  }
  QObject* owner = ComponentOwner(this);
  if (!owner) owner = parent();
  if (!owner) return;
  for (TQyGraph2D* g : owner->findChildren<TQyGraph2D*>())
    if (g != this && g->FPrimaryXAxis && g->FPrimaryXAxis == FPrimaryXAxis) {
      FIsMasterGraph = true;
      FChildGraphs.append(g);
    }
}

void TQyGraph2D::RepaintChildGraphs() {
  if (FIsChildGraph && FPrimaryXAxis)
    if (auto* master = qobject_cast<TQyGraph2D*>(FPrimaryXAxis->parentWidget())) {
      master->RepaintChildGraphs();
      return;
    }
  for (const auto& g : FChildGraphs)
    if (g) g->repaint();
  repaint();
}

// Selection sort by Layer that keeps equal layers in their order, then renumbering from 0.
void TQyGraph2D::SortLayers() {
  const int n = FRelatedSeries.size();
  for (int i = 0; i < n - 1; ++i) {
    int best = i;
    for (int k = i + 1; k < n; ++k)
      if (FRelatedSeries[k]->GetLayer() < FRelatedSeries[best]->GetLayer()) best = k;
    if (best != i) FRelatedSeries.move(best, i); // a move, not a swap: equal layers keep order
  }
  for (int i = 0; i < n; ++i) FRelatedSeries[i]->RenumberLayer(i);
}

// ---- registry and picking ---------------------------------------------------------------------

void TQyGraph2D::RegisterSeries(TQySeries* series) {
  if (!FRelatedSeries.contains(series)) {
    series->RenumberLayer(FRelatedSeries.size());
    FRelatedSeries.append(series);
  }
}

void TQyGraph2D::UnregisterSeries(TQySeries* series) {
  FRelatedSeries.removeAll(series);
  if (!FDestroying) {
    SeriesModified();
    LegendsModified();
  }
}

QList<TQyAxis*> TQyGraph2D::Axes() const {
  QList<TQyAxis*> out;
  for (QObject* c : children())
    if (auto* a = qobject_cast<TQyAxis*>(c)) out.append(a);
  if (FPrimaryXAxis && !out.contains(FPrimaryXAxis.data())) out.append(FPrimaryXAxis.data());
  return out;
}

QList<TQyGraph2D*> TQyGraph2D::ChildGraphs() const {
  QList<TQyGraph2D*> out;
  for (const auto& g : FChildGraphs)
    if (g) out.append(g);
  return out;
}

TQyFindSeriesPointResult TQyGraph2D::FindSeriesPoint(float x, float y) {
  TQyFindSeriesPointResult r;
  for (int k = FRelatedSeries.size() - 1; k >= 0; --k) {
    TQySeries* s = FRelatedSeries[k];
    const int i = s->FindPoint(x, y);
    if (i < 0) continue;
    r.Found = true;
    r.Series = s;
    if (s->IsFunctionSeries()) {
      r.Index = -1;
      r.X = s->GetXAxis()->WorldToNumber(x);
      r.Y = s->GetY(r.X);
    } else {
      r.Index = i;
      r.X = s->TransformX(s->GetXData()->GetValue(i), i);
      r.Y = s->TransformY(s->GetYData()->GetValue(i), i);
    }
    break;
  }
  return r;
}

QList<TQyCustomDoubleVector*> TQyGraph2D::GetVectorsList() const {
  QList<TQyCustomDoubleVector*> out;
  for (TQySeries* s : FRelatedSeries) {
    if (s->objectName().isEmpty()) continue;
    for (TQyCustomDoubleVector* v : {s->GetXData(), s->GetYData()})
      if (qobject_cast<TQyDoubleVector*>(v) && !out.contains(v)) out.append(v);
  }
  return out;
}

// ---- what the layout pass asks of the graph ----------------------------------------------------

void TQyGraph2D::ZoomReset() {
  for (TQyAxis* a : Axes()) a->RangeModified();
  SeriesModified();
}

// The graph's other parts (legends, scroll bars) take their margins here.
void TQyGraph2D::TakeLayoutMargins(TQyLayoutMargins&) {}

// The graph's other parts place themselves by the data area here.
void TQyGraph2D::DataAreaPlaced(const QRectF&) {}
