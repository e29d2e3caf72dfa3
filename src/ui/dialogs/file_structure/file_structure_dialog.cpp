#include "ui/dialogs/file_structure/file_structure_dialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "core/nimbometer.h"
#include "core/text.h"
#include "editing/config_editor.h"
#include "ui/widgets/named.h"

namespace nbx {
namespace {

void Fill(QListWidget* list, const std::array<FileColumn, FileColumnCount>& columns) {
  list->clear();
  for (int row = 0; row < FileColumnCount; ++row) {
    const FileColumn& column = columns[static_cast<std::size_t>(row)];
    auto* item = new QListWidgetItem(
        QStringLiteral("(%1) ").arg(row + 1, 2, 10, QChar('0')) + QString::fromStdString(Trim(column.Hdr)),
        list);
    item->setData(Qt::UserRole, column.Cal);
    item->setSelected(column.Prt);
  }
}

}  // namespace

FileStructureDialog::FileStructureDialog(Nimbometer& nm, QWidget* parent) : QDialog(parent), nm_(nm) {
  setObjectName("NBXFileStructForm");
  setWindowTitle("File Structure");
  ListCol_ = new QListWidget(this);
  ListCol_->setObjectName("ListCol");
  ListCol_->setSelectionMode(QAbstractItemView::MultiSelection);
  auto* listLabel = new QLabel("Columns of the data file (selected: printed)", this);
  listLabel->setBuddy(ListCol_);
  Fill(ListCol_, nm.config.FileColumns);
  ListCol_->setMinimumHeight(ListCol_->sizeHintForRow(0) * 16);
  ListCol_->setMinimumWidth(ListCol_->sizeHintForColumn(0) + 32);

  auto* up = Named<QPushButton>("ButtArrUp", "Up", this);
  auto* down = Named<QPushButton>("ButtArrDown", "Down", this);
  auto* defaults = Named<QPushButton>("Command2", "Default", this);
  auto* ok = Named<QPushButton>("ButtOK", "OK", this);
  auto* cancel = Named<QPushButton>("Command1", "Cancel", this);
  ok->setDefault(true);
  connect(up, &QPushButton::clicked, this, [this] { MoveCurrent(-1); });
  connect(down, &QPushButton::clicked, this, [this] { MoveCurrent(+1); });
  connect(defaults, &QPushButton::clicked, this, &FileStructureDialog::RestoreDefaults);
  connect(ok, &QPushButton::clicked, this, &FileStructureDialog::Confirm);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

  auto* grid = new QGridLayout(this);
  grid->addWidget(listLabel, 0, 0, 1, 2);
  grid->addWidget(ListCol_, 1, 0, 4, 1);
  grid->addWidget(up, 1, 1);
  grid->addWidget(down, 2, 1);
  grid->addWidget(defaults, 3, 1, Qt::AlignTop);
  grid->addWidget(ok, 5, 0, Qt::AlignRight);
  grid->addWidget(cancel, 5, 1);
}

void FileStructureDialog::MoveCurrent(int step) {
  const int from = ListCol_->currentRow();
  const int to = from + step;
  if (from < 0 || to < 0 || to >= ListCol_->count()) return;
  // Text, selection and field travel together; the line's number stays the
  // one it had when the dialog opened.
  const bool selected = ListCol_->item(from)->isSelected();
  QListWidgetItem* item = ListCol_->takeItem(from);
  ListCol_->insertItem(to, item);
  item->setSelected(selected);
  ListCol_->setCurrentRow(to, QItemSelectionModel::NoUpdate);
}

void FileStructureDialog::RestoreDefaults() { Fill(ListCol_, Config::DefaultFileColumns()); }

void FileStructureDialog::Confirm() {
  std::array<FileColumn, FileColumnCount> columns = nm_.config.FileColumns;
  for (int row = 0; row < FileColumnCount && row < ListCol_->count(); ++row) {
    const QListWidgetItem* item = ListCol_->item(row);
    FileColumn& column = columns[static_cast<std::size_t>(row)];
    column.Hdr = item->text().mid(5).toStdString();
    column.Cal = item->data(Qt::UserRole).toInt();
    column.Prt = item->isSelected();
  }
  ConfigEditor(nm_).SetFileColumns(columns);
  accept();
}

}  // namespace nbx
