#include "QyExpect.h"
#include <QCoreApplication>
#include <QThread>
#include <QyExceptions.h>
#include <QyVectors.h>
#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <tuple>

namespace {
constexpr double MaxDouble = 1.7976931348623157e308;

// Notes every notice as (kind, index).
struct RecordingListener : QObject, IQyVectorListener {
  std::vector<std::pair<TQyVectorChange, int>> heard;
  void VectorChanged(TQyCustomDoubleVector*, TQyVectorChange change, int index) override {
    heard.emplace_back(change, index);
  }
};

// Minimum, its index, maximum, its index.
std::tuple<double, int, double, int> Extremes(TQyDoubleVector& v) {
  return {v.GetMinimum(), v.GetMinimumIdx(), v.GetMaximum(), v.GetMaximumIdx()};
}

TQyDoubleVector* Make(std::initializer_list<double> values, QObject* owner) {
  auto* v = new TQyDoubleVector(owner);
  for (double x : values) v->Add(x);
  return v;
}
} // namespace

TEST(DoubleVector, StatisticsAreLazyIncrementalAndKeepFirstTies) {
  QObject owner;
  TQyDoubleVector v(&owner);
  EXPECT_EQ(Extremes(v), std::tuple(MaxDouble, -1, -MaxDouble, -1));
  for (double x : {3.0, 1.0, 4.0, 1.0, 5.0}) v.Add(x);
  EXPECT_EQ(Extremes(v), std::tuple(1.0, 1, 5.0, 4)); // the first of two equal minima
  EXPECT_DOUBLE_EQ(v.GetSum(), 14.0);
  EXPECT_FALSE(v.GetOnlyAscending());
  v.Add(-2.0); // only the tail is examined
  EXPECT_TRUE(v.IsChanged());
  EXPECT_EQ(Extremes(v), std::tuple(-2.0, 5, 5.0, 4));
  EXPECT_FALSE(v.IsChanged());
  EXPECT_DOUBLE_EQ(v.GetSumIncludingOutliers(), 12.0);
  v.AddRange(std::vector<double>{7.0, -3.0}); // a bulk addition is still news until asked for
  EXPECT_TRUE(v.IsChanged());
  EXPECT_EQ(std::tuple(v.GetMinimum(), v.GetMaximum(), v.GetSum()), std::tuple(-3.0, 7.0, 16.0));
  EXPECT_FALSE(v.IsChanged());

  TQyDoubleVector asc(&owner), repeated(&owner);
  for (double x : {1.0, 2.0, 3.0}) asc.Add(x);
  for (double x : {1.0, 2.0, 2.0}) repeated.Add(x);
  EXPECT_TRUE(asc.GetOnlyAscending());
  EXPECT_FALSE(repeated.GetOnlyAscending()); // strictly growing only
}

TEST(DoubleVector, ChangesInTheMiddleKeepStatisticsRight) {
  QObject owner;
  auto* v = Make({5, 1, 7, 3}, &owner);
  ASSERT_EQ(v->GetMinimum(), 1);
  v->Delete(0); // not an extreme: statistics kept, indices follow the shift
  EXPECT_EQ(Extremes(*v), std::tuple(1.0, 0, 7.0, 1));
  EXPECT_DOUBLE_EQ(v->GetSum(), 11);
  v->Delete(0); // the minimum itself: recomputed
  EXPECT_EQ(Extremes(*v), std::tuple(3.0, 1, 7.0, 0));
  EXPECT_EQ(v->Count(), 2);
  v->Delete(5); // behind the end: ignored
  EXPECT_EQ(v->Count(), 2);

  auto* w = Make({1, 2, 3, 4}, &owner);
  ASSERT_TRUE(w->GetOnlyAscending());
  w->SetValue(2, 10); // passes the maximum and breaks the order
  EXPECT_EQ(w->GetMaximum(), 10);
  EXPECT_FALSE(w->GetOnlyAscending());
  w->Insert(0, -1);
  EXPECT_EQ(Extremes(*w), std::tuple(-1.0, 0, 10.0, 3));
  EXPECT_DOUBLE_EQ(w->GetSum(), -1 + 1 + 2 + 10 + 4);
}

