#include "QyVectors.h"
#include "QyByteStream.h"
#include "QyListLink.h"
#include "QyLocalize.h"
#include <QThread>
#include <algorithm>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

// ---- locks ------------------------------------------------------------------------------------

namespace {
// The vectors whose lock the current thread holds, and whether exclusively. Short: a thread holds
// the vectors of one graph at most.
struct THeld {
  const TQyCustomDoubleVector* Vector;
  bool Exclusive;
};
thread_local std::vector<THeld> tHeld;

THeld* FindHeld(const TQyCustomDoubleVector* v) {
  for (THeld& h : tHeld)
    if (h.Vector == v) return &h;
  return nullptr;
}

void Forget(const TQyCustomDoubleVector* v) {
  std::erase_if(tHeld, [v](const THeld& h) { return h.Vector == v; });
}
} // namespace

TQyVectorLock::TQyVectorLock(const TQyCustomDoubleVector* vector, TMode mode) : FVector(vector) {
  THeld* held = FindHeld(vector);
  if (mode == TMode::Read) {
    if (held) return; // any hold of this thread lets it read
    vector->FLock.lock_shared();
    tHeld.push_back({vector, false});
    FTook = TTook::Read;
  } else if (!held) {
    vector->FLock.lock();
    tHeld.push_back({vector, true});
    FTook = TTook::Write;
  } else if (!held->Exclusive) {
    // A shared_mutex cannot be upgraded: give the read hold up for the time of the write.
    vector->FLock.unlock_shared();
    vector->FLock.lock();
    FindHeld(vector)->Exclusive = true;
    FTook = TTook::WriteOverRead;
  }
}

TQyVectorLock& TQyVectorLock::operator=(TQyVectorLock&& other) noexcept {
  if (this != &other) {
    Release();
    FVector = std::exchange(other.FVector, nullptr);
    FTook = std::exchange(other.FTook, TTook::Nothing);
  }
  return *this;
}

void TQyVectorLock::Release() {
  switch (std::exchange(FTook, TTook::Nothing)) {
  case TTook::Nothing: return;
  case TTook::Read: FVector->FLock.unlock_shared(); Forget(FVector); return;
  case TTook::Write: FVector->FLock.unlock(); Forget(FVector); return;
  case TTook::WriteOverRead:
    FVector->FLock.unlock();
    FVector->FLock.lock_shared();
    FindHeld(FVector)->Exclusive = false;
    return;
  }
}

TQyVectorReadLocks::TQyVectorReadLocks(QList<TQyCustomDoubleVector*> vectors) {
  vectors.removeAll(nullptr);
  std::sort(vectors.begin(), vectors.end());
  vectors.erase(std::unique(vectors.begin(), vectors.end()), vectors.end());
  FLocks.reserve(vectors.size());
  for (TQyCustomDoubleVector* v : vectors) FLocks.push_back(v->ReadLock());
}

// ---- TQyCustomDoubleVector --------------------------------------------------------------------

TQyCustomDoubleVector::TQyCustomDoubleVector(QObject* owner) : QObject(owner) {
  FValues.resize(FCapacity);
}

TQyCustomDoubleVector::~TQyCustomDoubleVector() {
  FDestroying = true;
  const auto listeners = FRelatedSeries; // a listener leaves the list as it lets go
  for (const auto& l : listeners)
    if (l) l->VectorDestroyed(this);
}

// ---- statistics -------------------------------------------------------------------------------

void TQyCustomDoubleVector::CheckMinMax() {
  if (!StatisticsCurrent()) {
    auto lock = WriteLock();
    CheckMinMaxLocked();
  }
  FSeenCount.store(FCheckedCount.load(std::memory_order_acquire), std::memory_order_release);
}

