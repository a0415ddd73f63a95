// Pie and donut charts: flat and 3D pies and donuts, exploded segments, callouts with arrows,
// labels inside the segments, legends of the segments beside and below the pie.
#include "QyGallery.h"
#include <QGridLayout>
#include <QLabel>
#include <QyPieChart.h>
#include <QyPieLegend.h>
#include <QyVectors.h>

namespace {
TQyFillPalette* Palette(QObject* owner) {
  auto* palette = new TQyFillPalette(owner);
  palette->FillDefaults();
  return palette;
}

TQyDoubleVector* Vector(QObject* owner, std::initializer_list<double> values) {
  auto* v = new TQyDoubleVector(owner);
  for (double x : values) v->Add(x);
  return v;
}

TQyPieChart* NewPie(TQyPieChartType type, const QString& caption, TQyFillPalette* palette) {
  auto* pie = new TQyPieChart;
  pie->SetBackColor(0xFFFFFFFF);
  pie->SetPieChartType(type);
  pie->SetCaption(caption);
  pie->SetCaptionVisible(true);
  pie->SetCaptionDistanceBefore(4);
  pie->SetCaptionDistanceAfter(4);
  pie->SetDistanceAtLeft(6), pie->SetDistanceAtRight(6), pie->SetDistanceAtBottom(6);
  pie->SetSegmentSettingsPalette(palette);
  pie->SetValues(Vector(pie, {10, 20, 12, 35, 50, 6}));
  pie->SetCaptions({"North", "East", "South", "West", "Centre", "Islands"});
  return pie;
}

// A legend of the segments on the chart; the pie gives way to it.
void AddLegend(TQyPieChart* pie, TQyPieLegendPosition position, TQyLabelStyle labels, TQyItemsOrder order) {
  auto* legend = new TQyPieLegend(pie);
  legend->SetPosition(position);
  legend->SetLabelsFrom(labels);
  legend->SetItemsOrder(order);
  if (order == TQyItemsOrder::ByRow) legend->SetRows(2);
}

QWidget* BuildPies() {
  auto* page = new QWidget;
  auto* grid = QyGalleryGrid(page);
  TQyFillPalette* palette = Palette(page);

  TQyPieChart* flat = NewPie(TQyPieChartType::FlatPie, "Flat pie, percent inside", palette);
  flat->SetLabelPosition(TQyPieLabelPosition::InsideHorizontal);
  flat->SetLabelFrom(TQyLabelStyle::Percent);
  flat->SetLabelSize(5);
  AddLegend(flat, TQyPieLegendPosition::RightCenter, TQyLabelStyle::CaptionsList, TQyItemsOrder::ByColumn);

  TQyPieChart* donut = NewPie(TQyPieChartType::FlatDonut, "Donut, labels along the radius", palette);
  donut->SetLabelPosition(TQyPieLabelPosition::InsideAligned);
  donut->SetLabelFrom(TQyLabelStyle::CaptionsList);
  donut->SetLabelSize(4.5);
  donut->SetDonutHoleSize(45);
  AddLegend(donut, TQyPieLegendPosition::CenterBottom, TQyLabelStyle::CaptionAndPercent, TQyItemsOrder::ByRow);

  TQyPieChart* pie3d = NewPie(TQyPieChartType::ThreeDPie, "3D pie, two segments exploded", palette);
  pie3d->SetExplodePercent(Vector(pie3d, {0, 25, 0, 0, 15}));
  pie3d->SetThreeDPieHeight(14);

  TQyPieChart* donut3d = NewPie(TQyPieChartType::ThreeDDonut, "3D donut over 270 degrees", palette);
  donut3d->SetStartAngle(135);
  donut3d->SetTotalAngle(270);
  donut3d->SetThreeDElevation(40);

  TQyPieChart* callouts = NewPie(TQyPieChartType::FlatPie, "Callouts, arrows where moved", palette);
  callouts->SetValues(Vector(callouts, {40, 3, 2, 2.5, 1.5, 30, 21}));
  callouts->SetCaptions({"Large", "tiny a", "tiny b", "tiny c", "tiny d", "Medium", "Rest"});
  callouts->SetLabelPosition(TQyPieLabelPosition::Callouts);
  callouts->SetLabelFrom(TQyLabelStyle::CaptionAndPercent);
  callouts->SetCalloutShadow(true);
  callouts->SetCalloutRounding(40);
  callouts->SetCalloutBackColor(0xFFFFFFE1);
  callouts->GetCalloutArrow()->SetColor(0xFF404040);
  callouts->SetCalloutDistanceToPie(250);

  TQyPieChart* callouts3d = NewPie(TQyPieChartType::ThreeDPie, "3D callouts, all arrows, ascending", palette);
  callouts3d->SetLabelPosition(TQyPieLabelPosition::Callouts);
  callouts3d->SetLabelFrom(TQyLabelStyle::CaptionAndValue);
  callouts3d->SetCalloutArrowVisibleMode(TQyCalloutArrowVisibleMode::AllVisible);
  callouts3d->SetOrderAscending(true);
  callouts3d->SetCalloutDistanceToPie(250);
  callouts3d->GetCalloutArrow()->SetColor(0xFF404040);
  callouts3d->SetExplodePercent(Vector(callouts3d, {0, 0, 0, 20}));

  const TQyPieChart* pies[] = {flat, donut, pie3d, donut3d, callouts, callouts3d};
  for (int i = 0; i < 6; ++i) grid->addWidget(const_cast<TQyPieChart*>(pies[i]), i / 3, i % 3);
  auto* hint = new QLabel("Resize the window: pie, shifts, callouts and legends refit to every size.");
  grid->addWidget(hint, 2, 0, 1, 3);
  return page;
}
} // namespace

QY_GALLERY_PAGE(pies, "12-pies", "Pies", BuildPies, QSize(1200, 820));
