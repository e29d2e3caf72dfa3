// nbx-dialog-pictures FOLDER: each dialog around the main window, drawn
// offscreen with a station's defaults, as FOLDER/<dialog>.png.

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <cstdio>
#include <cstdlib>

#include "core/nimbometer.h"
#include "station/settings_store.h"
#include "station/station.h"
#include "ui/dialogs/about/about_dialog.h"
#include "ui/dialogs/device_constants/device_constants.h"
#include "ui/dialogs/file_structure/file_structure_dialog.h"
#include "ui/dialogs/legend/legend_dialog.h"
#include "ui/dialogs/news/news_dialog.h"
#include "ui/dialogs/sound/sound_dialog.h"
#include "ui/dialogs/temp_factor/temp_factor_dialog.h"
#include "ui/dialogs/temp_limits/temp_limits_dialog.h"
#include "ui/dialogs/update/update_form.h"
#include "ui/first_run/initial_form.h"
#include "ui/tray/tray_icon.h"
#include "ui/widgets/number_entry.h"

namespace {

bool Save(QWidget& widget, const QString& folder, const QString& name) {
  widget.adjustSize();
  widget.show();
  QApplication::processEvents();
  const QString file = folder + "/" + name + ".png";
  const bool saved = widget.grab().save(file);
  std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(file));
  widget.hide();
  return saved;
}

}  // namespace

int main(int argc, char* argv[]) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QApplication app(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: nbx-dialog-pictures FOLDER\n");
    return 2;
  }
  const QString folder = QString::fromLocal8Bit(argv[1]);
  QDir().mkpath(folder);
  nbx::Station station;
  nbx::Nimbometer& nm = station.nm();
  nm.config.LblPathName = "/home/observer/Documents";
  nm.state.SerialNo = "A123";
  nm.config.CloudTempK6 = 20;  // the curve beside the reference shows what an edit does

  bool ok = true;
  nbx::InitialForm initial(nm);
  ok &= Save(initial, folder, "NBXInitialForm");
  nbx::AboutDialog about(nbx::VersionNumberText(7, 0, 0), nbx::ConditionIcon(0xC0FFC0));
  ok &= Save(about, folder, "NBXAbout");
  nbx::LegendDialog legend;
  ok &= Save(legend, folder, "NBXLegend");
  nbx::TempLimitsDialog limits(nm);
  ok &= Save(limits, folder, "NBXTempLimForm");
  nbx::SoundDialog sound(nm, "");
  ok &= Save(sound, folder, "NBXSoundForm");
  nbx::FileStructureDialog structure(nm);
  ok &= Save(structure, folder, "NBXFileStructForm");
  nbx::TempFactorDialog factor(nm);
  factor.field(6)->setText("0");
  ok &= Save(factor, folder, "NBXTempFactorGraph");
  nbx::DeviceConstants constants;
  constants.setDevideCosntants(nm.state);
  ok &= Save(constants, folder, "NBXDeviceConstants");
  nbx::ElectConstDialog elect("3");
  ok &= Save(elect, folder, "NBXElectConst");
  // The update window after a check that found a newer version; nothing is
  // fetched, and the news goes to a store of this run only.
  QTemporaryDir scratchDir;
  nbx::IniSettings scratch(scratchDir.filePath("pictures.ini"));
  nbx::UpdateForm update(nm, scratch, folder);
  update.findChild<QLabel*>("Label1")->setText("7.00.000");
  update.findChild<QLabel*>("Label2")->setText("7.01.000");
  update.findChild<QLabel*>("Label3")->setText("Sucessful response");
  update.findChild<QGroupBox*>("Frame1")->show();
  ok &= Save(update, folder, "NBXUpdateForm");
  nbx::NewsDialog news(scratch);
  news.MsgContent("Version 7.01.000 reads the pressure sensor of the new boxes and keeps the rain "
                  "heater on through short power cuts.", QRect(0, 0, 420, 300));
  ok &= Save(news, folder, "NBXDispNews");
  QWidget window;
  nbx::TrayIcon tray(station, &window, "NBX_Nimbometer (v7.00.000)");
  tray.Update();
  ok &= Save(*tray.menu(), folder, "mPopupSys");
  return ok ? 0 : 1;
}
