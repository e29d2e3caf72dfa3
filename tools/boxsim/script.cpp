#include "boxsim/script.h"

#include <charconv>
#include <cmath>
#include <vector>

#include "boxsim/assignments.h"

namespace nbx::boxsim {
namespace {

struct Step {
  double atSeconds;
  std::string assignment;
};

std::vector<std::string_view> WordsBeforeComment(std::string_view line) {
  std::vector<std::string_view> words = SplitWords(line);
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i].front() == '#') {
      words.resize(i);
      break;
    }
  }
  return words;
}

bool ParseLine(std::string_view line, std::vector<Step>& steps, std::string& why) {
  const std::vector<std::string_view> words = WordsBeforeComment(line);
  if (words.empty()) return true;
  if (words[0] != "at" || words.size() < 3) {
    why = "expected \"at <seconds> key=value ...\"";
    return false;
  }
  double atSeconds = 0;
  const std::string_view time = words[1];
  const auto [end, error] = std::from_chars(time.data(), time.data() + time.size(), atSeconds);
  if (error != std::errc() || end != time.data() + time.size() || !std::isfinite(atSeconds)) {
    why = "bad time \"" + std::string(time) + "\"";
    return false;
  }
  Box trial;
  for (std::size_t i = 2; i < words.size(); ++i) {
    if (!trial.Apply(words[i], why)) return false;
    steps.push_back(Step{atSeconds, std::string(words[i])});
  }
  return true;
}

}  // namespace

bool LoadScript(std::string_view text, Box& box, std::string& why) {
  std::vector<Step> steps;
  int lineNumber = 0;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    ++lineNumber;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (!ParseLine(line, steps, why)) {
      why = "line " + std::to_string(lineNumber) + ": " + why;
      return false;
    }
  }
  for (Step& step : steps) box.AddScriptStep(step.atSeconds, std::move(step.assignment));
  return true;
}

}  // namespace nbx::boxsim
