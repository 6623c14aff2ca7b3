#ifndef zvPlanePlace_h
#define zvPlanePlace_h

#include <QString>

#include <array>

/// Where one of the three planes stands, so that the planes can be brought back there: the
/// directions of all three, which way up they are seen, and how far this one is along its own.
struct zvPlanePlace
{
  using Vector = std::array<double, 3>;

  int Axis = 0;                    // of this plane: 0 sagittal, 1 coronal, 2 axial
  std::array<Vector, 3> Normals{}; // of all planes, unit vectors
  std::array<Vector, 3> Ups{};     // of the pictures of all planes, unit vectors in them
  double Offset = 0.0;             // millimetres along the plane's normal, from the origin
  double Step = 1.0;               // millimetres between two of its slices
  bool IsUpright = true;           // whether the planes stand along the axes
  int Slice = 0;                   // as it is counted on the screen

  const Vector& GetNormal() const { return this->Normals[static_cast<std::size_t>(this->Axis)]; }

  /// Whether the plane of another place is the same slice: as near as its slices are told apart.
  bool IsSameSlice(const zvPlanePlace& other) const;

  /// The slice in words: its number, for a tilted plane "oblique 12".
  QString Describe() const;
};

#endif
