#pragma once
// The undo history. Setters record the old value of a published property before they change it
// (PushProperty); vectors are recorded whole, edit controls by text and selection, components by
// class name, owner and document record (so that a deleted one can be made again); StartGroup/StopGroup make several records one step. Undo replays
// records newest first through the property setters, so every flag a setter raises (layout,
// ranges, points) comes with the replay, and writes the mirrored records to the redo log.
//
// Each log is a plain sequence of records in the value stream of QyByteStream, kept in memory or
// in a temporary file; record boundaries are known only from the position tables.
#include "QyProperty.h"
#include <QIODevice>
#include <QObject>
#include <QPointer>
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

class TQyValueReader;
class TQyValueWriter;
class TQyUndoStack;

namespace QyUndoStack {
Q_NAMESPACE
// The kind of a record; stored as an integer in each record.
enum class TQyUndoToken {
  udProperty, udComponent, udFreeComponent, udEditState, udVectorState, udStartGroup, udStopGroup
};
Q_ENUM_NS(TQyUndoToken)
} // namespace QyUndoStack
using QyUndoStack::TQyUndoToken;

// A read-only view of the captions for drop-down lists; item 0 is the most recent operation.
class TQyUndoList {
public:
  TQyUndoList(const TQyUndoStack* stack, bool redo) : FStack(stack), FRedo(redo) {}
  int Count() const;
  QString Get(int i) const;
  QString operator[](int i) const { return Get(i); }
  QStringList Strings() const;

private:
  const TQyUndoStack* FStack;
  bool FRedo;
};

class TQyUndoStack : public TQyUndoRecorder {
  Q_OBJECT
  Q_PROPERTY(bool Enabled READ GetEnabled WRITE SetEnabled)
  Q_PROPERTY(int Limit READ GetLimit WRITE SetLimit)
  Q_PROPERTY(bool ToMemoryStream READ GetToMemoryStream WRITE SetToMemoryStream)

public:
  explicit TQyUndoStack(QObject* owner = nullptr);
  ~TQyUndoStack() override;

  // ---- published
  bool GetEnabled() const { return FEnabled; }
  void SetEnabled(bool v) { FEnabled = v; }
  // Most top-level entries kept; 0 or less: no limit. A push drops at most one old entry.
  int GetLimit() const { return FLimit; }
  void SetLimit(int v) { FLimit = v; }
  // Logs in memory (true) or in temporary files; read only when the logs are made.
  bool GetToMemoryStream() const { return FToMemoryStream; }
  void SetToMemoryStream(bool v) { FToMemoryStream = v; }
  std::function<void(QObject* sender)> OnUndo, OnRedo;

  // ---- recording (nothing while disabled, restoring or reading)
  bool IsRecording() const override { return FEnabled && !FRestoring && FReading == 0; }
  // The present value of the property; EFilerError "Property: "%s" not found" for an unknown
  // name (nothing is written). Object values are kept as references.
  void PushProperty(QObject* instance, const QString& caption, const char* propName) override;
  // The whole component (class name, owner, document record), for a change of it as a whole or
  // before it is deleted: undo makes a deleted component again.
  void PushComponent(QObject* component, const QString& caption);
  // A component just created, so that undo frees it; EStreamError when it has no reference.
  void PushFreeComponent(QObject* component, const QString& caption);
  // The text and selection of an edit control (a QLineEdit, a text edit, or any object with a
  // "Caption" property).
  void PushEditState(QObject* edit, const QString& text, int selStart, int selLength,
                     const QString& caption);
  // The whole data of a data vector (values and outliers).
  void PushVectorState(QObject* vector, const QString& caption) override;
  void StartGroup(const QString& caption) override;
  // EOverflow "Undo stack has too many StopGroup statements" without an open group (the stop
  // record is written first).
  void StopGroup() override;

  // ---- replay: ToIndex + 1 entries of UndoList / RedoList
  void Undo(int toIndex = 0);
  void Redo(int toIndex = 0);
  void Clear();
  void ClearRedo();

  bool Restoring() const { return FRestoring; }
  bool CanUndo() const { return FUndo.GroupIdx >= 0; }
  bool CanRedo() const { return FRedo.GroupIdx >= 0; }
  // Entries including those undone (or redone) but not yet overwritten.
  int UndoCount() const { return int(FUndo.GroupPositions.size()); }
  int RedoCount() const { return int(FRedo.GroupPositions.size()); }
  const TQyUndoList& UndoList() const { return FUndoList; }
  const TQyUndoList& RedoList() const { return FRedoList; }
  void SetReading(bool on) override { FReading += on ? 1 : FReading > 0 ? -1 : 0; }

  // ---- inspection (tests, diagnostics)
  qint64 UndoStreamSize() const;
  qint64 RedoStreamSize() const;
  QStringList LogFileNames() const; // undo, redo, scratch; empty for memory logs

private:
  friend class TQyUndoList;
  struct TRecord { qint64 Position, Size; };
  // One log with its tables: records in order of writing and, per top-level entry, the index of
  // its first record. GroupIdx and CurrentIdx are the last live entry and record (-1: none).
  struct TLog {
    std::unique_ptr<QIODevice> Stream;
    QString FileName;
    std::vector<TRecord> Records;
    std::vector<int> GroupPositions;
    int CurrentIdx = -1, GroupIdx = -1, GroupLevel = 0;
    qint64 EndPosition = 0;
    void AddPosition(TRecord r);
    void ResetIndices();
    int LastRecordOf(int group) const;
  };

  void InitStreams();
  void CreateLogFiles();
  bool CanPush() const { return IsRecording(); }
  // Appends a finished record to a log; indices change only when the write succeeded.
  void Append(TLog& log, const QByteArray& record);
  void PushUndoRecord(const QByteArray& record);
  void DropOldestEntry();
  QByteArray ReadRecord(const TLog& log, int i) const;
  QString GetComment(const TLog& log, int group) const;

  void UndoAt(int recordIdx);
  void RedoAt(int recordIdx);
  // Applies one record (token already read); writes the record that reverses it into `reverse`
  // when that is given. Returns false when the target no longer exists.
  bool Apply(TQyUndoToken token, TQyValueReader& r, TQyValueWriter* reverse);

  // ---- values
  void WriteObjectInstance(TQyValueWriter& w, QObject* o);
  QObject* ReadObjectInstance(TQyValueReader& r);
  void WritePropertyValue(TQyValueWriter& w, QObject* o, const char* name);
  void ReadPropertyFrom(TQyValueReader& r, QObject* o, const QByteArray& name);
  void WriteComponentImage(TQyValueWriter& w, QObject* o);
  void ReadComponentFrom(TQyValueReader& r, QObject* o);
  void WriteVectorState(TQyValueWriter& w, QObject* o); // o is an IQyStateful
  qint64 ObjectId(QObject* o);

  bool FEnabled = true;
  int FLimit = 20;
  bool FToMemoryStream = true;
  bool FRestoring = false;
  int FReading = 0; // documents being read
  bool FDoRedo = false;
  TLog FUndo, FRedo;
  std::unique_ptr<QIODevice> FScratch;
  QString FScratchName;
  QString FCurrentUndoComment;
  QString FCurrentInstanceFullName;
  // Objects without a resolvable reference are kept by id; an id of a destroyed object resolves
  // to nothing, so a record of a dead sub-object is skipped instead of touching freed memory.
  QHash<const QObject*, qint64> FObjectIds;
  QHash<qint64, QPointer<QObject>> FObjects;
  qint64 FNextObjectId = 1;
  TQyUndoList FUndoList{this, false}, FRedoList{this, true};
};
