#pragma once
// Helpers of the caption tests: draw a caption on the recording device and read back where its
// text items landed, in device pixels.
#include <QPainter>
#include <QyRecordingDevice.h>
#include <QyRichLabel.h>
#include <vector>

struct QyDrawnText {
  QString text;
  QRectF box; // from the top of the ascent to the advance width and the descent, device pixels
};

// Paints `caption` on `device` and pairs every text item with the run that drew it (plain
// captions draw exactly one text item per run, in run order).
inline std::vector<QyDrawnText> QyPaintAndRead(TQyRichCaptionObject& caption,
                                               QyRecordingDevice& device, bool measure = true) {
  device.Clear();
  QPainter painter(&device);
  if (measure) caption.ParseForSize(&painter, nullptr);
  caption.PaintGr(&painter);
  std::vector<QyDrawnText> out;
  const auto items = device.OfKind(QyPrimitive::Text);
  const auto& runs = caption.SubCaptions();
  for (size_t i = 0; i < items.size() && i < runs.size(); ++i) {
    const QyPrimitive* p = items[i];
    const QFontMetricsF fm = QyFontMetrics(runs[i]->Font, &painter);
    const QPointF base = p->points.isEmpty() ? p->rect.topLeft() : p->points.first();
    const QRectF local(base.x(), base.y() - fm.ascent(), p->rect.width(), fm.ascent() + fm.descent());
    out.push_back({p->text, p->transform.mapRect(local)});
  }
  return out;
}
