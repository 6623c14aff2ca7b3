#include "zvPlaneSource.h"
