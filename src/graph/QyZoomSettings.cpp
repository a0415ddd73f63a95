#include "QyZoomSettings.h"
#include "QyExceptions.h"
#include "QyGraph2D.h"

TQyZoomSettings::TQyZoomSettings(TQyGraph2D* graph) : QObject(graph), FGraph(graph) {}

TQyUndoRecorder* TQyZoomSettings::UndoRecorder() const {
  if (FUndoRecorder) return FUndoRecorder.data();
  const TQyRecording* owner = QyRecordingOwner(this);
  return owner ? owner->UndoRecorder() : nullptr;
}

// Zooming and panning must start from different keys, or a press could not tell them apart.
void TQyZoomSettings::SetStartZoom(TShiftState value) {
  if (value == FStartPanning) throw EExternal(QyText(QyRes::ZoomSameStartKeys));
  QyAssign(this, FStartZoom, value, QyRes::ZoomStartZoom, "StartZoom", [] {});
}

void TQyZoomSettings::SetStartPanning(TShiftState value) {
  if (value == FStartZoom) throw EExternal(QyText(QyRes::ZoomSameStartKeys));
  QyAssign(this, FStartPanning, value, QyRes::ZoomStartPanning, "StartPanning", [] {});
}

void TQyZoomSettings::ZoomTo(QPoint p1, QPoint p2) { FGraph->ZoomTo(p1, p2); }
void TQyZoomSettings::ZoomBack() { FGraph->ZoomBack(); }
void TQyZoomSettings::RedoZoom() { FGraph->RedoZoom(); }
void TQyZoomSettings::ZoomToStage(int stage) { FGraph->ZoomToStage(stage); }
void TQyZoomSettings::ZoomReset() { FGraph->ZoomReset(); }
bool TQyZoomSettings::GetCanZoomBack() const { return FGraph->GetCanZoomBack(); }
bool TQyZoomSettings::GetCanRedoZoom() const { return FGraph->GetCanRedoZoom(); }
int TQyZoomSettings::GetCurrentStage() const { return FGraph->GetCurrentZoomStage(); }
int TQyZoomSettings::GetBufferSize() const { return FGraph->GetZoomBufferSize(); }

TQyZoomSettings::TNotifyEvent& TQyZoomSettings::OnBeginZoom() { return FGraph->OnBeginZoom; }
TQyZoomSettings::TNotifyEvent& TQyZoomSettings::OnEndZoom() { return FGraph->OnEndZoom; }
TQyZoomSettings::TNotifyEvent& TQyZoomSettings::OnBeginPanning() { return FGraph->OnBeginPanning; }
TQyZoomSettings::TNotifyEvent& TQyZoomSettings::OnEndPanning() { return FGraph->OnEndPanning; }
