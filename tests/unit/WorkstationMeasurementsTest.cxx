// The list of measurements and its table for a file, without a window.

#include "zvMeasurementCsv.h"
#include "zvMeasurementList.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
// A source whose marks the test sets, and which notes what it is asked.
class ListedSource : public zvMeasurementSource
{
public:
  std::vector<zvMeasurement> Read() const override { return this->Marks; }
  void GoTo(int id) override { this->Asked += QString("go %1;").arg(id); }
  void SetHidden(int id, bool hidden) override
  {
    this->Asked += QString("%1 %2;").arg(hidden ? "hide" : "show").arg(id);
    for (zvMeasurement& mark : this->Marks)
    {
      mark.IsHidden = mark.Id == id ? hidden : mark.IsHidden;
    }
    emit changed();
  }
  void Remove(int id) override
  {
    this->Asked += QString("remove %1;").arg(id);
    for (std::size_t i = 0; i < this->Marks.size(); ++i)
    {
      if (this->Marks[i].Id == id)
      {
        this->Marks.erase(this->Marks.begin() + static_cast<std::ptrdiff_t>(i));
        break;
      }
    }
    emit changed();
  }
  void RemoveAll() override
  {
    this->Marks.clear();
    emit changed();
  }
  bool RemoveUnderMouse() override { return this->HasMarkUnderMouse; }

  void Set(std::vector<zvMeasurement> marks)
  {
    this->Marks = std::move(marks);
    emit changed();
  }

  std::vector<zvMeasurement> Marks;
  QString Asked;
  bool HasMarkUnderMouse = false;
};

zvMeasurement Ruler(int id, const QString& value)
{
  zvMeasurement mark;
  mark.Id = id;
  mark.Kind = "Ruler";
  mark.View = "Axial";
  mark.Slice = "89";
  mark.Value = value;
  mark.Unit = "mm";
  return mark;
}

zvMeasurement Note(int id, const QString& text)
{
  zvMeasurement mark;
  mark.Id = id;
  mark.Kind = "Note";
  mark.View = "Coronal";
  mark.Slice = "12";
  mark.Value = text;
  return mark;
}

QString TextAt(const zvMeasurementList& list, int row, int column)
{
  return list.data(list.index(row, column), Qt::DisplayRole).toString();
}
}

TEST(WorkstationCsv, AFieldIsQuotedOnlyWhereItHasTo)
{
  EXPECT_EQ(zvMeasurementCsv::Quote("plain text"), "plain text");
  EXPECT_EQ(zvMeasurementCsv::Quote(""), "");
  EXPECT_EQ(zvMeasurementCsv::Quote("a,b"), "\"a,b\"");
  EXPECT_EQ(zvMeasurementCsv::Quote("say \"ah\""), "\"say \"\"ah\"\"\"");
  EXPECT_EQ(zvMeasurementCsv::Quote("two\nlines"), "\"two\nlines\"");
  EXPECT_EQ(zvMeasurementCsv::Quote("two\rlines"), "\"two\rlines\"");
}

TEST(WorkstationCsv, ATextIsNoFormulaAndANumberStaysANumber)
{
  for (const char* formula : { "=1+1", "+x", "-x", "@sum", "\ttab", "\rline", "\nline", "-", "-1.",
         "-.5", "-1.0 x", "-1.0  2.0", "-1.0 ", "=", "--1" })
  {
    EXPECT_EQ(zvMeasurementCsv::Tame(formula), std::string("'") + formula);
  }
  for (const char* harmless : { "", "plain", "a=b", "1-2", "-1", "+12.50", "-37.75 -19.00 0.00",
         "12.00 -3.50 4.00", "-1.0000 0.0000 0.0000" })
  {
    EXPECT_EQ(zvMeasurementCsv::Tame(harmless), harmless);
  }
}

TEST(WorkstationCsv, EveryFieldOfALineIsTamedAndQuoted)
{
  EXPECT_EQ(zvMeasurementCsv::Write({ { "=k", "=n,\"x\"", "=v", "=s", "=w", "=u" },
              { "Seed", "-1", "", "", "-37.75 -19.00 0.00", "mm" } }),
    "Kind,Name,View,Slice,Value,Unit\r\n"
    "'=k,\"'=n,\"\"x\"\"\",'=v,'=s,'=w,'=u\r\n"
    "Seed,-1,,,-37.75 -19.00 0.00,mm\r\n");
}

