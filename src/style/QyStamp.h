#pragma once
// A point symbol pre-drawn once into a small image and then put at many places. On a raster image
// the stamp is blended straight into the pixels: for a symbol a few pixels wide, QPainter's own
// image drawing costs several times the blending itself.
#include "QyDirectPixels.h"
#include <QByteArray>
#include <QImage>
#include <QRect>
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
  // The stamp's pixels as the look key of a kept layer.
  QByteArray Look() const;
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
  TQyDirectPixels FPixels; // when Begin found a plain raster image behind the painter
};

// Whether stamping is worth it and gives the same picture: many points on a raster engine
// without scaling.
bool QyCanStamp(QPainter* g, int count);