TQyVectorLock TQyCustomDoubleVector::ReadLock() {
  for (;;) {
    CheckMinMax();
    TQyVectorLock lock(this, TQyVectorLock::TMode::Read);
    if (StatisticsCurrent()) return lock;
    // This thread wrote under its own hold: only it can bring the statistics up to date.
    if (lock.Nested()) {
      CheckMinMax();
      return lock;
    }
    // Another thread appended between the two steps: try again.
  }
}

void TQyCustomDoubleVector::CheckMinMaxLocked() {
  const int n = FCount.load(std::memory_order_acquire);
  const double* v = FValues.data();
  if (!FHasOutliers) {
    // By blocks aligned with the index: a block's extremes decide whether its first index of the
    // extreme is needed, so the pass per value is a few independent comparisons (the first index
    // of a tie is kept), and each block serves the statistics and the index while it is cached.
    // The sum waits until it is asked for (SumPending): a picture needs only the extremes.
    constexpr int Block = TQyMinMaxIndex::BlockSize;
    for (int a = FCheckedCount; a < n;) {
      const int b = std::min(n, (a / Block + 1) * Block);
      const TQyRangeStats r = QyRangeStats(v, a, b);
      if (b - a == Block) FIndex.ExtendBlock(v, a, r);
      if (r.Low < FMinimum) FMinimumIdx = QyFirstEqual(v, a, b, r.Low), FMinimum = v[FMinimumIdx];
      if (r.High > FMaximum) FMaximumIdx = QyFirstEqual(v, a, b, r.High), FMaximum = v[FMaximumIdx];
      FOnlyAscending = FOnlyAscending && r.Ascending && (a == 0 || v[a] > v[a - 1]);
      a = b;
    }
    if (n > FCheckedCount) FLastValidIdx = n - 1;
    FMinimumIncludingOutliers = FMinimum;
    FMaximumIncludingOutliers = FMaximum;
    FMinimumIdxIncludingOutliers = FMinimumIdx;
    FMaximumIdxIncludingOutliers = FMaximumIdx;
  } else {
    SumPending(); // values checked before the first outlier came
    for (int i = FCheckedCount; i < n; ++i) {
      const double x = v[i];
      if (x < FMinimumIncludingOutliers) { FMinimumIncludingOutliers = x; FMinimumIdxIncludingOutliers = i; }
      if (x > FMaximumIncludingOutliers) { FMaximumIncludingOutliers = x; FMaximumIdxIncludingOutliers = i; }
      FSumIncludingOutliers += x;
      if (IsOutlier(i)) continue;
      if (x < FMinimum) { FMinimum = x; FMinimumIdx = i; }
      if (x > FMaximum) { FMaximum = x; FMaximumIdx = i; }
      // Ascending is tested against the last value that is no outlier; a restart of the
      // statistics begins that test only from the third such value on.
      if (FLastValidIdx >= 2) FOnlyAscending = FOnlyAscending && x > v[FLastValidIdx];
      FLastValidIdx = i;
      FSum += x;
    }
    FSummedCount = n;
  }
  FCheckedCount = n;
  FIndex.Extend(v, n);
}

#define QY_STAT_GETTER(Type, Name, Field)                                                          \
  Type TQyCustomDoubleVector::Name() {                                                             \
    auto lock = ReadLock();                                                                        \
    return Field;                                                                                  \
  }
QY_STAT_GETTER(double, GetMinimum, FMinimum)
QY_STAT_GETTER(double, GetMaximum, FMaximum)
QY_STAT_GETTER(double, GetMinimumIncludingOutliers, FMinimumIncludingOutliers)
QY_STAT_GETTER(double, GetMaximumIncludingOutliers, FMaximumIncludingOutliers)
QY_STAT_GETTER(int, GetMinimumIdx, FMinimumIdx)
QY_STAT_GETTER(int, GetMaximumIdx, FMaximumIdx)
QY_STAT_GETTER(int, GetMinimumIdxIncludingOutliers, FMinimumIdxIncludingOutliers)
QY_STAT_GETTER(int, GetMaximumIdxIncludingOutliers, FMaximumIdxIncludingOutliers)
QY_STAT_GETTER(bool, GetOnlyAscending, FOnlyAscending)
#undef QY_STAT_GETTER

