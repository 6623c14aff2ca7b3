#include "zvRawView.h"

#include "zvObservedSubjects.h"
#include "zvTestKit.h"

#include "vtkCallbackCommand.h"
#include "vtkInteractorObserver.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkWeakPointer.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{
// The least that a widget does to have its view written directly.
class RawWidget : public vtkInteractorObserver
{
public:
  static RawWidget* New();
  vtkTypeMacro(RawWidget, vtkInteractorObserver)

  using vtkInteractorObserver::KeyPressCallbackCommand;

  bool SetCurrentRender(vtkRenderer* renderer) { return this->View->Write(renderer); }
  void SetCurrentRenderer(vtkRenderer* renderer) override
  {
    this->View->ReleaseRenderer();
    this->Superclass::SetCurrentRenderer(renderer);
  }

protected:
  RawWidget()
    : View(std::make_unique<zvRawView>(this,
        zvRawView::Fields{ this->CurrentRenderer, this->Interactor, this->CharObserverTag,
          this->DeleteObserverTag }))
  {
  }
  ~RawWidget() override = default;

private:
  std::unique_ptr<zvRawView> View;
};
vtkStandardNewMacro(RawWidget);

class RawView : public zvtest::QuietTest
{
protected:
  static bool ListensToKeys(RawWidget* widget, zvtest::Scene& scene)
  {
    return scene.Interactor()->HasObserver(
             vtkCommand::CharEvent, widget->KeyPressCallbackCommand) != 0;
  }

  // Tags of a host's observers begin as low as those of any widget.
  void ObserveAsHost(zvtest::EventRecorder& recorder, zvtest::Scene& scene)
  {
    for (int i = 0; i < 8; ++i)
    {
      recorder.Watch(scene.Interactor(), { vtkCommand::UserEvent });
    }
  }

  int CountHostCalls(zvtest::EventRecorder& recorder, zvtest::Scene& scene)
  {
    recorder.Clear();
    scene.Interactor()->InvokeEvent(vtkCommand::UserEvent, nullptr);
    return recorder.Count(vtkCommand::UserEvent);
  }

  zvtest::Scene First;
  zvtest::Scene Second;
  vtkNew<RawWidget> Widget;
};
}

TEST_F(RawView, WritesTheRendererAndTheInteractorOfItsWindow)
{
  EXPECT_TRUE(this->Widget->SetCurrentRender(this->First.Renderer()));
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->First.Renderer());
  EXPECT_EQ(this->Widget->GetInteractor(), this->First.Interactor());
  EXPECT_TRUE(this->Widget->SetCurrentRender(this->Second.Renderer()));
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Second.Renderer());
  EXPECT_EQ(this->Widget->GetInteractor(), this->Second.Interactor());
}

TEST_F(RawView, WritingChangesNoModificationTime)
{
  const vtkMTimeType before = this->Widget->GetMTime();
  this->Widget->SetCurrentRender(this->First.Renderer());
  EXPECT_EQ(this->Widget->GetMTime(), before);
}

TEST_F(RawView, RefusesNothingAndARendererWithoutAWindow)
{
  this->Widget->SetCurrentRender(this->First.Renderer());
  vtkNew<vtkRenderer> alone;
  EXPECT_FALSE(this->Widget->SetCurrentRender(nullptr));
  EXPECT_FALSE(this->Widget->SetCurrentRender(alone));
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->First.Renderer());
  EXPECT_EQ(this->Widget->GetInteractor(), this->First.Interactor());
}

TEST_F(RawView, ReferencesToRenderersStayExact)
{
  vtkRenderer* first = this->First.Renderer();
  vtkRenderer* second = this->Second.Renderer();
  const int firstBefore = first->GetReferenceCount();
  const int secondBefore = second->GetReferenceCount();
  auto widget = vtkSmartPointer<RawWidget>::New();
  widget->SetCurrentRenderer(first); // with a reference
  EXPECT_EQ(first->GetReferenceCount(), firstBefore + 1);
  widget->SetCurrentRender(second); // without one
  EXPECT_EQ(first->GetReferenceCount(), firstBefore);
  EXPECT_EQ(second->GetReferenceCount(), secondBefore);
  widget->SetCurrentRender(first);
  EXPECT_EQ(first->GetReferenceCount(), firstBefore);
  widget->SetCurrentRenderer(second);
  EXPECT_EQ(first->GetReferenceCount(), firstBefore);
  EXPECT_EQ(second->GetReferenceCount(), secondBefore + 1);
  widget->SetCurrentRender(second); // the same, now without a reference
  EXPECT_EQ(second->GetReferenceCount(), secondBefore);
  widget->SetCurrentRenderer(nullptr);
  EXPECT_EQ(widget->GetCurrentRenderer(), nullptr);
  widget->SetCurrentRender(first);
  widget = nullptr;
  EXPECT_EQ(first->GetReferenceCount(), firstBefore);
  EXPECT_EQ(second->GetReferenceCount(), secondBefore);
}

