#pragma once
// Helpers of the expression tests.
#include <QyExceptions.h>
#include <QyParseFkt.h>
#include <gtest/gtest.h>

inline double Eval(const QString& formula) {
  TQyFunctionParser p;
  p.SetExpression(formula);
  return p.GetResult();
}

// The message of the exception of type E that parsing `formula` raises ("" and a failure if none).
template <class E> QString ParseFailure(const QString& formula) {
  TQyFunctionParser p;
  try {
    p.SetExpression(formula);
  } catch (const E& e) {
    EXPECT_EQ(p.StartNode(), nullptr) << "a failed parse must leave no tree";
    return e.Message();
  }
  ADD_FAILURE() << "no exception for " << formula.toStdString();
  return {};
}

inline QString ParseError(const QString& piece) { return "Parsing error in function:\r" + piece; }
