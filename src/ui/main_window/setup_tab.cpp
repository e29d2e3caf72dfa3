// Tab "Setup": the sub-tabs "Device", "Graph", "Alarm", "Network" and
// "Script" in one scrolling panel.

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

#include "core/nimbometer.h"
#include "device/link_life.h"
#include "editing/master_constants.h"
#include "outputs/transfer_file.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/widgets/click_label.h"
#include "ui/widgets/number_entry.h"
#include "ui/widgets/port_choice.h"

namespace nbx {

namespace {

// A grid that places a caption, a control and a unit on each row.
struct Rows {
  QGroupBox* box;
  QGridLayout* grid;
  int row = 0;
};

Rows Group(QWidget* parent, const QString& title, const QString& name = QString()) {
  auto* box = new QGroupBox(title, parent);
  if (!name.isEmpty()) box->setObjectName(name);
  return {box, new QGridLayout(box)};
}

template <std::size_t N>
int Chosen(const std::array<bool, N>& options) {
  for (std::size_t i = 0; i < N; ++i)
    if (options[i]) return static_cast<int>(i);
  return -1;
}

QString Folder(QWidget* over, const QString& title, const std::string& present) {
  return QFileDialog::getExistingDirectory(over, title, QString::fromStdString(present));
}

}  // namespace

QWidget* NBXNimbometerForm::BuildSetupTab() {
  auto* frame = new QWidget(this);
  frame->setObjectName("Frame4");
  auto* layout = new QHBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  sstab3_ = new QTabWidget(frame);
  sstab3_->setObjectName("SSTab3");
  // The large device panel scrolls inside its tab; VScrol and HScrol are its
  // bars, and their places are kept from one run to the next.
  QWidget* device = BuildSetupDevice();
  device->setMinimumSize(900, 560);
  setupScroll_ = Scrolling(device, "Picture3");
  sstab3_->addTab(setupScroll_, "Device");
  sstab3_->addTab(Scrolling(BuildSetupGraph(), "PicScroll(1)"), "Graph");
  sstab3_->addTab(Scrolling(BuildSetupAlarm(), "PicScroll(2)"), "Alarm");
  sstab3_->addTab(Scrolling(BuildSetupNetwork(), "PicScroll(3)"), "Network");
  sstab3_->addTab(Scrolling(BuildSetupScript(), "PicScroll(4)"), "Script");
  layout->addWidget(sstab3_);
  return frame;
}

QWidget* NBXNimbometerForm::BuildSetupDevice() {
  auto* panel = new QWidget(this);
  panel->setObjectName("PicFrame(0)");
  auto* columns = new QGridLayout(panel);
  auto number = [this](Rows& r, const QString& name, const QString& caption, const QString& unit,
                       std::function<double(const Config&)> read,
                       std::function<void(ConfigEditor&, double)> write, ControlBindings::Digits digits,
                       bool locked, bool masterOnly = false) {
    NumberEntry* entry = bind_.Number(r.box, name, std::move(read), std::move(write), digits);
    QLabel* label = Caption(r.box, caption, entry);
    r.grid->addWidget(label, r.row, 0);
    r.grid->addWidget(entry, r.row, 1);
    if (!unit.isEmpty()) r.grid->addWidget(new QLabel(unit, r.box), r.row, 2);
    ++r.row;
    if (locked) setupGroup_.push_back(entry);
    if (masterOnly) {
      masterOnly_.push_back(entry);
      masterCaptions_.push_back({label, caption});
    }
    return entry;
  };
  auto options = [this](Rows& r, const QString& name, const QStringList& captions,
                        std::function<int(const Config&)> read, std::function<void(ConfigEditor&, int)> write,
                        bool masterOnly = false) {
    auto* row = new QHBoxLayout;
    for (QRadioButton* button : bind_.Options(r.box, name, captions, std::move(read), std::move(write))) {
      row->addWidget(button);
      setupGroup_.push_back(button);
      if (masterOnly) masterOnly_.push_back(button);
    }
    r.grid->addLayout(row, r.row++, 0, 1, 3);
  };

  Rows sensor = Group(panel, "Sensor selection");
  QComboBox* port = NewPortChoice(sensor.box);
  connect(port, &QComboBox::textActivated, this, [this](const QString& entry) {
    editor_.SetPortEntry(entry.toStdString());
    Render();
  });
  auto* test = new QPushButton("Test Port", sensor.box);
  test->setObjectName("ButtCOMMTest");
  connect(test, &QPushButton::clicked, this, [this] {
    Nimbometer& nm = station_.nm();
    if (nm.state.IsRunning) return;
    if (OpenDevicePort(nm)) {
      CloseDevicePort(nm);
      nm.display.StatusBar = {"Port can be opened, probably OK", colours::Navy, nm.display.StatusBar.BackColor, true};
    }
    Render();
  });
  QLabel* portCaption = Caption(sensor.box, "RS232", port);
  sensor.grid->addWidget(portCaption, sensor.row, 0);
  sensor.grid->addWidget(port, sensor.row, 1);
  sensor.grid->addWidget(test, sensor.row++, 2);
  setupGroup_.insert(setupGroup_.end(), {port, test});
  masterOnly_.insert(masterOnly_.end(), {port, test});
  masterCaptions_.push_back({portCaption, "RS232"});
  portRefresh_ = [this, port] {
    if (!port->hasFocus()) ShowPortChoice(port, station_.nm().config);
  };
  number(sensor, "RefreshPeriod", "Cycle", "(sec)", [](const Config& c) { return double(c.RefreshPeriod); },
         [](ConfigEditor& e, double v) { e.SetRefreshPeriod(v); }, {2, 0, false, "0"}, true);
  number(sensor, "PORTTimeout", "Timeout", "(sec)", [](const Config& c) { return c.PORTTimeout; },
         [](ConfigEditor& e, double v) { e.SetPORTTimeout(v); }, {2, 0, false, "0"}, true, true);
  number(sensor, "COMTimeout", "Transfer file age", "(sec)", [](const Config& c) { return c.COMTimeout; },
         [](ConfigEditor& e, double v) { e.SetCOMTimeout(v); }, {4, 0, false, "0"}, true, true);
  options(sensor, "UnitsTemp", {"ºC", "ºF"}, [](const Config& c) { return Chosen(c.UnitsTemp); },
          [](ConfigEditor& e, int o) { e.SetUnitsTemp(o); });
  options(sensor, "UnitsSpeed", {"km/h", "mph", "m/s", "knot"},
          [](const Config& c) { return Chosen(c.UnitsSpeed); }, [](ConfigEditor& e, int o) { e.SetUnitsSpeed(o); });
  number(sensor, "AASL", "Altitude ASL", "(m)", [](const Config& c) { return c.AASL; },
         [](ConfigEditor& e, double v) { e.SetAASL(v); }, {4, 0, true, "0"}, true);
  number(sensor, "CalcWindAvg", "Average of the last ", "readings", [](const Config& c) { return c.CalcWindAvg; },
         [](ConfigEditor& e, double v) { e.SetCalcWindAvg(v); }, {2, 0, false, "0"}, true);
  columns->addWidget(sensor.box, 0, 0, 2, 1);

  Rows relay = Group(panel, "Switch Control");
  // Option 0 lets the verdict drive the relay.
  options(relay, "SWRole", {"Enabled", "Disabled"}, [](const Config& c) { return Chosen(c.SWRole); },
          [](ConfigEditor& e, int o) { e.SetSWRole(o); }, true);
  Rows anemometer = Group(panel, "Anemometer model selection");
  options(anemometer, "SWAnemoModel", {"Gray", "Black", "T.B.A."},
          [](const Config& c) { return Chosen(c.SWAnemoModel); },
          [](ConfigEditor& e, int o) { e.SetSWAnemoModel(o); }, true);
  columns->addWidget(relay.box, 2, 0);
  columns->addWidget(anemometer.box, 3, 0);

  Rows heater = Group(panel, "Rain sensor heater control parameters");
  masterOnly_.push_back(heater.box);
  number(heater, "HeatTemp(0)", "High Temp.", "ºC", [](const Config& c) { return c.HeatTemp[0]; },
         [](ConfigEditor& e, double v) { e.SetHeatTemp(0, v); }, {2, 0, true, "0"}, false, true);
  number(heater, "HeatDelta(0)", "High Delta", "ºC", [](const Config& c) { return c.HeatDelta[0]; },
         [](ConfigEditor& e, double v) { e.SetHeatDelta(0, v); }, {2, 0, false, "0"}, false, true);
  number(heater, "HeatTemp(1)", "Low Temp.", "ºC", [](const Config& c) { return c.HeatTemp[1]; },
         [](ConfigEditor& e, double v) { e.SetHeatTemp(1, v); }, {2, 0, true, "0"}, false, true);
  number(heater, "HeatDelta(1)", "Low Delta", "ºC", [](const Config& c) { return c.HeatDelta[1]; },
         [](ConfigEditor& e, double v) { e.SetHeatDelta(1, v); }, {2, 0, false, "0"}, false, true);
  number(heater, "HeatImpTemp", "Heat Impulse Temp.", "ºC", [](const Config& c) { return c.HeatImpTemp; },
         [](ConfigEditor& e, double v) { e.SetHeatImpTemp(v); }, {2, 0, true, "0"}, true, true);
  number(heater, "HeatImpDuration", "Durat.", "(sec)", [](const Config& c) { return c.HeatImpDuration; },
         [](ConfigEditor& e, double v) { e.SetHeatImpDuration(v); }, {4, 0, false, "0"}, true, true);
  number(heater, "HeatImpCycle", "Cycle", "(sec)", [](const Config& c) { return c.HeatImpCycle; },
         [](ConfigEditor& e, double v) { e.SetHeatImpCycle(v); }, {4, 0, false, "0"}, true, true);
  number(heater, "HeatMinValue", "Min.", "%", [](const Config& c) { return c.HeatMinValue; },
         [](ConfigEditor& e, double v) { e.SetHeatMinValue(v); }, {3, 0, false, "0"}, true, true);
  number(heater, "HeatOffValue", "Off value ", "%", [](const Config& c) { return c.HeatOffValue; },
         [](ConfigEditor& e, double v) { e.SetHeatOffValue(v); }, {3, 0, false, "0"}, true, true);
  columns->addWidget(heater.box, 0, 1, 2, 1);

  Rows factors = Group(panel, QString());
  auto* factorsTitle = new ClickLabel("Sky Temperature Correction Factors", factors.box);
  factorsTitle->setObjectName("Label8(24)");
  connect(factorsTitle, &ClickLabel::rightClicked, this, [this] {
    if (station_.nm().state.IsRunning) emit factorWindowRequested();
  });
  factors.grid->addWidget(factorsTitle, factors.row++, 0, 1, 3);
  double Config::*const k[] = {&Config::CloudTempK1, &Config::CloudTempK2, &Config::CloudTempK3,
                               &Config::CloudTempK4, &Config::CloudTempK5, &Config::CloudTempK6,
                               &Config::CloudTempK7};
  for (int i = 0; i < 7; ++i) {
    const auto member = k[i];
    number(factors, QStringLiteral("CloudTempK%1").arg(i + 1), QStringLiteral("K%1").arg(i + 1), QString(),
           [member](const Config& c) { return c.*member; },
           [i](ConfigEditor& e, double v) { e.SetCloudTempK(i + 1, v); }, {4, 2, true, ""}, true);
  }
  columns->addWidget(factors.box, 0, 2, 2, 1);

  Rows offsets = Group(panel, "Temperature offsets");
  number(offsets, "AmbTempOffset", "Ambient:", "", [](const Config& c) { return c.AmbTempOffset; },
         [](ConfigEditor& e, double v) { e.SetAmbTempOffset(v); }, {2, 1, true, "0.0"}, true, true);
  number(offsets, "IRTempOffset", "Infrared:", "", [](const Config& c) { return c.IRTempOffset; },
         [](ConfigEditor& e, double v) { e.SetIRTempOffset(v); }, {2, 1, true, "0.0"}, true, true);
  columns->addWidget(offsets.box, 2, 1);

  Rows delays = Group(panel, "Safe Condition Delay Period");
  number(delays, "SafeDelayVal", "Safe Condition Delay Period", "(sec)", [](const Config& c) { return c.SafeDelayVal; },
         [](ConfigEditor& e, double v) { e.SetSafeDelayVal(v); }, {5, 0, false, "0"}, true);
  number(delays, "CloudAlarmDelay", "Cloud alarm delay", "(sec)", [](const Config& c) { return c.CloudAlarmDelay; },
         [](ConfigEditor& e, double v) { e.SetCloudAlarmDelay(v); }, {5, 0, false, "0"}, true);
  columns->addWidget(delays.box, 3, 1);

  Rows autoStart = Group(panel, "Auto Start");
  autoStart.grid->addWidget(bind_.Check(autoStart.box, "CheckStartApp", "Start && Connect",
                                        [](const Config& c) { return c.CheckStartApp; },
                                        [](ConfigEditor& e, int v) { e.SetCheckStartApp(v); }), 0, 0);
  autoStart.grid->addWidget(bind_.Check(autoStart.box, "CheckStartRecording", "Connect && Record",
                                        [](const Config& c) { return c.CheckStartRecording; },
                                        [](ConfigEditor& e, int v) { e.SetCheckStartRecording(v); }), 1, 0);
  columns->addWidget(autoStart.box, 2, 2);

  Rows sqm = Group(panel, "SQM");
  number(sqm, "DarkReference", "Darkness Reference", "", [](const Config& c) { return c.DarkReference; },
         [](ConfigEditor& e, double v) { e.SetDarkReference(v); }, {2, 2, false, "0.00"}, true);
  auto* reload = new QPushButton("Constants from  Master", sqm.box);
  reload->setObjectName("ButtReload");
  connect(reload, &QPushButton::clicked, this, [this] {
    ReloadMasterConstants(station_.nm());
    Render();
  });
  bind_.Follow(reload, station_.nm().display.ButtReload);
  sqm.grid->addWidget(reload, sqm.row++, 0, 1, 3);
  columns->addWidget(sqm.box, 3, 2);
  columns->setRowStretch(4, 1);
  return panel;
}

QWidget* NBXNimbometerForm::BuildSetupGraph() {
  Nimbometer& nm = station_.nm();
  auto* panel = new QWidget(this);
  panel->setObjectName("PicFrame(1)");
  auto* grid = new QGridLayout(panel);
  const std::pair<const char*, GraphKind> graphs[] = {
      {"Cloud", GraphKind::Cloud}, {"Rain", GraphKind::Rain}, {"Wind", GraphKind::Wind},
      {"Day", GraphKind::Day},     {"Temp", GraphKind::Temp}, {"Humidity", GraphKind::Humidity},
      {"Pressure", GraphKind::Pressure}};
  int row = 0;
  for (const auto& [name, kind] : graphs) {
    const auto slot = static_cast<std::size_t>(kind);
    grid->addWidget(new QLabel(name, panel), row, 0);
    QCheckBox* generate = bind_.Check(panel, QStringLiteral("Graph%1Generate").arg(name), " auto",
                                      [slot](const Config& c) { return c.GraphGenerate[slot]; },
                                      [kind](ConfigEditor& e, int v) { e.SetGraphGenerate(kind, v); });
    QCheckBox* image = bind_.Check(panel, QStringLiteral("Graph%1Image").arg(name), "image",
                                   [slot](const Config& c) { return c.GraphImage[slot]; },
                                   [kind](ConfigEditor& e, int v) { e.SetGraphImage(kind, v); });
    generate->setAccessibleName(QStringLiteral("%1 auto").arg(name));
    image->setAccessibleName(QStringLiteral("%1 image").arg(name));
    setupGroup_.insert(setupGroup_.end(), {generate, image});
    grid->addWidget(generate, row, 1);
    grid->addWidget(image, row, 2);
    const int colourCount = kind == GraphKind::Temp ? 3 : 2;
    for (int i = 0; i < colourCount; ++i) {
      ClickLabel* swatch = bind_.Swatch(
          panel, QStringLiteral("GraphColor%1(%2)").arg(name).arg(i),
          [kind, i](const Config& c) { return GraphColours(c, kind)[static_cast<std::size_t>(i)]; }, nullptr,
          [kind, i](ConfigEditor& e, Colour colour, const std::string&) { e.SetGraphColour(kind, i, colour); });
      swatch->setMinimumSize(40, 18);
      swatch->setAccessibleName(QStringLiteral("%1 colour %2").arg(name).arg(i + 1));
      grid->addWidget(swatch, row, 3 + i);
    }
    ++row;
  }
  auto number = [&](const QString& name, const QString& caption, std::function<double(const Config&)> read,
                    std::function<void(ConfigEditor&, double)> write) {
    NumberEntry* entry = bind_.Number(panel, name, std::move(read), std::move(write), {4, 0, false, "0"});
    grid->addWidget(Caption(panel, caption, entry), row, 0);
    grid->addWidget(entry, row++, 1);
    setupGroup_.push_back(entry);
  };
  number("GraphFreq", "Every (readings)", [](const Config& c) { return c.GraphFreq; },
         [](ConfigEditor& e, double v) { e.SetGraphFreq(v); });
  number("GraphNoPoints", "Points", [](const Config& c) { return c.GraphNoPoints; },
         [](ConfigEditor& e, double v) { e.SetGraphNoPoints(v); });
  grid->addWidget(bind_.Shown(panel, "GraphSpan", nm.display.GraphSpan), row, 0);
  grid->addWidget(bind_.Shown(panel, "GraphSpanDesc", nm.display.GraphSpanDesc), row++, 1, 1, 3);
  QCheckBox* png = bind_.Check(panel, "ImageType", "PNG", [](const Config& c) { return c.ImageType; },
                               [](ConfigEditor& e, int v) { e.SetImageType(v); });
  grid->addWidget(png, row, 0);
  setupGroup_.push_back(png);
  auto* quality = new QHBoxLayout;
  for (QRadioButton* option : bind_.Options(panel, "ImageQuality", {"Top", "Good", "Normal"},
                                            [](const Config& c) { return Chosen(c.ImageQuality); },
                                            [](ConfigEditor& e, int o) { e.SetImageQuality(o); })) {
    quality->addWidget(option);
    setupGroup_.push_back(option);
  }
  grid->addLayout(quality, row++, 1, 1, 4);
  auto* path = new QPushButton("Path", panel);
  path->setObjectName("ButtGraphImagePath");
  setupGroup_.push_back(path);
  QLabel* folder = new QLabel(panel);
  folder->setObjectName("GraphImagePath");
  connect(path, &QPushButton::clicked, this, [this] {
    const QString chosen = Folder(this, "Graph images", station_.nm().config.GraphImagePath);
    if (chosen.isEmpty()) return;
    editor_.SetGraphImagePath(chosen.toStdString());
    Render();
  });
  textRefresh_.push_back({folder, [](const Config& c) { return c.GraphImagePath; }});
  grid->addWidget(path, row, 0);
  grid->addWidget(folder, row++, 1, 1, 4);
  auto* more = new QLabel("Pictures are written to the folder above after each graph is drawn", panel);
  more->setObjectName("LblMore");
  grid->addWidget(more, row++, 0, 1, 5);
  grid->setRowStretch(row, 1);
  grid->setColumnStretch(6, 1);
  return panel;
}

QWidget* NBXNimbometerForm::BuildSetupAlarm() {
  auto* panel = new QWidget(this);
  panel->setObjectName("PicFrame(2)");
  auto* grid = new QGridLayout(panel);
  QCheckBox* alarmCom = bind_.Check(
      panel, "AlarmCom", " Alarm  Comm", [](const Config& c) { return c.AlarmCom.Value; },
      [this](ConfigEditor&, int value) {
        // The link alarm's sound is chosen as the classes' are.
        Config& c = station_.nm().config;
        if (value != 0 && c.AlarmCom.Tag.empty() && !AskSound("AlarmCom")) return;
        c.AlarmCom.Value = value;
      });
  masterOnly_.push_back(alarmCom);
  grid->addWidget(alarmCom, 0, 0);
  Rows role = Group(panel, "Operational Mode");
  auto* row = new QHBoxLayout;
  for (QRadioButton* option : bind_.Options(role.box, "NMRole", {"Master", "Remote"},
                                            [](const Config& c) { return Chosen(c.NMRole); },
                                            [this](ConfigEditor& e, int o) {
                                              e.SetNMRole(o);
                                              ApplyRole();
                                            })) {
    row->addWidget(option);
    setupGroup_.push_back(option);
  }
  role.grid->addLayout(row, 0, 0);
  grid->addWidget(role.box, 1, 0);
  grid->setRowStretch(2, 1);
  grid->setColumnStretch(1, 1);
  return panel;
}

QWidget* NBXNimbometerForm::BuildSetupNetwork() {
  Nimbometer& nm = station_.nm();
  auto* panel = new QWidget(this);
  panel->setObjectName("PicFrame(3)");
  auto* columns = new QVBoxLayout(panel);
  auto pathButton = [this](QWidget* parent, const QString& name, const QString& title,
                           std::function<std::string(const Config&)> present,
                           std::function<void(ConfigEditor&, const std::string&)> write) {
    auto* button = new QPushButton("Path", parent);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, [this, title, present, write] {
      const QString chosen = Folder(this, title, present(station_.nm().config));
      if (chosen.isEmpty()) return;
      write(editor_, chosen.toStdString());
      Render();
    });
    return button;
  };
  auto shownText = [this](QWidget* parent, const QString& name, std::function<std::string(const Config&)> read) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    textRefresh_.push_back({label, std::move(read)});
    return label;
  };

  Rows data = Group(panel, "User Data File");
  QLineEdit* file = bind_.Text(data.box, "FileName", [](const Config& c) { return c.FileName; },
                               [](ConfigEditor& e, const std::string& v) { e.SetFileName(v); });
  data.grid->addWidget(Caption(data.box, "File name", file), 0, 0);
  data.grid->addWidget(file, 0, 1);
  data.grid->addWidget(new QLabel(" (.csv)", data.box), 0, 2);
  QPushButton* path = pathButton(data.box, "ButtPATH", "Data file folder", [](const Config& c) { return c.LblPathName; },
                                 [](ConfigEditor& e, const std::string& v) { e.SetDataFolder(v); });
  data.grid->addWidget(path, 1, 0);
  data.grid->addWidget(shownText(data.box, "LblPathName", [](const Config& c) { return c.LblPathName; }), 1, 1, 1, 3);
  NumberEntry* every = bind_.Number(data.box, "SaveFreq", [](const Config& c) { return c.SaveFreq; },
                                    [](ConfigEditor& e, double v) { e.SetSaveFreq(v); }, {4, 0, false, "0"});
  data.grid->addWidget(Caption(data.box, " Save every", every), 2, 0);
  data.grid->addWidget(every, 2, 1);
  data.grid->addWidget(new QLabel(" (readings)", data.box), 2, 2);
  auto* structure = new QPushButton("File Structure", data.box);
  structure->setObjectName("ButtFileStructure");
  connect(structure, &QPushButton::clicked, this, &NBXNimbometerForm::fileStructureRequested);
  QCheckBox* debug = bind_.Check(data.box, "chkDebug", "Debug", [](const Config& c) { return c.chkDebug; },
                                 [](ConfigEditor& e, int v) { e.SetChkDebug(v); });
  QCheckBox* last = bind_.Check(data.box, "LastReadOnly", "Last reading only",
                                [](const Config& c) { return c.LastReadOnly; },
                                [](ConfigEditor& e, int v) { e.SetLastReadOnly(v); });
  data.grid->addWidget(structure, 3, 0);
  data.grid->addWidget(debug, 3, 1);
  data.grid->addWidget(last, 3, 2);
  recordControls_ = {file, path, every, structure, debug, last};
  columns->addWidget(data.box);

  Rows transfer = Group(panel, "Parameters Transfer File");
  transfer.grid->addWidget(shownText(transfer.box, "LblNetFileName", [](const Config& c) { return c.NetFileName; }), 0, 0, 1, 2);
  QPushButton* netPath = pathButton(transfer.box, "ButtNetPath",
                                    "Select the shared folder to store the communication file.",
                                    [&nm](const Config& c) { return nm.IsMaster() ? c.NetPathMaster : c.NetPathRemote; },
                                    [](ConfigEditor& e, const std::string& v) { e.SetNetPath(v); });
  setupGroup_.push_back(netPath);
  transfer.grid->addWidget(netPath, 1, 0);
  transfer.grid->addWidget(shownText(transfer.box, "LblNetPath",
                                     [&nm](const Config& c) { return nm.IsMaster() ? c.NetPathMaster : c.NetPathRemote; }),
                           1, 1);
  columns->addWidget(transfer.box);

  Rows single = Group(panel, "Single line data and JSON files");
  QLineEdit* singleName = bind_.Text(single.box, "FileNameCCDAP4", [](const Config& c) { return c.FileNameCCDAP4; },
                                     [](ConfigEditor& e, const std::string& v) { e.SetFileNameCCDAP4(v); });
  single.grid->addWidget(Caption(single.box, "Single line file", singleName), 0, 0);
  single.grid->addWidget(singleName, 0, 1);
  QPushButton* singlePath = pathButton(single.box, "ButtCCDAP4", "Single line file folder",
                                       [](const Config& c) { return c.LblPathNameCCDAP4; },
                                       [](ConfigEditor& e, const std::string& v) { e.SetSingleLineFolder(v); });
  setupGroup_.insert(setupGroup_.end(), {singleName, singlePath});
  single.grid->addWidget(singlePath, 1, 0);
  single.grid->addWidget(shownText(single.box, "LblPathNameCCDAP4", [](const Config& c) { return c.LblPathNameCCDAP4; }), 1, 1);
  columns->addWidget(single.box);
  columns->addWidget(BuildAlpacaBlock());
  columns->addStretch();
  return panel;
}

