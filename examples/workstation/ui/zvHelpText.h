#ifndef zvHelpText_h
#define zvHelpText_h

#include <QString>

/// The texts of the help menu, as rich text.
namespace zvHelpText
{
/// The most used gestures, for a corner of the window.
QString Legend();
/// All of them.
QString Mouse();
QString About();
}

#endif
