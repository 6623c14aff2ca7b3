#ifndef zvIcons_h
#define zvIcons_h

#include <QIcon>
#include <QString>
#include <QStringList>

/// The icons of the program, drawn in lines when they are asked for, so that they suit every
/// screen.
namespace zvIcons
{
/// The icon of a name ("ruler"); an empty one for a name that is not known. Disabled actions show
/// it faint.
QIcon Make(const QString& name);

/// The names that are known.
QStringList GetNames();
}

#endif
