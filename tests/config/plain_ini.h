#pragma once

#include <map>
#include <string>

namespace nbx::test {

// An INI file as a plain reader sees it, without Qt: sections of key=value
// lines; a value in double quotes loses them and its escapes.
using IniFile = std::map<std::string, std::map<std::string, std::string>>;
IniFile ParseIni(const std::string& text);

}  // namespace nbx::test
