#ifndef zvPick_h
#define zvPick_h

class vtkAbstractPropPicker;
class vtkProp;
class vtkRenderer;

/// Picking at a display position, safe without a renderer.
namespace zvPick
{
/// Pick with \a picker at (x, y). \return the picker's answer: 1 if something was hit. 0, without a
/// pick, if the picker, the renderer or its window is missing.
int At(vtkAbstractPropPicker* picker, int x, int y, vtkRenderer* renderer);

/// Whether \a prop is on the path of the picker's last pick.
bool WasHit(vtkAbstractPropPicker* picker, vtkProp* prop);

/// Pick at (x, y) and tell whether \a prop was hit.
bool Hits(vtkAbstractPropPicker* picker, int x, int y, vtkRenderer* renderer, vtkProp* prop);
}

#endif
