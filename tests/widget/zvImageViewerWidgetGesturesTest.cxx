// A user who does whatever comes to mind, on a slice view full of tools: every mode with every
// button, every modifier, on the slice, beside it and out of the window.

#include "zvImageViewerMouseFixture.h"

#include "zvCollections.h"

#include <algorithm>
#include <functional>
#include <numeric>

using zvtest::Display;
using zvtest::World;

namespace
{
constexpr int Seed = 20250;
constexpr int Size = 160; // of the window, in pixels
constexpr int Rounds = 2; // through all combinations, which makes a thousand gestures

// A mode as a host sets it, in words for a failure.
struct Mode
{
  const char* Name;
  std::function<void(OpenViewer*)> Set;
};

const std::vector<Mode> Modes = {
  { "none", [](OpenViewer*) {} },
  { "a ruler waits", [](OpenViewer* v) { v->AddRulerWidget(nullptr); } },
  { "a contour is drawn", [](OpenViewer* v) { v->EnableAreaWidget(); } },
  { "a lasso is drawn", [](OpenViewer* v) { v->SetAddLassoMode(true); } },
  { "point A", [](OpenViewer* v) { v->SetPickPointModeA(true); } },
  { "point B", [](OpenViewer* v) { v->SetPickPointModeB(true); } },
  { "point C", [](OpenViewer* v) { v->SetPickPointModeC(true); } },
  { "point D", [](OpenViewer* v) { v->SetPickPointModeD(true); } },
  { "point at the bound", [](OpenViewer* v) { v->SetPickPointBoundMode(true); } },
  { "text", [](OpenViewer* v) { v->SetAddText(true); } },
  { "paint", [](OpenViewer* v) { v->SetPaintMode(true); } },
  { "fill", [](OpenViewer* v) { v->SetFillMode(true); } },
  { "paint without tracking",
    [](OpenViewer* v)
    {
      v->SetPaintMode(true);
      v->SetQuickApply(true);
    } },
  { "all that is drawn at once",
    [](OpenViewer* v)
    {
      v->AddRulerWidget(nullptr);
      v->AddAreaMode = true;
      v->SetAddLassoMode(true);
      v->SetPickPointBoundMode(true);
      v->SetAddText(true);
      v->SetPaintMode(true);
      v->SetFillMode(true);
    } },
};

enum Where
{
  OnTheSlice,
  BesideIt,
  OutOfTheWindow,
  WhereCount
};

// One of all combinations.
struct Combination
{
  std::size_t InMode;
  zvtest::Button With;
  int Modifiers;
  Where At;
};

std::vector<Combination> AllCombinations()
{
  std::vector<Combination> all;
  for (std::size_t mode = 0; mode < Modes.size(); ++mode)
  {
    for (const zvtest::Button button : { zvtest::Left, zvtest::Middle, zvtest::Right })
    {
      for (int modifiers = 0; modifiers <= (zvtest::Shift | zvtest::Control); ++modifiers)
      {
        for (int place = 0; place < WhereCount; ++place)
        {
          all.push_back({ mode, button, modifiers, static_cast<Where>(place) });
        }
      }
    }
  }
  return all;
}

class ImageViewerGestures : public ImageViewerMouse
{
protected:
  ImageViewerGestures()
  {
    // Nobody looks at it, and a small picture is drawn sooner.
    this->Scene.Window()->SetSize(Size, Size);
    this->LookAlongNormal(2);
    this->FillWithTools();
  }

  double On() { return this->Dice.Real(0.5, 18.5); }

  // Tools of every kind, drawn or half drawn, attached as a host does it.
  void FillWithTools()
  {
    OpenViewer* v = this->Viewer;
    v->ResetMode();
    for (int i = 0; i < 2; ++i)
    {
      v->AddRulerWidget(nullptr);
      v->AddRulerMode = false;
      v->EnableRulerWidget();
      v->CurrentRulerWidget->SetPoint1(this->On(), this->On(), 20.0);
      v->CurrentRulerWidget->SetPoint2(this->On(), this->On(), 20.0);
    }
    for (const bool closed : { true, false })
    {
      v->AddAreaWidget(nullptr);
      v->AddAreaMode = false;
      v->CurrentAreaWidget->InitializeHandles(this->SomePoints());
      v->CurrentAreaWidget->SetClosed(closed);
      v->CurrentAreaWidget->SetEnabled(1);
      v->AddLassoWidget(nullptr);
      v->CurrentLassoWidget->InitializeHandles(this->SomePoints());
      v->CurrentLassoWidget->SetClosed(closed);
      v->CurrentLassoWidget->SetEnabled(1);
      v->CurrentTextNoteWidget = nullptr;
      double color[3] = { 1.0, 0.5, 0.0 };
      v->AddTextNoteWidget(closed ? "first" : "second", 2, color, 1.5);
      v->CurrentTextNoteWidget->SetLocation(this->On(), this->On(), 20.0);
    }
    this->Scene.Render();
  }

  vtkSmartPointer<vtkPoints> SomePoints()
  {
    auto points = vtkSmartPointer<vtkPoints>::New();
    for (int i = 0; i < 4; ++i)
    {
      points->InsertNextPoint(this->On(), this->On(), 20.0);
    }
    return points;
  }

