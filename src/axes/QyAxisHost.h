#pragma once
// What an axis and its layout pass need of the graph they stand in. The graph implements it; the
// axes know the graph only through it.
#include "QyTypes.h"
#include <QObject>
#include <QRectF>
#include <QSize>

class QWidget;
class TQyAxis;
class TQyRichCaptionObject;
class TQyUndoRecorder;
struct TQyLayoutMargins;

class IQyAxisHost {
public:
  virtual ~IQyAxisHost() = default;

  // ---- state
  virtual bool Updating() const = 0;
  virtual bool Printing() const = 0;
  virtual bool InDrag() const = 0;
  // The graph's undo stack, which axes take when they have none.
  virtual TQyUndoRecorder* GetUndoStack() const = 0;
  virtual TQyAxis* GetPrimaryXAxis() const = 0;
  virtual TQyAxis* GetPrimaryYAxis() const = 0;
  virtual bool GetZeroOrigin() const = 0;
  virtual float GetDistanceBorderAxisLeft() const = 0;
  virtual float GetDistanceBorderAxisRight() const = 0;
  virtual float GetDistanceBorderAxisTop() const = 0;
  virtual float GetDistanceBorderAxisBottom() const = 0;
  // The size the layout works for: the control's, or an output device's while rendering to it.
  virtual QSize LayoutSize() const = 0;
  // The graph's primary X axis belongs to another graph (coupled graphs).
  virtual bool IsChildGraph() const = 0;
  // The graph's zoom settings, published as "Auto", "HScrollbarVisible" and "VScrollbarVisible"
  // (a moving-slit axis turns zooming and its scroll bar off); nullptr when it has none.
  virtual QObject* ZoomSettings() const { return nullptr; }
  // A document is being read into the graph: ranges and zoom stages stay as it gives them.
  virtual bool Reading() const { return false; }

  // ---- the title: measured caption object, whether it takes room, distances and alignment
  virtual TQyRichCaptionObject* CaptionObject() const = 0;
  virtual bool TitleShown() const = 0;
  virtual float GetCaptionDistanceBefore() const = 0;
  virtual float GetCaptionDistanceAfter() const = 0;
  virtual TAlignment GetCaptionAlignment() const = 0;

  // ---- what the axes tell
  virtual void SeriesModified() = 0;
  virtual void ZoomReset() = 0;
  virtual void TestPrimaryAxis() = 0;
  // The layout pass writes the data area.
  virtual void SetDataArea(const QRectF& area) = 0;
  // The layout pass has set the data area: a graph coupled to others by a shared X axis lines it
  // up with theirs and answers the area it takes (a graph without partners keeps `area`).
  virtual QRectF CoupleDataArea(const QRectF& area) { return area; }
  // Layout, after the title: the graph's other parts (legends) take their margins here.
  virtual void TakeLayoutMargins(TQyLayoutMargins& margins) = 0;
  // Layout, after the data area is set: the graph's other parts place themselves.
  virtual void DataAreaPlaced(const QRectF& area) = 0;
};
