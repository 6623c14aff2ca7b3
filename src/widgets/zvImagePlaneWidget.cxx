#include "zvImagePlaneWidget.h"
