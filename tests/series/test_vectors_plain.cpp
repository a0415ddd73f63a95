// The small vectors of axes and series, and walking vectors by enumerator and range-for.
#include "QyExpect.h"
#include <QyExceptions.h>
#include <QyPlainVectors.h>
#include <QyVectors.h>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>

namespace {
template <class F> QString RangeMessage(F&& f) { return QyMessageOf<ERangeError>(f); }
// The values a range-for walks through.
template <class R> std::vector<double> Walk(R& r) {
  std::vector<double> out;
  for (double x : r) out.push_back(x);
  return out;
}
} // namespace

// Only the members each vector publishes are there.
template <class V> concept HasSetCount = requires(V v) { v.SetCount(1); };
template <class V> concept HasSetCapacity = requires(V v) { v.SetCapacity(1); };
static_assert(HasSetCount<TQyBooleanVector> && !HasSetCapacity<TQyBooleanVector>);
static_assert(HasSetCount<TQyIntegerVector> && HasSetCapacity<TQyIntegerVector>);
static_assert(HasSetCount<TQySingleVector> && HasSetCapacity<TQySingleVector>);
static_assert(!HasSetCount<TQyPointVector> && HasSetCapacity<TQyPointVector>);

TEST(PlainVectors, IncrementCapacityAndGrowth) {
  EXPECT_EQ(TQySingleVector().Capacity(), 128); // allocated to one increment at once
  EXPECT_EQ(std::tuple(TQySingleVector().Increment(), TQySingleVector(0).Increment(),
                       TQyIntegerVector(-3).Increment(), TQyBooleanVector(1).Increment()),
            std::tuple(128, 128, 128, 1));
  TQyIntegerVector v(10);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(v.Add(i * i), i + 1); // Add returns the new Count
  EXPECT_EQ(v.Capacity(), 10); // a count equal to the capacity does not grow it
  v.Add(100);
  EXPECT_EQ(v.Capacity(), 20);
  v.SetCapacity(5); // below Count: ignored
  EXPECT_EQ(v.Capacity(), 20);
  v.SetCapacity(64);
  EXPECT_EQ(v.Capacity(), 64);
  v.Clear();
  EXPECT_EQ(std::pair(v.Count(), v.Capacity()), std::pair(0, 64)); // memory kept

  TQySingleVector s;
  s.SetValue(5, 2.5f); // behind the end: extends
  EXPECT_EQ(s.Count(), 6);
  EXPECT_EQ(s.GetValue(5), 2.5f);
  s.SetCount(2);
  EXPECT_EQ(s.Count(), 2);
  EXPECT_EQ(s.Capacity(), 128);
  s.SetCount(300);
  EXPECT_EQ(s.Capacity(), 384);

  TQyBooleanVector b(4);
  b.SetCount(5);
  EXPECT_EQ(b.Count(), 5);
  EXPECT_EQ(b.Capacity(), 8);
}

TEST(PlainVectors, IndexErrorsAndDelete) {
  TQyIntegerVector v;
  for (int x : {10, 20, 30, 40}) v.Add(x);
  EXPECT_EQ(RangeMessage([&] { v.GetValue(4); }), "i=4 index out of range");
  EXPECT_EQ(RangeMessage([&] { v.GetValue(-1); }), "i=-1 index out of range");
  EXPECT_EQ(RangeMessage([&] { v.SetValue(-2, 0); }), "i=-2 index out of range");
  v.Delete(4); // at Count: nothing
  v.Delete(-1);
  EXPECT_EQ(v.Count(), 4);
  v.Delete(1);
  EXPECT_EQ(std::vector<int>(v.begin(), v.end()), (std::vector<int>{10, 30, 40})); // Count values only

  TQyPointVector p;
  p.SetY(2, 7); // extends to 3 points
  EXPECT_EQ(p.Count(), 3);
  EXPECT_EQ(p.GetY(2), 7);
  EXPECT_EQ(p.GetX(2), 0);
  EXPECT_EQ(RangeMessage([&] { p.GetX(3); }), "i=3 index out of range");
  EXPECT_EQ(RangeMessage([&] { p.GetY(3); }), "i=3 index out of range");
  EXPECT_EQ(RangeMessage([&] { p.SetX(-1, 0); }), "i=-1 index out of range");
}