QWidget* NBXNimbometerForm::BuildAlpacaBlock() {
  Rows alpaca = Group(this, "ASCOM Alpaca server");
  QCheckBox* enabled = bind_.Check(alpaca.box, "AlpacaEnabled", "Serve ASCOM Alpaca",
                                   [](const Config& c) { return c.AlpacaEnabled; },
                                   [](ConfigEditor& e, int v) { e.SetAlpacaEnabled(v); });
  QLineEdit* address = bind_.Text(alpaca.box, "AlpacaAddress", [](const Config& c) { return c.AlpacaAddress; },
                                  [](ConfigEditor& e, const std::string& v) { e.SetAlpacaAddress(v); });
  NumberEntry* port = bind_.Number(alpaca.box, "AlpacaPort", [](const Config& c) { return c.AlpacaPort; },
                                   [](ConfigEditor& e, double v) { e.SetAlpacaPort(v); }, {5, 0, false, "0"});
  QCheckBox* discovery = bind_.Check(alpaca.box, "AlpacaDiscovery", "Answer Alpaca discovery",
                                     [](const Config& c) { return c.AlpacaDiscovery; },
                                     [](ConfigEditor& e, int v) { e.SetAlpacaDiscovery(v); });
  alpaca.grid->addWidget(enabled, 0, 0, 1, 2);
  alpaca.grid->addWidget(discovery, 0, 2);
  alpaca.grid->addWidget(Caption(alpaca.box, "Address", address), 1, 0);
  alpaca.grid->addWidget(address, 1, 1, 1, 2);
  alpaca.grid->addWidget(Caption(alpaca.box, "Port", port), 2, 0);
  alpaca.grid->addWidget(port, 2, 1);
  // The server is set up once at start: say so rather than let a change look ignored.
  alpaca.grid->addWidget(new QLabel("127.0.0.1 serves this computer only, 0.0.0.0 the network.\n"
                                    "Changes take effect at the next start of the program.",
                                    alpaca.box),
                         3, 0, 1, 3);
  return alpaca.box;
}

