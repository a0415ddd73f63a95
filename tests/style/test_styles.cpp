// Style objects: defaults, the setter pattern (compare, record under its caption, store,
// call back), nested gradients, Assign, and the pens and brushes they make.
#include "QyDrawing.h"
#include "QyFakeRecorder.h"
#include "QyStyles.h"
#include <QLinearGradient>
#include <QMetaProperty>
#include <gtest/gtest.h>
#include <memory>

namespace {
struct TRow {
  const char* property;
  QVariant defaultValue;
  QVariant otherValue;
  const char* caption;
};

template <class T> QVariant V(T value) { return QVariant::fromValue(value); }
QVariant C(TQyColor c) { return V(c); }
QVariant F(float f) { return V(f); }

const std::vector<TRow> GradientRows = {
    {"Visible", false, true, "Gradient visible"},
    {"Style", V(TQyGradientStyle::Linear), V(TQyGradientStyle::Elliptical), "Gradient style"},
    {"FirstColor", C(0xFFD3D3D3), C(0xFF000001), "Gradient first color"},
    {"MiddleColor", C(0xFFB0B0B0), C(0xFF000002), "Gradient middle color"},
    {"LastColor", C(0xFF808080), C(0xFF000003), "Gradient last color"},
    {"LinearAngle", F(0), F(33), "Linear gradient angle"}, {"LinearCenter", F(0.5f), F(0.25f), "Linear gradient center"},
    {"RadialCenterX", F(0.5f), F(0.1f), "X component of gradient center"},
    {"RadialCenterY", F(0.5f), F(0.9f), "Y component of gradient center"}};
const std::vector<TRow> LineRows = {
    {"Color", C(0xFFFF0000), C(0xFF0000FF), "Line color"},
    {"DashStyle", V(TDashStyle::DashStyleSolid), V(TDashStyle::DashStyleDot), "Line dash style"},
    {"Width", F(1), F(3), "Line width"}, {"Visible", true, false, "Line visible"}};
const std::vector<TRow> ArrowRows = {{"PointLength", F(5), F(9), "Arrow tip point length"},
                                     {"InnerLength", F(3), F(4), "Arrow tip point inner length"},
                                     {"PointHeight", F(2), F(6), "Arrow tip point height"}};
const std::vector<TRow> AreaRows = {
    {"Visible", false, true, "Filled area visible"},
    {"ForeColor", C(0xFFD3D3D3), C(0xFF000004), "Area fill foreground color"},
    {"BackColor", C(0xFFA9A9A9), C(0xFF000005), "Area fill background color"},
    {"AreaStyle", V(TQyAreaStyle::Total), V(TQyAreaStyle::Wave), "Area fill style"}};
const std::vector<TRow> SymbolRows = {
    {"Visible", true, false, "Point symbol visible"}, {"Size", F(11), F(7), "Point symbol size"},
    {"BorderLineWidth", F(1), F(2), "Point symbol borderline width"},
    {"BorderColor", C(0xFF0000FF), C(0xFF000006), "Point symbol borderline color"},
    {"FillColor", C(0xFF0000FF), C(0xFF000007), "Point symbol fill color"},
    {"PointSymbol", V(TQyPointSymbol::Circle), V(TQyPointSymbol::Nabla), "Point symbol selection"}};
const std::vector<TRow> AxisArrowRows = {
    {"Visible", false, true, "Axis arrow visible"}, {"PointLength", F(7), F(1), "Axis arrow tip point length"},
    {"InnerLength", F(5), F(2), "Axis arrow tip point inner length"},
    {"PointHeight", F(3), F(4), "Axis arrow tip point height"}};

// Each published property: default, one change records once under its caption with the old value,
// a second set to the same value neither records nor calls back.
void CheckRows(TQyStyleObject& object, const std::vector<TRow>& rows, int& calls) {
  QyFakeRecorder recorder;
  object.SetUndoStack(&recorder);
  for (const TRow& row : rows) {
    SCOPED_TRACE(row.property);
    EXPECT_EQ(object.property(row.property), row.defaultValue);
    recorder.Pushes.clear();
    calls = 0;
    ASSERT_TRUE(object.setProperty(row.property, row.otherValue));
    ASSERT_EQ(recorder.Pushes.size(), 1u);
    EXPECT_EQ(recorder.Pushes[0].object, &object);
    EXPECT_EQ(recorder.Pushes[0].caption, row.caption);
    EXPECT_EQ(recorder.Pushes[0].property, row.property);
    EXPECT_EQ(recorder.Pushes[0].valueBefore, row.defaultValue); // pushed before the change
    EXPECT_EQ(object.property(row.property), row.otherValue);
    EXPECT_EQ(calls, 1);
    object.setProperty(row.property, row.otherValue);
    EXPECT_EQ(recorder.Pushes.size(), 1u);
    EXPECT_EQ(calls, 1);
  }
  object.SetUndoStack(nullptr);
}
} // namespace

