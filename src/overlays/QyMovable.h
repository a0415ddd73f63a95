#pragma once
// The base of everything the user drags over a graph: a child widget that stands at a point in
// axis units, follows its axes, can be dragged, may snap to the nearest data point of a series,
// and carries an optional rich caption on a box. The graph paints it in its overlay pass (so
// images and print show it); the widget itself only takes the mouse and draws nothing.
//
// Two coordinate systems are kept in step. The position in axis units (RealX, RealY; pixels where
// there is no axis) is the truth; the hot spot in pixels of the parent (HotX, HotY) is derived
// from it whenever the axes change (UpdatePosition), and the widget's rectangle from the hot spot
// and the hot delta (the hot spot inside the widget). A drag goes the other way: the mouse moves
// the hot spot and SetRealPoint (or the snapping search) takes the axis units from it.
#include "QyMovableCursor.h"
#include <QPointer>
#include <QWidget>
#include <QyAxis.h>
#include <QyComponent.h>
#include <QyGraphPart.h>
#include <QyLocalize.h>
#include <QyProperty.h>
#include <QyRegisters.h>
#include <QyRichLabel.h>
#include <QySeries.h>
#include <QyStringFunctions.h>
#include <QyStyles.h>
#include <functional>
#include <memory>

class TQyGraph2D;

using TNotifyEvent = std::function<void(QObject* sender)>;