TEST(WorkstationCsv, ATableHasAHeaderAndALineForEachRow)
{
  EXPECT_EQ(zvMeasurementCsv::Write({}), "Kind,Name,View,Slice,Value,Unit\r\n");
  EXPECT_EQ(zvMeasurementCsv::Write({ { "Ruler", "Ruler 1", "Axial", "89", "12.35", "mm" },
              { "", "", "", "", "", "" }, { "Note", "a \"b\"", "", "", "left, big", "" } }),
    "Kind,Name,View,Slice,Value,Unit\r\n"
    "Ruler,Ruler 1,Axial,89,12.35,mm\r\n"
    ",,,,,\r\n"
    "Note,\"a \"\"b\"\"\",,,\"left, big\",\r\n");
}

TEST(WorkstationMeasurements, NumbersHaveTwoDecimalsAndAPoint)
{
  EXPECT_EQ(zvMeasurementSource::Number(12.345678), "12.35");
  EXPECT_EQ(zvMeasurementSource::Number(-1000.0), "-1000.00");
}

TEST(WorkstationMeasurements, EveryKindIsNumberedByItselfAndTheOldestIsFirst)
{
  ListedSource first, second;
  zvMeasurementList list;
  list.AddSource(&first);
  list.AddSource(&second);
  second.Set({ Ruler(1, "5.00") });
  first.Set({ Note(1, "here"), Ruler(2, "7.00") });
  ASSERT_EQ(list.rowCount(), 3);
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::NameColumn), "Ruler 1");
  EXPECT_EQ(TextAt(list, 1, zvMeasurementList::NameColumn), "Note 1");
  EXPECT_EQ(TextAt(list, 2, zvMeasurementList::NameColumn), "Ruler 2");
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::KindColumn), "Ruler");
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::ViewColumn), "Axial");
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::SliceColumn), "89");
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::ValueColumn), "5.00 mm");
  EXPECT_EQ(TextAt(list, 1, zvMeasurementList::ValueColumn), "here") << "no unit, no blank";
  EXPECT_EQ(list.FindRow(&first, 2), 2);
  EXPECT_EQ(list.FindRow(&second, 2), -1);
}

TEST(WorkstationMeasurements, AChangedValueIsShownAndNothingElseIsTold)
{
  ListedSource source;
  zvMeasurementList list;
  list.AddSource(&source);
  source.Set({ Ruler(1, "5.00"), Ruler(2, "6.00") });
  std::vector<int> told;
  QObject::connect(&list, &QAbstractItemModel::dataChanged,
    [&told](const QModelIndex& from, const QModelIndex&) { told.push_back(from.row()); });
  source.Set({ Ruler(1, "5.00"), Ruler(2, "6.50") });
  EXPECT_EQ(told, (std::vector<int>{ 1 }));
  EXPECT_EQ(TextAt(list, 1, zvMeasurementList::ValueColumn), "6.50 mm");
  source.Set({ Ruler(1, "5.00"), Ruler(2, "6.50") });
  EXPECT_EQ(told.size(), 1u);
}

TEST(WorkstationMeasurements, ANameStaysWithItsMark)
{
  ListedSource source;
  zvMeasurementList list;
  list.AddSource(&source);
  source.Set({ Ruler(1, "5.00"), Ruler(2, "6.00"), Ruler(3, "7.00") });
  EXPECT_TRUE(list.setData(
    list.index(1, zvMeasurementList::NameColumn), "  left   ventricle ", Qt::EditRole));
  source.Set({ Ruler(2, "8.00"), Ruler(3, "7.00") });
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::NameColumn), "left ventricle");
  EXPECT_EQ(TextAt(list, 1, zvMeasurementList::NameColumn), "Ruler 3");
  list.Rename(0, "   ");
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::NameColumn), "Ruler 2");
  EXPECT_FALSE(list.setData(list.index(0, zvMeasurementList::ValueColumn), "9", Qt::EditRole));
}

