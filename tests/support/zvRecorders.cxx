#include "zvRecorders.h"
