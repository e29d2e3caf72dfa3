#include "outputs/single_line_record.h"

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/text.h"
#include "outputs/latin1.h"
#include "safety/conditions.h"

namespace nbx {
namespace {

// A number laid into a field of `width`: right-aligned in width - 1, one blank behind.
std::string NumberField(const Nimbometer& nm, double value, const char* pattern, int width) {
  return FixedWidth(FormatField(value, pattern, width, nm.io.host->DecimalSeparator()), width);
}

}  // namespace

std::string SingleLineRecord(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  const bool humidity = s.HumidityPresent == 1;
  const LocalDateTime now = nm.Now();
  std::string r;
  r.reserve(SingleLineRecordSize);
  r += FixedWidth(FormatDate(now, "yyyy-mm-dd"), 11);
  r += FixedWidth(FormatDate(now, "hh:mm:ss.ss"), 12);
  r += Latin1Field(c.UnitTempStr, 2);
  r += Latin1Field(c.UnitSpeedStr, 2);
  r += NumberField(nm, s.Value_Cloud, "#0.0", 7);
  r += NumberField(nm, s.Value_Temp, "#0.0", 7);
  r += NumberField(nm, s.Value_CloudTemp, "#0.0", 7);
  r += NumberField(nm, s.Value_Wind, "#0.0", 7);
  r += humidity ? NumberField(nm, s.Value_HumidityRel, "#0", 4) : NumberField(nm, 50, "0", 4);
  r += NumberField(nm, humidity ? s.Value_DewPointT : -20, "#0.0", 7);
  // A fraction of 0 to 1 in "0": the field holds 0 or 1, as readers know it.
  r += NumberField(nm, s.Value_RainHeat, "0", 4);
  const double rainFlag = s.NBX_RainCondition == 1 ? 0 : 2;
  r += NumberField(nm, rainFlag, "0", 2);
  r += NumberField(nm, rainFlag, "0", 2);
  r += NumberField(nm, SecondsSinceGoodData(nm), "00000", 6);
  r += FixedWidth(FormatNumber(ToSerialDate(now), "000000.00000", nm.io.host->DecimalSeparator()), 13);
  r += NumberField(nm, s.NBX_CloudCondition, "0", 2);
  r += NumberField(nm, s.NBX_WindCondition, "0", 2);
  r += NumberField(nm, s.NBX_RainCondition, "0", 2);
  r += NumberField(nm, s.NBX_DayCondition, "0", 2);
  r += s.Value_Unsafe ? "1 " : "0 ";
  r += s.Value_Unsafe ? "1" : "0";
  // Every field has its width, so the record has its size whatever the values.
  return FixedWidth(r, SingleLineRecordSize);
}

std::string SingleLineRecordExtended(const Nimbometer& nm, const std::string& record) {
  std::string tail = " -99.99";
  if (nm.state.SQMPresent) {
    tail = "+" + FormatField(nm.state.Value_Day, "#0.00", 0, nm.io.host->DecimalSeparator());
    if (tail.size() < 7) tail.insert(0, 7 - tail.size(), ' ');
    tail.resize(7);
  }
  return FixedWidth(record, SingleLineRecordSize) + tail;
}

std::string CommaRecord(const std::string& record) {
  struct Span {
    std::size_t offset, width;
  };
  static constexpr Span kFields[] = {{11, 12}, {27, 7}, {34, 7}, {41, 7}, {48, 7}, {59, 7}, {80, 13}};
  std::string out = record;
  for (const Span& f : kFields)
    if (f.offset + f.width <= out.size())
      out.replace(f.offset, f.width, ToCommaDecimal(out.substr(f.offset, f.width)));
  return out;
}

std::string ExtendedFileName(const std::string& name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string::npos) return name + "s";
  return name.substr(0, dot) + "s" + name.substr(dot);
}

}  // namespace nbx
