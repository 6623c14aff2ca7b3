// The four views in real windows; what needs none is tested with the unit.
#include "zvFourViews.h"

#include "zvFourViewsFixture.h"
#include "zvObservedSubjects.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkNew.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::ThreeD;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
class FourViewsInWindows : public zvtest::FourViews
{
protected:
  zvFourViews::Interactors Hands()
  {
    return { this->Interactor(X), this->Interactor(Y), this->Interactor(Z),
      this->Interactor(ThreeD) };
  }

  vtkNew<vtkActor> Actor;
};

// Counts its calls.
class Ear
{
public:
  Ear()
  {
    this->Command->SetClientData(this);
    this->Command->SetCallback(
      [](vtkObject*, unsigned long, void* self, void*) { ++static_cast<Ear*>(self)->Calls; });
  }
  int Calls = 0;
  vtkNew<vtkCallbackCommand> Command;
};
}

TEST_F(FourViewsInWindows, StoresAViewWithTheInteractorOfItsWindow)
{
  vtkWeakPointer<vtkRenderer> renderer;
  vtkWeakPointer<vtkRenderWindowInteractor> interactor;
  vtkRenderer* view = this->Renderer(Y);
  const int references = view->GetReferenceCount();
  EXPECT_TRUE(zvFourViews::Set(view, renderer, interactor));
  EXPECT_EQ(renderer, view);
  EXPECT_EQ(interactor, this->Interactor(Y));
  EXPECT_EQ(view->GetReferenceCount(), references);
  this->Scenes[Y].reset();
  EXPECT_EQ(renderer, nullptr);
  EXPECT_EQ(interactor, nullptr);
}

TEST_F(FourViewsInWindows, StoresNothingForNothingAndForAViewWithoutAWindow)
{
  vtkWeakPointer<vtkRenderer> renderer(this->Renderer(X));
  vtkWeakPointer<vtkRenderWindowInteractor> interactor(this->Interactor(X));
  vtkNew<vtkRenderer> windowless;
  EXPECT_FALSE(zvFourViews::Set(nullptr, renderer, interactor));
  EXPECT_FALSE(zvFourViews::Set(windowless, renderer, interactor));
  EXPECT_EQ(renderer, this->Renderer(X));
  EXPECT_EQ(interactor, this->Interactor(X));
}

TEST_F(FourViewsInWindows, AWindowWithoutAnInteractorGivesNone)
{
  vtkWeakPointer<vtkRenderer> renderer;
  vtkWeakPointer<vtkRenderWindowInteractor> interactor(this->Interactor(X));
  this->In(Y).DropInteractor();
  EXPECT_TRUE(zvFourViews::Set(this->Renderer(Y), renderer, interactor));
  EXPECT_EQ(renderer, this->Renderer(Y));
  EXPECT_EQ(interactor, nullptr);
}

TEST_F(FourViewsInWindows, APropGoesIntoTheViewsThatAreNamedOnce)
{
  const zvFourViews::Renderers slices = { this->Renderer(X), this->Renderer(Y), this->Renderer(Z) };
  zvFourViews::Add(slices, this->Actor);
  EXPECT_EQ(this->WhereIs(this->Actor), "XYZ");
  zvFourViews::Add(slices, this->Actor);
  EXPECT_EQ(this->WhereIs(this->Actor), "XYZ");
  zvFourViews::Add({ this->Renderer(ThreeD) }, this->Actor);
  EXPECT_EQ(this->WhereIs(this->Actor), "XYZ3");
  zvFourViews::Remove({ this->Renderer(Y), nullptr, this->Renderer(ThreeD) }, this->Actor);
  EXPECT_EQ(this->WhereIs(this->Actor), "XZ");
  zvFourViews::Remove(slices, this->Actor);
  EXPECT_EQ(this->WhereIs(this->Actor), "");
}

TEST_F(FourViewsInWindows, RendersInTheOrderGivenAndSkipsWhatIsMissing)
{
  zvtest::EventRecorder recorder;
  this->WatchRenders(recorder);
  zvFourViews::Render(this->Hands());
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3"));
  recorder.Clear();
  zvFourViews::Render({ this->Interactor(ThreeD), nullptr, this->Interactor(X) });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("3", "X"));
  recorder.Clear();
  zvFourViews::Render({});
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(FourViewsInWindows, ARenderMayDoAwayWithTheOtherViews)
{
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent },
    [this](const zvtest::RecordedEvent&)
    {
      this->Scenes[Y].reset();
      this->Scenes[ThreeD].reset();
    });
  recorder.Watch(this->Interactor(Z), { vtkCommand::RenderEvent });
  zvFourViews::Render(this->Hands());
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 2);
}

TEST_F(FourViewsInWindows, ObservesEveryEventOfAHandleAsOftenAsItIsNamed)
{
  Ear ear;
  zvObservedSubjects::List observed;
  zvFourViews::Observe(
    { this->Interactor(X), this->Interactor(X), this->Interactor(Y) }, ear.Command, 0.5, observed);
  EXPECT_EQ(observed.size(), 2u);
  const int expected[] = { 2, 1, 0, 0 };
  for (zvtest::View view : zvtest::AllViews)
  {
    for (unsigned long event : zvtest::MouseEvents)
    {
      ear.Calls = 0;
      this->Interactor(view)->InvokeEvent(event, nullptr);
      EXPECT_EQ(ear.Calls, expected[view]) << view << " " << event;
    }
  }
  ear.Calls = 0;
  this->Interactor(X)->InvokeEvent(vtkCommand::KeyPressEvent, nullptr);
  EXPECT_EQ(ear.Calls, 0);

  zvFourViews::Unobserve({ this->Interactor(X), nullptr, this->Interactor(Y) }, ear.Command);
  for (zvtest::View view : zvtest::AllViews)
  {
    this->Interactor(view)->InvokeEvent(vtkCommand::MouseMoveEvent, nullptr);
  }
  EXPECT_EQ(ear.Calls, 0);
}

TEST_F(FourViewsInWindows, ObservesAtThePriority)
{
  std::vector<std::string> order;
  zvtest::EventRecorder recorder;
  const auto note = [&order](const char* name)
  { return [&order, name](const zvtest::RecordedEvent&) { order.emplace_back(name); }; };
  recorder.Watch(this->Interactor(Z), { vtkCommand::MouseMoveEvent }, note("above"), 0.6f);
  recorder.Watch(this->Interactor(Z), { vtkCommand::MouseMoveEvent }, note("below"), 0.4f);
  vtkNew<vtkCallbackCommand> command;
  command->SetClientData(&order);
  command->SetCallback([](vtkObject*, unsigned long, void* list, void*)
    { static_cast<std::vector<std::string>*>(list)->emplace_back("ours"); });
  zvObservedSubjects::List observed;
  zvFourViews::Observe({ this->Interactor(Z) }, command, 0.5, observed);
  this->Interactor(Z)->InvokeEvent(vtkCommand::MouseMoveEvent, nullptr);
  EXPECT_THAT(order, ElementsAre("above", "ours", "below"));
  zvFourViews::Unobserve({ this->Interactor(Z) }, command);
}
