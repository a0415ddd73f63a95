// Vectors bound to a column of a real SQLite database through the query and table models.
#include "QyTestGraph.h"
#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QStandardItemModel>
#include <QyListLink.h>
#include <QySeries.h>
#include <QyVectors.h>
#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <optional>

namespace {

// The value of row i of the test table, or nothing where the row holds NULL.
std::optional<double> RowValue(int i, int rows) {
  if (i == 10 || i == 150 || i == rows - 1) return std::nullopt;
  return 5.0 + (i * 37 % 101) * 0.25;
}

// An in-memory database with table t(id, y, other) of `rows` rows; the connection goes with it.
class Database : public ::testing::Test {
protected:
  static constexpr int Rows = 300; // more than one batch of a query model (256)
  void SetUp() override {
    name = QString("qy_db_%1").arg(++serial);
    {
      QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", name);
      db.setDatabaseName(":memory:");
      ASSERT_TRUE(db.open()) << db.lastError().text().toStdString();
    }
    Exec("CREATE TABLE t (id INTEGER PRIMARY KEY, y REAL, other REAL)");
    Exec("BEGIN");
    QSqlQuery q(Db());
    q.prepare("INSERT INTO t (id, y, other) VALUES (?, ?, ?)");
    for (int i = 0; i < Rows; ++i) {
      q.addBindValue(i);
      const auto v = RowValue(i, Rows);
      q.addBindValue(v ? QVariant(*v) : QVariant(QMetaType(QMetaType::Double)));
      q.addBindValue(-i);
      ASSERT_TRUE(q.exec()) << q.lastError().text().toStdString();
    }
    Exec("COMMIT");
  }
  void TearDown() override { QSqlDatabase::removeDatabase(name); }
  QSqlDatabase Db() const { return QSqlDatabase::database(name); }
  void Exec(const QString& sql) {
    QSqlQuery q(Db());
    ASSERT_TRUE(q.exec(sql)) << q.lastError().text().toStdString();
  }
  // The table sorted by id.
  void SelectTable(QSqlTableModel& model) {
    model.setTable("t");
    model.setSort(0, Qt::AscendingOrder);
    ASSERT_TRUE(model.select());
  }
  // A line series (X by index) over a vector of the graph bound to column y of `model`.
  TQyLineSeries* Show(QyTestGraph& g, QAbstractItemModel* model) {
    TQyLineSeries* s = g.Add<TQyLineSeries>({}, {});
    auto* y = static_cast<TQyDoubleVector*>(s->GetYData());
    y->SetDataSource(model);
    y->SetDataField("y");
    return s;
  }
  static double MaxOf(int rows) {
    double m = -1e300;
    for (int i = 0; i < rows; ++i)
      if (auto v = RowValue(i, rows)) m = std::max(m, *v);
    return m;
  }
  QString name;
  static inline int serial = 0;
};

TEST_F(Database, QueryModelReadsEveryRowNullsBecomeOutliersLastNullDropped) {
  QSqlQueryModel model;
  model.setQuery("SELECT id, y FROM t ORDER BY id", Db());
  ASSERT_LT(model.rowCount(), Rows); // the model delivers in batches: the reading must fetch more
  TQyDoubleVector v;
  v.SetDataSource(&model);
  v.SetDataField("Y"); // field names match case-insensitively
  EXPECT_TRUE(v.FromDatabase());
  EXPECT_TRUE(v.DatabaseChanged());
  EXPECT_EQ(v.Count(), 0); // nothing is read before the next paint
  v.UpdateDB();
  ASSERT_EQ(v.Count(), Rows - 1); // the NULL in the last row is dropped
  EXPECT_EQ(v.Capacity(), Rows);  // raised to the row count
  double lo = 1e300, hi = -1e300, sum = 0;
  for (int i = 0; i < Rows - 1; ++i) {
    const auto expected = RowValue(i, Rows);
    EXPECT_EQ(v.GetValue(i), expected.value_or(0.0)) << i;
    EXPECT_EQ(v.IsOutlier(i), !expected) << i;
    if (expected) lo = std::min(lo, *expected), hi = std::max(hi, *expected), sum += *expected;
  }
  EXPECT_EQ(v.Outliers().Count(), 2);
  EXPECT_EQ(v.GetMinimum(), lo); // outliers stay out of the plain statistics
  EXPECT_EQ(v.GetMaximum(), hi);
  EXPECT_DOUBLE_EQ(v.GetSum(), sum);
  EXPECT_EQ(v.GetMinimumIncludingOutliers(), 0.0);
  // The rows fetched during the reading do not mark the column as changed again.
  EXPECT_FALSE(v.DatabaseChanged());
  EXPECT_FALSE(v.InDatabaseUpdate());
  // Without a change of the model, a further call reads nothing.
  v.SetValue(0, 999);
  v.UpdateDB();
  EXPECT_EQ(v.GetValue(0), 999);
}

TEST_F(Database, TableRowsInsertedAndRemovedShowAfterTheNextPaint) {
  QSqlTableModel model(nullptr, Db());
  SelectTable(model);
  QyTestGraph g;
  TQyLineSeries* s = Show(g, &model);
  auto* y = static_cast<TQyDoubleVector*>(s->GetYData());
  g.Render();
  ASSERT_EQ(y->Count(), Rows - 1);
  EXPECT_EQ(s->LimitMaxY(), MaxOf(Rows));
  EXPECT_EQ(s->LimitMaxX(), Rows - 2);

  // A row arrives through the model while the graph shows the data.
  QSqlRecord rec = model.record();
  rec.setValue("id", Rows);
  rec.setValue("y", 1000.0);
  rec.setValue("other", 0.0);
  ASSERT_TRUE(model.insertRecord(-1, rec)) << model.lastError().text().toStdString();
  EXPECT_TRUE(y->DatabaseChanged());
  EXPECT_EQ(y->Count(), Rows - 1); // nothing changes before the paint
  EXPECT_EQ(s->LimitMaxY(), MaxOf(Rows));
  g.Render();
  // The former last row's NULL is now inside: it becomes an outlier, and the new row shows.
  ASSERT_EQ(y->Count(), Rows + 1);
  EXPECT_TRUE(y->IsOutlier(Rows - 1));
  EXPECT_EQ(y->GetValue(Rows), 1000.0);
  EXPECT_EQ(s->LimitMaxY(), 1000.0);
  EXPECT_EQ(s->LimitMaxX(), Rows);
  EXPECT_GE(g.Y()->GetStop(), 1000.0);

  // Rows removed behind the model's back, then the table selected anew: the extent shrinks.
  Exec(QString("DELETE FROM t WHERE id >= %1").arg(Rows - 1));
  ASSERT_TRUE(model.select());
  g.Render();
  EXPECT_EQ(y->Count(), Rows - 1);
  EXPECT_EQ(s->LimitMaxY(), MaxOf(Rows));
  EXPECT_LT(g.Y()->GetStop(), 1000.0);
}

TEST_F(Database, OnlyChangesOfTheBoundColumnMarkIt) {
  QSqlTableModel model(nullptr, Db());
  model.setEditStrategy(QSqlTableModel::OnManualSubmit);
  SelectTable(model);
  TQyDoubleVector v;
  v.SetDataSource(&model);
  v.SetDataField("y");
  v.UpdateDB();
  ASSERT_FALSE(v.DatabaseChanged());
  ASSERT_TRUE(model.setData(model.index(3, 2), 77.0)); // column "other"
  EXPECT_FALSE(v.DatabaseChanged());
  ASSERT_TRUE(model.setData(model.index(3, 1), 77.0)); // column "y"
  EXPECT_TRUE(v.DatabaseChanged());
  v.UpdateDB();
  EXPECT_EQ(v.GetValue(3), 77.0); // the model's pending edit is what the chart shows
}

TEST_F(Database, ModelResetAndAMissingColumnWaitForTheNextReading) {
  QSqlQueryModel model;
  model.setQuery("SELECT id, y FROM t ORDER BY id", Db());
  TQyDoubleVector v;
  v.SetDataSource(&model);
  v.SetDataField("y");
  v.UpdateDB();
  ASSERT_EQ(v.Count(), Rows - 1);
  // A new query with the same number of rows is still a change of the values.
  model.setQuery("SELECT id, other AS y FROM t ORDER BY id", Db());
  EXPECT_TRUE(v.DatabaseChanged());
  v.UpdateDB();
  ASSERT_EQ(v.Count(), Rows);
  EXPECT_EQ(v.GetValue(Rows - 1), -(Rows - 1));
  EXPECT_FALSE(v.HasOutliers());
  // A query without the column: the reading waits, the binding stays.
  model.setQuery("SELECT id FROM t WHERE id < 5", Db());
  v.UpdateDB();
  EXPECT_TRUE(v.FromDatabase());
  EXPECT_TRUE(v.DatabaseChanged());
  EXPECT_EQ(v.Count(), Rows); // the old values stay until the column is there again
  model.setQuery("SELECT y FROM t WHERE id < 5 ORDER BY id", Db());
  v.UpdateDB();
  ASSERT_EQ(v.Count(), 5);
  EXPECT_EQ(v.GetValue(4), *RowValue(4, Rows));
}

TEST_F(Database, ARemovedDataSourceLeavesTheValues) {
  QyTestGraph g;
  auto* model = new QSqlQueryModel;
  model->setQuery("SELECT y FROM t ORDER BY id", Db());
  TQyLineSeries* s = Show(g, model);
  auto* y = static_cast<TQyDoubleVector*>(s->GetYData());
  g.Render();
  ASSERT_EQ(y->Count(), Rows - 1);
  delete model;
  EXPECT_FALSE(y->FromDatabase());
  EXPECT_EQ(y->GetDataSource(), nullptr);
  EXPECT_EQ(y->DataLink()->DataSource(), nullptr);
  y->UpdateDB();
  g.Render();
  EXPECT_EQ(y->Count(), Rows - 1);
  EXPECT_EQ(s->LimitMaxY(), MaxOf(Rows));

  // A binding without a column name reads nothing until the name is given.
  QSqlQueryModel other;
  other.setQuery("SELECT y FROM t", Db());
  TQyDoubleVector w;
  w.SetDataSource(&other);
  w.UpdateDB();
  EXPECT_FALSE(w.FromDatabase());
  w.SetDataField("y");
  w.UpdateDB();
  EXPECT_EQ(w.Count(), Rows - 1);
}

TEST_F(Database, PublishedBindingProperties) {
  QSqlQueryModel model;
  model.setQuery("SELECT y FROM t", Db());
  TQyDoubleVector v;
  ASSERT_TRUE(v.setProperty("DataSource", QVariant::fromValue<QAbstractItemModel*>(&model)));
  ASSERT_TRUE(v.setProperty("DataField", "y"));
  v.UpdateDB();
  EXPECT_EQ(v.Count(), Rows - 1);
  ASSERT_TRUE(v.setProperty("Increment", 1000));
  EXPECT_EQ(v.Increment(), 1000);
  ASSERT_TRUE(v.setProperty("Capacity", 10)); // below Count: ignored
  EXPECT_EQ(v.Capacity(), Rows);
}

} // namespace

