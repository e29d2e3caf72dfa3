#include "automation/automation.h"

#include "automation/client_panel.h"
#include "config/settings.h"
#include "core/nimbometer.h"

namespace nbx {
namespace {

Outcome UnknownMember(const Interface& face, std::string_view member) {
  return Outcome::Refused(Failure::UnknownMember, "No member " + std::string(member) + " in " + face.name);
}

bool ArgumentsFit(const std::vector<Argument>& declared, const std::vector<MemberValue>& given) {
  if (declared.size() != given.size()) return false;
  for (std::size_t i = 0; i < given.size(); ++i)
    if (!HoldsType(given[i], declared[i].type)) return false;
  return true;
}

}  // namespace

const Property* Interface::FindProperty(std::string_view member) const {
  for (const Property& p : properties)
    if (p.name == member) return &p;
  return nullptr;
}

const Method* Interface::FindMethod(std::string_view member) const {
  for (const Method& m : methods)
    if (m.name == member) return &m;
  return nullptr;
}

Automation::Automation(Nimbometer& nm, Settings* meteodesk) : nm(nm), meteodesk_(meteodesk) {}

void Automation::BlinkFor(Blink blink) {
  if (blink != Blink::Silent) BlinkLEDCOM(nm, ClientBlinkColour, blink == Blink::Timed);
}

Outcome Automation::Get(const Interface& face, std::string_view member) {
  const Property* p = face.FindProperty(member);
  if (!p) return UnknownMember(face, member);
  BlinkFor(p->blink);
  return Outcome::Value(p->get(*this));
}

Outcome Automation::Set(const Interface& face, std::string_view member, const MemberValue& value) {
  const Property* p = face.FindProperty(member);
  if (!p) return UnknownMember(face, member);
  if (!p->Writable()) return Outcome::Refused(Failure::ReadOnly, "Property " + p->name + " is read only");
  if (!HoldsType(value, p->type))
    return Outcome::Refused(Failure::InvalidArgs, "Wrong type of value for " + p->name);
  BlinkFor(p->blink);
  p->let(*this, value);
  return {};
}

std::vector<MemberValue> Automation::ReadAll(const Interface& face) {
  std::vector<MemberValue> values;
  values.reserve(face.properties.size());
  for (const Property& p : face.properties) values.push_back(p.get(*this));
  return values;
}

Outcome Automation::Invoke(const Interface& face, std::string_view member,
                           const std::vector<MemberValue>& args, const std::string& caller) {
  const Method* m = face.FindMethod(member);
  if (!m) return UnknownMember(face, member);
  if (!ArgumentsFit(m->in, args))
    return Outcome::Refused(Failure::InvalidArgs, "Wrong arguments for " + m->name);
  BlinkFor(m->blink);
  return m->call(*this, MethodCall{args, caller});
}

void Automation::Attach(const std::string& client) {
  ++objects_[client];
  RegisterUsers(nm, 1);
}

bool Automation::Detach(const std::string& client) {
  const auto held = objects_.find(client);
  if (held == objects_.end()) return false;
  if (--held->second == 0) objects_.erase(held);
  RegisterUsers(nm, -1);
  return true;
}

void Automation::ClientLeft(const std::string& client) {
  while (Detach(client)) {
  }
}

std::vector<std::string> Automation::AttachedClients() const {
  std::vector<std::string> clients;
  for (const auto& [client, count] : objects_) clients.push_back(client);
  return clients;
}

std::string Automation::UseMeteodesk() const {
  return meteodesk_ ? meteodesk_->Get("Setup", "Emulator", "0") : "0";
}

}  // namespace nbx
