#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/members.h"
#include "automation/object_safety.h"

namespace nbx {
struct Nimbometer;
class Settings;

// The public object that other programs drive. It holds nothing of the site:
// every member reads or writes the station's records, as the user's controls
// do. What it keeps is who is attached and the two safety options.
class Automation {
 public:
  // `meteodesk` is the store of the companion program NBX_Meteodesk, read
  // afresh at each call; none: its default.
  explicit Automation(Nimbometer& nm, Settings* meteodesk = nullptr);

  // A member's value, after the member's blink.
  Outcome Get(const Interface& face, std::string_view member);
  // Writes a member; `value` must be of the member's type.
  Outcome Set(const Interface& face, std::string_view member, const MemberValue& value);
  // Every property of the interface in its order, without blinking: a
  // browser of the object is not a client's poll.
  std::vector<MemberValue> ReadAll(const Interface& face);
  // Runs a method; `args` must be of its declared types.
  Outcome Invoke(const Interface& face, std::string_view member, const std::vector<MemberValue>& args,
                 const std::string& caller);

  // A client creates an object (Attach) or releases one (Detach); a client
  // may hold several. False when the client held none.
  void Attach(const std::string& client);
  bool Detach(const std::string& client);
  // A client left without releasing its objects: each is released. Its
  // hold on the verdict (LocalControl) stays, as after a release.
  void ClientLeft(const std::string& client);
  // The clients that hold objects, each once.
  std::vector<std::string> AttachedClients() const;

  // The text of key Emulator, section Setup, of NBX_Meteodesk; "0" by default.
  std::string UseMeteodesk() const;

  Nimbometer& nm;
  ObjectSafety safety;

 private:
  void BlinkFor(Blink blink);

  Settings* meteodesk_;
  std::map<std::string, int> objects_;  // by client: its objects alive
};

}  // namespace nbx
