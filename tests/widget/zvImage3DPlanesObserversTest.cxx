// The three planes go on with nothing that an observer of a render has taken away or deleted.

#include "zvImage3DPlanes.h"

#include "zvTestKit.h"

#include "vtkImageData.h"
#include "vtkSmartPointer.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace
{
struct Operation
{
  const char* Name;
  std::function<void()> Run;
};

class ThreePlanesObservers : public zvtest::QuietTest
{
protected:
  ThreePlanesObservers()
    : Volume(zvtest::MakeIndexVolume())
    , Other(zvtest::MakeConstantVolume(3.0))
  {
  }

  void Show()
  {
    this->Scene = std::make_unique<zvtest::Scene>();
    this->Planes = new zvImage3DPlanes;
    this->Planes->SetImage(this->Volume);
    this->Planes->SetRender(this->Scene->Renderer());
    ASSERT_TRUE(this->Planes->Create());
    this->Planes->Show();
  }

  void Delete()
  {
    if (this->Planes)
    {
      zvImage3DPlanes* planes = this->Planes;
      this->Planes = nullptr;
      planes->Delete();
    }
  }

  // At each render of an operation, by the interactor or by the window, once.
  void Try(const Operation& operation, const Operation& action, int render)
  {
    SCOPED_TRACE(std::string(operation.Name) + ", while an observer " + action.Name + ", render " +
      std::to_string(render));
    this->Show();
    int left = render;
    {
      zvtest::EventRecorder renders;
      renders.Watch(this->Scene->Window(), { vtkCommand::EndEvent },
        [&](const zvtest::RecordedEvent&)
        {
          if (this->Planes && left-- == 0)
          {
            action.Run();
          }
        });
      operation.Run();
    }
    this->Delete();
    EXPECT_EQ(this->Scene->Renderer()->GetViewProps()->GetNumberOfItems(), 0);
    this->Scene.reset();
    this->ExpectOnlyWhatIsMissing();
  }

  // One that has lost what it needs says so, nothing else.
  void ExpectOnlyWhatIsMissing()
  {
    for (const std::string& message : this->TakeMessages())
    {
      EXPECT_TRUE(message.find("The interactor must be set") != std::string::npos ||
        message.find("SetInput() before setting plane orientation.") != std::string::npos)
        << message;
    }
  }

  std::unique_ptr<zvtest::Scene> Scene;
  vtkSmartPointer<vtkImageData> Volume;
  vtkSmartPointer<vtkImageData> Other;
  zvImage3DPlanes* Planes = nullptr;
  double Axis[3] = { 0.0, 0.0, 1.0 };
  double Center[3] = { 3.0, 2.5, 2.0 };
};
}

TEST_F(ThreePlanesObservers, SurviveWhatTheHostAsks)
{
  const std::vector<Operation> operations = {
    { "the planes are shown again", [this] { this->Planes->Show(); } },
    { "they are updated", [this] { this->Planes->Update(); } },
    { "they are updated with another image",
      [this]
      {
        this->Planes->SetImage(this->Other);
        this->Planes->Update();
      } },
    { "they are reset", [this] { this->Planes->ResetPlanes(); } },
    { "they are hidden", [this] { this->Planes->Enable3DPlanes(false); } },
    { "one is hidden", [this] { this->Planes->EnableYPlane(false); } },
    { "window and level are set", [this] { this->Planes->SetWindowLevel(5.0, 2.0); } },
    { "they are turned", [this] { this->Planes->Rotate(10.0, this->Axis, this->Center); } },
    { "they go to no view", [this] { this->Planes->SetRender(nullptr); } },
  };
  const std::vector<Operation> actions = {
    { "deletes them", [this] { this->Delete(); } },
    { "hides them", [this] { this->Planes->Enable3DPlanes(false); } },
    { "takes the image away",
      [this]
      {
        this->Planes->SetImage(nullptr);
        this->Planes->Update();
      } },
    { "takes the view away", [this] { this->Planes->SetRender(nullptr); } },
  };
  for (const Operation& operation : operations)
  {
    for (const Operation& action : actions)
    {
      for (const int render : { 0, 1, 2 })
      {
        this->Try(operation, action, render);
        ASSERT_FALSE(this->HasFailure());
      }
    }
  }
}
