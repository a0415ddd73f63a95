// Bars: rectangles and their drawing order for side-by-side and stacked series, ranges, labels
// (texts and places), hit tests, shared settings and undo captions, asserted on what was drawn.
#include "QyExpect.h"
#include "QyFakeRecorder.h"
#include "QyRecordingDevice.h"
#include "QyTestGraph.h"
#include <QyBars.h>
#include <QyExceptions.h>
#include <QyStyles.h>
#include <QyUndoStack.h>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QStandardItemModel>
#include <gtest/gtest.h>
#include <cmath>

namespace {
constexpr TQyColor Looks[5] = {0xFF2040A0, 0xFFA04020, 0xFF20A040, 0xFF808000, 0xFF800080};

// A graph with `n` bar series over the class boundaries 0..3 (three classes), values from `value`.
struct BarsGraph : QyTestGraph {
  std::vector<TQyBars*> bars;
  BarsGraph(int n, std::function<double(int s, int i)> value, int classes = 3) {
    std::vector<double> bounds;
    for (int i = 0; i <= classes; ++i) bounds.push_back(i);
    for (int s = 0; s < n; ++s) {
      std::vector<double> ys;
      for (int i = 0; i < classes; ++i) ys.push_back(value(s, i));
      auto* b = Add<TQyBars>(bounds, ys);
      b->GetLine()->SetVisible(false); // no outline: the filled rectangle is the bar itself
      b->GetArea()->SetForeColor(Looks[s % 5]);
      bars.push_back(b);
    }
  }
  // The filled rectangles of the bars in drawing order, with the series each belongs to.
  std::vector<std::pair<int, QRectF>> Drawn() {
    QyRecordingDevice dev;
    Paint(dev);
    std::vector<std::pair<int, QRectF>> out;
    for (const QyPrimitive& p : dev.Primitives())
      for (int s = 0; s < int(bars.size()); ++s)
        if (p.kind == QyPrimitive::Rect && p.brush.style() != Qt::NoBrush && p.brush.color().rgba() == Looks[s % 5])
          out.emplace_back(s, p.DeviceRect());
    return out;
  }
};

void ExpectRect(const QRectF& got, double l, double t, double r, double b, const std::string& what) {
  const QRectF want = QRectF(QPointF(l, t), QPointF(r, b)).normalized();
  EXPECT_NEAR(got.left(), want.left(), 1e-3) << what;
  EXPECT_NEAR(got.right(), want.right(), 1e-3) << what;
  EXPECT_NEAR(got.top(), want.top(), 1e-3) << what;
  EXPECT_NEAR(got.bottom(), want.bottom(), 1e-3) << what;
}
} // namespace

