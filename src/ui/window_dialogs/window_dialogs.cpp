#include "ui/window_dialogs/window_dialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QTabWidget>

#include "config/program_start.h"
#include "core/host.h"
#include "core/nimbometer.h"
#include "station/station.h"
#include "editing/config_editor.h"
#include "safety/families.h"
#include "ui/autostart/start_with_session.h"
#include "ui/dialogs/about/about_dialog.h"
#include "ui/dialogs/device_constants/device_constants.h"
#include "ui/dialogs/sound/sound_dialog.h"
#include "ui/dialogs/temp_limits/temp_limits_dialog.h"
#include "ui/dialogs/file_structure/file_structure_dialog.h"
#include "ui/dialogs/legend/legend_dialog.h"
#include "ui/dialogs/temp_factor/temp_factor_dialog.h"
#include "ui/dialogs/update/update_form.h"
#include "station/settings_store.h"
#include "ui/first_run/first_start.h"
#include "ui/help/manual.h"
#include "ui/main_window/main_window.h"
#include "ui/tray/close_guard.h"
#include "ui/tray/tray_icon.h"
#include "ui/widgets/message_box.h"

namespace nbx {
namespace {

constexpr int DeviceTab = 5;

template <typename Dialog, typename... Args>
void Open(NBXNimbometerForm& window, Args&&... args) {
  Dialog dialog(std::forward<Args>(args)..., &window);
  dialog.exec();
  window.Render();
}

}  // namespace

WindowDialogs::WindowDialogs(NBXNimbometerForm& window, Station& station)
    : QObject(&window), window_(window), station_(station) {
  Nimbometer& nm = station.nm();
  connect(&window, &NBXNimbometerForm::firstStartRequested, this, &WindowDialogs::FirstStart);
  connect(&window, &NBXNimbometerForm::legendRequested, this, [this] { Open<LegendDialog>(window_); });
  connect(&window, &NBXNimbometerForm::factorWindowRequested, this,
          [this, &nm] { Open<TempFactorDialog>(window_, nm); });
  connect(&window, &NBXNimbometerForm::fileStructureRequested, this,
          [this, &nm] { Open<FileStructureDialog>(window_, nm); });
  connect(&window, &NBXNimbometerForm::aboutRequested, this, [this] {
    AboutDialog about(VersionNumberText(NBX_VERSION_MAJOR, NBX_VERSION_MINOR, NBX_VERSION_PATCH),
                      window_.windowIcon(), &window_);
    about.exec();
  });
  connect(&window, &NBXNimbometerForm::updateRequested, this, [this, &nm] {
    Open<UpdateForm>(window_, nm, window_.store(), QCoreApplication::applicationDirPath());
  });
  connect(&window, &NBXNimbometerForm::helpRequested, this, [this](int context) {
    if (!OpenManual(context))
      ShowMessage(&window_, "The manual could not be opened: it is not installed beside the "
                            "program, or no browser is set up.", ButtonsOk, {});
  });

  tray_ = std::make_unique<TrayIcon>(
      station, &window,
      QString::fromStdString(VersionText(NBX_VERSION_MAJOR, NBX_VERSION_MINOR, NBX_VERSION_PATCH)));
  connect(tray_.get(), &TrayIcon::startRequested, &window, [this] {
    station_.Start();
    window_.Render();
  });
  connect(tray_.get(), &TrayIcon::stopRequested, &window, [this] {
    station_.Stop();
    window_.Render();
  });
  connect(tray_.get(), &TrayIcon::exitRequested, &window, &NBXNimbometerForm::ExitProgram);
  connect(&station, &Station::cycleProcessed, tray_.get(), &TrayIcon::Update);
  connect(&station, &Station::stopped, tray_.get(), &TrayIcon::ShowIdle);
  guard_ = new CloseGuard(nm, &window);
  window.installEventFilter(this);
  AttachToControls();
}

void WindowDialogs::AttachToControls() {
  Nimbometer& nm = station_.nm();
  // A right click on an alarm entry chooses its sound.
  static const std::pair<const char*, Family> families[] = {
      {"Cloud", Family::Cloud}, {"Rain", Family::Rain}, {"Wind", Family::Wind},
      {"Day", Family::Day}, {"Humidity", Family::Humidity}, {"Pressure", Family::Pressure}};
  for (const auto& [name, family] : families)
    for (int i = 0; i < 3; ++i)
      if (QWidget* entry = window_.findChild<QWidget*>(QStringLiteral("Alarm%1(%2)").arg(name).arg(i))) {
        entry->installEventFilter(this);
        soundEntries_[entry] = {family, i};
      }
  if (QWidget* com = window_.findChild<QWidget*>("AlarmCom")) {
    com->installEventFilter(this);
    soundEntries_[com] = {std::nullopt, 0};
  }
  window_.chooseSound = [this](QWidget* entry) { return soundEntries_.count(entry) && ChooseSound(entry); };
  // The auto-start box also starts the program with the session, or no longer.
  if (auto* startApp = window_.findChild<QCheckBox*>("CheckStartApp"))
    connect(startApp, &QCheckBox::clicked, this, [this](bool checked) {
      ApplyStartWithSession(&window_, checked, QCoreApplication::applicationFilePath());
    });
  // A right click on the temperature graph sets its range.
  tempGraph_ = window_.findChild<QWidget*>("GraphTemp");
  if (tempGraph_) tempGraph_->installEventFilter(this);
  // The box's constants on the tab "Device".
  if (QWidget* deviceTab = window_.mainTabs()->widget(DeviceTab); deviceTab && deviceTab->layout()) {
    constants_ = new DeviceConstants(deviceTab);
    deviceTab->layout()->addWidget(constants_);
    constants_->setDevideCosntants(nm.state);
    constants_->SetRemote(!nm.IsMaster());
    connect(&station_, &Station::cycleProcessed, constants_, [this, &nm] {
      constants_->Follow(nm.state);
      constants_->SetRemote(!nm.IsMaster());
    });
  }
}

bool WindowDialogs::ChooseSound(QWidget* entry) {
  Nimbometer& nm = station_.nm();
  const auto [family, index] = soundEntries_[entry];
  const std::string current = family ? AlarmsOf(nm.config, *family)[static_cast<std::size_t>(index)].Tag
                                     : nm.config.AlarmCom.Tag;
  SoundDialog dialog(nm, current, &window_);
  if (dialog.exec() != QDialog::Accepted) return false;
  if (family) {
    ConfigEditor(nm).SetAlarmSound(*family, index, dialog.sound());
  } else {
    nm.config.AlarmCom.Tag = dialog.sound();
    if (dialog.sound().empty()) nm.config.AlarmCom.Value = 0;
  }
  window_.Render();
  return !dialog.sound().empty();
}

WindowDialogs::~WindowDialogs() = default;

bool WindowDialogs::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &window_ && event->type() == QEvent::WindowStateChange) tray_->Update();
  const bool rightRelease = event->type() == QEvent::MouseButtonRelease &&
                            static_cast<QMouseEvent*>(event)->button() == Qt::RightButton;
  if (rightRelease && watched == tempGraph_) {
    Open<TempLimitsDialog>(window_, station_.nm());
    return true;
  }
  if (rightRelease && soundEntries_.count(static_cast<QWidget*>(watched))) {
    ChooseSound(static_cast<QWidget*>(watched));
    return true;
  }
  return QObject::eventFilter(watched, event);
}

void WindowDialogs::FirstStart() {
  FirstStartWindow hooks;
  hooks.window = &window_;
  hooks.showDeviceTab = [this] { window_.mainTabs()->setCurrentIndex(DeviceTab); };
  hooks.setControlsEnabled = [this](bool enabled) {
    window_.mainTabs()->setEnabled(enabled);
    for (const char* name : {"RecOption(0)", "RecOption(1)"})
      if (QWidget* option = window_.findChild<QWidget*>(name)) option->setEnabled(enabled);
    window_.Render();
  };
  hooks.refresh = [this] {
    window_.Render();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  };
  if (RunFirstStart(station_, hooks) == FirstStartOutcome::Unload) {
    // The store keeps DeviceInitialized as it is, so the next start asks again.
    window_.ExitProgram();
    return;
  }
  window_.Render();
  window_.RunAutoStart();
}

}  // namespace nbx
