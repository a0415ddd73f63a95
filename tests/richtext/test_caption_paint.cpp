// Where a caption lands: anchors, rotation, effects, and painting that never fails.
#include "QyCaptionTestKit.h"
#include <gtest/gtest.h>

namespace {
constexpr float AX = 300, AY = 200;

struct Drawn {
  explicit Drawn(const QString& text, TQyContentAlignment alignment, float angle = 0) {
    caption.Font()->SetSize(14);
    caption.Caption = text;
    caption.Alignment = alignment;
    caption.X = AX;
    caption.Y = AY;
    caption.Angle = angle;
    items = QyPaintAndRead(caption, device);
  }
  QyRecordingDevice device;
  TQyRichCaptionObject caption;
  std::vector<QyDrawnText> items;
};
} // namespace

// Owners place the anchor after measuring (the title of a graph, the caption of an axis): the
// lines follow the anchor's column at painting, in either direction.
TEST(CaptionPaint, LinesFollowAnAnchorSetAfterMeasuring) {
  using A = TQyContentAlignment;
  const struct { A measured, drawn; double share; } cases[] = {
      {A::TopLeft, A::TopCenter, 0.5}, {A::TopLeft, A::BottomRight, 1}, {A::MiddleRight, A::TopLeft, 0}};
  for (const auto& c : cases) {
    Drawn d("Wide first line\nshort", c.measured);
    d.caption.Alignment = c.drawn;
    const auto items = QyPaintAndRead(d.caption, d.device, false);
    ASSERT_EQ(items.size(), 2u);
    const auto at = [&](const QRectF& box) { return box.left() + c.share * box.width(); };
    EXPECT_NEAR(at(items[0].box), at(items[1].box), 1.0) << c.share;
  }
}

TEST(CaptionPaint, EachAnchorPlacesTheBlockAroundThePoint) {
  for (int a = 0; a < 9; ++a) {
    const auto alignment = static_cast<TQyContentAlignment>(a);
    SCOPED_TRACE(a);
    Drawn d("Hgx", alignment);
    ASSERT_EQ(d.items.size(), 1u);
    const QRectF text = d.items[0].box;
    const double w = d.caption.Width(), h = d.caption.Height();
    const int column = a % 3, row = a / 3;
    // the text sits in the middle of its block horizontally and at its top vertically
    EXPECT_NEAR(text.center().x(), AX + (1 - column) * w / 2, 0.5);
    EXPECT_NEAR(text.top(), AY - row * h / 2, 0.5);
    EXPECT_LE(text.width(), w);
    EXPECT_GE(text.height(), h * 0.7);
    EXPECT_LE(text.height(), h + 0.01);
  }
}

TEST(CaptionPaint, QuarterTurnSwapsTheExtentAndTurnsCounterClockwise) {
  Drawn flat("Rotated text", TQyContentAlignment::TopLeft, 0);
  Drawn up("Rotated text", TQyContentAlignment::TopLeft, 90);
  ASSERT_EQ(up.items.size(), 1u);
  const QRectF a = flat.items[0].box, b = up.items[0].box;
  EXPECT_NEAR(b.width(), a.height(), 0.5);
  EXPECT_NEAR(b.height(), a.width(), 0.5);
  // reading direction points up: the text lies right of the anchor and above it
  EXPECT_GE(b.left(), AX - 0.5);
  EXPECT_LE(b.bottom(), AY + 0.5);
  EXPECT_GT(AY - b.top(), a.width() * 0.9);

  Drawn down("Rotated text", TQyContentAlignment::MiddleCenter, -90);
  const QRectF c = down.items[0].box;
  EXPECT_NEAR(c.width(), a.height(), 0.5);
  EXPECT_NEAR(c.height(), a.width(), 0.5);
  EXPECT_NEAR(c.center().y(), AY, 0.5); // rotation about the anchor keeps the centre
}

