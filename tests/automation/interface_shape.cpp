#include "interface_shape.h"

#include <QXmlStreamReader>

namespace nbx::test {

std::map<std::string, InterfaceShape> ReadShapes(const QString& xml, const std::string& root) {
  std::map<std::string, InterfaceShape> shapes;
  std::vector<std::string> nodes;
  InterfaceShape* face = nullptr;
  std::string* method = nullptr;
  QXmlStreamReader reader(xml);
  while (!reader.atEnd()) {
    reader.readNext();
    const std::string tag = reader.name().toString().toStdString();
    const auto attr = [&](const char* name) {
      return reader.attributes().value(QLatin1String(name)).toString().toStdString();
    };
    if (reader.isStartElement()) {
      if (tag == "node") {
        const std::string name = attr("name");
        nodes.push_back(nodes.empty() ? (name.empty() ? root : name) : nodes.back() + "/" + name);
      } else if (tag == "interface") {
        face = &shapes[nodes.back() + "|" + attr("name")];
      } else if (tag == "property" && face) {
        face->members.push_back("property " + attr("name") + " " + attr("type") + " " + attr("access"));
        face->propertyTypes[attr("name")] = attr("type");
      } else if (tag == "method" && face) {
        face->members.push_back("method " + attr("name"));
        method = &face->members.back();
      } else if (tag == "arg" && method) {
        *method += " " + attr("direction") + " " + attr("type") + " " + attr("name") + ",";
      }
    } else if (reader.isEndElement()) {
      if (tag == "node") nodes.pop_back();
      if (tag == "interface") face = nullptr;
      if (tag == "method") method = nullptr;
    }
  }
  return shapes;
}

}  // namespace nbx::test
