#include "QyExceptions.h"
#include "QyRounding.h"
#include "QyLocalize.h"

void QyRaiseIndexError(long long index) {
  throw ERangeError(QyFormatMessage(QyRes::IndexOutOfRange, {QVariant(index)}));
}

void QyRaiseInvalidRounding() { throw EInvalidOp(QyText(QyRes::InvalidFloatOperation)); }
