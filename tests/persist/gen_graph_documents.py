#!/usr/bin/python3
"""Writes the expected documents of a graph in the three media, field by field from the published
layouts of the graph's record and of its style objects (not from the library). The graph:
"Graph1" on "Form1", 420 x 300 at (0, 0), no children, caption "Übersicht µ" shown, maroon,
caption font "DejaVu Sans" 10.5 bold with fill colour $FF112233, data area colour $FFF0F0E0,
left border distance 7; everything else at its default.

Run: /usr/bin/python3 tests/persist/gen_graph_documents.py  (writes tests/persist/graph_documents/)
"""
import os
import struct

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "graph_documents")

# Colours and their names in documents (the web colours used here, and Transparent).
NAMES = {0x00FFFFFF: "Transparent", 0xFF008000: "Green", 0xFF808080: "Gray", 0xFF000000: "Black",
         0xFFD3D3D3: "LightGray", 0xFF800000: "Maroon"}


def colour_text(c):
    return NAMES.get(c, "$%08X" % c)


def float_text(x):
    # 15 significant digits, no exponent for these values, no trailing zeros
    t = "%.15g" % x
    return t


def bool_text(b):
    return "1" if b else "0"


# ---- stream primitives
def u8(v): return struct.pack("<B", v)
def i32(v): return struct.pack("<i", v)
def u32(v): return struct.pack("<I", v)
def f32(v): return struct.pack("<f", v)
def string(s):
    b = s.encode("utf-8")
    return i32(len(b)) + b


GRADIENT = dict(Visible=False, Style=0, FirstColor=0xFFD3D3D3, MiddleColor=0xFFB0B0B0,
                LastColor=0xFF808080, LinearAngle=0.0, LinearCenter=0.5, RadialCenterX=0.5,
                RadialCenterY=0.5)
GRADIENT_FIELDS = [("Visible", "b"), ("Style", "e"), ("FirstColor", "c"), ("MiddleColor", "c"),
                   ("LastColor", "c"), ("LinearAngle", "f"), ("LinearCenter", "f"),
                   ("RadialCenterX", "f"), ("RadialCenterY", "f")]


def line(colour, visible=False):
    return dict(Visible=visible, Color=colour, Width=1.0, DashStyle=0)


LINE_FIELDS = [("Visible", "b"), ("Color", "c"), ("Width", "f"), ("DashStyle", "e")]
FONT = dict(Name="DejaVu Sans", Size=10.5, Style=1, DrawEffects=0, RenderingHint=0, FillColor=0xFF112233)
FONT_FIELDS = [("Name", "s"), ("Size", "f"), ("Style", "e"), ("DrawEffects", "e"), ("RenderingHint", "e"),
               ("FillColor", "c")]


def raw(kind, v):
    return {"b": lambda: u8(1 if v else 0), "e": lambda: u8(v), "c": lambda: u32(v),
            "f": lambda: f32(v), "i": lambda: i32(v), "s": lambda: string(v)}[kind]()


def text(kind, v):
    return {"b": lambda: bool_text(v), "e": lambda: str(v), "c": lambda: colour_text(v),
            "f": lambda: float_text(v), "i": lambda: str(v), "s": lambda: v}[kind]()


def gradient_stream(g):
    return b"".join(raw(k, g[n]) for n, k in GRADIENT_FIELDS) + u8(0)


def line_stream(l):
    return (raw("b", l["Visible"]) + raw("c", l["Color"]) + raw("f", l["Width"]) + raw("e", l["DashStyle"])
            + u8(1) + gradient_stream(GRADIENT) + u8(0))


def font_stream(f):
    size_int = round(f["Size"])  # Python rounds half to even: 10.5 -> 10
    return (string(f["Name"]) + i32(size_int) + u8(f["Style"]) + u8(1) + u8(f["DrawEffects"])
            + u8(f["RenderingHint"]) + u32(f["FillColor"]) + gradient_stream(GRADIENT) + u8(1)
            + f32(f["Size"]) + u8(0))


# ---- the graph
CAPTION = "Übersicht µ"
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
GRIDS = [("MajorGridHorizontal", line(0xFF008000)), ("MajorGridVertical", line(0xFF008000)),
         ("MinorGridHorizontal", line(0xFF808080)), ("MinorGridVertical", line(0xFF808080))]
FRAME = line(0xFF000000)
LISTS = ["Vectors", "Axes", "RelatedSeries", "RelatedLegends", "Markers"]


