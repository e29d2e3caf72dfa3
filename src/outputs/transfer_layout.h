#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/transfer_record.h"

namespace nbx {

// The transfer file byte by byte: 620 bytes, little-endian numbers (Double
// IEEE 754 64-bit, Long 32-bit, Integer 16-bit), texts in one byte a
// character blank padded, no header, padding, checksum or line end. The
// closing block (Version, SkyQualityPresent) goes out by a write of its own.
inline constexpr std::size_t TransferMainSize = 614;
inline constexpr std::size_t TransferClosingSize = 6;
inline constexpr std::size_t TransferRecordSize = TransferMainSize + TransferClosingSize;

// Field offsets that readers rely on.
namespace transfer_offset {
inline constexpr std::size_t Temp = 0, Cloud = 8, CloudRaw = 16, TempUnit = 24, CloudTemp = 25,
                             Rain = 33, RainHeat = 41, RainTemp = 49, Day = 57, Switch = 65,
                             Cycle = 73, DewPoint = 81, Humidity = 89, RelPressure = 97, Wind = 105,
                             WindDir = 113, Gust = 121, Reserved = 129, LastReading = 137,
                             HeatText = 145, HeatColor = 175, Bands = 179, Params = 467,
                             SpeedUnit = 611, WindPresent = 612, Version = 614,
                             SkyQualityPresent = 618;
inline constexpr std::size_t BandSize = 32;  // Double Limit, Long Color, Text 20 Caption
}  // namespace transfer_offset

// The record's bytes; texts that Latin-1 lacks become "?", long texts are cut.
std::string EncodeTransferRecord(const TransferRecord& record);
// The record from the first 620 bytes; nothing when fewer bytes are given.
std::optional<TransferRecord> DecodeTransferRecord(std::string_view bytes);

}  // namespace nbx
