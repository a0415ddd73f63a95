#pragma once
// Small shared enumerations of the component layer.
#include <QObject>

namespace QyTypes {
Q_NAMESPACE
// Horizontal alignment of a caption: the values keep their document ordinals.
enum class TAlignment { LeftJustify, RightJustify, Center };
Q_ENUM_NS(TAlignment)
} // namespace QyTypes
using QyTypes::TAlignment;
