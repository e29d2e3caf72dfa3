#include "ui/dialogs/about/about_dialog.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace nbx {

QString VersionNumberText(int major, int minor, int revision) {
  return QStringLiteral("%1.%2.%3")
      .arg(major)
      .arg(minor, 2, 10, QChar('0'))
      .arg(revision, 3, 10, QChar('0'));
}

AboutDialog::AboutDialog(const QString& version, const QIcon& icon, QWidget* parent)
    : QDialog(parent) {
  setObjectName("NBXAbout");
  setWindowTitle("About NBX Nimbometer");
  auto* picIcon = new QLabel(this);
  picIcon->setObjectName("picIcon");
  picIcon->setPixmap(icon.pixmap(48, 48));
  auto* lblTitle = new QLabel("NBX Nimbometer", this);
  lblTitle->setObjectName("lblTitle");
  QFont titleFont = lblTitle->font();
  titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
  titleFont.setBold(true);
  lblTitle->setFont(titleFont);
  auto* lblVersion = new QLabel("Version " + version, this);
  lblVersion->setObjectName("lblVersion");
  auto* lblDescription = new QLabel("Sky, rain and safety supervisor of the observatory", this);
  lblDescription->setObjectName("lblDescription");
  // A link label gives the hover colour and the hand pointer of a web address.
  const QString address = QString::fromLatin1(ProjectWebAddress);
  auto* label2 = new QLabel(QStringLiteral("<a href=\"%1\">%1</a>").arg(address), this);
  label2->setObjectName("Label2");
  label2->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  connect(label2, &QLabel::linkActivated, this, [this](const QString& link) {
    const QUrl url(link);
    QDesktopServices::openUrl(url);
    emit webPageOpened(url);
  });
  auto* cmdOK = new QPushButton("OK", this);
  cmdOK->setObjectName("cmdOK");
  cmdOK->setDefault(true);
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);

  auto* texts = new QVBoxLayout;
  for (QWidget* w : {static_cast<QWidget*>(lblTitle), static_cast<QWidget*>(lblVersion),
                     static_cast<QWidget*>(lblDescription), static_cast<QWidget*>(label2)})
    texts->addWidget(w);
  auto* top = new QHBoxLayout;
  top->addWidget(picIcon, 0, Qt::AlignTop);
  top->addLayout(texts);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(cmdOK, 0, Qt::AlignRight);
}

}  // namespace nbx
