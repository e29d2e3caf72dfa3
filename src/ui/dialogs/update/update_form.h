#pragma once

#include <QDialog>
#include <QNetworkAccessManager>
#include <QString>

#include "ui/dialogs/update/update_download.h"

class QGroupBox;
class QLabel;
class QPushButton;

namespace nbx {
class Settings;
struct Nimbometer;

// The update server's files, under the address of setting Update/BaseURL.
inline constexpr const char* NewsFilePath = "/nbx/nimbometer700/NBX_NimbometerNews.txt";
inline constexpr const char* VersionFilePath = "/nbx/nimbometer700/NBX_Nimbometer.txt";
inline constexpr const char* UpdaterFilePath = "/nbx/nimbometer700/NBX_NimbometerUpdater.txt";

// The most that is read of each: a screenful of news, one line of version,
// and instructions for the updater.
inline constexpr qint64 NewsCapBytes = 64 * 1024;
inline constexpr qint64 VersionCapBytes = 256;
inline constexpr qint64 UpdaterCapBytes = 4 * 1024 * 1024;

// NBXUpdateForm, "Update module": "Check" asks the update server for its
// news, its newest version and the updater's instructions, one after the
// other on the event loop, and leaves the handover file for the outside
// updater; "Update" accepts the newer version. Nothing is fetched before
// "Check" is pressed, and closing the window drops a running request.
class UpdateForm : public QDialog {
  Q_OBJECT

 public:
  // `store` takes the news; `handoverFolder` is the program's folder.
  UpdateForm(Nimbometer& nm, Settings& store, const QString& handoverFolder, QWidget* parent = nullptr);

  void Check();
  void Update();
  // A request without any byte for this long is given up.
  void setTimeoutMs(int ms) { timeoutMs_ = ms; }
  bool busy() const { return download_.running(); }

 protected:
  void done(int result) override;

 private:
  void Fetch(const char* path, qint64 capBytes, void (UpdateForm::*next)(const QByteArray&));
  void TakeNews(const QByteArray& bytes);
  void TakeVersion(const QByteArray& bytes);
  void TakeUpdater(const QByteArray& bytes);
  void Stop(const QString& message);
  void ShowNews();

  Nimbometer& nm_;
  Settings& store_;
  QString folder_;
  QNetworkAccessManager network_;
  UpdateDownload download_;
  QString baseUrl_;
  QString news_;
  QString version_;
  int timeoutMs_ = 20000;
  void (UpdateForm::*next_)(const QByteArray&) = nullptr;

  QGroupBox* Frame1_ = nullptr;
  QLabel* Label1_ = nullptr;
  QLabel* Label2_ = nullptr;
  QLabel* Label3_ = nullptr;
  QPushButton* Command1_ = nullptr;
  QPushButton* Command5_ = nullptr;
};

}  // namespace nbx
