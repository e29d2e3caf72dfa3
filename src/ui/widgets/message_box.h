#pragma once

#include <QString>

class QWidget;

namespace nbx {

// NBXError: the program's own message box. `buttons` is a MessageButtons
// value of core/host.h (0 "OK", 3 "Yes" "No" "Cancel", 4 "Yes" "No"); the
// reply is the MessageReply of the button pressed. Modal, centred over
// `over`; an empty title gives the program's name.
int ShowMessage(QWidget* over, const QString& text, int buttons, const QString& title);

}  // namespace nbx
