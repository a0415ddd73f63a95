#pragma once
// An object whose whole data the undo stack records as one block and puts back, such as a data
// vector: the stack knows the interface, not the class.
class QIODevice;

class IQyStateful {
public:
  virtual ~IQyStateful() = default;
  // False for objects that hold no data of their own (they are not recorded).
  virtual bool HasState() const { return true; }
  // Writes the whole state to `device` (not const: a reader may first have to bring lazy data up
  // to date); ReadState reads what WriteState wrote and replaces the state with it, telling the
  // object's listeners as any change would.
  virtual void WriteState(QIODevice& device) = 0;
  virtual void ReadState(QIODevice& device) = 0;
};
