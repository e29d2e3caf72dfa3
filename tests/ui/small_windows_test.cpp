// The message box and the colour picker, answered as a user would: each by
// the button pressed once it is on screen.

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "core/host.h"
#include "ui/widgets/colour_picker.h"
#include "ui/widgets/message_box.h"
#include "ui_dialogs/modal_script.h"

namespace nbx {
namespace {

using test::Click;
using test::ModalScript;

TEST(MessageBox, EachButtonSetRepliesByTheButtonPressed) {
  struct Case {
    int buttons;
    const char* caption;
    int reply;
  } cases[] = {{ButtonsOk, "OK", ReplyOk},
               {ButtonsYesNoCancel, "No", ReplyNo},
               {ButtonsYesNoCancel, "Cancel", ReplyCancel},
               {ButtonsYesNo, "Yes", ReplyYes},
               {ButtonsYesNo, "No", ReplyNo}};
  QWidget main;
  main.show();
  for (const Case& c : cases) {
    QString title;
    int shown = 0;
    ModalScript script({[&](QWidget* box) {
      title = box->windowTitle();
      shown = static_cast<int>(box->findChildren<QPushButton*>().size());
      Click(box, c.caption);
    }});
    EXPECT_EQ(ShowMessage(&main, "Port not found", c.buttons, ""), c.reply) << c.buttons << " " << c.caption;
    EXPECT_EQ(shown, c.buttons == ButtonsOk ? 1 : c.buttons == ButtonsYesNo ? 2 : 3);
    EXPECT_EQ(title, "NBX Nimbometer");
  }
  // Closed by Escape, a question is never answered yes.
  ModalScript script({[](QWidget* box) { QTest::keyClick(box, Qt::Key_Escape); }});
  EXPECT_EQ(ShowMessage(&main, "Save?", ButtonsYesNo, "Question"), ReplyNo);
}

TEST(ColourPicker, AcceptTakesTheMarkedSwatchAndTheWordCancelKeepsBoth) {
  QWidget main;
  QLabel target("Clear", &main);
  SetLabelColour(&target, QColor(0xFF0000));  // the grid's swatch LblColor(8)
  main.show();
  auto grid = [](QWidget* picker) { return picker->findChild<QWidget*>("ColorFrame"); };

  // Accept after moving one to the right: the next swatch, and the new word.
  QColor next;
  {
    // Scoped: a script left alive would cancel the later pickers as unexpected.
    ModalScript accept({[&](QWidget* picker) {
      QTest::keyClick(grid(picker), Qt::Key_Right);
      EXPECT_EQ(LabelColour(picker->findChild<QLabel*>("LblColor(8)")), QColor(0xFF0000));
      next = LabelColour(picker->findChild<QLabel*>("LblColor(9)"));
      picker->findChild<QLineEdit*>("DescText")->setText("Very cloudy sky");
      Click(picker, "OK");
    }});
    EXPECT_TRUE(PickColour(&main, &target, true));
  }
  EXPECT_EQ(LabelColour(&target), next);
  EXPECT_EQ(target.text(), "Very cloudy") << "the word holds 11 characters";

  // Cancel, and Escape on the grid, change nothing.
  for (bool escape : {false, true}) {
    ModalScript cancel({[&](QWidget* picker) {
      QTest::keyClick(grid(picker), Qt::Key_Down);
      if (escape)
        QTest::keyClick(grid(picker), Qt::Key_Escape);
      else
        Click(picker, "Cancel");
    }});
    EXPECT_FALSE(PickColour(&main, &target, false));
    EXPECT_EQ(LabelColour(&target), next);
    EXPECT_EQ(target.text(), "Very cloudy");
  }

  // A colour that is not in the grid: no swatch is marked, and accepting keeps it.
  SetLabelColour(&target, QColor(0x123456));
  bool marked = true;
  ModalScript keep({[&](QWidget* picker) {
    marked = picker->findChild<QWidget*>("MarkShape")->isVisible();
    Click(picker, "OK");
  }});
  EXPECT_TRUE(PickColour(&main, &target, false));
  EXPECT_FALSE(marked);
  EXPECT_EQ(LabelColour(&target), QColor(0x123456));
}

}  // namespace
}  // namespace nbx
