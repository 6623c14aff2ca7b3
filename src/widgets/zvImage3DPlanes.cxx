#include "zvImage3DPlanes.h"
