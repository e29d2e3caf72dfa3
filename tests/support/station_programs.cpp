#include "support/station_programs.h"

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <thread>

namespace nbx::test {
namespace {

std::vector<std::string> BoxArguments(const TempDir& dir, std::vector<std::string> arguments,
                                      const std::string& name) {
  std::vector<std::string> all{"--link", dir.File(name), "--log", dir.File(name + ".log")};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return all;
}

std::vector<std::string> StationEnvironment(const TempDir& dir, const std::string& errors,
                                            std::vector<std::string> environment) {
  // Later entries win: the caller's come last.
  environment.insert(environment.begin(),
                     {"NBX_ERRORS=" + errors, "XDG_CONFIG_HOME=" + dir.File("config"), "HOME=" + dir.path()});
  return environment;
}

IniSections Changed(IniSections sections, const IniSections& changes) {
  for (const auto& [section, keys] : changes)
    for (const auto& [key, value] : keys) sections[section][key] = value;
  return sections;
}

}  // namespace

std::string IniText(const IniSections& sections) {
  std::string text;
  for (const auto& [section, keys] : sections) {
    text += "[" + section + "]\n";
    for (const auto& [key, value] : keys) text += key + "=" + value + "\n";
  }
  return text;
}

BoxProgram::BoxProgram(const TempDir& dir, std::vector<std::string> arguments, const std::string& name)
    : link(dir.File(name)),
      log(dir.File(name + ".log")),
      process(NBX_BOXSIM_PATH, BoxArguments(dir, std::move(arguments), name)) {
  std::string line;
  ready = process.ReadLine(line, 5s) && line.rfind("PTY ", 0) == 0;
  if (ready) port = line.substr(4);
}

bool BoxProgram::Tell(const std::string& line) {
  process.WriteLine(line);
  std::string answer;
  // "return" answers with the new port's line, the rest with OK.
  return process.ReadLine(answer, 5s) && (answer == "OK" || answer.rfind("PTY ", 0) == 0);
}

std::vector<std::string> BoxProgram::Commands() const {
  std::vector<std::string> commands;
  std::istringstream in(ReadFile(log));
  for (std::string line; std::getline(in, line);) commands.push_back(line);
  return commands;
}

bool BoxProgram::WaitForCommand(const std::string& command, std::size_t after,
                                std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (std::chrono::steady_clock::now() < deadline) {
    const std::vector<std::string> commands = Commands();
    for (std::size_t i = after; i < commands.size(); ++i)
      if (commands[i] == command) return true;
    std::this_thread::sleep_for(2ms);
  }
  return false;
}

IniSections LinkSettings(const std::string& port, const IniSections& changes) {
  // No Alpaca server: stations of parallel tests would contend for its ports.
  return Changed({{"Communication", {{"PortName", port}, {"RefreshPeriod", "1"}, {"Timeout", "1"}}},
                  {"Alpaca", {{"Enabled", "0"}}}},
                 changes);
}

IniSections MasterSettings(const std::string& port, const std::string& folder, const IniSections& changes) {
  const IniSections master{
      {"Window",
       {{"PathName", folder},
        {"FileName", "night"},
        {"AutoStartRecording", "1"},
        {"GraphImagePath", (std::filesystem::path(folder).parent_path() / "pictures").string()}}},
      {"COMMFile", {{"NetFilePath", folder}, {"PathNameCCDAP4", folder}}},
  };
  return Changed(LinkSettings(port, master), changes);
}

StationProgram::StationProgram(const TempDir& dir, const IniSections& settings, const std::string& name,
                               const std::vector<std::string>& environment)
    : settings((WriteFile(dir.File(name + ".ini"), IniText(settings)), dir.File(name + ".ini"))),
      errors(dir.File(name + ".err")),
      process("/bin/sh",
              {"-c", "exec \"$0\" \"$@\" 2>\"$NBX_ERRORS\"", NBX_NIMBOMETER_PATH, "--headless", "--settings",
               this->settings},
              StationEnvironment(dir, errors, environment)) {}

bool StationProgram::NextCycle(std::string& line, std::chrono::milliseconds timeout) {
  while (process.ReadLine(line, timeout)) {
    if (line.find(" sky ") != std::string::npos) {
      ++cycles;
      return true;
    }
    output.push_back(line);
  }
  return false;
}

bool StationProgram::CycleWhere(const std::function<bool(const std::string&)>& holds, int most,
                                std::string& line) {
  for (int i = 0; i < most; ++i) {
    if (!NextCycle(line)) return false;
    if (holds(line)) return true;
  }
  return false;
}

int StationProgram::Stop() {
  process.Signal(SIGTERM);
  return process.Wait(10s);
}

std::string Field(const std::string& summary, const std::string& name) {
  std::smatch m;
  if (name == "codes") {
    // The codes are words of their own, up to the relay or the end.
    return std::regex_search(summary, m, std::regex("  codes (.*?)(  relay .*)?$")) ? m[1].str() : "";
  }
  return std::regex_search(summary, m, std::regex("  " + name + " (\\S+)")) ? m[1].str() : "";
}

double Number(const std::string& summary, const std::string& name) {
  const std::string text = Field(summary, name);
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  return text.empty() || *end != '\0' ? NAN : value;
}

bool IsUnsafe(const std::string& summary) { return summary.find("  UNSAFE") != std::string::npos; }
bool LinkDown(const std::string& summary) { return summary.find("  LINK DOWN") != std::string::npos; }

DataFile ReadDataFile(const std::string& path) {
  DataFile file;
  std::ifstream in(path, std::ios::binary);
  std::size_t columns = 0;
  for (std::string line; std::getline(in, line);) {
    if (in.eof() || line.empty() || line.back() != '\r') {
      file.whole = false;
      continue;
    }
    line.pop_back();
    file.lastLine = line;
    // A debug line is one quoted field without a comma behind it.
    if (line.back() == '"') continue;
    std::size_t fields = 0;
    for (std::size_t at = line.find("\","); at != std::string::npos; at = line.find("\",", at + 2)) ++fields;
    if (line.rfind("\"Date\",", 0) == 0) {
      ++file.headers;
      columns = fields;
      continue;
    }
    if (fields != columns) file.whole = false;
    ++file.dataLines;
  }
  return file;
}

}  // namespace nbx::test