TEST(StyleObjects, DefaultsCaptionsAndTheSetterPattern) {
  int calls = 0;
  auto count = [&calls] { ++calls; };
  TQyGradientSettings gradient(count);
  TQyLineSettings line(count);
  TQyArrowSettings arrow(count);
  TQyAreaSettings area(count);
  TQyPointSymbolSettings symbol(count);
  TQyAxisArrowPoint axisArrow(count);
  const std::pair<TQyStyleObject*, const std::vector<TRow>*> objects[] = {
      {&gradient, &GradientRows}, {&line, &LineRows}, {&arrow, &ArrowRows},
      {&area, &AreaRows},         {&symbol, &SymbolRows}, {&axisArrow, &AxisArrowRows}};
  for (auto [object, rows] : objects) CheckRows(*object, *rows, calls);
}

// A replaying stack records nothing, a missing callback is allowed; a nested gradient records
// itself and calls its owner back.
TEST(StyleObjects, ReplayMissingCallbackAndNestedGradient) {
  QyFakeRecorder recorder;
  TQyLineSettings line(nullptr);
  line.SetWidth(4);
  line.SetUndoStack(&recorder);
  recorder.Recording = false;
  line.SetWidth(5);
  EXPECT_TRUE(recorder.Pushes.empty());
  EXPECT_FLOAT_EQ(line.GetWidth(), 5);

  recorder.Recording = true;
  int calls = 0;
  TQyAreaSettings area([&calls] { ++calls; });
  area.SetUndoStack(&recorder);
  area.GetGradient()->SetVisible(true);
  ASSERT_EQ(recorder.Pushes.size(), 1u);
  EXPECT_EQ(recorder.Pushes[0].object, area.GetGradient());
  EXPECT_EQ(recorder.Pushes[0].caption, "Gradient visible");
  EXPECT_EQ(calls, 1);
}

TEST(StyleObjects, AssignCopiesValuesAndNestedSettings) {
  TQyLineSettings source(nullptr), target(nullptr);
  source.SetColor(0xFF123456);
  source.SetWidth(2.5f);
  source.SetVisible(false);
  source.SetDashStyle(TDashStyle::DashStyleDashDot);
  source.GetGradient()->SetLastColor(0xFF654321);
  target.Assign(source);
  EXPECT_EQ(std::tuple(target.GetColor(), target.GetWidth(), target.GetVisible(), target.GetDashStyle(),
                       target.GetGradient()->GetLastColor()),
            std::tuple(0xFF123456u, 2.5f, false, TDashStyle::DashStyleDashDot, 0xFF654321u));
  EXPECT_NE(target.GetGradient(), source.GetGradient()); // copied, not shared

  // A line into an arrow: the line values come over, the arrow's own stay.
  TQyArrowSettings arrow(nullptr);
  arrow.SetPointLength(8);
  arrow.Assign(source);
  EXPECT_EQ(std::tuple(arrow.GetColor(), arrow.GetVisible(), arrow.GetPointLength()),
            std::tuple(0xFF123456u, false, 8.0f));

  QyFakeRecorder recorder; // Assign records only the values that differ
  TQyPointSymbolSettings symbol(nullptr), into(nullptr);
  symbol.SetSize(20);
  into.SetUndoStack(&recorder);
  into.Assign(symbol);
  ASSERT_EQ(recorder.Pushes.size(), 1u);
  EXPECT_EQ(recorder.Pushes[0].caption, "Point symbol size");
}

