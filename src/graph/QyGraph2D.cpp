#include "QyGraph2D.h"
#include "QyAxis.h"
#include "QyGraphMouse.h"
#include "QyGraphScroll.h"
#include "QyComponent.h"
#include "QySeries.h"
#include "QyStyles.h"
#include "QyVectors.h"
#include <QGuiApplication>
#include <QPainter>
#include <QChildEvent>
#include <QResizeEvent>

// ---- TQyCustomGraph ---------------------------------------------------------------------------

TQyCustomGraph::TQyCustomGraph(QWidget* parent) : QWidget(parent) {
  FCaptionObject = std::make_unique<TQyRichCaptionObject>([this] { Modified(); }, this);
  GetCaptionFont()->SetUndoCaption(QyRes::GraphCaptionFont);
  FBackgroundGradient = new TQyGradientSettings([this] { update(); }, this);
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  resize(600, 400);
  FPollingThread = std::make_unique<TQyPollingThread>();
  DeferInit(this);
  connect(this, &QObject::objectNameChanged, this, [this] { VariableObjects.Update(); });
}

TQyCustomGraph::~TQyCustomGraph() {
  FDestroying = true;
  StopPolling();
  DeRegisterVariables();
}

// Polling starts when the graph is complete, so that no poll meets half a graph.
void TQyCustomGraph::AfterConstruction() {
  RegisterVariables();
  FPollingThread->start();
}

void TQyCustomGraph::RegisterVariables() {
  RegisterStringVariable(this, "Name", QyText(QyRes::GraphVarName), [this] { return objectName(); });
  RegisterStringVariable(this, "Caption", QyText(QyRes::GraphCaption), [this] { return FCaption; });
}

void TQyCustomGraph::DeRegisterVariables() { RemoveVariablesOfOwner(this); }

TQyFont* TQyCustomGraph::GetCaptionFont() const { return FCaptionObject->Font(); }

// The graph holds the stack; its setting groups and fonts find it through their parent.
void TQyCustomGraph::SetUndoStack(TQyUndoRecorder* stack) { SetUndoRecorder(stack); }

void TQyCustomGraph::SetCaption(QString value) {
  while (!value.isEmpty() && value.back().isSpace()) value.chop(1);
  FCaptionSet = true;
  QyAssign(this, FCaption, value, QyRes::GraphCaption, "Caption", [this] {
    FCaptionObject->SetCaption(FCaption);
    ParseCaption();
    VariableObjects.Update();
  });
}

void TQyCustomGraph::SetCaptionAlignment(TAlignment value) {
  QyAssign(this, FCaptionAlignment, value, QyRes::GraphCaptionAlignment,
           "CaptionAlignment", [this] { Modified(); });
}