// Indices and sizes near the int limit are range errors that name the number, and leave the
// vector as it was: no overflowing growth, no endless capacity loop, no gigabyte allocation.
TEST(AllVectors, IndicesAndSizesNearTheIntLimitAreRangeErrors) {
  constexpr int Max = std::numeric_limits<int>::max();
  TQyIntegerVector iv;
  TQySingleVector sv;
  TQyBooleanVector bv;
  TQyPointVector pv;
  TQyDoubleVector dv;
  iv.Add(1);
  dv.Add(1);
  const double one = 1;
  const struct {
    const char* call;
    std::function<void()> f;
    QString message;
  } rows[] = {
      {"int SetValue max", [&] { iv.SetValue(Max, 0); }, "i=2147483647 index out of range"},
      {"int SetValue max-1", [&] { iv.SetValue(Max - 1, 0); }, "i=2147483646 index out of range"},
      {"int SetCount", [&] { iv.SetCount(Max); }, "i=2147483647 index out of range"},
      {"int CheckCount", [&] { iv.CheckCount(Max - 1); }, "i=2147483646 index out of range"},
      {"int SetCapacity", [&] { iv.SetCapacity(Max); }, "i=2147483647 index out of range"},
      {"single SetValue", [&] { sv.SetValue(Max - 1, 0); }, "i=2147483646 index out of range"},
      {"boolean SetCount", [&] { bv.SetCount(Max); }, "i=2147483647 index out of range"},
      {"boolean increment", [&] { TQyBooleanVector b(Max); }, "i=2147483647 index out of range"},
      {"point SetX", [&] { pv.SetX(Max, 0); }, "i=2147483647 index out of range"},
      {"point SetY", [&] { pv.SetY(Max - 1, 0); }, "i=2147483646 index out of range"},
      {"double SetValue max", [&] { dv.SetValue(Max, 0); }, "i=2147483647 index out of range"},
      {"double SetValue max-1", [&] { dv.SetValue(Max - 1, 0); }, "i=2147483646 index out of range"},
      {"double Insert", [&] { dv.Insert(Max, 0); }, "i=2147483647 index out of range"},
      {"double CheckCount", [&] { dv.CheckCount(Max); }, "i=2147483647 index out of range"},
      {"double SetCapacity", [&] { dv.SetCapacity(Max); }, "i=2147483647 index out of range"},
      {"double SetIncrement", [&] { dv.SetIncrement(Max); }, "i=2147483647 index out of range"},
      // One value present: the new count would be 2^31.
      {"double AddRange", [&] { dv.AddRange(&one, Max); }, "i=2147483648 index out of range"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(QyMessageOf<ERangeError>(row.f), row.message) << row.call;
  iv.Delete(Max); // out of range: ignored
  dv.Delete(Max);
  EXPECT_EQ(std::tuple(iv.Count(), iv.Capacity(), dv.Count(), dv.Capacity(), dv.Increment()),
            std::tuple(1, 128, 1, 128, 128));
  EXPECT_EQ(std::tuple(sv.Count(), bv.Count(), pv.Count()), std::tuple(0, 0, 0));
}

TEST(PlainVectors, EnumeratorsStartBeforeTheFirstValue) {
  TQyPointVector p;
  EXPECT_FALSE(p.GetEnumerator().MoveNext());
  p.Add(QPointF(1, 2));
  p.Add(QPointF(3, 4));
  auto e = TQyPointVector::TQyPointVectorEnum::Create(&p);
  ASSERT_TRUE(e.MoveNext());
  EXPECT_EQ(e.GetCurrent(), QPointF(1, 2));
  ASSERT_TRUE(e.MoveNext());
  EXPECT_EQ(e.GetCurrent(), QPointF(3, 4));
  p.Add(QPointF(5, 6)); // a value added during the walk is seen
  ASSERT_TRUE(e.MoveNext());
  EXPECT_EQ(e.GetCurrent(), QPointF(5, 6));
  EXPECT_FALSE(e.MoveNext());

  TQyDoubleVector d;
  d.AddRange(std::vector<int>{3, 1, 4});
  auto de = d.GetEnumerator();
  std::vector<double> seen;
  while (de.MoveNext()) seen.push_back(de.GetCurrent());
  EXPECT_EQ(seen, (std::vector<double>{3, 1, 4}));
  EXPECT_EQ(Walk(d), seen);

  // The indexer has no storage: walking it goes through its computed values.
  TQyIndexer idx;
  TQyDoubleVector partner;
  partner.AddRange(std::vector<double>{9, 9, 9, 9});
  idx.SetPartner(&partner);
  EXPECT_EQ(Walk(idx), (std::vector<double>{0, 1, 2, 3}));
  TQyIndexer lonely;
  EXPECT_TRUE(lonely.begin() == lonely.end());
  EXPECT_EQ(std::pair(lonely.GetMinimumIdx(), lonely.GetMaximumIdx()), std::pair(-1, -1));
}

TEST(DoubleVectorBulk, AddRangeFormsAndSetValues) {
  TQyDoubleVector v;
  v.AddRange(std::vector<double>{}); // empty: nothing changes
  EXPECT_EQ(v.Count(), 0);
  const double raw[] = {1.5, -2.5};
  v.AddRange(raw, 2);
  v.AddRange(std::vector<float>{0.25f});
  v.AddRange(std::vector<int>{7});
  v.AddRange(std::vector<double>{8});
  EXPECT_EQ(Walk(v), (std::vector<double>{1.5, -2.5, 0.25, 7, 8}));
  EXPECT_EQ(v.GetMinimum(), -2.5);
  EXPECT_EQ(v.GetMaximumIdx(), 4);
  v.AddOutlier(4);
  v.SetValues({5, 6, 7}); // takes the values and forgets the outliers
  EXPECT_EQ(v.Count(), 3);
  EXPECT_FALSE(v.HasOutliers());
  EXPECT_EQ(v.GetSum(), 18);
  EXPECT_TRUE(v.GetOnlyAscending());
  v.Add(8); // appending after a taken-over array grows it
  EXPECT_EQ(v.GetValue(3), 8);
  v.SetValues({});
  EXPECT_EQ(v.Count(), 0);
  v.Add(1);
  EXPECT_EQ(v.GetMinimum(), 1);
}
