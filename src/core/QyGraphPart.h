#pragma once
// The extension point of the graph. Everything that a graph paints besides its own background,
// data area, title, grids and frame is a graph part: axes, series, legends, markers, the zoom
// frame, scroll bars, and whatever kind comes later. A part says which paint passes it draws in,
// what it takes from the layout (margins before the axes are placed, its own place after the data
// area is known), and it receives the undo stack and the graph's change notices. The graph walks
// its parts pass by pass and never names a kind of part.
#include <QFlags>
#include <QObject>
#include <QRectF>
#include <QSizeF>

class QPainter;
class TQyUndoRecorder;

namespace QyGraphPart {
Q_NAMESPACE
// The fixed drawing order of a graph. Passes marked "clipped" run inside the data clip; parts
// that are child widgets of the graph are translated to their own position in every pass.
enum class TQyPaintPass {
  Background,    // the graph itself
  DataArea,      // the graph itself (fill, 3D walls)
  Title,         // the graph itself
  Grid,          // the graph itself, from the primary axes' ticks
  SeriesLines,   // clipped: areas, lines, indicators
  Frame,         // the graph itself: the data-area frame
  Axes,          // axes, each translated to its position
  SeriesSymbols, // clipped: symbols stand above axes and frame
  Legends,       // legends whose parent is the graph
  Overlays       // markers, the zoom frame, scroll bars: above everything
};
Q_ENUM_NS(TQyPaintPass)
Q_DECLARE_FLAGS(TQyPaintPasses, TQyPaintPass)

// What a graph tells its parts.
enum class TQyGraphChange {
  Series,  // points of the series are stale (zoom, pan, layout moved the data area)
  Legends, // the legend items are stale (a series came, went, or changed its caption)
  Layout   // the graph will lay out again before the next picture
};
Q_ENUM_NS(TQyGraphChange)
} // namespace QyGraphPart
using QyGraphPart::TQyGraphChange;
using QyGraphPart::TQyPaintPass;
using QyGraphPart::TQyPaintPasses;

constexpr TQyPaintPasses QyPass(TQyPaintPass p) { return TQyPaintPasses(1 << int(p)); }
inline bool QyPaintsIn(TQyPaintPasses passes, TQyPaintPass p) { return passes & QyPass(p); }

// Running margins of one layout pass, in pixels from each edge of the graph's client area.
struct TQyLayoutMargins {
  float Left = 0, Top = 0, Right = 0, Bottom = 0;
};

class IQyGraphPart {
public:
  virtual ~IQyGraphPart() = default;
  // The passes this part paints in; the graph asks again before every picture.
  virtual TQyPaintPasses PaintPasses() const = 0;
  // Paints this part's share of `pass`. Child widgets of the graph get a painter already
  // translated to their position. Painting never raises.
  virtual void PaintPass(TQyPaintPass pass, QPainter* graphics) = 0;
  // Whether the part takes part in pictures and layouts at all now.
  virtual bool PartVisible() const { return true; }
  // Layout, before the axes are placed: the margins this part takes from the client area of
  // `client` size (legends on a side, scroll bars). Grows `margins`; never shrinks them.
  virtual void TakeMargins(TQyLayoutMargins& margins, QSizeF client) { (void)margins, (void)client; }
  // Layout, after the data area is known: the part places itself (centred legends, scroll bars).
  virtual void PlaceInLayout(const QRectF& dataArea) { (void)dataArea; }
  // A part that gives the data area depth (three-dimensional bars) answers its depth in pixels,
  // to the right and upwards; the first part that answers true sets the depth of the graph's box
  // (back wall, side walls, grid across the floor and up the back wall).
  virtual bool GraphDepth(float& depthX, float& depthY) { (void)depthX, (void)depthY; return false; }
  // The graph's undo stack (nullptr: none). Nested setting groups reach it by the owner chain.
  virtual void SetUndoStack(TQyUndoRecorder* stack) = 0;
  // A change notice of the graph.
  virtual void GraphChanged(TQyGraphChange change) { (void)change; }
};
Q_DECLARE_INTERFACE(IQyGraphPart, "org.qycharts.IQyGraphPart/1.0")
Q_DECLARE_OPERATORS_FOR_FLAGS(QyGraphPart::TQyPaintPasses)
