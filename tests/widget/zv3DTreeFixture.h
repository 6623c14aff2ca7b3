#ifndef zv3DTreeFixture_h
#define zv3DTreeFixture_h

#include "zv3DTreeWidget.h"

#include "zvFourViewsFixture.h"
#include "zvPointTree.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellArray.h"
#include "vtkCellPicker.h"
#include "vtkFollower.h"
#include "vtkLineSource.h"
#include "vtkNew.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace zvtest
{
/// A tree whose parts can be looked at.
class OpenTree : public zv3DTreeWidget
{
public:
  static OpenTree* New() { return new OpenTree; }

  using zv3DTreeWidget::CurrentHandle;
  using zv3DTreeWidget::CurrentLine;
  using zv3DTreeWidget::CurrentPoint;
  using zv3DTreeWidget::CurrentRenderer;
  using zv3DTreeWidget::DebugMode;
  using zv3DTreeWidget::EventCallbackCommand;
  using zv3DTreeWidget::HandleProperty;
  using zv3DTreeWidget::Interactor3D;
  using zv3DTreeWidget::InteractorX;
  using zv3DTreeWidget::InteractorY;
  using zv3DTreeWidget::InteractorZ;
  using zv3DTreeWidget::LastPickPosition;
  using zv3DTreeWidget::LinePicker;
  using zv3DTreeWidget::LineProperty;
  using zv3DTreeWidget::LinesActor;
  using zv3DTreeWidget::PlaceFactor;
  using zv3DTreeWidget::PlaneSource;
  using zv3DTreeWidget::PointPicker;
  using zv3DTreeWidget::PointsActor;
  using zv3DTreeWidget::ProjectionPosition;
  using zv3DTreeWidget::Renderer3D;
  using zv3DTreeWidget::RendererX;
  using zv3DTreeWidget::RendererY;
  using zv3DTreeWidget::RendererZ;
  using zv3DTreeWidget::SelectedHandleProperty;
  using zv3DTreeWidget::SelectedLineActor;
  using zv3DTreeWidget::SelectedLineProperty;
  using zv3DTreeWidget::SelectedLineSource;
  using zv3DTreeWidget::SelectedPointActor;
  using zv3DTreeWidget::SelectedPointSource;
  using zv3DTreeWidget::State;
  using zv3DTreeWidget::TextActor;
  using zv3DTreeWidget::TextSource;
  using zv3DTreeWidget::TreeLines;
  using zv3DTreeWidget::TreePoints;
};

/// A tree in four views.
class TreeInFourViews : public FourViews
{
protected:
  using Names = std::vector<std::string>;
  using Segments = std::vector<std::pair<int, int>>;

  /// The points of GrowSquare, apart in every view. Point 1 hangs on the root, 2 on 1, 3 on the
  /// root again.
  static constexpr World Corners[4] = { { { -5, -5, -4 } }, { { 5, -5, 0 } }, { { 5, 5, 4 } },
    { { -5, 5, 7 } } };
  static constexpr int Parents[4] = { -1, 0, 1, 0 };

  TreeInFourViews() { this->MakeTree(); }

  void MakeTree(View current = Z)
  {
    this->Tree = vtkSmartPointer<OpenTree>::Take(OpenTree::New());
    this->SetViews(this->Tree.Get(), current);
  }

  void Add(World position) { this->Tree->AddHandle(position.data(), 0); }

  void GrowSquare()
  {
    for (int i = 0; i < 4; ++i)
    {
      this->Tree->CurrentPoint = Parents[i];
      this->Add(Corners[i]);
    }
  }

  /// Enabled, with the four points; point 3 and segment 2 are selected.
  void ShowSquare(View current = Z)
  {
    this->Tree->SetCurrentRender(this->Renderer(current));
    this->Tree->SetEnabled(1);
    this->GrowSquare();
  }

  static World Middle(const World& a, const World& b)
  {
    return { { 0.5 * (a[0] + b[0]), 0.5 * (a[1] + b[1]), 0.5 * (a[2] + b[2]) } };
  }

  /// A point of the tree in its two sets of points, which agree.
  World PointAt(int id)
  {
    World position;
    World other;
    this->Tree->TreePoints->GetPoint(id, position.data());
    this->Tree->TreeLines->GetPoint(id, other.data());
    EXPECT_EQ(position, other) << id;
    return position;
  }

  static Segments SegmentsOf(vtkPolyData* data)
  {
    Segments segments;
    zvPointTree::Segment segment;
    for (vtkIdType i = 0; zvPointTree::FindSegment(data, i, segment); ++i)
    {
      segments.emplace_back(static_cast<int>(segment.Parent), static_cast<int>(segment.Child));
    }
    return segments;
  }
  Segments SegmentsOfTree() { return SegmentsOf(this->Tree->TreeLines); }

  World Sphere()
  {
    World center;
    this->Tree->SelectedPointSource->GetCenter(center.data());
    return center;
  }
  World LineStart()
  {
    World end;
    this->Tree->SelectedLineSource->GetPoint1(end.data());
    return end;
  }
  World LineEnd()
  {
    World end;
    this->Tree->SelectedLineSource->GetPoint2(end.data());
    return end;
  }
  std::string Label() { return this->Tree->TextSource->GetText(); }

  /// Where the five actors are: lines, selected line, points, selected point, label.
  std::array<std::string, 5> WhereAll()
  {
    return { { this->WhereIs(this->Tree->LinesActor), this->WhereIs(this->Tree->SelectedLineActor),
      this->WhereIs(this->Tree->PointsActor), this->WhereIs(this->Tree->SelectedPointActor),
      this->WhereIs(this->Tree->TextActor) } };
  }

  static void ExpectNear(const World& actual, const World& expected, double tolerance = 1e-5)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[axis], expected[axis], tolerance) << axis;
    }
  }

  void ExpectWarning(const std::string& message)
  {
    this->ExpectGenericWarning("zv3DTreeWidget", message);
  }

  /// Points and lines as a host reads them from a file.
  static vtkSmartPointer<vtkPolyData> MakeData(
    const std::vector<World>& positions, const Segments& segments)
  {
    vtkNew<vtkPoints> points;
    for (const World& position : positions)
    {
      points->InsertNextPoint(position.data());
    }
    vtkNew<vtkCellArray> lines;
    for (const auto& segment : segments)
    {
      lines->InsertNextCell({ segment.first, segment.second });
    }
    auto data = vtkSmartPointer<vtkPolyData>::New();
    data->SetPoints(points);
    data->SetLines(lines);
    return data;
  }

  static std::vector<World> PositionsOf(vtkPolyData* data)
  {
    std::vector<World> positions(data->GetNumberOfPoints());
    for (std::size_t id = 0; id < positions.size(); ++id)
    {
      data->GetPoint(static_cast<vtkIdType>(id), positions[id].data());
    }
    return positions;
  }

  /// What must not change in an operation that is refused.
  struct Snapshot
  {
    int State;
    int Point;
    int Line;
    int Enabled;
    std::vector<World> Points;
    Segments Lines;
    World Sphere;
    World Start;
    World End;
    std::string Label;
    std::array<std::string, 5> Where;
    bool operator==(const Snapshot& o) const
    {
      return this->State == o.State && this->Point == o.Point && this->Line == o.Line &&
        this->Enabled == o.Enabled && this->Points == o.Points && this->Lines == o.Lines &&
        this->Sphere == o.Sphere && this->Start == o.Start && this->End == o.End &&
        this->Label == o.Label && this->Where == o.Where;
    }
  };
  Snapshot Take()
  {
    return { this->Tree->State, this->Tree->CurrentPoint, this->Tree->CurrentLine,
      this->Tree->GetEnabled(), PositionsOf(this->Tree->TreePoints), this->SegmentsOfTree(),
      this->Sphere(), this->LineStart(), this->LineEnd(), this->Label(), this->WhereAll() };
  }

  double From[3] = { 0, 0, 0 };
  double To[3] = { 1, 0, 0 };

  /// Pixels that are on nothing, inside every view.
  static constexpr Display Nothing{ { 6, 6 } };

  ///@{
  /// Where a position, a point of GrowSquare or the middle of a segment is seen.
  Display At(View view, const World& position) { return this->In(view).At(position); }
  Display OnPoint(View view, int id) { return this->At(view, Corners[id]); }
  Display OnSegment(View view, int id)
  {
    return this->At(view, Middle(Corners[Parents[id + 1]], Corners[id + 1]));
  }
  ///@}

  /// Note the widget's events and the renders of the views.
  void Watch(EventRecorder& recorder)
  {
    recorder.Watch(this->Tree, WidgetEvents);
    this->WatchRenders(recorder);
  }

  vtkSmartPointer<OpenTree> Tree;
};
}

#endif
