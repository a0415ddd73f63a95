#pragma once
// A point symbol pre-drawn once into a small image and then put at many places. On a raster image
// the stamp is blended straight into the pixels: for a symbol a few pixels wide, QPainter's own
// image drawing costs several times the blending itself.
#include <QImage>
#include <QRect>
#include <QRegion>
#include <QTransform>
#include <functional>
#include <vector>

class QPainter;
class QPen;
class QBrush;
namespace QyStyles { enum class TQyPointSymbol; }
using QyStyles::TQyPointSymbol;

class TQyStamp {
public:
  TQyStamp(const QPen& pen, const QBrush& brush, float size, TQyPointSymbol symbol, bool antialiased);
  // Readies the stamp for painting on g; call once before a run of Put calls.
  void Begin(QPainter* g);
  const QImage& Image() const { return FImage; }
  // Puts the stamp with its centre on the pixel (x, y) of the painter's coordinates.
  void Put(QPainter* g, int x, int y) const;

private:
  struct Span {
    int Row, Left, Count; // pixels of one row of the stamp that are not transparent
  };
  void Blend(int left, int top, const QRect& clip) const;

  QImage FImage;
  int FHalf = 0; // distance of the symbol's centre from the image's corner
  std::vector<Span> FSpans;
  // The direct path, when Begin found a plain raster image behind the painter.
  QImage* FTarget = nullptr;
  uchar* FBits = nullptr;
  qsizetype FStride = 0;
  QPoint FOffset;
  std::vector<QRect> FClip; // device rectangles, not overlapping
};

// The picture of one run of stamps, kept for the next paint: repainting the same points in the
// same look (a window uncovered, a marker moved, a legend dragged) then costs one blend of the
// kept picture instead of one per stamp. Blending the stamps onto a transparent layer and the
// layer onto the picture gives the same pixels as blending them onto the picture (source-over is
// associative), up to rounding in the last bit.
class TQyStampLayer {
public:
  struct Key {
    quint64 Version = 0;                  // of the points the stamps stand on
    std::vector<const TQyStamp*> Stamps;  // their looks
  };
  // Draws the kept picture when it was made for this key and this painter's state, else draws
  // anew through draw (on a painter of the layer, with g's coordinates and clip) and keeps that.
  // bounds: the painter's rectangle that holds every stamp.
  void Paint(QPainter* g, const Key& key, const QRect& bounds, const std::function<void(QPainter*)>& draw);

private:
  bool Holds(QPainter* g, const Key& key) const;

  QImage FImage;
  QRect FArea; // of the layer, in device pixels
  quint64 FVersion = 0;
  std::vector<QImage> FStamps;
  QTransform FTransform;
  QRegion FClip;
  bool FClipped = false;
  QSize FDevice;
};

// Whether stamping is worth it and gives the same picture: many points on a raster engine
// without scaling.
bool QyCanStamp(QPainter* g, int count);
