#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace nbx {

// The simulated sensor box (nbx-boxsim, shipped beside the program) on a
// pseudo-terminal, for a station that has no box to talk to.
class SimulatedBox {
 public:
  ~SimulatedBox();
  // Starts it and returns the path of its serial port, or an empty text with
  // `error` filled. The program is the one beside this program's executable
  // unless `program` names another.
  QString Start(const QStringList& arguments, QString& error, QString program = {});

 private:
  QProcess process_;
};

}  // namespace nbx
