// Text the parser cannot trust: random strings, very long formulas, deep nesting. Each must end
// in a value or in one of the system's exceptions, never in a crash or a hang.
#include "ExprTestUtil.h"
#include <random>

namespace {
// Parses and evaluates; true for a value, false for one of the expected exceptions.
bool ParsesToValue(const QString& formula) {
  try {
    TQyFunctionParser p;
    p.SetExpression(formula);
    const double v = p.GetResult();
    EXPECT_TRUE(std::isfinite(v)) << formula.toStdString();
    return true;
  } catch (const EMathError&) {
  } catch (const EExternal&) {
  }
  return false;
}

QString Repeat(const QString& unit, int n) { return unit.repeated(n); }
} // namespace

TEST(ExprRobustness, RandomTextGivesAValueOrAnError) {
  const QString alphabet = "0123456789+-*/^()[]E.eXsinSINcoPpiR ,;%<>";
  std::mt19937 random(20240611);
  int values = 0;
  for (int round = 0; round < 20000; ++round) {
    const int length = 1 + static_cast<int>(random() % 24);
    QString text;
    for (int i = 0; i < length; ++i) text += alphabet[static_cast<qsizetype>(random() % alphabet.size())];
    values += ParsesToValue(text);
  }
  EXPECT_GT(values, 100); // the alphabet does produce readable formulas
  // Formulas of valid pieces in random order.
  const char* pieces[] = {"1", "2.5", "E", "PI", "SIN(", "SQRT(", "(", ")", "+", "-", "*", "/", "^", "1E-3", "X"};
  for (int round = 0; round < 20000; ++round) {
    QString text;
    const int count = 1 + static_cast<int>(random() % 16);
    for (int i = 0; i < count; ++i) text += pieces[random() % std::size(pieces)];
    ParsesToValue(text);
  }
}

TEST(ExprRobustness, LongOperatorChainsParseAndEvaluate) {
  // 100000 characters, 50000 operators: no deep recursion in parsing, evaluating or freeing.
  EXPECT_EQ(Eval("1" + Repeat("+1", 49999)), 50000);
  EXPECT_EQ(Eval("1" + Repeat("-1", 49999)), 1 - 49999);
  EXPECT_EQ(Eval("1" + Repeat("*1", 49999)), 1);
  EXPECT_EQ(Eval("2" + Repeat("^1", 49999)), 2);
  EXPECT_EQ(Eval("1" + Repeat("/2*2", 25000)), 1);
  EXPECT_EQ(Eval(Repeat("(1)+", 25000) + "0"), 25000);
  EXPECT_EQ(Eval(Repeat("Sin(0)+", 12000) + "1"), 1);
}

TEST(ExprRobustness, NestingBeyondTheLimitIsAParsingError) {
  const int limit = TQyFunctionParser::MaxNesting;
  EXPECT_EQ(Eval(Repeat("(", limit / 2) + "3" + Repeat(")", limit / 2)), 3);
  for (const QString& text : {Repeat("(", 50000) + "1" + Repeat(")", 50000),
                              Repeat("Sqrt(", 30000) + "1" + Repeat(")", 30000),
                              Repeat("1+(", 30000) + "1" + Repeat(")", 30000)}) {
    try {
      Eval(text);
      FAIL() << "no exception";
    } catch (const EMathError& e) {
      EXPECT_TRUE(e.Message().startsWith("Parsing error in function:\r"));
    }
  }
  EXPECT_THROW(Eval(Repeat("(", 100000)), EMathError); // the count catches this one first
}
