#pragma once
// The zoom, pan and scroll-bar options of a graph, and the zoom commands it forwards to the graph.
// The settings are read when next needed: a setter records and stores, nothing more.
#include "QyLocalize.h"
#include "QyProperty.h"
#include "QyStringFunctions.h"
#include <QObject>
#include <QPoint>
#include <functional>

class TQyGraph2D;

namespace QyZoomSettings {
Q_NAMESPACE
// How the zoom history answers "back" and "redo": a ring of stages, or a stack that stops at
// its ends.
enum class TQyZoomBufferType { AsCircularBuffer, AsStack };
Q_ENUM_NS(TQyZoomBufferType)
// The step of a scroll-bar arrow or page click.
enum class TQyScrollIncrement { Page, MajorTick, MinorTick, Pixel };
Q_ENUM_NS(TQyScrollIncrement)
} // namespace QyZoomSettings
using QyZoomSettings::TQyScrollIncrement;
using QyZoomSettings::TQyZoomBufferType;

class TQyZoomSettings : public QObject, public TQyRecording {
  Q_OBJECT
  QY_RECORDING_SIGNAL(TQyZoomSettings)
  QY_PROPERTY(bool, Auto, QyRes::ZoomAuto, (void)0) = true;
  QY_PROPERTY(QyZoomSettings::TQyZoomBufferType, BufferType, nullptr, (void)0) = TQyZoomBufferType::AsStack;
  QY_PROPERTY(bool, OptimizeSeries, QyRes::ZoomOptimizeSeries, (void)0) = false;
  QY_PROPERTY(bool, BackOnClickBeside, QyRes::ZoomBackOnClickBeside, (void)0) = true;
  QY_PROPERTY(bool, BackOnRightBottomLeftTopFrame, QyRes::ZoomBackOnClickBeside, (void)0) = false;
  QY_PROPERTY(bool, ResetOnDoubleClickBeside, QyRes::ZoomResetOnDoubleClickBeside, (void)0) = true;
  QY_PROPERTY(bool, ResetOnRightBottomLeftTopFrame, QyRes::ZoomResetOnFrame, (void)0) = false;
  QY_PROPERTY_CUSTOM(QyShift::TShiftState, StartZoom) = QyShift::ssLeft;
  QY_PROPERTY_CUSTOM(QyShift::TShiftState, StartPanning) = QyShift::ssShift | QyShift::ssLeft;
  // A framework cursor number (QyInput.h maps it to a Qt shape).
  QY_PROPERTY(int, PanningCursor, nullptr, (void)0) = -21;
  QY_PROPERTY(bool, HScrollbarVisible, QyRes::ZoomHScrollbarVisible, (void)0) = true;
  QY_PROPERTY(bool, VScrollbarVisible, QyRes::ZoomVScrollbarVisible, (void)0) = true;
  QY_PROPERTY(QyZoomSettings::TQyScrollIncrement, ScrollSmallIncrement, QyRes::ZoomScrollSmallIncrement, (void)0) =
      TQyScrollIncrement::MinorTick;
  QY_PROPERTY(QyZoomSettings::TQyScrollIncrement, ScrollLargeIncrement, QyRes::ZoomScrollLargeIncrement, (void)0) =
      TQyScrollIncrement::Page;
  // The mouse wheel zooms about the pointer, one stage per wheel gesture.
  QY_PROPERTY(bool, WheelZoom, QyRes::ZoomWheel, (void)0) = true;
  Q_PROPERTY(bool CanZoomBack READ GetCanZoomBack)
  Q_PROPERTY(bool CanRedoZoom READ GetCanRedoZoom)
  Q_PROPERTY(int CurrentStage READ GetCurrentStage)
  Q_PROPERTY(int BufferSize READ GetBufferSize)

public:
  using TNotifyEvent = std::function<void(QObject* sender)>;
  // Made by its graph, which it forwards the commands to; it records on the graph's stack.
  explicit TQyZoomSettings(TQyGraph2D* graph);

  TQyUndoRecorder* UndoRecorder() const override;

  // ---- commands, forwarded to the graph
  void ZoomTo(QPoint p1, QPoint p2);
  void ZoomBack();
  void RedoZoom();
  void ZoomToStage(int stage);
  void ZoomReset();
  bool GetCanZoomBack() const;
  bool GetCanRedoZoom() const;
  int GetCurrentStage() const;
  int GetBufferSize() const;

  // ---- the graph's own zoom and pan events
  TNotifyEvent& OnBeginZoom();
  TNotifyEvent& OnEndZoom();
  TNotifyEvent& OnBeginPanning();
  TNotifyEvent& OnEndPanning();

private:
  TQyGraph2D* FGraph;
};
