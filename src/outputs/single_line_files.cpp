// The family of files that observatory software polls, rewritten once per
// finished cycle at fixed names in the single-line folder.

#include <cstdio>

#include "core/nimbometer.h"
#include "core/text.h"
#include "outputs/data_outputs.h"
#include "outputs/debug_record.h"
#include "outputs/file_writes.h"
#include "outputs/json_file.h"
#include "outputs/output_codes.h"
#include "outputs/single_line_record.h"

namespace nbx {
namespace {

// Folder + "/CS-" + name, without the path joiner: a folder that ends in "/"
// gives a double separator, as readers of this file have it. An empty folder
// is the current one.
std::string CommaFilePath(const Config& c) {
  return (c.LblPathNameCCDAP4.empty() ? "" : c.LblPathNameCCDAP4 + "/") + "CS-" + c.FileNameCCDAP4;
}

}  // namespace

void WriteSingleLineFiles(Nimbometer& nm) {
  const Config& c = nm.config;
  if (Trim(c.FileNameCCDAP4).empty()) return;
  const std::string& folder = c.LblPathNameCCDAP4;
  const std::string record = SingleLineRecord(nm);
  const std::string extended = SingleLineRecordExtended(nm, record);
  // In this order; the first failure ends the round, and the next cycle
  // starts again from the first file.
  const bool written =
      WriteInPlace(JoinPath(folder, c.FileNameCCDAP4), {record}) &&
      WriteInPlace(JoinPath(folder, ExtendedFileName(c.FileNameCCDAP4)), {extended}) &&
      WriteWhole(JoinPath(folder, "nbx_json.dat"), JsonText(nm, extended)) &&
      WriteWhole(JoinPath(folder, "DebugData.txt"), DebugDataText(nm)) &&
      WriteInPlace(CommaFilePath(c), {CommaRecord(record)});
  if (!written) ShowOutputCode(nm, "c51");
}

void DeleteSingleLineFile(Nimbometer& nm) {
  const Config& c = nm.config;
  if (Trim(c.FileNameCCDAP4).empty()) return;
  // A reader must see no reading of an earlier run; a file that is not there is fine.
  std::remove(JoinPath(c.LblPathNameCCDAP4, c.FileNameCCDAP4).c_str());
}

}  // namespace nbx
