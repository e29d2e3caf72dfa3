#pragma once

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <vector>

namespace nbx::test {

// Answers the modal windows as they come up, one step for each, in order, as
// a user at the screen would. Every message box's text is kept; a window
// that comes when no step is left is cancelled and counted.
class ModalScript {
 public:
  using Step = std::function<void(QWidget*)>;

  explicit ModalScript(std::vector<Step> steps = {}) : steps_(std::move(steps)) {
    QObject::connect(&poll_, &QTimer::timeout, [this] {
      QWidget* modal = QApplication::activeModalWidget();
      if (!modal || modal == handled_) return;
      handled_ = modal;
      if (auto* text = modal->findChild<QLabel*>("ERR_Description")) messages << text->text();
      if (next_ < steps_.size()) return steps_[next_++](modal);
      ++unexpected;
      QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
    });
    poll_.start(10);
  }

  // Every step has had its window.
  bool done() const { return next_ == steps_.size(); }

  QStringList messages;
  int unexpected = 0;

 private:
  std::vector<Step> steps_;
  std::size_t next_ = 0;
  QPointer<QWidget> handled_;
  QTimer poll_;
};

// Presses the button of that caption once the present event is done, so
// that a window it opens runs its own loop outside the script's.
inline void Click(QWidget* window, const QString& caption) {
  for (QPushButton* button : window->findChildren<QPushButton*>())
    if (button->text() == caption) return (void)QMetaObject::invokeMethod(button, "click", Qt::QueuedConnection);
}

// A step: the button of that caption is pressed.
inline ModalScript::Step Press(const QString& caption) {
  return [caption](QWidget* window) { Click(window, caption); };
}

}  // namespace nbx::test
