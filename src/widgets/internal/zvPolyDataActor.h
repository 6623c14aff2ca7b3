#ifndef zvPolyDataActor_h
#define zvPolyDataActor_h

class vtkActor;
class vtkPolyData;

/// Poly data that a host hands to a widget to be drawn.
namespace zvPolyDataActor
{
/// Make \a own a deep copy of \a given, neither null. Poly data given to itself stays as it is.
void Copy(vtkPolyData* own, vtkPolyData* given);

/// Let \a actor draw \a data, by a new mapper.
void Draw(vtkActor* actor, vtkPolyData* data);

///@{
/// Give \a actor a new property of a colour (red, green, blue), the second form also of a point
/// size in pixels, narrowed to single precision. The components are stored as they are, what is
/// above 1 is drawn as 1.
void SetColor(vtkActor* actor, const double color[3]);
void SetColor(vtkActor* actor, const double color[3], double pointSize);
///@}
}

#endif
