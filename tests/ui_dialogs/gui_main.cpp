// The same offscreen widget application as the window tests'.
#include "ui/gui_main.cpp"
