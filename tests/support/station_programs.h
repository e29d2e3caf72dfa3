#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/child_process.h"

namespace nbx::test {

using namespace std::chrono_literals;

// nbx-boxsim on a pseudo-terminal behind a stable link path (`name` in
// `dir`), logging every command it receives in `name`.log; values and faults
// are set on its standard input.
class BoxProgram {
 public:
  BoxProgram(const TempDir& dir, std::vector<std::string> arguments, const std::string& name = "ttyNBX");

  // Sends one control line ("rain=2500", "vanish", "return") and waits for its answer.
  bool Tell(const std::string& line);
  // The commands the box has received so far, one a line.
  std::vector<std::string> Commands() const;
  // Waits until the box receives `command` as a command after the first
  // `after` ones; false when it did not come in time.
  bool WaitForCommand(const std::string& command, std::size_t after, std::chrono::milliseconds timeout);

  std::string link, log;
  std::string port;  // the pseudo-terminal the link points to at start
  ChildProcess process;
  bool ready = false;
};

// An INI settings file: section -> key -> value.
using IniSections = std::map<std::string, std::map<std::string, std::string>>;

// Settings of a station reading the box on `port` with a period of 1 s and a
// time-out of 1 s, the rest left to their defaults; `changes` replace or add keys.
IniSections LinkSettings(const std::string& port, const IniSections& changes = {});
// Settings of a MASTER on `port` as above, recording into `folder`/night.csv,
// its single-line and transfer files in `folder` too, its pictures beside it.
IniSections MasterSettings(const std::string& port, const std::string& folder,
                           const IniSections& changes = {});
std::string IniText(const IniSections& sections);

// The headless station as its own program, with its own settings file
// `name`.ini in `dir`; its standard error goes to `name`.err. `environment`
// adds or replaces variables ("DISPLAY=", "LSAN_OPTIONS=...").
class StationProgram {
 public:
  StationProgram(const TempDir& dir, const IniSections& settings, const std::string& name = "station",
                 const std::vector<std::string>& environment = {});

  // The next summary line of a cycle; other lines are kept in `output`.
  bool NextCycle(std::string& line, std::chrono::milliseconds timeout = 10s);
  // Reads cycles until `holds` is true for one, at most `cycles` of them.
  bool CycleWhere(const std::function<bool(const std::string&)>& holds, int cycles, std::string& line);
  // SIGTERM, then the exit code (-1 when it did not end within 10 s).
  int Stop();

  std::string settings, errors;
  ChildProcess process;
  std::vector<std::string> output;  // every line that was not a cycle's summary
  int cycles = 0;                   // summary lines read
};

// A field of a summary line ("sky", "rain", "codes"), or "" when absent.
std::string Field(const std::string& summary, const std::string& name);
// A number field of a summary line; NaN when absent.
double Number(const std::string& summary, const std::string& name);
bool IsUnsafe(const std::string& summary);
bool LinkDown(const std::string& summary);

// The user data file: its data lines (not the header, not debug lines), and
// whether every line is whole: ends in CR LF with as many fields as the header.
struct DataFile {
  int headers = 0;
  int dataLines = 0;
  bool whole = true;
  std::string lastLine;
};
DataFile ReadDataFile(const std::string& path);

}  // namespace nbx::test
