#include "QyProperty.h"
#include "QyLocalize.h"

void QyRecordChange(TQyUndoRecorder* recorder, QObject* object, const char* caption,
                    const char* propertyName) {
  if (recorder && caption && recorder->IsRecording())
    recorder->PushProperty(object, QyText(caption), propertyName);
}

void TQyRecording::RecordChange(QObject* self, const char* caption, const char* propertyName) {
  if (caption) QyRecordChange(UndoRecorder(), self, caption, propertyName);
}

TQyRecording* QyRecordingOwner(const QObject* object) {
  for (QObject* o = object ? object->parent() : nullptr; o; o = o->parent())
    if (auto* r = dynamic_cast<TQyRecording*>(o)) return r;
  return nullptr;
}

TQyUndoGroup::TQyUndoGroup(TQyUndoRecorder* recorder, const char* caption) {
  if (recorder && recorder->IsRecording()) {
    recorder->StartGroup(QyText(caption));
    FRecorder = recorder;
  }
}

TQyUndoGroup::~TQyUndoGroup() {
  if (FRecorder) FRecorder->StopGroup();
}
