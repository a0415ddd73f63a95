#pragma once
// Writing straight into the pixels of the raster image behind a painter. For many small pieces
// (stamped symbols, the columns of a dense band) QPainter's own calls cost several times the
// writing itself. Pixels are blended with the raster engine's rounding.
#include <QPoint>
#include <QRect>
#include <QtGlobal>
#include <vector>

class QPainter;
class QImage;

class TQyDirectPixels {
public:
  // Readies the pixels of g's image; false (and nothing to write) when g paints through a widget's
  // redirection, on another format, scaled, at a fractional offset, with opacity or another
  // composition, or with a clip of too many rectangles.
  bool Begin(QPainter* g);
  bool Active() const { return FBits != nullptr; }
  // The painter's offset in the image, and its clip as image rectangles that do not overlap.
  QPoint Offset() const { return FOffset; }
  const std::vector<QRect>& Clip() const { return FClip; }
  // The clip's bounding rectangle in the painter's coordinates: nothing outside it is written.
  QRect Bounds() const;
  quint32* Row(int y) const { return reinterpret_cast<quint32*>(FBits + y * FStride); }
  // Covers the painter's pixels [x0, x1) of row y with the opaque premultiplied colour at
  // coverage a (0..255), inside the clip.
  void Span(int x0, int x1, int y, quint32 color, uint a) const;

private:
  uchar* FBits = nullptr;
  qsizetype FStride = 0;
  QPoint FOffset;
  std::vector<QRect> FClip;
};

// x * a / 255 per channel, rounded as the raster engine rounds, so both paths give equal pixels.
inline quint32 QyByteMul(quint32 x, uint a) {
  quint32 t = (x & 0xff00ff) * a;
  t = ((t + ((t >> 8) & 0xff00ff) + 0x800080) >> 8) & 0xff00ff;
  x = ((x >> 8) & 0xff00ff) * a;
  x = (x + ((x >> 8) & 0xff00ff) + 0x800080) & 0xff00ff00;
  return x | t;
}