void TQyCustomDoubleVector::SumPending() {
  if (FSummedCount >= FCheckedCount) return;
  for (int i = FSummedCount; i < FCheckedCount; ++i) FSum += FValues[i]; // in order, as added
  FSumIncludingOutliers = FSum; // values summed here are of a vector without outliers
  FSummedCount = FCheckedCount;
}

double TQyCustomDoubleVector::GetSum() {
  CheckMinMax();
  auto lock = WriteLock();
  SumPending();
  return FSum;
}

double TQyCustomDoubleVector::GetSumIncludingOutliers() {
  CheckMinMax();
  auto lock = WriteLock();
  SumPending();
  return FSumIncludingOutliers;
}

void TQyCustomDoubleVector::ResetRanges() {
  auto lock = WriteLock();
  FCheckedCount = FSummedCount = FSeenCount = 0;
  FMinimumIdx = FMaximumIdx = FMinimumIdxIncludingOutliers = FMaximumIdxIncludingOutliers = -1;
  FMinimum = FMinimumIncludingOutliers = QyMaxDouble();
  FMaximum = FMaximumIncludingOutliers = -QyMaxDouble();
  FSum = FSumIncludingOutliers = 0;
  FLastValidIdx = -1;
  FOnlyAscending = true; // recomputed from the first value on
  FIndex.Truncate(0);
}

// ---- values -----------------------------------------------------------------------------------

double TQyCustomDoubleVector::GetValue(int i) const {
  if (i < 0 || i >= GetCount()) QyRaiseIndexError(i);
  return FValues[i];
}

void TQyCustomDoubleVector::CheckCount(int n) {
  auto lock = WriteLock();
  if (n >= FCapacity) {
    FCapacity = QyGrownCapacity(FCapacity, n, FIncrement);
    // The observable capacity grows by Increment; the storage grows geometrically beneath, so
    // that appending stays O(1) amortised.
    if (static_cast<size_t>(FCapacity) > FValues.size())
      FValues.resize(std::max<size_t>(FCapacity, FValues.size() + FValues.size() / 2));
  }
  FValues.Expose(size_t(n));
  if (n >= FCount.load(std::memory_order_relaxed)) FCount.store(n, std::memory_order_release);
}

void TQyCustomDoubleVector::StoreValue(int i, double v) {
  QyCheckGrowIndex(i);
  if (static_cast<size_t>(i) >= FValues.size()) CheckCount(i + 1); // grow before storing
  FValues.Expose(size_t(i) + 1); // a gap before i reads as zeros
  FValues[i] = v;
  if (i >= FCount.load(std::memory_order_relaxed)) CheckCount(i + 1);
}

void TQyCustomDoubleVector::SetValue(int i, double v) {
  QyCheckGrowIndex(i);
  TQyVectorChange change;
  {
    auto lock = WriteLock();
    const int oldCount = FCount.load(std::memory_order_relaxed);
    if (i >= oldCount) {
      // Appending: the statistics take the new tail lazily, the points continue incrementally.
      StoreValue(i, v);
      change = TQyVectorChange::Appended;
    } else {
      const double old = FValues[i];
      if (old == v) return;
      change = TQyVectorChange::Changed;
      if (i < FCheckedCount) {
        if (i == FMinimumIdxIncludingOutliers || i == FMaximumIdxIncludingOutliers ||
            i == FMinimumIdx || i == FMaximumIdx) {
          change = TQyVectorChange::Ranges; // an extreme moves: recompute the statistics
        } else {
          const bool outlier = FHasOutliers && IsOutlier(i);
          if (i < FSummedCount) FSumIncludingOutliers += v - old;
          if (outlier) {
            // An outlier only counts for the extremes that include outliers.
            if (v < FMinimumIncludingOutliers || v > FMaximumIncludingOutliers) change = TQyVectorChange::Ranges;
          } else {
            if (i < FSummedCount) FSum += v - old;
            // A new value beyond an extreme, or out of order, is seen at once.
            if (v < FMinimum || v > FMaximum) change = TQyVectorChange::Ranges;
            if ((i > 0 && v <= FValues[i - 1]) || (i + 1 < oldCount && v >= FValues[i + 1]))
              FOnlyAscending = false;
          }
        }
      }
      FValues[i] = v;
      FIndex.Changed(FValues.data(), i);
      if (change == TQyVectorChange::Ranges) ResetRanges();
    }
  }
  NotifyListeners(change);
}

