// Stamped symbols give the pixels that the painter's own image drawing gives.
#include "QyKeptLayer.h"
#include "QyPixelProbe.h"
#include "QyStamp.h"
#include "QyStyles.h"
#include <QPainter>
#include <gtest/gtest.h>

namespace {
QImage Background() {
  QImage image(60, 40, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 60; ++x) image.setPixel(x, y, qRgba(x * 4, y * 6, 128, 255));
  return image;
}

// Translated, clipped to two rectangles, stamps across both clip edges and the image's edges.
void Prepare(QPainter& p) {
  p.setRenderHint(QPainter::Antialiasing);
  p.translate(3, 2);
  p.setClipRegion(QRegion(0, 0, 25, 30) + QRegion(30, 5, 40, 40));
}

const std::vector<QPoint> Points{{0, 0}, {12, 29}, {24, 10}, {27, 6}, {31, 20}, {55, 36}, {-4, 15}, {40, 40}};
} // namespace

TEST(Stamp, EqualsThePaintersImageDrawing) {
  const QPen pen(QColor(0, 0, 255, 200), 1);
  const QBrush brush(QColor(255, 0, 0, 120));
  QImage direct = Background(), drawn = Background();
  TQyStamp stamp(pen, brush, 7, TQyPointSymbol::Circle, true);
  {
    QPainter p(&direct);
    Prepare(p);
    stamp.Begin(&p);
    for (QPoint q : Points) stamp.Put(&p, q.x(), q.y());
  }
  {
    QPainter p(&drawn);
    Prepare(p);
    for (QPoint q : Points) p.drawImage(q - QPoint(stamp.Image().width() / 2, stamp.Image().height() / 2), stamp.Image());
  }
  EXPECT_EQ(QyProbe::MaxChannelDifference(direct, drawn), 0);
}

TEST(Stamp, KeptLayerIsRedrawnOnlyForNewPointsOrLooks) {
  TQyStamp blue(QPen(Qt::blue), QBrush(QColor(0, 255, 0, 100)), 5, TQyPointSymbol::Square, true);
  TQyStamp red(QPen(Qt::red), QBrush(QColor(0, 255, 0, 100)), 5, TQyPointSymbol::Square, true);
  TQyKeptLayer layer;
  int draws = 0;
  auto paint = [&](quint64 version, const TQyStamp& s) {
    QImage image = Background();
    QPainter p(&image);
    Prepare(p);
    layer.Paint(&p, {version, s.Look()}, QRect(-10, -10, 80, 60), [&](QPainter* g) {
      ++draws;
      const_cast<TQyStamp&>(s).Begin(g);
      for (QPoint q : Points) s.Put(g, q.x(), q.y());
    });
    return image;
  };
  // The first paint of a key stamps straight, the second makes the layer, the third reuses it.
  const QImage straight = paint(1, blue);
  const QImage layered = paint(1, blue);
  EXPECT_EQ(paint(1, blue), layered);
  EXPECT_EQ(draws, 2);
  paint(2, blue);
  paint(2, red);
  EXPECT_EQ(draws, 4);
  // Through the layer the picture is the one of stamping straight onto it, up to rounding.
  EXPECT_LE(QyProbe::MaxChannelDifference(layered, straight), 1);
}
