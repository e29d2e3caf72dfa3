#pragma once

#include <QDialog>
#include <QUrl>

namespace nbx {

// The project's page, opened from the about box.
inline constexpr const char* ProjectWebAddress = "https://nimbometer.org";

// NBXAbout: the title, "Version " and the version, the program's icon and
// the project's web address, which opens in the browser when clicked.
class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  AboutDialog(const QString& version, const QIcon& icon, QWidget* parent = nullptr);

 signals:
  // The address was clicked; the browser has been asked to open it.
  void webPageOpened(const QUrl& url);
};

// "7.00.000": major, minor as "00", revision as "000".
QString VersionNumberText(int major, int minor, int revision);

}  // namespace nbx
