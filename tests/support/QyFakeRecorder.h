#pragma once
// A test double of the undo stack: notes each push with the value the property had at that moment.
#include "QyProperty.h"
#include <QVariant>
#include <vector>

class QyFakeRecorder : public TQyUndoRecorder {
public:
  struct TPush {
    QObject* object;
    QString caption;
    QByteArray property;
    QVariant valueBefore;
  };
  bool Recording = true;
  std::vector<TPush> Pushes;
  bool IsRecording() const override { return Recording; }
  void PushProperty(QObject* object, const QString& caption, const char* propertyName) override {
    Pushes.push_back({object, caption, propertyName, object->property(propertyName)});
  }
};
