#ifndef zvWindowMenus_h
#define zvWindowMenus_h

class zvMainWindow;

/// The menus and toolbars of the window. Everything that has a place in a toolbar has one in a menu
/// too, and nearly everything a key.
namespace zvWindowMenus
{
/// Build them once, when the window has all its parts. Tools that are added later find their places
/// by themselves.
void Build(zvMainWindow& window);
}

#endif
