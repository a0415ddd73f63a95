// Coupled graphs: graphs stacked on one form that use the primary X axis of another graph (the
// master). The shared axis maps every graph's curves, so all of them draw into data areas with
// the same left and right edges: the narrowest span that each graph's own layout allows.
#include "QyAxis.h"
#include "QyGraph2D.h"
#include "QyRounding.h"
#include <limits>

QRectF TQyGraph2D::CoupleDataArea(const QRectF& area) {
  if (FLayoutSize.isValid()) return area; // laid out for another device: this picture stands alone
  FOwnDataArea = area;
  if (TQyGraph2D* master = CoupledMaster()) master->AlignCoupledGraphs();
  return FDataArea;
}

// The master of this graph's group, or nullptr when the graph is coupled to none.
TQyGraph2D* TQyGraph2D::CoupledMaster() {
  CheckCoupled();
  if (FIsMasterGraph) return this;
  if (!FIsChildGraph) return nullptr;
  auto* master = qobject_cast<TQyGraph2D*>(FPrimaryXAxis->parentWidget());
  if (!master) return nullptr;
  master->CheckCoupled();
  return master->FIsMasterGraph ? master : nullptr;
}

// Left edge: the largest of the own lefts; right edge: the smallest of the own rights. Graphs
// not laid out yet take part once they are.
void TQyGraph2D::AlignCoupledGraphs() {
  QList<TQyGraph2D*> group = ChildGraphs();
  group.prepend(this);
  float left = -std::numeric_limits<float>::max(), right = std::numeric_limits<float>::max();
  for (TQyGraph2D* g : group) {
    if (g->FOwnDataArea.width() <= 0) continue;
    left = std::max(left, float(g->FOwnDataArea.x()));
    right = std::min(right, float(g->FOwnDataArea.x() + g->FOwnDataArea.width() - 1));
  }
  if (right <= left) return;
  for (TQyGraph2D* g : group)
    if (g->FOwnDataArea.width() > 0) g->TakeDataEdges(left, right);
}

// Horizontal axes span the common edges; a left axis follows the left edge, a right axis the
// right one, so that each keeps its distance to the data area.
void TQyGraph2D::TakeDataEdges(float left, float right) {
  const float wasLeft = FDataArea.x(), wasRight = FDataArea.x() + FDataArea.width() - 1;
  if (wasLeft == left && wasRight == right) return;
  for (TQyAxis* a : Axes()) {
    if (a->parentWidget() != this || !a->GetAutoSize()) continue;
    if (a->GetHorizontal()) a->PlaceAlong(left - a->x(), right - left);
    else if (a->GetPosition() == TQyAxisPosition::Left) a->move(a->x() + RoundI(left - wasLeft), a->y());
    else a->move(a->x() + RoundI(right - wasRight), a->y());
  }
  FDataArea = QRectF(left, FDataArea.y(), right - left + 1, FDataArea.height());
  DataAreaPlaced(FDataArea);
  SeriesModified();
}