class TQyMovable : public QWidget, public TQyRecording, public TQyDeferredInit, public IQyGraphPart,
                   public IQyVariablesUser {
  Q_OBJECT
  Q_INTERFACES(IQyGraphPart)
  QY_RECORDING_SIGNAL(TQyMovable)
  QY_PROPERTY_CUSTOM(TQyRichCaption, Caption);
  QY_PROPERTY(bool, CaptionVisible, QyRes::MarkerCaptionVisible, Relayout()) = false;
  QY_PROPERTY(bool, CaptionVertical, QyRes::MarkerCaptionVertical, Relayout()) = false;
  QY_PROPERTY(int, CaptionDeltaX, QyRes::MarkerCaptionDeltaX, Relayout()) = 0;
  QY_PROPERTY(int, CaptionDeltaY, QyRes::MarkerCaptionDeltaY, Relayout()) = 0;
  QY_PROPERTY_CUSTOM(TQyColor, ForeColor) = 0xFF000000u;
  QY_PROPERTY_CUSTOM(bool, ClipToData) = true;
  QY_PROPERTY(bool, MouseDrag, nullptr, (void)0) = true;
  QY_PROPERTY(QyShift::TShiftState, StartMovingKeys, nullptr, (void)0) = QyShift::ssLeft;
  QY_PROPERTY(bool, SnapToSeriesValues, nullptr, (void)0) = false;
  QY_PROPERTY(bool, SnapToFunctions, QyRes::MarkerSnapToFunctions, (void)0) = true;
  QY_PROPERTY(TQyColor, CaptionBackColor, QyRes::MarkerCaptionBackColor, Relayout()) = QyTransparent;
  QY_PROPERTY_OBJECT(TQyGradientSettings, CaptionBackGradient);
  QY_PROPERTY_OBJECT(TQyLineSettings, CaptionBackFrame);
  QY_PROPERTY(bool, CaptionBackRaised, QyRes::MarkerCaptionBackRaised, Modified()) = false;
  QY_PROPERTY(bool, CaptionBackLowered, QyRes::MarkerCaptionBackLowered, Modified()) = false;
  QY_PROPERTY(bool, CaptionBackShadow, QyRes::MarkerCaptionBackShadow, Relayout()) = false;
  QY_PROPERTY(float, CaptionBackSpaceToBorder, QyRes::MarkerCaptionBackSpaceToBorder, Relayout()) = 40.0f;
  QY_PROPERTY(float, CaptionBackRounding, QyRes::MarkerCaptionBackRounding, Modified()) = 0;
  Q_PROPERTY(TQyFont* Font READ GetFont)
  Q_PROPERTY(TQySimpleLineSettings* Line READ GetLine)
  QY_DOCUMENT_MEMBERS // the record stands in QyMarkersRecord.cpp

public:
  explicit TQyMovable(QWidget* parent = nullptr);
  ~TQyMovable() override;

  TQyFont* GetFont() const;
  TQySimpleLineSettings* GetLine() const { return FLine; }
  TQyRichCaptionObject* CaptionObject() const { return FCaptionObject.get(); }

  // ---- position: X and Y record after storing (what is recorded is the new value) and never
  // compare, so setting the same value twice records twice
  double GetX() const { return FRealX; }
  double GetY() const { return FRealY; }
  virtual void SetX(double value);
  virtual void SetY(double value);
  TQyAxis* GetXAxis() const { return FXAxis; }
  TQyAxis* GetYAxis() const { return FYAxis; }
  virtual void SetXAxis(TQyAxis* axis);
  virtual void SetYAxis(TQyAxis* axis);
  TQySeries* GetSnappedSeries() const { return FSnappedSeries; }
  void SetSnappedSeries(TQySeries* series);
  int GetSnappedIdx() const { return FSnappedIdx; }
  void SetSnappedIdx(int index);

  // ---- the derived pixels
  QPoint HotSpot() const { return {FHotX, FHotY}; }
  QPoint HotDelta() const { return {FHotDeltaX, FHotDeltaY}; }
  QRect MarkerBounds() const { return FMarkerBounds; }
  QRect LineRect() const { return FLineRect; }
  QRect CaptionRect() const { return FCaptionRect; }
  bool Moving() const { return FMoving; }
  // The caption's box: measured size plus CaptionB on every side.
  int CaptionW() const;
  int CaptionH() const;
  float CaptionB() const;
  bool CaptionShown() const; // visible and not empty
  bool CaptionBackVisible() const { return FCaptionBackVisible; }
  bool ShadowEffective() const { return FShadowEffective; }

  // With a parent: measures the caption and sets the widget to its wanted rectangle.
  void Calculate();
  // The axes changed: the hot spot and the widget follow the position in axis units.
  virtual void UpdatePosition();
  // Places the marker at a position in axis units without recording (the data or another marker
  // moved it, not the user).
  void FollowTo(double realX, double realY);
  // The reverse: the position in axis units from the hot spot.
  virtual void SetRealPoint();
  // Moves the widget as code (or a designer) would: a changed position moves the marker in axis
  // units too. Qt's own move()/setGeometry() stay plain (layouts and image output use them).
  void SetBounds(int left, int top, int width, int height);
  // Measures the caption with the marker's values, then repaints.
  void ParseCaption();
  // Repaints the graph where the marker was when the graph paints without smoothing.
  void UpdateBkOnMove();
  // The clipping rectangle in the widget's coordinates: the data area with ClipToData, else the
  // parent's client area.
  QRectF GetClipRect() const;
  // Paints the marker in its own coordinates.
  virtual void PaintGr(QPainter* graphics);

  // ---- as a part of its graph: painted above everything, placed after every layout
  TQyPaintPasses PaintPasses() const override { return QyPass(TQyPaintPass::Overlays); }
  void PaintPass(TQyPaintPass pass, QPainter* graphics) override;
  void PlaceInLayout(const QRectF& dataArea) override;
  void SetUndoStack(TQyUndoRecorder* stack) override;
  void GraphChanged(TQyGraphChange change) override;
  void VariablesChanged() override { ParseCaption(); }

  // ---- events of the application (the library never assigns them)
  TNotifyEvent OnMarkerMoving, OnMarkerMoved;

Q_SIGNALS:
  // The same moments for the library's own listeners (a cross hair follows its lines by them).
  void MarkerMoving();
  void MarkerMoved();

protected:
  void AfterConstruction() override;
  // Publishes X and Y for caption placeholders.
  virtual void RegisterVariables();

  // ---- the drag, called by the mouse handlers before the framework's
  virtual void DoMouseDown(const QPoint& global, TShiftState shift);
  virtual void DoMouseMove(const QPoint& global);
  virtual void DoMouseUp();
  // The undo group at the start of a drag: X and Y under "Marker move".
  virtual void RecordMoveStart();
  // The hot spot follows the mouse's offset since the drag began, clamped to the parent.
  void FollowMouse(const QPoint& global, bool alongX, bool alongY);
  // Snapping: the nearest point of the snapped series, or of every series on the marker's axes.
  void SearchSeriesSnap();
  void DoMarkerMoving();
  void DoMarkerMoved();

  // ---- geometry
  // Computes MarkerBounds, the hot delta, LineRect and CaptionRect. The base: the widget's own
  // rectangle, the hot spot in its centre.
  virtual void SetHotDelta();
  // Sets the widget to the hot spot minus the hot delta, at the size of MarkerBounds; a caption
  // that shows the marker's values is measured again first.
  void Place();
  // The region that takes the mouse, in widget coordinates (the whole widget by default).
  virtual QRegion HitRegion() const;
  // Anchors the caption object in `box` (the back box in widget coordinates).
  void AnchorCaption(const QRect& box);
  // The back box's size for the caption: swapped for a vertical caption.
  QSize CaptionBoxSize() const;
  void PaintBack(QPainter* graphics);
  void PaintCaption(QPainter* graphics);
  // What changes the size: measure again, place again, repaint.
  void Relayout();
  virtual void Modified();
  // A change of the line settings.
  virtual void LineChanged() { Modified(); }
  virtual void ClipToDataChanged() { Relayout(); }
  TQyGraph2D* Graph() const;
  QSize ParentSize() const;
  void MeasureCaption();
  bool CaptionHasValues() const;
  void FollowSnappedPoint(TQyVectorChange change, int index);
  void SetCoordinate(bool isX, double value);

  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void moveEvent(QMoveEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void paintEvent(QPaintEvent* e) override;

  TQySimpleLineSettings* FLine = nullptr; // made by the concrete class
  std::unique_ptr<TQyRichCaptionObject> FCaptionObject;
  QPointer<TQyAxis> FXAxis, FYAxis;
  QPointer<TQySeries> FSnappedSeries;
  QMetaObject::Connection FSnapConnection;
  int FSnappedIdx = -1;
  double FRealX = 0, FRealY = 0;
  int FHotX = 0, FHotY = 0, FHotDeltaX = 0, FHotDeltaY = 0;
  QRect FMarkerBounds;
  bool FMoving = false;
  int FDragMouseX = 0, FDragMouseY = 0, FDragHotX = 0, FDragHotY = 0;
  int FTargetX = 0, FTargetY = 0;
  bool FSnapFixed = false;
  bool FInternalBounds = false;
  bool FNeedsDelta = true;
  bool FCaptionBackVisible = false;
  bool FShadowEffective = false;
  QRect FLineRect, FCaptionRect;
  QRectF FClipRect;

private:
  void WatchSnappedSeries();
};