def stream():
    zoom = dict((n, v) for n, _, v in ZOOM)
    out = string("Form1.Graph1") + u8(1) + i32(0)  # WithVectors, no vectors
    out += i32(0) * 4  # axes, series, legends, markers
    out += b"".join(raw(k, v) for _, k, v in PROPS)
    cap = dict((n, (k, v)) for n, k, v in CAPTION_PROPS)
    out += string(CAPTION) + raw(*cap["Alignment"]) + raw(*cap["Color"]) + raw(*cap["DistanceBefore"])
    out += raw(*cap["DistanceAfter"]) + font_stream(FONT)
    for n in ["Auto", "OptimizeSeries", "BackOnClickBeside", "ResetOnDoubleClickBeside",
              "ResetOnRightBottomLeftTopFrame", "HScrollbarVisible", "VScrollbarVisible"]:
        out += u8(1 if zoom[n] else 0)
    out += struct.pack("<H", zoom["StartZoom"]) + struct.pack("<H", zoom["StartPanning"])
    out += b"".join(line_stream(l) for _, l in GRIDS)
    out += u8(1) + gradient_stream(GRADIENT) + gradient_stream(GRADIENT)  # block 1
    out += u8(1) + u8(zoom["BufferType"])                                # block 2
    out += u8(1) + u8(1)                                                 # block 3: CaptionVisible
    out += u8(1) + line_stream(FRAME)                                    # block 4
    out += u8(1) + u8(0)                                                 # block 5
    return out + u8(0)


def xml_escape(s):
    return s.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;").replace('"', "&quot;")


def element(name, attrs, children=()):
    a = "".join(' %s="%s"' % (k, xml_escape(v)) for k, v in attrs)
    if not children:
        return "<%s%s/>" % (name, a)
    return "<%s%s>%s</%s>" % (name, a, "".join(children), name)


def gradient_attrs(g):
    return [(n, text(k, g[n])) for n, k in GRADIENT_FIELDS]


def line_xml(name, l):
    return element(name, [(n, text(k, l[n])) for n, k in LINE_FIELDS], [element("Gradient", gradient_attrs(GRADIENT))])


def xml():
    kids = [element(n, [("Count", "0")]) for n in LISTS]
    kids.append(element("Properties", [(n, text(k, v)) for n, k, v in PROPS]))
    font = element("Font", [(n, text(k, FONT[n])) for n, k in FONT_FIELDS], [element("Gradient", gradient_attrs(GRADIENT))])
    kids.append(element("Caption", [("Text", CAPTION)],
                        [element("Properties", [(n, text(k, v)) for n, k, v in CAPTION_PROPS], [font])]))
    kids.append(element("Zoom", [(n, text(k, v)) for n, k, v in ZOOM]))
    kids.append(element("Grid", [], [line_xml(n, l) for n, l in GRIDS]))
    kids.append(element("BackgroundGradient", gradient_attrs(GRADIENT)))
    kids.append(element("DataAreaGradient", gradient_attrs(GRADIENT)))
    kids.append(line_xml("DataAreaFrame", FRAME))
    return element("Graph", [("Name", "Graph1")], kids) + "\n"


def ini():
    keys = [("Name", "Graph1")] + [(n + ".Count", "0") for n in LISTS]
    keys += [(n, text(k, v)) for n, k, v in PROPS]
    keys.append(("Caption", CAPTION))
    keys += [("Caption." + n, text(k, v)) for n, k, v in CAPTION_PROPS]
    keys += [("Caption.Font." + n, text(k, FONT[n])) for n, k in FONT_FIELDS]
    keys += [("Zoom." + n, text(k, v)) for n, k, v in ZOOM]

    def line_keys(prefix, l):
        out = [(prefix + "." + n, text(k, l[n])) for n, k in LINE_FIELDS]
        return out + [(prefix + ".Gradient." + n, text(k, GRADIENT[n])) for n, k in GRADIENT_FIELDS]

    for n, l in GRIDS:
        keys += line_keys(n, l)
    for n in ["BackgroundGradient", "DataAreaGradient"]:
        keys += [(n + "." + f, text(k, GRADIENT[f])) for f, k in GRADIENT_FIELDS]
    keys += line_keys("DataAreaFrame", FRAME)
    return "[Graph]\n" + "".join("%s=%s\n" % kv for kv in keys)


if __name__ == "__main__":
    os.makedirs(OUT, exist_ok=True)
    with open(os.path.join(OUT, "graph.qyg"), "wb") as f:
        f.write(stream())
    with open(os.path.join(OUT, "graph.xml"), "w", encoding="utf-8", newline="\n") as f:
        f.write(xml())
    with open(os.path.join(OUT, "graph.ini"), "w", encoding="utf-8", newline="\n") as f:
        f.write(ini())
