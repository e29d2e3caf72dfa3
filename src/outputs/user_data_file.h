#pragma once

#include <string>

namespace nbx {
struct Config;
struct Nimbometer;

// The user data file: one quoted line every FreqSave finished cycles, with the
// columns of the user's table. The cycle's writer (WriteUserDataLine),
// Record_DebugInfo and CheckDataFolder are declared in data_outputs.h.

// The folder joined with the trimmed name, then ".csv".
std::string UserDataFileName(const Nimbometer& nm);
// SaveFreq as the writer counts it: truncated, at least 1.
int FreqSave(const Config& config);
// The change handler of SaveFreq: the value is truncated, anything below 1
// becomes 1, and the control shows what counts.
void SaveFreq_Change(Nimbometer& nm);

// Whether position 1..24 of the column table is printed.
bool ColumnPrinted(const Nimbometer& nm, int position);
// The text of field 1..24 in its format; "" for any other identifier.
std::string ColumnValue(const Nimbometer& nm, int fieldId);
void WriteUserDataHeader(Nimbometer& nm);

// Opens the file and starts recording, appending or emptying it.
void Record_Start(Nimbometer& nm, bool append);
// Stops recording and closes the file.
void Record_Stop(Nimbometer& nm);
// The recording option pair: index 0 on, index 1 off. Selecting an entry by
// program while Record_Start or Record_Stop runs does nothing more.
void RecOption_Click(Nimbometer& nm, int index);
void SetRecordControlsEnabled(Nimbometer& nm, bool enabled);

}  // namespace nbx