TEST(WorkstationMeasurements, ANameOfSeveralLinesIsOne)
{
  ListedSource source;
  zvMeasurementList list;
  list.AddSource(&source);
  source.Set({ Ruler(1, "5.00") });
  list.Rename(0, "=\"first\"\nsecond\tthird");
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::NameColumn), "=\"first\" second third");
  EXPECT_EQ(zvMeasurementCsv::Write(list.GetRows()),
    "Kind,Name,View,Slice,Value,Unit\r\n"
    "Ruler,\"'=\"\"first\"\" second third\",Axial,89,5.00,mm\r\n");
}

TEST(WorkstationMeasurements, TheCheckMarkHidesAndShows)
{
  ListedSource source;
  zvMeasurementList list;
  list.AddSource(&source);
  source.Set({ Ruler(4, "5.00") });
  const QModelIndex name = list.index(0, zvMeasurementList::NameColumn);
  EXPECT_EQ(list.data(name, Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_TRUE(list.setData(name, Qt::Unchecked, Qt::CheckStateRole));
  EXPECT_EQ(source.Asked, "hide 4;");
  EXPECT_TRUE(list.IsHidden(0));
  EXPECT_EQ(list.data(name, Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_TRUE(list.setData(name, Qt::Checked, Qt::CheckStateRole));
  EXPECT_FALSE(list.IsHidden(0));
}

TEST(WorkstationMeasurements, ASourceIsAskedByItsOwnIds)
{
  ListedSource source;
  zvMeasurementList list;
  list.AddSource(&source);
  source.Set({ Ruler(8, "5.00"), Ruler(9, "6.00") });
  list.GoTo(1);
  list.Remove(0);
  EXPECT_EQ(source.Asked, "go 9;remove 8;");
  EXPECT_EQ(list.rowCount(), 1);
  list.GoTo(7);
  list.Remove(-1);
  list.Rename(3, "x");
  EXPECT_FALSE(list.Edit(0));
  EXPECT_EQ(source.Asked, "go 9;remove 8;");
}

TEST(WorkstationMeasurements, TheFirstSourceWithAMarkUnderTheMouseRemovesIt)
{
  ListedSource first, second;
  zvMeasurementList list;
  list.AddSource(&first);
  list.AddSource(&second);
  EXPECT_FALSE(list.RemoveUnderMouse());
  second.HasMarkUnderMouse = true;
  EXPECT_TRUE(list.RemoveUnderMouse());
}

TEST(WorkstationMeasurements, AnEmptyListCountsAnew)
{
  ListedSource first, second;
  zvMeasurementList list;
  list.AddSource(&first);
  list.AddSource(&second);
  first.Set({ Ruler(1, "5.00") });
  second.Set({ Ruler(1, "6.00") });
  list.RemoveAll();
  EXPECT_EQ(list.rowCount(), 0);
  first.Set({ Ruler(2, "5.00") });
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::NameColumn), "Ruler 1");
}

TEST(WorkstationMeasurements, ASourceMayGo)
{
  auto first = std::make_unique<ListedSource>();
  ListedSource second;
  zvMeasurementList list;
  list.AddSource(first.get());
  list.AddSource(&second);
  first->Set({ Ruler(1, "5.00") });
  second.Set({ Note(1, "stays") });
  first.reset();
  ASSERT_EQ(list.rowCount(), 1);
  EXPECT_EQ(TextAt(list, 0, zvMeasurementList::ValueColumn), "stays");
  list.RemoveAll();
  EXPECT_EQ(list.rowCount(), 0);
}

TEST(WorkstationMeasurements, TheRowsForAFileAreThoseOfTheTable)
{
  ListedSource source;
  zvMeasurementList list;
  list.AddSource(&source);
  source.Set({ Ruler(1, "5.00"), Note(2, "left, big") });
  list.Rename(0, "width");
  EXPECT_EQ(zvMeasurementCsv::Write(list.GetRows()),
    "Kind,Name,View,Slice,Value,Unit\r\n"
    "Ruler,width,Axial,89,5.00,mm\r\n"
    "Note,Note 1,Coronal,12,\"left, big\",\r\n");
}
