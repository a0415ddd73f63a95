// The logs of the undo history: recording, the position tables, the limit, and replay.
#include "QyUndoStack.h"
#include "QyClassRegistry.h"
#include "QyExceptions.h"
#include "QyIO.h"
#include "QyLocalize.h"
#include "QyStateful.h"
#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace {

// A record: caption, token, then what `body` writes.
template <class Body>
QByteArray BuildRecord(const QString& caption, TQyUndoToken token, Body&& body) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  TQyValueWriter w(&buffer);
  w.WriteString(caption);
  w.WriteInteger(int(token));
  body(w);
  return bytes;
}

void Truncate(QIODevice* d, qint64 size) {
  if (auto* b = qobject_cast<QBuffer*>(d)) {
    b->buffer().resize(size);
    b->seek(0);
  } else if (auto* f = qobject_cast<QFileDevice*>(d); f && !f->resize(size)) {
    throw EWriteError(QyText(QyRes::StreamWriteError));
  }
}

// Copies `size` bytes from `from` in `src` to the start of `dst` (which is emptied first).
void CopyBytes(QIODevice* src, qint64 from, qint64 size, QIODevice* dst) {
  Truncate(dst, 0);
  if (!src->seek(from) || !dst->seek(0)) throw EReadError(QyText(QyRes::StreamReadError));
  TQyByteReader r(src);
  TQyByteWriter w(dst);
  for (qint64 left = size; left > 0;) {
    const qint64 n = std::min<qint64>(left, 1 << 16);
    w.WriteBytes(r.ReadBytes(n));
    left -= n;
  }
}

} // namespace

QY_REGISTER_CLASS(TQyUndoStack);

// ---- the position tables

void TQyUndoStack::TLog::AddPosition(TRecord r) {
  // Entries that were undone and not redone are overwritten by the new record. The tables are cut
  // to the live part, so that no stale record can ever be replayed with the new ones.
  if (int(GroupPositions.size()) > GroupIdx + 1) GroupPositions.resize(GroupIdx + 1);
  if (int(Records.size()) > CurrentIdx + 1) Records.resize(CurrentIdx + 1);
  Records.push_back(r);
  ++CurrentIdx;
  if (GroupLevel == 0) {
    GroupPositions.push_back(CurrentIdx);
    ++GroupIdx;
  }
}

void TQyUndoStack::TLog::ResetIndices() {
  Records.clear();
  GroupPositions.clear();
  CurrentIdx = GroupIdx = -1;
  GroupLevel = 0;
  // A cleared log starts again at 0: keeping the old end would pad the log with a gap after each
  // clear, and the redo log is cleared by every new record.
  EndPosition = 0;
}

int TQyUndoStack::TLog::LastRecordOf(int group) const {
  if (group < 0) return -1;
  return group + 1 < int(GroupPositions.size()) ? GroupPositions[group + 1] - 1
                                                 : int(Records.size()) - 1;
}

// ---- life

TQyUndoStack::TQyUndoStack(QObject* owner) : TQyUndoRecorder(owner) {}

TQyUndoStack::~TQyUndoStack() {
  const QStringList files = LogFileNames();
  FUndo.Stream.reset();
  FRedo.Stream.reset();
  FScratch.reset();
  for (const QString& f : files) QFile::remove(f);
}

QStringList TQyUndoStack::LogFileNames() const {
  if (FUndo.FileName.isEmpty()) return {};
  return {FUndo.FileName, FRedo.FileName, FScratchName};
}

qint64 TQyUndoStack::UndoStreamSize() const { return FUndo.Stream ? FUndo.Stream->size() : 0; }
qint64 TQyUndoStack::RedoStreamSize() const { return FRedo.Stream ? FRedo.Stream->size() : 0; }

void TQyUndoStack::InitStreams() {
  if (FUndo.Stream) return;
  if (!FToMemoryStream) return CreateLogFiles();
  for (auto* s : {&FUndo.Stream, &FRedo.Stream, &FScratch}) {
    auto buffer = std::make_unique<QBuffer>();
    buffer->open(QIODevice::ReadWrite);
    *s = std::move(buffer);
  }
}

