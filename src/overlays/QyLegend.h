#pragma once
// The legend of a graph: one item per series, placed on a side of the graph (the layout makes
// room for it) or floating freely where the user drags it.
#include "QyCustomLegend.h"
#include "QyGraph2D.h"
#include "QyStringFunctions.h"
#include <QPointer>
#include <QStringList>


class TQyLegend : public TQyCustomLegend {
  Q_OBJECT
  Q_PROPERTY(TQyGraph2D* Graph READ GetGraph WRITE SetGraph)
  QY_PROPERTY(QStringList, ItemsOrderList, QyRes::LegendItemsOrderList, Modified());
  QY_PROPERTY_CUSTOM(QyLegend::TQyLegendPosition, Position) = TQyLegendPosition::FreeFloating;
  QY_PROPERTY(QyShift::TShiftState, StartFreeFloatingMovingKeys, nullptr, (void)0) = QyShift::ssLeft;
  // Kept in documents, set by the settings; no undo entry of its own.
  QY_PROPERTY(QyLegend::TQyLegendCaptionColorFrom, LegendCaptionColorFrom, nullptr, DoInvalidate()) =
      TQyLegendCaptionColorFrom::LegendForeColor;
  QY_DOCUMENT_MEMBERS // the record stands in QyLegendRecord.cpp

public:
  explicit TQyLegend(QWidget* parent = nullptr);
  ~TQyLegend() override;

  TQyGraph2D* GetGraph() const { return FGraph; }
  void SetGraph(TQyGraph2D* graph);

  std::function<void(QObject* sender)> OnStartFreeFloating;

  // The series that form the items, in item order.
  const QList<QPointer<TQySeries>>& ItemSeries() const { return FItemSeries; }
  bool Dragging() const { return FDragging; }

  // ---- the items: the series
  int ItemCount() const override { return int(FItemSeries.size()); }
  QString ItemCaption(int i) const override;
  int ItemMinHeight(int i) const override;
  void DrawItem(int i, const TQyLegendItemDrawArgs& args) override;
  QObject* ItemObject(int i) const override { return FItemSeries.value(i).data(); }
  bool ItemShown(int i) const override;
  TQyColor ItemTextColor(int i) const override;

  void Modified() override;
  void PreparePaint() override;

  // ---- as a part of its graph: a legend on a side takes margin and centres along it
  void TakeMargins(TQyLayoutMargins& margins, QSizeF client) override;
  void PlaceInLayout(const QRectF& dataArea) override;
  void GraphChanged(TQyGraphChange change) override;

protected:
  void CollectItems() override;
  bool CanRebuild() const override;
  void CheckItemHeight() override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

private:
  // The series that the items list now: the order list, then the shown series of the graph
  // (a child graph's master's) and of its child graphs.
  QList<QPointer<TQySeries>> CurrentSeries() const;
  // The graph this legend lies on and takes room from, or nullptr.
  TQyGraph2D* LayoutGraph() const;
  bool Placed() const;
  // The placed legends of the same graph on the side of this one, in child order.
  QList<TQyLegend*> SideGroup() const;
  void PlaceAcross(const TQyLayoutMargins& margins, QSizeF client);

  QPointer<TQyGraph2D> FGraph;
  QList<QPointer<TQySeries>> FItemSeries;
  QSizeF FLayoutClient;
  QPoint FDragStart;
};
