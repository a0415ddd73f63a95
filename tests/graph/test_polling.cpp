// The polling thread: what a poll reaches, when it stays away, how it ends; and a worker that
// appends at full speed while the interface thread polls and paints.
#include "QyTestGraph.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QThread>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace {
// Lets the event loop run for `ms`, so that polls arrive.
void Spin(int ms) {
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < ms) {
    QApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::msleep(2);
  }
}

// Counts what the polls and paints ask of it.
class CountingSeries : public TQyLineSeries {
public:
  using TQyLineSeries::TQyLineSeries;
  void Calculate() override {
    ++calculations;
    TQyLineSeries::Calculate();
  }
  int calculations = 0;
};

class PaintCounter : public QObject {
public:
  int paints = 0;
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() == QEvent::Paint) ++paints;
    return false;
  }
};
} // namespace

// A poll runs the series' range pass ten times a second, unless the graph is updating or a
// layout is due anyway; it sees values that arrived without any repaint.
TEST(Polling, PollReachesTheSeriesOnlyWhenNothingElseIsDue) {
  struct Case {
    const char* name;
    bool updating, layoutDue, reaches;
  } cases[] = {
      {"idle graph", false, false, true},
      {"between BeginUpdate and EndUpdate", true, false, false},
      {"layout due", false, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QyTestGraph f; // never shown: only polls run the range pass
    auto* s = f.Add<CountingSeries>({}, {1, 2, 3});
    auto* y = static_cast<TQyDoubleVector*>(s->GetYData());
    f.Render();
    ASSERT_FALSE(f.graph->NeedsCalculate());
    s->calculations = 0;
    y->Add(7);
    if (c.updating) f.graph->BeginUpdate();
    if (c.layoutDue) f.graph->Modified();
    Spin(450); // four periods
    EXPECT_EQ(s->calculations > 0, c.reaches);
    EXPECT_LE(s->calculations, 5); // one poll a period, never queued up
    EXPECT_EQ(s->LimitMaxY(), c.reaches ? 7.0 : 3.0);
    if (c.updating) f.graph->EndUpdate();
  }
}

// A graph without series, or whose data did not change, asks for no repaint; appended data are
// shown without a call of the application.
TEST(Polling, IdleUnlessDataArrive) {
  struct Case {
    const char* name;
    bool withSeries, append;
    bool repaints;
  } cases[] = {
      {"no series", false, false, false},
      {"unchanged data", true, false, false},
      {"appended from a worker", true, true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QyTestGraph f(300, 200);
    TQyDoubleVector* y = f.Vector({1, 2, 3});
    if (c.withSeries) f.Add<TQyLineSeries>({}, {})->SetYData(y);
    f.graph->setAttribute(Qt::WA_DontShowOnScreen);
    f.form->show();
    PaintCounter counter;
    f.graph->installEventFilter(&counter);
    // The first pictures: until a quiet stretch of two poll periods (a loaded machine paints late).
    for (int k = 0; k < 20; ++k) {
      counter.paints = 0;
      Spin(200);
      if (counter.paints == 0) break;
    }
    counter.paints = 0;
    std::thread worker([&] {
      if (c.append) y->Add(10);
    });
    worker.join();
    Spin(350);
    EXPECT_EQ(counter.paints > 0, c.repaints);
    if (c.repaints) {
      auto* s = static_cast<TQySeries*>(f.graph->RelatedSeries().first());
      EXPECT_EQ(s->LimitMaxY(), 10.0);
      ASSERT_GT(s->PointCount(), 0);
      EXPECT_EQ(s->PointIndices()[s->PointCount() - 1], 3); // the new value is drawn
    }
    f.graph->removeEventFilter(&counter);
  }
}

// A series that does not update itself takes new values only when told to.
TEST(Polling, WithoutAutoUpdateNewValuesWaitForANotice) {
  struct Case {
    const char* name;
    void (*notice)(QyTestGraph&, TQySeries*);
  } cases[] = {
      {"PointsModified", [](QyTestGraph&, TQySeries* s) { s->PointsModified(); }},
      {"Modified", [](QyTestGraph& f, TQySeries*) { f.graph->Modified(); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QyTestGraph f;
    TQyLineSeries* s = f.AddSeries({}, {0, 2, 1});
    s->SetAutoUpdate(false);
    f.Render();
    ASSERT_EQ(s->PointIndices()[s->PointCount() - 1], 2);
    s->GetYData()->Add(1.5); // inside the range: only the points tell
    Spin(250);
    f.Render();
    EXPECT_EQ(s->PointIndices()[s->PointCount() - 1], 2);
    c.notice(f, s);
    f.Render();
    EXPECT_EQ(s->PointIndices()[s->PointCount() - 1], 3);
  }
}

// The polling thread ends first thing when the graph goes, without waiting a whole period, even
// while a worker keeps adding data to the graph's series.
TEST(Polling, DestroyingTheGraphWhileDataArriveEndsPromptly) {
  QObject owner;
  auto* y = new TQyDoubleVector(&owner);
  std::atomic<bool> stop{false};
  std::thread worker([&] {
    while (!stop) y->Add(1.0);
  });
  for (int round = 0; round < 3; ++round) {
    QyTestGraph f(200, 150);
    f.Add<TQyLineSeries>({}, {})->SetYData(y);
    f.Render();
    Spin(120 + 40 * round);
    ASSERT_TRUE(f.graph->PollingThread()->isRunning());
    const auto t0 = std::chrono::steady_clock::now();
    delete f.graph;
    EXPECT_LT(std::chrono::steady_clock::now() - t0, std::chrono::seconds(1));
  } // the series go with their form
  stop = true;
  worker.join();
  Spin(20); // the last queued notices go to no series
}

// A worker appends at full speed (one value at a time and in blocks) while the interface thread
// polls and paints; a second series reads one vector as X and as Y. At the end the picture holds
// every value: analytic extent, last index drawn.
TEST(Polling, WorkerAppendsWhileTheInterfacePaints) {
  QyTestGraph f(400, 300);
  TQyLineSeries* a = f.AddSeries({}, {});
  TQyDoubleVector* x = f.Vector({});
  auto* y = static_cast<TQyDoubleVector*>(a->GetYData());
  a->SetXData(x);
  TQyLineSeries* b = f.AddSeries({}, {});
  b->SetXData(x), b->SetYData(x);
  const int block = 64, most = 2'000'000;
  const double dt = 1e-4;
  std::atomic<bool> stop{false};
  int n = 0; // values appended, read after the join
  std::thread worker([&] {
    std::vector<double> xs(block), ys(block);
    while ((!stop || n < 1000) && n < most) {
      if ((n / block) % 2 == 0) {
        for (int k = 0; k < block; ++k, ++n) xs[k] = n * dt, ys[k] = n % 100;
        x->AddRange(xs);
        y->AddRange(ys);
      } else {
        for (int k = 0; k < block; ++k, ++n) x->Add(n * dt), y->Add(n % 100);
      }
    }
  });
  const int pictures = 12;
  for (int k = 0; k < pictures; ++k) {
    f.graph->SeriesPoll(nullptr);
    f.Render();
    f.graph->FindSeriesPoint(100, 100);
    QApplication::processEvents();
  }
  stop = true;
  worker.join();
  QApplication::processEvents();
  f.Render();
  EXPECT_EQ(a->GetCount(), n);
  EXPECT_EQ(std::tuple(a->LimitMinX(), a->LimitMaxX()), std::tuple(0.0, (n - 1) * dt));
  EXPECT_EQ(std::tuple(a->LimitMinY(), a->LimitMaxY()), std::tuple(0.0, 99.0));
  EXPECT_EQ(std::tuple(b->LimitMinY(), b->LimitMaxY()), std::tuple(0.0, (n - 1) * dt));
  EXPECT_GE(f.X()->GetStop(), (n - 1) * dt);
  ASSERT_GT(a->PointCount(), 0);
  EXPECT_EQ(a->PointIndices()[a->PointCount() - 1], n - 1);
}
