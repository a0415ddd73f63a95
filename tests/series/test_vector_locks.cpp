// The vector's lock as threads see it: holds nest, a reader may write what it holds, and a
// writer on another thread waits for the reader.
#include <QObject>
#include <QyVectors.h>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

// A thread that holds a vector may read it again and write it (a database column read during a
// picture); the statistics it reads then include its own writes.
TEST(VectorLock, HoldsNestAndLetTheHolderWrite) {
  TQyDoubleVector v;
  v.AddRange(std::vector<double>{1, 2, 3});
  auto outer = v.ReadLock();
  EXPECT_FALSE(outer.Nested());
  {
    auto inner = v.ReadLock();
    EXPECT_TRUE(inner.Nested());
    v.Add(10);
    v.SetValue(0, -4);
  }
  EXPECT_EQ(v.Count(), 4);
  EXPECT_EQ(std::tuple(v.GetMinimum(), v.GetMaximum(), v.GetSum()), std::tuple(-4.0, 10.0, 11.0));
  TQyVectorReadLocks both({&v, &v, nullptr}); // duplicates and gaps are skipped
  EXPECT_EQ(v.Data()[3], 10.0);
}

// While the interface thread holds a vector, a worker's append waits; it lands when the hold ends.
TEST(VectorLock, WriterOnAnotherThreadWaitsForTheReader) {
  TQyDoubleVector v;
  v.AddRange(std::vector<double>{1, 2, 3});
  std::atomic<bool> started{false}, added{false};
  std::thread worker;
  {
    TQyVectorReadLocks hold({&v});
    worker = std::thread([&] {
      started = true;
      v.Add(4);
      added = true;
    });
    while (!started) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(added.load());
    EXPECT_EQ(v.Count(), 3);
  }
  worker.join();
  EXPECT_EQ(v.Count(), 4);
  EXPECT_EQ(v.GetMaximum(), 4.0);
}
