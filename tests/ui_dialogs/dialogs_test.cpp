// The small windows around the main one: each changes what it edits on OK
// and nothing on Cancel, and keeps its own checks.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QListWidget>
#include <QTest>

#include "core/nimbometer.h"
#include "station/settings_store.h"
#include "support/child_process.h"
#include "support/wave_file.h"
#include "ui/dialogs/about/about_dialog.h"
#include "ui/dialogs/device_constants/device_constants.h"
#include "ui/dialogs/file_structure/file_structure_dialog.h"
#include "ui/dialogs/sound/sound_dialog.h"
#include "ui/dialogs/temp_factor/temp_factor_dialog.h"
#include "ui/dialogs/temp_limits/temp_limits_dialog.h"
#include "ui/widgets/number_entry.h"
#include "ui_dialogs/modal_script.h"

namespace nbx {
namespace {

void Press(QDialog& dialog, const QString& caption) {
  for (QPushButton* button : dialog.findChildren<QPushButton*>())
    if (button->text() == caption) return button->click();
  ADD_FAILURE() << "no button " << caption.toStdString();
}

TEST(Dialogs, OkTakesTheEditsCancelLeavesEverything) {
  test::TempDir sounds;
  test::WriteSilentWave(sounds.File("bell.wav"), 0.1);
  for (const bool ok : {false, true}) {
    SCOPED_TRACE(ok ? "OK" : "Cancel");
    Nimbometer nm;
    const Config before = nm.config;
    TempLimitsDialog limits(nm);
    limits.findChild<NumberEntry*>("GraphTempMax")->setValue(45);
    limits.minimum()->setValue(-12);
    TempFactorDialog factors(nm);
    factors.field(6)->setValue(-7);
    FileStructureDialog structure(nm);  // the first column moved down, the third one's print mark off
    structure.list()->setCurrentRow(0, QItemSelectionModel::NoUpdate);
    structure.MoveCurrent(+1);
    structure.list()->item(2)->setSelected(false);
    SoundDialog sound(nm, "");
    sound.OpenFolder(QString::fromStdString(sounds.path()));
    sound.findChild<QListWidget*>("File1")->setCurrentRow(0);
    sound.findChild<QCheckBox*>("ChkRepeat")->setChecked(true);
    for (QDialog* dialog : std::initializer_list<QDialog*>{&limits, &factors, &structure, &sound}) {
      Press(*dialog, ok ? "OK" : "Cancel");
      EXPECT_EQ(dialog->result(), ok ? QDialog::Accepted : QDialog::Rejected) << dialog->objectName().toStdString();
    }
    EXPECT_FALSE(nm.state.AlarmWindowON);
    if (!ok) {
      EXPECT_TRUE(nm.config == before);
      continue;
    }
    EXPECT_EQ(nm.config.GraphTempMax, 45);
    EXPECT_EQ(nm.config.GraphTempMin, -12);
    EXPECT_EQ(nm.config.CloudTempK6, -7);
    EXPECT_EQ(nm.config.CloudTempK1, before.CloudTempK1);
    const auto& col = nm.config.FileColumns;
    EXPECT_TRUE(col[0].Cal == 2 && col[0].Hdr == "Time" && col[1].Cal == 1 && col[1].Hdr == "Date");
    EXPECT_TRUE(col[1].Prt && !col[2].Prt && col[23].Cal == 24);
    EXPECT_EQ(sound.sound(), sounds.File("bell.wav") + "|repeat");
    EXPECT_EQ(nm.config.LastMusicDir, sounds.path());
  }
}

TEST(Dialogs, OwnChecksAndDefaults) {
  Nimbometer nm;
  {  // A minimum at or above the maximum keeps the limits dialog open.
    TempLimitsDialog limits(nm);
    limits.minimum()->setValue(30);
    test::ModalScript script({test::Press("OK")});
    Press(limits, "OK");
    EXPECT_EQ(script.messages, QStringList{"Minimum value must be smaller then Maximum value "});
    EXPECT_EQ(limits.result(), 0);
    EXPECT_EQ(nm.config.GraphTempMin, -30);
  }
  {  // The factor dialog's own bounds, a formula that overflows, the defaults.
    TempFactorDialog factors(nm);
    factors.field(5)->setText("200");
    EXPECT_EQ(factors.field(5)->value(), 150);
    factors.field(4)->setText("-9999");
    factors.field(5)->setText("-9999");
    EXPECT_FALSE(factors.FormulaValid());
    factors.LoadDefaults();
    EXPECT_TRUE(factors.FormulaValid());
    EXPECT_EQ(factors.Edited().K4, 100);
  }
  {  // The file structure's defaults put every one of the 24 columns back.
    nm.config.FileColumns[22].Prt = false;
    std::swap(nm.config.FileColumns[0], nm.config.FileColumns[23]);
    FileStructureDialog structure(nm);
    EXPECT_EQ(structure.list()->item(0)->text().toStdString(), "(01) Relative Pressure");
    structure.RestoreDefaults();
    structure.Confirm();
    EXPECT_EQ(nm.config.FileColumns, Config::DefaultFileColumns());
  }
  {  // A constant edited on its label is what goes to the store for the next start.
    test::TempDir dir;
    IniSettings store(QString::fromStdString(dir.File("station.ini")));
    DeviceConstants constants;
    constants.setDevideCosntants(nm.state);
    QLabel* zener = constants.constantLabel(0);
    EXPECT_EQ(zener->text(), "3");
    for (const char* button : {"Cancel", "OK"}) {
      test::ModalScript script({[button](QWidget* d) {
        d->findChild<NumberEntry*>("NewValue")->setText("2.5");
        test::Click(d, button);
      }});
      QTest::mouseRelease(zener, Qt::RightButton);
    }
    constants.Follow(nm.state);
    EXPECT_EQ(zener->text(), "2.5") << "an edit stays until the box tells other values";
    constants.ResetElectParam(store, nm.state, '.');
    EXPECT_EQ(store.Get("Electrical", "ZenerVoltage", ""), "2.5");
    EXPECT_EQ(nm.state.ZenerVoltage, 3) << "the readings of this run keep the station's value";
    EXPECT_EQ(constants.serialLabel()->text(), "n/a");
    nm.state.ZenerVoltage = 2.54;
    constants.Follow(nm.state);
    EXPECT_EQ(zener->text(), "2.54");
  }
  EXPECT_EQ(VersionNumberText(7, 1, 23).toStdString(), "7.01.023");
}

}  // namespace
}  // namespace nbx
