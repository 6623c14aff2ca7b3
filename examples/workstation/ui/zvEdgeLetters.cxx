#include "zvEdgeLetters.h"

#include "zvVolume.h"

#include "vtkCoordinate.h"
#include "vtkRenderer.h"
#include "vtkTextProperty.h"

#include <algorithm>
#include <cmath>

namespace
{
struct Place
{
  double X, Y; // parts of the view
  int Justification, VerticalJustification;
};

constexpr Place Places[4] = { { 0.985, 0.5, VTK_TEXT_RIGHT, VTK_TEXT_CENTERED },
  { 0.015, 0.5, VTK_TEXT_LEFT, VTK_TEXT_CENTERED }, { 0.5, 0.985, VTK_TEXT_CENTERED, VTK_TEXT_TOP },
  { 0.5, 0.015, VTK_TEXT_CENTERED, VTK_TEXT_BOTTOM } };
constexpr Place TitlePlace = { 0.015, 0.985, VTK_TEXT_LEFT, VTK_TEXT_TOP };

void Put(vtkTextActor* actor, const Place& place, int size)
{
  actor->GetPositionCoordinate()->SetCoordinateSystemToNormalizedViewport();
  actor->SetPosition(place.X, place.Y);
  actor->PickableOff();
  vtkTextProperty* text = actor->GetTextProperty();
  text->SetFontFamilyToArial();
  text->SetFontSize(size);
  text->BoldOn();
  text->SetBackgroundColor(0.0, 0.0, 0.0); // readable on a bright slice too
  text->SetBackgroundOpacity(0.45);
  text->SetJustification(place.Justification);
  text->SetVerticalJustification(place.VerticalJustification);
}
}

zvEdgeLetters::zvEdgeLetters()
{
  for (std::size_t edge = 0; edge < this->Edges.size(); ++edge)
  {
    Put(this->Edges[edge], Places[edge], 18);
    this->Edges[edge]->GetTextProperty()->SetColor(1.0, 0.85, 0.4);
  }
  Put(this->Title, TitlePlace, 14);
}

void zvEdgeLetters::AddTo(vtkRenderer* renderer)
{
  for (const auto& edge : this->Edges)
  {
    renderer->AddViewProp(edge);
  }
  renderer->AddViewProp(this->Title);
}

void zvEdgeLetters::SetTitle(const std::string& text, const double color[3])
{
  this->Title->SetInput(text.c_str());
  this->Title->GetTextProperty()->SetColor(color[0], color[1], color[2]);
}

void zvEdgeLetters::Point(const double right[3], const double up[3])
{
  const double left[3] = { -right[0], -right[1], -right[2] };
  const double down[3] = { -up[0], -up[1], -up[2] };
  const double* directions[4] = { right, left, up, down };
  for (std::size_t edge = 0; edge < this->Edges.size(); ++edge)
  {
    this->Edges[edge]->SetInput(Name(directions[edge]).c_str());
  }
}

void zvEdgeLetters::SetSidesVisible(bool visible)
{
  for (const auto& edge : this->Edges)
  {
    edge->SetVisibility(visible);
  }
}

std::array<std::string, 4> zvEdgeLetters::GetTexts() const
{
  std::array<std::string, 4> texts;
  for (std::size_t edge = 0; edge < texts.size(); ++edge)
  {
    const char* text = this->Edges[edge]->GetInput();
    texts[edge] = text != nullptr ? text : "";
  }
  return texts;
}

std::string zvEdgeLetters::Name(const double direction[3])
{
  constexpr double least = 0.2;
  std::array<int, 3> axes{ { 0, 1, 2 } };
  std::stable_sort(axes.begin(), axes.end(),
    [direction](int one, int other)
    { return std::fabs(direction[one]) > std::fabs(direction[other]); });
  std::string name;
  for (int axis : axes)
  {
    if (std::fabs(direction[axis]) >= least)
    {
      name += zvSideLetter(axis, direction[axis] > 0.0);
    }
  }
  return name;
}
