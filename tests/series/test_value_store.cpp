// The storage beneath vectors keeps every written value through growth and shrinking across the
// boundary between heap blocks and huge-page mappings.
#include "QyValueStore.h"
#include <cstdint>
#include <gtest/gtest.h>

TEST(ValueStore, KeepsValuesAcrossHeapAndMappedBlocks) {
  constexpr size_t Huge = TQyValueStore::HugePage / sizeof(double); // values per 2 MiB
  struct Step {
    size_t Room, Written;
    bool Mapped;
  };
  const Step steps[] = {
      {1000, 1000, false},         {Huge - 1, Huge - 1, false}, {Huge, Huge, true},
      {3 * Huge + 7, 3 * Huge, true}, {9 * Huge, 9 * Huge, true},  {2 * Huge, 2 * Huge, true},
      {Huge / 2 + 1, Huge / 2, true},  {Huge / 4, Huge / 4, false}, {5 * Huge, 5 * Huge, true}};
  TQyValueStore store;
  size_t written = 0;
  for (const Step& s : steps) {
    SCOPED_TRACE(s.Room);
    store.resize(s.Room);
    EXPECT_EQ(store.Mapped(), s.Mapped);
    if (store.Mapped()) EXPECT_EQ(reinterpret_cast<uintptr_t>(store.data()) % TQyValueStore::HugePage, 0u);
    written = std::min(written, s.Room);
    for (size_t i = 0; i < written; i += 997) ASSERT_EQ(store[i], double(i) * 0.5) << i;
    store.Expose(s.Written);
    for (size_t i = written; i < s.Written; ++i) ASSERT_EQ(store[i], 0.0);
    for (size_t i = written; i < s.Written; ++i) store[i] = double(i) * 0.5;
    written = std::max(written, s.Written);
  }
}
