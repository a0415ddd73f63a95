#pragma once
// GIF output through giflib (the image writers of Qt read GIF but do not write it).
#include <QImage>
#include <QIODevice>
#include <QList>
#include <QRgb>
#include <QVector>

// An image of at most 256 colours: one index per pixel into `Palette`; `Transparent` is the
// index of fully transparent pixels, or -1 when there are none.
struct TQyPalettedImage {
  int Width = 0, Height = 0;
  QList<QRgb> Palette;
  QByteArray Indices;
  int Transparent = -1;
};

// Reduces an image to 256 colours. Pixels with less than half coverage become transparent (GIF
// has one transparent colour, no partial alpha); the others keep their colour. An image of at
// most 256 colours keeps them exactly; otherwise median cut over the colours, weighted by how
// often they occur, splits them into boxes, and each colour takes the mean of its box.
TQyPalettedImage QyQuantize(const QImage& image);

// Writes `image` as one GIF89a picture, transparency kept. Raises EWriteError when the library
// is missing or the device does not take the data.
void QyWriteGif(const QImage& image, QIODevice* out);
