#include "plain_ini.h"

#include <sstream>

namespace nbx::test {

IniFile ParseIni(const std::string& text) {
  IniFile ini;
  std::string section;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == ';' || line[0] == '#') continue;
    if (line.front() == '[' && line.back() == ']') {
      section = line.substr(1, line.size() - 2);
      ini[section];
      continue;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    std::string value = line.substr(equals + 1);
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
      std::string unquoted;
      for (std::size_t i = 1; i + 1 < value.size(); ++i) {
        if (value[i] == '\\' && i + 2 < value.size()) ++i;
        unquoted += value[i];
      }
      value = unquoted;
    }
    ini[section][line.substr(0, equals)] = value;
  }
  return ini;
}

}  // namespace nbx::test