// Every bar's rectangle and the drawing order (class by class, series in list order) for
// 1, 2 and 5 series, side by side and stacked, positive, negative and mixed values, both ways.
TEST(Bars, RectanglesAndOrder) {
  struct Case {
    const char* name;
    int n;
    TQyBarsOverlayStyle overlay;
    bool horizontal;
    double (*value)(int s, int i);
  };
  auto positive = +[](int s, int i) { return 1.0 + s + 2.0 * i; };
  auto negative = +[](int s, int i) { return -(1.0 + s + 2.0 * i); };
  auto mixed = +[](int s, int i) { return (s + i) % 2 ? -(1.5 + s) : 2.0 + i; };
  const Case cases[] = {
      {"one", 1, TQyBarsOverlayStyle::Shift, false, positive},
      {"shift2", 2, TQyBarsOverlayStyle::Shift, false, positive},
      {"shift5 mixed", 5, TQyBarsOverlayStyle::Shift, false, mixed},
      {"shift2 negative horizontal", 2, TQyBarsOverlayStyle::Shift, true, negative},
      {"stack2", 2, TQyBarsOverlayStyle::Stack, false, positive},
      {"stack5 negative", 5, TQyBarsOverlayStyle::Stack, false, negative},
      {"stack5 mixed horizontal", 5, TQyBarsOverlayStyle::Stack, true, mixed},
      {"one horizontal", 1, TQyBarsOverlayStyle::Stack, true, positive},
  };
  for (const Case& c : cases) {
    BarsGraph g(c.n, c.value);
    g.bars[0]->SetOverlayStyle(c.overlay); // shared: every series takes it
    g.bars[0]->SetBarsHorizontal(c.horizontal);
    TQyAxis* classAxis = c.horizontal ? g.Y() : g.X();
    TQyAxis* valueAxis = c.horizontal ? g.X() : g.Y();
    QyTestGraph::Fix(classAxis, 0, 3);
    QyTestGraph::Fix(valueAxis, -30, 30);
    g.Render();
    const auto drawn = g.Drawn();
    ASSERT_EQ(drawn.size(), size_t(3 * c.n)) << c.name;
    const bool stack = c.overlay == TQyBarsOverlayStyle::Stack;
    const int n = stack ? 1 : c.n;
    for (int i = 0; i < 3; ++i) {
      double below = 0;
      for (int s = 0; s < c.n; ++s) {
        const auto& [series, rect] = drawn[i * c.n + s];
        const std::string what = std::string(c.name) + " class " + std::to_string(i) + " series " + std::to_string(s);
        EXPECT_EQ(series, s) << what;
        const double v = c.value(s, i);
        const double p = classAxis->NumberToWorld(i), q = classAxis->NumberToWorld(i + 1);
        const double w = std::fabs(q - p) / n;
        const int k = stack ? 1 : s + 1;
        const double end = valueAxis->NumberToWorld(stack ? below + v : v);
        if (!c.horizontal) {
          const double base = stack && s > 0 ? valueAxis->NumberToWorld(below) : valueAxis->NumberToWorld(0);
          ExpectRect(rect, p + w * (k - 1), end, p + w * k, base, what);
        } else {
          // The unstacked start lies one pixel right of zero.
          const double start = stack && s > 0 ? valueAxis->NumberToWorld(below) : valueAxis->NumberToWorld(0) + 1;
          ExpectRect(rect, start, p - w * k, end, p - w * (k - 1), what);
        }
        below += v;
      }
    }
  }
}

// Two side-by-side series of different length: the longer goes on alone at half the class; a
// class vector as long as the values gives one bar fewer; the class distance narrows the bars.
TEST(Bars, CountsAndClassDistance) {
  QyTestGraph f;
  auto* a = f.Add<TQyBars>({0, 1, 2, 3}, {1, 2, 3});
  auto* b = f.Add<TQyBars>({0, 1, 2}, {1, 2, 3}); // boundaries for two classes only
  QyTestGraph::Fix(f.X(), 0, 3);
  f.Render();
  EXPECT_EQ(a->PointCount(), 3);
  EXPECT_EQ(b->PointCount(), 2);
  const double cls = f.X()->NumberToWorld(3) - f.X()->NumberToWorld(2);
  EXPECT_NEAR(a->BarRect(2).width(), cls / 2, 1e-3);

  a->SetClassesDistance(50); // a quarter of the class on each side stays empty
  EXPECT_EQ(b->GetClassesDistance(), 50);
  f.Render();
  EXPECT_NEAR(a->BarRect(2).left(), f.X()->NumberToWorld(2) + cls / 4, 1e-3);
  EXPECT_NEAR(a->BarRect(2).width(), cls / 4, 1e-3);
}