TEST_F(RawView, OtherPeoplesObserversStayWhateverTheWidgetDoes)
{
  zvtest::EventRecorder first;
  zvtest::EventRecorder second;
  this->ObserveAsHost(first, this->First);
  this->ObserveAsHost(second, this->Second);
  auto widget = vtkSmartPointer<RawWidget>::New();
  widget->SetInteractor(this->First.Interactor());
  EXPECT_TRUE(ListensToKeys(widget, this->First));
  widget->SetCurrentRender(this->Second.Renderer());
  EXPECT_FALSE(ListensToKeys(widget, this->First));
  widget->SetCurrentRender(this->First.Renderer());
  widget->SetInteractor(this->Second.Interactor());
  widget->SetCurrentRender(this->First.Renderer());
  widget->SetInteractor(nullptr);
  widget->SetCurrentRender(this->Second.Renderer());
  widget = nullptr;
  EXPECT_EQ(this->CountHostCalls(first, this->First), 8);
  EXPECT_EQ(this->CountHostCalls(second, this->Second), 8);
}

TEST_F(RawView, WritingTheInteractorThatWasSetKeepsItsKeyObserver)
{
  this->Widget->SetInteractor(this->First.Interactor());
  this->Widget->SetCurrentRender(this->First.Renderer());
  EXPECT_TRUE(ListensToKeys(this->Widget, this->First));
  this->First.DropRenderers();
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), nullptr);
  this->First.DropInteractor();
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
}

TEST_F(RawView, AViewThatDiesFirstCountsAsNotSet)
{
  this->Widget->SetCurrentRender(this->First.Renderer());
  this->First.DropInteractor();
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->First.Renderer());
  this->First.DropRenderers();
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), nullptr);
  this->Widget->SetCurrentRender(this->Second.Renderer());
  EXPECT_EQ(this->Widget->GetInteractor(), this->Second.Interactor());
}

TEST_F(RawView, AViewThatWasLeftDiesUnnoticed)
{
  this->Widget->SetCurrentRender(this->First.Renderer());
  this->Widget->SetCurrentRender(this->Second.Renderer());
  this->First.DropRenderers();
  this->First.DropInteractor();
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Second.Renderer());
  EXPECT_EQ(this->Widget->GetInteractor(), this->Second.Interactor());
}

TEST_F(RawView, AWindowWithoutAnInteractorLeavesTheWidgetWithoutOne)
{
  this->Widget->SetInteractor(this->Second.Interactor());
  vtkNew<vtkRenderWindow> window;
  vtkNew<vtkRenderer> renderer;
  window->AddRenderer(renderer);
  EXPECT_TRUE(this->Widget->SetCurrentRender(renderer));
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  EXPECT_FALSE(ListensToKeys(this->Widget, this->Second));
}

TEST_F(RawView, ADeletedWidgetNoLongerWatchesItsView)
{
  auto widget = vtkSmartPointer<RawWidget>::New();
  widget->SetCurrentRender(this->First.Renderer());
  EXPECT_TRUE(this->First.Renderer()->HasObserver(vtkCommand::DeleteEvent));
  widget = nullptr;
  EXPECT_FALSE(this->First.Renderer()->HasObserver(vtkCommand::DeleteEvent));
}

TEST_F(RawView, ACommandIsTakenOffEverySubjectThatIsStillThere)
{
  vtkNew<vtkCallbackCommand> command;
  vtkNew<vtkObject> first;
  vtkNew<vtkObject> second;
  zvObservedSubjects::List list;
  {
    vtkNew<vtkObject> gone;
    zvObservedSubjects::Add(list, gone);
  }
  for (vtkObject* subject : { first.Get(), second.Get(), first.Get() })
  {
    subject->AddObserver(vtkCommand::UserEvent, command);
    zvObservedSubjects::Add(list, subject);
  }
  zvObservedSubjects::Add(list, nullptr);
  EXPECT_EQ(list.size(), 2u);
  zvObservedSubjects::Release(list, command);
  EXPECT_TRUE(list.empty());
  EXPECT_FALSE(first->HasObserver(vtkCommand::UserEvent, command));
  EXPECT_FALSE(second->HasObserver(vtkCommand::UserEvent, command));
}
