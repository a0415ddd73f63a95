#include "QyRichLabel.h"
#include <QFontMetricsF>
#include "QyMeasure.h"
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>

namespace {
constexpr QRgb ShadowColor = 0x24000000u;
constexpr int ShadowSteps = 9;
constexpr QPointF ShadowStep{0.3, 0.4}; // each copy a little further down and right
constexpr QRgb ReliefDark = 0x5A000000u;
constexpr QRgb ReliefLight = 0xD2FFFFFFu;

// Text fills with a brush: solid brushes go the fast text way, others fill the glyph outline.
void DrawText(QPainter* graphics, const QPointF& baseline, const QFont& font, const QString& text,
              const QBrush& brush) {
  if (brush.style() == Qt::SolidPattern) {
    graphics->setPen(QPen(brush.color()));
    graphics->setFont(font);
    graphics->drawText(baseline, text);
    return;
  }
  QPainterPath path;
  path.addText(baseline, font, text);
  graphics->fillPath(path, brush);
}

void DrawShadow(QPainter* graphics, const QPointF& baseline, const QFont& font, const QString& text) {
  graphics->save();
  const QBrush shadow{QColor::fromRgba(ShadowColor)};
  for (int i = 0; i < ShadowSteps; ++i) {
    graphics->translate(ShadowStep);
    DrawText(graphics, baseline, font, text, shadow);
  }
  graphics->restore();
}

// Relief: the glyphs' edge band is cut out of the clip, then the glyphs are filled dark on one
// side and light on the other, so that only the offset rims show.
void DrawRelief(QPainter* graphics, const QPainterPath& glyphs, bool raised) {
  graphics->save();
  QPainterPathStroker stroker;
  stroker.setWidth(1.0);
  stroker.setCurveThreshold(0.25);
  QPainterPath outside;
  outside.addRect(glyphs.boundingRect().adjusted(-4, -4, 4, 4));
  graphics->setClipPath(outside.subtracted(stroker.createStroke(glyphs)), Qt::IntersectClip);
  const qreal d = raised ? 1.0 : -1.0;
  graphics->fillPath(glyphs.translated(d, d), QColor::fromRgba(ReliefDark));
  graphics->fillPath(glyphs.translated(-d, -d), QColor::fromRgba(ReliefLight));
  graphics->restore();
}
} // namespace

// Inside a measuring scope (output to another device) text is measured for that device, also
// while painting; otherwise on the painter's device, or for the screen.
QFontMetricsF QyFontMetrics(const QFont& font, QPainter* graphics) {
  if (QPaintDevice* device = QyMeasureDevice()) return QFontMetricsF(font, device);
  return graphics && graphics->device() ? QFontMetricsF(font, graphics->device())
                                        : QFontMetricsF(font);
}

qreal QyMeasureDpiY(QPainter* graphics) {
  if (QPaintDevice* device = QyMeasureDevice()) return device->logicalDpiY();
  return graphics && graphics->device() ? graphics->device()->logicalDpiY() : 96.0;
}

float TQySubCaption::GetWidth(QPainter* graphics) const {
  return static_cast<float>(QyFontMetrics(Font, graphics).horizontalAdvance(Text));
}

void TQySubCaption::PaintGr(QPainter* graphics, QBrush& brush) const {
  if (brush.style() == Qt::SolidPattern) brush.setColor(QColor::fromRgba(FillColor));
  const QPointF baseline(Position.x(), Position.y() + QyFontMetrics(Font, graphics).ascent());
  const bool outlined = DrawEffects & (TQyCharDrawEffect::Outline | TQyCharDrawEffect::Lowered |
                                       TQyCharDrawEffect::Raised);
  if (outlined) {
    QPainterPath glyphs;
    glyphs.setFillRule(Qt::OddEvenFill);
    glyphs.addText(baseline, Font, Text);
    if (DrawEffects.testFlag(TQyCharDrawEffect::Outline))
      graphics->strokePath(glyphs, QPen(brush, 1.0));
    else
      DrawRelief(graphics, glyphs, DrawEffects.testFlag(TQyCharDrawEffect::Raised));
    return; // outlined effects draw no plain text over the path
  }
  if (DrawEffects.testFlag(TQyCharDrawEffect::Shadow)) DrawShadow(graphics, baseline, Font, Text);
  DrawText(graphics, baseline, Font, Text, brush);
}
