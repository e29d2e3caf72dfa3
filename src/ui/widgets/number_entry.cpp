#include "ui/widgets/number_entry.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QTimer>
#include <algorithm>
#include <cctype>
#include <cmath>

#include "core/number_format.h"

namespace nbx {

// The default locale is the system's unless the program sets another; tests
// set one to type as a decimal-comma machine would.
QChar LocaleDecimalSeparator() {
  const QString point = QLocale().decimalPoint();
  return point.isEmpty() ? QChar('.') : point.front();
}

QChar LocaleThousandSeparator() {
  const QString group = QLocale().groupSeparator();
  return group.isEmpty() ? QChar(',') : group.front();
}

NumberEntry::NumberEntry(QWidget* parent) : QLineEdit(parent) {
  connect(this, &QLineEdit::textChanged, this, [this] {
    if (!updating_) CutToLimits();
  });
  connect(this, &QLineEdit::returnPressed, this, [this] { FinishEdit(); });
}

namespace {

// Reads a leading number: blanks, a sign, digits, a point and digits, and an
// exponent when one is complete; the rest of the text is ignored.
double LeadingNumber(const QString& text) {
  const QByteArray bytes = text.trimmed().toLatin1();
  qsizetype end = 0;
  const qsizetype size = bytes.size();
  if (end < size && (bytes[end] == '-' || bytes[end] == '+')) ++end;
  const qsizetype digitsFrom = end;
  while (end < size && std::isdigit(static_cast<unsigned char>(bytes[end]))) ++end;
  if (end < size && bytes[end] == '.') {
    ++end;
    while (end < size && std::isdigit(static_cast<unsigned char>(bytes[end]))) ++end;
  }
  if (end == digitsFrom || (end == digitsFrom + 1 && bytes[digitsFrom] == '.')) return 0;
  qsizetype exponent = end;
  if (exponent < size && (bytes[exponent] == 'e' || bytes[exponent] == 'E')) {
    ++exponent;
    if (exponent < size && (bytes[exponent] == '-' || bytes[exponent] == '+')) ++exponent;
    const qsizetype exponentDigits = exponent;
    while (exponent < size && std::isdigit(static_cast<unsigned char>(bytes[exponent]))) ++exponent;
    if (exponent > exponentDigits) end = exponent;
  }
  bool ok = false;
  const double number = bytes.left(end).toDouble(&ok);
  return ok && std::isfinite(number) ? number : 0;
}

}  // namespace

double NumberEntry::NumberFromText(const QString& text) {
  QString plain = text;
  const QChar thousand = LocaleThousandSeparator();
  const QChar decimal = LocaleDecimalSeparator();
  if (thousand != decimal) plain.remove(thousand);
  plain.replace(decimal, QChar('.'));
  return LeadingNumber(plain);
}

QString NumberEntry::FormatValue(double number) const {
  const char separator = LocaleDecimalSeparator().toLatin1();
  if (displayFormat_.trimmed().isEmpty()) {
    QString plain = QString::number(number, 'g', 15);
    return plain.replace(QChar('.'), QChar(separator ? separator : '.'));
  }
  return QString::fromStdString(
      FormatNumber(number, displayFormat_.toStdString(), separator ? separator : '.'));
}

double NumberEntry::value() const { return NumberFromText(text()); }

void NumberEntry::setValue(double number) {
  updating_ = true;
  setText(FormatValue(number));
  updating_ = false;
}

bool NumberEntry::AcceptsKey(QChar key) const {
  const QString present = text();
  const QChar separator = LocaleDecimalSeparator();
  // Positions as the caret counts them: the separator's is one-based, 0 when absent.
  const int decimalPos = static_cast<int>(present.indexOf(separator)) + 1;
  const int start = hasSelectedText() ? static_cast<int>(selectionStart()) : cursorPosition();
  const int length = static_cast<int>(selectedText().size());
  const int textLength = static_cast<int>(present.size());

  if (key == QChar('\b')) return true;
  if (key.isDigit() && key.unicode() < 128) {
    if (length != 0) return true;
    if (decimalPos == 0) return digitsMostSignificant_ >= textLength;
    if (start < decimalPos) return decimalPos <= digitsMostSignificant_ + 1;
    // Counted from the integer digits' limit rather than from the separator:
    // the entries have always bounded the decimals so.
    return digitsDecimal_ >= textLength - (digitsMostSignificant_ + 1);
  }
  if (key == QChar('-') && allowNegative_) return !present.contains('-') && start == 0;
  if (key == separator && digitsDecimal_ >= 1) {
    if (decimalPos == 0) return true;
    return start < decimalPos - 1 && length > 1;
  }
  return false;
}

void NumberEntry::keyPressEvent(QKeyEvent* event) {
  const QString typed = event->text();
  // Only the characters a key types are filtered; caret keys, Delete and the
  // clipboard shortcuts carry no printable text and pass.
  const bool printable = typed.size() == 1 && (typed.front().isPrint() || typed.front() == '\b') &&
                         !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
  if (printable && !AcceptsKey(typed.front())) {
    event->accept();
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void NumberEntry::CutToLimits() {
  const QString present = text();
  const bool negative = present.startsWith('-');
  const QString unsignedText = negative ? present.mid(1) : present;
  const QChar separator = LocaleDecimalSeparator();
  const qsizetype at = unsignedText.indexOf(separator);
  const QString integerPart = at < 0 ? unsignedText : unsignedText.left(at);
  const QString decimalPart = at < 0 ? QString() : unsignedText.mid(at + 1);
  if (integerPart.size() <= digitsMostSignificant_ && decimalPart.size() <= digitsDecimal_) return;

  QString rebuilt = negative ? QStringLiteral("-") : QString();
  rebuilt += integerPart.left(digitsMostSignificant_);
  if (at >= 0) rebuilt += separator + decimalPart.left(digitsDecimal_);
  const int caret = cursorPosition();
  updating_ = true;
  setText(rebuilt);
  setModified(true);
  setCursorPosition(std::min(caret, static_cast<int>(rebuilt.size())));
  updating_ = false;
}

void NumberEntry::FinishEdit() {
  if (!text().trimmed().isEmpty()) {
    // A partly typed number ("12," or "-") takes its final form.
    const bool modified = isModified();
    setValue(NumberFromText(text()));
    setModified(modified);
  }
  if (!isModified()) return;
  setModified(false);
  emit valueEdited(value());
}

void NumberEntry::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  // After the click that gave the focus has placed the caret.
  QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

void NumberEntry::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  FinishEdit();
}

}  // namespace nbx
