#include "QyServices.h"
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QMessageBox>
#include <QThread>
#include <map>

namespace {
QyPrompt::Handler& PromptHandler() {
  static QyPrompt::Handler handler;
  return handler;
}

TQyModalResult ShowBox(const QString& text, TQyMsgDlgType type, bool yesNo) {
  QMessageBox box;
  box.setText(text);
  box.setIcon(type == TQyMsgDlgType::Error         ? QMessageBox::Critical
              : type == TQyMsgDlgType::Warning      ? QMessageBox::Warning
              : type == TQyMsgDlgType::Confirmation ? QMessageBox::Question
                                                     : QMessageBox::Information);
  box.setStandardButtons(yesNo ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
  const int r = box.exec();
  return r == QMessageBox::Yes ? TQyModalResult::Yes
         : r == QMessageBox::No ? TQyModalResult::No
                                : TQyModalResult::Ok;
}

struct IdleState {
  std::map<int, std::function<void()>> work;
  int nextId = 1;
  bool hooked = false;
  bool running = false;
};
IdleState& Idle() {
  static IdleState state;
  return state;
}
} // namespace

void QyPrompt::SetHandler(Handler handler) { PromptHandler() = std::move(handler); }

TQyModalResult QyPrompt::MessageDlg(const QString& text, TQyMsgDlgType type, bool yesNo) {
  return PromptHandler() ? PromptHandler()(text, type, yesNo) : ShowBox(text, type, yesNo);
}

void QyPrompt::ShowMessage(const QString& text) {
  MessageDlg(text, TQyMsgDlgType::Information, false);
}

int QyIdle::Add(std::function<void()> work) {
  IdleState& s = Idle();
  if (!s.hooked && qApp) {
    if (auto* d = QAbstractEventDispatcher::instance(qApp->thread())) {
      QObject::connect(d, &QAbstractEventDispatcher::aboutToBlock, qApp, [] { DoIdle(); });
      s.hooked = true;
    }
  }
  s.work.emplace(s.nextId, std::move(work));
  return s.nextId++;
}

void QyIdle::Remove(int id) { Idle().work.erase(id); }

void QyIdle::DoIdle() {
  IdleState& s = Idle();
  if (s.running) return; // idle work that spins the event loop must not re-enter
  s.running = true;
  const auto snapshot = s.work; // work may remove itself
  for (const auto& [id, fn] : snapshot)
    if (s.work.count(id)) fn();
  s.running = false;
}
