#ifndef zvPicture_h
#define zvPicture_h

#include <array>
#include <iosfwd>
#include <string>
#include <vector>

class vtkRenderWindow;

namespace zvtest
{
/// A position in display pixels, from the lower left corner of the window.
using Display = std::array<int, 2>;

/// Red, green, blue, each 0 to 255.
struct Color
{
  int Red = 0;
  int Green = 0;
  int Blue = 0;

  /// From components between 0 and 1, as VTK's properties have them; above 1 counts as 1.
  static Color FromUnit(double red, double green, double blue);
  static Color Grey(int value) { return { value, value, value }; }

  /// Whether no component differs by more than \a tolerance.
  bool IsNear(const Color& other, int tolerance) const;
  bool operator==(const Color& other) const { return this->IsNear(other, 0); }
  bool operator!=(const Color& other) const { return !this->IsNear(other, 0); }
};

std::ostream& operator<<(std::ostream& os, const Color& color);

/// Display pixels from Low to High, both inside.
struct Region
{
  Display Low{ { 0, 0 } };
  Display High{ { 0, 0 } };
  /// The square of 2 * radius + 1 pixels about a position.
  static Region Around(const Display& center, int radius);
};

/// What a window shows: taken once, looked at as often as needed.
class Picture
{
public:
  /// Take what the window last rendered. Renders nothing itself.
  explicit Picture(vtkRenderWindow* window);

  int Width() const { return this->Size[0]; }
  int Height() const { return this->Size[1]; }

  /// The colour at a position; outside the picture a std::out_of_range is thrown.
  Color At(const Display& position) const;

  /// How many pixels of the region (the part of it that is in the picture), or of the whole
  /// picture, are within \a tolerance of the colour.
  int Count(const Color& color, const Region& region, int tolerance = 3) const;
  int Count(const Color& color, int tolerance = 3) const;

  /// How many pixels are not within \a tolerance of the colour.
  int CountOther(const Color& color, const Region& region, int tolerance = 3) const;

  /// Whether the colour occurs within \a radius pixels of a position.
  bool HasNear(const Color& color, const Display& position, int radius, int tolerance = 3) const;

  /// How many pixels differ from another picture of the same size (-1 if the sizes differ).
  int CountDifferent(const Picture& other, int tolerance = 3) const;

  /// For looking at it.
  void WritePng(const std::string& path) const;

private:
  std::array<int, 2> Size{ { 0, 0 } };
  std::vector<unsigned char> Bytes;
};
}

#endif
