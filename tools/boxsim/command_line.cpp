#include "boxsim/command_line.h"

#include "boxsim/assignments.h"

namespace nbx::boxsim {
namespace {

// Options that stand for an assignment: "--firmware 5.82" is "firmware=5.82".
struct ValueOption {
  std::string_view option;
  std::string_view key;
};
constexpr ValueOption AssignmentOptions[] = {
    {"--firmware", "firmware"},
    {"--serial", "serial"},
    {"--baud", "baud"},
};

std::string* PathOption(std::string_view option, ProgramOptions& options) {
  if (option == "--link") return &options.linkPath;
  if (option == "--script") return &options.scriptPath;
  if (option == "--log") return &options.logPath;
  return nullptr;
}

std::string_view AssignmentKey(std::string_view option) {
  for (const ValueOption& known : AssignmentOptions) {
    if (known.option == option) return known.key;
  }
  return {};
}

}  // namespace

bool ParseCommandLine(const std::vector<std::string>& arguments, ProgramOptions& options, Box& box,
                      std::string& why) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--help" || argument == "-h") {
      options.help = true;
      continue;
    }
    if (argument == "--version") {
      options.version = true;
      continue;
    }
    if (argument == "--byte-by-byte") {
      box.delivery.byteByByte = true;
      continue;
    }
    if (argument.rfind("--", 0) != 0) {
      if (!box.Apply(argument, why)) return false;
      continue;
    }
    // "--option value" or "--option=value".
    const std::size_t equals = argument.find('=');
    const std::string option = argument.substr(0, equals);
    std::string value;
    if (equals != std::string::npos) {
      value = argument.substr(equals + 1);
    } else if (PathOption(option, options) != nullptr || !AssignmentKey(option).empty()) {
      if (i + 1 == arguments.size()) {
        why = option + " needs a value";
        return false;
      }
      value = arguments[++i];
    }
    if (std::string* path = PathOption(option, options)) {
      *path = value;
    } else if (const std::string_view key = AssignmentKey(option); !key.empty()) {
      if (!box.Apply(std::string(key) + "=" + value, why)) return false;
    } else {
      why = "unknown option " + option;
      return false;
    }
  }
  return true;
}

std::string HelpText() {
  std::string text =
      "Usage: nbx-boxsim [options] [key=value ...]\n"
      "\n"
      "A simulated NBX sensor box on a pseudo-terminal. Prints \"PTY <slave path>\"\n"
      "once the port is ready, then answers the box's commands on it.\n"
      "\n"
      "Options:\n"
      "  --firmware X      firmware text of the \"V\" frame (default 6.10)\n"
      "  --serial X        serial text of the \"K\" frame (default 1234)\n"
      "  --link PATH       also make PATH a symbolic link to the port\n"
      "  --script FILE     scripted values: lines \"at <seconds> key=value ...\",\n"
      "                    \"#\" comments; seconds count from the start\n"
      "  --log FILE        one line per command received\n"
      "  --baud N          pace replies at 10 bits a byte (0: as fast as possible)\n"
      "  --byte-by-byte    each byte of a reply its own write, ~2 ms apart\n"
      "  --help, --version\n"
      "\n"
      "Standard input, one command a line:\n"
      "  key=value ...     set values (all or none); answers OK or ERR <why>\n"
      "  vanish            close the port and remove the link; answers OK\n"
      "  return            a new port, link re-pointed; prints a new PTY line\n"
      "  quit              end (as do SIGINT and SIGTERM; end of input does not)\n"
      "\n"
      "The rain plate: with platemodel=1 its temperature moves, with time constant\n"
      "platetau, toward plateair + platerise x duty / 1023, less platewetdrop while\n"
      "platewet=1; the duty is the last \"P\" command (or heater=). With the model\n"
      "off the \"5\" counts hold what rainplate or raintempcounts set.\n"
      "\n"
      "Keys (booleans 0/1; text values take \\xHH, \\s for a blank, \\n, \\r, \\t, \\\\):\n";
  for (const std::string& line : AssignmentKeyHelp()) text += "  " + line + "\n";
  return text;
}

}  // namespace nbx::boxsim