TEST(CaptionPaint, EffectsDrawWhatTheyPromise) {
  auto paint = [](TQyCharDrawEffect effect, QyRecordingDevice& device) {
    TQyRichCaptionObject caption;
    caption.Caption = "Ab";
    caption.Font()->SetFillColor(0xFF0000FFu);
    caption.Font()->SetDrawEffects(effect);
    QPainter painter(&device);
    caption.PaintGr(&painter);
  };
  {
    QyRecordingDevice device;
    paint(TQyCharDrawEffect::Shadow, device);
    const auto texts = device.OfKind(QyPrimitive::Text);
    ASSERT_EQ(texts.size(), 10u); // nine shadow copies, then the text
    for (int i = 0; i < 9; ++i) {
      EXPECT_EQ(texts[i]->pen.color().alpha(), 0x24);
      EXPECT_NEAR(texts[i]->transform.dx() - texts.back()->transform.dx(), 0.3 * (i + 1), 1e-4);
      EXPECT_NEAR(texts[i]->transform.dy() - texts.back()->transform.dy(), 0.4 * (i + 1), 1e-4);
    }
    EXPECT_EQ(texts.back()->pen.color(), QColor(0, 0, 255));
  }
  {
    QyRecordingDevice device;
    paint(TQyCharDrawEffect::Outline, device);
    EXPECT_TRUE(device.OfKind(QyPrimitive::Text).empty());
    const auto paths = device.OfKind(QyPrimitive::Path);
    ASSERT_EQ(paths.size(), 1u);
    EXPECT_EQ(paths[0]->pen.color(), QColor(0, 0, 255));
    EXPECT_EQ(paths[0]->brush.style(), Qt::NoBrush);
  }
  for (auto effect : {TQyCharDrawEffect::Raised, TQyCharDrawEffect::Lowered}) {
    QyRecordingDevice device;
    paint(effect, device);
    EXPECT_TRUE(device.OfKind(QyPrimitive::Text).empty());
    const auto paths = device.OfKind(QyPrimitive::Path);
    ASSERT_EQ(paths.size(), 2u);
    EXPECT_EQ(paths[0]->brush.color().rgba(), 0x5A000000u);
    EXPECT_EQ(paths[1]->brush.color().rgba(), 0xD2FFFFFFu);
    EXPECT_TRUE(paths[0]->clipped && paths[1]->clipped);
    // raised: dark rim down and right of the light one; lowered the other way
    const QPointF shift = paths[0]->DeviceRect().topLeft() - paths[1]->DeviceRect().topLeft();
    const double d = effect == TQyCharDrawEffect::Raised ? 2 : -2;
    EXPECT_NEAR(shift.x(), d, 1e-3);
    EXPECT_NEAR(shift.y(), d, 1e-3);
  }
}

// Malformed mark-up shows what the text says, and paints exactly that; also a placeholder that
// does not resolve (no expression).
TEST(CaptionPaint, MalformedOrUnusualCaptionsPaintWithoutFailing) {
  const struct { QString text, shown; } cases[] = {
      {"ab\\", "ab"},                // lone backslash at the end
      {"a\\qb", "ab"},               // unknown command dropped
      {"a\\c[red", "ac[red"},        // unclosed: text stays
      {"a\\f[x\ny]", "af[xy]"},      // no bracket on the line
      {"\\", ""}, {"\\c[", "c["}, {"\\z\\y", ""}, {"\\f[", "f["}, {"\\+\\+\\-", ""}, {"\\c[]x", "x"},
      {"\\f[]\\b\\b\\i", ""}, {"a\\c[no colour]b", "ab"}, {"\r\n\r\n", ""}, {"v=<%1/%>", {}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.toStdString());
    QyRecordingDevice device;
    TQyRichCaptionObject caption;
    caption.Caption = c.text;
    QPainter painter(&device);
    EXPECT_NO_THROW(caption.PaintGr(&painter));
    QString drawn;
    for (const auto* t : device.OfKind(QyPrimitive::Text)) drawn += t->text;
    EXPECT_EQ(drawn, caption.PlainText());
    if (c.shown.isNull()) EXPECT_FALSE(drawn.isEmpty()) << "the unresolved placeholder still draws";
    else EXPECT_EQ(drawn, c.shown);
  }
  TQyRichCaptionObject caption;
  caption.Caption = "x";
  EXPECT_NO_THROW(caption.PaintGr(nullptr));
  QyRecordingDevice device;
  QPainter inactive;
  EXPECT_NO_THROW(caption.PaintGr(&inactive));
}

TEST(CaptionPaint, PaintingLeavesThePainterAsItWasButForTheTextSmoothing) {
  QyRecordingDevice device;
  QPainter painter(&device);
  painter.translate(5, 7);
  const QTransform before = painter.transform();
  TQyRichCaptionObject caption;
  caption.Caption = "a\\bb\\-c";
  caption.Angle = 33;
  caption.Font()->SetDrawEffects(TQyCharDrawEffect::Raised);
  caption.PaintGr(&painter);
  EXPECT_EQ(painter.transform(), before);
  EXPECT_FALSE(painter.hasClipping());
  // The font's rendering hint sets the text smoothing.
  caption.Font()->SetRenderingHint(TQyTextRenderingHint::SingleBitPerPixelGridFit);
  caption.ParseForSize(&painter, nullptr);
  EXPECT_FALSE(painter.testRenderHint(QPainter::TextAntialiasing));
  caption.Font()->SetRenderingHint(TQyTextRenderingHint::AntiAlias);
  caption.ParseForSize(&painter, nullptr);
  EXPECT_TRUE(painter.testRenderHint(QPainter::TextAntialiasing));
}
