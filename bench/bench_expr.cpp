// Evaluation of a parsed formula, the inner loop of a fit.
#include <QyParseFkt.h>
#include <benchmark/benchmark.h>

static void BM_ExprEvaluateParsedTree(benchmark::State& state) {
  TQyFunctionParser parser;
  double a = 1.5, b = 0.25, c = -2.0, d = 3.0, x = 0.0;
  for (auto [name, value] : {std::pair{"A", &a}, {"B", &b}, {"C", &c}, {"D", &d}, {"X", &x}})
    AddVariableToList(name, "", nullptr, [v = value] { return *v; }, parser.VariablesList);
  parser.SetExpression("A*Exp(-B*X)+C*Sin(D*X)");
  for (auto _ : state) {
    benchmark::DoNotOptimize(parser.GetResult());
    x += 1e-3;
    if (x > 10) x = 0;
  }
}
BENCHMARK(BM_ExprEvaluateParsedTree);

static void BM_ExprParse(benchmark::State& state) {
  for (auto _ : state) {
    TQyFunctionParser parser;
    parser.SetExpression("2*Sin(0.5)+Exp(-0.25*3)^2-Sqrt(7)/Ln(3)");
    benchmark::DoNotOptimize(parser.StartNode());
  }
}
BENCHMARK(BM_ExprParse);
