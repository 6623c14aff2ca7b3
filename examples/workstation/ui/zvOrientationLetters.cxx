#include "zvOrientationLetters.h"

#include "zvVolume.h"

#include "vtkRenderer.h"
#include "vtkTextProperty.h"

zvOrientationLetters::zvOrientationLetters()
{
  for (int face = 0; face < 6; ++face)
  {
    vtkBillboardTextActor3D* letter = this->Letters[face];
    letter->SetInput(zvSideLetter(face / 2, face % 2 == 1));
    letter->PickableOff();
    letter->UseBoundsOff(); // the camera is set by the volume alone
    vtkTextProperty* text = letter->GetTextProperty();
    text->SetFontFamilyToArial();
    text->SetFontSize(20);
    text->BoldOn();
    text->SetColor(1.0, 0.85, 0.4);
    text->SetJustificationToCentered();
    text->SetVerticalJustificationToCentered();
  }
}

void zvOrientationLetters::Place(const double bounds[6])
{
  constexpr double distance = 0.07; // beyond the face, as a part of the box's length
  for (int face = 0; face < 6; ++face)
  {
    const int axis = face / 2;
    const double length = bounds[2 * axis + 1] - bounds[2 * axis];
    double position[3];
    for (int a = 0; a < 3; ++a)
    {
      position[a] = 0.5 * (bounds[2 * a] + bounds[2 * a + 1]);
    }
    position[axis] += (face % 2 == 1 ? 1.0 : -1.0) * (0.5 + distance) * length;
    this->Letters[face]->SetPosition(position);
  }
}

void zvOrientationLetters::AddTo(vtkRenderer* renderer)
{
  for (const auto& letter : this->Letters)
  {
    renderer->AddViewProp(letter);
  }
}

void zvOrientationLetters::SetVisible(bool visible)
{
  for (const auto& letter : this->Letters)
  {
    letter->SetVisibility(visible);
  }
}
