#pragma once
// The line markers and the cross hair: a horizontal line across the plot at a Y value, a
// vertical one at an X value, and a cross hair that joins one of each under a small movable
// centre carrying the caption.
#include "QyMovable.h"

namespace QyMarkers {
Q_NAMESPACE
// The quadrant around a cross hair's centre in which its caption stands.
enum class TQyXHairCaptionPosition { RightTop, RightBottom, LeftBottom, LeftTop };
Q_ENUM_NS(TQyXHairCaptionPosition)
} // namespace QyMarkers
using QyMarkers::TQyXHairCaptionPosition;

// The snapping references that every concrete marker publishes.
#define QY_MARKER_SNAP_PROPERTIES                                                                  \
  Q_PROPERTY(TQySeries* SnappedSeries READ GetSnappedSeries WRITE SetSnappedSeries)               \
  Q_PROPERTY(int SnappedIdx READ GetSnappedIdx WRITE SetSnappedIdx)

// What the horizontal and the vertical marker share. The geometry is worked out along and across
// the line and then laid into x and y, so the vertical marker is the horizontal one mirrored.
class TQyLineMarker : public TQyMovable {
  Q_OBJECT
  QY_PROPERTY(QyRichLabel::TQyContentAlignment, CaptionPosition, QyRes::MarkerCaptionPosition, Relayout()) =
      TQyContentAlignment::TopRight;

public:
  TQyLineMarker(bool horizontal, QWidget* parent);
  bool Horizontal() const { return FHorizontal; }
  // The pen's band across the line: the line width, at least 5 pixels, so thin lines are easy
  // to take.
  int Thickness() const;
  void PaintGr(QPainter* graphics) override;

protected:
  void SetHotDelta() override;
  QRegion HitRegion() const override;
  void DoMouseMove(const QPoint& global) override;
  void RecordMoveStart() override;
  // False when the value lies outside its axis and the marker clips to the data.
  bool ValueShown() const;

private:
  // The span of the line along its direction in parent pixels.
  void Span(int& start, int& length) const;
  bool FHorizontal;
};

class TQyHorizontalMarker : public TQyLineMarker {
  Q_OBJECT
  Q_PROPERTY(TQyAxis* YAxis READ GetYAxis WRITE SetYAxis)
  Q_PROPERTY(double Y READ GetY WRITE SetY)
  QY_MARKER_SNAP_PROPERTIES

public:
  explicit TQyHorizontalMarker(QWidget* parent = nullptr) : TQyLineMarker(true, parent) {}
};

class TQyVerticalMarker : public TQyLineMarker {
  Q_OBJECT
  Q_PROPERTY(TQyAxis* XAxis READ GetXAxis WRITE SetXAxis)
  Q_PROPERTY(double X READ GetX WRITE SetX)
  QY_MARKER_SNAP_PROPERTIES

public:
  explicit TQyVerticalMarker(QWidget* parent = nullptr) : TQyLineMarker(false, parent) {}
};

// A horizontal and a vertical marker joined at a small centre. The two lines are markers of
// their own (children of the same parent, named "HorizontalMarker" and "VertikalMarker"); the
// cross hair keeps them on its position, and dragging one line moves the centre along it.
class TQyCrossHair : public TQyMovable {
  Q_OBJECT
  QY_PROPERTY(QyMarkers::TQyXHairCaptionPosition, CaptionPosition, QyRes::CrossHairCaptionPosition, Relayout()) =
      TQyXHairCaptionPosition::RightTop;
  QY_PROPERTY_CUSTOM(int, HorizontalCursor) = crSizeNS;
  QY_PROPERTY_CUSTOM(int, VerticalCursor) = crSizeWE;
  Q_PROPERTY(TQyAxis* XAxis READ GetXAxis WRITE SetXAxis)
  Q_PROPERTY(TQyAxis* YAxis READ GetYAxis WRITE SetYAxis)
  Q_PROPERTY(double X READ GetX WRITE SetX)
  Q_PROPERTY(double Y READ GetY WRITE SetY)
  Q_PROPERTY(TQyHorizontalMarker* HorizontalMarker READ GetHorizontalMarker)
  Q_PROPERTY(TQyVerticalMarker* VerticalMarker READ GetVerticalMarker)
  QY_MARKER_SNAP_PROPERTIES

public:
  explicit TQyCrossHair(QWidget* parent = nullptr);
  ~TQyCrossHair() override;
  TQyHorizontalMarker* GetHorizontalMarker() const { return FHorizontalMarker; }
  TQyVerticalMarker* GetVerticalMarker() const { return FVerticalMarker; }
  // The radius around the centre that takes the mouse (at least 2).
  int HotRadius() const { return std::max(2, FHotRadius); }

  void SetX(double value) override;
  void SetY(double value) override;
  void SetXAxis(TQyAxis* axis) override;
  void SetYAxis(TQyAxis* axis) override;
  void SetRealPoint() override;
  void PaintGr(QPainter* graphics) override;

protected:
  void SetHotDelta() override;
  void DoMouseMove(const QPoint& global) override;
  void ClipToDataChanged() override;
  void LineChanged() override;
  bool event(QEvent* e) override;

private:
  // Gives the lines the cross hair's parent, visibility, axes, line and position, without
  // recording: they are parts of the cross hair.
  void SyncLines();
  void LinesToFront();
  void MoveLines();

  QPointer<TQyHorizontalMarker> FHorizontalMarker;
  QPointer<TQyVerticalMarker> FVerticalMarker;
  int FHotRadius = 4;
};
