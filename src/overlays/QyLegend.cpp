// The legend of a graph: its items are the graph's series; on a side of the graph it takes room
// in the layout and centres along that side.
#include "QyLegend.h"
#include "QyGraph2D.h"
#include "QyIO.h"
#include "QyRounding.h"
#include "QySeries.h"

namespace {
enum class TSide { Bottom, Left, Top, Right, None };

TSide SideOf(TQyLegendPosition p) {
  using P = TQyLegendPosition;
  switch (p) {
  case P::BottomCenterOfGraph: case P::BottomCenterOfAxis: return TSide::Bottom;
  case P::LeftCenterOfGraph: case P::LeftCenterOfAxis: case P::LeftTopOfAxis: return TSide::Left;
  case P::TopCenterOfGraph: case P::TopCenterOfAxis: return TSide::Top;
  case P::RightCenterOfGraph: case P::RightCenterOfAxis: case P::RightTopOfAxis: return TSide::Right;
  default: return TSide::None;
  }
}

bool Across(TSide side) { return side == TSide::Bottom || side == TSide::Top; }

// A series that is shown, or that a shown series merges its legend item into.
bool Listed(TQySeries* s, const QList<TQySeries*>& all) {
  if (!s->GetIncludeInLegend()) return false;
  if (s->GetVisible()) return true;
  return std::any_of(all.begin(), all.end(), [s](TQySeries* o) { return o->GetVisible() && o->GetMergeLegendItemWith() == s; });
}

void AppendListed(QList<QPointer<TQySeries>>& list, const TQyGraph2D* graph) {
  const QList<TQySeries*>& all = graph->RelatedSeries();
  for (TQySeries* s : all)
    if (Listed(s, all) && !list.contains(s)) list.append(s);
}
} // namespace

TQyLegend::TQyLegend(QWidget* parent) : TQyCustomLegend(parent) {}

TQyLegend::~TQyLegend() { FDestroying = true; }

void TQyLegend::SetGraph(TQyGraph2D* graph) {
  TQyGraph2D* old = FGraph;
  QyAssign(this, FGraph, graph, QyRes::LegendGraph, "Graph", [&] {
    if (old) old->UnregisterPart(this);
    if (FGraph) FGraph->RegisterPart(this); // which hands its undo stack over
    Modified();
  });
}

// Placed legends force the order that fits their side; leaving the free place records the place
// and order it had, with the position, as one entry.
void TQyLegend::SetPosition(TQyLegendPosition value) {
  if (value == FPosition) return;
  const bool leaving = FPosition == TQyLegendPosition::FreeFloating;
  TQyUndoGroup group(leaving ? UndoRecorder() : nullptr, QyRes::LegendPosition);
  if (leaving)
    for (const char* name : {"Left", "Top", "ItemsOrder"}) RecordChange(this, QyRes::LegendPosition, name);
  QyAssign(this, FPosition, value, QyRes::LegendPosition, "Position", [this] {
    const TSide side = SideOf(FPosition);
    if (side != TSide::None) FItemsOrder = Across(side) ? TQyItemsOrder::ByRow : TQyItemsOrder::ByColumn;
    Modified();
    if (FGraph) FGraph->Modified();
  });
}

void TQyLegend::Modified() {
  FListChanged = true;
  if (FGraph && parentWidget() == FGraph && FPosition != TQyLegendPosition::FreeFloating) FGraph->Modified();
  DoInvalidate();
}

void TQyLegend::GraphChanged(TQyGraphChange change) {
  if (change == TQyGraphChange::Legends) Modified();
}

// ---- the items ---------------------------------------------------------------------------------

QList<QPointer<TQySeries>> TQyLegend::CurrentSeries() const {
  QList<QPointer<TQySeries>> list;
  if (!FGraph) return list;
  const QList<TQySeries*>& own = FGraph->RelatedSeries();
  for (const QString& ref : FItemsOrderList) {
    auto* s = qobject_cast<TQySeries*>(GetComponentFromRef(ref));
    if (s && own.contains(s) && s->GetIncludeInLegend() && !list.contains(s)) list.append(s);
  }
  // A child graph lists the series of the graph whose X axis it shares.
  const TQyGraph2D* source = FGraph;
  if (FGraph->IsChildGraph() && FGraph->GetPrimaryXAxis())
    if (auto* master = qobject_cast<TQyGraph2D*>(FGraph->GetPrimaryXAxis()->parentWidget())) source = master;
  AppendListed(list, source);
  for (const TQyGraph2D* child : source->ChildGraphs()) AppendListed(list, child);
  return list;
}

void TQyLegend::CollectItems() { FItemSeries = CurrentSeries(); }

bool TQyLegend::CanRebuild() const { return FGraph && !FGraph->Updating(); }

// Series that came, went, were hidden or re-layered since the last build rebuild the items.
void TQyLegend::PreparePaint() {
  if (FDestroying) return;
  if (!FGraph)
    if (auto* graph = qobject_cast<TQyGraph2D*>(parentWidget())) FGraph = graph;
  if (FGraph && !FListChanged && CurrentSeries() != FItemSeries) FListChanged = true;
  TQyCustomLegend::PreparePaint();
}

