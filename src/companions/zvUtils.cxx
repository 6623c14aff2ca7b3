#include "zvUtils.h"
