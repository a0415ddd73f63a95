#pragma once
// Small shared enumerations of the component layer.
#include <QObject>

namespace QyTypes {
Q_NAMESPACE
// Horizontal alignment of a caption: the values keep their document ordinals.
enum class TAlignment { LeftJustify, RightJustify, Center };
Q_ENUM_NS(TAlignment)
// What a label of a bar or a pie segment says: the values keep their document ordinals.
enum class TQyLabelStyle { Value, CaptionsList, Percent, CaptionAndValue, CaptionAndPercent };
Q_ENUM_NS(TQyLabelStyle)
} // namespace QyTypes
using QyTypes::TAlignment;
using QyTypes::TQyLabelStyle;
