#include "QyTestGraph.h"
#include <QySeries.h>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {
std::vector<double> Range(int n, double step = 1.0) {
  std::vector<double> v(n);
  for (int i = 0; i < n; ++i) v[i] = i * step;
  return v;
}
} // namespace

TEST(SeriesData, YOnlyUsesIndicesAndSingleValueNeedsASymbol) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({}, {4, 9, 2, 7});
  f.Render();
  EXPECT_EQ(s->GetCount(), 4);
  EXPECT_EQ(std::tuple(s->LimitMinX(), s->LimitMaxX(), s->LimitMinY(), s->LimitMaxY()), std::tuple(0.0, 3.0, 2.0, 9.0));
  EXPECT_EQ(s->GetXData()->GetValue(2), 2);

  TQyLineSeries* one = f.AddSeries({1}, {5});
  f.Render();
  EXPECT_GT(one->LimitMinX(), one->LimitMaxX()); // a single value without a symbol draws nothing
  one->PointSymbol()->SetVisible(true);
  one->RangesModified();
  f.Render();
  EXPECT_EQ(std::pair(one->LimitMinY(), one->LimitMaxY()), std::pair(5.0, 5.0));
}

// Every pixel column keeps the lowest and highest point of the data that fall into it, and the
// polyline enters and leaves the column at the first and last point: checked against a brute
// force pass over the same pixels.
TEST(SeriesPoints, RunCompressionKeepsEachColumnsExtremes) {
  QyTestGraph f(500, 300);
  const int n = 200'000;
  std::mt19937 rng(7);
  std::uniform_real_distribution<double> noise(-50, 50);
  std::vector<double> ys(n);
  for (int i = 0; i < n; ++i) ys[i] = 1000 * std::sin(i / 3000.0) + noise(rng);
  TQyLineSeries* s = f.AddSeries(Range(n), ys);
  QyTestGraph::Fix(f.Y(), -1100, 1100);
  f.Render();
  ASSERT_FALSE(s->PointsStale());
  const int columns = int(f.graph->DataArea().width()) + 2;
  EXPECT_LE(s->PointCount(), 4 * columns);
  EXPECT_GE(s->PointCount(), 2 * (columns - 4));

  using Columns = std::map<int, std::pair<double, double>>; // column -> (min y, max y) in pixels
  auto add = [](Columns& c, double px, double py) {
    auto [it, fresh] = c.try_emplace(int(std::floor(px)), py, py);
    it->second = {std::min(it->second.first, py), std::max(it->second.second, py)};
  };
  Columns expect, got;
  for (int i = 0; i < n; ++i) add(expect, f.X()->NumberToWorld(i), f.Y()->NumberToWorld(ys[i]));
  for (int k = 0; k < s->PointCount(); ++k) add(got, s->Points()[k].x(), s->Points()[k].y());
  ASSERT_EQ(got.size(), expect.size());
  for (const auto& [col, mm] : expect) {
    EXPECT_NEAR(got[col].first, mm.first, 1e-3) << "column " << col;
    EXPECT_NEAR(got[col].second, mm.second, 1e-3) << "column " << col;
  }
  // Data order is kept: indices never go back.
  for (int k = 1; k < s->PointCount(); ++k) EXPECT_GT(s->PointIndices()[k], s->PointIndices()[k - 1]);
}

// Appending to a series whose axes stay put continues the points where they ended; the result is
// the same as computing them all afresh.
TEST(SeriesPoints, AppendedValuesContinueIncrementally) {
  QyTestGraph f(500, 300);
  std::vector<double> ys(5000);
  for (size_t i = 0; i < ys.size(); ++i) ys[i] = std::sin(i / 100.0);
  TQyLineSeries* s = f.AddSeries(Range(5000), ys);
  QyTestGraph::Fix(f.X(), 0, 10000);
  QyTestGraph::Fix(f.Y(), -1.5, 1.5);
  f.Render();
  auto* x = qobject_cast<TQyDoubleVector*>(s->GetXData());
  auto* y = qobject_cast<TQyDoubleVector*>(s->GetYData());
  for (int i = 5000; i < 6000; ++i) {
    x->Add(i);
    y->Add(std::sin(i / 100.0));
  }
  s->Calculate();
  s->CalculatePoints(); // incremental
  std::vector<QPointF> incremental(s->Points().Data(), s->Points().Data() + s->PointCount());
  s->PointsModified();
  s->CalculatePoints(); // from scratch
  ASSERT_EQ(s->PointCount(), int(incremental.size()));
  for (int k = 0; k < s->PointCount(); ++k) {
    EXPECT_EQ(s->Points()[k], incremental[k]) << k;
  }
  EXPECT_EQ(s->PointIndices()[s->PointCount() - 1], 5999);
}

