#include "QyRichLabel.h"
#include <QPainter>
#include <QyRounding.h>
#include <array>
#include <cmath>

namespace {
constexpr double DegToRad = 3.14159265358979323846 / 180.0;

// The corners of a w x h block anchored at `anchor`, rotated counter-clockwise by `angle`
// degrees about the anchor, relative to the anchor.
std::array<QPointF, 4> RotatedCorners(QSizeF block, QPointF anchor, float angle) {
  QTransform t;
  t.rotate(-angle);
  return {t.map(QPointF(0, 0) - anchor), t.map(QPointF(block.width(), 0) - anchor),
          t.map(QPointF(0, block.height()) - anchor),
          t.map(QPointF(block.width(), block.height()) - anchor)};
}

// Where the anchor lies on an unrotated w x h block.
QPointF AnchorOnBlock(TQyContentAlignment alignment, QSizeF block) {
  const int a = static_cast<int>(alignment);
  return {block.width() * 0.5 * (a % 3), block.height() * 0.5 * (a / 3)};
}
} // namespace

TQyRichLabel::TQyRichLabel(QWidget* parent)
    : QWidget(parent), FCaptionObject(std::make_unique<TQyRichCaptionObject>(nullptr, this)) {
  FFont = FCaptionObject->Font();
  FCaptionObject->ModifiedCallback = [this] { FontChanged(); };
  setAttribute(Qt::WA_TranslucentBackground);
  setAutoFillBackground(false);
}

TQyRichLabel::~TQyRichLabel() {
  FDestroying = true;
  FCaptionObject->ModifiedCallback = nullptr;
}

void TQyRichLabel::SetAngle(float value) {
  float a = std::fmod(value, 360.0f);
  if (a < 0) a += 360.0f;
  QyAssign(this, FAngle, a, nullptr, "Angle", [this] { Readjust(); });
}

void TQyRichLabel::SetCaption(TQyRichCaption value) {
  QyAssign(this, FCaption, value, nullptr, "Caption", [this] { Readjust(); });
}

void TQyRichLabel::SetTextAlign(TQyContentAlignment value) {
  QyAssign(this, FTextAlign, value, nullptr, "TextAlign", [this] { Readjust(); });
}

void TQyRichLabel::SetAutoSize(bool value) {
  QyAssign(this, FAutoSize, value, nullptr, "AutoSize", [this] { Readjust(); });
}

void TQyRichLabel::FontChanged() {
  if (!FDestroying) Readjust();
}

void TQyRichLabel::Readjust() {
  FCaptionObject->Caption = FCaption; // AdjustBounds parses it
  FCaptionObject->Alignment = FTextAlign;
  FCaptionObject->Angle = FAngle;
  AdjustBounds();
  update();
}

QSizeF TQyRichLabel::RotatedExtent() const {
  const double rad = FAngle * DegToRad;
  const double s = std::abs(std::sin(rad)), c = std::abs(std::cos(rad));
  const double w = FCaptionObject->Width(), h = FCaptionObject->Height();
  return {c * w + s * h, c * h + s * w};
}

void TQyRichLabel::AdjustBounds() {
  if (FNeedsAdjust) return;
  TQyRichCaptionObject& caption = *FCaptionObject;
  caption.Alignment = FTextAlign;
  caption.Angle = FAngle;
  caption.ParseForSize(nullptr, this);
  if (FAutoSize) {
    const QSizeF extent = RotatedExtent();
    resize(RoundI(extent.width()), RoundI(extent.height()));
  }
  // Put the anchor where the rotated block's bounding box starts at (0, 0).
  const QSizeF block(caption.Width(), caption.Height());
  const auto corners = RotatedCorners(block, AnchorOnBlock(FTextAlign, block), FAngle);
  qreal left = 0, top = 0;
  for (const QPointF& p : corners) {
    left = std::min(left, p.x());
    top = std::min(top, p.y());
  }
  FLabelX = static_cast<float>(-left);
  FLabelY = static_cast<float>(-top);
}

QSize TQyRichLabel::sizeHint() const {
  const QSizeF extent = RotatedExtent();
  return {RoundI(extent.width()), RoundI(extent.height())};
}

void TQyRichLabel::PaintGr(QPainter* graphics) {
  if (FBackColor.alpha() != 0) graphics->fillRect(QRectF(0, 0, width(), height()), FBackColor);
  FCaptionObject->X = FLabelX;
  FCaptionObject->Y = FLabelY;
  FCaptionObject->PaintGr(graphics);
}

void TQyRichLabel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (FNeedsAdjust) {
    FNeedsAdjust = false;
    Readjust();
  }
}

void TQyRichLabel::paintEvent(QPaintEvent*) {
  if (FNeedsAdjust) {
    FNeedsAdjust = false;
    AdjustBounds();
  }
  QPainter painter(this);
  PaintGr(&painter);
}

void TQyRichLabel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  AdjustBounds();
}

void TQyRichLabel::VariablesChanged() {
  if (FDestroying) return;
  AdjustBounds();
  update();
}
