#include "zvBenchmarkDisplay.h"

#include <cstdlib>

#include <X11/Xlib.h>

void* zvGetBenchmarkDisplay()
{
  static Display* const display = []() -> Display*
  {
    const char* const name = std::getenv("DISPLAY");
    return name && *name ? XOpenDisplay(name) : nullptr;
  }();
  return display;
}
