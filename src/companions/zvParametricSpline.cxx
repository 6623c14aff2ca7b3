#include "zvParametricSpline.h"
