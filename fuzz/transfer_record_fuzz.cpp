// The 620-byte record of the transfer file, read field by field. Whatever
// its bytes, a record that is read and written again gives the same bytes:
// numbers travel as their bits, texts as one byte a character, and the
// blanks that pad a caption come back as the padding.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz_station.h"
#include "outputs/transfer_layout.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nbx;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::optional<TransferRecord> record = DecodeTransferRecord(bytes);
  fuzz::Require(record.has_value() == (size >= TransferRecordSize),
                "a record is read exactly when there are 620 bytes");
  if (!record) return 0;
  const std::string again = EncodeTransferRecord(*record);
  fuzz::Require(again.size() == TransferRecordSize, "a record is written in 620 bytes");
  fuzz::Require(again == bytes.substr(0, TransferRecordSize),
                "a record read and written again keeps its bytes");
  return 0;
}
