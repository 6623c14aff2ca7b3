#ifndef zvTheme_h
#define zvTheme_h

class QApplication;

/// The dark look of the program, in which grey pictures are seen best.
namespace zvTheme
{
void Apply(QApplication& application);
}

#endif
