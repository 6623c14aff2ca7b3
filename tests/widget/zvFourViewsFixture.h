#ifndef zvFourViewsFixture_h
#define zvFourViewsFixture_h

#include "zvInstanceManager.h"
#include "zvTestKit.h"

#include "vtkCommand.h"
#include "vtkImageData.h"
#include "vtkProp.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace zvtest
{
/// The four views of a marker, in the order in which they are rendered.
enum View
{
  X,
  Y,
  Z,
  ThreeD
};
constexpr std::array<View, 4> AllViews = { { X, Y, Z, ThreeD } };

/// All that a marker may observe on an interactor.
const std::initializer_list<unsigned long> MouseEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent,
  vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent };

/// Four real windows about a volume from (-10, -10, -10) to (10, 10, 10), which is the current
/// image: X, Y and Z look along their axis, the 3D view obliquely. All see a little more than the
/// volume.
class FourViews : public QuietTest
{
protected:
  explicit FourViews(int size = 200)
    : Size(size)
  {
    VolumeOptions options;
    options.Dimensions = { { 21, 21, 21 } };
    options.Origin = { { -10.0, -10.0, -10.0 } };
    options.ScalarType = VTK_UNSIGNED_CHAR;
    this->Volume = MakeConstantVolume(0.0, options);
    zvInstanceManager::Instance()->SetCurrentOutput(this->Volume);
    this->MakeViews();
  }

  ~FourViews() override { zvInstanceManager::Instance()->SetCurrentOutput(nullptr); }

  /// Four windows, in the place of those that may be there.
  void MakeViews()
  {
    const double bounds[6] = { -12, 12, -12, 12, -12, 12 };
    for (View view : AllViews)
    {
      SceneOptions sceneOptions;
      sceneOptions.Width = this->Size;
      sceneOptions.Height = this->Size;
      this->Scenes[view] = std::make_unique<Scene>(sceneOptions);
      if (view == ThreeD)
      {
        this->Scenes[view]->LookAlong({ { -1.0, 2.0, -1.5 } }, { { 0, 0, 1 } });
      }
      else
      {
        this->Scenes[view]->LookAlong(view);
      }
      this->Scenes[view]->ResetCamera(bounds);
      this->Scenes[view]->Render();
    }
  }

  Scene& In(View view) { return *this->Scenes[view]; }
  vtkRenderer* Renderer(View view) { return this->Scenes[view]->Renderer(); }
  vtkRenderWindowInteractor* Interactor(View view) { return this->Scenes[view]->Interactor(); }
  Mouse PointerIn(View view) { return Mouse(*this->Scenes[view]); }

  /// Give a widget its four views and its current one.
  template <typename Widget>
  void SetViews(Widget* widget, View current = Z)
  {
    widget->SetRendererX(this->Renderer(X));
    widget->SetRendererY(this->Renderer(Y));
    widget->SetRendererZ(this->Renderer(Z));
    this->Set3DView(widget, this->Renderer(ThreeD), 0);
    widget->SetCurrentRender(this->Renderer(current));
  }

  /// In which views a prop is: "XYZ3", "XYZ", "3", "" and so on; "XX" would be twice in X.
  std::string WhereIs(vtkProp* prop)
  {
    static const char letters[] = { 'X', 'Y', 'Z', '3' };
    std::string where;
    for (View view : AllViews)
    {
      vtkCollectionSimpleIterator at;
      vtkPropCollection* props = this->Renderer(view)->GetViewProps();
      props->InitTraversal(at);
      while (vtkProp* present = props->GetNextProp(at))
      {
        where += present == prop ? std::string(1, letters[view]) : std::string();
      }
    }
    return where;
  }

  /// The number of props in each view.
  std::array<int, 4> CountProps()
  {
    std::array<int, 4> counts;
    for (View view : AllViews)
    {
      counts[view] = this->Renderer(view)->GetViewProps()->GetNumberOfItems();
    }
    return counts;
  }

  /// Note the renders of all four views.
  void WatchRenders(EventRecorder& recorder)
  {
    for (View view : AllViews)
    {
      recorder.Watch(this->Interactor(view), { vtkCommand::RenderEvent });
    }
  }

  /// What a recorder noted: "X", "Y", "Z", "3" for a render of that view, else the event's name.
  std::vector<std::string> NamesOf(const EventRecorder& recorder)
  {
    static const char* const letters[] = { "X", "Y", "Z", "3" };
    std::vector<std::string> names;
    for (const RecordedEvent& event : recorder.Events())
    {
      names.push_back(event.Name);
      for (View view : AllViews)
      {
        if (event.Id == vtkCommand::RenderEvent && event.Caller == this->Interactor(view))
        {
          names.back() = letters[view];
        }
      }
    }
    return names;
  }

  /// Claim the standard output, which must be one trace for each signature and nothing else.
  void ExpectTraces(
    const std::string& file, const void* object, const std::vector<std::string>& signatures)
  {
    std::string output = this->TakeOutput();
    for (const std::string& signature : signatures)
    {
      const std::size_t end = std::min(output.find("\n\n"), output.size());
      const std::size_t length = std::min(end + 2, output.size());
      EXPECT_TRUE(IsTrace(output.substr(0, length), file, object, signature));
      output.erase(0, length);
    }
    EXPECT_EQ(output, "");
  }

  vtkSmartPointer<vtkImageData> Volume;
  std::array<std::unique_ptr<Scene>, 4> Scenes;
  int Size;

  /// The widgets do not agree in the name of this setter; the last argument picks the one there is.
  template <typename Widget>
  static auto Set3DView(Widget* widget, vtkRenderer* view, int)
    -> decltype(widget->SetRenderer3D(view))
  {
    return widget->SetRenderer3D(view);
  }
  template <typename Widget>
  static auto Set3DView(Widget* widget, vtkRenderer* view, long)
    -> decltype(widget->Set3DRender(view))
  {
    return widget->Set3DRender(view);
  }
};
}

#endif