// Auto-ranged axes cover the class boundaries, zero and the stacked sums; negative values keep
// zero as the top. Three-dimensional bars ask for room above the values for their depth.
TEST(Bars, RangesIncludeEveryBar) {
  BarsGraph g(2, [](int s, int i) { return s == 0 ? 2.0 + i : 5.0; });
  g.bars[0]->SetOverlayStyle(TQyBarsOverlayStyle::Stack);
  g.Render();
  EXPECT_EQ(g.bars[1]->LimitMinY(), 0);
  EXPECT_EQ(g.bars[1]->LimitMaxY(), 4 + 5); // the highest stacked sum
  EXPECT_EQ(g.bars[1]->LimitMinX(), 0);
  EXPECT_EQ(g.bars[1]->LimitMaxX(), 3);
  EXPECT_LE(g.Y()->GetStart(), 0);
  EXPECT_GE(g.Y()->GetStop(), 9);

  BarsGraph n(1, [](int, int i) { return -1.0 - i; });
  n.Render();
  EXPECT_EQ(n.bars[0]->LimitMinY(), -3);
  EXPECT_EQ(n.bars[0]->LimitMaxY(), 0);

  // A cuboid whose value reaches the axis end needs room for its top face.
  QyTestGraph::Fix(g.Y(), 0, 9);
  g.bars[0]->SetBarStyle(TQyBarStyle::Cuboid);
  g.Render();
  EXPECT_GT(g.bars[1]->ExtraSpaceAt(2), 0);
  EXPECT_EQ(g.bars[1]->ExtraSpaceAt(0), 0);
}

// On a logarithmic value axis the bars stand on the axis start and the range holds no zero.
TEST(Bars, LogarithmicValueAxis) {
  BarsGraph g(1, [](int, int i) { return std::pow(10.0, i + 1); });
  g.Y()->SetScaling(TQyAxisScaling::Log);
  g.Render();
  EXPECT_EQ(g.bars[0]->LimitMinY(), 10);
  QyTestGraph::Fix(g.Y(), 1, 1e4);
  g.Render();
  EXPECT_EQ(g.bars[0]->LimitMinY(), 10);
  EXPECT_EQ(g.bars[0]->LimitMaxY(), 1000);
  const auto drawn = g.Drawn();
  ASSERT_EQ(drawn.size(), 3u);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(drawn[i].second.bottom(), g.Y()->NumberToWorld(g.Y()->GetStart()), 1e-3);
    EXPECT_NEAR(drawn[i].second.top(), g.Y()->NumberToWorld(std::pow(10.0, i + 1)), 1e-3);
  }
}

// Label texts for every label source, against hand-computed values: values 1, 3, 6 sum to 10.
TEST(Bars, LabelTexts) {
  struct Case {
    TQyLabelStyle from;
    const char* format;
    std::vector<QString> want;
  };
  const Case cases[] = {
      {TQyLabelStyle::Value, "", {"1", "3", "6"}},
      {TQyLabelStyle::Value, "0.0", {"1.0", "3.0", "6.0"}},
      {TQyLabelStyle::CaptionsList, "", {"a", "b", ""}},
      {TQyLabelStyle::Percent, "", {"10%", "30%", "60%"}},
      {TQyLabelStyle::Percent, "0.0", {"10.0%", "30.0%", "60.0%"}},
      {TQyLabelStyle::CaptionAndValue, "", {"a 1", "b 3", "6"}},
      {TQyLabelStyle::CaptionAndPercent, "", {"a 10%", "b 30%", "60%"}},
  };
  BarsGraph g(1, [](int, int i) { return std::vector<double>{1, 3, 6}[i]; });
  TQyBars* b = g.bars[0];
  b->SetCaptions({"a", "b"}); // shorter than the data: the last bar has no caption
  b->SetLabelPosition(TQyBarLabelPosition::Centered);
  for (const Case& c : cases) {
    b->SetLabelFrom(c.from);
    b->SetLabelFormat(c.format);
    g.Render();
    ASSERT_EQ(b->CaptionObjects().Count(), 3);
    for (int j = 0; j < 3; ++j)
      EXPECT_EQ(b->CaptionObjects().GetValue(j)->Caption, c.want[j]) << int(c.from) << " " << c.format << " " << j;
  }
  // The handler has the last word, and gets the data index.
  b->OnGetLabel = [](TQyBars*, TQyGetLabelEventArgs& a) { a.Caption = QString("#%1").arg(a.Index); };
  b->SetLabelFrom(TQyLabelStyle::Value);
  g.Render();
  QyRecordingDevice dev;
  g.Paint(dev);
  EXPECT_EQ(dev.WithText("#2").size(), 1u);
}

