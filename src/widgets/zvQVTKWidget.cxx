#include "zvQVTKWidget.h"
