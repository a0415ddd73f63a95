#!/usr/bin/python3
"""Writes the expected documents of a graph in the three media, field by field from the published
layouts of the graph's record, of its children's records and of their style objects (not from
the library).

The graph: "Graph1" on "Form1", 420 x 300 at (0, 0), caption "Übersicht µ" shown, maroon, caption
font "DejaVu Sans" 10.5 bold with fill colour $FF112233, data area colour $FFF0F0E0, left border
distance 7, written with its vectors. Its children:
  - "VectorX" and "VectorY" on the form, filled by adding values (so the capacity stays 128);
    index 3 of VectorY is an outlier;
  - "Axis1" on the graph: caption "Länge µm", axis colour SeaGreen, axis line 2.5 wide, range
    -2.5 .. 12.75; never laid out, so its place, tick parts and data range are the constructed ones;
  - "Series1" on the form, a line series with X and Y on "Axis1", caption "Messreihe Ω", line
    DodgerBlue, a visible point symbol: Diamond, border Navy, fill $80FFD700 (the out-of-range
    symbol is set to Diamond too, since the default look depends on the series made before).
Everything else stands at its default.

Run: /usr/bin/python3 tests/persist/gen_graph_documents.py  (writes tests/persist/graph_documents/)
"""
import os
import struct
import sys
from decimal import Decimal

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "graph_documents")
MAX_DOUBLE = sys.float_info.max

# Colours and their names in documents (the web colours used here, and Transparent).
NAMES = {0x00FFFFFF: "Transparent", 0xFF008000: "Green", 0xFF808080: "Gray", 0xFF000000: "Black",
         0xFFD3D3D3: "LightGray", 0xFF800000: "Maroon", 0xFF8B0000: "DarkRed", 0xFF00008B: "DarkBlue",
         0xFF2E8B57: "SeaGreen", 0xFF1E90FF: "DodgerBlue", 0xFF000080: "Navy", 0xFF696969: "DimGray",
         0xFFA9A9A9: "DarkGray"}


def colour_text(c):
    return NAMES.get(c, "$%08X" % c)


def float_text(x):
    """Fifteen significant digits, trailing zeros dropped; fixed notation while at most 15 digits
    stand before the point and the value is at least 0.00001, else d.ddE<exponent>."""
    if x == 0:
        return "0"
    mantissa, exponent = ("%.14e" % x).split("e")
    if int(exponent) < 15 and abs(x) >= 1e-5:
        return format(Decimal(mantissa + "e" + exponent), "f").rstrip("0").rstrip(".")
    return mantissa.rstrip("0").rstrip(".") + "E" + str(int(exponent))


def bool_text(b):
    return "1" if b else "0"


# ---- stream primitives
def u8(v): return struct.pack("<B", v)
def i32(v): return struct.pack("<i", v)
def u32(v): return struct.pack("<I", v)
def f32(v): return struct.pack("<f", v)
def f64(v): return struct.pack("<d", v)
def string(s):
    b = s.encode("utf-8")
    return i32(len(b)) + b


# Kinds: b boolean, e enumeration, i integer, c colour, f single, d double, s string.
def raw(kind, v):
    return {"b": lambda: u8(1 if v else 0), "e": lambda: u8(v), "c": lambda: u32(v), "f": lambda: f32(v),
            "d": lambda: f64(v), "i": lambda: i32(v), "s": lambda: string(v)}[kind]()


def text(kind, v):
    return {"b": lambda: bool_text(v), "e": lambda: str(v), "c": lambda: colour_text(v), "f": lambda: float_text(v),
            "d": lambda: float_text(v), "i": lambda: str(v), "s": lambda: v}[kind]()


def fields_stream(fields):
    return b"".join(raw(k, v) for _, k, v in fields)


def fields_attrs(fields):
    return [(n, text(k, v)) for n, k, v in fields]


def fields_keys(prefix, fields):
    return [(prefix + n, text(k, v)) for n, k, v in fields]


# ---- XML and INI text
def xml_escape(s):
    return s.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;").replace('"', "&quot;")


def element(name, attrs, children=(), content=None):
    a = "".join(' %s="%s"' % (k, xml_escape(v)) for k, v in attrs)
    if content is not None:
        return "<%s%s>%s</%s>" % (name, a, xml_escape(content), name)
    if not children:
        return "<%s%s/>" % (name, a)
    return "<%s%s>%s</%s>" % (name, a, "".join(children), name)


