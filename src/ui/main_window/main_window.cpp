// The main window's frame: menus, run panel, client panel, bottom row, the
// load and unload, and the rendering of the records after every change.

#include "ui/main_window/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMetaMethod>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "automation/window_state.h"
#include "config/program_start.h"
#include "config/settings_order.h"
#include "core/nimbometer.h"
#include "core/text.h"
#include "outputs/user_data_file.h"
#include "safety/alarms.h"
#include "station/settings_store.h"
#include "station/station.h"
#include "station/system_areas.h"
#include "ui/widgets/click_label.h"

namespace nbx {

namespace {
// The window follows the records at this beat between cycles, so a change a
// client makes shows within a fraction of a second.
constexpr int RenderBeatMs = 250;
}  // namespace

NBXNimbometerForm::NBXNimbometerForm(Station& station, IniSettings& store, QWidget* parent)
    : QMainWindow(parent),
      station_(station),
      store_(store),
      editor_(station.nm()),
      bind_(station.nm(), editor_, [this] { Render(); }) {
  setObjectName("NBXNimbometerForm");
  BuildMenus();

  auto* central = new QWidget(this);
  auto* layout = new QVBoxLayout(central);
  layout->addWidget(BuildRunPanel());

  sstab1_ = new QTabWidget(central);
  sstab1_->setObjectName("SSTab1");
  sstab1_->addTab(BuildSensorTab(), "Sensor");
  sstab1_->addTab(BuildGraphsTab(), "Graphs");
  sstab1_->addTab(BuildLimitsTab(), "Limits");
  sstab1_->addTab(BuildUnsafeTab(), "Unsafe");
  sstab1_->addTab(BuildSetupTab(), "Setup");
  sstab1_->addTab(BuildDeviceTab(), "Device");
  layout->addWidget(sstab1_, 1);
  layout->addWidget(BuildBottomRow());
  setCentralWidget(central);

  // Over the whole window while a port is tested.
  auto* warning = new QLabel("Program checking COM port", central);
  warning->setObjectName("WarningCOMPort");
  warning->setAlignment(Qt::AlignCenter);
  warning->setStyleSheet("background: #ffffc0; border: 2px solid #c00000; font-weight: bold;");
  warning->setGeometry(40, 120, 320, 60);
  bind_.Follow(warning, station_.nm().display.WarningCOMPort);

  connect(&station_, &Station::cycleProcessed, this, [this] {
    Render();
    PaintGraphs();
  });
  beat_ = new QTimer(this);
  connect(beat_, &QTimer::timeout, this, &NBXNimbometerForm::Render);
}

NBXNimbometerForm::~NBXNimbometerForm() = default;

void NBXNimbometerForm::BuildMenus() {
  QMenu* file = menuBar()->addMenu("&File");
  file->setObjectName("mnuFile");
  mnuStart_ = file->addAction("&Start", this, [this] { station_.Start(); Render(); });
  mnuStart_->setObjectName("mnuStart");
  mnuStop_ = file->addAction("S&top", this, [this] { station_.Stop(); Render(); });
  mnuStop_->setObjectName("mnuStop");
  mnuExit_ = file->addAction("E&xit", this, &NBXNimbometerForm::ExitProgram);
  mnuExit_->setObjectName("mnuExit");
  QMenu* help = menuBar()->addMenu("&Help");
  help->setObjectName("mnuHelp");
  QAction* contents = help->addAction("&Contents ...", this, [this] {
    helpFromMenu_ = true;
    emit helpRequested(0);
  });
  contents->setObjectName("mnuHelp1");
  QAction* update = help->addAction("Check for &updates ...", this, &NBXNimbometerForm::updateRequested);
  update->setObjectName("mnuUpdate");
  QAction* about = help->addAction("&About", this, &NBXNimbometerForm::aboutRequested);
  about->setObjectName("mnuAbout");
}

QWidget* NBXNimbometerForm::BuildRunPanel() {
  Display& d = station_.nm().display;
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);

