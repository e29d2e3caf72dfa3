#pragma once

#include <QSettings>
#include <QString>
#include <memory>

namespace nbx {
struct Config;

// The settings store: the per-user INI file of the program, or the file
// named on the command line.
std::unique_ptr<QSettings> OpenSettings(const QString& file);

// The keys the link needs: port, line settings, period, time-out and the
// Unknown limits of the link.
void LoadLinkSettings(QSettings& settings, Config& config);

}  // namespace nbx