int TQyCustomDoubleVector::Add(double v) {
  SetValue(GetCount(), v);
  return GetCount();
}

int TQyCustomDoubleVector::Insert(int i, double v) {
  {
    auto lock = WriteLock();
    const int n = GetCount();
    if (i < 0 || i > n) QyRaiseIndexError(i);
    if (i == n) {
      lock = TQyVectorLock();
      return Add(v);
    }
    // The entries move by their place in the outlier list, not by the index they hold: an entry
    // at list place i or later moves up. This is the vector's long-standing rule and stays so.
    for (int k = 0; k < FOutliers.Count(); ++k)
      if (k >= i) FOutliers[k] += 1;
    CheckCount(n + 1);
    std::copy_backward(FValues.begin() + i, FValues.begin() + n, FValues.begin() + n + 1);
    FValues[i] = v;
    // Inserting is O(n) anyway: recompute the statistics rather than patch them.
    ResetRanges();
  }
  NotifyAtOnce(TQyVectorChange::Inserted, i);
  NotifyListeners(TQyVectorChange::Ranges);
  return GetCount();
}

void TQyCustomDoubleVector::Delete(int i, bool deleteLinkedMarkers) {
  bool extreme;
  {
    auto lock = WriteLock();
    const int n = GetCount();
    if (i < 0 || i >= n) return;
    const bool outlier = FHasOutliers && IsOutlier(i);
    extreme = i == FMinimumIdxIncludingOutliers || i == FMaximumIdxIncludingOutliers ||
              (!outlier && (i == FMinimumIdx || i == FMaximumIdx));
    if (i < FSummedCount) {
      FSumIncludingOutliers -= FValues[i];
      if (!outlier) FSum -= FValues[i];
      FSummedCount -= 1;
    }
    for (int k = FOutliers.Count() - 1; k >= 0; --k) {
      if (FOutliers[k] == i) FOutliers.Delete(k);
      else if (FOutliers[k] > i) FOutliers[k] -= 1;
    }
    FHasOutliers = FOutliers.Count() > 0;
    std::copy(FValues.begin() + i + 1, FValues.begin() + n, FValues.begin() + i);
    FCount.store(n - 1, std::memory_order_release);
    // The kept statistics follow the shift of the indices behind i.
    for (int* idx : {&FMinimumIdx, &FMaximumIdx, &FMinimumIdxIncludingOutliers,
                     &FMaximumIdxIncludingOutliers, &FLastValidIdx})
      if (*idx > i) *idx -= 1;
    if (FCheckedCount > i) FCheckedCount -= 1;
    FSummedCount = std::min(FSummedCount, FCheckedCount.load());
    if (FSeenCount > i) FSeenCount -= 1;
    FIndex.Truncate(i); // the blocks behind i hold other values now
    if (extreme) ResetRanges();
  }
  if (deleteLinkedMarkers) NotifyAtOnce(TQyVectorChange::Deleted, i);
  NotifyListeners(extreme ? TQyVectorChange::Ranges : TQyVectorChange::Reset);
}

void TQyCustomDoubleVector::Clear(bool clearLinkedMarkers) {
  {
    auto lock = WriteLock();
    FCount.store(0, std::memory_order_release);
    FHasOutliers = false;
    FOutliers.Clear();
    ResetRanges();
  }
  if (clearLinkedMarkers) NotifyAtOnce(TQyVectorChange::Cleared, -1);
  NotifyListeners(TQyVectorChange::Ranges);
}