  bool IsFullOfTools() const
  {
    for (vtkCollection* tools : { this->Viewer->RulerWidgets.Get(), this->Viewer->AreaWidgets.Get(),
           this->Viewer->LassoWidgets.Get(), this->Viewer->TextNoteWidgets.Get() })
    {
      if (tools->GetNumberOfItems() == 0)
      {
        return false;
      }
    }
    return true;
  }

  // Few enough that a gesture takes no time to speak of.
  bool HasTooManyTools() const
  {
    return this->Viewer->RulerWidgets->GetNumberOfItems() > 4 ||
      this->Viewer->AreaWidgets->GetNumberOfItems() > 4 ||
      this->Viewer->LassoWidgets->GetNumberOfItems() > 4 ||
      this->Viewer->TextNoteWidgets->GetNumberOfItems() > 4;
  }

  Display Somewhere(Where place)
  {
    switch (place)
    {
      case OnTheSlice:
      {
        const PlanePoints plane = this->Plane();
        const World along = (plane.Point1 - plane.Origin) * this->Dice.Real(0.02, 0.98);
        const World across = (plane.Point2 - plane.Origin) * this->Dice.Real(0.02, 0.98);
        World at = plane.Origin + along + across;
        if (this->Dice.Chance(0.3)) // on one of the lines, where they are grabbed
        {
          const LineEnds line = this->Line(this->Dice.Int(1, 2));
          at = line.Point1 + (line.Point2 - line.Point1) * this->Dice.Real(0.02, 0.98);
        }
        return this->Mouse.At(at);
      }
      case BesideIt:
        return { { this->Dice.Int(0, Size / 40), this->Dice.Int(0, Size - 1) } };
      default:
        return { { this->Dice.Int(Size, 3 * Size), this->Dice.Int(-Size, -1) } };
    }
  }

  void Gesture(const Combination& combination)
  {
    const int modifiers = combination.Modifiers;
    const zvtest::Button button = combination.With;
    this->Mouse.MoveTo(this->Somewhere(combination.At), modifiers);
    this->Mouse.Press(button, this->Somewhere(combination.At), modifiers);
    for (int move = this->Dice.Int(0, 3); move > 0; --move)
    {
      // A drag may leave the slice and come back.
      const Where place = this->Dice.Chance(0.8) ? combination.At : this->Dice.Pick(this->Places);
      this->Mouse.MoveTo(this->Somewhere(place), modifiers);
    }
    if (this->Dice.Chance(0.05)) // another button comes in between
    {
      this->Mouse.Press(zvtest::Right, this->Mouse.Position(), modifiers);
      this->Mouse.Release(zvtest::Right, modifiers);
    }
    this->Mouse.Release(button, modifiers);
    switch (this->Dice.Int(0, 30))
    {
      case 0:
        this->Mouse.WheelForward(this->Mouse.Position(), modifiers);
        break;
      case 1:
        this->Mouse.WheelBackward(this->Mouse.Position(), modifiers);
        break;
      case 2:
        this->Mouse.Type(this->Dice.Pick(std::vector<char>{ 'r', 'R', 'x' }), modifiers);
        break;
      case 3:
        this->Mouse.DoubleClick(button, this->Mouse.Position(), modifiers);
        break;
      default:
        break;
    }
  }

  // What a host does between gestures.
  void Host();

  // The left button has been released: the view is at rest.
  void ExpectRest() const
  {
    EXPECT_TRUE(this->Viewer->State == StateStart || this->Viewer->State == StateOutside);
    EXPECT_EQ(this->Viewer->GetImageResolutionFactor(), 1);
    EXPECT_FALSE(this->Viewer->LeftButtonHeld);
  }

  // Where the cross stands is where its lines meet, and they stay square to each other.
  void ExpectCross() const
  {
    for (const int line : { 0, 1 })
    {
      EXPECT_GE(this->Viewer->CrossIndex[line], 0);
      EXPECT_LE(this->Viewer->CrossIndex[line], this->Viewer->Dimensions[line]);
      EXPECT_LE(std::abs(this->Viewer->SlicesMovement[line]), this->Viewer->Dimensions[line]);
    }
    const World center = ToWorld(this->Viewer->RotationCenter);
    World direction[2];
    for (const int line : { 0, 1 })
    {
      const LineEnds ends = this->Line(line + 1);
      direction[line] = Unit(ends.Point2 - ends.Point1);
      const World off = center - ends.Point1;
      EXPECT_LT(Length(off - direction[line] * Dot(off, direction[line])), 1e-3)
        << "the cross is off line " << line + 1;
    }
    EXPECT_NEAR(Dot(direction[0], direction[1]), 0.0, 1e-6);
    if (this->Viewer->GetPlaneOrientation() != 3)
    {
      EXPECT_TRUE(this->LinesSpanThePlane(1e-3));
    }
  }

