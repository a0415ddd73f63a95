// The caption font's rules, change propagation, the caption list and the label widget.
#include "QyExpect.h"
#include "QyCaptionTestKit.h"
#include <QyExceptions.h>
#include <gtest/gtest.h>
#include <cmath>

TEST(CaptionFont, NewestDrawEffectReplacesTheFormerOne) {
  TQyFont font;
  font.SetDrawEffects(TQyCharDrawEffect::Shadow);
  font.SetDrawEffects(TQyCharDrawEffect::Shadow | TQyCharDrawEffect::Raised);
  EXPECT_EQ(font.GetDrawEffects(), TQyCharDrawEffects(TQyCharDrawEffect::Raised));
  font.SetDrawEffects({});
  font.SetDrawEffects(TQyCharDrawEffect::Lowered | TQyCharDrawEffect::Outline);
  EXPECT_EQ(font.GetDrawEffects(), TQyCharDrawEffects(TQyCharDrawEffect::Outline)); // first in order
  font.SetDrawEffects({});
  EXPECT_EQ(font.GetDrawEffects(), TQyCharDrawEffects());
}

TEST(CaptionFont, ColourAndFillColourStayInStep) {
  int changes = 0;
  TQyFont font([&] { ++changes; });
  EXPECT_EQ(font.GetFillColor(), 0xFF000000u); // black, opaque
  font.SetFillColor(0x80FF0000u);
  EXPECT_EQ(font.GetColor(), QColor(255, 0, 0));
  font.SetColor(QColor(0, 128, 0));
  EXPECT_EQ(font.GetFillColor(), 0xFF008000u); // a plain colour is opaque
  font.SetColor(QColor(0, 128, 0));             // no change, no call
  EXPECT_EQ(changes, 2);
  font.SetSize(10.5f);
  EXPECT_DOUBLE_EQ(font.ToQFont().pointSizeF(), 10.5);
  font.SetStyle(TQyFontStyle::Italic | TQyFontStyle::StrikeOut);
  const QFont q = font.ToQFont();
  EXPECT_EQ(std::tuple(q.italic(), q.strikeOut(), q.bold()), std::tuple(true, true, false));
  EXPECT_EQ(changes, 4);
}

TEST(CaptionFont, FontChangesReachTheRunsAndTheOwner) {
  int modified = 0;
  TQyRichCaptionObject caption([&] { ++modified; });
  caption.Caption = "a\\bb";
  caption.ParseForSize(nullptr, nullptr);
  caption.Font()->SetFillColor(0xFF00FF00u);
  EXPECT_EQ(modified, 1);
  for (const auto& run : caption.SubCaptions()) EXPECT_EQ(run->FillColor, 0xFF00FF00u);
  caption.Font()->SetDrawEffects(TQyCharDrawEffect::Outline);
  for (const auto& run : caption.SubCaptions())
    EXPECT_EQ(run->DrawEffects, TQyCharDrawEffects(TQyCharDrawEffect::Outline));
  caption.FillColorOverride = 0xFFFF0000u;
  EXPECT_EQ(caption.GetFillColor(), 0xFFFF0000u);
}

TEST(CaptionList, IndexErrorsAndCounts) {
  TQyRichCaptionObjects list;
  list.SetCount(3);
  EXPECT_EQ(list.Count(), 3);
  list.CheckCount(2); // never shrinks
  EXPECT_EQ(list.Count(), 3);
  list.GetValue(2)->Caption = "last";
  list.Delete(0);
  EXPECT_EQ(list.GetValue(1)->Caption, "last");
  EXPECT_EQ(QyMessageOf<ERangeError>([&] { list.GetValue(2); }), "i=2 index out of range");
  EXPECT_THROW(list.GetValue(-1), ERangeError);
  EXPECT_THROW(list.Delete(5), ERangeError);
}

namespace {
// The label's caption drawn into a recording device the size of the label.
QRectF LabelInk(TQyRichLabel& label) {
  QyRecordingDevice device(label.width(), label.height());
  {
    QPainter painter(&device);
    label.PaintGr(&painter);
  }
  QRectF r;
  for (const auto* t : device.OfKind(QyPrimitive::Text)) {
    const QRectF local(t->points.first().x(), t->points.first().y() - t->rect.height() * 0.5,
                       t->rect.width(), t->rect.height() * 0.5);
    r = r.united(t->transform.mapRect(local));
  }
  return r;
}
} // namespace

TEST(RichLabel, AutoSizeFollowsTheRotatedBlock) {
  TQyRichLabel label;
  label.GetFont()->SetSize(16);
  label.SetCaption("Label text\\-1\\-");
  label.show();
  const QSize flat = label.size();
  const double w = label.CaptionObject()->Width(), h = label.CaptionObject()->Height();
  EXPECT_EQ(flat, QSize(static_cast<int>(std::nearbyint(w)), static_cast<int>(std::nearbyint(h))));
  label.SetAngle(90);
  EXPECT_EQ(label.size(), flat.transposed());
  label.SetAngle(-270); // normalised
  EXPECT_FLOAT_EQ(label.GetAngle(), 90);
  label.SetAngle(45);
  const double diag = (w + h) / std::sqrt(2.0);
  EXPECT_NEAR(label.width(), diag, 1);
  EXPECT_NEAR(label.height(), diag, 1);
  EXPECT_EQ(label.GetPlainText(), "Label text1");
}

TEST(RichLabel, TextStaysInsideForEveryAlignmentAndQuadrant) {
  TQyRichLabel label;
  label.SetCaption("Quadrants\nand anchors");
  label.show();
  for (float angle : {0.f, 30.f, 90.f, 135.f, 180.f, 250.f, 270.f, 300.f}) {
    for (int a = 0; a < 9; ++a) {
      SCOPED_TRACE(QString("angle %1 alignment %2").arg(angle).arg(a).toStdString());
      label.SetAngle(angle);
      label.SetTextAlign(static_cast<TQyContentAlignment>(a));
      const QRectF ink = LabelInk(label);
      ASSERT_FALSE(ink.isEmpty());
      EXPECT_TRUE(QRectF(-1, -1, label.width() + 2, label.height() + 2).contains(ink));
    }
  }
}
