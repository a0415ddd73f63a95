// Evaluating a parsed formula allocates nothing: a fit evaluates it many thousands of times.
// This test program counts every global allocation to prove it.
#include "ExprTestUtil.h"
#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> Allocations{0};
}

void* operator new(std::size_t size) {
  ++Allocations;
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

TEST(ExprEvaluationCost, EvaluationAllocatesNothing) {
  TQyFunctionParser p;
  double coefficients[] = {1.5, 0.25, -2.0, 3.0};
  double x = 0;
  AddVariableToList("X", "", nullptr, [&x] { return x; }, p.VariablesList);
  for (int i = 0; i < 4; ++i)
    AddVariableToList(QString(QChar('A' + i)), "", nullptr, [&coefficients, i] { return coefficients[i]; },
                      p.VariablesList);
  p.SetExpression("A*Exp(-B*X)+C*Sin(D*X)+Abs(-Random)*0+Pi^2/e");
  const long before = Allocations.load();
  double sum = 0;
  for (int i = 0; i < 1000; ++i) {
    x = i * 0.01;
    sum += p.GetResult();
  }
  EXPECT_EQ(Allocations.load() - before, 0);
  EXPECT_TRUE(std::isfinite(sum));
  // The counter does count: parsing allocates.
  p.SetExpression("A+B");
  EXPECT_GT(Allocations.load() - before, 0);
}
