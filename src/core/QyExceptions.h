#pragma once
// The exception family of the library. Every message comes from the message table (QyLocalize).
#include <QString>
#include <QByteArray>
#include <exception>

class EQyException : public std::exception {
public:
  explicit EQyException(const QString& message) : FMessage(message), FUtf8(message.toUtf8()) {}
  const QString& Message() const noexcept { return FMessage; }
  const char* what() const noexcept override { return FUtf8.constData(); }

private:
  QString FMessage;
  QByteArray FUtf8;
};

#define QY_DECLARE_EXCEPTION(Name, Base)                                                           \
  class Name : public Base {                                                                       \
  public:                                                                                          \
    using Base::Base;                                                                              \
  }

// The hierarchy follows the runtime library the system was designed against, so that code can
// catch at the level it means (all math failures, all stream failures, ...).
QY_DECLARE_EXCEPTION(EExternal, EQyException);
QY_DECLARE_EXCEPTION(EMathError, EExternal);
QY_DECLARE_EXCEPTION(EInvalidOp, EMathError);
QY_DECLARE_EXCEPTION(EZeroDivide, EMathError);
QY_DECLARE_EXCEPTION(EOverflow, EMathError);
QY_DECLARE_EXCEPTION(EUnderflow, EMathError);
QY_DECLARE_EXCEPTION(EIntError, EExternal);
QY_DECLARE_EXCEPTION(ERangeError, EIntError);
QY_DECLARE_EXCEPTION(EConvertError, EQyException);
QY_DECLARE_EXCEPTION(EMethodNotFound, EQyException);
QY_DECLARE_EXCEPTION(EStreamError, EQyException);
QY_DECLARE_EXCEPTION(EFilerError, EStreamError);
QY_DECLARE_EXCEPTION(EReadError, EFilerError);
QY_DECLARE_EXCEPTION(EWriteError, EFilerError);
QY_DECLARE_EXCEPTION(EInvalidOperation, EQyException);
QY_DECLARE_EXCEPTION(EListError, EQyException);

// Raises ERangeError with the table's "i=%d index out of range".
[[noreturn]] void QyRaiseIndexError(long long index);
