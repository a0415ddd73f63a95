// Colours: the named table against the CSS/SVG keyword values, text forms and their round trips,
// lightness arithmetic against an independent implementation (gen_hsl.py), contrast rules,
// hatch patterns and pens.
#include "QyExceptions.h"
#include "QyExpect.h"
#include "QyGDI.h"
#include "QyHatch.h"
#include "QyStyles.h"
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QSet>
#include <gtest/gtest.h>

namespace {
// The 140 web colours are entries 28..167.
constexpr int FirstNamedWeb = QyFirstWebColor + 1;
}

TEST(ColorTable, WebColoursHaveTheCssKeywordValues) {
  // QColor knows the SVG/CSS keywords by lower-case name; their values are the reference (they
  // differ from X11 for Gray, Green, Maroon and Purple, where CSS is right).
  int checked = 0;
  for (int i = FirstNamedWeb; i <= QyColorCount; ++i) {
    const QString name = QyColorName(i);
    const QColor reference = QColor::fromString(name.toLower());
    ASSERT_TRUE(reference.isValid()) << qPrintable(name);
    EXPECT_EQ(QyColorValue(i), reference.rgba()) << qPrintable(name);
    ++checked;
  }
  EXPECT_EQ(checked, 140);
  for (auto [name, c] : {std::pair{"Gray", 0xFF808080u}, {"Green", 0xFF008000u}, {"Maroon", 0xFF800000u},
                         {"Purple", 0xFF800080u}})
    EXPECT_EQ(ColorToARGB(name), c) << name;
}

TEST(ColorTable, OrderAndSpecialEntries) {
  // Red comes after the greys and the dark reds, ordered by hue.
  for (auto [i, name] : {std::pair{1, "ActiveBorder"}, {26, "WindowText"}, {27, "Transparent"}, {28, "Black"},
                         {44, "Red"}, {167, "LightPink"}})
    EXPECT_EQ(QyColorName(i), name) << i;
  EXPECT_EQ(QyColorValue(27), 0x00FFFFFFu);
  QSet<QString> names;
  for (int i = 1; i <= QyColorCount; ++i) names.insert(QyColorName(i).toUpper());
  EXPECT_EQ(names.size(), QyColorCount) << "names must be unique regardless of case";
  EXPECT_THROW(QyColorName(0), ERangeError);
  EXPECT_THROW(QyColorValue(168), ERangeError);
}

TEST(ColorTable, SystemColoursComeFromTheApplicationPalette) {
  const QPalette palette = QGuiApplication::palette();
  EXPECT_EQ(ColorToARGB("Window"), palette.color(QPalette::Active, QPalette::Base).rgba() | 0xFF000000u);
  EXPECT_EQ(ColorToARGB("Highlight"), palette.color(QPalette::Active, QPalette::Highlight).rgba() | 0xFF000000u);
  EXPECT_EQ(ColorToARGB("GrayText"), palette.color(QPalette::Disabled, QPalette::Text).rgba() | 0xFF000000u);
  for (int i = 1; i <= 26; ++i) EXPECT_EQ(GetAlpha(QyColorValue(i)), 255) << i;
}

TEST(ColorText, NamesInAnyCaseAndNumbers) {
  const struct { const char* text; TQyColor value; } cases[] = {
      {"DarkRed", 0xFF8B0000u},   {"darkred", 0xFF8B0000u}, {"DARKRED", 0xFF8B0000u},
      {"$80FF0000", 0x80FF0000u}, {"$80ff0000", 0x80FF0000u}, // half-transparent red
      {"255", 255u},              {"-1", 0xFFFFFFFFu},      {"0x10", 16u},
      // Integer text as everywhere: leading zeros of any length, blanks before it.
      {"$000000000080FF0000", 0x80FF0000u}, {"000000000000255", 255u}, {" $10", 16u}};
  for (const auto& c : cases) EXPECT_EQ(ColorToARGB(c.text), c.value) << c.text;
}