// Three temporary files "<program>.QyUndoStack.<n>" with consecutive free numbers, each created
// exclusively (an existing file is never opened). Unbuffered, so that a full disk fails the write
// that hits it.
void TQyUndoStack::CreateLogFiles() {
  QString stem = QStringLiteral("Qy");
  if (QCoreApplication::instance())
    stem = QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
  const QString base = GetTemporaryPath() + stem + QStringLiteral(".QyUndoStack.");
  std::unique_ptr<QFile> files[3];
  int counter = 0;
  for (auto& file : files) {
    for (;; ++counter) {
      const QString name = base + QString::number(counter);
      file = std::make_unique<QFile>(name);
      if (file->open(QIODevice::ReadWrite | QIODevice::NewOnly | QIODevice::Unbuffered)) break;
      if (QFileInfo::exists(name)) continue;
      const QString error = file->errorString();
      for (auto& f : files)
        if (f && f->isOpen()) f->remove();
      throw EStreamError(QyFormatMessage(QyRes::FileCreateError, {name, error}));
    }
  }
  FUndo.FileName = files[0]->fileName();
  FRedo.FileName = files[1]->fileName();
  FScratchName = files[2]->fileName();
  FUndo.Stream = std::move(files[0]);
  FRedo.Stream = std::move(files[1]);
  FScratch = std::move(files[2]);
}

// ---- writing records

void TQyUndoStack::Append(TLog& log, const QByteArray& record) {
  QIODevice* d = log.Stream.get();
  try {
    if (!d->seek(log.EndPosition)) throw EWriteError(QyText(QyRes::StreamWriteError));
    TQyByteWriter(d).WriteBytes(record);
  } catch (const EQyException&) {
    try { Truncate(d, log.EndPosition); } catch (const EQyException&) {} // drop a partial record
    throw;
  }
  log.AddPosition({log.EndPosition, record.size()});
  log.EndPosition += record.size();
}

void TQyUndoStack::PushUndoRecord(const QByteArray& record) {
  InitStreams();
  Append(FUndo, record);
  ClearRedo(); // a new record throws the redo log away
  if (FLimit > 0 && FUndo.GroupIdx >= FLimit) DropOldestEntry();
}

// Drops the oldest top-level entry and moves the rest of the log to the start of the stream, so
// that the log never holds more than Limit entries.
void TQyUndoStack::DropOldestEntry() {
  const int g = FUndo.GroupPositions[1];
  const qint64 p = FUndo.Records[g].Position;
  FUndo.GroupPositions.erase(FUndo.GroupPositions.begin());
  for (int& x : FUndo.GroupPositions) x -= g;
  FUndo.Records.erase(FUndo.Records.begin(), FUndo.Records.begin() + g);
  for (TRecord& r : FUndo.Records) r.Position -= p;
  --FUndo.GroupIdx;
  FUndo.CurrentIdx = int(FUndo.Records.size()) - 1;
  const qint64 size = FUndo.EndPosition - p;
  try {
    CopyBytes(FUndo.Stream.get(), p, size, FScratch.get());
    CopyBytes(FScratch.get(), 0, size, FUndo.Stream.get());
  } catch (const EQyException&) {
    Clear(); // the log cannot be trusted any more
    throw;
  }
  FUndo.EndPosition = size;
  Truncate(FScratch.get(), 0);
}

void TQyUndoStack::PushProperty(QObject* instance, const QString& caption, const char* propName) {
  if (!CanPush() || !instance) return;
  if (instance->metaObject()->indexOfProperty(propName) < 0)
    throw EFilerError(QyFormatMessage(QyRes::UndoPropertyNotFound, {QString::fromLatin1(propName)}));
  PushUndoRecord(BuildRecord(caption, TQyUndoToken::udProperty, [&](TQyValueWriter& w) {
    WriteObjectInstance(w, instance);
    w.WriteString(QString::fromLatin1(propName));
    WritePropertyValue(w, instance, propName);
  }));
}

