#include "QyExceptions.h"
#include "QyLocalize.h"

void QyRaiseIndexError(long long index) {
  throw ERangeError(QyFormatMessage(QyRes::IndexOutOfRange, {QVariant(index)}));
}
