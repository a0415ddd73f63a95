// Styles: every point symbol, line dash style, area style and gradient, side by side and
// labelled, plus the 3D shapes and rounded rectangles of the drawing helpers.
#include "QyDrawing.h"
#include "QyGallery.h"
#include <QMetaEnum>
#include <QPainter>
#include <QWidget>

namespace {
class TStylesPage : public QWidget {
protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.fillRect(rect(), Qt::white);
    p.setRenderHint(QPainter::Antialiasing);
    QFont f = font();
    f.setPointSizeF(7);
    p.setFont(f);
    Heading(p, 10, 16, "Point symbols");
    DrawSymbols(p, 20);
    Heading(p, 10, 96, "Dash styles");
    DrawDashStyles(p, 104);
    Heading(p, 10, 196, "Area styles");
    DrawAreaStyles(p, 204);
    Heading(p, 10, 580, "Gradients");
    DrawGradients(p, 588);
    Heading(p, 10, 716, "Shapes");
    DrawShapes(p, 740);
  }

private:
  static void Heading(QPainter& p, int x, int y, const QString& text) {
    QFont f = p.font();
    QFont bold = f;
    bold.setBold(true);
    bold.setPointSizeF(9);
    p.setFont(bold);
    p.setPen(Qt::black);
    p.drawText(x, y, text);
    p.setFont(f);
  }

  static void Label(QPainter& p, const QRectF& r, const QString& text) {
    p.setPen(Qt::black);
    p.drawText(r, Qt::AlignHCenter | Qt::AlignTop, text);
  }

  static void DrawSymbols(QPainter& p, int top) {
    const QMetaEnum e = QMetaEnum::fromType<TQyPointSymbol>();
    const QPen pen(TQyColorToQColor(0xFF00008B), 1.5);
    const QBrush brush(TQyColorToQColor(0xFF87CEFA));
    for (int i = 0; i < e.keyCount(); ++i) {
      const float cx = 50 + i * 95;
      DrawPointSymbol(&p, pen, brush, cx, top + 26, 24, TQyPointSymbol(e.value(i)));
      Label(p, QRectF(cx - 45, top + 46, 90, 14), e.key(i));
    }
  }

  static void DrawDashStyles(QPainter& p, int top) {
    const QMetaEnum e = QMetaEnum::fromType<TDashStyle>();
    for (int i = 0; i < e.keyCount() - 1; ++i) { // Custom has no pattern of its own
      const float x = 20 + i * 190;
      TQyPen pen(0xFFB22222, 2.0f);
      pen.Set_DashStyle(TDashStyle(e.value(i)));
      p.setPen(pen);
      p.drawLine(QPointF(x, top + 20), QPointF(x + 160, top + 20));
      TQyPen thick(0xFF2E8B57, 4.0f);
      thick.Set_DashStyle(TDashStyle(e.value(i)));
      p.setPen(thick);
      p.drawLine(QPointF(x, top + 40), QPointF(x + 160, top + 40));
      Label(p, QRectF(x, top + 50, 160, 14), e.key(i));
    }
  }

  static void DrawAreaStyles(QPainter& p, int top) {
    const QMetaEnum e = QMetaEnum::fromType<TQyAreaStyle>();
    const int columns = 9;
    QFont small = p.font();
    small.setPointSizeF(6); // the longest names must fit their column
    p.setFont(small);
    for (int i = 0; i < e.keyCount(); ++i) {
      const QRectF box(20 + (i % columns) * 108, top + (i / columns) * 62, 96, 40);
      p.fillRect(box, GetAreaBrush(TQyAreaStyle(e.value(i)), 0xFF191970, 0xFFFFFACD));
      p.setPen(QPen(Qt::gray, 1));
      p.setBrush(Qt::NoBrush);
      p.drawRect(box);
      Label(p, QRectF(box.x() - 6, box.bottom() + 2, box.width() + 12, 14), e.key(i));
    }
    small.setPointSizeF(7);
    p.setFont(small);
  }