TEST(StylePens, GetPenFromColourOrGradient) {
  TQyLineSettings line(nullptr);
  line.SetColor(0xFF00FF00);
  line.SetWidth(3);
  line.SetDashStyle(TDashStyle::DashStyleDash);
  const QRectF area(10, 10, 100, 50);
  TQyPen pen = line.GetPen(area);
  EXPECT_EQ(std::tuple(pen.color(), pen.widthF(), pen.style()), std::tuple(QColor(0, 255, 0), 3.0, Qt::DashLine));

  line.SetColor(0xFF0000FF); // the pen made before does not follow
  EXPECT_EQ(pen.color(), QColor(0, 255, 0));

  line.GetGradient()->SetVisible(true); // Color is then ignored, but kept
  pen = line.GetPen(area);
  ASSERT_EQ(pen.brush().style(), Qt::LinearGradientPattern);
  const QGradientStops stops = pen.brush().gradient()->stops();
  ASSERT_EQ(stops.size(), 3);
  EXPECT_EQ(std::pair(stops[0].second, stops[2].second), std::pair(QColor(0xD3, 0xD3, 0xD3), QColor(0x80, 0x80, 0x80)));
  EXPECT_EQ(line.GetColor(), 0xFF0000FFu);
  EXPECT_EQ(std::tuple(pen.widthF(), pen.style()), std::tuple(3.0, Qt::DashLine));
}

TEST(StylePens, GradientDirectionFollowsAngles) {
  TQyGradientSettings gradient(nullptr);
  const QRectF r(0, 0, 100, 40);
  auto line = [&](float angle) {
    const auto* g = static_cast<const QLinearGradient*>(gradient.GetBrush(r, angle).gradient());
    return QLineF(g->start(), g->finalStop());
  };
  // Horizontal across the width (inflated by one pixel each side), then turned by LinearAngle
  // plus the angle argument: 90 runs downwards over the height.
  EXPECT_EQ(line(0), QLineF(-1, 20, 101, 20));
  gradient.SetLinearAngle(45);
  const QLineF down = line(45);
  EXPECT_NEAR(down.p1().y(), -1, 1e-9);
  EXPECT_NEAR(down.p2().y(), 41, 1e-9);
  EXPECT_NEAR(down.p1().x(), 50, 1e-9);
}

TEST(StyleBrushes, AreaBrushByStyleOrGradient) {
  TQyAreaSettings area(nullptr);
  EXPECT_TRUE(area.Solid());
  EXPECT_EQ(area.GetBrush(QRectF(0, 0, 10, 10)).color(), QColor(0xD3, 0xD3, 0xD3));
  area.SetAreaStyle(TQyAreaStyle::DiagonalCross);
  EXPECT_FALSE(area.Solid());
  EXPECT_EQ(area.GetBrush(QRectF(0, 0, 10, 10)).style(), Qt::TexturePattern);
  area.GetGradient()->SetVisible(true);
  area.GetGradient()->SetStyle(TQyGradientStyle::Radial);
  EXPECT_EQ(area.GetBrush(QRectF(0, 0, 10, 10)).style(), Qt::RadialGradientPattern);
}

TEST(StyleArrows, CapOutlineInLineWidths) {
  TQyAxisArrowPoint point(nullptr);
  const QPolygonF poly = ArrowPointCap(point).toFillPolygon();
  // (h, -L), (0, 0), (-h, -L), (0, -I), closed; defaults L 7, I 5, h 3.
  ASSERT_GE(poly.size(), 4);
  EXPECT_EQ(poly.mid(0, 4), QPolygonF({{3, -7}, {0, 0}, {-3, -7}, {0, -5}}));
  TQyArrowSettings arrow(nullptr);
  EXPECT_EQ(ArrowPointCap(arrow).boundingRect(), QRectF(-2, -5, 4, 5));
}
