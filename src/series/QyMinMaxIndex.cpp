#include "QyMinMaxIndex.h"
#include <algorithm>
#include <cmath>
#include <limits>

// Plain loops without early exits, so that the compiler can run them in vector registers.
__attribute__((optimize("O3"))) TQyRangeStats QyRangeStats(const double* v, int a, int b) {
  constexpr double Inf = std::numeric_limits<double>::infinity();
  double lo[4] = {Inf, Inf, Inf, Inf}, hi[4] = {-Inf, -Inf, -Inf, -Inf};
  int i = a;
  for (; i + 4 <= b; i += 4)
    for (int k = 0; k < 4; ++k) {
      const double x = v[i + k];
      lo[k] = x < lo[k] ? x : lo[k];
      hi[k] = x > hi[k] ? x : hi[k];
    }
  for (; i < b; ++i) {
    lo[0] = v[i] < lo[0] ? v[i] : lo[0];
    hi[0] = v[i] > hi[0] ? v[i] : hi[0];
  }
  int up = 1, finite = 1;
  for (int j = a + 1; j < b; ++j) up &= v[j] > v[j - 1];
  for (int j = a; j < b; ++j) finite &= v[j] - v[j] == 0; // NaN for NaN and infinities
  TQyRangeStats r{lo[0], hi[0], up != 0, finite != 0};
  for (int k = 1; k < 4; ++k) {
    r.Low = lo[k] < r.Low ? lo[k] : r.Low;
    r.High = hi[k] > r.High ? hi[k] : r.High;
  }
  return r;
}

int QyFirstEqual(const double* v, int a, int b, double x) {
  while (a < b && !(v[a] == x)) ++a;
  return a;
}

TQyMinMaxIndex::Block TQyMinMaxIndex::Scan(const double* v, int a, int b) {
  if (a >= b) return {0, 0, -1, -1};
  return FromStats(v, a, b, QyRangeStats(v, a, b));
}

TQyMinMaxIndex::Block TQyMinMaxIndex::FromStats(const double* v, int a, int b, const TQyRangeStats& s) {
  if (s.Finite) return {s.Low, s.High, QyFirstEqual(v, a, b, s.Low), QyFirstEqual(v, a, b, s.High)};
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
  Publish();
}

void TQyMinMaxIndex::ExtendBlock(const double* v, int a, const TQyRangeStats& s) {
  if (a != int(FBlocks.size()) * BlockSize) return;
  FBlocks.push_back(FromStats(v, a, a + BlockSize, s));
  Publish();
}

void TQyMinMaxIndex::Truncate(int i) {
  const size_t keep = size_t(i < 0 ? 0 : i / BlockSize);
  if (keep < FBlocks.size()) FBlocks.resize(keep);
  if (FBlocks.empty()) FBlocks.shrink_to_fit(); // a cleared vector gives its index back
  Publish();
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
