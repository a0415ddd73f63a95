// Captions that show registered values follow them.
#include "QyCaptionTestKit.h"
#include <QyPlaceholders.h>
#include <QyRegisters.h>
#include <gtest/gtest.h>

TEST(CaptionPlaceholders, LabelFollowsTheValueItShows) {
  QObject sensor;
  sensor.setObjectName("Sensor1");
  TQyVariableObjects dependants(&sensor);
  QString value = "20";
  RegisterStringVariable(&sensor, "Temp", "temperature", [&] { return value; });
  QString name;
  for (const auto& r : GlobalStringList)
    if (r.Owner == &sensor) name = r.QualifiedName();
  ASSERT_FALSE(name.isEmpty());

  TQyRichLabel label;
  label.SetCaption("T=\\b<%" + name + "%>\\b K");
  label.show();
  EXPECT_EQ(label.GetPlainText(), "T=20 K");
  const int narrow = label.width();
  EXPECT_TRUE(dependants.Contains(&label));

  value = "2000";
  UpdateVariablesObjects(dependants);
  EXPECT_EQ(label.GetPlainText(), "T=2000 K");
  EXPECT_GT(label.width(), narrow); // measured again
  RemoveVariablesOfOwner(&sensor);
}