void TQyUndoStack::PushComponent(QObject* component, const QString& caption) {
  if (!CanPush() || !component) return;
  PushUndoRecord(BuildRecord(caption, TQyUndoToken::udComponent, [&](TQyValueWriter& w) {
    WriteObjectInstance(w, component);
    WriteComponentImage(w, component);
  }));
}

void TQyUndoStack::PushFreeComponent(QObject* component, const QString& caption) {
  if (!CanPush()) return;
  const QString ref = GetComponentRef(component);
  if (ref.isEmpty()) throw EStreamError(QyText(QyRes::UndoNoComponentName));
  PushUndoRecord(BuildRecord(caption, TQyUndoToken::udFreeComponent,
                             [&](TQyValueWriter& w) { w.WriteString(ref); }));
}

void TQyUndoStack::PushEditState(QObject* edit, const QString& text, int selStart, int selLength,
                                 const QString& caption) {
  if (!CanPush() || !edit) return;
  PushUndoRecord(BuildRecord(caption, TQyUndoToken::udEditState, [&](TQyValueWriter& w) {
    WriteObjectInstance(w, edit);
    w.WriteString(text);
    w.WriteInteger(selStart);
    w.WriteInteger(selLength);
  }));
}

void TQyUndoStack::PushVectorState(QObject* vector, const QString& caption) {
  auto* v = dynamic_cast<IQyStateful*>(vector);
  if (!CanPush() || !v || !v->HasState()) return;
  PushUndoRecord(BuildRecord(caption, TQyUndoToken::udVectorState,
                             [&](TQyValueWriter& w) { WriteVectorState(w, vector); }));
}

void TQyUndoStack::StartGroup(const QString& caption) {
  if (!CanPush()) return;
  PushUndoRecord(BuildRecord(caption, TQyUndoToken::udStartGroup, [](TQyValueWriter&) {}));
  if (FUndo.GroupLevel == 0) FCurrentUndoComment = caption;
  ++FUndo.GroupLevel;
}

void TQyUndoStack::StopGroup() {
  if (!CanPush()) return;
  PushUndoRecord(BuildRecord(FCurrentUndoComment, TQyUndoToken::udStopGroup, [](TQyValueWriter&) {}));
  if (--FUndo.GroupLevel < 0) {
    FUndo.GroupLevel = 0; // later records must not join an entry that was never opened
    throw EOverflow(QyText(QyRes::UndoTooManyStopGroup));
  }
}

// ---- clearing

void TQyUndoStack::ClearRedo() {
  FRedo.ResetIndices();
  if (FRedo.Stream) Truncate(FRedo.Stream.get(), 0);
}

void TQyUndoStack::Clear() {
  InitStreams();
  FUndo.ResetIndices();
  Truncate(FUndo.Stream.get(), 0);
  Truncate(FScratch.get(), 0);
  ClearRedo();
}

// ---- replay

QByteArray TQyUndoStack::ReadRecord(const TLog& log, int i) const {
  const TRecord& rec = log.Records.at(size_t(i));
  if (!log.Stream->seek(rec.Position)) throw EReadError(QyText(QyRes::StreamReadError));
  return TQyByteReader(log.Stream.get()).ReadBytes(rec.Size);
}

QString TQyUndoStack::GetComment(const TLog& log, int group) const {
  if (group < 0 || group >= int(log.GroupPositions.size())) return {};
  const TRecord& rec = log.Records.at(size_t(log.GroupPositions[group]));
  if (!log.Stream->seek(rec.Position)) return {};
  return TQyValueReader(log.Stream.get()).ReadString();
}

