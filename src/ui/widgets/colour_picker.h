#pragma once

#include <QColor>

class QLabel;
class QWidget;

namespace nbx {

// NBXColor: picks the background of a condition swatch from a grid of basic
// colours. With `withText` the condition's word (at most 11 characters) is
// edited too and becomes the label's caption. Opens on the label's present
// colour, marked when it is one of the grid's. True when the user chose a
// colour (accept or a double click on a swatch); the label is unchanged
// otherwise.
bool PickColour(QWidget* over, QLabel* target, bool withText);

// The background of a swatch label, as the picker and the window paint it.
QColor LabelColour(const QLabel* label);
void SetLabelColour(QLabel* label, const QColor& colour);

}  // namespace nbx