// Percent of a series whose values sum to zero shows 0 %; a stacked bar shows its own value and
// its own share.
TEST(Bars, PercentOfZeroSumAndStackedLabels) {
  BarsGraph z(1, [](int, int i) { return std::vector<double>{-2, 0, 2}[i]; });
  z.bars[0]->SetLabelFrom(TQyLabelStyle::Percent);
  z.bars[0]->SetLabelPosition(TQyBarLabelPosition::Centered);
  z.Render();
  for (int j = 0; j < 3; ++j) EXPECT_EQ(z.bars[0]->CaptionObjects().GetValue(j)->Caption, "0%");

  BarsGraph s(2, [](int k, int i) { return k == 0 ? 1.0 + i : 4.0; });
  s.bars[0]->SetOverlayStyle(TQyBarsOverlayStyle::Stack);
  for (TQyBars* b : s.bars) b->SetLabelPosition(TQyBarLabelPosition::Centered);
  s.bars[1]->SetLabelFrom(TQyLabelStyle::Percent);
  s.Render();
  EXPECT_EQ(s.bars[0]->CaptionObjects().GetValue(2)->Caption, "3");
  EXPECT_EQ(s.bars[1]->CaptionObjects().GetValue(2)->Caption, "33.33%"); // 4 of 12
  EXPECT_EQ(s.bars[1]->Get_Y(2), 3 + 4);
}

// Where each label stands, for rising and hanging vertical bars and for horizontal bars: the
// positions count from the base towards the value end, and a label too big for its place goes
// beyond the end (or to the centre when another bar stands on it).
TEST(Bars, LabelPositions) {
  using P = TQyBarLabelPosition;
  struct Case {
    P pos;
    double fraction; // along the bar from the value end towards the base; < 0: by the label's size
  };
  const Case cases[] = {{P::Centered, 0.5}, {P::GoldenCut, 0.381966}, {P::ThreeFourth, 0.25},
                        {P::InTop, -1}, {P::OnBottom, -2}, {P::OnTopOfBar, -3}};
  for (bool horizontal : {false, true})
    for (double sign : {1.0, -1.0}) {
      BarsGraph g(1, [sign](int, int i) { return sign * (i == 0 ? 0.3 : 20.0); });
      TQyBars* b = g.bars[0];
      b->SetBarsHorizontal(horizontal);
      QyTestGraph::Fix(horizontal ? g.X() : g.Y(), -25, 25);
      for (const Case& c : cases) {
        b->SetLabelPosition(c.pos);
        g.Render();
        for (int j : {0, 1}) {
          const TQyRichCaptionObject* l = b->CaptionObjects().GetValue(j);
          const QPointF p = b->Points()[j], q = b->SecondCorners()[j];
          const double along = horizontal ? l->Width() : l->Height(); // extent along the bar
          // Unit vector from the base towards the value end, along the value axis.
          const double endPos = horizontal ? q.x() : p.y(), basePos = horizontal ? p.x() : q.y();
          const double dir = endPos > basePos ? 1 : -1;
          const double inset = horizontal ? 0.5 * (l->Width() + l->Height()) : 0.75 * along;
          double want;
          if (c.fraction >= 0) want = endPos + c.fraction * (basePos - endPos);
          else if (c.pos == P::InTop) want = endPos - dir * inset;
          else if (c.pos == P::OnBottom) want = basePos + dir * inset;
          else want = endPos + dir * (0.5 * along + (horizontal ? 0.25 * l->Height() : 0));
          const double lo = std::min(endPos, basePos), hi = std::max(endPos, basePos);
          const bool fits = lo + along / 2 <= want && want <= hi - along / 2;
          if (c.pos != P::OnTopOfBar && !fits) // on top instead
            want = endPos + dir * (0.5 * along + (horizontal ? 0.25 * l->Height() : 0));
          const std::string what = std::string(horizontal ? "horizontal" : "vertical") + (sign > 0 ? " +" : " -") +
                                   " position " + std::to_string(int(c.pos)) + " bar " + std::to_string(j);
          EXPECT_NEAR(horizontal ? l->X : l->Y, want, 1e-3) << what;
          if (j == 1 && c.pos != P::OnTopOfBar) {
            EXPECT_TRUE(fits) << what;
          } // the tall bar holds every label
        }
      }
    }
}