  auto* run = new QGroupBox(row);
  run->setObjectName("FrameRun");
  auto* runLayout = new QHBoxLayout(run);
  for (int i = 0; i < 2; ++i) {
    auto* lamp = new QLabel(run);
    lamp->setObjectName(QStringLiteral("LEDSensor(%1)").arg(i));
    lamp->setFixedSize(14, 14);
    lamp->setAccessibleName("Reading");
    lamp->setAutoFillBackground(true);
    runLayout->addWidget(lamp);
  }
  auto* unsafe = new QLabel(run);
  unsafe->setObjectName("LEDUnsafe");
  unsafe->setFixedSize(22, 22);
  unsafe->setAccessibleName("Safe state");
  unsafe->setAutoFillBackground(true);
  runLayout->addWidget(unsafe);
  auto* ledSwitch = new QGroupBox(run);
  ledSwitch->setObjectName("FrameLEDSwitch");
  auto* switchLayout = new QHBoxLayout(ledSwitch);
  switchLayout->addWidget(bind_.Shown(ledSwitch, "LblStatus", d.LblStatus));
  runLayout->addWidget(ledSwitch);
  bind_.Follow(run, d.FrameRun);
  bind_.Follow(ledSwitch, d.FrameLEDSwitch);
  layout->addWidget(run);

  auto* record = new QGroupBox("Record", row);
  record->setObjectName("FrameRecord");
  auto* recordLayout = new QHBoxLayout(record);
  // Index 0 turns recording on and 1 off; the captions say what each does.
  const QStringList captions{"Start", "Stop"};
  for (int i = 0; i < 2; ++i) {
    auto* option = new QRadioButton(captions[i], record);
    option->setObjectName(QStringLiteral("RecOption(%1)").arg(i));
    connect(option, &QRadioButton::clicked, this, [this, i] {
      RecOption_Click(station_.nm(), i);
      Render();
    });
    recordLayout->addWidget(option);
  }
  layout->addWidget(record);

  auto* clients = new QGroupBox("Clients", row);
  clients->setObjectName("FrameCOM");
  auto* clientLayout = new QHBoxLayout(clients);
  clientLayout->addWidget(bind_.Shown(clients, "LblUsers", d.LblUsers));
  clientLayout->addWidget(bind_.Shown(clients, "COMCalls", d.COMCalls));
  clientLayout->addWidget(bind_.Shown(clients, "COMPeriod", d.COMPeriod));
  for (int i = 0; i < 2; ++i) {
    auto* lamp = new QLabel(clients);
    lamp->setObjectName(QStringLiteral("LEDCOM(%1)").arg(i));
    lamp->setFixedSize(12, 12);
    lamp->setAutoFillBackground(true);
    clientLayout->addWidget(lamp);
  }
  bind_.Follow(clients, d.FrameCOM);
  layout->addWidget(clients);

  auto* stopAlarm = new QPushButton("Stop Alarm", row);
  stopAlarm->setObjectName("ButtStopAlarm");
  connect(stopAlarm, &QPushButton::clicked, this, [this] {
    AlarmStop(station_.nm());
    Render();
  });
  bind_.Follow(stopAlarm, d.ButtStopAlarm);
  layout->addWidget(stopAlarm);
  layout->addStretch();
  return row;
}

QWidget* NBXNimbometerForm::BuildBottomRow() {
  Display& d = station_.nm().display;
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* start = new QPushButton("Start", row);
  start->setObjectName("ButtSTART");
  connect(start, &QPushButton::clicked, this, [this] { station_.Start(); Render(); });
  bind_.Follow(start, d.ButtSTART);
  auto* stop = new QPushButton("Stop", row);
  stop->setObjectName("ButtSTOP");
  connect(stop, &QPushButton::clicked, this, [this] { station_.Stop(); Render(); });
  bind_.Follow(stop, d.ButtStop);
  layout->addWidget(start);
  layout->addWidget(stop);
  QLabel* switchState = bind_.Shown(row, "LblSwitch", d.LblSwitch);
  switchState->setMinimumWidth(100);
  layout->addWidget(switchState);

  auto* statusFrame = new QGroupBox(row);
  statusFrame->setObjectName("Frame00");
  auto* statusLayout = new QHBoxLayout(statusFrame);
  statusLayout->setContentsMargins(2, 2, 2, 2);
  auto* codes = new ClickLabel(statusFrame);
  codes->setObjectName("StatusBar2");
  codes->setAutoFillBackground(true);
  codes->setMinimumWidth(80);
  codes->setAccessibleName("Output codes");
  connect(codes, &ClickLabel::rightClicked, this, &NBXNimbometerForm::legendRequested);
  statusLayout->addWidget(codes);
  QLabel* status = bind_.Shown(statusFrame, "StatusBar", d.StatusBar);
  status->setMinimumWidth(360);
  status->setAccessibleName("Status");
  statusLayout->addWidget(status, 1);
  layout->addWidget(statusFrame, 1);
  layout->addWidget(bind_.Shown(row, "SafeDelayMsg", d.SafeDelayMsg));
  return row;
}

