#include "QyInput.h"

TShiftState QyShiftState(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers, bool doubleClick) {
  TShiftState s;
  if (modifiers & Qt::ShiftModifier) s |= QyShift::ssShift;
  if (modifiers & Qt::AltModifier) s |= QyShift::ssAlt;
  if (modifiers & Qt::ControlModifier) s |= QyShift::ssCtrl;
  if (buttons & Qt::LeftButton) s |= QyShift::ssLeft;
  if (buttons & Qt::RightButton) s |= QyShift::ssRight;
  if (buttons & Qt::MiddleButton) s |= QyShift::ssMiddle;
  if (doubleClick) s |= QyShift::ssDouble;
  return s;
}

Qt::CursorShape QyCursorShape(int frameworkCursor) {
  static constexpr struct { int number; Qt::CursorShape shape; } table[] = {
      {0, Qt::ArrowCursor},       {-1, Qt::BlankCursor},      {-2, Qt::ArrowCursor},
      {-3, Qt::CrossCursor},      {-4, Qt::IBeamCursor},      {-5, Qt::SizeAllCursor},
      {-6, Qt::SizeBDiagCursor},  {-7, Qt::SizeVerCursor},    {-8, Qt::SizeFDiagCursor},
      {-9, Qt::SizeHorCursor},    {-10, Qt::UpArrowCursor},   {-11, Qt::WaitCursor},
      {-12, Qt::DragMoveCursor},  {-13, Qt::ForbiddenCursor}, {-14, Qt::SplitHCursor},
      {-15, Qt::SplitVCursor},    {-16, Qt::DragCopyCursor},  {-17, Qt::WaitCursor},
      {-18, Qt::ForbiddenCursor}, {-19, Qt::BusyCursor},      {-20, Qt::WhatsThisCursor},
      {-21, Qt::PointingHandCursor}, {-22, Qt::SizeAllCursor}};
  for (const auto& row : table)
    if (row.number == frameworkCursor) return row.shape;
  return Qt::ArrowCursor;
}
