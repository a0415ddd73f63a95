#pragma once
// A shown graph with fixed axes and real mouse drags, for the marker tests.
#include "QyTestGraph.h"
#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QyRounding.h>
#include <QyArrowMarker.h>
#include <QyMarkers.h>

struct QyMarkerGraph : QyTestGraph {
  QyMarkerGraph(int w = 600, int h = 400) : QyTestGraph(w, h) {
    Fix(X(), 0, 10);
    Fix(Y(), 0, 100);
    form->resize(w, h);
    form->show();
    (void)QTest::qWaitForWindowExposed(form.get());
  }
  // Lays out and computes the series' points, as the first picture does.
  void Settle() { Render(); }
  template <class M> M* Marker(const char* name) {
    auto* m = new M(graph);
    m->setObjectName(name);
    m->show();
    return m;
  }
  // A marker on the primary axes at (x, y), laid out.
  template <class M> M* Placed(const char* name, double x, double y) {
    M* m = Marker<M>(name);
    m->SetXAxis(X());
    m->SetYAxis(Y());
    m->SetX(x);
    m->SetY(y);
    Settle();
    return m;
  }
  // A left drag from `from` by `by` (graph pixels), with `keys` held. As the application routes
  // it: the widget under the press (masks respected) takes the press and, grabbing the mouse,
  // every move and the release, wherever it has moved meanwhile.
  QWidget* Drag(QPoint from, QPoint by, Qt::KeyboardModifiers keys = {}) {
    QWidget* w = graph->childAt(from);
    if (!w) w = graph;
    auto at = [&](QPoint p) { return w->mapFrom(graph, p); };
    QTest::mousePress(w, Qt::LeftButton, keys, at(from));
    for (int step = 1; step <= 4; ++step) Move(w, at(from + by * step / 4), keys);
    QTest::mouseRelease(w, Qt::LeftButton, keys, at(from + by));
    return w;
  }
  static void Move(QWidget* w, QPoint local, Qt::KeyboardModifiers keys) {
    QMouseEvent e(QEvent::MouseMove, local, w->mapToGlobal(local), Qt::NoButton, Qt::LeftButton, keys);
    QApplication::sendEvent(w, &e);
  }
  // The pixel of an axis value as the axis maps it, rounded as the hot spot is.
  static int Px(TQyAxis* a, double v) { return RoundI(a->NumberToWorld(v)); }
};
