#include "QyKeptLayer.h"
#include <QDataStream>
#include <QIODevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>

bool QyCanKeepLayer(QPainter* g) {
  return g->paintEngine() && g->paintEngine()->type() == QPaintEngine::Raster &&
         g->deviceTransform().type() <= QTransform::TxTranslate &&
         g->compositionMode() == QPainter::CompositionMode_SourceOver;
}

QByteArray QyLookOf(const QPen& pen) {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << pen;
  return bytes;
}

// The device painted on: a widget painted into another device (a parent's picture, a backing
// store) has the painter's device as the widget but its coordinates as the target's.
static QPaintDevice* Target(QPainter* g) { return g->paintEngine()->paintDevice(); }

// A repaint of part of the picture (its clip inside the kept one) reuses the layer: the pixels
// inside the new clip were drawn the same way.
bool TQyKeptLayer::Holds(QPainter* g, const Key& key) const {
  if (FImage.isNull() || key.Version != FVersion || key.Look != FLook) return false;
  if (g->deviceTransform() != FTransform || int(g->renderHints()) != FHints ||
      Target(g)->width() != FDevice.width() || Target(g)->height() != FDevice.height())
    return false;
  if (!FClipped) return true;
  return g->hasClipping() && (FTransform.map(g->clipRegion()) - FClip).isEmpty();
}

void TQyKeptLayer::Paint(QPainter* g, const Key& key, const QRect& bounds,
                         const std::function<void(QPainter*)>& draw) {
  if (!Holds(g, key)) {
    if (key.Version != FSeen.Version || key.Look != FSeen.Look) {
      FSeen = key;
      draw(g);
      return;
    }
    const QTransform t = g->deviceTransform();
    FClipped = g->hasClipping();
    FClip = FClipped ? t.map(g->clipRegion()) : QRegion();
    QRect area = t.mapRect(bounds) & QRect(0, 0, Target(g)->width(), Target(g)->height());
    if (FClipped) area &= FClip.boundingRect();
    FArea = area;
    FVersion = key.Version;
    FLook = key.Look;
    FTransform = t;
    FHints = int(g->renderHints());
    FDevice = QSize(Target(g)->width(), Target(g)->height());
    if (FImage.size() != area.size().expandedTo(QSize(1, 1)))
      FImage = QImage(area.size().expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    FImage.fill(Qt::transparent);
    QPainter p(&FImage);
    p.setRenderHints(g->renderHints());
    p.setTransform(t * QTransform::fromTranslate(-area.x(), -area.y()));
    if (FClipped) p.setClipRegion(g->clipRegion());
    draw(&p);
  }
  if (FArea.isEmpty()) return;
  // Without a world transformation the painter still moves by the offset of its device in the
  // target (a widget inside its window's picture).
  const QTransform world = g->transform(), device = g->deviceTransform();
  const QPointF offset(device.dx() - world.dx(), device.dy() - world.dy());
  g->save();
  g->setTransform(QTransform());
  g->drawImage(QPointF(FArea.topLeft()) - offset, FImage);
  g->restore();
}
