#ifndef zvWindowLevel_h
#define zvWindowLevel_h

class vtkImageData;
class vtkLookupTable;

/// Window and level of a grey picture: where they start, how a drag changes them, and how a lookup
/// table follows. A negative window stands for the reversed picture.
namespace zvWindowLevel
{
struct Values
{
  double Window;
  double Level;
};

/// The scalar range of an image, of the finite values if others are among them. 0 to 1 for an image
/// without values.
void GetRange(vtkImageData* image, double range[2]);

/// The window and level that show a whole range. Neither is closer to zero than 0.001.
Values FromRange(const double range[2]);

/// The window and level that show the whole range of an image. The table gets the range and is
/// built anew; null for one that is somebody else's to set.
Values Adopt(vtkImageData* image, vtkLookupTable* table);

/// Window and level after a drag by (x, y) from where they were \a start. The motion is in
/// viewports, right and up positive; the full width or height is worth four times the value it
/// changes, or 0.04 where that is less than 0.01. Neither gets closer to zero than 0.01.
Values Dragged(const Values& start, double x, double y);

/// Whether one value is above zero and the other below.
bool HaveOppositeSigns(double a, double b);

/// Whether both values are finite.
bool AreFinite(const Values& values);

/// Give the table the range level -+ |window| / 2. Values that are not finite change nothing.
void SetTableRange(const Values& values, vtkLookupTable* table);

/// Reverse the order of a table's colours; it is marked modified and keeps them at its next build.
void Reverse(vtkLookupTable* table);
}

#endif