def items_xml(name, kind, values):
    return element(name, [("Count", str(len(values)))], [element("Item", [], content=text(kind, v)) for v in values])


def ini_text(s):
    return s.replace("\r", "@\\r").replace("\n", "@\\n")


# ---- style objects (layouts of the style objects, each with its defaults)
def gradient():
    return [("Visible", "b", False), ("Style", "e", 0), ("FirstColor", "c", 0xFFD3D3D3),
            ("MiddleColor", "c", 0xFFB0B0B0), ("LastColor", "c", 0xFF808080), ("LinearAngle", "f", 0.0),
            ("LinearCenter", "f", 0.5), ("RadialCenterX", "f", 0.5), ("RadialCenterY", "f", 0.5)]


def line(colour, visible=True):
    return [("Visible", "b", visible), ("Color", "c", colour), ("Width", "f", 1.0), ("DashStyle", "e", 0)]


def area():
    return [("Visible", "b", False), ("ForeColor", "c", 0xFFD3D3D3), ("BackColor", "c", 0xFFA9A9A9),
            ("AreaStyle", "e", 53)]


def font(name, size, fill):  # style: bold; no draw effects; rendering hint SystemDefault
    return [("Name", "s", name), ("Size", "f", size), ("Style", "e", 1), ("DrawEffects", "e", 0),
            ("RenderingHint", "e", 0), ("FillColor", "c", fill)]


def symbol(visible, border, fill, shape):
    return [("Visible", "b", visible), ("Size", "f", 11.0), ("BorderLineWidth", "f", 1.0), ("BorderColor", "c", border),
            ("FillColor", "c", fill), ("Symbol", "e", shape)]


def gradient_stream():
    return fields_stream(gradient()) + u8(0)


def line_stream(fields):  # Visible, Color, Width, DashStyle, flag 1, gradient, flag 0
    return fields_stream(fields) + u8(1) + gradient_stream() + u8(0)


area_stream = line_stream  # Visible, ForeColor, BackColor, AreaStyle, flag 1, gradient, flag 0


def font_stream(fields):
    f = dict((n, v) for n, _, v in fields)
    return (string(f["Name"]) + i32(round(f["Size"])) + u8(f["Style"])  # round half to even: 10.5 -> 10
            + u8(1) + u8(f["DrawEffects"]) + u8(f["RenderingHint"]) + u32(f["FillColor"]) + gradient_stream()
            + u8(1) + f32(f["Size"]) + u8(0))


def with_gradient_xml(name, fields):
    return element(name, fields_attrs(fields), [element("Gradient", fields_attrs(gradient()))])


def line_keys(prefix, fields):  # lines and areas: their keys, then the gradient under ".Gradient"
    return fields_keys(prefix + ".", fields) + fields_keys(prefix + ".Gradient.", gradient())


def font_keys(prefix, fields):
    return fields_keys(prefix + ".", fields)


# ---- data vectors: reference, Increment, Capacity, FromDatabase, data source, field, values,
# outliers behind a flag, closing byte
VECTORS = [("VectorX", [-2.5, 0.0, 0.1, 3.0, 4.75], []),
           ("VectorY", [1.0, -0.5, 2.25, 1e20, 3.0], [3])]


def vector_stream(name, values, outliers):
    out = string("Form1." + name) + i32(128) + i32(128) + u8(0) + string("") + string("")
    out += i32(len(values)) + b"".join(f64(v) for v in values) + u8(1 if outliers else 0)
    if outliers:
        out += i32(len(outliers)) + b"".join(i32(i) for i in outliers)
    return out + u8(0)


def vector_xml(name, values, outliers, tag="TQyDoubleVector"):
    return element(tag, [("Name", name), ("Increment", "128"), ("Capacity", "128")],
                   [items_xml("Values", "d", values), items_xml("Outliers", "i", outliers)])


def vector_keys(name, values, outliers):  # lists as one text, items joined by ";"
    return [("Name", name), ("Increment", "128"), ("Capacity", "128"), ("FromDatabase", "0"), ("DataSource", ""),
            ("DataField", "None"), ("Values", ";".join(float_text(v) for v in values)),
            ("Outliers", ";".join(str(i) for i in outliers))]


