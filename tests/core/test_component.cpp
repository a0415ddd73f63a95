#include "QyExpect.h"
#include <QWidget>
#include <QyComponent.h>
#include <QyExceptions.h>
#include <QyLocalize.h>
#include <QyRounding.h>
#include <QyServices.h>
#include <gtest/gtest.h>

TEST(Rounding, HalfToEvenAndNamedDirections) {
  for (auto [x, r] : {std::pair{0.5, 0}, {1.5, 2}, {2.5, 2}, {-2.5, -2}, {-3.5, -4}, {2.5000001, 3}})
    EXPECT_EQ(Round(x), r) << x;
  EXPECT_EQ(std::tuple(Trunc(-2.7), Ceil(-2.7), Floor(-2.2)), std::tuple(-2, -2, -3));
}

TEST(Component, OwnerChainFindAndUniqueNames) {
  QWidget form;
  form.setObjectName("Form1");
  auto* panel = new QWidget(&form);            // unnamed: skipped in the owner chain
  auto* graph = new QWidget(panel);
  graph->setObjectName("Graph1");
  auto* axis = new QObject(graph);
  axis->setObjectName("XAxis1");
  EXPECT_EQ(ComponentOwner(graph), &form);
  EXPECT_EQ(ComponentOwner(axis), graph);
  EXPECT_EQ(ComponentForm(axis), &form);
  EXPECT_EQ(FindComponent(&form, "XAxis1"), axis);
  EXPECT_EQ(FindComponent(&form, "xaxis1"), nullptr); // names are case-sensitive
  EXPECT_EQ((QStringList{UniqueName(&form, "XAxis"), UniqueName(&form, "YAxis"), UniqueName(nullptr, "Graph")}),
            (QStringList{"XAxis2", "YAxis1", "Graph1"}));
}

TEST(Messages, IndexErrorCarriesTheTableText) {
  EXPECT_EQ(QyMessageOf<ERangeError>([&] { QyRaiseIndexError(7); }), "i=7 index out of range");
  // ERangeError is caught as its ancestors too.
  EXPECT_THROW(QyRaiseIndexError(1), EExternal);
  EXPECT_EQ(QyFormatMessage("%s has %d of %5.2f%%", {"A", 3, 2.5}), "A has 3 of  2.50%");
}

TEST(Services, PromptIsReplaceableAndIdleRunsWork) {
  QString asked;
  QyPrompt::SetHandler([&](const QString& t, TQyMsgDlgType, bool yesNo) {
    asked = t;
    return yesNo ? TQyModalResult::No : TQyModalResult::Ok;
  });
  EXPECT_EQ(QyPrompt::MessageDlg("Sure?", TQyMsgDlgType::Confirmation, true), TQyModalResult::No);
  EXPECT_EQ(asked, "Sure?");
  QyPrompt::SetHandler(nullptr);

  int runs = 0;
  const int id = QyIdle::Add([&] { ++runs; });
  QyIdle::DoIdle();
  QyIdle::DoIdle();
  QyIdle::Remove(id);
  QyIdle::DoIdle();
  EXPECT_EQ(runs, 2);
}
