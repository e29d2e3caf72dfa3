#pragma once

#include <QDialog>
#include <QWidget>
#include <array>
#include <vector>

#include "sensors/sky_correction.h"

class QLabel;

namespace nbx {
struct Nimbometer;
class NumberEntry;

// The sky model over the ambient temperatures the graph shows, in Celsius:
// one value per degree from FactorCurveFirst to FactorCurveLast. `valid` is
// false when the coefficients make the arithmetic fail anywhere.
inline constexpr int FactorCurveFirst = -25;
inline constexpr int FactorCurveLast = 40;
struct FactorCurve {
  std::vector<double> values;
  bool valid = true;
};
FactorCurve ComputeFactorCurve(const SkyCoefficients& k);

// The picture of the two curves: the edited model and, for comparison, the
// model the dialog opened with.
class FactorGraph : public QWidget {
  Q_OBJECT

 public:
  explicit FactorGraph(QWidget* parent = nullptr);
  void SetCurves(const FactorCurve& edited, const FactorCurve& reference, double low, double high);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  FactorCurve edited_, reference_;
  double low_ = -5, high_ = 5;
};

// NBXTempFactorGraph: the seven coefficients of the sky correction with the
// curve they give. OK hands them to the station; Cancel changes nothing.
class TempFactorDialog : public QDialog {
  Q_OBJECT

 public:
  TempFactorDialog(Nimbometer& nm, QWidget* parent = nullptr);

  NumberEntry* field(int k) const { return fields_[static_cast<std::size_t>(k - 1)]; }
  SkyCoefficients Edited() const;
  // The curve could be computed with the present fields.
  bool FormulaValid() const { return valid_; }
  // ButtDefault: the coefficients of a new installation, drawn once.
  void LoadDefaults();
  void Confirm();

 private:
  // A field changed: the dialog's own bounds, then the picture.
  void FieldEdited(int k);
  void Redraw();

  Nimbometer& nm_;
  SkyCoefficients reference_;
  std::array<NumberEntry*, 7> fields_{};
  FactorGraph* graph_ = nullptr;
  QLabel* LBLTempMin_ = nullptr;
  QLabel* LBLTempMax_ = nullptr;
  QLabel* LBLYmin_ = nullptr;
  QLabel* LBLYmax_ = nullptr;
  bool loadingDefaults_ = false;
  bool valid_ = true;
};

}  // namespace nbx
