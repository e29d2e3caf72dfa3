#pragma once

#include <QString>
#include <QWidget>

namespace nbx {

// A control made with its caption and the name it is known by; tests and the
// accessibility interface reach it by either.
template <typename Control>
Control* Named(const char* name, const QString& caption, QWidget* parent) {
  auto* control = new Control(caption, parent);
  control->setObjectName(name);
  return control;
}

}  // namespace nbx
