#include "ui/dialogs/update/update_form.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QUrl>
#include <QVBoxLayout>

#include "config/settings.h"
#include "core/host.h"
#include "core/nimbometer.h"
#include "ui/dialogs/about/about_dialog.h"
#include "ui/dialogs/news/news_dialog.h"
#include "ui/dialogs/update/handover_file.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/named.h"

namespace nbx {
namespace {

// Texts of the update server must be longer than this to be news.
constexpr int NewsMinimumLength = 3;

}  // namespace

UpdateForm::UpdateForm(Nimbometer& nm, Settings& store, const QString& handoverFolder, QWidget* parent)
    : QDialog(parent), nm_(nm), store_(store), folder_(handoverFolder), download_(network_) {
  setObjectName("NBXUpdateForm");
  setWindowTitle("Update module");

  Frame1_ = new QGroupBox(this);
  Frame1_->setObjectName("Frame1");
  Label1_ = Named<QLabel>("Label1", {}, Frame1_);
  Label2_ = Named<QLabel>("Label2", {}, Frame1_);
  auto* versions = new QGridLayout(Frame1_);
  versions->addWidget(Named<QLabel>("Label0(0)", "Installed version", Frame1_), 0, 0);
  versions->addWidget(Label1_, 0, 1);
  versions->addWidget(Named<QLabel>("Label0(1)", "Newer version", Frame1_), 1, 0);
  versions->addWidget(Label2_, 1, 1);
  Command5_ = Named<QPushButton>("Command5", "Update", Frame1_);
  QPushButton* command4 = Named<QPushButton>("Command4", "Cancel", Frame1_);
  versions->addWidget(Command5_, 0, 2);
  versions->addWidget(command4, 1, 2);
  Frame1_->hide();

  Label3_ = Named<QLabel>("Label3", {}, this);
  Label3_->setWordWrap(true);
  Label3_->setMinimumWidth(320);
  Label3_->setAccessibleName("Update status");
  Command1_ = Named<QPushButton>("Command1", "Check", this);
  QPushButton* command2 = Named<QPushButton>("Command2", "Cancel", this);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(Command1_);
  buttons->addWidget(command2);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Frame1_);
  layout->addWidget(Label3_);
  layout->addLayout(buttons);

  connect(Command1_, &QPushButton::clicked, this, &UpdateForm::Check);
  connect(Command5_, &QPushButton::clicked, this, &UpdateForm::Update);
  connect(command4, &QPushButton::clicked, this, [this] {
    Frame1_->hide();
    reject();
  });
  connect(command2, &QPushButton::clicked, this, &QDialog::reject);
  connect(&download_, &UpdateDownload::stateChanged, this,
          [this](int state) { Label3_->setText(InetStateText(state)); });
  connect(&download_, &UpdateDownload::received, this, [this](const QByteArray& bytes) {
    if (next_) (this->*next_)(bytes);
  });
  connect(&download_, &UpdateDownload::failed, this,
          [this](const QString& reason) { Stop(InetStateText(InetError) + ": " + reason); });
}

void UpdateForm::Check() {
  Command1_->setEnabled(false);
  Command5_->setEnabled(true);
  Frame1_->hide();
  Label3_->setText("Contacting Update Center");
  baseUrl_ = QString::fromStdString(nm_.config.UpdateBaseURL).trimmed();
  if (baseUrl_.isEmpty()) {
    Stop(
        "No update address is set: the update server's address goes in key BaseURL of "
        "section Update of the settings.");
    return;
  }
  const QUrl base(baseUrl_, QUrl::StrictMode);
  if (!base.isValid() || base.host().isEmpty() || (base.scheme() != "http" && base.scheme() != "https")) {
    Stop(QStringLiteral("The update address \"%1\" is not an http or https address.").arg(baseUrl_));
    return;
  }
  while (baseUrl_.endsWith('/')) baseUrl_.chop(1);
  Fetch(NewsFilePath, NewsCapBytes, &UpdateForm::TakeNews);
}

void UpdateForm::Fetch(const char* path, qint64 capBytes, void (UpdateForm::*next)(const QByteArray&)) {
  next_ = next;
  download_.Get(QUrl(baseUrl_ + QString::fromLatin1(path)), capBytes, timeoutMs_);
}

// The news is kept byte for byte, one character a byte, even when empty:
// an empty file withdraws the news of an earlier check.
void UpdateForm::TakeNews(const QByteArray& bytes) {
  news_ = QString::fromLatin1(bytes);
  store_.Save(NewsSection, NewsKey, news_.toStdString());
  Fetch(VersionFilePath, VersionCapBytes, &UpdateForm::TakeVersion);
}

// The version is the file's first line, as written: it is compared as a
// text, so "7.1.0" is another version than "7.01.000".
void UpdateForm::TakeVersion(const QByteArray& bytes) {
  version_ = QString::fromLatin1(bytes).section(QRegularExpression("[\r\n]"), 0, 0);
  if (version_.isEmpty()) {
    Stop(QStringLiteral("The update server has no version in %1.").arg(QUrl(VersionFilePath).fileName()));
    return;
  }
  Label1_->setText(VersionNumberText(NBX_VERSION_MAJOR, NBX_VERSION_MINOR, NBX_VERSION_PATCH));
  Fetch(UpdaterFilePath, UpdaterCapBytes, &UpdateForm::TakeUpdater);
}

void UpdateForm::TakeUpdater(const QByteArray& bytes) {
  next_ = nullptr;
  QString error;
  if (bytes.isEmpty())
    error = QStringLiteral("The update server's %1 is empty: no update can be handed over.")
                .arg(QUrl(UpdaterFilePath).fileName());
  else if (!WriteHandoverFile(folder_, pos(), bytes, &error))
    error = "The update cannot be handed over: " + error;
  Label2_->setText(version_);
  // Without the handover file the updater has nothing to act on; the
  // versions still show what the server offers.
  Command5_->setEnabled(error.isEmpty());
  Frame1_->show();
  Stop(error.isEmpty() ? InetStateText(InetResponse) : error);
  if (news_.size() >= NewsMinimumLength) ShowNews();
}

void UpdateForm::Stop(const QString& message) {
  next_ = nullptr;
  Label3_->setText(message);
  Command1_->setEnabled(true);
}

void UpdateForm::ShowNews() {
  NewsDialog news(store_, this);
  news.MsgContent(news_, geometry());
  news.exec();
}

void UpdateForm::Update() {
  if (Label1_->text() == Label2_->text() &&
      ShowMessage(this, "The lattest version already installed.\n Do you wish to download?", ButtonsYesNo,
                  {}) == ReplyNo)
    return;
  nm_.state.NBXUpdate = 1;
  Frame1_->hide();
  accept();
}

void UpdateForm::done(int result) {
  download_.Abort();
  next_ = nullptr;
  QDialog::done(result);
}

}  // namespace nbx
