#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "core/colours.h"
#include "core/display.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QWidget;

namespace nbx {
struct Config;
struct Nimbometer;
class ConfigEditor;
class NumberEntry;
class ClickLabel;

QColor ScreenColour(Colour colour);
Colour FromQColor(const QColor& colour);

// The window's controls tied to the configuration in use and to what the
// logic shows. A user's edit goes to the settings-editing layer, the same
// setters the automation object calls; Refresh brings every control back to
// the records, so a value a client wrote shows at once. While `loading` the
// controls take values without running any change handling.
class ControlBindings {
 public:
  ControlBindings(Nimbometer& nm, ConfigEditor& editor, std::function<void()> edited);

  struct Digits {
    int mostSignificant = 3;
    int decimal = 2;
    bool negative = false;
    const char* format = "";
  };
  NumberEntry* Number(QWidget* parent, const QString& name, std::function<double(const Config&)> read,
                      std::function<void(ConfigEditor&, double)> write, Digits digits);
  QCheckBox* Check(QWidget* parent, const QString& name, const QString& caption,
                   std::function<int(const Config&)> read, std::function<void(ConfigEditor&, int)> write);
  // An option group: the buttons `name(0)`, `name(1)`, ...
  std::vector<QRadioButton*> Options(QWidget* parent, const QString& name, const QStringList& captions,
                                     std::function<int(const Config&)> read,
                                     std::function<void(ConfigEditor&, int)> write);
  QLineEdit* Text(QWidget* parent, const QString& name, std::function<std::string(const Config&)> read,
                  std::function<void(ConfigEditor&, const std::string&)> write);
  // A swatch: a click opens the colour picker; with a caption the word is edited too.
  ClickLabel* Swatch(QWidget* parent, const QString& name, std::function<Colour(const Config&)> colour,
                     std::function<std::string(const Config&)> caption,
                     std::function<void(ConfigEditor&, Colour, const std::string&)> write);
  // A label the logic writes; hidden too while `givesWayTo` is shown.
  ClickLabel* Shown(QWidget* parent, const QString& name, const Label& label,
                const Label* givesWayTo = nullptr);
  // A button or frame the logic shows or hides.
  void Follow(QWidget* widget, const Control& control);

  void Refresh();
  bool loading = false;

 private:
  void Edited(const std::function<void(ConfigEditor&)>& change);

  Nimbometer& nm_;
  ConfigEditor& editor_;
  std::function<void()> edited_;
  std::vector<std::function<void()>> refreshers_;
};

}  // namespace nbx
