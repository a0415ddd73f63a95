#pragma once
// The picture of one costly drawing (many stamped symbols, a dense polyline), kept for the next
// paint: repainting the same points in the same look (a window uncovered, a marker moved, the
// same chart rendered again) then costs one blend of the kept picture. Drawing onto a transparent
// layer and the layer onto the picture gives the same pixels as drawing onto the picture
// (source-over is associative), up to rounding in the last bit.
#include <QByteArray>
#include <QImage>
#include <QRect>
#include <QRegion>
#include <QTransform>
#include <functional>

class QPainter;

class TQyKeptLayer {
public:
  struct Key {
    quint64 Version = 0; // of the points the drawing stands on
    QByteArray Look;     // equal exactly when the drawing's look is the same
  };
  // Draws the kept picture when it was made for this key and a painter state that covers g's,
  // else draws anew through draw (on a painter of the layer, with g's coordinates, clip and render
  // hints) and keeps that. bounds: the painter's rectangle that holds the whole drawing. The first
  // paint of a key draws straight onto g: live data that changes at every paint never pays for a
  // layer, and the layer is made at the second paint of the same key.
  void Paint(QPainter* g, const Key& key, const QRect& bounds, const std::function<void(QPainter*)>& draw);

private:
  bool Holds(QPainter* g, const Key& key) const;

  QImage FImage;
  QRect FArea; // of the layer, in device pixels
  quint64 FVersion = 0;
  QByteArray FLook;
  Key FSeen; // of the last paint drawn straight
  QTransform FTransform;
  int FHints = 0;
  QRegion FClip; // in device pixels
  bool FClipped = false;
  QSize FDevice;
};

// Whether a layer gives the same picture as drawing straight: a raster engine without scaling
// that blends source-over.
bool QyCanKeepLayer(QPainter* g);

// The look of a pen as layer key bytes.
QByteArray QyLookOf(const QPen& pen);
