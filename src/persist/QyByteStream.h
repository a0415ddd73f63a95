#pragma once
// Little-endian binary I/O on any QIODevice: the raw writer and reader of the binary settings
// documents, and the self-describing value stream (a type tag before every value) of the undo log.
// Short reads raise EReadError "Stream read error", failed writes EWriteError "Stream write error".
#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QtGlobal>
#include <algorithm>
#include <cstring>

class TQyByteWriter {
public:
  explicit TQyByteWriter(QIODevice* device) : FDevice(device) {}
  QIODevice* Device() const { return FDevice; }
  void WriteBytes(const char* data, qint64 size);
  void WriteBytes(const QByteArray& data) { WriteBytes(data.constData(), data.size()); }
  void WriteUInt8(quint8 v) { WriteRaw(v); }
  void WriteBool(bool v) { WriteUInt8(v ? 1 : 0); }
  void WriteInt32(qint32 v) { WriteRaw(v); }
  void WriteUInt32(quint32 v) { WriteRaw(v); }
  void WriteInt64(qint64 v) { WriteRaw(v); }
  void WriteSingle(float v) { WriteRaw(v); }
  void WriteDouble(double v) { WriteRaw(v); }

private:
  template <class T> void WriteRaw(T v);
  QIODevice* FDevice;
};

class TQyByteReader {
public:
  explicit TQyByteReader(QIODevice* device) : FDevice(device) {}
  QIODevice* Device() const { return FDevice; }
  QByteArray ReadBytes(qint64 size);
  void ReadBytes(char* data, qint64 size);
  quint8 ReadUInt8() { return ReadRaw<quint8>(); }
  bool ReadBool() { return ReadUInt8() != 0; }
  qint32 ReadInt32() { return ReadRaw<qint32>(); }
  quint32 ReadUInt32() { return ReadRaw<quint32>(); }
  qint64 ReadInt64() { return ReadRaw<qint64>(); }
  float ReadSingle() { return ReadRaw<float>(); }
  double ReadDouble() { return ReadRaw<double>(); }

private:
  template <class T> T ReadRaw();
  QIODevice* FDevice;
};

// Type tags of the value stream. Null also ends a list.
enum class TQyValueType : quint8 {
  Null = 0, List = 1, Int32 = 4, String = 6, False = 8, True = 9, Binary = 10, Int64 = 19,
  Double = 21
};

template <class T> void TQyByteWriter::WriteRaw(T v) {
  char buffer[sizeof(T)];
  std::memcpy(buffer, &v, sizeof(T));
  if constexpr (Q_BYTE_ORDER == Q_BIG_ENDIAN) std::reverse(buffer, buffer + sizeof(T));
  WriteBytes(buffer, sizeof(T));
}

template <class T> T TQyByteReader::ReadRaw() {
  char buffer[sizeof(T)];
  ReadBytes(buffer, sizeof(T));
  if constexpr (Q_BYTE_ORDER == Q_BIG_ENDIAN) std::reverse(buffer, buffer + sizeof(T));
  T v;
  std::memcpy(&v, buffer, sizeof(T));
  return v;
}

class TQyValueWriter {
public:
  explicit TQyValueWriter(QIODevice* device) : FBytes(device) {}
  TQyByteWriter& Bytes() { return FBytes; }
  void WriteInteger(qint64 v); // Int32 when it fits, else Int64
  void WriteBoolean(bool v) { WriteType(v ? TQyValueType::True : TQyValueType::False); }
  void WriteFloat(double v);
  void WriteString(const QString& v);
  void WriteBinary(const QByteArray& v);
  void WriteListBegin() { WriteType(TQyValueType::List); }
  void WriteListEnd() { WriteType(TQyValueType::Null); }

private:
  void WriteType(TQyValueType t) { FBytes.WriteUInt8(quint8(t)); }
  void WriteBinaryBody(const QByteArray& v);
  TQyByteWriter FBytes;
};

class TQyValueReader {
public:
  explicit TQyValueReader(QIODevice* device) : FBytes(device) {}
  TQyByteReader& Bytes() { return FBytes; }
  // The type of the next value, without consuming it.
  TQyValueType NextValue();
  qint64 ReadInteger();
  bool ReadBoolean();
  double ReadFloat(); // also takes an integer value
  QString ReadString();
  QByteArray ReadBinary();
  void ReadListBegin() { Expect(TQyValueType::List); }
  bool EndOfList() { return NextValue() == TQyValueType::Null; }
  void ReadListEnd() { Expect(TQyValueType::Null); }

private:
  TQyValueType ReadType() { return TQyValueType(FBytes.ReadUInt8()); }
  void Expect(TQyValueType t);
  TQyByteReader FBytes;
};
