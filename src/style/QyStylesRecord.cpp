// The document records of the style objects, in the order of their binary layouts.
#include "QyRecordSchema.h"
#include "QyStyles.h"

namespace {
using T = TQyFieldType;
}

QY_REGISTER_RECORD(TQyGradientSettings, {
    QyField("Visible", T::Bool, "Visible"),
    QyField("Style", T::Enum, "Style"),
    QyField("FirstColor", T::Color, "FirstColor"),
    QyField("MiddleColor", T::Color, "MiddleColor"),
    QyField("LastColor", T::Color, "LastColor"),
    QyField("LinearAngle", T::Single, "LinearAngle"),
    QyField("LinearCenter", T::Single, "LinearCenter"),
    // A missing centre reads as the middle, whatever the present value.
    QyField("RadialCenterX", T::Single, "RadialCenterX").Defaults(0.5f),
    QyField("RadialCenterY", T::Single, "RadialCenterY").Defaults(0.5f),
});

QY_REGISTER_RECORD(TQySimpleLineSettings, {
    QyField("Color", T::Color, "Color"),
    QyField("Width", T::Single, "Width"),
    QyField("DashStyle", T::Enum, "DashStyle"),
    QyField("Gradient", T::Object, "Gradient").InBlock(1),
});

// Visibility leads the record of a line, before the simple line's fields.
QY_REGISTER_RECORD_BEFORE_BASE(TQyLineSettings, {
    QyField("Visible", T::Bool, "Visible"),
});

QY_REGISTER_RECORD(TQyArrowSettings, {
    QyField("PointLength", T::Single, "PointLength").InBlock(2),
    QyField("InnerLength", T::Single, "InnerLength").InBlock(2),
    QyField("PointHeight", T::Single, "PointHeight").InBlock(2),
});

QY_REGISTER_RECORD(TQyAreaSettings, {
    QyField("Visible", T::Bool, "Visible"),
    QyField("ForeColor", T::Color, "ForeColor"),
    QyField("BackColor", T::Color, "BackColor"),
    QyField("AreaStyle", T::Enum, "AreaStyle"),
    QyField("Gradient", T::Object, "Gradient").InBlock(1),
});

QY_REGISTER_RECORD(TQyPointSymbolSettings, {
    QyField("Visible", T::Bool, "Visible"),
    QyField("Size", T::Single, "Size"),
    QyField("BorderLineWidth", T::Single, "BorderLineWidth"),
    QyField("BorderColor", T::Color, "BorderColor"),
    QyField("FillColor", T::Color, "FillColor"),
    QyField("Symbol", T::Enum, "PointSymbol"),
});

QY_REGISTER_RECORD(TQyAxisArrowPoint, {
    QyField("Visible", T::Bool, "Visible"),
    QyField("PointLength", T::Single, "PointLength"),
    QyField("InnerLength", T::Single, "InnerLength"),
    QyField("PointHeight", T::Single, "PointHeight"),
});