# ---- the axis
AXIS_REF = "Form1.Graph1.Axis1"
AXIS_CAPTION = "Länge µm"
AXIS_PROPS = [("Visible", "b", True), ("Position", "e", 0), ("Top", "i", 0), ("Left", "i", 0), ("AutoSize", "b", True),
              ("Width", "i", 400), ("Height", "i", 20), ("Hint", "s", ""), ("ParentShowHint", "b", True),
              ("ShowHint", "b", False), ("AxisThicknes", "f", 2.5), ("MajorTickThicknes", "f", 1.0),
              ("TickThicknes", "f", 1.0), ("MajorTickLength", "f", 10.0), ("TickLength", "f", 6.0),
              ("AxisColor", "c", 0xFF2E8B57), ("MajorTickColor", "c", 0xFF000000), ("TickColor", "c", 0xFF000000)]
AXIS_CAPTION_PROPS = [("Visible", "b", True), ("HorizontalOnVerticalAxis", "b", False), ("Alignment", "e", 2),
                      ("Color", "c", 0xFF8B0000), ("DistanceBefore", "f", 0.0), ("DistanceAfter", "f", 0.0)]
CAPTION_FONT = font("Times New Roman", 14.0, 0xFF8B0000)  # fill: the caption colour
NUMBERS_FONT = font("Arial", 12.0, 0xFF00008B)
SCALING = [("Type", "e", 0), ("LogToNormalScalingLevel", "d", 0.0), ("TicksPointToData", "b", False),
           ("Twisted", "b", False), ("NumbersVisible", "b", True), ("NumbersColor", "c", 0xFF00008B),
           ("RubricsAngle", "f", 0.0), ("MovingSlitWidth", "d", 0.0), ("MovingSlitIncrement", "d", 0.0),
           ("ExtraDigits", "i", 0), ("MaxForExtraExponent", "d", 1000.0), ("MinForExtraExponent", "d", 0.001)]
PARTITIONS = [("LabelParts", [1.0, 0.5, 0.2]), ("MajorParts", [0.5, 0.5, 0.1]), ("MinorParts", [0.1, 0.1, 0.02])]
TICK_PARTS = [("Auto", "b", True), ("Label", "d", 0.0), ("Major", "d", 0.0), ("Minor", "d", 0.0),
              ("MajorGridMode", "e", 0)]
ENDS = [("Start", "d", -2.5), ("Stop", "d", 12.75), ("StartPadding", "d", 0.0), ("StopPadding", "d", 0.0),
        ("ValuesStart", "d", MAX_DOUBLE), ("ValuesStop", "d", -MAX_DOUBLE), ("Rounding", "e", 0),
        ("StartEnd", "e", 0), ("StopEnd", "e", 0)]
# From the fixed format settings: short date "M/d/yyyy", short time "h:nn AMPM", long time
# "h:nn:ss AMPM", decimal separator ".".
TIME_FORMATS = [("ShortMonth", "s", "MMM yy"), ("LongMonth", "s", "MMMM yyyy"), ("Day", "s", "M/d/yy"),
                ("DayAndHour", "s", "M/d/yy h:nn AMPM"), ("Minute", "s", "h:nn AMPM"),
                ("Second", "s", "h:nn:ss AMPM"), ("MilliSecond", "s", "s.fff")]
SLAVE = [("IsSlave", "b", False), ("MasterAxis", "s", ""), ("Offset", "d", 0.0), ("Slope", "d", 1.0)]
ARROW = [("Visible", "b", False), ("PointLength", "f", 7.0), ("InnerLength", "f", 5.0), ("PointHeight", "f", 3.0)]
DISTANCE = [("ValuesAxis", "f", 0.0), ("AxisLabels", "f", 0.0), ("AxisExtraExponent", "f", 10.0)]


def pick(fields, *names):
    by = dict((n, (n, k, v)) for n, k, v in fields)
    return [by[n] for n in names]


