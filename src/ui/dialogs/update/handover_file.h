#pragma once

#include <QByteArray>
#include <QPoint>
#include <QString>

namespace nbx {

// The file that hands an accepted update to the outside updater, in the
// program's folder.
inline constexpr const char* HandoverFileName = "NBX_Updater.txt";

// The handover file's bytes: one line of quoted texts and bare numbers, as
// the updater reads it ("Title","NBX_Nimbometer",left,top,"NBX_Nimbometer.exe"
// and CR LF), then the updater's instructions as they came, byte for byte.
QByteArray HandoverBytes(QPoint windowPosition, const QByteArray& updaterBytes);

// Writes the handover file into `folder` whole or not at all, so that the
// updater never finds half of one. False with `error` set when the folder
// does not take it.
bool WriteHandoverFile(const QString& folder, QPoint windowPosition, const QByteArray& updaterBytes,
                       QString* error);

}  // namespace nbx
