#include "automation/introspection.h"

namespace nbx {
namespace {

std::string Escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string Attribute(std::string_view name, std::string_view value) {
  return " " + std::string(name) + "=\"" + Escaped(value) + "\"";
}

std::string Arg(const Argument& a, const char* direction) {
  return "<arg" + Attribute("name", a.name) + Attribute("type", Signature(a.type)) +
         Attribute("direction", direction) + "/>";
}

}  // namespace

std::string_view Signature(ValueType type) {
  switch (type) {
    case ValueType::Boolean:
      return "b";
    case ValueType::Integer:
      return "n";
    case ValueType::Long:
      return "i";
    case ValueType::Double:
      return "d";
    case ValueType::Text:
      return "s";
    case ValueType::HistoryArray:
      return "aad";
    case ValueType::Object:
      break;
  }
  return "o";
}

std::string InterfaceXml(const Interface& face, int indent) {
  const std::string pad(static_cast<std::size_t>(indent), ' ');
  const std::string in = pad + "  ";
  std::string xml = pad + "<interface" + Attribute("name", face.name) + ">\n";
  for (const Annotation& a : face.annotations)
    xml += in + "<annotation" + Attribute("name", a.name) + Attribute("value", a.value) + "/>\n";
  for (const Property& p : face.properties)
    xml += in + "<property" + Attribute("name", p.name) + Attribute("type", Signature(p.type)) +
           Attribute("access", p.Writable() ? "readwrite" : "read") + "/>\n";
  for (const Method& m : face.methods) {
    if (m.in.empty() && m.out.empty()) {
      xml += in + "<method" + Attribute("name", m.name) + "/>\n";
      continue;
    }
    xml += in + "<method" + Attribute("name", m.name) + ">\n";
    for (const Argument& a : m.in) xml += in + "  " + Arg(a, "in") + "\n";
    for (const Argument& a : m.out) xml += in + "  " + Arg(a, "out") + "\n";
    xml += in + "</method>\n";
  }
  return xml + pad + "</interface>\n";
}

std::string IntrospectionDocument() {
  return "<!DOCTYPE node PUBLIC \"-//freedesktop//DTD D-BUS Object Introspection 1.0//EN\"\n"
         " \"http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd\">\n"
         "<node" +
         Attribute("name", NimbometerObjectPath) + ">\n" + InterfaceXml(NimbometerInterface(), 2) +
         "  <node name=\"Form\">\n" + InterfaceXml(FormInterface(), 4) + "  </node>\n</node>\n";
}

}  // namespace nbx
