#pragma once
// The lowest and highest value of every block of a vector's values, so that the extremes of any
// index range cost the blocks it spans plus the two partial blocks at its ends, instead of one
// step per value. The owner extends it lazily as values come and tells it what changed.
#include <atomic>
#include <vector>

// The lowest and highest of v[a, b) as the comparisons x < low, x > high see them (a NaN never
// wins, infinities do), whether each value is above its predecessor within the range, and whether
// all are finite. Four independent lanes, so that a pass costs about a nanosecond a value.
struct TQyRangeStats {
  double Low, High;
  bool Ascending, Finite;
};
TQyRangeStats QyRangeStats(const double* v, int a, int b);
// The first index in [a, b) whose value equals x (b when none).
int QyFirstEqual(const double* v, int a, int b, double x);

class TQyMinMaxIndex {
public:
  static constexpr int BlockSize = 256;

  // Values [0, n) exist: indexes the complete blocks not yet indexed.
  void Extend(const double* v, int n);
  // The block starting at a (a multiple of BlockSize) has the statistics s: it is indexed from
  // them when it is the next block, so that one pass over the values serves both.
  void ExtendBlock(const double* v, int a, const TQyRangeStats& s);
  // Forgets the blocks from the one holding i on (values from i on moved or went).
  void Truncate(int i);
  // The value at i changed in place: its block is taken anew.
  void Changed(const double* v, int i);
  // Whether complete blocks of [0, n) are not yet indexed. Safe without the owner's lock: the
  // count is published after the blocks.
  bool Behind(int n) const { return FIndexed.load(std::memory_order_acquire) < n / BlockSize; }

  // The first index of the lowest and of the highest finite value in [a, b), or -1 for both when
  // the range holds no finite value. Ties go to the first index.
  void Extremes(const double* v, int a, int b, int& lowest, int& highest) const;

private:
  struct Block { double Low, High; int LowIdx, HighIdx; }; // LowIdx -1: no finite value
  static Block Scan(const double* v, int a, int b);
  static Block FromStats(const double* v, int a, int b, const TQyRangeStats& s);
  static void Take(Block& into, const Block& part);
  void Publish() { FIndexed.store(int(FBlocks.size()), std::memory_order_release); }
  std::vector<Block> FBlocks;
  std::atomic<int> FIndexed{0};
};