// Stacked labels that do not fit go to the centre of their bar; a stacked series with another
// on top cannot put its labels on top of the bar, and keeps the changed position.
TEST(Bars, StackedLabelsKeepInside) {
  BarsGraph g(2, [](int, int i) { return i == 0 ? 0.2 : 10.0; });
  g.bars[0]->SetOverlayStyle(TQyBarsOverlayStyle::Stack);
  QyTestGraph::Fix(g.Y(), 0, 25);
  g.bars[0]->SetLabelPosition(TQyBarLabelPosition::OnTopOfBar);
  g.bars[1]->SetLabelPosition(TQyBarLabelPosition::OnTopOfBar);
  g.Render();
  EXPECT_EQ(g.bars[0]->GetLabelPosition(), TQyBarLabelPosition::InTop);
  EXPECT_EQ(g.bars[1]->GetLabelPosition(), TQyBarLabelPosition::OnTopOfBar);
  const TQyRichCaptionObject* small = g.bars[0]->CaptionObjects().GetValue(0);
  const QRectF r = g.bars[0]->BarRect(0);
  EXPECT_NEAR(small->Y, r.center().y(), 1e-3); // too short for the label: centred, not on top
  EXPECT_LT(g.bars[1]->CaptionObjects().GetValue(1)->Y, g.bars[1]->BarRect(1).top());
}

// A bar thinner than its outline is not drawn, while its label is.
TEST(Bars, ThinBarKeepsItsLabel) {
  BarsGraph g(1, [](int, int) { return 5.25; }, 400);
  g.bars[0]->GetLine()->SetVisible(true);
  g.bars[0]->GetLine()->SetWidth(3);
  g.bars[0]->SetLabelPosition(TQyBarLabelPosition::Centered);
  g.Render();
  ASSERT_LT(g.bars[0]->BarRect(0).width(), 3);
  QyRecordingDevice dev;
  g.Paint(dev);
  EXPECT_TRUE(g.Drawn().empty());
  EXPECT_EQ(dev.WithText("5.25").size(), 400u);
}

// Picking: a bar is found on its face and, for 3D bars, on its depth; nothing between bars or
// while the points are stale.
TEST(Bars, HitTest) {
  BarsGraph g(2, [](int s, int i) { return 2.0 + s + i; });
  QyTestGraph::Fix(g.Y(), 0, 10);
  g.bars[0]->SetClassesDistance(40);
  g.Render();
  TQyBars* b = g.bars[1];
  const QRectF r = b->BarRect(2);
  EXPECT_EQ(b->FindPoint(r.center().x(), r.center().y()), 2);
  EXPECT_EQ(b->FindPoint(r.left() - 0.5, r.center().y()), -1); // the neighbour belongs to series 0
  EXPECT_EQ(b->FindPoint(r.center().x(), r.top() - 2), -1);
  EXPECT_EQ(b->NearestPoint(r.topLeft() + QPointF(1, 1)).Index, 2);
  b->SetBarStyle(TQyBarStyle::Cuboid);
  g.Render();
  const QRectF c = b->BarRect(2);
  EXPECT_EQ(b->FindPoint(c.right() + b->Depth3DX() / 2, c.top() - b->Depth3DY() / 2), 2);
  b->GetYData()->Add(1);
  b->PointsModified();
  EXPECT_EQ(b->FindPoint(c.center().x(), c.center().y()), -1);
}

