#pragma once
// Framework cursor numbers as the markers publish them (TCursor); QyCursorShape (QyInput.h) gives
// their Qt shapes.
#include "QyInput.h"

using TCursor = int;

inline constexpr TCursor crDefault = 0;
inline constexpr TCursor crArrow = -2;
inline constexpr TCursor crCross = -3;
inline constexpr TCursor crSizeNS = -7;
inline constexpr TCursor crSizeWE = -9;
inline constexpr TCursor crHSplit = -14;
inline constexpr TCursor crHandPoint = -21;
inline constexpr TCursor crSizeAll = -22;
