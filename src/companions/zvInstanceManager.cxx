#include "zvInstanceManager.h"
