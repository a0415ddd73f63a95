#pragma once
// A pie chart on a form with its values and the default palette, as the pie tests start from.
#include "QyPieChart.h"
#include <QWidget>

struct PieFixture {
  QWidget form;
  TQyPieChart* pie = new TQyPieChart(&form);
  TQyDoubleVector* values = new TQyDoubleVector(&form);
  TQyFillPalette* palette = new TQyFillPalette(&form);
  explicit PieFixture(std::initializer_list<double> v, QSize size = QSize(200, 200)) {
    for (double x : v) values->Add(x);
    pie->resize(size);
    pie->SetBackColor(0xFFFFFFFF);
    pie->SetDropShadow(false);
    pie->SetValues(values);
    palette->FillDefaults();
    pie->SetSegmentSettingsPalette(palette);
  }
  void Calculate() { pie->Calculate(); }
};

inline QColor Named(const char* name) { return QColor::fromRgba(ColorToARGB(QString::fromLatin1(name))); }