void TQyUndoStack::Undo(int toIndex) {
  if (!FEnabled || !CanUndo() || toIndex < 0 || FUndo.GroupLevel > 0) return;
  FRestoring = true;
  try {
    const int firstGroup = std::max(0, FUndo.GroupIdx - toIndex);
    const int first = FUndo.GroupPositions[firstGroup];
    for (int i = FUndo.LastRecordOf(FUndo.GroupIdx); i >= first; --i) UndoAt(i);
    // Never below -1: an index past the start would make the next record cut the tables to a
    // negative size.
    FUndo.GroupIdx = firstGroup - 1;
    FUndo.CurrentIdx = first - 1;
  } catch (...) {
    // A failed replay keeps the indices; the caller hears of it through the state only.
  }
  FRedo.GroupLevel = 0;
  FRestoring = false;
  if (OnUndo) OnUndo(this);
}

void TQyUndoStack::UndoAt(int recordIdx) {
  QByteArray record = ReadRecord(FUndo, recordIdx);
  QBuffer in(&record);
  in.open(QIODevice::ReadOnly);
  TQyValueReader r(&in);
  const QString caption = r.ReadString();
  if (FRedo.GroupLevel == 0) FCurrentUndoComment = caption;
  const auto token = TQyUndoToken(r.ReadInteger());
  // Compared against the undo index from before the call: single steps stop writing redo records
  // once the redo index has passed the undo index.
  FDoRedo = FRedo.GroupIdx - FUndo.GroupIdx <= 0;
  QByteArray reverse;
  QBuffer out(&reverse);
  out.open(QIODevice::WriteOnly);
  TQyValueWriter w(&out);
  w.WriteString(FCurrentUndoComment);
  if (Apply(token, r, FDoRedo ? &w : nullptr) && FDoRedo) Append(FRedo, reverse);
  if (token == TQyUndoToken::udStopGroup) ++FRedo.GroupLevel; // mirrored: opens the redo group
  if (token == TQyUndoToken::udStartGroup) --FRedo.GroupLevel;
}

void TQyUndoStack::Redo(int toIndex) {
  if (!FEnabled || !CanRedo() || toIndex < 0 || FUndo.GroupLevel > 0) return;
  // No handler here: a failure goes to the caller and leaves recording off.
  FRestoring = true;
  const int firstGroup = std::max(0, FRedo.GroupIdx - toIndex);
  const int first = FRedo.GroupPositions[firstGroup];
  for (int i = FRedo.LastRecordOf(FRedo.GroupIdx); i >= first; --i) RedoAt(i);
  const int steps = FRedo.GroupIdx - firstGroup + 1;
  FRedo.GroupIdx = firstGroup - 1;
  FRedo.CurrentIdx = first - 1;
  // The undo records of the redone entries are live again, records included: a later record
  // must cut the tables behind them, not behind the last undone one.
  FUndo.GroupIdx = std::min(UndoCount() - 1, FUndo.GroupIdx + steps);
  FUndo.CurrentIdx = FUndo.LastRecordOf(FUndo.GroupIdx);
  FRestoring = false;
  if (OnRedo) OnRedo(this);
}

void TQyUndoStack::RedoAt(int recordIdx) {
  QByteArray record = ReadRecord(FRedo, recordIdx);
  QBuffer in(&record);
  in.open(QIODevice::ReadOnly);
  TQyValueReader r(&in);
  r.ReadString();
  const auto token = TQyUndoToken(r.ReadInteger());
  if (token != TQyUndoToken::udStartGroup && token != TQyUndoToken::udStopGroup)
    Apply(token, r, nullptr);
}

// ---- the caption views

int TQyUndoList::Count() const {
  return (FRedo ? FStack->FRedo.GroupIdx : FStack->FUndo.GroupIdx) + 1;
}

QString TQyUndoList::Get(int i) const {
  const auto& log = FRedo ? FStack->FRedo : FStack->FUndo;
  if (i < 0 || i > log.GroupIdx) QyRaiseIndexError(i);
  return FStack->GetComment(log, log.GroupIdx - i);
}

QStringList TQyUndoList::Strings() const {
  QStringList result;
  for (int i = 0; i < Count(); ++i) result << Get(i);
  return result;
}
