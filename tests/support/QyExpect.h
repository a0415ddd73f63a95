#pragma once
// The message of the exception of type E that `f` raises, for comparison with the expected text.
#include <string>

template <class E, class F> std::string QyMessageOf(F&& f) {
  try {
    f();
  } catch (const E& e) {
    return e.Message().toStdString();
  }
  return "no exception";
}
