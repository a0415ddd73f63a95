// Parsing of the mark-up into runs: text, style, size and offsets relative to the line height.
#include "QyCaptionTestKit.h"
#include <QFontInfo>
#include <gtest/gtest.h>

namespace {
// Parses `text` for a 96 dpi device with a 12 pt font.
struct Parsed {
  explicit Parsed(const QString& text, TQyContentAlignment alignment = TQyContentAlignment::TopLeft) {
    caption.Font()->SetSize(12);
    caption.Alignment = alignment;
    caption.Caption = text;
    QPainter painter(&device);
    caption.ParseForSize(&painter, nullptr);
  }
  const TQySubCaption& Run(size_t i) const { return *caption.SubCaptions().at(i); }
  size_t Runs() const { return caption.SubCaptions().size(); }
  QyRecordingDevice device;
  TQyRichCaptionObject caption;
};
} // namespace

TEST(CaptionMarkup, ScriptRunsAreSmallerAndShiftedByAFractionOfTheLine) {
  Parsed p("H\\-2\\-O");
  ASSERT_EQ(p.Runs(), 3u);
  EXPECT_EQ(p.caption.PlainText(), "H2O");
  const float h = p.caption.Height(); // one line: the line height
  EXPECT_NEAR(p.Run(1).Font.pointSizeF(), 12 * 0.66, 1e-5);
  EXPECT_EQ(std::pair(p.Run(0).Font.pointSizeF(), p.Run(2).Font.pointSizeF()), std::pair(12.0, 12.0));
  EXPECT_NEAR(p.Run(1).Position.y() - p.Run(0).Position.y(), 0.33 * h, 1e-3);
  EXPECT_DOUBLE_EQ(p.Run(2).Position.y(), p.Run(0).Position.y());
  for (size_t i = 0; i < 3; ++i) EXPECT_EQ(p.Run(i).LineIndex, 0);
  // Script spacing gives room before and takes it back after.
  QPainter painter(&p.device);
  const double w0 = p.Run(0).GetWidth(&painter), w1 = p.Run(1).GetWidth(&painter);
  const double enter = 0.1 * 12 * 0.66, leave = 0.1 * 12;
  EXPECT_NEAR(p.Run(1).Position.x() - p.Run(0).Position.x(), w0 + enter, 1e-3);
  // the room before the script travels with it; after it the line closes up by `leave`
  EXPECT_NEAR(p.Run(2).Position.x() - p.Run(1).Position.x(), w1 - leave, 1e-3);
  // A superscript rises slightly and shrinks alike.
  Parsed sup("x\\+2\\+");
  ASSERT_EQ(sup.Runs(), 2u);
  EXPECT_NEAR(sup.Run(0).Position.y() - sup.Run(1).Position.y(), 0.025 * sup.caption.Height(), 1e-3);
  EXPECT_NEAR(sup.Run(1).Font.pointSizeF(), 12 * 0.66, 1e-5);
}

TEST(CaptionMarkup, TogglesStartFromTheFontStyleAndReturnToIt) {
  Parsed p("a\\bb\\bc\\i\\ud\\o\\i\\ue");
  ASSERT_EQ(p.Runs(), 5u);
  // Each run's bold, italic, underline and strike-out.
  const char* styles[] = {"----", "b---", "----", "-iu-", "---s"};
  for (size_t i = 0; i < 5; ++i) {
    const QFont& f = p.Run(i).Font;
    const char style[] = {f.bold() ? 'b' : '-', f.italic() ? 'i' : '-', f.underline() ? 'u' : '-',
                          f.strikeOut() ? 's' : '-', 0};
    EXPECT_STREQ(style, styles[i]) << i;
  }

  TQyRichCaptionObject bold;
  bold.Font()->SetStyle(TQyFontStyle::Bold);
  bold.Caption = "a\\bb";
  bold.ParseForSize(nullptr, nullptr);
  ASSERT_EQ(bold.SubCaptions().size(), 2u);
  // A toggle turns the font's bold off.
  EXPECT_EQ(std::pair(bold.SubCaptions()[0]->Font.bold(), bold.SubCaptions()[1]->Font.bold()), std::pair(true, false));
}

TEST(CaptionMarkup, EveryKindOfLineBreakEndsALine) {
  // CR LF, LF CR, CR and LF each count once
  Parsed p("a\r\nb\n\rc\rd\ne");
  EXPECT_EQ(p.caption.PlainText(), "abcde");
  ASSERT_EQ(p.Runs(), 5u);
  ASSERT_EQ(p.caption.LineWidths().size(), 5u);
  Parsed one("a");
  EXPECT_NEAR(p.caption.Height(), 5 * one.caption.Height(), 1e-3);
  for (size_t i = 0; i < 5; ++i) {
    EXPECT_EQ(p.Run(i).LineIndex, static_cast<int>(i));
    EXPECT_NEAR(p.Run(i).Position.y(), i * one.caption.Height(), 1e-3);
  }
  // an empty line still takes its height
  Parsed gap("a\n\nb");
  EXPECT_NEAR(gap.caption.Height(), 3 * one.caption.Height(), 1e-3);
  EXPECT_NEAR(gap.Run(1).Position.y(), 2 * one.caption.Height(), 1e-3);
}

