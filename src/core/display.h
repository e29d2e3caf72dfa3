#pragma once

#include <array>
#include <string>

#include "core/colours.h"

namespace nbx {

// A label of the window: what it says and in which colours. Logic writes it,
// the window renders it, the automation object and the files read it back.
struct Label {
  std::string Caption;
  Colour ForeColor = colours::Black;
  Colour BackColor = colours::PanelGrey;
  bool Visible = true;
};

// A lamp (a shape filled with a colour).
struct Lamp {
  Colour FillColor = colours::LampGrey;
};

// A button or frame that logic shows, hides, enables or disables.
struct Control {
  bool Visible = true;
  bool Enabled = true;
};

// A block of the "Unsafe" tab for one condition family: the back colours of
// its three check boxes (red while the class counts as unsafe) and whether
// each alarm entry shows the "on" picture (a sound file is set).
struct UnsafeBlock {
  std::array<Colour, 3> CheckBackColor{colours::SystemButtonFace, colours::SystemButtonFace,
                                       colours::SystemButtonFace};
  std::array<bool, 3> AlarmIconOn{};
};

// An indicator of three labels: (0) the bar, (1) the value in words,
// (2) the condition word on the condition's colour.
using Bar = std::array<Label, 3>;

// Everything the window shows that logic writes or reads back. It exists with
// no window too, so every behaviour that reads a caption works headless.
struct Display {
  // --- Status lines and run panel
  Label StatusBar;    // first status line, cut to 60 characters
  Label StatusBar2;   // second status line: the output codes
  std::array<Lamp, 2> LEDSensor;  // the cycle lamp pair
  Lamp LEDUnsafe;                 // verdict indicator: 255 unsafe, 65280 safe
  Label LblStatus;                // "Safe" / "Unsafe"
  Label SafeDelayMsg;
  Label LblSwitch;                // relay state

  // --- Device tab: raw values and counters
  Label LblVref;
  Label LblRS232Errors{"0"};      // " Timeout Errors", counts for the whole run
  Label LblBuffer;                // " Chars in Buffer"
  Label lblVersion;               // " Firmware ver."
  Label lblSerial;
  Label LblPECByte1, LblPECByte2, LblPECByte3, LblPECByte4;
  Label LblPECTot4{"0"};          // " Internal Errors"
  Label LblPECReading{"0"};       // " Total Readings"
  Label LblReadCycle;
  Label LblWind;
  Label LblRH;
  Label lblRHTemp;
  Label LblAtmPres;
  Label LblLDR;
  Label LblSQMFreq;
  Label LblRainH;
  Label LblSkyIRTemp;
  Label LblSkySensorTemp;
  Label LblRainT;
  Label LblRainF;
  Label LblHeating;               // heater status text and colour

  // --- Sensor tab: the indicators
  Bar BarCloud, BarRain, BarDay, BarWindSpeed, BarRH, BarAtmPres, BarDewPointDelta;
  Label BarWindGust;
  Bar BarTemperature;             // value text in panel 0
  Label BarDewPoint;
  Label WindNotAvailable{"Wind sensor not available", colours::Black, colours::PanelGrey, false};

  // --- Check boxes of the "Unsafe" tab: their captions are the class words
  std::array<Label, 3> CheckCloud{{{"Clear"}, {"Cloudy"}, {"Overcast"}}};
  std::array<Label, 3> CheckRain{{{"Dry"}, {"Wet"}, {"Rain"}}};
  std::array<Label, 3> CheckWind{{{"Calm"}, {"Windy"}, {"Very Windy"}}};
  std::array<Label, 3> CheckDay{{{"Dark"}, {"Light"}, {"Very Light"}}};
  std::array<Label, 3> CheckHumidity{{{"Dry"}, {"Normal"}, {"Humid"}}};
  std::array<Label, 3> CheckPressure{{{"Low"}, {"Normal"}, {"High"}}};

  // --- Sky correction factors (Setup tab): the seven fields with their
  // labels, and the label of the switch that turns the correction on
  Control CloudTempFactorFields;
  Label LblTempFactor;

  // --- Automation client panel
  std::array<Lamp, 2> LEDCOM;
  Label LblUsers;
  Label COMCalls;
  Label COMPeriod;
  Label ControlOwner{"NBX_Meteodesk has control"};  // Label3(22) under the "Unsafe" tab

  // --- Menus of the window and of the notification icon, and the Close item
  // of the system menu: while clients are attached the station can be
  // neither stopped nor closed from them
  Control mnuStart, mnuStop{false, true}, mnuExit, mPopStart, mPopStop{false, true}, mPopExit;
  Control mSep0, mSep1, mPopRestore{true, false}, mPopMinimize, CloseItem;
  bool WindowMinimized = false;

  // --- Buttons and frames that logic shows or hides
  Control ButtSTART;
  Control ButtStop{false, true};
  Control ButtStopAlarm{false, true};
  Control ButtReload{false, true};
  Control FrameRun{false, true};
  Control FrameLEDSwitch{false, true};
  Control FrameCOM{false, true};
  Control Frame3;                 // content of the "Unsafe" tab
  // Its blocks, in the order cloud, rain, wind, day, humidity, pressure.
  std::array<UnsafeBlock, 6> UnsafeBlocks;
  Control WarningCOMPort{false, true};
  bool SetupLocked = false;       // the setup controls that may not change in a run
  // FileName, ButtPATH, ButtFileStructure, SaveFreq, LastReadOnly and chkDebug:
  // disabled for as long as a recording runs.
  bool RecordControlsEnabled = true;

  // --- Graph span
  Label GraphSpan;
  Label GraphSpanDesc;
};

}  // namespace nbx
