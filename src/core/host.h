#pragma once

#include <functional>
#include <string_view>

namespace nbx {

// Buttons of a message box and the replies, as the program's own message box has them.
enum MessageButtons { ButtonsOk = 0, ButtonsYesNoCancel = 3, ButtonsYesNo = 4 };
enum MessageReply { ReplyOk = 1, ReplyCancel = 2, ReplyYes = 6, ReplyNo = 7 };

// What the logic asks of the program around it: the message box, the beep,
// the wire trace, and waiting without blocking the event loop. The window
// shows boxes; headless prints them and answers by default.
class Host {
 public:
  virtual ~Host() = default;
  // The wire trace ("Tx: z!", "Rx Complete: ...", "Serial port lost - ...").
  virtual void Trace(std::string_view line) { (void)line; }
  // A debug message of the logic (the verdict's log lines among them), as it
  // goes into the user data file; the station may show it too.
  virtual void DebugInfo(std::string_view message) { (void)message; }
  virtual void Beep() {}
  // Shows a message and returns the reply; `buttons` is a MessageButtons value.
  virtual int ShowMessage(std::string_view text, int buttons, std::string_view title) {
    (void)text, (void)title;
    return buttons == ButtonsOk ? ReplyOk : ReplyYes;
  }
  // Lets the event loop run until `done` is true or `timeoutMs` has passed;
  // true when `done` came true.
  virtual bool WaitFor(const std::function<bool()>& done, int timeoutMs) = 0;
  // The decimal separator of the machine's locale, read afresh each time.
  virtual char DecimalSeparator() const { return '.'; }
  // A reading cycle has been processed (good or failed); headless prints its summary.
  virtual void CycleProcessed() {}
};

}  // namespace nbx
