#!/usr/bin/python3
"""Writes the expected binary streams of a few document records, field by field from the record
layouts as written down for each class (not from the library), into tests/persist/expected/.

Each object's values are listed next to its layout; the tests set the same values.
Run: /usr/bin/python3 tests/persist/gen_expected_streams.py
"""
import math
import os
import struct

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "expected")


class Stream:
    def __init__(self):
        self.b = bytearray()

    def byte(self, v):          # booleans, enumerations, sets, flags: 1 byte
        self.b += struct.pack("<B", int(v))

    def word(self, v):          # a 2-byte set
        self.b += struct.pack("<H", v)

    def int32(self, v):
        self.b += struct.pack("<i", v)

    def color(self, argb):      # TQyColor: 4 bytes, as in memory
        self.b += struct.pack("<I", argb)

    def single(self, v):
        self.b += struct.pack("<f", v)

    def double(self, v):
        self.b += struct.pack("<d", v)

    def string(self, text):     # 32-bit length, then UTF-8 bytes; 0 for the empty string
        raw = text.encode("utf-8")
        self.int32(len(raw))
        self.b += raw

    # ---- style objects
    def gradient(self, visible=0, style=0, first=0xFFD3D3D3, middle=0xFFB0B0B0, last=0xFF808080,
                 angle=0.0, center=0.5, cx=0.5, cy=0.5):
        self.byte(visible); self.byte(style)
        self.color(first); self.color(middle); self.color(last)
        for v in (angle, center, cx, cy):
            self.single(v)
        self.byte(0)

    def simple_line(self, color, width, dash):
        self.color(color); self.single(width); self.byte(dash)
        self.byte(1); self.gradient(); self.byte(0)

    def line(self, visible, color, width, dash):
        self.byte(visible); self.simple_line(color, width, dash)

    def area(self, visible, fore, back, style):
        self.byte(visible); self.color(fore); self.color(back); self.byte(style)
        self.byte(1); self.gradient(); self.byte(0)

    def font(self, name, size, style, effects, hint, fill):
        self.string(name)
        self.int32(round(size))  # Python rounds half to even, as the first block asks
        self.byte(style)
        self.byte(1); self.byte(effects); self.byte(hint); self.color(fill); self.gradient()
        self.byte(1); self.single(size)
        self.byte(0)

    def symbol(self, visible, size, width, border, fill, kind):
        self.byte(visible); self.single(size); self.single(width)
        self.color(border); self.color(fill); self.byte(kind)


def bars():
    s = Stream()
    # the series' own record
    s.string("TQyBars"); s.string("Bars1"); s.string("Größe")
    s.byte(0); s.byte(0)                   # Visible, and Visible again where OutliersVisible is read
    s.byte(0); s.byte(0); s.int32(3)       # IncludeInLegend, AutoUpdate, Layer
    s.line(1, 0xFF112233, 1.5, 2)          # DashStyleDot
    s.area(1, 0xFF445566, 0x80778899, 4)   # Cross
    for ref in ("", "", "", ""):           # XData, YData, XAxis, YAxis
        s.string(ref)
    s.byte(1); s.string(""); s.string("")  # MergeLegendItemWith, DrawBandTo
    s.byte(1); s.symbol(1, 7.0, 1.0, 0xFF000001, 0xFF000002, 7)  # Diamond
    s.byte(1); s.symbol(0, 5.0, 2.0, 0xFF000003, 0xFF000004, 8)  # Delta
    s.string("")                           # RangeFromFunction
    s.byte(0)
    # the bars' record
    s.byte(1); s.byte(1)                   # OverlayStyle Stack, BarsHorizontal
    s.double(12.5); s.double(0.25)         # Depth3D, ClassesDistance
    s.single(15.0); s.byte(1)              # LabelSize, LabelVertical
    s.color(0xFF0000FF); s.byte(5); s.byte(3)  # LabelColor, LabelPosition InTop, LabelFrom CaptionAndValue
    s.string("%.1f €")                     # LabelFormat
    s.string("Courier"); s.byte(0b101)     # font name, style Bold + Underline
    s.byte(0)                              # FromDatabase
    s.int32(2); s.string("A"); s.string("Ü")
    s.byte(1)
    s.font("Courier", 12.5, 0b101, 2, 4, 0xFF0000FF)  # Outline, AntiAlias; the labels' colour
    s.byte(2)                              # BarStyle Cylinder
    s.byte(0)
    return s.b


