#pragma once

#include <QCoreApplication>
#include <QString>

namespace nbx {

struct ProgramOptions {
  bool headless = false;
  bool simulate = false;
  bool trace = false;
  QString settingsFile;  // empty: the per-user store
};

// Reads the command line; --help and --version print and end the program.
ProgramOptions ParseCommandLine(const QCoreApplication& app);

}  // namespace nbx
