#pragma once
// The polling thread of a graph: wakes its graph ten times a second, so that values added to the
// vectors show without the application asking for a repaint.
#include <QThread>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>

// The thread sleeps a period, then until it is terminated: polls, sleeps a period. A poll posts
// one call of OnPoll to the thread that made this object (the interface thread), so the handler
// may touch widgets; while a posted call has not finished, the thread posts no other.
class TQyPollingThread : public QThread {
  Q_OBJECT
public:
  static constexpr int PeriodMs = 100;

  explicit TQyPollingThread(QObject* owner = nullptr) : QThread(owner) {}
  ~TQyPollingThread() override { Terminate(); }

  // Runs on the interface thread with this thread as the sender. An exception of the handler
  // ends that poll, not the application.
  std::function<void(QObject* sender)> OnPoll;

  // Sets Terminated, wakes the sleep and waits for the thread's end: at most one running poll.
  void Terminate();
  bool Terminated() const { return FTerminated.load(std::memory_order_acquire); }

protected:
  void run() override { Execute(); }
  virtual void Execute();

private:
  void Sleep(); // one period, or until terminated
  void Poll();

  std::mutex FSleepMutex;
  std::condition_variable FWake;
  std::atomic<bool> FTerminated{false};
  std::atomic<bool> FPollPending{false};
};
