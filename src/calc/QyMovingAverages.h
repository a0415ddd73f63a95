#pragma once
// Weighted moving averages over X-sorted data: each point's average of the neighbours within a
// count or an X distance, behind it or on both sides, weighted equally, linearly or
// exponentially by distance.
#include <QObject>

namespace QyMovingAverage {
Q_NAMESPACE
enum class TQyAveragingMethod { Simple, LinearWeighted, ExponentiallyWeighted };
Q_ENUM_NS(TQyAveragingMethod)
enum class TQyAveragingDirection { OnlyDownwards, UpAndDownwards };
Q_ENUM_NS(TQyAveragingDirection)
enum class TQyAveragingRangeMethod { NasCount, NasXDistance };
Q_ENUM_NS(TQyAveragingRangeMethod)
} // namespace QyMovingAverage
using QyMovingAverage::TQyAveragingDirection;
using QyMovingAverage::TQyAveragingMethod;
using QyMovingAverage::TQyAveragingRangeMethod;

struct TQyAveraging {
  TQyAveragingMethod Method = TQyAveragingMethod::LinearWeighted;
  TQyAveragingDirection Direction = TQyAveragingDirection::OnlyDownwards;
  TQyAveragingRangeMethod RangeMethod = TQyAveragingRangeMethod::NasCount;
  double N = 10;                      // neighbours counted, or the X distance (sign ignored)
  double ExponentialFactor = 0.9;     // weight factor per Span / N of distance (exponential only)
};

// avg[i] := the weighted average of y about point i for the m points of x (ascending), y and w
// (nullptr: every weight 1).
// The window reaches N points, rounded half to even, or up to and including the first point at
// distance N or more; it is shorter at the ends, not padded. Span is the window's X width,
// doubled when it reaches both ways; linear weights fall as 1 - |dx| / Span, exponential ones by
// ExponentialFactor per Span / N. A window whose weights add up to 0 raises EInvalidOp.
void MovingAverage(const TQyAveraging& how, const double* x, const double* y, const double* w, int m,
                   double* avg);
