// Caption placeholders: strings, numeric expressions with formats, escapes, recursion.
#include "QyExpect.h"
#include "ExprTestUtil.h"

namespace {
class ExprPlaceholders : public ExprForm {
protected:
  void SetUp() override {
    ExprForm::SetUp();
    RegisterStringVariable(graph, "Name", "Internal name of the graph control", [this] { return graph->objectName(); });
    RegisterStringVariable(graph, "Caption", "", [this] { return caption; });
    RegisterDoubleVariable(graph, "Mean", "", [] { return 2.5; });
  }
  void TearDown() override { RemoveVariablesOfOwner(graph); }
  QString Parse(const QString& s) { return ParseVariables(s, &user); }

  QString caption = "Pressure";
  CaptionUser user;
};
} // namespace

TEST_F(ExprPlaceholders, StringsNumbersAndDoubledMarks) {
  const struct { const char* text; const char* result; } cases[] = {
      {"Graph <%form1.graph1.name%>: <%Form1.Graph1.Caption%>", "Graph Graph1: Pressure"},
      {"<%1+2%>", "3"}, {"m=<%Form1.Graph1.Mean*2%>!", "m=5!"}, {"no marks at all", "no marks at all"},
      {"", ""}, {"<%1%><%2%><%3%>", "123"},
      // Doubled marks are literals.
      {"a <%<% b", "a <% b"}, {"a %>%> b", "a %> b"}, {"<%<%x%>%> = <%2*3%>", "<%x%> = 6"},
      {"lone %> then <%4%>", "lone %> then 4"}};
  for (const auto& c : cases) EXPECT_EQ(Parse(c.text), c.result) << c.text;
  // The first value is empty: the placeholder right behind it is resolved all the same.
  caption = "";
  EXPECT_EQ(Parse("<%Form1.Graph1.Caption%><%1%>"), "1");
}

TEST_F(ExprPlaceholders, FormatsApplyToNumbersOnly) {
  EXPECT_EQ(Parse("<%Sin(Pi/2)+1;0.000%>"), "2.000");
  EXPECT_EQ(Parse("<%Form1.Graph1.Mean;0.0%> bar"), "2.5 bar");
  // On the string path the ";" is part of the name, so the name is not a string; the number
  // path then reads the name and fails.
  EXPECT_EQ(QyMessageOf<EMathError>([&] { Parse("<%Form1.Graph1.Caption;0.0%>"); }),
            ParseError("FORM1.GRAPH1.CAPTION"));
}

TEST_F(ExprPlaceholders, ErrorsReachTheCaller) {
  EXPECT_EQ(QyMessageOf<EExternal>([&] { Parse("open <%1+1"); }), "No valid expression defined");
  EXPECT_EQ(QyMessageOf<EMathError>([&] { Parse("<%Nobody%>"); }), ParseError("NOBODY"));
  EXPECT_THROW(Parse("<%%>"), EExternal);
  EXPECT_THROW(Parse("<%1/0%>"), EZeroDivide);
  QString result;
  EXPECT_THROW(FindTheVar("", &user, result), EExternal);
  EXPECT_EQ(result, "...");
}

TEST_F(ExprPlaceholders, StringValuesAreResolvedRecursivelyWithDependants) {
  QObject series(&form);
  series.setObjectName("Series1");
  TQyVariableObjects seriesDependants(&series);
  TQyVariableObjects graphDependants(graph);
  RegisterStringVariable(&series, "Caption", "", [] { return QString("in <%Form1.Graph1.Caption%>"); });
  EXPECT_EQ(Parse("<%Form1.Series1.Caption%>"), "in Pressure");
  EXPECT_TRUE(seriesDependants.Contains(&user)); // registered on each level
  EXPECT_TRUE(graphDependants.Contains(&user));
  RemoveVariablesOfOwner(&series);
}

TEST_F(ExprPlaceholders, SelfReferringStringsAreRefused) {
  caption = "loop <%Form1.Graph1.Caption%>";
  EXPECT_EQ(QyMessageOf<EMathError>([&] { Parse("<%Form1.Graph1.Caption%>"); }),
            ParseError("Form1.Graph1.Caption"));
  // Around a circle of two strings.
  RegisterStringVariable(graph, "Other", "", [] { return QString("<%Form1.Graph1.Caption%>"); });
  caption = "<%Form1.Graph1.Other%>";
  EXPECT_THROW(Parse("<%Form1.Graph1.Other%>"), EMathError);
  // The same string twice side by side is no circle.
  caption = "x";
  EXPECT_EQ(Parse("<%Form1.Graph1.Caption%><%Form1.Graph1.Caption%>"), "xx");
  // A value that hides an escaped placeholder of itself is shown, not resolved again.
  caption = "a<%<%Form1.Graph1.Caption%>%>";
  EXPECT_EQ(Parse("<%Form1.Graph1.Caption%>"), "a<%Form1.Graph1.Caption%>");
}