def axis_stream():
    out = string(AXIS_REF)
    out += fields_stream(pick(AXIS_PROPS, "Visible", "Hint", "ParentShowHint", "ShowHint", "Position", "Top", "Left",
                              "AutoSize", "Width", "Height"))
    out += fields_stream(AXIS_PROPS[10:])  # three widths, two lengths, three colours
    out += string(AXIS_CAPTION) + fields_stream(AXIS_CAPTION_PROPS) + font_stream(CAPTION_FONT)
    out += fields_stream(SCALING)
    out += fields_stream(TICK_PARTS[:4]) + font_stream(NUMBERS_FONT)
    out += fields_stream(pick(ENDS, "Start", "Stop", "Rounding", "StartEnd", "StopEnd"))
    out += u8(0) + string("") + string("") + i32(0)  # rubrics: not from a database, no source, no field, none
    out += fields_stream(TIME_FORMATS) + fields_stream(SLAVE) + fields_stream(ARROW) + fields_stream(DISTANCE)
    out += u8(0)                                                                   # no zoom stages
    out += u8(1) + f32(1.0) + b"".join(f64(v) for _, t in PARTITIONS for v in t)  # block 1
    out += u8(1) + u8(0)                                                           # block 2: MajorGridMode
    out += u8(1) + fields_stream(pick(ENDS, "ValuesStart", "ValuesStop"))          # block 3
    out += u8(1) + fields_stream(pick(ENDS, "StartPadding", "StopPadding"))        # block 4
    return out + u8(0)


def axis_xml():
    partitions = [("%s.%d" % (n, i), "d", v) for n, t in PARTITIONS for i, v in enumerate(t)]
    empty_stage = ("", [], [])
    return element("TQyAxis", [("Name", "Axis1")], [
        element("Properties", fields_attrs(AXIS_PROPS)),
        element("Caption", [("Text", AXIS_CAPTION)], [element("Properties", fields_attrs(AXIS_CAPTION_PROPS)),
                                                       with_gradient_xml("Font", CAPTION_FONT)]),
        element("Scaling", fields_attrs(SCALING)),
        element("TickParts", fields_attrs([("LabelDistanceFactor", "f", 1.0)] + partitions + TICK_PARTS),
                [with_gradient_xml("Font", NUMBERS_FONT)]),
        element("Ends", fields_attrs(ENDS)),
        element("Rubrics", [], [items_xml("Captions", "s", []),
                                element("Database", [("DataSource", ""), ("RubricsField", "")])]),
        element("DateTimeFormat", fields_attrs(TIME_FORMATS)),
        element("SlaveAxis", fields_attrs(SLAVE)),
        element("Arrow", fields_attrs(ARROW)),
        element("Distance", fields_attrs(DISTANCE)),
        element("Zoom", [("Idx", "0")], [vector_xml(*empty_stage, tag="Start"), vector_xml(*empty_stage, tag="Stop")]),
    ])


def axis_keys():
    return ([("Name", "Axis1")] + fields_keys("", AXIS_PROPS) + fields_keys("Caption.", AXIS_CAPTION_PROPS)
            + font_keys("Caption.Font", CAPTION_FONT)
            + [("Numbers.Visible", "1"), ("Numbers.Color", "DarkBlue"), ("MovingSlit.Width", "0"),
               ("MovingSlit.Increment", "0")]
            + fields_keys("TickParts.", TICK_PARTS) + font_keys("Font", NUMBERS_FONT) + fields_keys("Ends.", ENDS)
            + [("Rubrics.FromDatabase", "0"), ("Rubrics.DataSource", ""), ("Rubrics.RubricsField", ""),
               ("Rubrics.Count", "0")]
            + fields_keys("DateTimeFormat.", TIME_FORMATS) + [("Slave.Offset", "0"), ("Slave.Slope", "1")]
            + fields_keys("Arrow.", ARROW) + fields_keys("Distance.", DISTANCE) + [("Zoom.Idx", "0")])


# ---- the line series
SERIES_CAPTION = "Messreihe Ω"
SERIES_PROPS = [("Visible", "b", True), ("OutliersVisible", "b", False), ("AutoUpdate", "b", True),
                ("IncludeInLegend", "b", True), ("Layer", "i", 0)]
SERIES_LINE = line(0xFF1E90FF)
LINKS = [("XData", "s", "Form1.VectorX"), ("YData", "s", "Form1.VectorY"), ("XAxis", "s", AXIS_REF),
         ("YAxis", "s", AXIS_REF), ("MergeLegendItemWith", "s", ""), ("DrawBandTo", "s", "")]
