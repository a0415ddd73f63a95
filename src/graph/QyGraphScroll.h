#pragma once
// The two scroll bars of a graph: shown while an axis hides data, they move the primary axes
// (and every axis of the same direction) over the range before the first zoom. A graph part: it
// takes its room in the layout pass and places the bars when the data area is known.
#include "QyGraphPart.h"
#include <QObject>

class QScrollBar;
class TQyAxis;
class TQyGraph2D;

namespace QyGraphScroll {
Q_NAMESPACE
// What a bar reports, in the framework's order.
enum class TQyScrollCode { LineUp, LineDown, PageUp, PageDown, Position, Track, Top, Bottom, EndScroll };
Q_ENUM_NS(TQyScrollCode)
} // namespace QyGraphScroll
using QyGraphScroll::TQyScrollCode;

class TQyGraphScrollBars : public QObject, public IQyGraphPart {
  Q_OBJECT
  Q_INTERFACES(IQyGraphPart)
public:
  // Both bars run from 0 to 10000 over the unzoomed range; the thumb is the visible part.
  static constexpr int Range = 10000;
  explicit TQyGraphScrollBars(TQyGraph2D* graph);
  QScrollBar* Horizontal() const { return FBars[0]; }
  QScrollBar* Vertical() const { return FBars[1]; }
  // What a bar reports: moves the axes of its direction by the code's amount (the position
  // `pos` counts for a track only).
  void Scroll(QScrollBar* sender, TQyScrollCode code, int pos);

  // ---- as a part of the graph: the bars are child widgets and paint themselves
  TQyPaintPasses PaintPasses() const override { return {}; }
  void PaintPass(TQyPaintPass, QPainter*) override {}
  void TakeMargins(TQyLayoutMargins& margins, QSizeF client) override;
  void PlaceInLayout(const QRectF& dataArea) override;
  void SetUndoStack(TQyUndoRecorder*) override {} // the settings live in the graph's zoom settings

private:
  void Connect(QScrollBar* bar);
  double Amount(TQyAxis* driving, TQyScrollCode code, int pos, int dir) const;
  void Shift(TQyAxis* a, double fraction, bool makeStage) const;
  void Place(int which, TQyAxis* axis, const QRect& bounds);

  TQyGraph2D* FGraph;
  QScrollBar* FBars[2];
  bool FNeeded[2] = {false, false};
};
