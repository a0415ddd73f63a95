#pragma once
// Data vectors: growing arrays of doubles with lazy incremental statistics, outliers and listeners.
#include "QyInterfacePointer.h"
#include "QyMinMaxIndex.h"
#include "QyPlainVectors.h"
#include "QyProperty.h"
#include "QyRecordSchema.h"
#include "QyStateful.h"
#include "QyValueStore.h"
#include "QyValueList.h"
#include <QAbstractItemModel>
#include <QList>
#include <QObject>
#include <QPointer>
#include <atomic>
#include <functional>
#include <shared_mutex>

class TQyCustomDoubleVector;
class TQyListLink;

// What a change of a vector means to its listeners. The first four go weakest first: changes
// from another thread are coalesced into the strongest of them.
enum class TQyVectorChange {
  Appended, // values came at the end
  Changed,  // values changed in place
  Reset,    // listeners start over on the values (statistics still valid)
  Ranges,   // the extent may have changed: listeners take their ranges anew
  Inserted, // a value was inserted at the index (a Ranges notice follows)
  Deleted,  // the value at the index was deleted (a notice of the change follows)
  Cleared   // all values went (a Ranges notice follows)
};

// One thread's hold on the lock of a vector. Holds nest: a thread that already holds the vector
// takes nothing more, and a thread that reads it and then writes it gives its read hold up for the
// time of the write. So neither nested readers nor a reader's own writes (a database column read
// during a picture) can deadlock; what a thread writes under its own read hold is its own doing,
// as it would be without threads.
class TQyVectorLock {
public:
  enum class TMode { Read, Write };
  TQyVectorLock() = default;
  TQyVectorLock(const TQyCustomDoubleVector* vector, TMode mode);
  TQyVectorLock(TQyVectorLock&& other) noexcept { *this = std::move(other); }
  TQyVectorLock& operator=(TQyVectorLock&& other) noexcept;
  ~TQyVectorLock() { Release(); }
  // True when the thread held the vector before: this hold took nothing.
  bool Nested() const { return FTook == TTook::Nothing; }
  void unlock() { Release(); } // ends the hold early

private:
  enum class TTook { Nothing, Read, Write, WriteOverRead };
  void Release();
  const TQyCustomDoubleVector* FVector = nullptr;
  TTook FTook = TTook::Nothing;
};

// Read holds on several vectors at once (duplicates and null entries are skipped), taken in
// address order so that two reading threads cannot wait for each other.
class TQyVectorReadLocks {
public:
  explicit TQyVectorReadLocks(QList<TQyCustomDoubleVector*> vectors);

private:
  std::vector<TQyVectorLock> FLocks;
};

// Whatever uses a vector (a series, a chart of its own) hears of its changes through this.
class IQyVectorListener {
public:
  virtual ~IQyVectorListener() = default;
  // On the vector's thread. `index` is the place of Inserted and Deleted, else -1.
  virtual void VectorChanged(TQyCustomDoubleVector* vector, TQyVectorChange change, int index) = 0;
  // The vector is being destroyed: the listener lets go of it (it may still read its name).
  virtual void VectorDestroyed(TQyCustomDoubleVector* vector) { (void)vector; }
};

class TQyCustomDoubleVector : public QObject, public TQyRecording, public IQyStateful {
  Q_OBJECT
  QY_RECORDING_SIGNAL(TQyCustomDoubleVector)

public:
  explicit TQyCustomDoubleVector(QObject* owner = nullptr);
  ~TQyCustomDoubleVector() override;

  // ---- statistics and values (virtual so that computed vectors can stand in)
  virtual int GetCount() const { return FCount.load(std::memory_order_acquire); }
  virtual void CheckMinMax();
  virtual double GetMinimum();
  virtual double GetMaximum();
  virtual double GetMinimumIncludingOutliers();
  virtual double GetMaximumIncludingOutliers();
  virtual int GetMinimumIdx();
  virtual int GetMaximumIdx();
  virtual int GetMinimumIdxIncludingOutliers();
  virtual int GetMaximumIdxIncludingOutliers();
  virtual bool GetOnlyAscending();
  virtual double GetSum();
  virtual double GetSumIncludingOutliers();
  virtual double GetValue(int i) const;
  virtual void SetValue(int i, double v);
  // Values came since the statistics were last asked for (bulk additions compute them at once,
  // but only asking counts).
  virtual bool IsChanged() const { return FSeenCount.load(std::memory_order_acquire) < GetCount(); }
  // Reads the bound database column when it changed (vectors without a binding do nothing).
  virtual void UpdateDB() {}

  int Count() const { return GetCount(); }
  int Capacity() const { return FCapacity; }
  int Increment() const { return FIncrement; }
  double operator[](int i) const { return GetValue(i); }

