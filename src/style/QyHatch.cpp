#include "QyHatch.h"
#include "QyExceptions.h"
#include "QyRounding.h"

namespace {
std::uint8_t RotateRight(std::uint8_t v, int n) {
  n &= 7;
  return std::uint8_t((v >> n) | (v << ((8 - n) & 7)));
}

// Rows of a pattern made by rotating one row one pixel per line: diagonal stripes.
// Positive steps run down to the right, negative up to the right.
TQyHatchBits Diagonal(std::uint8_t row, int step) {
  TQyHatchBits bits{};
  for (int y = 0; y < 8; ++y) bits[size_t(y)] = RotateRight(row, step * y);
  return bits;
}

TQyHatchBits Repeat(std::uint8_t a, std::uint8_t b, int period) {
  TQyHatchBits bits{};
  for (int y = 0; y < 8; ++y) bits[size_t(y)] = (y % period == 0) ? a : b;
  return bits;
}

// The percentage patterns are ordered dithers: a pixel is set when its rank in the 8x8 Bayer
// matrix is below the share of set pixels, so that each density is as even as 64 pixels allow.
TQyHatchBits Percent(int percent) {
  static constexpr int bayer[8][8] = {
      {0, 32, 8, 40, 2, 34, 10, 42},   {48, 16, 56, 24, 50, 18, 58, 26},
      {12, 44, 4, 36, 14, 46, 6, 38},  {60, 28, 52, 20, 62, 30, 54, 22},
      {3, 35, 11, 43, 1, 33, 9, 41},   {51, 19, 59, 27, 49, 17, 57, 25},
      {15, 47, 7, 39, 13, 45, 5, 37},  {63, 31, 55, 23, 61, 29, 53, 21}};
  const int set = int(Round(percent * 64 / 100.0));
  TQyHatchBits bits{};
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x)
      if (bayer[y][x] < set) bits[size_t(y)] |= std::uint8_t(0x80 >> x);
  return bits;
}
} // namespace

TQyHatchBits QyHatchBits(int index) {
  static constexpr int percents[12] = {5, 10, 20, 25, 30, 40, 50, 60, 70, 75, 80, 90};
  if (index >= 6 && index <= 17) return Percent(percents[index - 6]);
  switch (index) {
  case 0: return Repeat(0xFF, 0x00, 8);             // Horizontal
  case 1: return Repeat(0x80, 0x80, 1);             // Vertical
  case 2: return Diagonal(0x80, 1);                 // ForwardDiagonal
  case 3: return Diagonal(0x01, -1);                // BackwardDiagonal
  case 4: return Repeat(0xFF, 0x80, 8);             // Cross
  case 5: {                                         // DiagonalCross
    TQyHatchBits a = Diagonal(0x80, 1), b = Diagonal(0x01, -1);
    for (size_t y = 0; y < 8; ++y) a[y] |= b[y];
    return a;
  }
  case 18: return Diagonal(0x88, 1);                // LightDownwardDiagonal
  case 19: return Diagonal(0x11, -1);               // LightUpwardDiagonal
  case 20: return Diagonal(0xCC, 1);                // DarkDownwardDiagonal
  case 21: return Diagonal(0x33, -1);               // DarkUpwardDiagonal
  case 22: return Diagonal(0xE0, 1);                // WideDownwardDiagonal
  case 23: return Diagonal(0x07, -1);               // WideUpwardDiagonal
  case 24: return Repeat(0x88, 0x88, 1);            // LightVertical
  case 25: return Repeat(0xFF, 0x00, 4);            // LightHorizontal
  case 26: return Repeat(0xAA, 0xAA, 1);            // NarrowVertical
  case 27: return Repeat(0xFF, 0x00, 2);            // NarrowHorizontal
  case 28: return Repeat(0xCC, 0xCC, 1);            // DarkVertical
  case 29: return {0xFF, 0xFF, 0, 0, 0xFF, 0xFF, 0, 0}; // DarkHorizontal
  case 30: return {0x88, 0x44, 0x22, 0x11, 0, 0, 0, 0}; // DashedDownwardDiagonal
  case 31: return {0x11, 0x22, 0x44, 0x88, 0, 0, 0, 0}; // DashedUpwardDiagonal
  case 32: return {0xF0, 0, 0, 0, 0x0F, 0, 0, 0};       // DashedHorizontal
  case 33: return {0x80, 0x80, 0x80, 0x80, 0x08, 0x08, 0x08, 0x08}; // DashedVertical
  case 34: return {0x80, 0x08, 0x40, 0x02, 0x10, 0x01, 0x20, 0x04}; // SmallConfetti
  case 35: return {0xB1, 0x30, 0x03, 0x1B, 0xD8, 0xC0, 0x0C, 0x8D}; // LargeConfetti
  case 36: return {0x81, 0x42, 0x24, 0x18, 0x81, 0x42, 0x24, 0x18}; // ZigZag
  case 37: return {0x00, 0x18, 0xA4, 0x03, 0x00, 0x18, 0xA4, 0x03}; // Wave
  case 38: return {0x01, 0x02, 0x04, 0x08, 0x18, 0x24, 0x42, 0x81}; // DiagonalBrick
  case 39: return {0xFF, 0x80, 0x80, 0x80, 0xFF, 0x08, 0x08, 0x08}; // HorizontalBrick
  case 40: return {0x88, 0x54, 0x22, 0x45, 0x88, 0x14, 0x22, 0x51}; // Weave
  case 41: return {0xAA, 0x55, 0xAA, 0x55, 0xF0, 0xF0, 0xF0, 0xF0}; // Plaid
  case 42: return {0x00, 0x10, 0x08, 0x10, 0x00, 0x01, 0x80, 0x01}; // Divot
  case 43: return {0xAA, 0x00, 0x80, 0x00, 0x80, 0x00, 0x80, 0x00}; // DottedGrid
  case 44: return {0x80, 0x00, 0x22, 0x00, 0x08, 0x00, 0x22, 0x00}; // DottedDiamond
  case 45: return {0x03, 0x84, 0x48, 0x30, 0x0C, 0x02, 0x01, 0x01}; // Shingle
  case 46: return {0xFF, 0x66, 0xFF, 0x99, 0xFF, 0x66, 0xFF, 0x99}; // Trellis
  case 47: return {0xEE, 0x91, 0xF1, 0xF1, 0xEE, 0x19, 0x1F, 0x1F}; // Sphere
  case 48: return Repeat(0xFF, 0x88, 4);            // SmallGrid
  case 49: return {0xCC, 0xCC, 0x33, 0x33, 0xCC, 0xCC, 0x33, 0x33}; // SmallCheckerBoard
  case 50: return {0xF0, 0xF0, 0xF0, 0xF0, 0x0F, 0x0F, 0x0F, 0x0F}; // LargeCheckerBoard
  case 51: return {0x41, 0x22, 0x14, 0x08, 0x14, 0x22, 0x41, 0x80}; // OutlinedDiamond
  case 52: return {0x10, 0x38, 0x7C, 0xFE, 0x7C, 0x38, 0x10, 0x00}; // SolidDiamond
  default: QyRaiseIndexError(index);
  }
}

QImage QyHatchImage(int index, quint32 fore, quint32 back) {
  const TQyHatchBits bits = QyHatchBits(index);
  QImage image(8, 8, QImage::Format_ARGB32);
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 8; ++x)
      image.setPixel(x, y, (bits[size_t(y)] & (0x80 >> x)) ? fore : back);
  return image;
}
