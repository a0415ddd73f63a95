#pragma once
// The pointer on a graph: drag a frame to zoom, drag with the panning keys to pan, click beside the
// data to go back, double-click beside it to reset, turn the wheel to zoom about the pointer,
// Escape to drop a frame. An event filter on the graph; all its state lasts one gesture.
#include "QyStringFunctions.h"
#include <QCursor>
#include <QPair>
#include <QPixmap>
#include <QPoint>
#include <QTimer>
#include <QWidget>
#include <vector>

class TQyGraph2D;

// The zoom frame: a picture of the graph taken when the frame starts, with the frame drawn over
// it. It covers the graph while the frame is dragged, so that a mouse move repaints one picture
// and a rectangle: no layout, no series drawn again.
class TQyZoomFrame : public QWidget {
public:
  explicit TQyZoomFrame(QWidget* graph);
  void Begin();
  void SetFrame(const QRect& frame);
  void End();
  QRect Frame() const { return FFrame; }

protected:
  void paintEvent(QPaintEvent* e) override;

private:
  QPixmap FPicture;
  QRect FFrame;
};

class TQyGraphMouse : public QObject {
public:
  explicit TQyGraphMouse(TQyGraph2D* graph);
  bool IsZooming() const { return FZooming; }
  QPoint MouseDownPoint() const { return FDown; }
  QPoint MouseCurrentPoint() const { return FCurrent; }
  // Ends a wheel gesture at once: its result becomes one zoom stage.
  void EndWheelGesture();

protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

private:
  void MouseDown(TShiftState shift, QPoint p);
  void MouseMove(QPoint p);
  void MouseUp();
  void Click(QPoint p);
  void DblClick(QPoint p);
  void Wheel(class QWheelEvent* e);
  void CancelFrame();
  void BeginPanning();
  void PanTo(QPoint p);
  void EndPanning();
  void EndZoomFrame();

  TQyGraph2D* FGraph;
  TQyZoomFrame* FFrame;
  bool FZooming = false;
  bool FClicked = false; // a left press whose release is a click
  QPoint FDown, FCurrent;
  std::vector<double> FPanStart, FPanStop;
  QCursor FSavedCursor;
  std::vector<QPair<double, double>> FWheelFrom; // the ends when the wheel gesture began
  QTimer FWheelEnd;
};