  // Index walk over GetValue (computed vectors included); range-for goes through it.
  using TQyCustomDoubleVectorEnum = TQyVectorEnum<TQyCustomDoubleVector, double>;
  TQyCustomDoubleVectorEnum GetEnumerator() const { return TQyCustomDoubleVectorEnum(this); }
  TQyEnumIterator<TQyCustomDoubleVectorEnum> begin() const {
    return TQyEnumIterator<TQyCustomDoubleVectorEnum>(GetEnumerator());
  }
  std::default_sentinel_t end() const { return {}; }
  // Unchecked access for inner loops of readers that hold ReadLock() and checked the count.
  // GetValue and Data read without a lock: a reader holds ReadLock() while another thread may
  // write (the graph holds the vectors of its series while it polls, paints and picks).
  const double* Data() const { return FValues.data(); }
  // The first index of the lowest and of the highest finite value in [a, b) (-1 when none), in
  // time proportional to the blocks of the range: for readers that hold ReadLock().
  void Extremes(int a, int b, int& lowest, int& highest) const {
    FIndex.Extremes(FValues.data(), a, b, lowest, highest);
  }

  int Add(double v);
  int Insert(int i, double v);
  void Delete(int i, bool deleteLinkedMarkers = true);
  void Clear(bool clearLinkedMarkers = true);
  bool IsOutlier(int i) const;
  void AddOutlier(int i);
  void RemoveOutlier(int i);
  void SetOutlier(int i, bool on);
  void ClearOutlieres();
  bool HasOutliers() const { return FHasOutliers; }
  const TQyIntegerVector& Outliers() const { return FOutliers; }
  void SetCapacity(int n);
  void SetIncrement(int n);
  void CheckCount(int n);
  void ResetRanges();
  void OutOfRange();
  void ResetRelatedSeries();
  void InvalidateRelatedSeries();

  // ---- listeners: the series and other objects that use this vector
  void AddListener(IQyVectorListener* listener);
  void RemoveListener(IQyVectorListener* listener);
  QList<QObject*> RelatedSeries() const;

  // Appends may come from a worker thread while the interface thread reads. Writers take the lock
  // exclusively; a reader that walks the values (point calculation, statistics) holds it shared.
  // The statistics are brought up to date first, so that readers holding the lock never need
  // to write them.
  TQyVectorLock ReadLock();

  // The whole data for the undo stack: the values and the outlier indices.
  void WriteState(QIODevice& device) override;
  void ReadState(QIODevice& device) override;

protected:
  // Tells every listener, on the interface thread; changes from other threads are coalesced into
  // one queued notification of the strongest kind.
  void NotifyListeners(TQyVectorChange change);
  void Deliver(TQyVectorChange change, int index = -1);
  // Marker notices (insert, delete, clear): told at once, and only on the vector's own thread.
  void NotifyAtOnce(TQyVectorChange change, int index);
  void StoreValue(int i, double v); // CheckCount + store, no statistics
  void CheckMinMaxLocked();
  void SumPending(); // under the write lock: brings the sums to the checked count
  // The statistics and the block index cover every stored value (of this vector's own storage).
  bool StatisticsCurrent() const {
    const int n = FCount.load(std::memory_order_acquire);
    return FCheckedCount.load(std::memory_order_acquire) >= n && !FIndex.Behind(n);
  }
  TQyVectorLock WriteLock() { return TQyVectorLock(this, TQyVectorLock::TMode::Write); }
  // Runs `edit` on the outlier list under the lock; when it changed something the statistics
  // start over.
  template <class F> void EditOutliers(F edit);

  std::atomic<int> FCount{0};
  int FCapacity = 128;
  int FIncrement = 128;
  std::atomic<int> FCheckedCount{0};
  std::atomic<int> FSeenCount{0}; // the checked count when the statistics were last asked for
  int FMinimumIdx = -1, FMaximumIdx = -1;
  int FMinimumIdxIncludingOutliers = -1, FMaximumIdxIncludingOutliers = -1;
  double FMinimum = QyMaxDouble(), FMaximum = -QyMaxDouble();
  double FMinimumIncludingOutliers = QyMaxDouble(), FMaximumIncludingOutliers = -QyMaxDouble();
  double FSum = 0, FSumIncludingOutliers = 0;
  int FSummedCount = 0; // leading values whose part is in the sums
  int FLastValidIdx = -1; // last non-outlier index seen by the statistics
  bool FOnlyAscending = true;
  bool FHasOutliers = false;
  TQyIntegerVector FOutliers;
  TQyValueStore FValues;
  TQyMinMaxIndex FIndex; // extended with the statistics, under the same lock
  QList<TQyInterfacePointer<IQyVectorListener>> FRelatedSeries;
  mutable std::shared_mutex FLock;
  friend class TQyVectorLock;
  std::atomic<int> FPendingChange{-1};

private:
  static constexpr double QyMaxDouble() { return 1.7976931348623157e308; }
};

