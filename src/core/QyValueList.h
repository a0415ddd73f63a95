#pragma once
// A list of doubles that lower layers can fill and read without knowing its class: an axis writes
// its zoom stages as two data vectors of the document, made by class name.
#include <vector>

class IQyValueList {
public:
  virtual ~IQyValueList() = default;
  virtual std::vector<double> ValueList() const = 0;
  virtual void SetValueList(std::vector<double> values) = 0;
};