TEST(ColorText, BadTextRaisesTheConversionMessage) {
  // The message quotes the upper-cased text.
  EXPECT_EQ(QyMessageOf<EConvertError>([] { ColorToARGB("Nonsense"); }), "'NONSENSE' is not a valid integer value");
  // "$1FFFFFFFF" is beyond 32 bits; decimal text is a signed 32-bit integer.
  for (const char* text : {"", "$", "$1FFFFFFFF", "4294967295", "12AB"})
    EXPECT_THROW(ColorToARGB(text), EConvertError) << text;
}

TEST(ColorText, ValueToName) {
  // The web search starts at Transparent; of two names for one value the first in table order prints.
  for (auto [c, name] : {std::pair{0xFF8B0000u, "DarkRed"}, {0x808B0000u, "$808B0000"}, {0x00000001u, "$00000001"},
                         {0x00FFFFFFu, "Transparent"}, {0xFF00FFFFu, "Aqua"}, {0xFFFF00FFu, "Magenta"}})
    EXPECT_EQ(ARGBToString(c), name) << std::hex << c;
  EXPECT_EQ(ARGBToString(0x00FFFFFF, true), "Transparent");
  // With system colours, a system entry of the same value shadows the web name.
  const TQyColor window = ColorToARGB("Window");
  const QString withSystem = ARGBToString(window, true);
  EXPECT_EQ(ColorToARGB(withSystem), window);
  int firstSystem = 0;
  for (int i = 1; i <= 26 && !firstSystem; ++i)
    if (QyColorValue(i) == window) firstSystem = i;
  EXPECT_EQ(withSystem, QyColorName(firstSystem));
}

TEST(ColorText, EveryFormReadsBack) {
  for (int i = QyFirstWebColor; i <= QyColorCount; ++i)
    EXPECT_EQ(ColorToARGB(ARGBToString(QyColorValue(i))), QyColorValue(i)) << i;
  for (TQyColor c : {0x00000000u, 0x12345678u, 0x80FF0000u, 0xFEFFFFFFu, 0xFF010203u})
    EXPECT_EQ(ColorToARGB(ARGBToString(c)), c);
}

TEST(ColorText, RichIdentifiers) {
  EXPECT_EQ(ARGBToRichID(0x80FF0102), "[A=128, R=255, G=1, B=2]");
  // Without the closing bracket as rich captions pass it; channels truncated to a byte.
  for (auto [text, c] : {std::pair{"[A=128, R=255, G=1, B=2", 0x80FF0102u}, {"[A=128, R=255, G=1, B=2]", 0x80FF0102u},
                         {"[A=255, R=256, G=1, B=2", 0xFF000102u}, {"[A=000000000255, R=0, G=0, B=$0000000000FF", 0xFF0000FFu}})
    EXPECT_EQ(RichIDToTQyColor(text), c) << text;
  EXPECT_THROW(RichIDToTQyColor("[A=255, R=x, G=1, B=2"), EConvertError);
  EXPECT_THROW(RichIDToTQyColor("nothing"), EConvertError);
  for (TQyColor c : {0u, 0xFFFFFFFFu, 0x7F00FF80u})
    EXPECT_EQ(RichIDToTQyColor(ARGBToRichID(c)), c);
}

