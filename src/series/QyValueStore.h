#pragma once
// The storage beneath a data vector. It grows with realloc, so that the system moves a large block
// by remapping its pages instead of copying it, and room beyond the values written so far is
// neither zeroed nor touched: growth costs no resident memory until values arrive. At hundreds of
// millions of values this keeps a vector at eight bytes a value, where a copying growth would
// briefly hold the old and the new block.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

class TQyValueStore {
public:
  TQyValueStore() = default;
  ~TQyValueStore() { std::free(FData); }
  TQyValueStore(const TQyValueStore&) = delete;
  TQyValueStore& operator=(const TQyValueStore&) = delete;

  double* data() { return FData; }
  const double* data() const { return FData; }
  size_t size() const { return FSize; }
  bool empty() const { return FSize == 0; }
  double* begin() { return FData; }
  double& operator[](size_t i) { return FData[i]; }
  const double& operator[](size_t i) const { return FData[i]; }

  // The room for n values (at least one, so that data() is never null).
  void resize(size_t n) {
    n = n ? n : 1;
    auto* p = static_cast<double*>(std::realloc(FData, n * sizeof(double)));
    if (!p) throw std::bad_alloc();
    FData = p;
    FSize = n;
    if (FZeroFrom > n) FZeroFrom = n;
  }
  // Values [0, n) are about to be used: those never written before read as 0.
  void Expose(size_t n) {
    if (n <= FZeroFrom) return;
    std::memset(FData + FZeroFrom, 0, (n - FZeroFrom) * sizeof(double));
    FZeroFrom = n;
  }
  // Takes a copy of the values, with room for at least `room`.
  void Assign(const std::vector<double>& values, size_t room) {
    resize(std::max(room, values.size()));
    if (!values.empty()) std::memcpy(FData, values.data(), values.size() * sizeof(double));
    FZeroFrom = values.size();
  }

private:
  double* FData = nullptr;
  size_t FSize = 0;
  size_t FZeroFrom = 0; // from here on nothing was written
};
