#include "QyMinMaxIndex.h"
#include <algorithm>
#include <cmath>

TQyMinMaxIndex::Block TQyMinMaxIndex::Scan(const double* v, int a, int b) {
  Block r{0, 0, -1, -1};
  for (int i = a; i < b; ++i) {
    const double x = v[i];
    if (!std::isfinite(x)) continue;
    if (r.LowIdx < 0) r = {x, x, i, i};
    else if (x < r.Low) r.Low = x, r.LowIdx = i;
    else if (x > r.High) r.High = x, r.HighIdx = i;
  }
  return r;
}

// Merges a later part into `into`: strict comparisons keep the first index of a tie.
void TQyMinMaxIndex::Take(Block& into, const Block& part) {
  if (part.LowIdx < 0) return;
  if (into.LowIdx < 0) {
    into = part;
    return;
  }
  if (part.Low < into.Low) into.Low = part.Low, into.LowIdx = part.LowIdx;
  if (part.High > into.High) into.High = part.High, into.HighIdx = part.HighIdx;
}

void TQyMinMaxIndex::Extend(const double* v, int n) {
  for (int k = int(FBlocks.size()); (k + 1) * BlockSize <= n; ++k)
    FBlocks.push_back(Scan(v, k * BlockSize, (k + 1) * BlockSize));
}

void TQyMinMaxIndex::Truncate(int i) {
  const size_t keep = size_t(i < 0 ? 0 : i / BlockSize);
  if (keep < FBlocks.size()) FBlocks.resize(keep);
  if (FBlocks.empty()) FBlocks.shrink_to_fit(); // a cleared vector gives its index back
}

void TQyMinMaxIndex::Changed(const double* v, int i) {
  const size_t k = size_t(i / BlockSize);
  if (i >= 0 && k < FBlocks.size()) FBlocks[k] = Scan(v, int(k) * BlockSize, int(k + 1) * BlockSize);
}

void TQyMinMaxIndex::Extremes(const double* v, int a, int b, int& lowest, int& highest) const {
  // Whole indexed blocks inside [a, b): from the first block boundary at or after a.
  const int first = (a + BlockSize - 1) / BlockSize;
  const int last = std::min(b / BlockSize, int(FBlocks.size())); // blocks [first, last)
  Block r;
  if (first >= last) {
    r = Scan(v, a, b);
  } else {
    r = Scan(v, a, first * BlockSize);
    for (int k = first; k < last; ++k) Take(r, FBlocks[size_t(k)]);
    Take(r, Scan(v, last * BlockSize, b));
  }
  lowest = r.LowIdx;
  highest = r.HighIdx;
}
