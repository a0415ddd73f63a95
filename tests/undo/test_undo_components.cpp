// Whole components on the undo stack: a deleted series made again from its record, and a created
// one freed by undo and made again by redo.
#include <QyPixelProbe.h>
#include <QyTestGraph.h>
#include <QyUndoStack.h>
#include <QyPointSeries.h>
#include <QyStyles.h>
#include <gtest/gtest.h>

namespace {

struct Named {
  QyTestGraph g;
  TQyUndoStack stack{g.form.get()};
  TQyLineSeries* series;

  Named() {
    stack.setObjectName("Undo1");
    series = g.AddSeries({0, 1, 2, 3}, {0, 3, 1, 2}, 0xFF0000FF);
    series->GetXData()->setObjectName("Xs");
    series->GetYData()->setObjectName("Ys");
    series->GetLine()->SetWidth(3);
    series->SetCaption("Blue line");
  }
  int BluePixels() { return QyProbe::Count(g.Render(), g.graph->rect(), QColor(0, 0, 255), 40); }
};

TEST(UndoComponents, DeletedSeriesComesBackAndDrawsAgain) {
  Named n;
  const int drawn = n.BluePixels();
  ASSERT_GT(drawn, 50);
  n.stack.PushComponent(n.series, "Delete series");
  delete n.series;
  ASSERT_EQ(n.BluePixels(), 0);

  n.stack.Undo(0);
  auto* back = n.g.form->findChild<TQyLineSeries*>("Series1");
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(std::tuple(back->GetCaption(), back->GetLine()->GetWidth(), back->GetXAxis(), back->GetYAxis(),
                       back->GetYData()->objectName()),
            std::tuple(QString("Blue line"), 3.0f, n.g.X(), n.g.Y(), QString("Ys")));
  EXPECT_EQ(n.BluePixels(), drawn);

  // Redo deletes it again.
  QPointer<QObject> alive = back;
  n.stack.Redo(0);
  EXPECT_TRUE(alive.isNull());
  EXPECT_EQ(n.BluePixels(), 0);
}

TEST(UndoComponents, RedoMakesAFreedComponentAgain) {
  Named n;
  auto* created = new TQyPointSeries(n.g.form.get());
  created->setObjectName("Points1");
  created->SetXAxis(n.g.X());
  created->SetYAxis(n.g.Y());
  created->SetYData(n.series->GetYData());
  created->PointSymbol()->SetPointSymbol(TQyPointSymbol::Star);
  n.stack.PushFreeComponent(created, "New series");

  QPointer<QObject> alive = created;
  n.stack.Undo(0);
  EXPECT_TRUE(alive.isNull());
  n.stack.Redo(0);
  auto* again = n.g.form->findChild<TQyPointSeries*>("Points1");
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(std::tuple(again->PointSymbol()->GetPointSymbol(), again->GetYData(), again->GetXAxis()),
            std::tuple(TQyPointSymbol::Star, n.series->GetYData(), n.g.X()));
}

} // namespace
