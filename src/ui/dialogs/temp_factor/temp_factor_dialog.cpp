#include "ui/dialogs/temp_factor/temp_factor_dialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "core/nimbometer.h"
#include "editing/config_editor.h"
#include "ui/widgets/number_entry.h"

namespace nbx {
namespace {

double& Coefficient(SkyCoefficients& k, int index) {
  double* const all[] = {&k.K1, &k.K2, &k.K3, &k.K4, &k.K5, &k.K6, &k.K7};
  return *all[index - 1];
}

// The dialog keeps the exponent of the model in a range it can draw; a
// value written by a client goes past these unclamped.
constexpr double MaxK4 = 100;
constexpr double MaxK5 = 150;

}  // namespace

FactorCurve ComputeFactorCurve(const SkyCoefficients& k) {
  FactorCurve curve;
  for (int t = FactorCurveFirst; t <= FactorCurveLast; ++t) {
    const double value = SkyModelCelsius(k, t);
    curve.valid = curve.valid && std::isfinite(value);
    curve.values.push_back(value);
  }
  return curve;
}

FactorGraph::FactorGraph(QWidget* parent) : QWidget(parent) {
  setObjectName("PicGraph");
  setMinimumSize(320, 220);
}

void FactorGraph::SetCurves(const FactorCurve& edited, const FactorCurve& reference, double low,
                            double high) {
  edited_ = edited;
  reference_ = reference;
  low_ = low;
  high_ = high;
  update();
}

void FactorGraph::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  p.setPen(Qt::darkGray);
  p.drawRect(rect().adjusted(0, 0, -1, -1));
  if (!edited_.valid) {
    p.setPen(Qt::red);
    p.drawText(rect(), Qt::AlignCenter, "Formula Error with these coefficients");
    return;
  }
  const double span = std::max(high_ - low_, 1.0);
  const double steps = FactorCurveLast - FactorCurveFirst;
  auto point = [&](int i, double v) {
    return QPointF(4 + (width() - 8) * i / steps, 4 + (height() - 8) * (high_ - v) / span);
  };
  // The zero line, where the model adds nothing.
  p.setPen(QPen(Qt::lightGray, 1, Qt::DashLine));
  p.drawLine(point(0, 0), point(static_cast<int>(steps), 0));
  p.setRenderHint(QPainter::Antialiasing);
  auto draw = [&](const FactorCurve& curve, const QPen& pen) {
    if (!curve.valid) return;
    QPainterPath path;
    for (std::size_t i = 0; i < curve.values.size(); ++i) {
      const QPointF at = point(static_cast<int>(i), curve.values[i]);
      if (i == 0) path.moveTo(at);
      else path.lineTo(at);
    }
    p.strokePath(path, pen);
  };
  draw(reference_, QPen(Qt::gray, 1, Qt::DotLine));
  draw(edited_, QPen(QColor(0, 0, 192), 2));
}

TempFactorDialog::TempFactorDialog(Nimbometer& nm, QWidget* parent)
    : QDialog(parent), nm_(nm), reference_(SkyCoefficients::From(nm.config)) {
  setObjectName("NBXTempFactorGraph");
  setWindowTitle("Sky Temperature Correction Factors");
  auto* grid = new QGridLayout(this);
  for (int k = 1; k <= 7; ++k) {
    auto* entry = new NumberEntry(this);
    entry->setObjectName(QStringLiteral("CloudTempK%1").arg(k));
    entry->setAllowNegative(true);
    entry->setDigitsMostSignificant(4);
    entry->setDigitsDecimal(2);
    entry->setValue(Coefficient(reference_, k));
    auto* label = new QLabel(QStringLiteral("K%1").arg(k), this);
    label->setBuddy(entry);
    grid->addWidget(label, k - 1, 0);
    grid->addWidget(entry, k - 1, 1);
    fields_[static_cast<std::size_t>(k - 1)] = entry;
    connect(entry, &QLineEdit::textChanged, this, [this, k] { FieldEdited(k); });
  }
  graph_ = new FactorGraph(this);
  auto label = [this](const char* name) {
    auto* l = new QLabel(this);
    l->setObjectName(name);
    return l;
  };
  LBLYmax_ = label("LBLYmax");
  LBLYmin_ = label("LBLYmin");
  LBLTempMin_ = label("LBLTempMin");
  LBLTempMax_ = label("LBLTempMax");
  auto* axis = new QLabel("Ambient temperature (ºC)", this);
  axis->setAlignment(Qt::AlignCenter);
  grid->addWidget(LBLYmax_, 0, 2, Qt::AlignRight | Qt::AlignTop);
  grid->addWidget(LBLYmin_, 6, 2, Qt::AlignRight | Qt::AlignBottom);
  grid->addWidget(graph_, 0, 3, 7, 3);
  grid->addWidget(LBLTempMin_, 7, 3, Qt::AlignLeft);
  grid->addWidget(axis, 7, 4);
  grid->addWidget(LBLTempMax_, 7, 5, Qt::AlignRight);

  auto* def = new QPushButton("Default", this);
  def->setObjectName("ButtDefault");
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("ButtOK");
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("ButtCancel");
  connect(def, &QPushButton::clicked, this, &TempFactorDialog::LoadDefaults);
  connect(ok, &QPushButton::clicked, this, &TempFactorDialog::Confirm);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  grid->addWidget(def, 8, 0, 1, 2);
  grid->addWidget(ok, 8, 4, Qt::AlignRight);
  grid->addWidget(cancel, 8, 5);
  Redraw();
}

SkyCoefficients TempFactorDialog::Edited() const {
  SkyCoefficients k;
  for (int i = 1; i <= 7; ++i) Coefficient(k, i) = field(i)->value();
  return k;
}

void TempFactorDialog::FieldEdited(int k) {
  if (loadingDefaults_) return;
  const double bound = k == 4 ? MaxK4 : k == 5 ? MaxK5 : INFINITY;
  if (field(k)->value() > bound) field(k)->setValue(bound);  // comes back here, then draws
  else Redraw();
}

void TempFactorDialog::LoadDefaults() {
  SkyCoefficients defaults;
  loadingDefaults_ = true;
  for (int k = 1; k <= 7; ++k) field(k)->setValue(Coefficient(defaults, k));
  loadingDefaults_ = false;
  Redraw();
}

void TempFactorDialog::Redraw() {
  const FactorCurve edited = ComputeFactorCurve(Edited());
  const FactorCurve reference = ComputeFactorCurve(reference_);
  valid_ = edited.valid;
  double low = INFINITY, high = -INFINITY;
  for (const FactorCurve* curve : {&edited, &reference}) {
    if (!curve->valid) continue;
    for (double v : curve->values) {
      low = std::min(low, v);
      high = std::max(high, v);
    }
  }
  if (!std::isfinite(low)) low = high = 0;
  // The scale is rounded outward to multiples of 5.
  low = std::floor(low / 5) * 5;
  high = std::ceil(high / 5) * 5;
  if (high <= low) high = low + 5;
  graph_->SetCurves(edited, reference, low, high);
  LBLYmin_->setText(QString::number(low));
  LBLYmax_->setText(QString::number(high));
  LBLTempMin_->setText(QString::number(FactorCurveFirst));
  LBLTempMax_->setText(QString::number(FactorCurveLast));
}

void TempFactorDialog::Confirm() {
  ConfigEditor editor(nm_);
  for (int k = 1; k <= 7; ++k) editor.SetCloudTempK(k, field(k)->value());
  accept();
}

}  // namespace nbx