namespace {
struct THslCase {
  TQyColor c;
  float hue, saturation, lightness;
  TQyColor darker, brighter; // Brighten by 0.8 and 1.3
};
// Generated by tests/style/gen_hsl.py (Python's colorsys).
const THslCase HslCases[] = {
    {0xFF8B0000, 0.0000, 1.0000, 0.2725, 0xFF6F0000, 0xFFB50000},
    {0xFF6495ED, 218.5401, 0.7919, 0.6608, 0xFF286CE6, 0xFFBFD3F8},
    {0xFFFFD700, 50.5882, 1.0000, 0.5000, 0xFFCCAC00, 0xFFFFE34D},
    {0xFF2E8B57, 146.4516, 0.5027, 0.3627, 0xFF256F46, 0xFF3CB571},
    {0xFF9932CC, 280.1299, 0.6063, 0.4980, 0xFF7A28A3, 0xFFB86FDC},
    {0xFF808080, 0.0000, 0.0000, 0.5020, 0xFF666666, 0xFFA6A6A6},
    {0xFF123456, 210.0000, 0.6538, 0.2039, 0xFF0E2A45, 0xFF174470},
    {0xFFF0E68C, 54.0000, 0.7692, 0.7451, 0xFFE7D749, 0xFFFDFCF1},
    {0x80FF6347, 9.1304, 1.0000, 0.6392, 0x80FF2C06, 0x80FFB6A9},
    {0xFF00CED1, 180.8612, 1.0000, 0.4098, 0xFF00A5A7, 0xFF11FCFF},
};

// Channels within one step: the library computes in single precision, the reference in double.
void ExpectNear(TQyColor actual, TQyColor expected) {
  EXPECT_EQ(GetAlpha(actual), GetAlpha(expected));
  for (auto channel : {GetR, GetG, GetB})
    EXPECT_NEAR(channel(actual), channel(expected), 1) << std::hex << actual << " vs " << expected;
}
} // namespace

TEST(ColorArithmetic, HueSaturationLightnessAndBrightenAgreeWithTheReference) {
  for (const auto& t : HslCases) {
    EXPECT_NEAR(GetHue(t.c), t.hue, 1e-3) << std::hex << t.c;
    EXPECT_NEAR(GetSaturation(t.c), t.saturation, 1e-4) << std::hex << t.c;
    EXPECT_NEAR(GetBrightness(t.c), t.lightness, 1e-4) << std::hex << t.c;
    ExpectNear(Brighten(t.c, 0.8f), t.darker); // alpha kept
    ExpectNear(Brighten(t.c, 1.3f), t.brighter);
    ExpectNear(HSLToColor(t.lightness, t.saturation, t.hue / 360), t.c | 0xFF000000u);
  }
  EXPECT_EQ(Brighten(0xFF000000, 2.0f), 0xFF000000u); // lightness 0 stays black
}

TEST(ColorArithmetic, HslToColorSpecialCases) {
  // Arguments are lightness, saturation, hue; grey: 127.5 rounds half to even, to 128.
  const struct { float l, s, h; TQyColor c; } cases[] = {
      {0, 1, 0.5f, 0xFF000000u}, {0.5f, 0, 0.3f, 0xFF808080u}, {0.5f, 1, 0, 0xFFFF0000u},
      {0.5f, 1, 1.0f / 3, 0xFF00FF00u}, {0.5f, 1, 2.0f / 3, 0xFF0000FFu}};
  for (const auto& c : cases) EXPECT_EQ(HSLToColor(c.l, c.s, c.h), c.c) << c.l << " " << c.s << " " << c.h;
}

TEST(ColorArithmetic, ContrastColours) {
  // Background: yellows (hue 45..85) DimGray on light, white on dark; others white up to
  // lightness 0.8 inclusive (0xCCCCCC), DimGray above.
  const TQyColor back[][2] = {{0xFFFFFF00, 0xFF696969}, {0xFF808000, 0xFFFFFFFF}, {0xFFFF0000, 0xFFFFFFFF},
                              {0xFFFFFFFF, 0xFF696969}, {0xFFCCCCCC, 0xFFFFFFFF}};
  for (const auto& c : back) EXPECT_EQ(ContrastBackGroundARGB(c[0]), c[1]) << std::hex << c[0];
  // Foreground: hue 240 light and dark, hue 0 below 0.75, light grey, hue 300.
  const TQyColor fore[][2] = {{0xFF0000FF, 0xFF8B0000}, {0xFF000080, 0xFFF08080}, {0xFFFF0000, 0xFF90EE90},
                              {0xFFFFFFFF, 0xFF006400}, {0xFFFF00FF, 0xFF90EE90}};
  for (const auto& c : fore) EXPECT_EQ(ContrastForeColorARGB(c[0]), c[1]) << std::hex << c[0];
}

