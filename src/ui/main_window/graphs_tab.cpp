// Tab "Graphs": the seven surfaces the cycle draws, one sub-tab each.

#include <QLabel>
#include <QPixmap>
#include <QTabWidget>

#include "core/nimbometer.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"

namespace nbx {

namespace {
struct GraphPage {
  const char* name;
  const char* caption;
  GraphKind kind;
};
constexpr GraphPage GraphPages[] = {
    {"GraphCloud", "Cloud", GraphKind::Cloud},       {"GraphRain", "Rain", GraphKind::Rain},
    {"GraphWind", "Wind", GraphKind::Wind},          {"GraphDay", "Brightness", GraphKind::Day},
    {"GraphTemp", "Temp", GraphKind::Temp},          {"GraphHumidity", "Humidity", GraphKind::Humidity},
    {"GraphPressure", "Pressure", GraphKind::Pressure},
};
}  // namespace

QWidget* NBXNimbometerForm::BuildGraphsTab() {
  auto* frame = new QTabWidget(this);
  frame->setObjectName("SSTab2");
  sstab2_ = frame;
  for (const GraphPage& page : GraphPages) {
    auto* picture = new QLabel(frame);
    picture->setObjectName(page.name);
    picture->setAlignment(Qt::AlignCenter);
    picture->setAccessibleName(QStringLiteral("%1 graph").arg(page.caption));
    frame->addTab(picture, page.caption);
    graphs_.push_back(picture);
  }
  return frame;
}

void NBXNimbometerForm::PaintGraphs() {
  for (std::size_t i = 0; i < graphs_.size(); ++i) {
    const QImage& image = station_.pictures().Surface(GraphPages[i].kind).image;
    if (!image.isNull()) graphs_[i]->setPixmap(QPixmap::fromImage(image));
  }
}

}  // namespace nbx