TEST(DoubleVector, OutliersLeaveThePlainStatistics) {
  QObject owner;
  auto* v = Make({2, 100, 3, 4}, &owner);
  v->AddOutlier(1);
  EXPECT_TRUE(v->IsOutlier(1));
  EXPECT_EQ(std::tuple(v->GetMaximum(), v->GetMaximumIncludingOutliers(), v->GetSum(), v->GetSumIncludingOutliers()),
            std::tuple(4.0, 100.0, 9.0, 109.0));
  v->Insert(0, 1); // the outlier moves with its value
  EXPECT_EQ(std::pair(v->IsOutlier(2), v->IsOutlier(1)), std::pair(true, false));
  v->Delete(2);
  EXPECT_FALSE(v->HasOutliers());
  EXPECT_EQ(v->GetMaximum(), 4);

  // Insert moves the entries by their place in the outlier list, not by the index they hold:
  // of the entries (4, 1), an insert at 1 keeps the first (place 0) and moves the second.
  auto* u = Make({0, 1, 2, 3, 4, 5}, &owner);
  u->AddOutlier(4), u->AddOutlier(1);
  u->Insert(1, 9);
  EXPECT_EQ(std::tuple(u->IsOutlier(4), u->IsOutlier(2), u->IsOutlier(5), u->IsOutlier(1)),
            std::tuple(true, true, false, false));

  // A changed outlier that passes an extreme including outliers is seen at once; the plain
  // extremes stay.
  for (double x : {-5.0, 300.0}) {
    auto* w = Make({2, 100, 3, 4, 50}, &owner);
    w->AddOutlier(1), w->AddOutlier(4);
    ASSERT_EQ(w->GetMaximumIncludingOutliers(), 100);
    w->SetValue(4, x);
    EXPECT_EQ(std::pair(w->GetMinimumIncludingOutliers(), w->GetMaximumIncludingOutliers()),
              std::pair(std::min(2.0, x), std::max(100.0, x)));
    EXPECT_EQ(std::pair(w->GetMinimum(), w->GetMaximum()), std::pair(2.0, 4.0));
  }
}

TEST(DoubleVector, GrowthAndErrorsAsObservable) {
  QObject owner;
  TQyDoubleVector v(&owner);
  EXPECT_EQ(v.Capacity(), 128);
  v.SetIncrement(127); // below 128: ignored
  EXPECT_EQ(v.Increment(), 128);
  for (int i = 0; i < 129; ++i) v.Add(i);
  EXPECT_EQ(v.Capacity(), 256);
  v.Clear();
  EXPECT_EQ(std::pair(v.Count(), v.Capacity()), std::pair(0, 256)); // the memory is kept
  EXPECT_EQ(QyMessageOf<ERangeError>([&] { v.GetValue(5); }), "i=5 index out of range");
  EXPECT_THROW(v.Insert(3, 1.0), ERangeError);
  TQyIndexer indexer;
  EXPECT_EQ(QyMessageOf<EExternal>([&] { indexer.SetValue(0, 1); }),
            "TQyIndexer is not supposed to set values!");
  indexer.SetPartner(Make({7, 8, 9}, &owner));
  // Count, last value, maximum and sum (0 + 1 + 2) of the indices.
  EXPECT_EQ(std::tuple(indexer.GetCount(), indexer.GetValue(2), indexer.GetMaximum(), indexer.GetSum()),
            std::tuple(3, 2.0, 2.0, 3.0));
}

