#include "ui/main_window/control_bindings.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "core/nimbometer.h"
#include "editing/config_editor.h"
#include "ui/widgets/click_label.h"
#include "ui/widgets/colour_picker.h"
#include "ui/widgets/number_entry.h"

namespace nbx {

QColor ScreenColour(Colour colour) {
  // The high bit names a colour of the desktop's scheme rather than a value.
  if (colour & 0x80000000u) return QApplication::palette().color(QPalette::Button);
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
                static_cast<int>((colour >> 16) & 0xFF));
}

Colour FromQColor(const QColor& colour) {
  return static_cast<Colour>(colour.red()) | static_cast<Colour>(colour.green()) << 8 |
         static_cast<Colour>(colour.blue()) << 16;
}

ControlBindings::ControlBindings(Nimbometer& nm, ConfigEditor& editor, std::function<void()> edited)
    : nm_(nm), editor_(editor), edited_(std::move(edited)) {}

void ControlBindings::Edited(const std::function<void(ConfigEditor&)>& change) {
  if (loading) return;
  change(editor_);
  if (edited_) edited_();
}

NumberEntry* ControlBindings::Number(QWidget* parent, const QString& name,
                                     std::function<double(const Config&)> read,
                                     std::function<void(ConfigEditor&, double)> write, Digits digits) {
  auto* entry = new NumberEntry(parent);
  entry->setObjectName(name);
  entry->setDigitsMostSignificant(digits.mostSignificant);
  entry->setDigitsDecimal(digits.decimal);
  entry->setAllowNegative(digits.negative);
  entry->setDisplayFormat(digits.format);
  entry->setMaximumWidth(80);
  QObject::connect(entry, &NumberEntry::valueEdited, entry,
                   [this, write](double value) { Edited([&](ConfigEditor& e) { write(e, value); }); });
  refreshers_.push_back([this, entry, read] {
    // An entry being typed in keeps what the user types until it is left.
    if (entry->hasFocus() && entry->isModified()) return;
    const QString shown = entry->FormatValue(read(nm_.config));
    if (entry->text() != shown) entry->setValue(read(nm_.config));
  });
  return entry;
}

QCheckBox* ControlBindings::Check(QWidget* parent, const QString& name, const QString& caption,
                                  std::function<int(const Config&)> read,
                                  std::function<void(ConfigEditor&, int)> write) {
  auto* box = new QCheckBox(caption, parent);
  box->setObjectName(name);
  QObject::connect(box, &QCheckBox::clicked, box, [this, write](bool on) {
    Edited([&](ConfigEditor& e) { write(e, on ? 1 : 0); });
  });
  refreshers_.push_back([this, box, read] { box->setChecked(read(nm_.config) != 0); });
  return box;
}

std::vector<QRadioButton*> ControlBindings::Options(QWidget* parent, const QString& name,
                                                    const QStringList& captions,
                                                    std::function<int(const Config&)> read,
                                                    std::function<void(ConfigEditor&, int)> write) {
  std::vector<QRadioButton*> buttons;
  for (int index = 0; index < captions.size(); ++index) {
    auto* button = new QRadioButton(captions[index], parent);
    button->setObjectName(QStringLiteral("%1(%2)").arg(name).arg(index));
    // Each group stands alone even where groups share a panel.
    button->setAutoExclusive(false);
    QObject::connect(button, &QRadioButton::clicked, button, [this, write, index] {
      Edited([&](ConfigEditor& e) { write(e, index); });
      Refresh();
    });
    buttons.push_back(button);
  }
  refreshers_.push_back([this, buttons, read] {
    const int chosen = read(nm_.config);
    for (int index = 0; index < static_cast<int>(buttons.size()); ++index)
      buttons[static_cast<std::size_t>(index)]->setChecked(index == chosen);
  });
  return buttons;
}

QLineEdit* ControlBindings::Text(QWidget* parent, const QString& name,
                                 std::function<std::string(const Config&)> read,
                                 std::function<void(ConfigEditor&, const std::string&)> write) {
  auto* entry = new QLineEdit(parent);
  entry->setObjectName(name);
  QObject::connect(entry, &QLineEdit::editingFinished, entry, [this, entry, write] {
    if (!entry->isModified()) return;
    entry->setModified(false);
    Edited([&](ConfigEditor& e) { write(e, entry->text().toStdString()); });
  });
  refreshers_.push_back([this, entry, read] {
    if (entry->hasFocus() && entry->isModified()) return;
    const QString shown = QString::fromStdString(read(nm_.config));
    if (entry->text() != shown) entry->setText(shown);
  });
  return entry;
}

ClickLabel* ControlBindings::Swatch(QWidget* parent, const QString& name,
                                    std::function<Colour(const Config&)> colour,
                                    std::function<std::string(const Config&)> caption,
                                    std::function<void(ConfigEditor&, Colour, const std::string&)> write) {
  auto* swatch = new ClickLabel(parent);
  swatch->setObjectName(name);
  swatch->setAlignment(Qt::AlignCenter);
  swatch->setFrameShape(QFrame::Panel);
  swatch->setFrameShadow(QFrame::Sunken);
  swatch->setMinimumSize(90, 20);
  swatch->setFocusPolicy(Qt::StrongFocus);
  const bool withText = static_cast<bool>(caption);
  QObject::connect(swatch, &ClickLabel::clicked, swatch, [this, swatch, write, withText] {
    if (!PickColour(swatch->window(), swatch, withText)) return;
    const Colour chosen = FromQColor(LabelColour(swatch));
    const std::string word = swatch->text().toStdString();
    Edited([&](ConfigEditor& e) { write(e, chosen, word); });
  });
  refreshers_.push_back([this, swatch, colour, caption] {
    SetLabelColour(swatch, ScreenColour(colour(nm_.config)));
    if (caption) swatch->setText(QString::fromStdString(caption(nm_.config)));
  });
  return swatch;
}

ClickLabel* ControlBindings::Shown(QWidget* parent, const QString& name, const Label& label,
                               const Label* givesWayTo) {
  auto* shown = new ClickLabel(parent);
  shown->setObjectName(name);
  shown->setAutoFillBackground(true);
  refreshers_.push_back([shown, &label, givesWayTo] {
    const QString text = QString::fromStdString(label.Caption);
    if (shown->text() != text) shown->setText(text);
    QPalette palette = shown->palette();
    palette.setColor(QPalette::WindowText, ScreenColour(label.ForeColor));
    palette.setColor(QPalette::Window, ScreenColour(label.BackColor));
    shown->setPalette(palette);
    const bool visible = label.Visible && !(givesWayTo && givesWayTo->Visible);
    if (shown->isVisibleTo(shown->parentWidget()) != visible) shown->setVisible(visible);
  });
  return shown;
}

void ControlBindings::Follow(QWidget* widget, const Control& control) {
  refreshers_.push_back([widget, &control] {
    if (widget->isVisibleTo(widget->parentWidget()) != control.Visible) widget->setVisible(control.Visible);
    widget->setEnabled(control.Enabled);
  });
}

void ControlBindings::Refresh() {
  const bool wasLoading = loading;
  loading = true;
  for (const auto& refresh : refreshers_) refresh();
  loading = wasLoading;
}

}  // namespace nbx
