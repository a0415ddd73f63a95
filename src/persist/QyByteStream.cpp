#include "QyByteStream.h"
#include "QyExceptions.h"
#include "QyLocalize.h"
#include <algorithm>
#include <limits>
#include <cstring>

// ---- raw bytes

void TQyByteWriter::WriteBytes(const char* data, qint64 size) {
  if (size <= 0) return;
  if (!FDevice || FDevice->write(data, size) != size) throw EWriteError(QyText(QyRes::StreamWriteError));
}

void TQyByteReader::ReadBytes(char* data, qint64 size) {
  if (size <= 0) return;
  if (!FDevice || FDevice->read(data, size) != size) throw EReadError(QyText(QyRes::StreamReadError));
}

QByteArray TQyByteReader::ReadBytes(qint64 size) {
  if (size <= 0) return {};
  // Never trust a length read from a stream with an allocation larger than what is left.
  if (!FDevice || (!FDevice->isSequential() && size > FDevice->size() - FDevice->pos()))
    throw EReadError(QyText(QyRes::StreamReadError));
  QByteArray result(size, Qt::Uninitialized);
  ReadBytes(result.data(), size);
  return result;
}

// ---- tagged values

void TQyValueWriter::WriteInteger(qint64 v) {
  if (v >= std::numeric_limits<qint32>::min() && v <= std::numeric_limits<qint32>::max()) {
    WriteType(TQyValueType::Int32);
    FBytes.WriteInt32(qint32(v));
  } else {
    WriteType(TQyValueType::Int64);
    FBytes.WriteInt64(v);
  }
}

void TQyValueWriter::WriteFloat(double v) {
  WriteType(TQyValueType::Double);
  FBytes.WriteDouble(v);
}

void TQyValueWriter::WriteString(const QString& v) {
  WriteType(TQyValueType::String);
  WriteBinaryBody(v.toUtf8());
}

void TQyValueWriter::WriteBinary(const QByteArray& v) {
  WriteType(TQyValueType::Binary);
  WriteBinaryBody(v);
}

void TQyValueWriter::WriteBinaryBody(const QByteArray& v) {
  FBytes.WriteInt64(v.size());
  FBytes.WriteBytes(v);
}

TQyValueType TQyValueReader::NextValue() {
  char c;
  QIODevice* d = FBytes.Device();
  if (!d || d->peek(&c, 1) != 1) throw EReadError(QyText(QyRes::StreamReadError));
  return TQyValueType(quint8(c));
}

void TQyValueReader::Expect(TQyValueType t) {
  if (ReadType() != t) throw EReadError(QyText(QyRes::StreamReadError));
}

qint64 TQyValueReader::ReadInteger() {
  switch (ReadType()) {
  case TQyValueType::Int32: return FBytes.ReadInt32();
  case TQyValueType::Int64: return FBytes.ReadInt64();
  default: throw EReadError(QyText(QyRes::StreamReadError));
  }
}

bool TQyValueReader::ReadBoolean() {
  switch (ReadType()) {
  case TQyValueType::True: return true;
  case TQyValueType::False: return false;
  default: throw EReadError(QyText(QyRes::StreamReadError));
  }
}

double TQyValueReader::ReadFloat() {
  if (NextValue() == TQyValueType::Double) {
    ReadType();
    return FBytes.ReadDouble();
  }
  return double(ReadInteger());
}

QString TQyValueReader::ReadString() {
  Expect(TQyValueType::String);
  return QString::fromUtf8(FBytes.ReadBytes(FBytes.ReadInt64()));
}

QByteArray TQyValueReader::ReadBinary() {
  Expect(TQyValueType::Binary);
  return FBytes.ReadBytes(FBytes.ReadInt64());
}
