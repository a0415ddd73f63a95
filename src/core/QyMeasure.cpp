#include "QyMeasure.h"
#include <cmath>

namespace {
thread_local QPaintDevice* CurrentMeasureDevice = nullptr;
}

int TQyMeasureDevice::metric(PaintDeviceMetric m) const {
  switch (m) {
  case PdmDpiX: case PdmPhysicalDpiX: return int(std::lround(FDpiX)); // round-away-ok: a resolution
  case PdmDpiY: case PdmPhysicalDpiY: return int(std::lround(FDpiY)); // round-away-ok
  case PdmDevicePixelRatio: return 1;
  case PdmDevicePixelRatioScaled: return int(devicePixelRatioFScale());
  case PdmDepth: return 32;
  case PdmNumColors: return 0x7FFFFFFF;
  default: return 1; // width, height and millimetres: a measuring device has no extent
  }
}

QPaintDevice* QyMeasureDevice() { return CurrentMeasureDevice; }

TQyMeasureScope::TQyMeasureScope(qreal dpiX, qreal dpiY) : FDevice(dpiX, dpiY), FOuter(CurrentMeasureDevice) {
  CurrentMeasureDevice = &FDevice;
}

TQyMeasureScope::~TQyMeasureScope() { CurrentMeasureDevice = FOuter; }