// ---- outliers ---------------------------------------------------------------------------------

bool TQyCustomDoubleVector::IsOutlier(int i) const {
  if (!FHasOutliers) return false;
  const int* o = FOutliers.Data();
  return std::find(o, o + FOutliers.Count(), i) != o + FOutliers.Count();
}

template <class F> void TQyCustomDoubleVector::EditOutliers(F edit) {
  {
    auto lock = WriteLock();
    if (!edit()) return;
    FHasOutliers = FOutliers.Count() > 0;
    ResetRanges();
  }
  NotifyListeners(TQyVectorChange::Reset);
}

void TQyCustomDoubleVector::AddOutlier(int i) {
  EditOutliers([&] {
    if (IsOutlier(i)) return false;
    FOutliers.Add(i);
    return true;
  });
}

void TQyCustomDoubleVector::RemoveOutlier(int i) {
  EditOutliers([&] {
    for (int k = 0; k < FOutliers.Count(); ++k)
      if (FOutliers[k] == i) FOutliers.Delete(k--);
    return true;
  });
}

void TQyCustomDoubleVector::SetOutlier(int i, bool on) { on ? AddOutlier(i) : RemoveOutlier(i); }

void TQyCustomDoubleVector::ClearOutlieres() {
  EditOutliers([&] {
    FOutliers.Clear();
    return true;
  });
}

// ---- capacity ---------------------------------------------------------------------------------

void TQyCustomDoubleVector::SetCapacity(int n) {
  auto lock = WriteLock();
  if (n <= GetCount() || n == FCapacity) return;
  QyCheckVectorSize(n);
  FCapacity = n;
  if (static_cast<size_t>(n) > FValues.size()) FValues.resize(size_t(n));
}

void TQyCustomDoubleVector::SetIncrement(int n) {
  QyCheckVectorSize(n);
  auto lock = WriteLock();
  if (n >= 128) FIncrement = n;
}

// ---- listeners --------------------------------------------------------------------------------

void TQyCustomDoubleVector::AddListener(IQyVectorListener* listener) {
  if (!listener) return;
  for (const auto& p : FRelatedSeries)
    if (p == listener) return;
  FRelatedSeries.append(listener);
}

void TQyCustomDoubleVector::RemoveListener(IQyVectorListener* listener) {
  FRelatedSeries.removeIf([listener](const auto& p) { return p.data() == listener; });
}

QList<QObject*> TQyCustomDoubleVector::RelatedSeries() const {
  QList<QObject*> out;
  for (const auto& p : FRelatedSeries)
    if (p) out.append(p.object());
  return out;
}

void TQyCustomDoubleVector::OutOfRange() {
  ResetRanges();
  NotifyListeners(TQyVectorChange::Reset);
}

void TQyCustomDoubleVector::ResetRelatedSeries() { NotifyListeners(TQyVectorChange::Reset); }

void TQyCustomDoubleVector::InvalidateRelatedSeries() { NotifyListeners(TQyVectorChange::Changed); }

void TQyCustomDoubleVector::NotifyListeners(TQyVectorChange change) {
  if (FDestroying) return;
  if (QThread::currentThread() == thread()) {
    Deliver(change);
    return;
  }
  // From a worker: remember the strongest change and post one delivery.
  int prev = FPendingChange.load();
  while (int(change) > prev && !FPendingChange.compare_exchange_weak(prev, int(change))) {}
  if (prev >= 0) return; // a delivery is already on its way
  QMetaObject::invokeMethod(this, [this] {
    const int c = FPendingChange.exchange(-1);
    if (c >= 0) Deliver(TQyVectorChange(c));
  }, Qt::QueuedConnection);
}

