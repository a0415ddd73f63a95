// Filling vectors: appending values one by one, and reading a bound database column.
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QyVectors.h>
#include <benchmark/benchmark.h>

static void BM_VectorAdd(benchmark::State& state) {
  const int n = int(state.range(0));
  for (auto _ : state) {
    TQyDoubleVector v;
    for (int i = 0; i < n; ++i) v.Add(i * 0.5);
    benchmark::DoNotOptimize(v.GetMaximum()); // statistics included, once over the tail
  }
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_VectorAdd)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

// One reading of a column of n rows through a query model (fetching included).
static void BM_VectorUpdateDB(benchmark::State& state) {
  const int n = int(state.range(0));
  {
    QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "bench_vectors");
    db.setDatabaseName(":memory:");
    db.open();
    QSqlQuery q(db);
    q.exec("CREATE TABLE t (id INTEGER PRIMARY KEY, y REAL)");
    q.exec("BEGIN");
    q.prepare("INSERT INTO t (y) VALUES (?)");
    for (int i = 0; i < n; ++i) {
      q.addBindValue(i * 0.25);
      q.exec();
    }
    q.exec("COMMIT");
  }
  {
    QSqlQueryModel model;
    TQyDoubleVector v;
    v.SetDataSource(&model);
    v.SetDataField("y");
    for (auto _ : state) {
      model.setQuery("SELECT y FROM t", QSqlDatabase::database("bench_vectors")); // marks the column
      v.UpdateDB();
      if (v.Count() != n) state.SkipWithError("rows missing");
    }
    state.SetItemsProcessed(state.iterations() * n);
  }
  QSqlDatabase::removeDatabase("bench_vectors");
}
BENCHMARK(BM_VectorUpdateDB)->Arg(100'000)->Unit(benchmark::kMillisecond);
