#include "data_file_ledger.h"

#include <fstream>

namespace nbx::test {
namespace {

// FNV-1a over the stamps, in order.
std::uint64_t Digest(std::uint64_t digest, const std::string& text) {
  for (const unsigned char c : text) digest = (digest ^ c) * 0x100000001b3ull;
  return (digest ^ '\n') * 0x100000001b3ull;
}

std::string Stamp(const LocalDateTime& t) {
  return FormatDate(t, "yyyy-mm-dd") + " " + FormatDate(t, "hh:mm:ss");
}

// The fields of a data line: each quoted, each followed by a comma.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  std::size_t at = 0;
  while (at < line.size()) {
    if (line[at] != '"') return {};
    const std::size_t close = line.find("\",", at + 1);
    if (close == std::string::npos) return {};
    fields.push_back(line.substr(at + 1, close - at - 1));
    at = close + 2;
  }
  return fields;
}

}  // namespace

bool IsVerdictChange(const std::string& message) {
  return message.rfind("Setting ", 0) == 0 || message.rfind("Just started, setting ", 0) == 0;
}

void DataFileLedger::ExpectLine(const LocalDateTime& endOfCycle) {
  const std::string stamp = Stamp(endOfCycle);
  digest_ = Digest(digest_, stamp);
  if (linesDue_ == 0) firstDue_ = stamp;
  lastDue_ = stamp;
  ++linesDue_;
}

void DataFileLedger::StartAfresh() {
  linesDue_ = verdictLinesDue_ = 0;
  digest_ = kDigestStart;
  firstDue_.clear();
  lastDue_.clear();
}

std::vector<std::string> DataFileLedger::Check(const std::string& path) const {
  std::vector<std::string> problems;
  auto note = [&](const std::string& problem) {
    if (problems.size() < 5) problems.push_back(problem);
  };
  // Line by line: a month of lines is never held whole.
  std::ifstream in(path, std::ios::binary);
  if (!in) return {path + " cannot be read"};
  std::int64_t lines = 0, verdictLines = 0, headers = 0;
  std::uint64_t digest = kDigestStart;
  std::size_t columns = 0;
  std::string first, last, line;
  while (std::getline(in, line)) {
    if (in.eof() || line.empty() || line.back() != '\r') {
      note("a line cut short: " + line.substr(0, 80));
      continue;
    }
    line.pop_back();
    const std::size_t debug = line.find(" debug msg: ");
    if (debug != std::string::npos && line.size() > 2 && line.back() == '"') {
      if (IsVerdictChange(line.substr(debug + 12, line.size() - debug - 13))) ++verdictLines;
      continue;
    }
    const std::vector<std::string> fields = Fields(line);
    if (fields.size() < 2) {
      note("a broken line: " + line.substr(0, 80));
      continue;
    }
    if (fields[0] == "Date") {
      ++headers;
      columns = fields.size();
      continue;
    }
    if (headers == 0 || fields.size() != columns) {
      note("a line without its header's columns: " + line.substr(0, 80));
      continue;
    }
    const std::string stamp = fields[0] + " " + fields[1];
    digest = Digest(digest, stamp);
    if (lines == 0) first = stamp;
    last = stamp;
    ++lines;
  }
  linesChecked_ += lines;
  if (lines != linesDue_ || digest != digest_)
    note(path + " holds " + std::to_string(lines) + " lines (" + first + " .. " + last + ") where " +
         std::to_string(linesDue_) + " are due (" + firstDue_ + " .. " + lastDue_ + ")" +
         (lines == linesDue_ ? ", not the same ones" : ""));
  if (verdictLines != verdictLinesDue_)
    note(std::to_string(verdictLines) + " verdict lines in the file where " +
         std::to_string(verdictLinesDue_) + " changes happened");
  return problems;
}

}  // namespace nbx::test