void TQyCustomDoubleVector::Deliver(TQyVectorChange change, int index) {
  if (FRelatedSeries.isEmpty()) return; // a vector filled before it is shown appends at full speed
  const auto listeners = FRelatedSeries; // a listener may leave while it is told
  for (const auto& l : listeners)
    if (l) l->VectorChanged(this, change, index);
}

void TQyCustomDoubleVector::NotifyAtOnce(TQyVectorChange change, int index) {
  if (QThread::currentThread() == thread()) Deliver(change, index);
}

// ---- recorded state: the values and the outlier indices, as two binary blocks ------------------

void TQyCustomDoubleVector::WriteState(QIODevice& device) {
  QByteArray values, outliers;
  {
    auto lock = ReadLock();
    const int n = Count();
    values.resize(qsizetype(n) * qsizetype(sizeof(double)));
    for (int i = 0; i < n; ++i) {
      const double x = GetValue(i); // computed vectors answer through the virtual
      std::memcpy(values.data() + qsizetype(i) * qsizetype(sizeof(double)), &x, sizeof(double));
    }
    outliers.resize(qsizetype(FOutliers.Count()) * qsizetype(sizeof(qint32)));
    for (int i = 0; i < FOutliers.Count(); ++i) {
      const qint32 k = FOutliers[i];
      std::memcpy(outliers.data() + qsizetype(i) * qsizetype(sizeof(qint32)), &k, sizeof(qint32));
    }
  }
  TQyValueWriter w(&device);
  w.WriteBinary(values);
  w.WriteBinary(outliers);
}

void TQyCustomDoubleVector::ReadState(QIODevice& device) {
  TQyValueReader r(&device);
  const QByteArray values = r.ReadBinary();
  const QByteArray outliers = r.ReadBinary();
  std::vector<double> data(size_t(values.size()) / sizeof(double));
  if (!data.empty()) std::memcpy(data.data(), values.constData(), data.size() * sizeof(double));
  if (auto* d = qobject_cast<TQyDoubleVector*>(this)) {
    d->SetValues(std::move(data));
  } else {
    Clear(false);
    for (double x : data) Add(x);
  }
  ClearOutlieres();
  for (qsizetype i = 0; i + qsizetype(sizeof(qint32)) <= outliers.size(); i += sizeof(qint32)) {
    qint32 k;
    std::memcpy(&k, outliers.constData() + i, sizeof(qint32));
    AddOutlier(k);
  }
}

// ---- TQyDoubleVector --------------------------------------------------------------------------

TQyDoubleVector::TQyDoubleVector(QObject* owner)
    : TQyCustomDoubleVector(owner), FDataLink(new TQyListLink(this)) {
  FDataLink->OnDataChange = [this] { DBChanged(); };
}

TQyDoubleVector::~TQyDoubleVector() { FDestroying = true; }

void TQyDoubleVector::SetValues(std::vector<double> values) {
  {
    QyCheckVectorSize(static_cast<long long>(values.size()));
    auto lock = WriteLock();
    const int n = int(values.size());
    FValues.Assign(values, 1);
    FCapacity = std::max(n, 1);
    FCount.store(n, std::memory_order_release);
    FOutliers.Clear();
    FHasOutliers = false;
    ResetRanges();
    CheckMinMaxLocked(); // as for AddRange
  }
  NotifyListeners(TQyVectorChange::Ranges);
}

template <class T> void TQyDoubleVector::AddRangeOf(const T* values, int n) {
  if (n <= 0) return;
  {
    auto lock = WriteLock();
    const int start = GetCount();
    QyCheckVectorSize(static_cast<long long>(start) + n);
    CheckCount(start + n);
    std::copy(values, values + n, FValues.begin() + start);
    // A block of values enters the statistics and the index at once, while it is in the cache
    // and on the writer's thread: the next picture then needs no pass over the data.
    CheckMinMaxLocked();
  }
  NotifyListeners(TQyVectorChange::Appended);
}

