#include "outputs/transfer_layout.h"

#include <bit>
#include <cstdint>

#include "core/text.h"
#include "outputs/latin1.h"

namespace nbx {
namespace {

namespace at = transfer_offset;

// Field by field at explicit offsets, explicitly little-endian: the layout
// does not depend on the compiler's idea of a struct.
class Writer {
 public:
  Writer() : bytes_(TransferRecordSize, ' ') {}
  void Unsigned(std::size_t offset, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
      bytes_[offset + i] = static_cast<char>(static_cast<unsigned char>(value >> (8 * i)));
  }
  void Double(std::size_t offset, double value) { Unsigned(offset, std::bit_cast<std::uint64_t>(value), 8); }
  void Long(std::size_t offset, std::int32_t value) {
    Unsigned(offset, static_cast<std::uint32_t>(value), 4);
  }
  void Integer(std::size_t offset, std::int16_t value) {
    Unsigned(offset, static_cast<std::uint16_t>(value), 2);
  }
  void Text(std::size_t offset, std::string_view text, int width) {
    bytes_.replace(offset, static_cast<std::size_t>(width), Latin1Field(text, width));
  }
  std::string bytes_;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}
  std::uint64_t Unsigned(std::size_t offset, std::size_t size) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
      value |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes_[offset + i])) << (8 * i);
    return value;
  }
  double Double(std::size_t offset) const { return std::bit_cast<double>(Unsigned(offset, 8)); }
  std::int32_t Long(std::size_t offset) const {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(Unsigned(offset, 4)));
  }
  std::int16_t Integer(std::size_t offset) const {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(Unsigned(offset, 2)));
  }
  std::string Text(std::size_t offset, std::size_t width) const {
    return FromLatin1(bytes_.substr(offset, width));
  }
  // A caption without the blanks that pad it to its width.
  std::string Caption(std::size_t offset, std::size_t width) const {
    std::string text = Text(offset, width);
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
  }

 private:
  std::string_view bytes_;
};

// The 18 parameters after the bands, in the order of the file.
template <typename Record>
auto Params(Record& r) {
  return std::array{&r.HeatTemp0,    &r.HeatTemp1,     &r.HeatDelta0,      &r.HeatDelta1,
                    &r.HeatImpTemp,  &r.HeatImpDuration, &r.HeatImpCycle,  &r.HeatMinValue,
                    &r.CloudTempK1,  &r.CloudTempK2,   &r.CloudTempK3,     &r.CloudTempK4,
                    &r.CloudTempK5,  &r.UnknowCloudGT, &r.UnknowRainLT,    &r.UnknownDayGT,
                    &r.CloudTempK6,  &r.CloudTempK7};
}

// The doubles of the head of the record, with their offsets.
template <typename Record>
auto HeadDoubles(Record& r) {
  return std::array<std::pair<std::size_t, decltype(&r.Temp)>, 18>{{
      {at::Temp, &r.Temp},         {at::Cloud, &r.Cloud},           {at::CloudRaw, &r.CloudRaw},
      {at::CloudTemp, &r.CloudTemp}, {at::Rain, &r.Rain},           {at::RainHeat, &r.RainHeat},
      {at::RainTemp, &r.RainTemp}, {at::Day, &r.Day},               {at::Switch, &r.Switch},
      {at::Cycle, &r.Cycle},       {at::DewPoint, &r.DewPoint},     {at::Humidity, &r.Humidity},
      {at::RelPressure, &r.RelPressure}, {at::Wind, &r.Wind},       {at::WindDir, &r.WindDir},
      {at::Gust, &r.Gust},         {at::Reserved, &r.Reserved},     {at::LastReading, &r.LastReading},
  }};
}

}  // namespace

std::string EncodeTransferRecord(const TransferRecord& record) {
  Writer w;
  for (const auto& [offset, field] : HeadDoubles(record)) w.Double(offset, *field);
  w.Text(at::TempUnit, record.TempUnit, 1);
  w.Text(at::HeatText, record.HeatText, 30);
  w.Long(at::HeatColor, record.HeatColor);
  for (std::size_t i = 0; i < record.Bands.size(); ++i) {
    const std::size_t band = at::Bands + i * at::BandSize;
    w.Double(band, record.Bands[i].Limit);
    w.Long(band + 8, record.Bands[i].Color);
    w.Text(band + 12, record.Bands[i].Caption, 20);
  }
  const auto params = Params(record);
  for (std::size_t i = 0; i < params.size(); ++i) w.Double(at::Params + 8 * i, *params[i]);
  w.Text(at::SpeedUnit, record.SpeedUnit, 1);
  w.Integer(at::WindPresent, record.WindPresent);
  w.Long(at::Version, record.Version);
  w.Integer(at::SkyQualityPresent, record.SkyQualityPresent);
  return w.bytes_;
}

std::optional<TransferRecord> DecodeTransferRecord(std::string_view bytes) {
  if (bytes.size() < TransferRecordSize) return std::nullopt;
  const Reader r(bytes);
  TransferRecord record;
  for (const auto& [offset, field] : HeadDoubles(record)) *field = r.Double(offset);
  record.TempUnit = r.Text(at::TempUnit, 1);
  record.HeatText = r.Caption(at::HeatText, 30);
  record.HeatColor = r.Long(at::HeatColor);
  for (std::size_t i = 0; i < record.Bands.size(); ++i) {
    const std::size_t band = at::Bands + i * at::BandSize;
    record.Bands[i].Limit = r.Double(band);
    record.Bands[i].Color = r.Long(band + 8);
    record.Bands[i].Caption = r.Caption(band + 12, 20);
  }
  const auto params = Params(record);
  for (std::size_t i = 0; i < params.size(); ++i) *params[i] = r.Double(at::Params + 8 * i);
  record.SpeedUnit = r.Text(at::SpeedUnit, 1);
  record.WindPresent = r.Integer(at::WindPresent);
  record.Version = r.Long(at::Version);
  record.SkyQualityPresent = r.Integer(at::SkyQualityPresent);
  return record;
}

}  // namespace nbx
