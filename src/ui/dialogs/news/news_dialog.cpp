#include "ui/dialogs/news/news_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include "config/settings.h"

namespace nbx {

NewsDialog::NewsDialog(Settings& store, QWidget* parent) : QDialog(parent), store_(store) {
  setObjectName("NBXDispNews");
  setWindowTitle("Important Information");
  setWindowFlag(Qt::WindowStaysOnTopHint);
  LblMsg_ = new QLabel;
  LblMsg_->setObjectName("LblMsg");
  LblMsg_->setWordWrap(true);
  // The maker's text is shown as written, never as markup or links.
  LblMsg_->setTextFormat(Qt::PlainText);
  LblMsg_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  ChckMsg_ = new QCheckBox("Discard this message", this);
  ChckMsg_->setObjectName("ChckMsg");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  // A long text scrolls inside the rectangle it is given.
  auto* scroll = new QScrollArea(this);
  scroll->setWidget(LblMsg_);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(scroll, 1);
  layout->addWidget(ChckMsg_);
  layout->addWidget(buttons);
}

void NewsDialog::MsgContent(const QString& text, const QRect& area) {
  LblMsg_->setText(text);
  if (area.isValid()) {
    setMaximumSize(area.size());
    adjustSize();
    resize(size().boundedTo(area.size()));
    move(area.center() - rect().center());
  } else {
    adjustSize();
  }
}

void NewsDialog::done(int result) {
  if (ChckMsg_->isChecked()) store_.Save(NewsSection, NewsKey, "");
  QDialog::done(result);
}

}  // namespace nbx