TEST(SeriesPoints, WindowOnAscendingXKeepsOneOutsidePointPerSide) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries(Range(1000), std::vector<double>(1000, 1.0));
  s->PointSymbol()->SetVisible(true); // one point per value, no thinning across columns
  QyTestGraph::Fix(f.X(), 100.5, 200.5);
  f.Render();
  ASSERT_GT(s->PointCount(), 0);
  EXPECT_EQ(s->PointIndices()[0], 100);                    // the last value before the start
  EXPECT_EQ(s->PointIndices()[s->PointCount() - 1], 201); // the first value after the stop
}

TEST(SeriesPicking, GetYFindPointAndNearest) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries({0, 1, 2, 3, 4}, {1, 3, 5, 7, 9}); // y = 2x + 1
  EXPECT_DOUBLE_EQ(s->GetY(2.5), 6.0);
  EXPECT_DOUBLE_EQ(s->GetY(0.25), 1.5);
  TQyLineSeries* unordered = f.AddSeries({3, 0, 2}, {7, 1, 5});
  EXPECT_DOUBLE_EQ(unordered->GetY(2.5), 6.0);
  f.Render();
  const QPointF p(f.X()->NumberToWorld(3), f.Y()->NumberToWorld(7));
  EXPECT_EQ(s->FindPoint(p.x() + 0.5, p.y() - 0.5), 3);
  EXPECT_EQ(s->FindPoint(p.x() + 3, p.y()), -1);
  const TQyNearestPointResult r = s->NearestPoint(p + QPointF(4, 4));
  ASSERT_TRUE(r.Found);
  EXPECT_EQ(std::tuple(r.Index, r.X, r.Y), std::tuple(3, 3.0, 7.0));
  EXPECT_NEAR(r.Distance, std::sqrt(32.0), 1e-4);
  // After a change and before a paint nothing is found.
  qobject_cast<TQyDoubleVector*>(s->GetYData())->SetValue(1, 4);
  EXPECT_EQ(s->FindPoint(p.x(), p.y()), -1);
}

TEST(SeriesPoints, OutliersAreSkippedUnlessShown) {
  QyTestGraph f;
  TQyLineSeries* s = f.AddSeries(Range(5), {1, 2, 100, 3, 4});
  s->GetYData()->AddOutlier(2);
  f.Render();
  EXPECT_EQ(s->LimitMaxY(), 4);
  for (int k = 0; k < s->PointCount(); ++k) EXPECT_NE(s->PointIndices()[k], 2);
  s->SetOutliersVisible(true);
  f.Render();
  EXPECT_EQ(s->LimitMaxY(), 100);
}

// Values that are not finite take no part in ranging and are never drawn, on both paths.
TEST(SeriesPoints, NonFiniteValuesAreNeverDrawn) {
  QyTestGraph f;
  const double nan = std::nan(""), inf = INFINITY;
  TQyLineSeries* s = f.AddSeries({0, 1, 2, 3, 4}, {1, nan, 3, inf, 2});
  f.Render();
  EXPECT_EQ(std::pair(s->LimitMinY(), s->LimitMaxY()), std::pair(1.0, 3.0));
  auto drawn = [&] {
    std::vector<int> idx;
    for (int k = 0; k < s->PointCount(); ++k) idx.push_back(s->PointIndices()[k]);
    return idx;
  };
  EXPECT_EQ(drawn(), (std::vector<int>{0, 2, 4}));
  s->YValueTransformation = [](TQySeries*, const TQyTransformEventArgs& a) { return a.Value * 2; };
  s->RangesModified();
  f.Render(); // the general path, through the transformation
  EXPECT_EQ(drawn(), (std::vector<int>{0, 2, 4}));
  EXPECT_EQ(s->LimitMaxY(), 6);
}