def horizontal_marker():
    s = Stream()
    # the movable's record
    s.string("DocForm.HMarker1"); s.string("DocForm")  # the marker and its parent
    s.byte(1); s.string("Zeile ä")         # Visible, Hint
    s.byte(1); s.byte(1)                   # ParentShowHint, ShowHint (a hint is there)
    s.byte(0); s.byte(0)                   # ClipToData, MouseDrag
    s.word(0x0004 | 0x0010)                # StartMovingKeys: ssCtrl + ssRight
    s.string("")                           # SnappedSeries
    s.color(0xFF102030)                    # ForeColor
    s.simple_line(0xFFFF0000, 3.0, 1)      # Line: DashStyleDash
    first = len(s.b)
    s.byte(1)
    s.font("Courier", 11.5, 0b10, 0, 4, 0xFF000000)  # Italic, AntiAlias
    s.string("Grenze ü")                   # the caption
    s.byte(1); s.byte(0)                   # CaptionVisible, CaptionVertical
    s.int32(-3); s.int32(4)                # CaptionDeltaX, CaptionDeltaY
    s.byte(1); s.int32(-1)                 # SnappedIdx
    s.byte(1)
    s.color(0xC0FFFFE0)                    # CaptionBackColor
    s.gradient()                           # CaptionBackGradient
    s.line(1, 0xFF0000FF, 2.0, 0)          # CaptionBackFrame
    s.byte(1); s.byte(0); s.byte(1)        # BackRaised, BackLowered, BackShadow
    s.single(20.0); s.single(10.0)         # BackSpaceToBorder, BackRounding
    s.byte(0)
    # the horizontal marker's own part, after the movable's record has closed
    own = len(s.b)
    s.string("DocForm.YAxis1"); s.double(2.5)
    s.byte(7)                              # CaptionPosition BottomCenter
    return s.b, first, own


def pie():
    s = Stream()
    s.string("DocForm.Pie1")
    s.string("DocForm.Vals"); s.string("")          # Values, ExplodePercent
    s.int32(2); s.string("Nord"); s.string("Süd")   # Captions
    s.int32(1); s.string("DocForm.Pie1.PieLegend1")  # RelatedLegends
    s.byte(1); s.byte(3); s.byte(0)        # Visible, Anchors (left, top), Align
    s.int32(5); s.int32(6); s.int32(300); s.int32(200)  # Top, Left, Width, Height
    s.byte(0); s.string("")                # BorderStyle, Hint
    s.byte(1); s.byte(0)                   # ParentShowHint, ShowHint (no hint)
    s.color(0xFFFFFFF0); s.gradient()      # BackColor, Gradient
    for v in (1.0, 2.0, 3.0, 4.0):         # BorderDistances: Top, Bottom, Left, Right
        s.single(v)
    s.string("Anteile ö")                  # Caption: Text
    s.byte(1); s.byte(0); s.color(0xFF800000)  # Visible, Alignment LeftJustify, Color
    s.single(2.5); s.single(3.5)           # DistanceBefore, DistanceAfter
    first = len(s.b)
    s.byte(1)                              # PieDonut
    s.byte(3); s.byte(1); s.byte(1); s.byte(1)  # ThreeDDonut, AutoUpdate, OutliersVisible, OrderAscending
    for v in (30.0, 270.0, 40.0, 20.0, 50.0):  # StartAngle, TotalAngle, Elevation, PieHeight, DonutHoleSize
        s.single(v)
    s.byte(0)                              # DropShadow
    s.line(1, 0xFF000000, 2.0, 0)          # SegmentBorder
    s.byte(1)                              # Labels
    s.byte(2); s.byte(3); s.string("%.1f")  # From Percent, Position Callouts, Format
    s.single(5.0); s.color(0xFF0000FF)     # Size, Color
    s.font("Courier", 9.0, 0b1, 0, 4, 0xFF800000)  # the fill is the caption's colour
    s.byte(1)                              # Callouts
    s.single(20.0); s.single(5.0); s.single(15.0)  # Rounding, DistanceToPie, SpaceToBorder
    s.byte(2); s.color(0xFFFFFFE0)         # ArrowVisibleMode AllVisible, BackColor
    s.byte(1); s.byte(0); s.byte(1)        # Raised, Lowered, Shadow
    # Arrow: a line with the arrow head in a further block
    s.byte(1); s.color(0xFF404040); s.single(1.0); s.byte(0)
    s.byte(1); s.gradient()
    s.byte(1); s.single(12.0); s.single(4.0); s.single(6.0)  # PointLength, InnerLength, PointHeight
    s.byte(0)
    s.gradient()                           # Gradient
    s.line(1, 0xFF808080, 1.0, 0)          # Frame
    s.byte(1)                              # Palette
    s.string("DocForm.Palette1"); s.int32(2)
    s.color(0xFFFF0000); s.color(0xFFFFFFFF); s.byte(53)  # solid (Total)
    s.color(0xFF00FF00); s.color(0xFF000000); s.byte(4)   # Cross
    s.byte(0)
    return s.b, first


def write(name, data):
    with open(os.path.join(OUT, name), "wb") as f:
        f.write(bytes(data))


if __name__ == "__main__":
    os.makedirs(OUT, exist_ok=True)
    write("bars.bin", bars())
    marker, first, own = horizontal_marker()
    write("horizontal_marker.bin", marker)
    # a writer that knew only the first block of the movable's record
    write("horizontal_marker_first_block.bin", marker[:first] + b"\0" + marker[own:])
    chart, first = pie()
    write("pie.bin", chart)
    write("pie_first_block.bin", chart[:first] + b"\0")