QWidget* NBXNimbometerForm::BuildSetupScript() {
  auto* panel = new QWidget(this);
  panel->setObjectName("Picture5");
  auto* columns = new QVBoxLayout(panel);
  for (const bool unsafe : {true, false}) {
    const QString suffix = unsafe ? "UNSAFE" : "SAFE";
    Rows block = Group(panel, QStringLiteral("Script file for %1 Condition").arg(suffix));
    auto* file = new QLabel(block.box);
    file->setObjectName("ScriptFile" + suffix);
    textRefresh_.push_back({file, [unsafe](const Config& c) { return unsafe ? c.ScriptFileUNSAFE : c.ScriptFileSAFE; }});
    auto* folder = new QLabel(block.box);
    folder->setObjectName("LblScriptPath" + suffix);
    textRefresh_.push_back({folder, [unsafe](const Config& c) { return unsafe ? c.ScriptPathUNSAFE : c.ScriptPathSAFE; }});
    auto* choose = new QPushButton("Path", block.box);
    choose->setObjectName("ButtScriptPath" + suffix);
    choose->setAccessibleName(QStringLiteral("Script path %1").arg(suffix));
    connect(choose, &QPushButton::clicked, this, [this, unsafe] {
      const QString chosen = QFileDialog::getOpenFileName(this, "Script file");
      if (chosen.isEmpty()) return;
      const QFileInfo info(chosen);
      editor_.SetScript(unsafe, info.absolutePath().toStdString(), info.fileName().toStdString());
      Render();
    });
    block.grid->addWidget(choose, 0, 0);
    block.grid->addWidget(file, 0, 1);
    block.grid->addWidget(folder, 1, 1);
    block.grid->addWidget(new QLabel(" Asynchronous", block.box), 0, 2);
    columns->addWidget(block.box);
  }
  columns->addStretch();
  return panel;
}

}  // namespace nbx