void TQyDoubleVector::AddRange(const double* values, int n) { AddRangeOf(values, n); }
void TQyDoubleVector::AddRange(const std::vector<float>& v) { AddRangeOf(v.data(), int(v.size())); }
void TQyDoubleVector::AddRange(const std::vector<int>& v) { AddRangeOf(v.data(), int(v.size())); }

// ---- database link --------------------------------------------------------------------------

// A new column or model: the values go at once, the new ones come at the next paint.
void TQyDoubleVector::BindingChanged() {
  FFromDatabase = true;
  FDatabaseChanged = true;
  Clear(true);
}

void TQyDoubleVector::SetDataField(QString value) {
  QyAssign(this, FDataField, value, nullptr, "DataField", [this] {
    FDataLink->SetFieldName(FDataField);
    BindingChanged();
  });
}

void TQyDoubleVector::SetDataSource(QAbstractItemModel* model) {
  QyAssign(this, FDataSource, QPointer(model), nullptr, "DataSource", [this] {
    FDataLink->SetDataSource(FDataSource);
    if (!FDataSource) {
      FFromDatabase = false; // the values read so far stay
      return;
    }
    // A model that goes away leaves the values, and the vector no longer follows it.
    connect(FDataSource, &QObject::destroyed, this, [this](QObject* gone) {
      if (FDataLink->DataSource() && FDataLink->DataSource() != gone) return;
      FFromDatabase = false;
      FDataLink->SetDataSource(nullptr);
    });
    BindingChanged();
  });
}

void TQyDoubleVector::DBChanged() {
  if (FDestroying || !FFromDatabase || FDatabaseChanged || FInDatabaseUpdate || !FDataSource) return;
  FDatabaseChanged = true;
  // Nothing is read now; the series only ask for the paint that will read.
  NotifyListeners(TQyVectorChange::Appended);
}

// Whether the reading can happen now; a binding without model or field ends the reading for good.
bool TQyDoubleVector::CanReadModel() {
  if (!FFromDatabase || !FDatabaseChanged || FInDatabaseUpdate) return false;
  if (!FDataLink->DataSource() || FDataField.isEmpty()) {
    FFromDatabase = false;
    return false;
  }
  // An item model belongs to one thread: a reader on another one leaves the work to the next
  // paint there. A model without the named column (no query yet) is waited for likewise.
  return QThread::currentThread() == FDataLink->DataSource()->thread() &&
         FDataLink->FieldColumn() >= 0;
}

void TQyDoubleVector::UpdateDB() {
  if (!CanReadModel()) return;
  struct Reading { // the flag holds while the model is read, even if the model throws
    bool& flag;
    explicit Reading(bool& f) : flag(f) { flag = true; }
    ~Reading() { flag = false; }
  } reading(FInDatabaseUpdate);
  const int column = FDataLink->FieldColumn();
  const int rows = FDataLink->FetchAll();
  std::vector<double> values(std::max(rows, FCapacity));
  std::vector<int> outliers;
  int count = 0;
  for (int row = 0; row < rows; ++row) {
    if (const auto v = FDataLink->FieldAsFloat(row, column)) {
      values[count++] = *v;
    } else if (count < rows - 1) { // a null inside: a placeholder the series skip
      outliers.push_back(count);
      values[count++] = 0;
    }
  }
  TakeRead(values, count, outliers, rows);
  FDatabaseChanged = false;
  NotifyListeners(TQyVectorChange::Ranges);
}

void TQyDoubleVector::TakeRead(std::vector<double>& values, int count, const std::vector<int>& outliers,
                               int rows) {
  auto lock = WriteLock();
  FValues.Assign(values, size_t(count));
  FCapacity = std::max(FCapacity, rows);
  FCount.store(count, std::memory_order_release);
  FOutliers.Clear();
  for (int i : outliers) FOutliers.Add(i);
  FHasOutliers = !outliers.empty();
  ResetRanges();
}

// ---- TQyIndexer -------------------------------------------------------------------------------

void TQyIndexer::SetValue(int, double) {
  throw EExternal(QyText(QyRes::IndexerSetValue));
}
