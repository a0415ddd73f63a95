#include "QyPollingThread.h"
#include <chrono>
#include <exception>

void TQyPollingThread::Terminate() {
  {
    std::lock_guard lock(FSleepMutex);
    FTerminated.store(true, std::memory_order_release);
  }
  FWake.notify_all();
  wait();
}

void TQyPollingThread::Execute() {
  Sleep();
  while (!Terminated()) {
    Poll();
    Sleep();
  }
}

// A wait on the condition, not a blind sleep: terminating wakes it at once.
void TQyPollingThread::Sleep() {
  std::unique_lock lock(FSleepMutex);
  FWake.wait_for(lock, std::chrono::milliseconds(PeriodMs), [this] { return Terminated(); });
}

void TQyPollingThread::Poll() {
  if (FPollPending.exchange(true, std::memory_order_acq_rel)) return; // the last one is still due
  // The call goes to this object's thread; it is dropped if the object goes first.
  QMetaObject::invokeMethod(this, [this] {
    struct TDone {
      std::atomic<bool>& pending;
      ~TDone() { pending.store(false, std::memory_order_release); }
    } done{FPollPending};
    if (!OnPoll || Terminated()) return;
    try {
      OnPoll(this);
    } catch (const std::exception&) {
      // The next poll or paint tries again.
    }
  }, Qt::QueuedConnection);
}
