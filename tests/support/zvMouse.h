#ifndef zvMouse_h
#define zvMouse_h

#include "zvScene.h"

#include <string>

class vtkRenderWindowInteractor;

namespace zvtest
{
enum Button
{
  Left,
  Middle,
  Right
};

/// Keys that are held; combine them with |.
enum Modifier
{
  NoModifier = 0,
  Shift = 1,
  Control = 2
};

/// The user's hand: sends events with their position and modifiers through the interactor, as the
/// windowing system does. Nothing is sent by itself: a press does not move first.
///
/// \code
/// zvtest::Mouse mouse(scene);
/// mouse.Press(zvtest::Left, mouse.At({ { 1, 2, 3 } }), zvtest::Shift);
/// mouse.MoveTo(mouse.At({ { 1, 2, 5 } }), zvtest::Shift);
/// mouse.Release(zvtest::Left);
/// \endcode
class Mouse
{
public:
  /// Drives the scene's interactor; world positions are seen in its viewport \a viewport.
  explicit Mouse(Scene& scene, int viewport = 0);

  /// The display pixel in which a world position is seen.
  Display At(const World& position) const;

  void MoveTo(const Display& position, int modifiers = NoModifier);
  void Press(Button button, const Display& position, int modifiers = NoModifier);
  void Release(Button button, const Display& position, int modifiers = NoModifier);

  /// At the position of the last event.
  void Release(Button button, int modifiers = NoModifier);

  /// Press, move to \a to in \a steps equal moves, release.
  void Drag(Button button, const Display& from, const Display& to, int modifiers = NoModifier,
    int steps = 1);

  /// The second press of a double click, as the toolkit reports it.
  void DoubleClick(Button button, const Display& position, int modifiers = NoModifier);

  void WheelForward(const Display& position, int modifiers = NoModifier);
  void WheelBackward(const Display& position, int modifiers = NoModifier);

  /// A typed character, with the pointer where it last was.
  void Type(char key, int modifiers = NoModifier);

  /// Where the last event was.
  Display Position() const { return this->Last; }

private:
  void Send(unsigned long event, const Display& position, int modifiers, char key = 0);
  Scene* Stage;
  int Viewport;
  Display Last{ { 0, 0 } };
};
}

#endif