POINT_SYMBOL = symbol(True, 0xFF000080, 0x80FFD700, 7)             # Diamond
OUT_OF_RANGE_SYMBOL = symbol(False, 0xFF696969, 0xFFD3D3D3, 7)


def series_stream():
    p = dict((n, v) for n, _, v in SERIES_PROPS)
    out = string("TQyLineSeries") + string("Form1.Series1") + string(SERIES_CAPTION)
    out += u8(1) + u8(1)  # Visible, and Visible again where a reader takes OutliersVisible
    out += u8(p["IncludeInLegend"]) + u8(p["AutoUpdate"]) + i32(p["Layer"])
    out += line_stream(SERIES_LINE) + area_stream(area()) + fields_stream(LINKS[:4])
    out += u8(1) + fields_stream(LINKS[4:])
    out += u8(1) + fields_stream(POINT_SYMBOL)
    out += u8(1) + fields_stream(OUT_OF_RANGE_SYMBOL) + string("")  # RangeFromFunction
    return out + u8(0)


def series_xml():
    return element("TQyLineSeries", [("Name", "Series1"), ("RangeFromFunction", "")], [
        element("Caption", [("Text", SERIES_CAPTION)]),
        element("Properties", fields_attrs(SERIES_PROPS)),
        with_gradient_xml("Line", SERIES_LINE),
        with_gradient_xml("Area", area()),
        element("Links", fields_attrs(LINKS)),
        element("PointSymbol", fields_attrs(POINT_SYMBOL)),
        element("OutOfRangeSymbol", fields_attrs(OUT_OF_RANGE_SYMBOL)),
    ])


def series_keys():
    return ([("Type", "TQyLineSeries"), ("Name", "Series1"), ("Caption", ini_text(SERIES_CAPTION))]
            + fields_keys("", SERIES_PROPS) + line_keys("Line", SERIES_LINE) + line_keys("Area", area())
            + fields_keys("", LINKS) + fields_keys("PointSymbol.", POINT_SYMBOL) + [("RangeFromFunction", "")]
            + fields_keys("OutOfRangeSymbol.", OUT_OF_RANGE_SYMBOL))


# ---- the graph
CAPTION = "Übersicht µ"
FONT = font("DejaVu Sans", 10.5, 0xFF112233)
PROPS = [("Visible", "b", True), ("Anchors", "e", 3), ("Align", "e", 0), ("Top", "i", 0), ("Left", "i", 0),
         ("Width", "i", 420), ("Height", "i", 300), ("BorderStyle", "e", 0), ("Hint", "s", ""),
         ("ParentShowHint", "b", True), ("ShowHint", "b", False), ("BackColor", "c", 0x00FFFFFF),
         ("DataAreaColor", "c", 0xFFF0F0E0), ("ZeroOrigin", "b", False), ("PrimaryXAxis", "s", ""),
         ("PrimaryYAxis", "s", ""), ("DistanceBorderAxisTop", "f", 0.0), ("DistanceBorderAxisBottom", "f", 0.0),
         ("DistanceBorderAxisLeft", "f", 7.0), ("DistanceBorderAxisRight", "f", 0.0)]
CAPTION_PROPS = [("Visible", "b", True), ("Alignment", "e", 2), ("Color", "c", 0xFF800000),
                 ("DistanceBefore", "f", 0.0), ("DistanceAfter", "f", 0.0)]
ZOOM = [("Auto", "b", True), ("BufferType", "e", 1), ("OptimizeSeries", "b", False),
        ("BackOnClickBeside", "b", True), ("BackOnRightBottomLeftTopFrame", "b", False),
        ("ResetOnDoubleClickBeside", "b", True), ("ResetOnRightBottomLeftTopFrame", "b", False),
        ("HScrollbarVisible", "b", True), ("VScrollbarVisible", "b", True), ("StartZoom", "i", 0x08),
        ("StartPanning", "i", 0x09)]
GRIDS = [("MajorGridHorizontal", line(0xFF008000, False)), ("MajorGridVertical", line(0xFF008000, False)),
         ("MinorGridHorizontal", line(0xFF808080, False)), ("MinorGridVertical", line(0xFF808080, False))]
