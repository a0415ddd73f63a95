#pragma once
// Small growing arrays used inside axes and series: tick positions and flags, point indices and
// pixel points. Capacity grows in steps of Increment (observable); storage beneath may grow more.
#include "QyExceptions.h"
#include <QPointF>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

// The most values a vector holds (2 GiB of doubles). Indices and counts from there up to the int
// limit raise ERangeError, so that no growth arithmetic (i + 1, Capacity + Increment) can overflow
// and no request for gigabytes reaches the allocator.
inline constexpr int QyMaxVectorCount = 1 << 28;

// Raises ERangeError unless 0 <= i < QyMaxVectorCount: an index that a vector may grow to.
inline void QyCheckGrowIndex(long long i) {
  if (i < 0 || i >= QyMaxVectorCount) QyRaiseIndexError(i);
}
// Raises ERangeError, naming n, for a count, capacity or increment above QyMaxVectorCount.
inline void QyCheckVectorSize(long long n) {
  if (n > QyMaxVectorCount) QyRaiseIndexError(n);
}
// The capacity that holds n, grown from `capacity` in whole steps of `increment` (n checked).
inline int QyGrownCapacity(int capacity, int n, int increment) {
  QyCheckVectorSize(n);
  const long long steps = (static_cast<long long>(n) - capacity + increment - 1) / increment;
  return static_cast<int>(
      std::min<long long>(capacity + steps * increment, QyMaxVectorCount));
}

// Walks a vector by index: starts before the first value, MoveNext answers true while the index
// stays below the vector's count (asked anew each step, so values added meanwhile are seen).
template <class Vector, class Value> class TQyVectorEnum {
public:
  explicit TQyVectorEnum(const Vector* vector) : FVector(vector) {}
  static TQyVectorEnum Create(const Vector* vector) { return TQyVectorEnum(vector); }
  Value GetCurrent() const { return FVector->GetValue(FIndex); }
  bool MoveNext() { return ++FIndex < FVector->Count(); }

private:
  const Vector* FVector;
  int FIndex = -1;
};

// Lets range-for drive an enumerator: `for (double v : vector)`.
template <class Enum> class TQyEnumIterator {
public:
  explicit TQyEnumIterator(Enum e) : FEnum(e), FValid(FEnum.MoveNext()) {}
  auto operator*() const { return FEnum.GetCurrent(); }
  TQyEnumIterator& operator++() {
    FValid = FEnum.MoveNext();
    return *this;
  }
  bool operator==(std::default_sentinel_t) const { return !FValid; }

private:
  Enum FEnum;
  bool FValid;
};

template <class T> class TQyPlainVector {
public:
  // An increment below 1 falls back to 128; the array is allocated to one increment at once.
  explicit TQyPlainVector(int increment = 128) : FIncrement(increment >= 1 ? increment : 128) {
    QyCheckVectorSize(FIncrement);
    FValues.resize(FIncrement);
    FCapacity = FIncrement;
  }
  int Count() const { return FCount; }
  int Capacity() const { return FCapacity; }
  int Increment() const { return FIncrement; }
  T GetValue(int i) const {
    if (i < 0 || i >= FCount) QyRaiseIndexError(i);
    return FValues[i];
  }
  // Writing behind the end extends the vector.
  void SetValue(int i, T v) {
    QyCheckGrowIndex(i);
    CheckCount(i + 1);
    FValues[i] = v;
  }
  int Add(T v) {
    SetValue(FCount, v);
    return FCount;
  }
  void Clear() { FCount = 0; } // keeps the memory
  void Delete(int i) {
    if (i < 0 || i >= FCount) return;
    std::copy(FValues.begin() + i + 1, FValues.begin() + FCount, FValues.begin() + i);
    --FCount;
  }
  // Grows Capacity by Increment until n fits; Count follows n when n is larger.
  void CheckCount(int n) {
    if (n >= FCapacity) {
      FCapacity = QyGrownCapacity(FCapacity, n, FIncrement);
      Reserve(FCapacity);
    }
    if (n >= FCount) FCount = n;
  }
  // Direct access for inner loops (valid below Count).
  T* Data() { return FValues.data(); }
  const T* Data() const { return FValues.data(); }
  T& operator[](int i) { return FValues[i]; }
  const T& operator[](int i) const { return FValues[i]; }
  const T* begin() const { return FValues.data(); }
  const T* end() const { return FValues.data() + FCount; }

protected:
  // Published by the vectors that have them.
  void SetCount(int n) {
    CheckCount(n);
    FCount = n < 0 ? 0 : n;
  }
  void SetCapacity(int n) {
    if (n > FCount && n != FCapacity) {
      QyCheckVectorSize(n);
      FCapacity = n;
      Reserve(n);
    }
  }

private:
  void Reserve(int n) {
    if (static_cast<size_t>(n) > FValues.size())
      FValues.resize(std::max<size_t>(n, FValues.size() * 2)); // geometric beneath
  }
  std::vector<T> FValues;
  int FCount = 0;
  int FCapacity = 0;
  int FIncrement;
};

// Stored as bytes: a bit-packed vector cannot hand out references.
class TQyBooleanVector : public TQyPlainVector<quint8> {
public:
  using TQyPlainVector::TQyPlainVector;
  using TQyPlainVector::SetCount;
};
class TQyIntegerVector : public TQyPlainVector<int> {
public:
  using TQyPlainVector::TQyPlainVector;
  using TQyPlainVector::SetCount;
  using TQyPlainVector::SetCapacity;
};
class TQySingleVector : public TQyPlainVector<float> {
public:
  using TQyPlainVector::TQyPlainVector;
  using TQyPlainVector::SetCount;
  using TQyPlainVector::SetCapacity;
};
class TQyPointVector : public TQyPlainVector<QPointF> {
public:
  using TQyPointVectorEnum = TQyVectorEnum<TQyPointVector, QPointF>;
  using TQyPlainVector::TQyPlainVector;
  using TQyPlainVector::SetCapacity;
  double GetX(int i) const { return GetValue(i).x(); }
  double GetY(int i) const { return GetValue(i).y(); }
  void SetX(int i, double v) { Slot(i).setX(v); }
  void SetY(int i, double v) { Slot(i).setY(v); }
  TQyPointVectorEnum GetEnumerator() const { return TQyPointVectorEnum(this); }

private:
  QPointF& Slot(int i) {
    QyCheckGrowIndex(i);
    CheckCount(i + 1);
    return (*this)[i];
  }
};
