#include "station/system_areas.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QStandardPaths>

namespace nbx {
namespace {

char SingleCharacter(const QString& text, char fallback) {
  return text.size() == 1 && text[0].unicode() < 128 ? static_cast<char>(text[0].unicode())
                                                     : fallback;
}

QString AutostartFile(const std::string& name) {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         "/autostart/" + QString::fromStdString(name) + ".desktop";
}

}  // namespace

std::string DocumentsFolder() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  if (folder.isEmpty()) folder = QDir::homePath();
  return folder.toStdString();
}

char DecimalSeparator() { return SingleCharacter(QLocale::system().decimalPoint(), '.'); }

char ThousandSeparator() { return SingleCharacter(QLocale::system().groupSeparator(), ','); }

bool AddRunEntry(const std::string& name, const std::string& command) {
  const QString file = AutostartFile(name);
  if (!QDir().mkpath(QFileInfo(file).path())) return false;
  QSaveFile entry(file);
  if (!entry.open(QIODevice::WriteOnly)) return false;
  entry.write("[Desktop Entry]\nType=Application\nName=" + QByteArray::fromStdString(name) +
              "\nExec=" + QByteArray::fromStdString(command) +
              "\nX-GNOME-Autostart-enabled=true\n");
  return entry.commit();
}

bool RemoveRunEntry(const std::string& name) {
  QFile entry(AutostartFile(name));
  return !entry.exists() || entry.remove();
}

bool HasRunEntry(const std::string& name) { return QFile::exists(AutostartFile(name)); }

LoadContext MachineLoadContext() {
  LoadContext context;
  context.documentsFolder = DocumentsFolder();
  context.decimalSeparator = DecimalSeparator();
  context.runEntryPresent = HasRunEntry(RunEntryName);
  return context;
}

}  // namespace nbx
