#pragma once
// Framework cursor numbers as the markers publish them (TCursor), and their Qt shapes. Only the
// numbers the markers use are listed; anything else shows the arrow.
#include <Qt>

using TCursor = int;

inline constexpr TCursor crDefault = 0;
inline constexpr TCursor crArrow = -2;
inline constexpr TCursor crCross = -3;
inline constexpr TCursor crSizeNS = -7;
inline constexpr TCursor crSizeWE = -9;
inline constexpr TCursor crHSplit = -14;
inline constexpr TCursor crHandPoint = -21;
inline constexpr TCursor crSizeAll = -22;

inline Qt::CursorShape QyMarkerCursorShape(TCursor cursor) {
  switch (cursor) {
  case crCross: return Qt::CrossCursor;
  case crSizeNS: return Qt::SizeVerCursor;
  case crSizeWE: return Qt::SizeHorCursor;
  case crHSplit: return Qt::SplitHCursor;
  case crHandPoint: return Qt::PointingHandCursor;
  case crSizeAll: return Qt::SizeAllCursor;
  default: return Qt::ArrowCursor;
  }
}
