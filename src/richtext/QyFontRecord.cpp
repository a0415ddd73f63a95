// The document record of a font. The first block keeps the size as a rounded integer for readers
// that know no more; the last block holds the exact size.
#include "QyRecordSchema.h"
#include "QyRichLabel.h"

namespace {
using T = TQyFieldType;
}

QY_REGISTER_RECORD(TQyFont, {
    QyField("Name", T::String, "Name"),
    QyField("Size", T::Int32, "Size").Only(QyMedia::Stream),
    QyField("Size", T::Single, "Size").Only(QyMedia::Node | QyMedia::Ini),
    QyField("Style", T::Enum, "Style"),
    QyField("DrawEffects", T::Enum, "DrawEffects").InBlock(1),
    QyField("RenderingHint", T::Enum, "RenderingHint").InBlock(1),
    QyField("FillColor", T::Color, "FillColor").InBlock(1),
    QyField("Gradient", T::Object, "Gradient").InBlock(1).Only(QyMedia::Stream | QyMedia::Node),
    QyField("Size", T::Single, "Size").InBlock(2).Only(QyMedia::Stream),
});
