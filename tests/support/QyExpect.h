#pragma once
// The message of the exception of type E that `f` raises, for comparison with the expected text.
#include <QString>

template <class E, class F> QString QyMessageOf(F&& f) {
  try {
    f();
  } catch (const E& e) {
    return e.Message();
  }
  return "no exception";
}