// The concrete vector that applications fill, by hand or from a column of an item model.
class TQyDoubleVector : public TQyCustomDoubleVector, public IQyValueList {
  Q_OBJECT
  QY_PROPERTY(bool, PersistentValues, nullptr, (void)0) = false;
  Q_PROPERTY(int Capacity READ Capacity WRITE SetCapacity)
  Q_PROPERTY(int Increment READ Increment WRITE SetIncrement)
  QY_PROPERTY_CUSTOM(QString, DataField);
  Q_PROPERTY(QAbstractItemModel* DataSource READ GetDataSource WRITE SetDataSource)
  // The values as a property of the component, for a saver of component state, which keeps it
  // when PersistentValues is set (Qt evaluates no function for STORED).
  Q_PROPERTY(QVariantList Values READ StoredValues WRITE LoadValues STORED false)
  QY_DOCUMENT_MEMBERS

public:
  explicit TQyDoubleVector(QObject* owner = nullptr);
  // Locale-independent texts; loading takes texts and numbers alike and replaces the values.
  QVariantList StoredValues() const;
  void LoadValues(const QVariantList& items);
  ~TQyDoubleVector() override;
  // Takes the values as the vector's content.
  void SetValues(std::vector<double> values);
  std::vector<double> ValueList() const override { return {Data(), Data() + Count()}; }
  // As if the values were added one by one: the capacity grows in steps of Increment.
  void SetValueList(std::vector<double> values) override {
    Clear(false);
    AddRange(values);
  }
  void AddRange(const double* values, int n);
  void AddRange(const std::vector<double>& values) { AddRange(values.data(), int(values.size())); }
  void AddRange(const std::vector<float>& values);
  void AddRange(const std::vector<int>& values);

  // ---- database link: the column DataField of the model DataSource
  QAbstractItemModel* GetDataSource() const { return FDataSource; }
  void SetDataSource(QAbstractItemModel* model);
  // Reads the column when the model changed since the last reading. Nulls become 0 and outliers
  // (the series skip them); a null in the last row is dropped.
  void UpdateDB() override;
  // The model changed: only marks the column for reading at the next paint.
  void DBChanged();
  bool FromDatabase() const { return FFromDatabase; }
  bool DatabaseChanged() const { return FDatabaseChanged; }
  bool InDatabaseUpdate() const { return FInDatabaseUpdate; }
  TQyListLink* DataLink() const { return FDataLink; }

private:
  template <class T> void AddRangeOf(const T* values, int n);
  void BindingChanged();
  bool CanReadModel();
  void TakeRead(std::vector<double>& values, int count, const std::vector<int>& outliers, int rows);
  QPointer<QAbstractItemModel> FDataSource;
  TQyListLink* FDataLink;
  bool FFromDatabase = false;
  bool FDatabaseChanged = false;
  bool FInDatabaseUpdate = false;
};

// A vector whose value at i is i: stands in for a missing data vector of a series.
class TQyIndexer : public TQyCustomDoubleVector {
  Q_OBJECT
public:
  explicit TQyIndexer(QObject* owner = nullptr) : TQyCustomDoubleVector(owner) {}
  void SetPartner(TQyCustomDoubleVector* partner) { FPartner = partner; }
  TQyCustomDoubleVector* Partner() const { return FPartner; }
  int GetCount() const override { return FPartner ? FPartner->GetCount() : 0; }
  void CheckMinMax() override {}
  double GetMinimum() override { return 0; }
  double GetMaximum() override { return GetCount() > 1 ? GetCount() - 1 : 0; }
  double GetMinimumIncludingOutliers() override { return GetMinimum(); }
  double GetMaximumIncludingOutliers() override { return GetMaximum(); }
  int GetMinimumIdx() override { return GetCount() < 1 ? -1 : 0; }
  int GetMaximumIdx() override { return GetCount() < 1 ? -1 : GetCount() - 1; }
  int GetMinimumIdxIncludingOutliers() override { return GetMinimumIdx(); }
  int GetMaximumIdxIncludingOutliers() override { return GetMaximumIdx(); }
  bool GetOnlyAscending() override { return true; }
  double GetSum() override { return (GetCount() - 1) / 2.0 * GetCount(); }
  double GetSumIncludingOutliers() override { return GetSum(); }
  double GetValue(int i) const override { return FPartner ? i : 0; }
  void SetValue(int i, double v) override;
  bool IsChanged() const override { return FPartner && FPartner->IsChanged(); }
  bool HasState() const override { return false; } // no data of its own

private:
  QPointer<TQyCustomDoubleVector> FPartner;
};
