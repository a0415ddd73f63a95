#pragma once
// Rounding as the system defines it: Round is half to even; Trunc, Ceil, Floor as named.
// A value whose result does not fit (NaN, infinities, beyond 64 bits) takes one checked path:
// the 64-bit helpers raise EInvalidOp, as the floating-point trap would; the pixel helpers
// saturate, since a coordinate far outside any device only has to stay outside it.
#include <cmath>
#include <cstdint>

// Raises EInvalidOp ("Invalid floating point operation").
[[noreturn]] void QyRaiseInvalidRounding();

inline bool QyFitsInt64(double r) { return r >= -9223372036854775808.0 && r < 9223372036854775808.0; }
inline std::int64_t QyCheckedInt64(double r) {
  if (!QyFitsInt64(r)) QyRaiseInvalidRounding();
  return static_cast<std::int64_t>(r);
}

// Half to even (banker's rounding), as the default floating-point rounding mode does it.
inline std::int64_t Round(double x) { return QyCheckedInt64(std::nearbyint(x)); }
inline std::int64_t Trunc(double x) { return QyCheckedInt64(std::trunc(x)); }
inline std::int64_t Ceil(double x) { return QyCheckedInt64(std::ceil(x)); }
inline std::int64_t Floor(double x) { return QyCheckedInt64(std::floor(x)); }

// Pixel arithmetic: NaN gives 0, everything else is clamped to +/-2^30 (room to add two of them).
inline constexpr double QyPixelLimit = 1073741824.0;
inline int QySaturatedInt(double r) {
  if (!(r == r)) return 0;
  return static_cast<int>(r < -QyPixelLimit ? -QyPixelLimit : (r > QyPixelLimit ? QyPixelLimit : r));
}
inline int RoundI(double x) { return QySaturatedInt(std::nearbyint(x)); }
inline int CeilI(double x) { return QySaturatedInt(std::ceil(x)); }
inline int TruncI(double x) { return QySaturatedInt(std::trunc(x)); }

// The largest finite double: the "nothing known" extent of statistics and ranges.
inline constexpr double QyMaxDouble = 1.7976931348623157e308;
inline constexpr float QyMaxSingle = 3.4028235e38f;
