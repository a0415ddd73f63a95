#pragma once
// Hatch patterns of filled areas: 53 patterns of 8x8 pixels, numbered as the area styles
// (Horizontal = 0 ... SolidDiamond = 52). Area style 53 (Total) is a solid fill, not a pattern.
#include <QImage>
#include <array>
#include <cstdint>

using TQyHatchBits = std::array<std::uint8_t, 8>; // one byte per row, bit 7 = leftmost pixel

inline constexpr int QyHatchCount = 53;

// The bit rows of pattern `index` (0..52); set bits take the fore colour.
TQyHatchBits QyHatchBits(int index);
// The pattern as an 8x8 ARGB image in `fore` on `back`, for a texture brush.
QImage QyHatchImage(int index, quint32 fore, quint32 back);