// 3D styles: a cuboid is drawn as faces with its depth, a cylinder as body and cap, the graph's
// box takes the depth, and the legend sample follows the style.
TEST(Bars, ThreeDimensionalStyles) {
  BarsGraph g(1, [](int, int i) { return 1.0 + i; });
  for (TQyBarStyle style : {TQyBarStyle::Cuboid, TQyBarStyle::Cylinder}) {
    g.bars[0]->SetBarStyle(style);
    g.Render();
    float dx = 0, dy = 0;
    EXPECT_TRUE(g.bars[0]->GraphDepth(dx, dy));
    const double w = g.bars[0]->BarRect(0).width();
    EXPECT_NEAR(dx, w * 50 / 240, 1e-3);
    EXPECT_NEAR(dy, w * 50 / 400, 1e-3);
    QyRecordingDevice dev;
    g.Paint(dev);
    const auto kind = style == TQyBarStyle::Cuboid ? QyPrimitive::Polygon : QyPrimitive::Ellipse;
    EXPECT_GE(dev.OfKind(kind).size(), 3u) << int(style);

    QyRecordingDevice item;
    QPainter p(&item);
    g.bars[0]->DrawListItem({&p, QRectF(10, 10, 40, 16), 0});
    EXPECT_FALSE(item.OfKind(kind).empty()) << int(style);
  }
  g.bars[0]->SetBarStyle(TQyBarStyle::Flat);
  float dx, dy;
  EXPECT_FALSE(g.bars[0]->GraphDepth(dx, dy));
}

// Defaults and undo captions; the shared settings reach every bar series of the graph and are
// recorded once; captions cannot be set while they come from a data model.
TEST(Bars, SettingsAndUndoCaptions) {
  BarsGraph g(2, [](int, int i) { return 1.0 + i; });
  TQyBars* b = g.bars[0];
  EXPECT_EQ(b->GetDepth3D(), 50.0);
  EXPECT_EQ(b->GetLabelSize(), 20.0f);
  EXPECT_EQ(b->GetLabelColor(), 0xFFFF0000u);
  EXPECT_EQ(b->GetFont()->GetSize(), 12.0f);
  EXPECT_EQ(b->GetLine()->GetColor(), 0xFF0000FFu);
  QyFakeRecorder rec;
  b->SetUndoStack(&rec);
  struct Change {
    const char* property;
    QVariant value;
    const char* caption;
  };
  const Change changes[] = {
      {"BarStyle", int(TQyBarStyle::Cylinder), "Bars style"},
      {"BarsHorizontal", true, "Bars horizontal"},
      {"Depth3D", 30.0, "Bars 3D depth"},
      {"ClassesDistance", 10.0, "Bars distance of classes"},
      {"OverlayStyle", int(TQyBarsOverlayStyle::Stack), "Bars stacked/shifted overlays"},
      {"Captions", QStringList{"x", "y"}, "Bars captions"},
      {"LabelColor", 0xFF00FF00u, "Labels color"},
      {"LabelFormat", "0.0", "Labels output format"},
      {"LabelFrom", int(TQyLabelStyle::Percent), "Labels from list/values/percent"},
      {"LabelPosition", int(TQyBarLabelPosition::InTop), "Labels position"},
      {"LabelVertical", true, "Bars vertical labels"},
      {"LabelSize", 30.0f, "Label size"},
  };
  for (const Change& c : changes) {
    rec.Pushes.clear();
    ASSERT_TRUE(b->setProperty(c.property, c.value)) << c.property;
    ASSERT_EQ(rec.Pushes.size(), 1u) << c.property;
    EXPECT_EQ(rec.Pushes[0].caption, c.caption);
  }
  EXPECT_EQ(g.bars[1]->GetBarStyle(), TQyBarStyle::Cylinder);
  EXPECT_TRUE(g.bars[1]->GetBarsHorizontal());
  EXPECT_EQ(g.bars[1]->GetOverlayStyle(), TQyBarsOverlayStyle::Stack);

  // A larger font scales the label size alike.
  b->GetFont()->SetSize(24);
  EXPECT_FLOAT_EQ(b->GetLabelSize(), 60.0f);

  QStandardItemModel model;
  b->SetDataSource(&model);
  EXPECT_EQ(QyMessageOf<EQyException>([&] { b->SetCaptions({"z"}); }),
            "Setting captions list not allowed with database binding set");
}

