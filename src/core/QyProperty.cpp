#include "QyProperty.h"
#include "QyLocalize.h"

void QyRecordChange(TQyUndoRecorder* recorder, QObject* object, const char* caption,
                    const char* propertyName) {
  if (recorder && caption && recorder->IsRecording())
    recorder->PushProperty(object, QyText(caption), propertyName);
}