namespace {
int SetPixels(const TQyHatchBits& bits) {
  int n = 0;
  for (auto row : bits) n += __builtin_popcount(row);
  return n;
}
} // namespace

TEST(AreaBrushes, PercentPatternsHaveTheirDensity) {
  const int percents[12] = {5, 10, 20, 25, 30, 40, 50, 60, 70, 75, 80, 90};
  const int expected[12] = {3, 6, 13, 16, 19, 26, 32, 38, 45, 48, 51, 58}; // of 64, rounded by hand
  for (int i = 0; i < 12; ++i)
    EXPECT_EQ(SetPixels(QyHatchBits(6 + i)), expected[i]) << percents[i] << "%";
}

TEST(AreaBrushes, LinePatternsAndDistinctness) {
  EXPECT_EQ(QyHatchBits(int(TQyAreaStyle::Horizontal)), (TQyHatchBits{0xFF, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(QyHatchBits(int(TQyAreaStyle::Vertical)),
            (TQyHatchBits{0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80}));
  // Forward diagonal runs down to the right, backward up to the right.
  const TQyHatchBits fwd = QyHatchBits(int(TQyAreaStyle::ForwardDiagonal));
  const TQyHatchBits bwd = QyHatchBits(int(TQyAreaStyle::BackwardDiagonal));
  for (int y = 0; y < 8; ++y) {
    EXPECT_EQ(fwd[size_t(y)], 0x80 >> y);
    EXPECT_EQ(bwd[size_t(y)], 0x01 << y);
  }
  QSet<quint64> seen;
  for (int i = 0; i < QyHatchCount; ++i) {
    const TQyHatchBits b = QyHatchBits(i);
    const int n = SetPixels(b);
    EXPECT_GT(n, 0) << i;
    EXPECT_LT(n, 64) << i;
    quint64 key = 0;
    for (auto row : b) key = (key << 8) | row;
    seen.insert(key);
  }
  EXPECT_EQ(seen.size(), QyHatchCount) << "every style has its own pattern";
  EXPECT_THROW(QyHatchBits(53), ERangeError);
}

TEST(AreaBrushes, GetAreaBrush) {
  const QBrush solid = GetAreaBrush(TQyAreaStyle::Total, 0xFF112233, 0xFF445566);
  EXPECT_EQ(std::pair(solid.style(), solid.color().rgba()), std::pair(Qt::SolidPattern, 0xFF112233u));
  const QBrush cross = GetAreaBrush(TQyAreaStyle::Cross, 0xFF112233, 0x80445566);
  ASSERT_EQ(cross.style(), Qt::TexturePattern);
  const QImage tile = cross.textureImage();
  ASSERT_EQ(tile.size(), QSize(8, 8));
  EXPECT_EQ(tile.pixel(5, 0), 0xFF112233u); // the horizontal bar
  EXPECT_EQ(tile.pixel(0, 5), 0xFF112233u); // the vertical bar
  EXPECT_EQ(tile.pixel(3, 3), 0x80445566u); // background keeps its alpha
}

TEST(Pens, ForwardersRoundTrip) {
  TQyPen pen(0x80FF0000, 2.5f);
  EXPECT_EQ(pen.color(), QColor(255, 0, 0, 128));
  EXPECT_FLOAT_EQ(pen.widthF(), 2.5f);
  EXPECT_EQ(pen.capStyle(), Qt::FlatCap);
  for (int s = int(TDashStyle::DashStyleSolid); s <= int(TDashStyle::DashStyleCustom); ++s) {
    pen.Set_DashStyle(TDashStyle(s)); // through the framework's pen style and back
    EXPECT_EQ(pen.Get_DashStyle(), TDashStyle(s));
  }
  pen.Set_DashStyle(TDashStyle::DashStyleDot);
  EXPECT_EQ(pen.style(), Qt::DotLine);
}
