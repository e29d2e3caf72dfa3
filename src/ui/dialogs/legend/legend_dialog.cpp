#include "ui/dialogs/legend/legend_dialog.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "outputs/output_codes.h"

namespace nbx {

LegendDialog::LegendDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("NBXLegend");
  setWindowTitle("Warnings");
  auto* list = new QListWidget(this);
  list->setObjectName("List1");
  for (const OutputCode& code : OutputCodeLegend()) list->addItem(QString::fromLatin1(code.text));
  list->setMinimumWidth(list->sizeHintForColumn(0) + 24);
  list->setMinimumHeight(list->sizeHintForRow(0) * list->count() + 8);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list);
  layout->addWidget(buttons);
}

}  // namespace nbx
