#pragma once
// The downhill simplex over up to a few dozen coefficients, as the fitted line runs it: a start
// simplex of the coefficients and one corner per coefficient scaled by 2.05, reflection,
// expansion, one contraction towards the centroid and a shrink towards the best corner. The
// contraction rule is our own (see Round); the loop around the rounds belongs to the caller.
#include "QyPairedArrays.h"
#include <functional>

class TQySimplex {
public:
  // The error of a corner; it may read the corner but not keep the pointer.
  using TError = std::function<double(const double* corner)>;

  // Corner `order` is `coefs`; corner i is `coefs` with coefficient i times 2.05.
  void Start(const TDoubleDynArray& coefs, const TError& error);
  // One round: reflect the worst corner through the centroid of the others; a new best is
  // expanded to twice the way if that is better still; a reflection worse than the second
  // worst is contracted once, and a contraction that then beats the second worst shrinks every
  // corner halfway to the best (a contraction that stays worse is kept, with no shrink).
  void Round(const TError& error);

  int Order() const { return FOrder; }
  int Best() const { return FMin; }
  int Worst() const { return FMax; }
  int SecondWorst() const { return FTwo; }
  const TDoubleDynArray& Corner(int i) const { return FCorners[i]; }
  double Error(int i) const { return FErrors[i]; }

private:
  // The worst corner := (Center - worst) * f + Center.
  void Move(double f);
  void Evaluate(int i, const TError& error) { FErrors[i] = error(FCorners[i].data()); }
  // Best, worst and second worst; ties move the worst to the later corner.
  void Rank();

  int FOrder = 0, FMin = 0, FMax = 0, FTwo = 0;
  std::vector<TDoubleDynArray> FCorners;
  TDoubleDynArray FErrors, FCenter, FSaved;
};
