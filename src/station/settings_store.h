#pragma once

#include <QSettings>
#include <QString>
#include <memory>

namespace nbx {
struct Config;

// The settings store: the per-user INI file of the program, or the file
// named on the command line.
std::unique_ptr<QSettings> OpenSettings(const QString& file);

// The keys the link needs: port, line settings, period, time-outs and the
// Unknown limits of the link; the role, the data folders and file names, and
// the recording options.
void LoadLinkSettings(QSettings& settings, Config& config);

}  // namespace nbx
