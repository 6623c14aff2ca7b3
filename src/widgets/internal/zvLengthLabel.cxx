#include "zvLengthLabel.h"

#include "zvNumbers.h"

#include "vtkCamera.h"
#include "vtkFollower.h"
#include "vtkNew.h"
#include "vtkPolyDataMapper.h"
#include "vtkRenderer.h"
#include "vtkVectorText.h"

#include <array>
#include <cstdio>

namespace
{
using Buffer = std::array<char, 100>;
}

std::string zvLengthLabel::OfLength(double millimetres)
{
  Buffer buffer;
  std::snprintf(buffer.data(), buffer.size(), "%10.2lf mm", millimetres);
  return buffer.data();
}

std::string zvLengthLabel::OfArea(double squareMillimetres)
{
  Buffer buffer;
  std::snprintf(buffer.data(), buffer.size(), "%10.2lf mm^2", squareMillimetres);
  return buffer.data();
}

std::string zvLengthLabel::OfSnakeArea(double squareMillimetres)
{
  Buffer buffer;
  std::snprintf(buffer.data(), buffer.size(), "%10.4lf mm", squareMillimetres);
  return buffer.data();
}

void zvLengthLabel::Build(vtkVectorText* text, vtkFollower* follower)
{
  text->SetText(" ");
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(text->GetOutputPort());
  follower->SetMapper(mapper);
}

void zvLengthLabel::SetSize(vtkFollower* follower, double size)
{
  const double narrowed = zvNumbers::ToSinglePrecision(size);
  follower->SetScale(narrowed, narrowed, narrowed);
}

void zvLengthLabel::Show(vtkFollower* follower, vtkRenderer* renderer)
{
  if (renderer)
  {
    follower->SetCamera(renderer->GetActiveCamera());
    renderer->AddActor(follower);
  }
}