TEST(CaptionMarkup, WidthIsTheLongestLineAndShortLinesFollowTheColumn) {
  const QString text = "Wide first line\nshort";
  Parsed left(text), centre(text, TQyContentAlignment::TopCenter),
      right(text, TQyContentAlignment::BottomRight);
  QPainter painter(&left.device);
  const double wLong = left.Run(0).GetWidth(&painter), wShort = left.Run(1).GetWidth(&painter);
  ASSERT_GT(wLong, wShort);
  EXPECT_FLOAT_EQ(left.caption.Width(), left.caption.LineWidths()[0]);
  EXPECT_GE(left.caption.Width(), wLong);
  EXPECT_LT(left.caption.Width(), wLong + 12); // the margin is a fraction of the em
  // left: both lines start together; centre: their middles meet; right: their ends meet
  EXPECT_DOUBLE_EQ(left.Run(0).Position.x(), left.Run(1).Position.x());
  EXPECT_NEAR(centre.Run(0).Position.x() + wLong / 2, centre.Run(1).Position.x() + wShort / 2, 1e-3);
  EXPECT_NEAR(right.Run(0).Position.x() + wLong, right.Run(1).Position.x() + wShort, 1e-3);
}

TEST(CaptionMarkup, FontSwitchAndLiteralBackslash) {
  Parsed p("a\\f[DejaVu Serif]b\\f[]c\\\\d");
  ASSERT_EQ(p.Runs(), 3u);
  EXPECT_EQ(p.caption.PlainText(), "abc\\d");
  EXPECT_EQ(p.Run(1).FontName, "DejaVu Serif");
  EXPECT_EQ(p.Run(2).FontName, "Arial"); // empty name returns to the font's
  EXPECT_EQ(p.Run(2).Text, "c\\d");

  Parsed unknown("a\\f[No Such Family Here]b\\bc");
  ASSERT_EQ(unknown.Runs(), 3u);
  EXPECT_EQ(unknown.Run(1).FontName, "Arial"); // falls back, and stays for the next runs
  EXPECT_EQ(unknown.Run(2).FontName, "Arial");

  // A family that the font system substitutes is no unknown one: the serif stand-in draws.
  Parsed serif("a\\f[Times New Roman]b");
  ASSERT_EQ(serif.Runs(), 2u);
  EXPECT_EQ(serif.Run(1).FontName, "Times New Roman");
  EXPECT_EQ(QFontInfo(serif.Run(1).Font).family(), "Liberation Serif");
}

TEST(CaptionMarkup, EmptyRunsStillTakeALine) {
  Parsed empty("\\b\\i");
  EXPECT_EQ(empty.Runs(), 0u);
  EXPECT_GT(empty.caption.Height(), 0); // one empty line
  EXPECT_FLOAT_EQ(empty.caption.Width(), 0);
}

TEST(CaptionMarkup, EmptyCaptionParsesToNothing) {
  TQyRichCaptionObject caption;
  caption.ParseForSize(nullptr, nullptr);
  EXPECT_FALSE(caption.IsParsed());
  EXPECT_FLOAT_EQ(caption.Width(), 0);
  caption.Caption = "x";
  caption.ParseForSize(nullptr, nullptr);
  EXPECT_TRUE(caption.IsParsed());
  caption.SetCaption("xy");
  EXPECT_FALSE(caption.IsParsed()); // a new source is measured again at the next paint
}

TEST(CaptionMarkup, ColourSwitchesAndFontColourChanges) {
  const QString blue = ARGBToRichID(0xFF0000FFu); // the notation's own writer
  ASSERT_TRUE(blue.startsWith('[') && blue.endsWith(']'));
  TQyRichCaptionObject caption;
  caption.Caption = "a\\c" + blue + "b\\c[]c\\c[not a colour]d";
  caption.ParseForSize(nullptr, nullptr);
  const auto& runs = caption.SubCaptions();
  ASSERT_EQ(runs.size(), 4u);
  EXPECT_EQ(caption.PlainText(), "abcd");
  // An empty id returns to the font's colour; an unreadable one leaves the colour unchanged.
  EXPECT_EQ(std::tuple(runs[0]->FillColor, runs[1]->FillColor, runs[2]->FillColor, runs[3]->FillColor),
            std::tuple(0xFF000000u, 0xFF0000FFu, 0xFF000000u, 0xFF000000u));
  // a new font colour reaches the runs in font colour only
  caption.Font()->SetFillColor(0xFF00A000u);
  EXPECT_EQ(runs[0]->FillColor, 0xFF00A000u);
  EXPECT_EQ(runs[1]->FillColor, 0xFF0000FFu);
  EXPECT_EQ(runs[2]->FillColor, 0xFF00A000u);
}
