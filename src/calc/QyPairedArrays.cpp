#include "QyPairedArrays.h"
#include <algorithm>
#include <cmath>
#include <utility>

namespace {
// Partitions around the middle element and sorts the smaller side by recursion, the larger by the
// loop: the same order as recursing on the left, with a stack depth of at most log2(n).
template <class SwapAt> void QuickSortBy(int l, int r, double* x, SwapAt swapAt) {
  while (l < r) {
    int i = l, j = r;
    const double pivot = x[(l + r) / 2];
    do {
      while (x[i] < pivot) ++i;
      while (pivot < x[j]) --j;
      if (i <= j) {
        if (i != j) swapAt(i, j);
        ++i, --j;
      }
    } while (i <= j);
    if (j - l < r - i) {
      QuickSortBy(l, j, x, swapAt);
      l = i;
    } else {
      QuickSortBy(i, r, x, swapAt);
      r = j;
    }
  }
}

template <class Distance> void SmoothBy(double m, const TDoubleDynArray& x, TDoubleDynArray& y, Distance dist) {
  const int n = int(std::min(x.size(), y.size()));
  if (n <= 2 || !(m > 0)) return;
  TDoubleDynArray out(n);
  for (int i = 0; i < n; ++i) {
    int lo = i, hi = i;
    while (lo > 0 && dist(x[i], x[lo - 1]) < m) --lo;
    while (hi < n - 1 && dist(x[i], x[hi + 1]) < m) ++hi;
    double sum = 0, weights = 0;
    for (int j = lo; j <= hi; ++j) {
      const double f = 1 - dist(x[i], x[j]) / m;
      if (f > 0) sum += f * y[j], weights += f;
    }
    out[i] = sum / weights; // the point itself weighs 1
  }
  y = std::move(out);
}
} // namespace

void QuickSortYtoX(int left, int right, double* x, double* y) {
  QuickSortBy(left, right, x, [&](int i, int j) {
    std::swap(x[i], x[j]);
    std::swap(y[i], y[j]);
  });
}

void QuickSortYWtoX(int left, int right, double* x, double* y, double* w) {
  QuickSortBy(left, right, x, [&](int i, int j) {
    std::swap(x[i], x[j]);
    std::swap(y[i], y[j]);
    std::swap(w[i], w[j]);
  });
}

void Smooth(double m, const TDoubleDynArray& x, TDoubleDynArray& y) {
  SmoothBy(m, x, y, [](double a, double b) { return std::fabs(a - b); });
}

void SmoothLog10(double m, const TDoubleDynArray& x, TDoubleDynArray& y) {
  SmoothBy(m, x, y, [](double a, double b) { return std::fabs(std::log10(a) - std::log10(b)); });
}
