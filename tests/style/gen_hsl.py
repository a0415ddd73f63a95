#!/usr/bin/python3
"""Reference values for the lightness/saturation/hue functions, from Python's colorsys
(an independent implementation of the same colour model). Prints C++ table rows for
test_colors.cpp: {argb, hue_degrees, saturation, lightness, brighten(0.8), brighten(1.3)}."""
import colorsys

SAMPLES = [0xFF8B0000, 0xFF6495ED, 0xFFFFD700, 0xFF2E8B57, 0xFF9932CC, 0xFF808080,
           0xFF123456, 0xFFF0E68C, 0x80FF6347, 0xFF00CED1]


def channels(c):
    return ((c >> 16) & 255) / 255.0, ((c >> 8) & 255) / 255.0, (c & 255) / 255.0


def to_byte(v):
    return round(min(max(v, 0.0), 1.0) * 255)  # round() is half to even, as the library's Round


def brighten(c, f):
    h, l, s = colorsys.rgb_to_hls(*channels(c))
    r, g, b = colorsys.hls_to_rgb(h, l * f, s)
    return (c & 0xFF000000) | (to_byte(r) << 16) | (to_byte(g) << 8) | to_byte(b)


for c in SAMPLES:
    h, l, s = colorsys.rgb_to_hls(*channels(c))
    print("    {0x%08X, %.4f, %.4f, %.4f, 0x%08X, 0x%08X}," % (c, h * 360, s, l, brighten(c, 0.8), brighten(c, 1.3)))
