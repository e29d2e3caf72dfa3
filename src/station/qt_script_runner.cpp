#include "station/qt_script_runner.h"

#include <QProcess>
#include <QString>

namespace nbx {

bool QtScriptRunner::Start(const std::string& program) {
  return QProcess::startDetached(QString::fromStdString(program), {});
}

}  // namespace nbx