void TQyLegend::CheckItemHeight() {
  TQyCustomLegend::CheckItemHeight();
  if (!FItemSeries.isEmpty() || !FGraph) return;
  for (TQySeries* s : FGraph->RelatedSeries())
    if (s->GetIncludeInLegend()) FEffectiveItemHeight = std::max<float>(FEffectiveItemHeight, s->GetItemHeight());
}

QString TQyLegend::ItemCaption(int i) const {
  TQySeries* s = FItemSeries.value(i);
  return s ? s->GetCaption() : QString();
}

int TQyLegend::ItemMinHeight(int i) const {
  TQySeries* s = FItemSeries.value(i);
  return s && s->GetIncludeInLegend() ? s->GetItemHeight() : 0;
}

bool TQyLegend::ItemShown(int i) const {
  TQySeries* s = FItemSeries.value(i);
  return s && s->GetIncludeInLegend();
}

void TQyLegend::DrawItem(int i, const TQyLegendItemDrawArgs& args) {
  if (TQySeries* s = FItemSeries.value(i)) s->DrawMergedItems(args);
}

TQyColor TQyLegend::ItemTextColor(int i) const {
  auto* s = qobject_cast<TQyLineSeries*>(FItemSeries.value(i).data());
  if (!s) return 0;
  switch (FLegendCaptionColorFrom) {
  case TQyLegendCaptionColorFrom::SeriesLineColor: return s->GetLine()->GetColor();
  case TQyLegendCaptionColorFrom::SeriesAreaForeColor: return s->GetArea()->GetForeColor();
  default: return 0;
  }
}

// ---- placement on the graph --------------------------------------------------------------------

TQyGraph2D* TQyLegend::LayoutGraph() const { return qobject_cast<TQyGraph2D*>(parentWidget()); }

bool TQyLegend::Placed() const {
  const bool hidden = isHidden() && testAttribute(Qt::WA_WState_ExplicitShowHide);
  return LayoutGraph() && FVisible && !hidden && SideOf(FPosition) != TSide::None;
}

QList<TQyLegend*> TQyLegend::SideGroup() const {
  QList<TQyLegend*> group;
  const TSide side = SideOf(FPosition);
  for (QObject* c : parentWidget()->children())
    if (auto* l = qobject_cast<TQyLegend*>(c); l && l->Placed() && SideOf(l->FPosition) == side) group.append(l);
  return group;
}

// Legends on one side lie on top of one another: the first of them sets all their places across
// the side and takes the largest of their extents as margin.
void TQyLegend::TakeMargins(TQyLayoutMargins& margins, QSizeF client) {
  FLayoutClient = client;
  if (!Placed()) return;
  const QList<TQyLegend*> group = SideGroup();
  if (group.value(0) != this) return;
  int extent = 0;
  const bool across = Across(SideOf(FPosition));
  for (TQyLegend* l : group) {
    l->FLayoutClient = client;
    l->PreparePaint();
    extent = std::max(extent, across ? l->height() : l->width());
    l->PlaceAcross(margins, client);
  }
  switch (SideOf(FPosition)) {
  case TSide::Bottom: margins.Bottom += extent; break;
  case TSide::Left: margins.Left += extent; break;
  case TSide::Top: margins.Top += extent; break;
  default: margins.Right += extent; break;
  }
}

void TQyLegend::PlaceAcross(const TQyLayoutMargins& m, QSizeF client) {
  switch (SideOf(FPosition)) {
  case TSide::Bottom: move(x(), RoundI(client.height() - height() - m.Bottom)); break;
  case TSide::Left: move(RoundI(m.Left), y()); break;
  case TSide::Top: move(x(), RoundI(m.Top)); break;
  default: move(RoundI(client.width() - width() - m.Right), y()); break;
  }
}

// Along the side: centred on the graph or on the data area, or level with the data area's top.
void TQyLegend::PlaceInLayout(const QRectF& area) {
  if (!Placed()) return;
  using P = TQyLegendPosition;
  const int w = width(), h = height();
  const int graphWidth = RoundI(FLayoutClient.width()), graphHeight = RoundI(FLayoutClient.height());
  switch (FPosition) {
  case P::BottomCenterOfGraph: case P::TopCenterOfGraph: move((graphWidth - w) / 2, y()); break;
  case P::BottomCenterOfAxis: case P::TopCenterOfAxis:
    move(RoundI(area.x()) + RoundI(area.width() - w) / 2, y());
    break;
  case P::LeftCenterOfGraph: case P::RightCenterOfGraph: move(x(), (graphHeight - h) / 2); break;
  case P::LeftCenterOfAxis: case P::RightCenterOfAxis: move(x(), RoundI((area.height() - h) / 2 + area.y())); break;
  case P::LeftTopOfAxis: case P::RightTopOfAxis: move(x(), RoundI(area.y())); break;
  default: break;
  }
}
