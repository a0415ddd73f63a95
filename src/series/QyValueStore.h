#pragma once
// The storage beneath a data vector. Room beyond the values written so far is neither zeroed nor
// touched: growth costs no resident memory until values arrive, and a grown block is moved by
// remapping its pages, never copied, so that at hundreds of millions of values a vector stays at
// eight bytes a value where a copying growth would briefly hold the old and the new block.
//
// Small blocks live on the heap (realloc). Blocks of 2 MiB and more are mappings of their own,
// aligned to 2 MiB and asked to use huge pages, and they move only to such aligned places: drawing
// reads a handful of values per pixel column spread over the whole block, and with 4 KiB pages
// each of those reads costs a page-table walk (several microseconds in a virtual machine); with
// 2 MiB pages the whole block needs a few dozen translations.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

class TQyValueStore {
public:
  TQyValueStore() = default;
  ~TQyValueStore() { Release(); }
  TQyValueStore(const TQyValueStore&) = delete;
  TQyValueStore& operator=(const TQyValueStore&) = delete;

  double* data() { return FData; }
  const double* data() const { return FData; }
  size_t size() const { return FSize; }
  bool empty() const { return FSize == 0; }
  double* begin() { return FData; }
  double& operator[](size_t i) { return FData[i]; }
  const double& operator[](size_t i) const { return FData[i]; }
  bool Mapped() const { return FMappedBytes != 0; }

  // The room for n values (at least one, so that data() is never null).
  void resize(size_t n);
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

  static constexpr size_t HugePage = size_t(2) << 20;

private:
  void ResizeOnHeap(size_t n);
  void ResizeMapped(size_t bytes);
  void Release();

  double* FData = nullptr;
  size_t FSize = 0;
  size_t FMappedBytes = 0; // of the mapping; 0 while the block is on the heap
  size_t FZeroFrom = 0;    // from here on nothing was written
};