  static void DrawGradients(QPainter& p, int top) {
    const TQyColor first = 0xFFFFD700, middle = 0xFFFF8C00, last = 0xFF8B0000;
    struct TItem {
      QString name;
      QBrush (*make)(const QRectF&, TQyColor, TQyColor, TQyColor);
    };
    const TItem items[] = {
        {"Linear 0°", [](const QRectF& r, TQyColor a, TQyColor b, TQyColor c) { return LinearBrush(r, 0, 0.5f, a, b, c); }},
        {"Linear 45°, center 0.25", [](const QRectF& r, TQyColor a, TQyColor b, TQyColor c) { return LinearBrush(r, 45, 0.25f, a, b, c); }},
        {"Linear 90°", [](const QRectF& r, TQyColor a, TQyColor b, TQyColor c) { return LinearBrush(r, 90, 0.5f, a, b, c); }},
        {"Radial (0.5, 0.5)", [](const QRectF& r, TQyColor a, TQyColor b, TQyColor c) { return RadialBrush(r, {0.5, 0.5}, a, b, c); }},
        {"Radial (0.25, 0.75)", [](const QRectF& r, TQyColor a, TQyColor b, TQyColor c) { return RadialBrush(r, {0.25, 0.75}, a, b, c); }},
        {"Elliptical (0.5, 0.5)", [](const QRectF& r, TQyColor a, TQyColor b, TQyColor c) { return EllipticalBrush(r, {0.5, 0.5}, a, b, c); }},
        {"Elliptical (0.3, 0.85)", [](const QRectF& r, TQyColor a, TQyColor b, TQyColor c) { return EllipticalBrush(r, {0.3, 0.85}, a, b, c); }},
    };
    for (int i = 0; i < 7; ++i) {
      const QRectF box(20 + i * 138, top + 4, 126, 90);
      p.fillRect(box, items[i].make(box, first, middle, last));
      Label(p, QRectF(box.x() - 6, box.bottom() + 3, box.width() + 12, 14), items[i].name);
    }
  }

  static void DrawShapes(QPainter& p, int top) {
    Draw3DBar(&p, 0xFF000080, 0xFF4682B4, 30, top + 130, 80, top + 30, 14, 10);
    Draw3DBar(&p, QyTransparent, 0xFF3CB371, 100, top + 130, 150, top + 60, 14, 10);
    DrawCylinderVertical(&p, 0xFF000080, 0xFFCD5C5C, 190, top + 130, 240, top + 30, 0, 12);
    DrawCylinderVertical(&p, QyTransparent, 0xFF9370DB, 270, top + 130, 320, top + 50, 10, 12);
    DrawCylinderHorizontal(&p, QyTransparent, 0xFFDAA520, 360, top + 40, 520, top + 80, 0, 12);
    DrawRoundRect(&p, QBrush(QColor(0xE6, 0xE6, 0xFA)), QPen(Qt::darkBlue, 1), QRectF(580, top + 20, 120, 60), 16,
                  true, true, false, false);
    DrawRoundRect(&p, QBrush(QColor(0xC0, 0xC0, 0xC0)), QPen(Qt::NoPen), QRectF(730, top + 20, 120, 60), 12,
                  false, false, true, false);
    DrawRoundRect(&p, QBrush(QColor(0xC0, 0xC0, 0xC0)), QPen(Qt::NoPen), QRectF(870, top + 20, 100, 60), 0,
                  false, false, false, true);
    TQyPen arrow(0xFF8B0000, 2.0f);
    DrawArrowLine(&p, arrow, QPointF(380, top + 130), QPointF(540, top + 100), ArrowPointCap(5, 3, 2), 3);
    Label(p, QRectF(20, top + 140, 320, 14), "3D bars and cylinders (with and without outline, with depth)");
    Label(p, QRectF(350, top + 140, 200, 14), "Lying cylinder, arrow line");
    Label(p, QRectF(570, top + 140, 420, 14), "Round rect: shadow+frame, raised, lowered (radius 0)");
  }
};
} // namespace

QY_GALLERY_PAGE(styles, "06-styles", "Styles", [] { return static_cast<QWidget*>(new TStylesPage); },
                QSize(1000, 920), 0, "Nothing to drag here: every symbol, dash, hatch and gradient side by side");