// Values as the library counts them: numbers stored as text read with a point, dates and times
// in days from 1899-12-30 with the time counted forward from the day, also before that day.
TEST(ListLink, FieldValuesAsNumbers) {
  QStandardItemModel model(0, 1);
  model.setHorizontalHeaderLabels({"When"});
  const QVariant cells[] = {QDate(1899, 12, 30), QDateTime(QDate(1900, 1, 1), QTime(12, 0)),
                            QDateTime(QDate(1899, 12, 29), QTime(6, 0)), QString(" 3.5 "),
                            QString("abc"), 42};
  for (const QVariant& c : cells) {
    auto* item = new QStandardItem;
    item->setData(c, Qt::EditRole);
    model.appendRow(item);
  }
  TQyDoubleVector v;
  v.SetDataSource(&model);
  v.SetDataField("when");
  v.UpdateDB();
  ASSERT_EQ(v.Count(), 6);
  const double values[] = {0.0, 2.5, -1.25, 3.5, 0.0, 42.0};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(v.GetValue(i), values[i]) << i;
  EXPECT_TRUE(v.IsOutlier(4)); // no number: like a null
  // Appending to an item model marks the column; the reading waits for the next paint.
  model.appendRow(new QStandardItem("7"));
  EXPECT_TRUE(v.DatabaseChanged());
  EXPECT_EQ(v.Count(), 6);
  v.UpdateDB();
  EXPECT_EQ(v.GetValue(6), 7.0);
}
