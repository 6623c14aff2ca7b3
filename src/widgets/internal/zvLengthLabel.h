#ifndef zvLengthLabel_h
#define zvLengthLabel_h

#include <string>

class vtkFollower;
class vtkRenderer;
class vtkVectorText;

/// Labels with a measure in millimetres: their texts, and text in the scene that turns to a camera.
namespace zvLengthLabel
{
/// "%10.2lf mm" for a length. The padding stays in the label: it keeps the digits off the point
/// that the label stands at. A text has at most 99 characters, further ones are cut off.
std::string OfLength(double millimetres);

/// "%10.2lf mm^2" for an area.
std::string OfArea(double squareMillimetres);

/// "%10.4lf mm". Deliberate: a snake's area has four decimals and this unit.
std::string OfSnakeArea(double squareMillimetres);

/// Give \a follower a mapper of its own on \a text, and let the text be a blank, which draws
/// nothing.
void Build(vtkVectorText* text, vtkFollower* follower);

/// Scale the label equally along its axes: a letter is \a size world millimetres high. The size is
/// narrowed to single precision.
void SetSize(vtkFollower* follower, double size);

/// Let the label turn to the renderer's camera and be in the renderer, once however often it is
/// called. Nothing without a renderer.
void Show(vtkFollower* follower, vtkRenderer* renderer);
}

#endif
