#pragma once
// String helpers: numbers as text independent of the locale, lists of numbers, and
// the key-binding encoding of shift states. All text work goes through QyTextFormat, so nothing
// here depends on the machine's locale. Positions are 1-based as in the runtime (-1: not found).
//
// "The locale's decimal separator" of Americanize and DeAmericanize is that of the format
// settings passed in, by default DefaultFormatSettings() (a point), so with the defaults both are
// identities; DoubleToStr and DoubleFromStr always use a point whatever the settings.
#include "QyTextFormat.h"

#include <QFlags>
#include <QObject>
#include <QString>
#include <QVector>

// ---- Shift state (the framework's TShiftState set, in its bit order)
namespace QyShift {
Q_NAMESPACE
enum TShiftStateFlag : unsigned {
  ssShift = 0x0001,
  ssAlt = 0x0002,
  ssCtrl = 0x0004,
  ssLeft = 0x0008,
  ssRight = 0x0010,
  ssMiddle = 0x0020,
  ssDouble = 0x0040,
  ssTouch = 0x0080,
  ssPen = 0x0100,
  ssCommand = 0x0200,
  ssHorizontal = 0x0400,
};
Q_DECLARE_FLAGS(TShiftState, TShiftStateFlag)
Q_FLAG_NS(TShiftState)
} // namespace QyShift
Q_DECLARE_OPERATORS_FOR_FLAGS(QyShift::TShiftState)
using QyShift::TShiftState;

// ---- Positions and characters
int LastPos(QChar c, const QString& s);   // 1-based position of the last c, or -1
int LastPointPos(const QString& s);       // LastPos('.', s)
bool CharIn(QChar c, const QString& s);
bool IsIntegerDigit(QChar c);             // '0'..'9', '+', '-'
bool IsAmericanNumberDigit(QChar c);      // IsIntegerDigit, '.', 'e', 'E'

// ---- Integers as text (the runtime's IntToStr, StrToInt: leading blanks, sign, '$' or "0x" hex)
QString IntToStr(long long value);
bool TryStrToInt(const QString& text, int& value);
int StrToInt(const QString& text); // EConvertError "'%s' is not a valid integer value"

// ---- Numbers as text
// General format with precision `width`, lowered while the text is longer than `width` (down to 1);
// width 0: FloatToStr.
QString RealToStrDigits(double x, int width);
// Spreadsheet column names: 1 A, 26 Z, 27 AA, 702 ZZ, 703 AAA; 0 or less: empty.
QString IndexToAlphabet(int i);
QString Americanize(const QString& s, const TFormatSettings& fs = DefaultFormatSettings());
QString DeAmericanize(const QString& s, const TFormatSettings& fs = DefaultFormatSettings());
QString DoubleToStr(double x, const TFormatSettings& fs = DefaultFormatSettings());      // always "."
double DoubleFromStr(const QString& s, const TFormatSettings& fs = DefaultFormatSettings()); // always "."

// ---- Lists of numbers, ";"-separated. At least one item: an empty text raises EConvertError;
// a trailing ";" ends the list.
QVector<double> StringToDoubleArray(const QString& s, const TFormatSettings& fs = DefaultFormatSettings());
QString DoubleArrayToString(const QVector<double>& a, const TFormatSettings& fs = DefaultFormatSettings());
QVector<int> StringToIntegerArray(const QString& s);
QString IntegerArrayToString(const QVector<int>& a);

// ---- Reading numbers out of free text. Both delete what they consumed from `s`.
// Deletes characters until a number can start: a digit, a sign, a point, or "NAN" (any case).
// An "e" or "E" never starts a number (one followed by a digit or sign is an exponent left over).
void EraseToNumber(QString& s);
// Deletes up to the first integer digit, reads the longest run of integer digits; if that run is
// no integer, the part before the bad position is read. Deletes what was read. EConvertError when
// nothing could be read.
int ExtractOneInt(QString& s);
// EraseToNumber, then the longest run of American number digits (or "NAN": a quiet NaN), with the
// same partial-read rule, then EraseToNumber again. EConvertError when nothing could be read.
double ExtractOneDouble(QString& s);

// ---- Shift states for saving key bindings: the 16 low bits of the set as a decimal integer.
QString ShiftStateToStr(TShiftState state);
TShiftState StrToShiftState(const QString& s); // EConvertError on a bad integer
int ShiftStateToInt(TShiftState state);
TShiftState IntToShiftState(int i);
