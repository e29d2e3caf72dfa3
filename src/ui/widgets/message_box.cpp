#include "ui/widgets/message_box.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <vector>

#include "core/host.h"

namespace nbx {

namespace {

struct Button {
  const char* caption;
  int reply;
};

std::vector<Button> ButtonSet(int buttons) {
  switch (buttons) {
    case ButtonsYesNoCancel:
      return {{"Yes", ReplyYes}, {"No", ReplyNo}, {"Cancel", ReplyCancel}};
    case ButtonsYesNo:
      return {{"Yes", ReplyYes}, {"No", ReplyNo}};
    default:
      return {{"OK", ReplyOk}};
  }
}

// Closed by its title bar or Escape: the answer that does least. A question
// with "Cancel" is cancelled; a yes-or-no question is answered no, so that
// nothing is done that the user did not choose.
int ClosedReply(int buttons) {
  switch (buttons) {
    case ButtonsYesNoCancel: return ReplyCancel;
    case ButtonsYesNo: return ReplyNo;
    default: return ReplyOk;
  }
}

}  // namespace

int ShowMessage(QWidget* over, const QString& text, int buttons, const QString& title) {
  QDialog box(over);
  box.setObjectName("NBXError");
  box.setWindowTitle(title.isEmpty() ? QStringLiteral("NBX Nimbometer") : title);
  box.setModal(true);
  auto* description = new QLabel(text, &box);
  description->setObjectName("ERR_Description");
  description->setWordWrap(true);
  description->setTextInteractionFlags(Qt::TextSelectableByMouse);
  description->setMinimumWidth(320);

  int reply = ClosedReply(buttons);
  auto* row = new QHBoxLayout;
  row->addStretch();
  const std::vector<Button> set = ButtonSet(buttons);
  for (std::size_t index = 0; index < set.size(); ++index) {
    auto* button = new QPushButton(QString::fromLatin1(set[index].caption), &box);
    button->setObjectName(QStringLiteral("Butt(%1)").arg(index));
    if (index == 0) button->setDefault(true);
    const int buttonReply = set[index].reply;
    QObject::connect(button, &QPushButton::clicked, &box, [&box, &reply, buttonReply] {
      reply = buttonReply;
      box.accept();
    });
    row->addWidget(button);
    row->addStretch();
  }
  auto* layout = new QVBoxLayout(&box);
  layout->addWidget(description);
  layout->addLayout(row);
  box.adjustSize();
  if (over) {
    const QRect frame = over->window()->frameGeometry();
    box.move(frame.center() - box.rect().center());
  }
  box.exec();
  return reply;
}

}  // namespace nbx
