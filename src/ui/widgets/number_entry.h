#pragma once

#include <QLineEdit>
#include <QString>

namespace nbx {

// NBXGetNumber: the text box of every number of the window. Its keyboard
// filter lets only a number of the allowed shape be typed; the locale's
// separators are read afresh each time, so a decimal comma and a decimal
// point mean the same number on machines set either way.
class NumberEntry : public QLineEdit {
  Q_OBJECT

 public:
  explicit NumberEntry(QWidget* parent = nullptr);

  void setDigitsMostSignificant(int digits) { digitsMostSignificant_ = digits; }
  void setDigitsDecimal(int digits) { digitsDecimal_ = digits; }
  void setAllowNegative(bool allow) { allowNegative_ = allow; }
  void setDisplayFormat(const QString& format) { displayFormat_ = format; }
  int digitsMostSignificant() const { return digitsMostSignificant_; }
  int digitsDecimal() const { return digitsDecimal_; }
  bool allowNegative() const { return allowNegative_; }
  QString displayFormat() const { return displayFormat_; }

  // The text read as a number; an empty or unreadable text is 0.
  double value() const;
  // Shows the number in the display format (plain when there is none).
  void setValue(double value);

  // Thousand separators dropped, the decimal separator read as the point,
  // and the leading number taken; whatever follows it is ignored.
  static double NumberFromText(const QString& text);
  // The value written as this entry shows numbers.
  QString FormatValue(double value) const;

 signals:
  // The user finished an edit (Return or leaving the entry) that changed the text.
  void valueEdited(double value);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool AcceptsKey(QChar key) const;
  void CutToLimits();
  void FinishEdit();

  int digitsMostSignificant_ = 3;
  int digitsDecimal_ = 2;
  bool allowNegative_ = false;
  QString displayFormat_;
  bool updating_ = false;
};

// The locale's separators, as the number entry reads them.
QChar LocaleDecimalSeparator();
QChar LocaleThousandSeparator();

}  // namespace nbx
