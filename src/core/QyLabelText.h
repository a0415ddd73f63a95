#pragma once
// The text of a data label (bars, pie segments) by its label style: the value, the caption from a
// list, the percentage, or a caption followed by value or percentage.
#include "QyTypes.h"
#include <QString>

// The value in `format` (FormatFloat), or FloatToStr when the format is empty.
QString QyFormatLabelValue(const QString& format, double value);
// A percentage (`percent` is already in percent): "##0.##%" when `format` is empty, `format`
// when it holds a "%", else `format` with "%" appended; the sign is a literal of the format.
QString QyFormatLabelPercent(const QString& format, double percent);
// The label of `style` for a value, its percentage and its caption (a blank separates a caption
// that is not empty from the number).
QString QyLabelText(TQyLabelStyle style, const QString& format, double value, double percent,
                    const QString& caption);
