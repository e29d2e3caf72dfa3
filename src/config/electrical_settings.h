#pragma once

namespace nbx {
class Settings;
class SettingsReader;
class SettingsWriter;
struct SiteState;

// Section Electrical: the box's constants as the settings hold them until the
// box identifies itself. The load reads Stats_Universe apart, first of all,
// as it sizes the sample buffers, and Initiliazed last.

// Stats_Sigma, the nine constants, then SerialNo.
void LoadElectricalConstants(SettingsReader& reader, SiteState& s);
// Stats_Universe, Stats_Sigma, the nine constants, SerialNo, Initiliazed.
void SaveElectrical(SettingsWriter& writer, const SiteState& s);

// The reset of the constants display: stores the nine constants of the record
// under their keys, in their order, so that the next start loads them.
void ResetElectParam(Settings& store, const SiteState& s, char decimalSeparator);

}  // namespace nbx