// A histogram fed from a real SQLite table: counts from one column, bar captions from another;
// a new row reaches both at the next picture.
TEST(Bars, HistogramFromDatabase) {
  {
    QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "qy_bars");
    db.setDatabaseName(":memory:");
    ASSERT_TRUE(db.open()) << db.lastError().text().toStdString();
    QSqlQuery q(db);
    ASSERT_TRUE(q.exec("CREATE TABLE h (bin TEXT, n REAL)"));
    ASSERT_TRUE(q.exec("INSERT INTO h VALUES ('low', 3), ('mid', 7), (NULL, 5), ('top', 1)"));
  }
  {
    QSqlQueryModel model;
    model.setQuery("SELECT bin, n FROM h ORDER BY rowid", QSqlDatabase::database("qy_bars"));
    QyTestGraph f;
    auto* counts = new TQyDoubleVector(f.form.get());
    auto* b = new TQyBars(f.form.get());
    b->SetYData(counts);
    b->SetXAxis(f.X());
    b->SetYAxis(f.Y());
    counts->SetDataSource(&model);
    counts->SetDataField("n");
    b->SetDataSource(&model);
    b->SetCaptionsField("bin");
    b->SetLabelFrom(TQyLabelStyle::CaptionAndValue);
    b->SetLabelPosition(TQyBarLabelPosition::Centered);
    f.Render();
    ASSERT_EQ(b->PointCount(), 4);
    const char* want[] = {"low 3", "mid 7", "5", "top 1"};
    for (int j = 0; j < 4; ++j) EXPECT_EQ(b->CaptionObjects().GetValue(j)->Caption, want[j]);
    EXPECT_EQ(b->LimitMaxY(), 7);
    EXPECT_TRUE(b->GetCaptions().isEmpty()); // the list reads as none while bound

    QSqlQuery(QSqlDatabase::database("qy_bars")).exec("INSERT INTO h VALUES ('new', 9)");
    model.setQuery("SELECT bin, n FROM h ORDER BY rowid", QSqlDatabase::database("qy_bars"));
    f.Render();
    ASSERT_EQ(b->PointCount(), 5);
    EXPECT_EQ(b->CaptionObjects().GetValue(4)->Caption, "new 9");
  }
  QSqlDatabase::removeDatabase("qy_bars");
}

// Undo of a shared setting restores every bar series; undo of the orientation swaps the data back.
TEST(Bars, UndoOfSharedSettings) {
  BarsGraph g(2, [](int s, int i) { return 1.0 + s + i; });
  TQyUndoStack stack;
  stack.SetLimit(0);
  g.graph->SetUndoStack(&stack);
  TQyCustomDoubleVector* values = g.bars[1]->GetYData();
  TQyCustomDoubleVector* first = g.bars[0]->GetYData();
  g.bars[0]->SetBarStyle(TQyBarStyle::Cuboid);
  g.bars[1]->SetBarsHorizontal(true);
  EXPECT_EQ(g.bars[0]->GetXData(), first); // the values moved to X in every series
  stack.Undo();
  EXPECT_FALSE(g.bars[0]->GetBarsHorizontal());
  EXPECT_EQ(g.bars[1]->GetYData(), values);
  stack.Undo();
  for (TQyBars* b : g.bars) EXPECT_EQ(b->GetBarStyle(), TQyBarStyle::Flat);
}