QLabel* NBXNimbometerForm::Caption(QWidget* parent, const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text, parent);
  if (buddy) {
    label->setBuddy(buddy);
    buddy->setAccessibleName(text.trimmed());
  }
  return label;
}

QScrollArea* NBXNimbometerForm::Scrolling(QWidget* panel, const QString& name) {
  auto* area = new QScrollArea(this);
  area->setObjectName(name);
  area->setWidget(panel);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  return area;
}

QString NBXNimbometerForm::FormTitle(const Nimbometer& nm) {
  QString title = QString::fromStdString(VersionText(NBX_VERSION_MAJOR, NBX_VERSION_MINOR, NBX_VERSION_PATCH));
  if (!nm.IsMaster()) title = QString::fromStdString(nm.state.DeviceMode) + " " + title;
  return title;
}

void NBXNimbometerForm::Load() {
  Nimbometer& nm = station_.nm();
  formLoading_ = true;
  bind_.loading = true;
  const Config& c = nm.config;
  if (c.Left && c.Top) move(*c.Left, *c.Top);
  sstab1_->setCurrentIndex(c.SSTab1);
  sstab2_->setCurrentIndex(c.SSTab2);
  sstab3_->setCurrentIndex(c.SSTab3);
  Render();
  ApplyRole();
  setupScroll_->verticalScrollBar()->setValue(c.VScrollPos0);
  setupScroll_->horizontalScrollBar()->setValue(c.HScrollPos1);
  bind_.loading = false;
  formLoading_ = false;
  beat_->start(RenderBeatMs);
  // The window is up before any dialogue of the first start.
  QTimer::singleShot(10, this, [this] {
    if (isSignalConnected(QMetaMethod::fromSignal(&NBXNimbometerForm::firstStartRequested)))
      emit firstStartRequested();
    else
      RunAutoStart();
  });
}

void NBXNimbometerForm::RunAutoStart() {
  Nimbometer& nm = station_.nm();
  if (!Trim(nm.config.LastUpdateMsg).empty()) {
    nm.io.host->ShowMessage(nm.config.LastUpdateMsg, ButtonsOk, "Last Update Status");
    nm.config.LastUpdateMsg.clear();
  }
  if (nm.config.CheckStartApp != 0 || nm.config.CheckStartRecording != 0) station_.Start();
  if (nm.config.CheckStartRecording != 0) Record_Start(nm, true);
  Render();
}

bool NBXNimbometerForm::Unload() {
  Nimbometer& nm = station_.nm();
  Config& c = nm.config;
  c.Left = x();
  c.Top = y();
  c.SSTab1 = sstab1_->currentIndex();
  c.SSTab2 = sstab2_->currentIndex();
  c.SSTab3 = sstab3_->currentIndex();
  c.VScrollPos0 = setupScroll_->verticalScrollBar()->value();
  c.HScrollPos1 = setupScroll_->horizontalScrollBar()->value();
  UnloadContext context;
  context.decimalSeparator = DecimalSeparator();
  context.windowIsNormal = !(windowState() & (Qt::WindowMinimized | Qt::WindowMaximized));
  const std::string runPort = c.PortName;
  if (storedPortName_) c.PortName = *storedPortName_;
  const bool written = UnloadSettings(store_, nm, context);
  c.PortName = runPort;
  if (written) store_.Flush();
  return written;
}

