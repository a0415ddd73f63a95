#pragma once
// The framework's input vocabulary on Qt: mouse buttons and keyboard modifiers as a shift state,
// and the framework's cursor numbers as Qt cursor shapes (one table for the whole library).
#include "QyStringFunctions.h"
#include <Qt>

// The shift state of a mouse event: the held keyboard modifiers and mouse buttons, plus ssDouble
// for the press of a double click. A state compared "exactly" is compared as the whole set.
TShiftState QyShiftState(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers, bool doubleClick = false);

// The Qt shape of a framework cursor number (0 default, -1 none, -2 arrow, -3 cross, -21 hand
// point, -22 size all, ...). Numbers without a shape of their own give the arrow.
Qt::CursorShape QyCursorShape(int frameworkCursor);
