#pragma once
// Rounding as the system defines it: Round is half to even; Trunc, Ceil, Floor as named.
#include <cmath>
#include <cstdint>

// Half to even (banker's rounding), as the default floating-point rounding mode does it.
inline std::int64_t Round(double x) { return static_cast<std::int64_t>(std::nearbyint(x)); }
inline std::int64_t Trunc(double x) { return static_cast<std::int64_t>(std::trunc(x)); }
inline std::int64_t Ceil(double x) { return static_cast<std::int64_t>(std::ceil(x)); }
inline std::int64_t Floor(double x) { return static_cast<std::int64_t>(std::floor(x)); }
// Integer versions for pixel arithmetic.
inline int RoundI(double x) { return static_cast<int>(std::nearbyint(x)); }
inline int CeilI(double x) { return static_cast<int>(std::ceil(x)); }
inline int TruncI(double x) { return static_cast<int>(std::trunc(x)); }

// The largest finite double: the "nothing known" extent of statistics and ranges.
inline constexpr double QyMaxDouble = 1.7976931348623157e308;
inline constexpr float QyMaxSingle = 3.4028235e38f;
