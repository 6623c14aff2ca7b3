#ifndef zvLoadedDrivers_h
#define zvLoadedDrivers_h

namespace zvtest
{
/// Keep every library loaded until the process ends.
///
/// Toolkits unload the graphics driver and the font library with their last window. What these
/// never free would then be reported as a leak of an unknown module, which no suppression can name.
/// The call itself does nothing: it brings in a dlclose that does nothing either.
void KeepDriversLoaded();
}

#endif
