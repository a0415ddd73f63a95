#pragma once
// Process services that tests must be able to replace: the prompt (message dialogs) and the idle
// hook (work done when the event loop is about to wait).
#include <QString>
#include <functional>

enum class TQyMsgDlgType { Warning, Error, Information, Confirmation, Custom };
enum class TQyModalResult { None = 0, Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

namespace QyPrompt {
// Answers a question; the default shows a QMessageBox. Buttons: Yes/No when `yesNo`, else Ok.
using Handler = std::function<TQyModalResult(const QString& text, TQyMsgDlgType type, bool yesNo)>;
void SetHandler(Handler handler); // nullptr restores the message box
TQyModalResult MessageDlg(const QString& text, TQyMsgDlgType type, bool yesNo);
void ShowMessage(const QString& text);
} // namespace QyPrompt

namespace QyIdle {
// Registers work to run when the application becomes idle; returns an id for Remove.
int Add(std::function<void()> work);
void Remove(int id);
// Runs all idle work now (the event loop calls it before it blocks; tests call it directly).
void DoIdle();
} // namespace QyIdle
