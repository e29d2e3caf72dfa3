// The message box and the colour picker, answered as a user would: each by
// the button pressed once it is on screen.

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "core/host.h"
#include "ui/widgets/colour_picker.h"
#include "ui/widgets/message_box.h"

namespace nbx {
namespace {

// Runs `act` on the modal window once it is up.
void WhenModal(std::function<void(QWidget*)> act) {
  QTimer::singleShot(0, [act] {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal) return WhenModal(act);
    act(modal);
  });
}

void Click(QWidget* window, const char* name) {
  auto* button = window->findChild<QPushButton*>(name);
  ASSERT_NE(button, nullptr) << name;
  button->click();
}

TEST(MessageBox, EachButtonSetRepliesByTheButtonPressed) {
  struct Case {
    int buttons;
    const char* button;
    const char* caption;
    int reply;
  } cases[] = {
      {ButtonsOk, "Butt(0)", "OK", ReplyOk},
      {ButtonsYesNoCancel, "Butt(0)", "Yes", ReplyYes},
      {ButtonsYesNoCancel, "Butt(1)", "No", ReplyNo},
      {ButtonsYesNoCancel, "Butt(2)", "Cancel", ReplyCancel},
      {ButtonsYesNo, "Butt(0)", "Yes", ReplyYes},
      {ButtonsYesNo, "Butt(1)", "No", ReplyNo},
  };
  QWidget main;
  main.show();
  for (const Case& c : cases) {
    QString title, caption;
    int shown = 0;
    WhenModal([&](QWidget* box) {
      title = box->windowTitle();
      shown = static_cast<int>(box->findChildren<QPushButton*>().size());
      caption = box->findChild<QPushButton*>(c.button)->text();
      Click(box, c.button);
    });
    EXPECT_EQ(ShowMessage(&main, "Port not found", c.buttons, ""), c.reply) << c.buttons << " " << c.button;
    EXPECT_EQ(caption, c.caption);
    EXPECT_EQ(shown, c.buttons == ButtonsOk ? 1 : c.buttons == ButtonsYesNo ? 2 : 3);
    EXPECT_EQ(title, "NBX Nimbometer");
  }
  // Closed by Escape, a question is never answered yes.
  WhenModal([](QWidget* box) { QTest::keyClick(box, Qt::Key_Escape); });
  EXPECT_EQ(ShowMessage(&main, "Save?", ButtonsYesNo, "Question"), ReplyNo);
}

TEST(ColourPicker, AcceptTakesTheMarkedSwatchAndTheWordCancelKeepsBoth) {
  QWidget main;
  QLabel target("Clear", &main);
  SetLabelColour(&target, QColor(0xFF0000));  // a swatch of the grid
  main.show();

  // Accept after moving one to the right: the next swatch, and the new word.
  QColor next;
  WhenModal([&](QWidget* picker) {
    auto* frame = picker->findChild<QWidget*>("ColorFrame");
    QTest::keyClick(frame, Qt::Key_Right);
    auto* red = picker->findChild<QLabel*>("LblColor(8)");
    auto* right = picker->findChild<QLabel*>("LblColor(9)");
    EXPECT_EQ(LabelColour(red), QColor(0xFF0000));
    next = LabelColour(right);
    auto* word = picker->findChild<QLineEdit*>("DescText");
    word->setText("Very cloudy sky");
    Click(picker, "Command1");
  });
  EXPECT_TRUE(PickColour(&main, &target, true));
  EXPECT_EQ(LabelColour(&target), next);
  EXPECT_EQ(target.text(), "Very cloudy") << "the word holds 11 characters";

  // Cancel, and Escape on the grid, change nothing.
  for (auto close : {std::function<void(QWidget*)>([](QWidget* p) { Click(p, "Command2"); }),
                     std::function<void(QWidget*)>([](QWidget* p) {
                       QTest::keyClick(p->findChild<QWidget*>("ColorFrame"), Qt::Key_Escape);
                     })}) {
    WhenModal([close](QWidget* picker) {
      QTest::keyClick(picker->findChild<QWidget*>("ColorFrame"), Qt::Key_Down);
      close(picker);
    });
    EXPECT_FALSE(PickColour(&main, &target, false));
    EXPECT_EQ(LabelColour(&target), next);
    EXPECT_EQ(target.text(), "Very cloudy");
  }

  // A colour that is not in the grid: no swatch is marked, and accepting keeps it.
  SetLabelColour(&target, QColor(0x123456));
  bool marked = true;
  WhenModal([&](QWidget* picker) {
    marked = picker->findChild<QWidget*>("MarkShape")->isVisible();
    Click(picker, "Command1");
  });
  EXPECT_TRUE(PickColour(&main, &target, false));
  EXPECT_FALSE(marked);
  EXPECT_EQ(LabelColour(&target), QColor(0x123456));
}

}  // namespace
}  // namespace nbx
