// Axes of every scaling and position: linear with extra exponent, log, LogEE, seconds, date-time
// from milliseconds to centuries, rubrics at an angle, twisted, slave units, moving slit, and
// several axes on one side.
#include "QyGallery.h"
#include <QGridLayout>
#include <QyGraph2D.h>
#include <QyStyles.h>
#include <QyVectors.h>
#include <cmath>
#include <functional>

namespace {
TQyGraph2D* MakeGraph(QWidget* parent, const QString& title) {
  auto* g = new TQyGraph2D(parent);
  g->SetBackColor(0xFFFFFFFF);
  g->SetCaption(title);
  g->SetCaptionVisible(true);
  g->SetDistanceBorderAxisRight(14);
  g->SetDistanceBorderAxisTop(4);
  g->GetMajorGridHorizontal()->SetVisible(true);
  g->GetMajorGridVertical()->SetVisible(true);
  g->GetMajorGridHorizontal()->SetColor(0xFFE0E0E0);
  g->GetMajorGridVertical()->SetColor(0xFFE0E0E0);
  g->TestPrimaryAxis();
  for (TQyAxis* a : {g->GetPrimaryXAxis(), g->GetPrimaryYAxis()}) {
    a->GetFont()->SetSize(8);
    a->GetCaptionFont()->SetSize(9);
  }
  return g;
}

// A line through n points of f over [x0, x1] on the graph's primary axes.
void Curve(TQyGraph2D* g, double x0, double x1, int n, const std::function<double(double)>& f,
           TQyColor color = 0xFFC00000) {
  auto* xs = new TQyDoubleVector(g);
  auto* ys = new TQyDoubleVector(g);
  for (int i = 0; i < n; ++i) {
    const double x = x0 + (x1 - x0) * i / (n - 1);
    xs->Add(x);
    ys->Add(f(x));
  }
  auto* s = new TQyLineSeries(g);
  s->SetXAxis(g->GetPrimaryXAxis());
  s->SetYAxis(g->GetPrimaryYAxis());
  s->SetXData(xs);
  s->SetYData(ys);
  s->GetLine()->SetColor(color);
  s->GetLine()->SetWidth(1.5);
}

TQyAxis* ExtraAxis(TQyGraph2D* g, TQyAxisPosition pos, const QString& caption) {
  auto* a = new TQyAxis(g);
  a->SetPosition(pos);
  a->SetCaption(caption);
  a->GetFont()->SetSize(8);
  a->GetCaptionFont()->SetSize(9);
  a->show();
  return a;
}

QWidget* BuildAxes() {
  auto* page = new QWidget;
  auto* grid = new QGridLayout(page);
  grid->setSpacing(2);
  int cell = 0;
  auto place = [&](TQyGraph2D* g) { grid->addWidget(g, cell / 4, cell % 4), ++cell; };

  auto* lin = MakeGraph(page, "Linear, extra exponent, arrow");
  Curve(lin, 0, 2.5e6, 50, [](double x) { return 3e-5 * std::sin(x / 4e5); });
  lin->GetPrimaryXAxis()->GetArrowPoint()->SetVisible(true);
  lin->GetPrimaryYAxis()->GetArrowPoint()->SetVisible(true);
  place(lin);

  auto* log = MakeGraph(page, "Log and LogEE");
  Curve(log, 0.01, 1000, 200, [](double x) { return x * x + 1; });
  log->GetPrimaryXAxis()->SetScaling(TQyAxisScaling::Log);
  log->GetPrimaryYAxis()->SetScaling(TQyAxisScaling::LogEE);
  place(log);

  auto* sec = MakeGraph(page, "Seconds: 0 .. 1.5 h");
  Curve(sec, 0, 5400, 100, [](double x) { return std::sin(x / 600); });
  sec->GetPrimaryXAxis()->SetScaling(TQyAxisScaling::Seconds);
  sec->GetPrimaryXAxis()->SetCaption("Duration");
  place(sec);

  const double day = 45000.0; // 2023-03-15
  // A date-time axis keeps 120 pixels between labels; on a quarter of the page that leaves room
  // for three labels, too few for 0.8 seconds or three centuries: those two panels bring their
  // labels closer (labels every 200 ms and every 100 years).
  struct Span { double from, to; const char* title; float labelDistance; };
  for (const Span& s : {Span{day, day + 0.8 / 86400, "Date-time: milliseconds", 0.4f},
                        Span{day + 0.4, day + 0.45, "Date-time: an hour", 1},
                        Span{day, day + 21, "Date-time: weeks", 1},
                        Span{day, day + 700, "Date-time: months", 1},
                        Span{-30000, 80000, "Date-time: centuries", 0.4f}}) {
    auto* g = MakeGraph(page, s.title);
    Curve(g, s.from, s.to, 60, [&](double x) { return std::sin((x - s.from) / (s.to - s.from) * 6); });
    g->GetPrimaryXAxis()->SetScaling(TQyAxisScaling::DateTime);
    g->GetPrimaryXAxis()->SetLabelDistanceFactor(s.labelDistance);
    g->GetPrimaryXAxis()->SetCaption("");
    place(g);
  }

  auto* rub = MakeGraph(page, "Rubrics at 45 degrees");
  Curve(rub, 0.5, 5.5, 6, [](double x) { return 10 + 3 * std::cos(x); });
  rub->GetPrimaryXAxis()->SetScaling(TQyAxisScaling::Rubrics);
  rub->GetPrimaryXAxis()->SetRubrics({"January", "February", "March", "April", "May", "June"});
  rub->GetPrimaryXAxis()->SetRubricsAngle(45);
  rub->GetPrimaryXAxis()->SetStartEnd(TQyAxisEnd::Fixed);
  rub->GetPrimaryXAxis()->SetStopEnd(TQyAxisEnd::Fixed);
  rub->GetPrimaryXAxis()->SetStart(0);
  rub->GetPrimaryXAxis()->SetStop(6);
  place(rub);

  auto* tw = MakeGraph(page, "Twisted, slave in Fahrenheit");
  Curve(tw, 0, 24, 100, [](double h) { return 12 + 9 * std::sin((h - 9) / 24 * 2 * M_PI); });
  tw->GetPrimaryXAxis()->SetTwisted(true);
  tw->GetPrimaryXAxis()->SetCaption("Hours ago");
  tw->GetPrimaryYAxis()->SetCaption("\u00B0C");
  TQyAxis* f = ExtraAxis(tw, TQyAxisPosition::Right, "\u00B0F");
  f->SetMasterAxis(tw->GetPrimaryYAxis()); // which makes it a slave
  f->SetSlaveSlope(1.8);
  f->SetSlaveOffset(32);
  place(tw);

  auto* slit = MakeGraph(page, "Moving slit, width 10, step 5");
  Curve(slit, 0, 37, 80, [](double x) { return std::sin(x); });
  TQyAxis* sx = slit->GetPrimaryXAxis();
  sx->SetStart(0);
  sx->SetStop(10);
  sx->SetMovingSlitWidth(10);
  sx->SetMovingSlitIncrement(5);
  sx->SetStopEnd(TQyAxisEnd::MovingSlit);
  place(slit);

  auto* many = MakeGraph(page, "Four sides, two axes left");
  Curve(many, -3, 3, 100, [](double x) { return x * x * x; });
  TQyAxis* top = ExtraAxis(many, TQyAxisPosition::Top, "Top");
  TQyAxis* right = ExtraAxis(many, TQyAxisPosition::Right, "Right");
  TQyAxis* left2 = ExtraAxis(many, TQyAxisPosition::Left, "x1000");
  top->SetMasterAxis(many->GetPrimaryXAxis());
  right->SetMasterAxis(many->GetPrimaryYAxis());
  left2->SetMasterAxis(many->GetPrimaryYAxis());
  left2->SetSlaveSlope(1000);
  right->SetTicksPointToData(true);
  place(many);
  return page;
}
} // namespace

QY_GALLERY_PAGE(axes, "02-axes", "Axes", BuildAxes, QSize(1600, 1000), 0,
                "Drag a frame in any graph to zoom: every scale finds new ticks; click beside the data to go back");