FRAME = line(0xFF000000, False)
# The lists and their children: (list, [(class, stream, XML, INI keys)]).
CHILDREN = [("Vectors", [("TQyDoubleVector", vector_stream(*v), vector_xml(*v), vector_keys(*v)) for v in VECTORS]),
            ("Axes", [("TQyAxis", axis_stream(), axis_xml(), axis_keys())]),
            ("RelatedSeries", [("TQyLineSeries", series_stream(), series_xml(), series_keys())]),
            ("RelatedLegends", []), ("Markers", [])]


def stream():
    zoom = dict((n, v) for n, _, v in ZOOM)
    out = string("Form1.Graph1") + u8(1)  # WithVectors
    for _, children in CHILDREN:
        out += i32(len(children)) + b"".join(c[1] for c in children)
    out += fields_stream(PROPS)
    cap = dict((n, (n, k, v)) for n, k, v in CAPTION_PROPS)
    out += string(CAPTION) + fields_stream([cap["Alignment"], cap["Color"], cap["DistanceBefore"], cap["DistanceAfter"]])
    out += font_stream(FONT)
    for n in ["Auto", "OptimizeSeries", "BackOnClickBeside", "ResetOnDoubleClickBeside",
              "ResetOnRightBottomLeftTopFrame", "HScrollbarVisible", "VScrollbarVisible"]:
        out += u8(1 if zoom[n] else 0)
    out += struct.pack("<H", zoom["StartZoom"]) + struct.pack("<H", zoom["StartPanning"])
    out += b"".join(line_stream(l) for _, l in GRIDS)
    out += u8(1) + gradient_stream() + gradient_stream()  # block 1
    out += u8(1) + u8(zoom["BufferType"])                 # block 2
    out += u8(1) + u8(1)                                  # block 3: CaptionVisible
    out += u8(1) + line_stream(FRAME)                     # block 4
    out += u8(1) + u8(0)                                  # block 5
    return out + u8(0)


def xml():
    kids = [element(n, [("Count", str(len(c)))], [child[2] for child in c]) for n, c in CHILDREN]
    kids.append(element("Properties", fields_attrs(PROPS)))
    kids.append(element("Caption", [("Text", CAPTION)],
                        [element("Properties", fields_attrs(CAPTION_PROPS), [with_gradient_xml("Font", FONT)])]))
    kids.append(element("Zoom", fields_attrs(ZOOM)))
    kids.append(element("Grid", [], [with_gradient_xml(n, l) for n, l in GRIDS]))
    kids.append(element("BackgroundGradient", fields_attrs(gradient())))
    kids.append(element("DataAreaGradient", fields_attrs(gradient())))
    kids.append(with_gradient_xml("DataAreaFrame", FRAME))
    return element("Graph", [("Name", "Graph1")], kids) + "\n"


def ini():
    keys = [("Name", "Graph1")] + [(n + ".Count", str(len(c))) for n, c in CHILDREN]
    keys += fields_keys("", PROPS) + [("Caption", CAPTION)] + fields_keys("Caption.", CAPTION_PROPS)
    keys += font_keys("Caption.Font", FONT) + fields_keys("Zoom.", ZOOM)
    for n, l in GRIDS:
        keys += line_keys(n, l)
    keys += fields_keys("BackgroundGradient.", gradient()) + fields_keys("DataAreaGradient.", gradient())
    keys += line_keys("DataAreaFrame", FRAME)
    sections = [("Graph", keys)] + [("Graph.%s(%d)" % (n, i), child[3]) for n, c in CHILDREN
                                    for i, child in enumerate(c)]
    return "\n".join("[%s]\n" % s + "".join("%s=%s\n" % kv for kv in k) for s, k in sections)


if __name__ == "__main__":
    os.makedirs(OUT, exist_ok=True)
    with open(os.path.join(OUT, "graph.qyg"), "wb") as f:
        f.write(stream())
    with open(os.path.join(OUT, "graph.xml"), "w", encoding="utf-8", newline="\n") as f:
        f.write(xml())
    with open(os.path.join(OUT, "graph.ini"), "w", encoding="utf-8", newline="\n") as f:
        f.write(ini())
