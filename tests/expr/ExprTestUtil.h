#pragma once
// Helpers of the expression tests.
#include <QWidget>
#include <QyExceptions.h>
#include <QyParseFkt.h>
#include <QyRegisters.h>
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

// An object whose captions use registered values; counts the requests to parse again.
class CaptionUser : public QObject, public IQyVariablesUser {
public:
  int Updates = 0;
  void VariablesChanged() override { ++Updates; }
};

// A form "Form1" holding an object "Graph1" that offers values.
class ExprForm : public testing::Test {
protected:
  void SetUp() override {
    form.setObjectName("Form1");
    graph = new QObject(&form);
    graph->setObjectName("Graph1");
  }
  QWidget form;
  QObject* graph = nullptr;
};
