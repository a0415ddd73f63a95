#include "QyTestGraph.h"
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QyExceptions.h>
#include <gtest/gtest.h>

// Rubrics come from a column of a real SQLite table, follow a re-query at the next layout, and
// a bound axis refuses a list set by hand.
TEST(AxisRubricsFromDatabase, ReadAtLayoutAndFollowTheModel) {
  QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "rubrics");
  db.setDatabaseName(":memory:");
  ASSERT_TRUE(db.open());
  QSqlQuery q(db);
  ASSERT_TRUE(q.exec("create table months (name text, value real)"));
  for (int i = 0; i < 300; ++i) // more than one fetch batch
    ASSERT_TRUE(q.exec(QString("insert into months values (%1, %2)")
                           .arg(i == 5 ? "null" : QString("'M%1'").arg(i)).arg(i)));
  {
    QSqlQueryModel model;
    model.setQuery("select name, value from months order by value", db);
    QyTestGraph f;
    TQyAxis* x = f.X();
    x->SetScaling(TQyAxisScaling::Rubrics);
    x->SetRubricsField("NAME"); // the header, matched without regard to case
    x->SetDataSource(&model);
    EXPECT_TRUE(x->GetRubrics().isEmpty()); // nothing is read before the layout
    f.AddSeries({0, 1, 2, 3}, {1, 2, 3, 4});
    f.Render();
    ASSERT_EQ(x->GetRubrics().size(), 300);
    EXPECT_EQ(x->GetRubrics()[0], "M0");
    EXPECT_EQ(x->GetRubrics()[5], ""); // a null is an empty rubric
    EXPECT_EQ(x->GetRubrics()[299], "M299");
    EXPECT_THROW(x->SetRubrics({"a"}), EExternal);

    model.setQuery("select name, value from months where value < 3 order by value", db);
    EXPECT_EQ(x->GetRubrics().size(), 300); // still the old list until the next paint
    f.Render();
    EXPECT_EQ(x->GetRubrics(), (QStringList{"M0", "M1", "M2"}));
    QStringList labels;
    for (int i = 0; i < x->LabelCount(); ++i) labels << x->Label(i).PlainText();
    EXPECT_TRUE(labels.contains("M1"));
  }
  db.close();
  db = QSqlDatabase();
  QSqlDatabase::removeDatabase("rubrics");
}
