// Rich captions: mark-up, scripts, colours, effects, rotation about the anchor and the nine anchors.
#include "QyGallery.h"
#include <QPainter>
#include <QyRichLabel.h>

namespace {
class TCaptionsPage : public QWidget {
public:
  TCaptionsPage() { setAutoFillBackground(true); }

protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), QColor(0xF4, 0xF4, 0xF0));
    Markup(p);
    Effects(p);
    Rotations(p);
    Anchors(p);
  }

private:
  static void Draw(QPainter& p, const QString& text, float x, float y, float size = 13,
                   TQyContentAlignment alignment = TQyContentAlignment::TopLeft, float angle = 0,
                   TQyCharDrawEffects effects = {}) {
    TQyRichCaptionObject caption;
    caption.Font()->SetSize(size);
    caption.Font()->SetDrawEffects(effects);
    caption.Caption = text;
    caption.X = x;
    caption.Y = y;
    caption.Alignment = alignment;
    caption.Angle = angle;
    caption.PaintGr(&p);
  }

  static void Cross(QPainter& p, float x, float y) {
    p.setPen(QPen(QColor(220, 40, 40), 1));
    p.drawLine(QPointF(x - 5, y), QPointF(x + 5, y));
    p.drawLine(QPointF(x, y - 5), QPointF(x, y + 5));
  }

  static void Markup(QPainter& p) {
    Draw(p, "\\bMark-up\\b", 20, 14, 15);
    Draw(p, "Water is H\\-2\\-O, area is x\\+2\\+ + y\\+2\\+", 20, 44);
    Draw(p, "\\bbold\\b, \\iitalic\\i, \\uunderlined\\u, \\ostruck\\o, back\\\\slash", 20, 70);
    Draw(p, "Colours: \\c[A=255, R=200, G=0, B=0]red\\c[], \\c[A=255, R=0, G=120, B=0]green\\c[]"
            " and \\f[DejaVu Serif]\\iserif\\i\\f[] face",
         20, 96);
    Draw(p, "Two lines,\ncentred under each other", 200, 124, 12, TQyContentAlignment::TopCenter);
    Draw(p, "Unclosed \\c[colour and a lone backslash\\", 20, 170, 11);
  }

  static void Effects(QPainter& p) {
    p.fillRect(QRectF(20, 200, 380, 150), QColor(200, 200, 196));
    Draw(p, "\\bShadow", 30, 210, 20, TQyContentAlignment::TopLeft, 0, TQyCharDrawEffect::Shadow);
    Draw(p, "\\bOutline", 210, 210, 20, TQyContentAlignment::TopLeft, 0, TQyCharDrawEffect::Outline);
    Draw(p, "\\bRaised", 30, 280, 20, TQyContentAlignment::TopLeft, 0, TQyCharDrawEffect::Raised);
    Draw(p, "\\bLowered", 210, 280, 20, TQyContentAlignment::TopLeft, 0, TQyCharDrawEffect::Lowered);
  }

  static void Rotations(QPainter& p) {
    const float x = 560, y = 150;
    for (float angle : {0.f, 45.f, 90.f, 135.f, 180.f, 225.f, 270.f, 315.f})
      Draw(p, QString("  %1\\+o\\+ about the anchor").arg(angle), x, y, 10,
           TQyContentAlignment::MiddleLeft, angle);
    Cross(p, x, y);
    Draw(p, "Y-axis caption [m\\+-1\\+]", 440, 330, 12, TQyContentAlignment::BottomCenter, 90);
    Cross(p, 440, 330);
  }

  static void Anchors(QPainter& p) {
    const char* names[] = {"TopLeft",    "TopCenter",    "TopRight",
                           "MiddleLeft", "MiddleCenter", "MiddleRight",
                           "BottomLeft", "BottomCenter", "BottomRight"};
    for (int a = 0; a < 9; ++a) {
      const float x = 90 + (a % 3) * 250, y = 390 + (a / 3) * 40;
      Draw(p, names[a], x, y, 11, static_cast<TQyContentAlignment>(a));
      Cross(p, x, y);
    }
  }
};
} // namespace

QY_GALLERY_PAGE(captions, "07-captions", "Captions", [] { return static_cast<QWidget*>(new TCaptionsPage); },
                QSize(800, 500), 0, "Nothing to drag here: each caption turns about its anchor, one of the nine");
