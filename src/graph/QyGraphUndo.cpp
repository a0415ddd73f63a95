// The graph's own undo entry: the data of all its series' vectors as one step.
#include "QyGraph2D.h"
#include "QyLocalize.h"
#include "QyVectors.h"

void TQyGraph2D::UndoPushSeriesVectors() {
  TQyUndoRecorder* stack = UndoRecorder();
  if (!stack || !stack->IsRecording()) return;
  stack->StartGroup(QyText(QyRes::UndoGraphSeriesData));
  try {
    for (TQyCustomDoubleVector* v : GetVectorsList()) stack->PushVectorState(v, QString());
  } catch (...) {
    stack->StopGroup(); // keep the group balanced; the entry holds what was recorded
    throw;
  }
  stack->StopGroup();
}
