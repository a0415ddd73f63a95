#pragma once
// The legend box: a frame with an optional rich caption and a grid of items, each a small sample
// drawing and a rich caption. What the items are (series, pie segments) is left to the kind of
// legend, which answers the item questions below; the box lays them out in rows or columns,
// sizes itself to them and paints them.
#include "QyGraphPart.h"
#include "QyLocalize.h"
#include "QyProperty.h"
#include "QyRegisters.h"
#include "QyRichLabel.h"
#include "QySeries.h"
#include "QyStyles.h"
#include "QyTypes.h"
#include <QRect>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

namespace QyLegend {
Q_NAMESPACE
enum class TQyItemsOrder { ByColumn, ByRow };
Q_ENUM_NS(TQyItemsOrder)
enum class TQyLegendPosition {
  BottomCenterOfGraph, BottomCenterOfAxis, LeftCenterOfGraph, LeftCenterOfAxis, LeftTopOfAxis,
  TopCenterOfGraph, TopCenterOfAxis, RightCenterOfGraph, RightCenterOfAxis, RightTopOfAxis,
  FreeFloating
};
Q_ENUM_NS(TQyLegendPosition)
// Where the colour of an item's text comes from.
enum class TQyLegendCaptionColorFrom { LegendForeColor, SeriesLineColor, SeriesAreaForeColor };
Q_ENUM_NS(TQyLegendCaptionColorFrom)
} // namespace QyLegend
using QyLegend::TQyItemsOrder;
using QyLegend::TQyLegendCaptionColorFrom;
using QyLegend::TQyLegendPosition;

// What the caption handler gets: the item's text (it may replace it) and its place in the legend.
struct TQyLegendItemCaptionEventArgs {
  QString Caption;
  int Index = 0;
};
// `item` is what the item stands for (a series; nullptr for items that are no objects).
using TQyLegendItemDrawHandler = std::function<void(QObject* item, const TQyLegendItemDrawArgs& args)>;
using TQyLegendItemCaptionEventHandler = std::function<void(QObject* item, TQyLegendItemCaptionEventArgs& args)>;

class TQyCustomLegend : public QWidget, public TQyRecording, public IQyGraphPart, public IQyVariablesUser {
  Q_OBJECT
  Q_INTERFACES(IQyGraphPart)
  QY_RECORDING_SIGNAL(TQyCustomLegend)
  QY_PROPERTY_CUSTOM(TQyRichCaption, Caption);
  QY_PROPERTY(QyTypes::TAlignment, CaptionAlignment, QyRes::LegendCaptionAlignment, Modified()) = TAlignment::Center;
  QY_PROPERTY(TQyColor, CaptionColor, QyRes::LegendCaptionColor, Modified());
  QY_PROPERTY(float, CaptionDistanceAfter, QyRes::LegendCaptionDistanceAfter, Modified()) = 0;
  QY_PROPERTY(float, CaptionDistanceBefore, QyRes::LegendCaptionDistanceBefore, Modified()) = 0;
  QY_PROPERTY(bool, CaptionVisible, QyRes::LegendCaptionVisible, Modified()) = false;
  QY_PROPERTY(TQyColor, BackColor, QyRes::LegendBackColor, Modified()) = 0x00FFFFFFu;
  QY_PROPERTY_CUSTOM(TQyColor, ForeColor);
  QY_PROPERTY_OBJECT(TQyGradientSettings, BackgroundGradient);
  QY_PROPERTY(bool, DropShadow, QyRes::LegendDropShadow, Modified()) = false;
  QY_PROPERTY(bool, BorderLowered, QyRes::LegendBorderLowered, Modified()) = false;
  QY_PROPERTY_CUSTOM(bool, BorderRaised) = false;
  QY_PROPERTY(int, Rows, QyRes::LegendRows, Modified()) = 1;
  QY_PROPERTY(int, Columns, QyRes::LegendColumns, Modified()) = 1;
  QY_PROPERTY_OBJECT(TQyLineSettings, Frame);
  QY_PROPERTY(float, ItemHeight, QyRes::LegendItemHeight, Modified()) = 0;
  QY_PROPERTY(float, ItemWidth, QyRes::LegendItemWidth, Modified()) = 80.0f;
  QY_PROPERTY(QyLegend::TQyItemsOrder, ItemsOrder, QyRes::LegendItemsOrder, Modified()) = TQyItemsOrder::ByColumn;
  QY_PROPERTY(float, DistanceItemCaption, QyRes::LegendDistanceItemCaption, Modified()) = 4.0f;
  QY_PROPERTY(float, DistanceBetweenLines, QyRes::LegendDistanceBetweenLines, Modified()) = 3.0f;
  QY_PROPERTY(float, DistanceBetweenColumns, QyRes::LegendDistanceBetweenColumns, Modified()) = 10.0f;
  QY_PROPERTY(float, DistanceToBorder, QyRes::LegendDistanceToBorder, Modified()) = 8.0f;
  QY_PROPERTY(float, CornerRounding, QyRes::LegendCornerRounding, Modified()) = 0;
  QY_PROPERTY_CUSTOM(bool, AutoSize) = true;
  QY_PROPERTY_CUSTOM(bool, Visible) = true;
  QY_PROPERTY_OBJECT(TQyFont, Font);
  Q_PROPERTY(TQyFont* CaptionFont READ GetCaptionFont)
  // The place in the parent, as a drag or a placement sets it (undo writes it back).
  Q_PROPERTY(int Left READ x WRITE SetLeft)
  Q_PROPERTY(int Top READ y WRITE SetTop)

public:
  explicit TQyCustomLegend(QWidget* parent = nullptr);
  ~TQyCustomLegend() override;

