#include "zvInstanceManager.h"
#include "zvTestKit.h"

#include "vtkCallbackCommand.h"
#include "vtkCommand.h"
#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <cstdlib>
#include <iostream>

namespace
{
class InstanceManager : public zvtest::QuietTest
{
protected:
  ~InstanceManager() override { Manager->SetCurrentOutput(nullptr); }
  zvInstanceManager* Manager = zvInstanceManager::Instance();
};

void ClearTheCurrentImage(vtkObject*, unsigned long, void*, void*)
{
  zvInstanceManager::Instance()->SetCurrentOutput(nullptr);
}

void SayGone(vtkObject*, unsigned long, void*, void*)
{
  std::cerr << "the image is gone";
}

// Asks at the very end, after everything that was made later has been taken down.
struct LateAsker
{
  ~LateAsker()
  {
    const bool isEmpty = zvInstanceManager::Instance()->GetCurrentOutput() == nullptr;
    std::cerr << (isEmpty ? ", and none is current" : ", but one is current");
  }
};

[[noreturn]] void EndTheProcessWithACurrentImage()
{
  static LateAsker asker;
  auto image = vtkSmartPointer<vtkImageData>::New();
  vtkNew<vtkCallbackCommand> command;
  command->SetCallback(SayGone);
  image->AddObserver(vtkCommand::DeleteEvent, command);
  zvInstanceManager::Instance()->SetCurrentOutput(image);
  image = nullptr;
  std::exit(0);
}
}

TEST_F(InstanceManager, IsOneForTheWholeProcess)
{
  ASSERT_NE(Manager, nullptr);
  EXPECT_EQ(zvInstanceManager::Instance(), Manager);
}

TEST_F(InstanceManager, HasNoImageUntilOneIsSet)
{
  EXPECT_EQ(Manager->GetCurrentOutput(), nullptr);
}

TEST_F(InstanceManager, HoldsTheCurrentImageByOneReference)
{
  auto image = vtkSmartPointer<vtkImageData>::New();
  Manager->SetCurrentOutput(image);
  EXPECT_EQ(Manager->GetCurrentOutput(), image.Get());
  EXPECT_EQ(image->GetReferenceCount(), 2);
  Manager->SetCurrentOutput(image);
  EXPECT_EQ(image->GetReferenceCount(), 2);
  Manager->SetCurrentOutput(nullptr);
  EXPECT_EQ(Manager->GetCurrentOutput(), nullptr);
  EXPECT_EQ(image->GetReferenceCount(), 1);
}

TEST_F(InstanceManager, KeepsAnImageThatItsMakerLetGo)
{
  vtkWeakPointer<vtkImageData> watch;
  {
    vtkNew<vtkImageData> image;
    image->SetExtent(0, 9, 0, 19, 0, 29);
    Manager->SetCurrentOutput(image);
    watch = image.Get();
  }
  ASSERT_NE(watch.Get(), nullptr);
  EXPECT_EQ(Manager->GetCurrentOutput()->GetBounds()[5], 29.0);
  EXPECT_EQ(Manager->GetCurrentOutput()->GetSpacing()[0], 1.0);
}

TEST_F(InstanceManager, LetsTheOldImageGoForANewOne)
{
  auto first = vtkSmartPointer<vtkImageData>::New();
  vtkWeakPointer<vtkImageData> watch = first.Get();
  Manager->SetCurrentOutput(first);
  first = nullptr;
  ASSERT_NE(watch.Get(), nullptr);
  vtkNew<vtkImageData> second;
  Manager->SetCurrentOutput(second);
  EXPECT_EQ(watch.Get(), nullptr);
  EXPECT_EQ(Manager->GetCurrentOutput(), second.Get());
}

TEST_F(InstanceManager, AnImageThatClearsItInItsLastMomentDoesNoHarm)
{
  auto first = vtkSmartPointer<vtkImageData>::New();
  vtkNew<vtkCallbackCommand> command;
  command->SetCallback(ClearTheCurrentImage);
  first->AddObserver(vtkCommand::DeleteEvent, command);
  Manager->SetCurrentOutput(first);
  first = nullptr;
  vtkNew<vtkImageData> second;
  Manager->SetCurrentOutput(second);
  EXPECT_EQ(Manager->GetCurrentOutput(), nullptr);
  EXPECT_EQ(second->GetReferenceCount(), 1);
}

TEST_F(InstanceManager, ReleasesTheImageWhenTheProcessEndsAndStillAnswers)
{
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(EndTheProcessWithACurrentImage(), ::testing::ExitedWithCode(0),
    "the image is gone, and none is current");
}
