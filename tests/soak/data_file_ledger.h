#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/serial_date.h"

namespace nbx::test {

// What the user data file must hold: one line for each cycle written while
// its folder was there, in order, and one debug line for each change of the
// verdict. Only a running digest of the time stamps is kept, so that a month
// of lines costs no memory.
class DataFileLedger {
 public:
  void ExpectLine(const LocalDateTime& endOfCycle);
  void ExpectVerdictLine() { ++verdictLinesDue_; }
  // The folder went, and the file with it: what is due starts again.
  void StartAfresh();

  // Reads the file and compares; one text per difference, none when it holds
  // exactly what is due and every line is whole.
  std::vector<std::string> Check(const std::string& path) const;

  std::int64_t LinesDue() const { return linesDue_; }
  std::int64_t LinesChecked() const { return linesChecked_; }

 private:
  std::int64_t linesDue_ = 0;
  std::int64_t verdictLinesDue_ = 0;
  std::uint64_t digest_ = kDigestStart;
  std::string firstDue_, lastDue_;
  mutable std::int64_t linesChecked_ = 0;

  static constexpr std::uint64_t kDigestStart = 0xcbf29ce484222325ull;
};

// A debug message that tells a change of the verdict.
bool IsVerdictChange(const std::string& message);

}  // namespace nbx::test
