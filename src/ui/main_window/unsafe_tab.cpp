// Tab "Unsafe": which classes count as unsafe, the sound of each class, and
// the Unknown condition's thresholds.

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "core/nimbometer.h"
#include "safety/families.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/widgets/click_label.h"
#include "ui/widgets/number_entry.h"

namespace nbx {

namespace {
struct UnsafeFamily {
  Family family;
  const char* title;
  const char* name;
};
const UnsafeFamily UnsafeFamilies[] = {
    {Family::Cloud, "Cloud Conditions", "Cloud"},       {Family::Rain, "Rain  Conditions", "Rain"},
    {Family::Wind, "Wind Conditions", "Wind"},          {Family::Day, "Brightness Conditions", "Day"},
    {Family::Humidity, "Humidity Conditions", "Humidity"}, {Family::Pressure, "Pressure Conditions", "Pressure"},
};
}  // namespace

QWidget* NBXNimbometerForm::BuildUnsafeTab() {
  Nimbometer& nm = station_.nm();
  auto* page = new QWidget(this);
  auto* pageLayout = new QVBoxLayout(page);
  // The owner's line lies under the blocks: it shows only while they are hidden.
  controlOwner_ = bind_.Shown(page, "Label3(22)", nm.display.ControlOwner, nullptr);
  pageLayout->addWidget(controlOwner_);
  auto* frame = new QGroupBox("Unsafe Conditions", page);
  frame->setObjectName("Frame3");
  bind_.Follow(frame, nm.display.Frame3);
  pageLayout->addWidget(frame, 1);
  auto* blocks = new QGridLayout(frame);

  int place = 0;
  for (const UnsafeFamily& entry : UnsafeFamilies) {
    const Family family = entry.family;
    auto* box = new QGroupBox(entry.title, frame);
    auto* grid = new QGridLayout(box);
    for (int i = 0; i < 3; ++i) {
      QCheckBox* check = bind_.Check(
          box, QStringLiteral("Check%1(%2)").arg(entry.name).arg(i), QString(),
          [family, i](const Config& c) { return ChecksOf(c, family)[Slot(i)]; },
          [family, i](ConfigEditor& e, int value) { e.SetCheck(family, i, value); });
      // The check boxes carry the class words and turn red while they count.
      const Label& word = CheckBoxesOf(nm.display, family)[Slot(i)];
      const UnsafeBlock& shown = UnsafeBlockOf(nm.display, family);
      checkCaptions_.push_back({check, &word, &shown.CheckBackColor[Slot(i)]});
      QCheckBox* alarm = bind_.Check(
          box, QStringLiteral("Alarm%1(%2)").arg(entry.name).arg(i), "Sound",
          [family, i](const Config& c) { return AlarmsOf(c, family)[Slot(i)].Value; },
          [this, family, i, name = entry.name](ConfigEditor& e, int value) {
            // An alarm without a sound would stay silent: turning one on asks for it.
            if (value != 0 && AlarmsOf(station_.nm().config, family)[Slot(i)].Tag.empty() &&
                !AskSound(QStringLiteral("Alarm%1(%2)").arg(name).arg(i)))
              return;
            e.SetAlarmState(family, i, value);
          });
      grid->addWidget(check, i, 0);
      grid->addWidget(alarm, i, 1);
    }
    blocks->addWidget(box, place / 2, place % 2);
    ++place;
  }

  auto* unknown = new QGroupBox("UNKNOWN", frame);
  auto* grid = new QGridLayout(unknown);
  int row = 0;
  grid->addWidget(bind_.Check(unknown, "SuspendSoundAlarm", " suspend sound alarms",
                              [](const Config& c) { return c.SuspendSoundAlarm; },
                              [](ConfigEditor& e, int v) { e.SetSuspendSoundAlarm(v); }), row++, 0, 1, 3);
  grid->addWidget(bind_.Check(unknown, "UnKnownUnsafe", " UNKNOWN generates UNSAFE",
                              [](const Config& c) { return c.UnKnownUnsafe; },
                              [](ConfigEditor& e, int v) { e.SetUnKnownUnsafe(v); }), row++, 0, 1, 3);
  auto addNumber = [&](const QString& name, const QString& caption, auto read, auto write,
                       ControlBindings::Digits digits, QWidget* beside = nullptr) {
    NumberEntry* number = bind_.Number(unknown, name, read, write, digits);
    grid->addWidget(Caption(unknown, caption, number), row, 0);
    grid->addWidget(number, row, 1);
    if (beside) grid->addWidget(beside, row, 2);
    setupGroup_.push_back(number);
    ++row;
    return number;
  };
  addNumber("UnknowCloudGT", "Sky temp more than", [](const Config& c) { return c.UnknowCloudGT; },
            [](ConfigEditor& e, double v) { e.SetUnknowCloudGT(v); }, {3, 1, true, "0.0"});
  QCheckBox* disableRain = bind_.Check(unknown, "DisableUnknownRain", "Disable",
                                       [](const Config& c) { return c.DisableUnknownRain; },
                                       [](ConfigEditor& e, int v) { e.SetDisableUnknownRain(v); });
  addNumber("UnknowRainLT", "Rain less than", [](const Config& c) { return c.UnknowRainLT; },
            [](ConfigEditor& e, double v) { e.SetUnknowRainLT(v); }, {5, 0, false, "0"}, disableRain);
  QCheckBox* disableDay = bind_.Check(unknown, "DisableUnknownDay", "Disable",
                                      [](const Config& c) { return c.DisableUnknownDay; },
                                      [](ConfigEditor& e, int v) { e.SetDisableUnknownDay(v); });
  addNumber("UnknownDayGT", "Brightness more than", [](const Config& c) { return c.UnknownDayGT; },
            [](ConfigEditor& e, double v) { e.SetUnknownDayGT(v); }, {5, 0, false, "0"}, disableDay);
  addNumber("UnknownNoReading", "Readings missing", [](const Config& c) { return c.UnknownNoReading; },
            [](ConfigEditor& e, double v) { e.SetUnknownNoReading(v); }, {2, 0, false, "0"});
  NumberEntry* rs232 = addNumber(
      "UnknownRS232NoError", "Unknown condition due to RS232 errors",
      [](const Config& c) { return c.UnknownRS232NoError; },
      [](ConfigEditor& e, double v) { e.SetUnknownRS232NoError(v); }, {2, 0, false, "0"});
  masterOnly_.push_back(rs232);
  if (auto* caption = qobject_cast<QLabel*>(grid->itemAtPosition(row - 1, 0)->widget()))
    masterCaptions_.push_back({caption, caption->text()});
  ClickLabel* colour = bind_.Swatch(
      unknown, "LblUnknowColor", [](const Config& c) { return c.LblUnknowColor; }, nullptr,
      [](ConfigEditor& e, Colour colour, const std::string&) { e.SetUnknowColour(colour); });
  colour->setText("Unknown");
  colour->setMaximumHeight(24);
  colour->setAccessibleName("Unknown colour");
  grid->addWidget(colour, row++, 0, 1, 2);
  NumberEntry* windDelay = addNumber("WindAlarmDelay", "Wind Alarm Delay",
                                     [](const Config& c) { return c.WindAlarmDelay; },
                                     [](ConfigEditor& e, double v) { e.SetWindAlarmDelay(v); },
                                     {4, 0, false, "0"});
  setupGroup_.pop_back();  // the delay may change in a run
  grid->addWidget(new QLabel("Period for which wind must blow continuously before alarm acts", unknown),
                  row++, 0, 1, 3);
  (void)windDelay;
  blocks->addWidget(unknown, 0, 2, 3, 1);
  return page;
}

}  // namespace nbx
