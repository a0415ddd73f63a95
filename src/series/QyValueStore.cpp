// The storage beneath a data vector: heap blocks and huge-page mappings (see QyValueStore.h).
#include "QyValueStore.h"
#include <sys/mman.h>

namespace {
constexpr size_t Huge = TQyValueStore::HugePage;

size_t RoundUp(size_t bytes) { return (bytes + Huge - 1) / Huge * Huge; }

// A fresh mapping of `bytes` (a multiple of 2 MiB) at a 2 MiB boundary: map more, cut the ends.
double* MapAligned(size_t bytes) {
  void* raw = mmap(nullptr, bytes + Huge, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (raw == MAP_FAILED) throw std::bad_alloc();
  const auto start = reinterpret_cast<uintptr_t>(raw);
  const uintptr_t aligned = (start + Huge - 1) & ~(Huge - 1);
  if (aligned > start) munmap(raw, aligned - start);
  if (const size_t tail = start + bytes + Huge - (aligned + bytes)) munmap(reinterpret_cast<void*>(aligned + bytes), tail);
  madvise(reinterpret_cast<void*>(aligned), bytes, MADV_HUGEPAGE); // a hint: without it, 4 KiB pages
  return reinterpret_cast<double*>(aligned);
}
} // namespace

void TQyValueStore::resize(size_t n) {
  n = n ? n : 1;
  const size_t bytes = n * sizeof(double);
  // Back to the heap only well below the threshold, so that a size going to and fro near it
  // does not copy each time.
  if (bytes < (Mapped() ? Huge / 2 : Huge)) ResizeOnHeap(n);
  else ResizeMapped(bytes);
  FSize = n;
  if (FZeroFrom > n) FZeroFrom = n;
}

void TQyValueStore::ResizeOnHeap(size_t n) {
  if (!Mapped()) {
    auto* p = static_cast<double*>(std::realloc(FData, n * sizeof(double)));
    if (!p) throw std::bad_alloc();
    FData = p;
    return;
  }
  auto* p = static_cast<double*>(std::malloc(n * sizeof(double)));
  if (!p) throw std::bad_alloc();
  std::memcpy(p, FData, std::min(n, FZeroFrom) * sizeof(double));
  munmap(FData, FMappedBytes);
  FData = p;
  FMappedBytes = 0;
}

void TQyValueStore::ResizeMapped(size_t bytes) {
  const size_t want = RoundUp(bytes);
  if (want == FMappedBytes) return;
  if (want < FMappedBytes) { // give the tail back
    munmap(reinterpret_cast<char*>(FData) + want, FMappedBytes - want);
    FMappedBytes = want;
    return;
  }
  double* target = MapAligned(want);
  if (Mapped()) {
    // Both ends are 2 MiB aligned, so the kernel moves whole huge pages: no copy, no split.
    void* moved = mremap(FData, FMappedBytes, FMappedBytes, MREMAP_MAYMOVE | MREMAP_FIXED, target);
    if (moved == MAP_FAILED) {
      munmap(target, want);
      throw std::bad_alloc();
    }
  } else {
    if (FData) std::memcpy(target, FData, std::min(FSize, FZeroFrom) * sizeof(double)); // under 2 MiB
    std::free(FData);
  }
  FData = target;
  FMappedBytes = want;
}

void TQyValueStore::Release() {
  if (Mapped()) munmap(FData, FMappedBytes);
  else std::free(FData);
  FData = nullptr;
  FMappedBytes = 0;
}