// Each change tells its kind: deleting a value that is no extreme keeps the statistics (Reset),
// an insert or a clear may move the extent (Ranges); marker notices come first with their index.
TEST(DoubleVector, ListenersHearTheKindOfEachChange) {
  using C = TQyVectorChange;
  using Heard = std::vector<std::pair<C, int>>;
  struct Row {
    const char* what;
    std::function<void(TQyDoubleVector*)> change;
    Heard expected;
  };
  const Row rows[] = {
      {"append", [](TQyDoubleVector* v) { v->Add(4); }, {{C::Appended, -1}}},
      {"append range", [](TQyDoubleVector* v) { v->AddRange(std::vector<double>{4, 5}); }, {{C::Appended, -1}}},
      {"set inside", [](TQyDoubleVector* v) { v->SetValue(1, 2.5); }, {{C::Changed, -1}}},
      {"set beyond max", [](TQyDoubleVector* v) { v->SetValue(1, 9); }, {{C::Ranges, -1}}},
      {"delete inner", [](TQyDoubleVector* v) { v->Delete(1); }, {{C::Deleted, 1}, {C::Reset, -1}}},
      {"delete max", [](TQyDoubleVector* v) { v->Delete(2); }, {{C::Deleted, 2}, {C::Ranges, -1}}},
      {"delete, markers kept", [](TQyDoubleVector* v) { v->Delete(1, false); }, {{C::Reset, -1}}},
      {"insert", [](TQyDoubleVector* v) { v->Insert(0, 5); }, {{C::Inserted, 0}, {C::Ranges, -1}}},
      {"clear", [](TQyDoubleVector* v) { v->Clear(); }, {{C::Cleared, -1}, {C::Ranges, -1}}},
      {"clear, markers kept", [](TQyDoubleVector* v) { v->Clear(false); }, {{C::Ranges, -1}}},
  };
  for (const Row& row : rows) {
    QObject owner;
    auto* v = Make({1, 2, 3}, &owner);
    v->CheckMinMax(); // statistics known: changes are measured against them
    RecordingListener listener;
    v->AddListener(&listener);
    row.change(v);
    EXPECT_EQ(listener.heard, row.expected) << row.what;
    v->RemoveListener(&listener);
    v->Add(1);
    EXPECT_EQ(listener.heard, row.expected) << row.what << ": heard after leaving";
  }
}

TEST(DoubleVector, BulkAppendIsLinear) {
  QObject owner;
  TQyDoubleVector v(&owner);
  const int n = 2'000'000;
  for (int i = 0; i < n; ++i) v.Add(i * 0.5);
  EXPECT_EQ(v.Count(), n);
  EXPECT_EQ(v.Capacity(), (n + 127) / 128 * 128);
  EXPECT_DOUBLE_EQ(v.GetSum(), 0.5 * (double(n) - 1) * n / 2);
  EXPECT_TRUE(v.GetOnlyAscending());
}

// A worker appends while the interface thread reads statistics and values; the result is the
// same as a single-threaded run, and the listeners hear about it on the interface thread.
TEST(DoubleVector, AppendFromAWorkerWhileReading) {
  QObject owner;
  TQyDoubleVector v(&owner);
  struct ThreadCheck : QObject, IQyVectorListener {
    std::atomic<int> calls{0}, wrongThread{0};
    void VectorChanged(TQyCustomDoubleVector*, TQyVectorChange, int) override {
      ++calls;
      if (QThread::currentThread() != QCoreApplication::instance()->thread()) ++wrongThread;
    }
  } listener;
  v.AddListener(&listener);
  const int n = 300'000;
  std::atomic<bool> done{false};
  std::thread worker([&] {
    for (int i = 0; i < n; ++i) v.Add(i);
    done = true;
  });
  double lastMax = -MaxDouble;
  while (!done) {
    const double m = v.GetMaximum();
    EXPECT_GE(m, lastMax); // the maximum only grows
    lastMax = m;
    auto lock = v.ReadLock();
    const int c = v.Count();
    if (c > 0) {
      EXPECT_EQ(v.Data()[c - 1], c - 1);
    }
    lock.unlock();
    QCoreApplication::processEvents();
  }
  worker.join();
  QCoreApplication::processEvents();
  EXPECT_EQ(v.Count(), n);
  EXPECT_EQ(v.GetMaximum(), n - 1);
  EXPECT_DOUBLE_EQ(v.GetSum(), double(n - 1) * n / 2);
  EXPECT_GT(listener.calls.load(), 0);
  EXPECT_LT(listener.calls.load(), n); // coalesced, not one per value
  EXPECT_EQ(listener.wrongThread.load(), 0);
}
