#include "ui/help/manual.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace nbx {

QString ManualFolder() {
  const QString programFolder = QCoreApplication::applicationDirPath();
  for (const QString& candidate :
       {programFolder + "/manual", programFolder + "/../share/nimbometer/manual"}) {
    if (QFileInfo::exists(candidate + "/index.html")) return QDir::cleanPath(candidate);
  }
  return {};
}

QString ManualPage(int tab, int setupSubTab) {
  static const char* const tabPages[] = {"sensor.html", "graphs.html", "limits.html",
                                         "unsafe.html", "setup.html",  "device.html"};
  static const char* const setupAnchors[] = {"#device", "#graph", "#alarm", "#network", "#script"};
  if (tab < 0 || tab > 5) return "index.html";
  QString page = tabPages[tab];
  if (tab == 4 && setupSubTab >= 0 && setupSubTab <= 4) page += setupAnchors[setupSubTab];
  return page;
}

QString ManualPageForContext(int context) {
  if (context >= 2001 && context <= 2006) return ManualPage(context - 2001, 0);
  if (context >= 2051 && context <= 2055) return ManualPage(4, context - 2051);
  if (context == 2061) return ManualPage(5, 0);
  return ManualPage(-1, 0);
}

bool OpenManual(int helpContext) {
  const QString folder = ManualFolder();
  if (folder.isEmpty()) return false;
  const QString page = ManualPageForContext(helpContext);
  const int hash = page.indexOf('#');
  QUrl url = QUrl::fromLocalFile(folder + "/" + (hash < 0 ? page : page.left(hash)));
  if (hash >= 0) url.setFragment(page.mid(hash + 1));
  return QDesktopServices::openUrl(url);
}

}  // namespace nbx
