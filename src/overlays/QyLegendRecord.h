#pragma once
// The document record that every kind of legend box shares; each kind adds what it lists.
#include "QyRecordSchema.h"

// An entry of the legend's element "Properties".
TQyRecordEntry QyLegendProperty(const QString& key, TQyFieldType type, const char* property);
// The whole record: `source` (the reference to what the legend lists) follows the position,
// `colors` the background colour, `items` (how the items are picked) the rows and columns.
TQyRecordTable QyLegendBoxRecord(const TQyRecordEntry& source, const TQyRecordTable& colors, const TQyRecordTable& items);
