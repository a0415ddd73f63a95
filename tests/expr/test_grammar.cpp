// How the parser splits text: precedence, signs, numbers with exponents, brackets, names, and
// the messages for text it cannot read.
#include "QyExpect.h"
#include "ExprTestUtil.h"
#include <bit>
#include <clocale>
#include <string>
#include <cstdint>

TEST(ExprGrammar, PrecedenceSignsExponentsBracketsAndCase) {
  const struct { const char* text; double value; } cases[] = {
      // Precedence and associativity; the last "^" splits: (2^3)^2.
      {"2+3*4", 14}, {"(2+3)*4", 20}, {"2-3-4", -5}, {"2/4/2", 0.25}, {"8/2*4", 16}, {"2^3^2", 64},
      {"2*3^2", 18}, {"10-2^3*2", -6},
      // Signs bind weaker than power and belong to exponents.
      {"-2^2", -4}, {"2^-1", 0.5}, {"2^+3", 8}, {"+5-2", 3}, {"-3*2", -6}, {"2*(-3)", -6},
      // Numbers with exponents. The additive rule gives up on "1+2*1E-3" (see below), but a
      // product splits it, reading its left side "1+2" from the start again: 3 * 1E-3.
      {"1E-3", 0.001}, {"1e-3", 0.001}, {"2.5E+2", 250}, {"1E-3+2", 2.001}, {"3*1E-3", 3 * 0.001},
      {"1+2*1E-3", 3 * 0.001},
      // Brackets of both kinds, blanks and case.
      {"[1+2]*[3+4]", 21}, {"((((7))))", 7}, {"sin[0]", 0}, {"SIN(0)", 0}, {"Sin (0)", 0}, {" 1 +  2 ", 3}};
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(Eval(c.text), c.value) << c.text;
  TQyFunctionParser p;
  p.SetExpression("sin [ 1 ]");
  EXPECT_EQ(p.Expression(), "sin(1)"); // blanks go, brackets turn round
}

TEST(ExprGrammar, NumbersIgnoreTheMachineLocale) {
  const char* old = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = old ? old : "C";
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) std::setlocale(LC_NUMERIC, "C");
  EXPECT_EQ(Eval("1.5*2"), 3);
  EXPECT_EQ(ParseFailure<EMathError>("1,5"), ParseError("1,5"));
  std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(ExprGrammar, ParserConstants) {
  const double pi = Eval("PI"), e = Eval("e");
  EXPECT_EQ(std::tuple(std::bit_cast<std::uint64_t>(pi), std::bit_cast<std::uint64_t>(e), std::bit_cast<std::uint64_t>(Eval("E"))),
            std::tuple(0x400921FB54442D18u, 0x4005BF0A8B145774u, 0x4005BF0A8B145774u));
  EXPECT_EQ(Eval("2*pi"), 2 * pi);
  EXPECT_EQ(Eval("E-1"), e - 1); // not an exponent: no digit before the "E"
  for (int i = 0; i < 200; ++i) ASSERT_TRUE(Eval("Random") >= 0.0 && Eval("Random") < 1.0);
  // Random is a name, not a function.
  EXPECT_EQ(ParseFailure<EMathError>("Random()"), ParseError("RANDOM()"));
}

TEST(ExprGrammar, BracketCountMessages) {
  // The negative count is printed as its unsigned 32-bit image.
  for (auto [text, message] : {std::pair{"((1)", "1 closing brackets missing"}, {"(((1", "3 closing brackets missing"},
                               {"(1))", "4294967295 opening brackets missing"}, {"1))", "4294967294 opening brackets missing"}})
    EXPECT_EQ(ParseFailure<EMathError>(text), message) << text;
  // Only the sum counts: ")(" passes the count and fails when read.
  EXPECT_EQ(ParseFailure<EMathError>(")("), ParseError(")("));
}

TEST(ExprGrammar, UnreadablePiecesAreNamedInTheMessage) {
  const struct { const char* text; const char* piece; } cases[] = {
      // The "-" of "2*-3" is taken for a subtraction whose left side "2*" lacks an operand.
      {"2*-3", "2*"}, {"2--3", "2-"},
      // The last additive operator looks like an exponent sign: the additive rule gives up for
      // the whole text, which no other rule can read. A number too large for a double is none.
      {"2+1E-3", "2+1E-3"}, {"X1E-3", "X1E-3"}, {"1E999", "1E999"},
      {"1+Foo", "FOO"}, {"Foo(2)*3", "FOO(2)"}, {"1.2.3", "1.2.3"},
      // The left operand is built before the right one: the leftmost bad piece is named.
      {"Foo+Bar", "FOO"}, {"1+Foo-Bar*2", "FOO"}, {"Foo*Bar^2", "FOO"}, {"-Foo*Bar", "FOO"},
      {"2^Foo^Bar", "FOO"}, {"Foo+2*", "FOO"},
      // A function call followed by more text drops the last ")" and fails on the text inside.
      {"Sin(1)Cos(2)", "1)COS(2"}, {"Sin(1)2", "1)"},
      // Empty operands fail with their piece.
      {"2+", "2+"}, {"*3", "*3"}, {"-", "-"}, {"()", "()"}, {"Sin()", "SIN()"}, {"2^", "2^"}, {"1+(2*)", "2*"}};
  for (const auto& c : cases) EXPECT_EQ(ParseFailure<EMathError>(c.text), ParseError(c.piece)) << c.text;
}

TEST(ExprParser, ExpressionLifecycle) {
  TQyFunctionParser p;
  EXPECT_EQ(p.StartNode(), nullptr);
  EXPECT_EQ(QyMessageOf<EExternal>([&] { p.GetResult(); }), "No valid expression defined");
  p.SetExpression("1+1");
  EXPECT_EQ(p.Result(), 2);
  const TQyNode* tree = p.StartNode();
  p.SetExpression("1+1"); // unchanged and free of blanks: not parsed again
  EXPECT_EQ(p.StartNode(), tree);
  EXPECT_THROW(p.SetExpression("1+"), EMathError);
  EXPECT_EQ(p.Expression(), "1+"); // the bad text stays, the tree is gone
  EXPECT_THROW(p.GetResult(), EExternal);
  EXPECT_THROW(p.SetExpression("(2"), EMathError);
  EXPECT_EQ(p.StartNode(), nullptr);
  p.SetExpression("3");
  EXPECT_EQ(p.Result(), 3);
  p.SetExpression("");
  EXPECT_THROW(p.GetResult(), EExternal);
  p.SetExpression("4");
  p.SetExpression("   "); // blanks only: no formula, not the previous one
  EXPECT_THROW(p.GetResult(), EExternal);
}

TEST(ExprParser, PrivateFunctionsAndVariables) {
  TQyFunctionParser p;
  double x = 2;
  AddVariableToList("X", "X-Value", nullptr, [&x] { return x; }, p.VariablesList);
  AddFunctionToList("Twice", "", [](double v) { return 2 * v; }, p.FunctionsList);
  p.SetExpression("twice(x)^2+x");
  EXPECT_EQ(p.Result(), 18);
  x = 3; // the tree reads the variable at each evaluation
  EXPECT_EQ(p.Result(), 39);
  // The parser's own function is found before the global one of the same name.
  AddFunctionToList("Sqr", "", [](double v) { return v + 100; }, p.FunctionsList);
  p.SetExpression("sqr(1)");
  EXPECT_EQ(p.Result(), 101);
}
