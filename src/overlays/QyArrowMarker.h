#pragma once
// An annotation: an arrow whose tip stands on a point, a line leading away from it, optionally
// bent into a short horizontal or vertical leader, and a caption at its end. While the mouse
// hovers over it, three grips appear: at the arrow's end, on the bent part and at the caption;
// each drags only the part it holds.
#include "QyMarkers.h"

namespace QyArrowMarker {
Q_NAMESPACE
enum TQyArrowMarkerDraggingOption : unsigned { Hotspot = 0x1, ArrowEnd = 0x2, BentGrip = 0x4, CaptionGrip = 0x8 };
Q_DECLARE_FLAGS(TQyArrowMarkerDraggingOptions, TQyArrowMarkerDraggingOption)
Q_FLAG_NS(TQyArrowMarkerDraggingOptions)
} // namespace QyArrowMarker
Q_DECLARE_OPERATORS_FOR_FLAGS(QyArrowMarker::TQyArrowMarkerDraggingOptions)
using QyArrowMarker::TQyArrowMarkerDraggingOptions;

class TQyLabelWithArrowMarker;

// A grip: a small widget beside the marker (not part of the picture) that drags one part of it.
// The base is the grip at the arrow's end.
class TQyArrowGrip : public QWidget {
  Q_OBJECT

public:
  TQyArrowGrip(TQyLabelWithArrowMarker* marker, QWidget* parent);
  TQyLabelWithArrowMarker* Marker() const { return FMarker; }
  bool Moving() const { return FMoving; }

protected:
  // Applies the mouse's offset since the press to the part the grip holds.
  virtual void Drag(int dx, int dy);
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void leaveEvent(QEvent* e) override;
  void paintEvent(QPaintEvent* e) override;

  QPointer<TQyLabelWithArrowMarker> FMarker;
  bool FMoving = false;
  QPoint FStartMouse;
  int FStartArrowDeltaX = 0, FStartArrowDeltaY = 0, FStartCaptionDeltaX = 0, FStartCaptionDeltaY = 0;
  int FStartBentLength = 0;
};

class TQyBentLengthGrip : public TQyArrowGrip {
  Q_OBJECT

public:
  using TQyArrowGrip::TQyArrowGrip;

protected:
  void Drag(int dx, int dy) override;
  void paintEvent(QPaintEvent* e) override;
};

class TQyCaptionGrip : public TQyArrowGrip {
  Q_OBJECT

public:
  using TQyArrowGrip::TQyArrowGrip;

protected:
  void Drag(int dx, int dy) override;
  void paintEvent(QPaintEvent* e) override;
};

class TQyLabelWithArrowMarker : public TQyMovable {
  Q_OBJECT
  QY_PROPERTY(int, ArrowDeltaX, QyRes::MarkerArrowDeltaX, Relayout()) = 50;
  QY_PROPERTY(int, ArrowDeltaY, QyRes::MarkerArrowDeltaY, Relayout()) = -50;
  Q_PROPERTY(float ArrowAngle READ GetArrowAngle WRITE SetArrowAngle)
  Q_PROPERTY(float ArrowLength READ GetArrowLength WRITE SetArrowLength)
  QY_PROPERTY_CUSTOM(int, BentLength) = 0;
  QY_PROPERTY(QyArrowMarker::TQyArrowMarkerDraggingOptions, DraggingOptions, nullptr, (void)0) =
      QyArrowMarker::Hotspot | QyArrowMarker::ArrowEnd | QyArrowMarker::BentGrip | QyArrowMarker::CaptionGrip;
  QY_PROPERTY(bool, HoverGrips, nullptr, (void)0) = true;
  QY_PROPERTY_CUSTOM(int, ArrowEndGripCursor) = crSizeAll;
  QY_PROPERTY_CUSTOM(int, BentLengthGripCursor) = crHSplit;
  QY_PROPERTY_CUSTOM(int, CaptionGripCursor) = crSizeAll;
  Q_PROPERTY(TQyArrowSettings* Arrow READ GetArrow)
  Q_PROPERTY(TQyAxis* XAxis READ GetXAxis WRITE SetXAxis)
  Q_PROPERTY(TQyAxis* YAxis READ GetYAxis WRITE SetYAxis)
  Q_PROPERTY(double X READ GetX WRITE SetX)
  Q_PROPERTY(double Y READ GetY WRITE SetY)
  QY_MARKER_SNAP_PROPERTIES

public:
  explicit TQyLabelWithArrowMarker(QWidget* parent = nullptr);
  ~TQyLabelWithArrowMarker() override;

  TQyArrowSettings* GetArrow() const { return static_cast<TQyArrowSettings*>(FLine); }
  // Degrees anticlockwise from the screen's positive x axis, 0 to 360; setting it keeps the length.
  float GetArrowAngle() const;
  void SetArrowAngle(float value);
  float GetArrowLength() const;
  void SetArrowLength(float value);

  // The arrow's end and the bent leader's end, in the widget's coordinates.
  QPoint ArrowEnd() const;
  QPoint BentEnd() const;
  TQyArrowGrip* ArrowEndGrip() const { return FArrowEndGrip; }
  TQyArrowGrip* BentLengthGrip() const { return FBentGrip; }
  TQyArrowGrip* CaptionGripWidget() const { return FCaptionGrip; }
  // Shows the grips that DraggingOptions allow (as hovering does), or hides them all.
  void ShowGrips(bool on);

  void UpdatePosition() override;
  void PaintGr(QPainter* graphics) override;

  TNotifyEvent OnArrowEndMoving, OnArrowEndMoved;

protected:
  friend class TQyArrowGrip;
  friend class TQyBentLengthGrip;
  friend class TQyCaptionGrip;
  void SetHotDelta() override;
  QRegion HitRegion() const override;
  void DoMouseDown(const QPoint& global, TShiftState shift) override;
  bool event(QEvent* e) override;
  void enterEvent(QEnterEvent* e) override;
  void leaveEvent(QEvent* e) override;
  // Grips go when the mouse has left the marker's rectangle.
  void HideGripsUnlessHovered();
  void PlaceGrips();
  // The leader's direction: +1 or -1 along x (horizontal caption) or y (vertical caption).
  int BentSign() const;

private:
  void SetDeltasByPolar(double angle, double length);
  QPointer<TQyArrowGrip> FArrowEndGrip, FBentGrip, FCaptionGrip;
};