// The title font takes the colour too: one entry with both.
void TQyCustomGraph::SetCaptionColor(TQyColor value) {
  QyAssignGrouped(this, FCaptionColor, value, QyRes::GraphCaptionColor, "CaptionColor", [this] {
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
  FPollingThread->OnPoll = [this](QObject* sender) { SeriesPoll(sender); };
  FZoom = new TQyZoomSettings(this);
  new TQyGraphMouse(this);
  RegisterPart(new TQyGraphScrollBars(this));
}

TQyGraph2D::~TQyGraph2D() {
  FDestroying = true;
  StopPolling();
  // Each series lets go of both axes, and so leaves the list.
  for (TQySeries* s : QList<TQySeries*>(FRelatedSeries)) {
    s->SetXAxis(nullptr);
    s->SetYAxis(nullptr);
  }
}

void TQyGraph2D::SetUndoStack(TQyUndoRecorder* stack) {
  TQyCustomGraph::SetUndoStack(stack);
  for (IQyGraphPart* part : Parts()) part->SetUndoStack(stack);
}

void TQyGraph2D::SetPrimaryXAxis(TQyAxis* axis) {
  QyAssign(this, FPrimaryXAxis, axis, QyRes::GraphPrimaryXAxis, "PrimaryXAxis", [this] { Modified(); });
}

void TQyGraph2D::SetPrimaryYAxis(TQyAxis* axis) {
  QyAssign(this, FPrimaryYAxis, axis, QyRes::GraphPrimaryYAxis, "PrimaryYAxis", [this] { Modified(); });
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
  NotifyParts(TQyGraphChange::Series);
  update();
}

// A child graph's legends may list the master's series and the other way round.
void TQyGraph2D::LegendsModified() {
  if (FDestroying) return;
  auto* master = FIsChildGraph && FPrimaryXAxis ? qobject_cast<TQyGraph2D*>(FPrimaryXAxis->parentWidget()) : nullptr;
  if (master && master != this) master->LegendsModified();
  for (TQyGraph2D* g : ChildGraphs()) g->NotifyParts(TQyGraphChange::Legends);
  NotifyParts(TQyGraphChange::Legends);
}

void TQyGraph2D::NotifyParts(TQyGraphChange change) {
  if (FDestroying) return;
  for (IQyGraphPart* part : Parts()) part->GraphChanged(change);
}

void TQyGraph2D::BoundsChanged() {
  if (FPrimaryYAxis) FPrimaryYAxis->CheckResize();
  if (FPrimaryXAxis) FPrimaryXAxis->CheckResize();
  Modified();
}

// ---- the deferred work ------------------------------------------------------------------------

void TQyGraph2D::TestSeriesAndAxis(bool picture) {
  const TQyVectorReadLocks hold = HoldSeriesData();
  for (TQySeries* s : FRelatedSeries)
    if (s->GetAutoUpdate() && s->SeriesVisible()) {
      s->CheckDBVectors();
      try {
        s->Calculate();
      } catch (const EQyException&) {
        if (!picture) throw;
      }
    }
  for (TQyAxis* a : Axes()) a->GetNewRanges();
}

void TQyGraph2D::SeriesPoll(QObject*) {
  if (Updating() || FNeedsCalculate || FRelatedSeries.isEmpty()) return;
  TestSeriesAndAxis();
}

TQyVectorReadLocks TQyGraph2D::HoldSeriesData() const {
  QList<TQyCustomDoubleVector*> vectors;
  for (TQySeries* s : FRelatedSeries) vectors << s->DataVectors();
  return TQyVectorReadLocks(std::move(vectors));
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
  if (!FIsPanning) FCaptionObject->ParseForSize(nullptr, this); // a drag measures no text
  if (FPrimaryXAxis->parentWidget() == this) {
    FPrimaryXAxis->Calculate();
  } else if (FPrimaryYAxis->parentWidget() == this) {
    // A child graph: the master lays out the shared X axis first, then this graph its own axes.
    if (FPrimaryXAxis->NeedsCalc()) FPrimaryXAxis->Calculate();
    FPrimaryYAxis->Calculate();
  }
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

// ---- parts, registry and picking ---------------------------------------------------------------

QList<IQyGraphPart*> TQyGraph2D::Parts() const {
  QList<IQyGraphPart*> out;
  auto add = [&out](QObject* o) {
    if (auto* part = qobject_cast<IQyGraphPart*>(o); part && !out.contains(part)) out.append(part);
  };
  for (TQySeries* s : FRelatedSeries) add(s);
  for (const auto& p : FRegisteredParts) add(p);
  for (QObject* c : children()) add(c);
  return out;
}

void TQyGraph2D::childEvent(QChildEvent* e) {
  TQyCustomGraph::childEvent(e);
  if (FDestroying || !e->child()->isWidgetType()) return;
  if (e->added()) e->child()->installEventFilter(this);
  if (e->added() || e->removed()) Modified();
}

bool TQyGraph2D::eventFilter(QObject* watched, QEvent* e) {
  const bool shown = e->type() == QEvent::Show || e->type() == QEvent::Hide;
  if (shown && !FDestroying && !LayoutInProgress(this) && watched->parent() == this && qobject_cast<IQyGraphPart*>(watched))
    Modified();
  return TQyCustomGraph::eventFilter(watched, e);
}

void TQyGraph2D::RegisterPart(QObject* part) {
  if (!part || FRegisteredParts.contains(part)) return;
  QyEnsureInit(part);
  FRegisteredParts.append(part);
  if (auto* p = qobject_cast<IQyGraphPart*>(part)) p->SetUndoStack(UndoRecorder());
  Modified();
}

void TQyGraph2D::UnregisterPart(QObject* part) {
  FRegisteredParts.removeAll(part);
  FRegisteredParts.removeAll(nullptr);
  if (!FDestroying) Modified();
}

// A part takes part when it says so and, as a widget, was not hidden.
bool TQyGraph2D::PartShown(IQyGraphPart* part) const {
  auto* widget = dynamic_cast<QWidget*>(part);
  if (widget && widget->isHidden() && widget->testAttribute(Qt::WA_WState_ExplicitShowHide)) return false;
  return part->PartVisible();
}

void TQyGraph2D::TakeLayoutMargins(TQyLayoutMargins& margins) {
  const QSizeF client = LayoutSize();
  for (IQyGraphPart* part : Parts())
    if (PartShown(part)) part->TakeMargins(margins, client);
}

void TQyGraph2D::DataAreaPlaced(const QRectF& area) {
  for (IQyGraphPart* part : Parts())
    if (PartShown(part)) part->PlaceInLayout(area);
}

void TQyGraph2D::RegisterSeries(TQySeries* series) {
  QyEnsureInit(series);
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
  const TQyVectorReadLocks hold = HoldSeriesData();
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
