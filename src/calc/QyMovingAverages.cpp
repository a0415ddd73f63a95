#include "QyMovingAverages.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include "QyRounding.h"
#include <algorithm>
#include <cmath>

namespace {
// The index window of each point. The X-distance window moves with two pointers: its ends only
// grow with i on sorted X, so finding all windows costs one pass.
class TWindow {
public:
  TWindow(const TQyAveraging& how, const double* x, int m)
      : FX(x), FM(m), FN(std::fabs(how.N)), FBoth(how.Direction == TQyAveragingDirection::UpAndDownwards),
        FByCount(how.RangeMethod == TQyAveragingRangeMethod::NasCount) {
    if (FByCount) FCount = std::clamp<double>(std::nearbyint(FN), 0, m); // Round: half to even
  }
  void Place(int i) {
    if (FByCount) {
      FLo = std::max(0, i - int(FCount));
      FHi = FBoth ? int(std::min<double>(i + FCount, FM - 1)) : i;
      return;
    }
    // Lo: the last point at distance N or more behind i (else 0); Hi likewise ahead.
    FLo = std::min(FLo, i);
    while (FLo < i && FX[i] - FX[FLo + 1] >= FN) ++FLo;
    FHi = std::max(FHi, i);
    if (FBoth) {
      while (FHi < FM - 1 && FX[FHi] - FX[i] < FN) ++FHi;
    } else {
      FHi = i;
    }
  }
  int Lo() const { return FLo; }
  int Hi() const { return FHi; }

private:
  const double* FX;
  int FM;
  double FN, FCount = 0;
  bool FBoth, FByCount;
  int FLo = 0, FHi = 0;
};

// One window's average; `weight` gives the distance factor of j, `w` the point's own weight.
template <class Weight, class PointWeight>
void Average(const TWindow& win, const double* y, PointWeight w, int i, double* avg, Weight weight) {
  double sumY = 0, sumW = 0;
  for (int j = win.Lo(); j <= win.Hi(); ++j) {
    const double f = weight(j);
    if (f > 0) sumY += w(j) * y[j] * f, sumW += w(j) * f;
  }
  if (sumW == 0) throw EInvalidOp(QyText(QyRes::InvalidFloatOperation)); // 0 / 0
  avg[i] = sumY / sumW;
}

template <class PointWeight>
void AverageAll(const TQyAveraging& how, const double* x, const double* y, PointWeight w, int m, double* avg) {
  const double n = std::fabs(how.N);
  const bool both = how.Direction == TQyAveragingDirection::UpAndDownwards;
  double logFactor = 1.0;
  if (how.Method == TQyAveragingMethod::ExponentiallyWeighted) {
    double f = std::min(std::fabs(how.ExponentialFactor), 1.0);
    if (f == 0) f = 1e-300;
    logFactor = std::log(f);
  }
  TWindow win(how, x, m);
  for (int i = 0; i < m; ++i) {
    win.Place(i);
    const double span = (x[win.Hi()] - x[win.Lo()]) * (both ? 2 : 1);
    const double xi = x[i];
    switch (how.Method) {
    case TQyAveragingMethod::Simple:
      Average(win, y, w, i, avg, [](int) { return 1.0; });
      break;
    case TQyAveragingMethod::LinearWeighted:
      Average(win, y, w, i, avg, [&](int j) { return span == 0 ? 1.0 : 1 - std::fabs(x[j] - xi) / span; });
      break;
    case TQyAveragingMethod::ExponentiallyWeighted: {
      const double rate = logFactor * (span != 0 ? n / span : 1.0);
      Average(win, y, w, i, avg, [&](int j) { return std::exp(rate * std::fabs(x[j] - xi)); });
      break;
    }
    }
  }
}
} // namespace

// Without weights every point counts 1: the loop then reads no third array.
void MovingAverage(const TQyAveraging& how, const double* x, const double* y, const double* w, int m,
                   double* avg) {
  if (w) AverageAll(how, x, y, [w](int j) { return w[j]; }, m, avg);
  else AverageAll(how, x, y, [](int) { return 1.0; }, m, avg);
}
