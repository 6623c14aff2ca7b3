#include "zvPicture.h"

#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPNGWriter.h"
#include "vtkRenderWindow.h"
#include "vtkUnsignedCharArray.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <ostream>
#include <stdexcept>

namespace zvtest
{
Color Color::FromUnit(double red, double green, double blue)
{
  const auto scaled = [](double value)
  { return static_cast<int>(std::lround(255.0 * std::clamp(value, 0.0, 1.0))); };
  return { scaled(red), scaled(green), scaled(blue) };
}

bool Color::IsNear(const Color& other, int tolerance) const
{
  return std::abs(this->Red - other.Red) <= tolerance &&
    std::abs(this->Green - other.Green) <= tolerance &&
    std::abs(this->Blue - other.Blue) <= tolerance;
}

std::ostream& operator<<(std::ostream& os, const Color& color)
{
  return os << "(" << color.Red << ", " << color.Green << ", " << color.Blue << ")";
}

Region Region::Around(const Display& center, int radius)
{
  return { { { center[0] - radius, center[1] - radius } },
    { { center[0] + radius, center[1] + radius } } };
}

Picture::Picture(vtkRenderWindow* window)
{
  const int* size = window->GetSize();
  this->Size = { { size[0], size[1] } };
  vtkNew<vtkUnsignedCharArray> pixels;
  // A window on the screen has swapped its buffers at the end of the render, one off it has not.
  const int front = window->GetOffScreenRendering() ? 0 : 1;
  window->GetPixelData(0, 0, size[0] - 1, size[1] - 1, front, pixels);
  this->Bytes.assign(pixels->GetPointer(0), pixels->GetPointer(0) + pixels->GetNumberOfValues());
}

Color Picture::At(const Display& position) const
{
  if (position[0] < 0 || position[0] >= this->Size[0] || position[1] < 0 ||
    position[1] >= this->Size[1])
  {
    throw std::out_of_range("the position is outside the picture");
  }
  const std::size_t pixel =
    3 * (static_cast<std::size_t>(position[1]) * this->Size[0] + position[0]);
  return { this->Bytes[pixel], this->Bytes[pixel + 1], this->Bytes[pixel + 2] };
}

int Picture::Count(const Color& color, const Region& region, int tolerance) const
{
  int count = 0;
  for (int y = std::max(0, region.Low[1]); y <= std::min(this->Size[1] - 1, region.High[1]); ++y)
  {
    for (int x = std::max(0, region.Low[0]); x <= std::min(this->Size[0] - 1, region.High[0]); ++x)
    {
      count += this->At({ { x, y } }).IsNear(color, tolerance) ? 1 : 0;
    }
  }
  return count;
}

int Picture::Count(const Color& color, int tolerance) const
{
  return this->Count(color, { { { 0, 0 } }, this->Size }, tolerance);
}

int Picture::CountOther(const Color& color, const Region& region, int tolerance) const
{
  int count = 0;
  for (int y = std::max(0, region.Low[1]); y <= std::min(this->Size[1] - 1, region.High[1]); ++y)
  {
    for (int x = std::max(0, region.Low[0]); x <= std::min(this->Size[0] - 1, region.High[0]); ++x)
    {
      count += this->At({ { x, y } }).IsNear(color, tolerance) ? 0 : 1;
    }
  }
  return count;
}

bool Picture::HasNear(const Color& color, const Display& position, int radius, int tolerance) const
{
  return this->Count(color, Region::Around(position, radius), tolerance) > 0;
}

int Picture::CountDifferent(const Picture& other, int tolerance) const
{
  if (this->Size != other.Size)
  {
    return -1;
  }
  int count = 0;
  for (int y = 0; y < this->Size[1]; ++y)
  {
    for (int x = 0; x < this->Size[0]; ++x)
    {
      count += this->At({ { x, y } }).IsNear(other.At({ { x, y } }), tolerance) ? 0 : 1;
    }
  }
  return count;
}

void Picture::WritePng(const std::string& path) const
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(this->Size[0], this->Size[1], 1);
  image->AllocateScalars(VTK_UNSIGNED_CHAR, 3);
  std::copy(
    this->Bytes.begin(), this->Bytes.end(), static_cast<unsigned char*>(image->GetScalarPointer()));
  vtkNew<vtkPNGWriter> writer;
  writer->SetInputData(image);
  writer->SetFileName(path.c_str());
  writer->Write();
}
}