  TQyFont* GetCaptionFont() const;
  TQyRichCaptionObject* CaptionObject() const { return FCaptionObject.get(); }
  QString CaptionAsString() const { return FCaption; }
  void SetLeft(int left) { move(left, y()); }
  void SetTop(int top) { move(x(), top); }

  TQyLegendItemDrawHandler OnDrawLegendItem;
  TQyLegendItemCaptionEventHandler OnGetLegendItemCaption;

  // ---- the items: what a kind of legend lists
  // Number of items, after the last NewList.
  virtual int ItemCount() const = 0;
  // The item's text before OnGetLegendItemCaption sees it.
  virtual QString ItemCaption(int i) const = 0;
  // The least height the item's sample needs (0: any).
  virtual int ItemMinHeight(int i) const { (void)i; return 0; }
  // Draws the item's sample into args.Rect (the painter is clipped to it).
  virtual void DrawItem(int i, const TQyLegendItemDrawArgs& args) = 0;
  // What the item stands for, handed to the events; nullptr when it is no object.
  virtual QObject* ItemObject(int i) const { (void)i; return nullptr; }
  // Whether the item is drawn at paint time.
  virtual bool ItemShown(int i) const { (void)i; return true; }
  // The colour of the item's text (0: the font's).
  virtual TQyColor ItemTextColor(int i) const { (void)i; return 0; }
  // The index the draw handler gets for the item (pie legends hand the value index).
  virtual int ItemEventIndex(int i) const { return i; }

  // ---- the deferred work
  // Something that changes the items or their layout: rebuild before the next picture.
  virtual void Modified();
  // Rebuilds items, heights and places when they are stale (and the items can be had).
  virtual void PreparePaint();
  // Paints frame, caption and items in the legend's own coordinates, on any painter.
  void PaintGr(QPainter* graphics);
  // Repaints where the legend is shown: through the graph that paints it, or itself.
  void DoInvalidate();
  bool ListChanged() const { return FListChanged; }
  // A registered value one of the captions shows has changed.
  void VariablesChanged() override { Modified(); }

  // ---- as a part of a graph: painted in the legends pass
  TQyPaintPasses PaintPasses() const override { return QyPass(TQyPaintPass::Legends); }
  void PaintPass(TQyPaintPass pass, QPainter* graphics) override;
  bool PartVisible() const override { return FVisible; }
  void SetUndoStack(TQyUndoRecorder* stack) override { SetUndoRecorder(stack); }

  // ---- the layout, read by tests and the settings
  float EffectiveItemHeight() const { return FEffectiveItemHeight; }
  int NeededWidth() const { return FNeededWidth; }
  int NeededHeight() const { return FNeededHeight; }
  const std::vector<QRect>& ItemRects() const { return FItemRects; }
  const TQyRichCaptionObjects& ItemCaptions() const { return FItemCaptions; }
  // A drop shadow takes room only where it shows: on an opaque enough background or a gradient.
  bool ShadowEffective() const;

protected:
  // Takes the items anew (the kind of legend's list); the box builds their captions after it.
  virtual void CollectItems() = 0;
  // Whether the items can be had now (a graph that is not updating, say).
  virtual bool CanRebuild() const { return true; }
  // Item list, item height, places, text colours: the rebuild in its order.
  virtual void NewList();
  virtual void CheckItemHeight();
  void SetItemPositions();
  void SetColors();
  virtual void PaintItems(QPainter* graphics);
  // The measured height of a line of text in the items' font.
  int LineHeight() const;
  // Text colours are handed out at every paint: colours of series follow at once.
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  // A graph that paints the legend, or nullptr when the legend paints itself.
  QWidget* PaintingParent() const;

  std::unique_ptr<TQyRichCaptionObject> FCaptionObject;
  TQyRichCaptionObjects FItemCaptions;
  std::vector<QRect> FItemRects;
  float FEffectiveItemHeight = 0;
  int FNeededWidth = 0, FNeededHeight = 0;
  bool FListChanged = true;
  bool FSettingBounds = false;
  bool FDragging = false;
  qreal FMeasuredDpi = 0; // the resolution the captions were measured for

private:
  void ParseCaption();
  void LayOutRows(int top, float& width, float& height);
  void LayOutColumns(int top, float& width, float& height);
  int TextWidth(int i) const;
  int TextHeight(int i) const;
  void PlaceItem(int i, float x, float y, int h);
  void ShiftItems(int from, int to, int dx);
  void PaintBox(QPainter* g);
};
