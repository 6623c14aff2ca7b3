#ifndef zvTestKit_h
#define zvTestKit_h

/// Everything a test stands on: the quiet fixture, a real view, the mouse, volumes, recorders and
/// pixel probes.
#include "zvMessageText.h" // IWYU pragma: export
#include "zvMouse.h"       // IWYU pragma: export
#include "zvPicture.h"     // IWYU pragma: export
#include "zvQuietTest.h"   // IWYU pragma: export
#include "zvRecorders.h"   // IWYU pragma: export
#include "zvScene.h"       // IWYU pragma: export
#include "zvVolumes.h"     // IWYU pragma: export

#endif
