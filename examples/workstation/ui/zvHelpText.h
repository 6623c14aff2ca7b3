#ifndef zvHelpText_h
#define zvHelpText_h

#include <QString>

/// The texts of the help, as rich text.
namespace zvHelpText
{
/// What the mouse does, in tables by view.
QString Mouse();
QString About();

/// A line of a table: what the hand does and what follows.
QString Row(const QString& hand, const QString& effect);
/// Lines under a title.
QString Table(const QString& title, const QString& rows);
}

#endif
