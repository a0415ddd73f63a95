#pragma once
// Where text is measured. On screen, text is measured for the screen. Output to another device
// (an image, SVG, PDF, a printer) lays the picture out for that device: its routine opens a
// TQyMeasureScope, and every measurement made without a painter inside the scope uses the
// scope's resolution instead of the screen's.
#include <QPaintDevice>

// A device that only answers its resolution: enough for QFontMetricsF, never painted on.
class TQyMeasureDevice : public QPaintDevice {
public:
  explicit TQyMeasureDevice(qreal dpiX, qreal dpiY) : FDpiX(dpiX), FDpiY(dpiY) {}
  QPaintEngine* paintEngine() const override { return nullptr; }

protected:
  int metric(PaintDeviceMetric m) const override;

private:
  qreal FDpiX, FDpiY;
};

// The device to measure on now: the innermost scope's, or nullptr (the screen).
QPaintDevice* QyMeasureDevice();

class TQyMeasureScope {
public:
  // Text measured for a device of this resolution (dots per inch of the picture's own units).
  TQyMeasureScope(qreal dpiX, qreal dpiY);
  ~TQyMeasureScope();
  TQyMeasureScope(const TQyMeasureScope&) = delete;
  TQyMeasureScope& operator=(const TQyMeasureScope&) = delete;

private:
  TQyMeasureDevice FDevice;
  QPaintDevice* FOuter;
};
