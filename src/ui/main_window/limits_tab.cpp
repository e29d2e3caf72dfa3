// Tab "Limits": per condition family its three swatches, the words of the
// comparison and the limits.

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>

#include "core/nimbometer.h"
#include "safety/families.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/widgets/click_label.h"
#include "ui/widgets/number_entry.h"

namespace nbx {

namespace {
struct LimitBlock {
  Family family;
  const char* title;
  const char* name;  // Cloud, Rain, ...: ColorCloud(n), CloudLimit(n)
  const char* comparison;
  ControlBindings::Digits digits;
};
const LimitBlock LimitBlocks[] = {
    {Family::Cloud, "Threshold Values for Cloud Conditions", "Cloud", "less than", {3, 1, true, "0.0"}},
    {Family::Rain, "Threshold Values for   Rain  Conditions", "Rain", "more than", {5, 0, false, "0"}},
    {Family::Wind, "Threshold Values for Wind Conditions", "Wind", "less than", {3, 1, false, "0.0"}},
    {Family::Day, "Threshold Values for Brightness Conditions", "Day", "more than", {5, 2, false, "0.00"}},
    {Family::Humidity, "Threshold Values for Humidity Conditions", "Humidity", "less than", {3, 0, false, "0"}},
    {Family::Pressure, "Threshold Values for Pressure Conditions", "Pressure", "less than", {4, 0, false, "0"}},
};
}  // namespace

QWidget* NBXNimbometerForm::BuildLimitsTab() {
  auto* frame = new QGroupBox("Threshold limits", this);
  frame->setObjectName("Frame2");
  auto* blocks = new QGridLayout(frame);
  int place = 0;
  for (const LimitBlock& block : LimitBlocks) {
    auto* box = new QGroupBox(block.title, frame);
    auto* grid = new QGridLayout(box);
    const Family family = block.family;
    for (int i = 0; i < 3; ++i) {
      ClickLabel* swatch = bind_.Swatch(
          box, QStringLiteral("Color%1(%2)").arg(block.name).arg(i),
          [family, i](const Config& c) { return SwatchesOf(c, family)[Slot(i)].BackColor; },
          [family, i](const Config& c) { return SwatchesOf(c, family)[Slot(i)].Caption; },
          [family, i](ConfigEditor& e, Colour colour, const std::string& word) {
            e.SetSwatchColour(family, i, colour);
            e.SetDescription(family, i, word);
          });
      NumberEntry* limit = bind_.Number(
          box, QStringLiteral("%1Limit(%2)").arg(block.name).arg(i),
          [family, i](const Config& c) { return LimitsOf(c, family)[Slot(i)]; },
          [family, i](ConfigEditor& e, double value) {
            // The third cloud and rain limits are the Unknown thresholds.
            if (i == 2 && family == Family::Cloud) return e.SetUnknowCloudGT(value);
            if (i == 2 && family == Family::Rain) return e.SetUnknowRainLT(value);
            e.SetLimit(family, i, value);
          },
          block.digits);
      swatch->setAccessibleName(QStringLiteral("%1 colour %2").arg(block.name).arg(i + 1));
      grid->addWidget(swatch, i, 0);
      grid->addWidget(Caption(box, block.comparison, limit), i, 1);
      grid->addWidget(limit, i, 2);
      limit->setAccessibleName(QStringLiteral("%1 %2 %3").arg(block.name, block.comparison).arg(i + 1));
      if (family == Family::Cloud || family == Family::Wind) {
        auto* unit = new QLabel(box);
        unit->setObjectName(QStringLiteral("Unit%1(%2)").arg(block.name).arg(i));
        unitLabels_.push_back({unit, family == Family::Cloud});
        grid->addWidget(unit, i, 3);
      }
    }
    blocks->addWidget(box, place / 2, place % 2);
    ++place;
  }
  blocks->setRowStretch(3, 1);
  return frame;
}

}  // namespace nbx
