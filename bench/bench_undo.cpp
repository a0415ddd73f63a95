// Undo history: recording under a limit, and undo and redo of many grouped entries.
#include <benchmark/benchmark.h>
#include <QyStyles.h>
#include <QyUndoStack.h>

// One recorded property change per iteration, the log held at Limit entries.
static void BM_UndoRecordWithLimit(benchmark::State& state) {
  TQyUndoStack stack;
  TQyLineSettings line(nullptr);
  line.SetUndoStack(&stack);
  float w = 1;
  for (auto _ : state) line.SetWidth(w += 1);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UndoRecordWithLimit);

// Undo and redo of 10^4 entries, each a group of three property changes, in one call each.
static void BM_UndoRedo10kGroups(benchmark::State& state) {
  TQyUndoStack stack;
  stack.SetLimit(0);
  stack.SetToMemoryStream(state.range(0) != 0);
  TQyLineSettings line(nullptr);
  line.SetUndoStack(&stack);
  for (int i = 0; i < 10000; ++i) {
    stack.StartGroup("Step");
    line.SetWidth(float(i % 5 + 2));
    line.SetColor(0xFF000000u + quint32(i));
    line.SetVisible(i % 2 == 0);
    stack.StopGroup();
  }
  for (auto _ : state) {
    stack.Undo(9999);
    stack.Redo(9999);
  }
  state.SetItemsProcessed(state.iterations() * 2 * 10000);
}
BENCHMARK(BM_UndoRedo10kGroups)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