  // The current tools are none, or tools of the view.
  void ExpectTools() const
  {
    const OpenViewer* v = this->Viewer;
    EXPECT_TRUE(
      !v->CurrentRulerWidget || v->RulerWidgets->IsItemPresent(v->CurrentRulerWidget) != 0);
    EXPECT_TRUE(!v->CurrentAreaWidget || v->AreaWidgets->IsItemPresent(v->CurrentAreaWidget) != 0);
    EXPECT_TRUE(
      !v->CurrentLassoWidget || v->LassoWidgets->IsItemPresent(v->CurrentLassoWidget) != 0);
    EXPECT_TRUE(!v->CurrentTextNoteWidget ||
      v->TextNoteWidgets->IsItemPresent(v->CurrentTextNoteWidget) != 0);
    EXPECT_GE(v->LassoCount, v->LassoWidgets->GetNumberOfItems());
  }

  zvtest::Dice Dice{ Seed };
  const std::vector<Where> Places{ OnTheSlice, BesideIt, OutOfTheWindow };
};

void ImageViewerGestures::Host()
{
  OpenViewer* v = this->Viewer;
  double color[3] = { 1.0, 0.5, 0.0 };
  switch (this->Dice.Int(0, 16))
  {
    case 0:
      v->EnableRulerWidget();
      break;
    case 1:
      v->AddAreaWidget(nullptr);
      v->AddAreaMode = this->Dice.Chance(0.5);
      break;
    case 2:
      v->AddLassoWidget(nullptr);
      v->EnableLassoWidget(this->Dice.Chance(0.5));
      v->EnableLassoWidget(true);
      break;
    case 3:
      v->AddTextNoteWidget("note", this->Dice.Int(0, 2), color, this->Dice.Real(0.5, 3.0));
      break;
    case 4:
      if (v->GetCurrentSelectedText())
      {
        v->DeleteCurrentTextNoteWidget();
      }
      break;
    case 5:
      v->TextSelected();
      v->UndoFill();
      break;
    case 6:
      v->SetFillValue(this->Dice.Int(-3, 40));
      break;
    case 7:
      v->SetSliceIndex(this->Dice.Int(-2, 22));
      break;
    case 8:
    case 9:
    {
      const int orientation = this->Dice.Int(0, 2);
      v->SetPlaneOrientation(orientation);
      v->UpdatePlane();
      this->LookAlongNormal(orientation);
      break;
    }
    case 10:
    {
      World axis{ { this->Dice.Real(-1, 1), this->Dice.Real(-1, 1), this->Dice.Real(-1, 1) } };
      double center[3];
      v->GetRotationCenter(center);
      v->Rotate(this->Dice.Real(-40.0, 40.0), axis.data(), center);
      this->LookAtPlane();
      break;
    }
    case 11:
      v->SetImageMask(zvtest::MakeConstantVolume(this->Dice.Int(0, 1), this->Cube(20)));
      v->SetOpacityMask(this->Dice.Real(-0.5, 1.5));
      break;
    case 12:
      v->SetLinesEnabled(this->Dice.Int(0, 1));
      break;
    case 13:
      v->SetRightButtonAction(this->Dice.Int(0, 2));
      break;
    case 14:
      // A ruler that was never enabled says so when its view enables it.
      for (const auto& ruler : zvCollections::ItemsOf<zvRulerWidget>(v->RulerWidgets))
      {
        ruler->SetInteractor(this->Scene.Interactor());
      }
      v->SetEnabled(0);
      v->SetEnabled(1);
      break;
    case 15:
      v->DeleteWidget();
      break;
    default:
      v->DeleteAllTextNoteWidgets();
      break;
  }
}
}

TEST_F(ImageViewerGestures, AThousandInEveryModeKeepTheViewConsistent)
{
  const std::vector<Combination> all = AllCombinations();
  std::vector<std::size_t> order(all.size());
  int gesture = 0;
  for (int round = 0; round < Rounds; ++round)
  {
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::mt19937(Seed + round));
    for (const std::size_t next : order)
    {
      const Combination& combination = all[next];
      SCOPED_TRACE("gesture " + std::to_string(gesture++) + ": " + Modes[combination.InMode].Name +
        ", button " + std::to_string(combination.With) + ", modifiers " +
        std::to_string(combination.Modifiers) + ", place " + std::to_string(combination.At));
      if (this->HasTooManyTools())
      {
        this->Viewer->DeleteWidget();
        this->Viewer->DeleteAllTextNoteWidgets();
      }
      if (!this->IsFullOfTools())
      {
        this->FillWithTools();
      }
      if (this->Dice.Chance(0.25))
      {
        this->Host();
      }
      this->Viewer->ResetMode();
      Modes[combination.InMode].Set(this->Viewer);
      this->Gesture(combination);
      if (combination.With == zvtest::Left)
      {
        this->ExpectRest();
      }
      this->ExpectCross();
      this->ExpectTools();
      EXPECT_EQ(this->TakeMessages(), std::vector<std::string>{});
      EXPECT_EQ(this->TakeOutput(), "");
      ASSERT_FALSE(this->HasFailure());
    }
  }
  EXPECT_GE(gesture, 1000);
  this->Release();
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0)
    << "the view takes all its tools along";
}
