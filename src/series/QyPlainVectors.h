#pragma once
// Small growing arrays used inside axes and series: tick positions and flags, point indices and
// pixel points. Capacity grows in steps of Increment (observable); storage beneath may grow more.
#include "QyExceptions.h"
#include <QPointF>
#include <vector>

template <class T> class TQyPlainVector {
public:
  explicit TQyPlainVector(int increment = 128) : FIncrement(increment >= 1 ? increment : 128) {
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
  void SetValue(int i, T v) {
    if (i < 0) QyRaiseIndexError(i);
    CheckCount(i + 1);
    FValues[i] = v;
  }
  int Add(T v) {
    SetValue(FCount, v);
    return FCount;
  }
  void Clear() { FCount = 0; }
  void Delete(int i) {
    if (i < 0 || i >= FCount) return;
    std::copy(FValues.begin() + i + 1, FValues.begin() + FCount, FValues.begin() + i);
    --FCount;
  }
  // Grows Capacity by Increment until n fits; Count follows n when n is larger.
  void CheckCount(int n) {
    if (n >= FCapacity) {
      while (FCapacity < n) FCapacity += FIncrement;
      Reserve(FCapacity);
    }
    if (n >= FCount) FCount = n;
  }
  void SetCount(int n) { CheckCount(n); FCount = n < 0 ? 0 : n; }
  void SetCapacity(int n) {
    if (n > FCount && n != FCapacity) { FCapacity = n; Reserve(n); }
  }
  // Direct access for inner loops (valid below Count).
  T* Data() { return FValues.data(); }
  const T* Data() const { return FValues.data(); }
  T& operator[](int i) { return FValues[i]; }
  const T& operator[](int i) const { return FValues[i]; }

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
};
class TQyIntegerVector : public TQyPlainVector<int> {
public:
  using TQyPlainVector::TQyPlainVector;
};
class TQySingleVector : public TQyPlainVector<float> {
public:
  using TQyPlainVector::TQyPlainVector;
};
class TQyPointVector : public TQyPlainVector<QPointF> {
public:
  using TQyPlainVector::TQyPlainVector;
  double GetX(int i) const { return GetValue(i).x(); }
  double GetY(int i) const { return GetValue(i).y(); }
  void SetX(int i, double v) { CheckCount(i + 1); (*this)[i].setX(v); }
  void SetY(int i, double v) { CheckCount(i + 1); (*this)[i].setY(v); }
};