void NBXNimbometerForm::Render() {
  Nimbometer& nm = station_.nm();
  bind_.Refresh();
  RenderExtras();
  const Display& d = nm.display;
  auto paintLamp = [](QWidget* lamp, Colour colour) {
    if (!lamp) return;
    QPalette palette = lamp->palette();
    palette.setColor(QPalette::Window, ScreenColour(colour));
    lamp->setPalette(palette);
  };
  for (int i = 0; i < 2; ++i) {
    paintLamp(findChild<QWidget*>(QStringLiteral("LEDSensor(%1)").arg(i)), d.LEDSensor[static_cast<std::size_t>(i)].FillColor);
    paintLamp(findChild<QWidget*>(QStringLiteral("LEDCOM(%1)").arg(i)), d.LEDCOM[static_cast<std::size_t>(i)].FillColor);
    if (auto* option = findChild<QRadioButton*>(QStringLiteral("RecOption(%1)").arg(i)))
      option->setChecked(nm.config.RecOption[static_cast<std::size_t>(i)]);
  }
  paintLamp(findChild<QWidget*>("LEDUnsafe"), d.LEDUnsafe.FillColor);
  if (auto* codes = findChild<QLabel*>("StatusBar2")) {
    codes->setText(QString::fromStdString(d.StatusBar2.Caption));
    QPalette palette = codes->palette();
    palette.setColor(QPalette::WindowText, ScreenColour(d.StatusBar2.ForeColor));
    codes->setPalette(palette);
  }
  for (QWidget* title : windTitles_)
    if (title->isVisibleTo(title->parentWidget()) == d.WindNotAvailable.Visible)
      title->setVisible(!d.WindNotAvailable.Visible);
  if (setupEnabled_ == d.SetupLocked) SetSetupEnabled(!d.SetupLocked);
  // A client may minimise or restore the window; the user's own changes
  // reach the record through changeEvent.
  if (isVisible() && d.WindowMinimized != isMinimized()) {
    if (d.WindowMinimized)
      showMinimized();
    else
      showNormal();
  }
  const QString title = FormTitle(nm);
  if (windowTitle() != title) {
    setWindowTitle(title);
    ApplyRole();
  }
  RefreshMenus();
}

void NBXNimbometerForm::RefreshMenus() {
  Nimbometer& nm = station_.nm();
  nbx::RefreshMenus(nm);
  const Display& d = nm.display;
  mnuStart_->setVisible(d.mnuStart.Visible);
  mnuStop_->setVisible(d.mnuStop.Visible);
  mnuExit_->setVisible(d.mnuExit.Visible);
  // A window with clients cannot be closed: its close button goes too.
  const bool closable = nm.state.COMNoUsers < 1;
  if (closable != windowFlags().testFlag(Qt::WindowCloseButtonHint)) {
    const bool wasVisible = isVisible();
    setWindowFlag(Qt::WindowCloseButtonHint, closable);
    if (wasVisible) show();
  }
}

void NBXNimbometerForm::SetSetupEnabled(bool enabled) {
  setupEnabled_ = enabled;
  for (QWidget* control : setupGroup_) control->setEnabled(enabled);
}

void NBXNimbometerForm::ExitProgram() {
  Nimbometer& nm = station_.nm();
  if (nm.state.COMNoUsers > 0) return;
  exiting_ = true;
  beat_->stop();
  connect(&station_, &Station::stopped, this, [this] {
    Unload();
    QApplication::exit(0);
  }, Qt::SingleShotConnection);
  station_.Stop();
}

void NBXNimbometerForm::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange) return;
  if (isMinimized())
    WindowMinimize(station_.nm());
  else
    WindowNormal(station_.nm());
}

void NBXNimbometerForm::closeEvent(QCloseEvent* event) {
  // The close is the unload; with clients attached it is refused, and the
  // station must stop (heater at rest, port closed) before the program ends.
  event->ignore();
  if (station_.nm().state.COMNoUsers > 0 || exiting_) return;
  ExitProgram();
}

}  // namespace nbx
