#include "zvMeasurementList.h"

#include <algorithm>

namespace
{
constexpr const char* Headers[zvMeasurementList::ColumnCount] = {
  QT_TRANSLATE_NOOP("zvMeasurementList", "Name"), QT_TRANSLATE_NOOP("zvMeasurementList", "Kind"),
  QT_TRANSLATE_NOOP("zvMeasurementList", "View"), QT_TRANSLATE_NOOP("zvMeasurementList", "Slice"),
  QT_TRANSLATE_NOOP("zvMeasurementList", "Value")
};

bool AreEqual(const zvMeasurement& one, const zvMeasurement& other)
{
  return one.Kind == other.Kind && one.View == other.View && one.Slice == other.Slice &&
    one.Value == other.Value && one.Unit == other.Unit && one.IsHidden == other.IsHidden;
}
}

zvMeasurementList::zvMeasurementList(QObject* parent)
  : QAbstractTableModel(parent)
{
}

void zvMeasurementList::AddSource(zvMeasurementSource* source)
{
  this->Sources.push_back(source);
  connect(
    source, &zvMeasurementSource::changed, this, [this, source] { this->ReadSource(source); });
  connect(source, &QObject::destroyed, this,
    [this, source]
    {
      this->RemoveLines(source, {});
      this->Sources.erase(std::find(this->Sources.begin(), this->Sources.end(), source));
    });
  this->ReadSource(source);
}

void zvMeasurementList::ReadSource(zvMeasurementSource* source)
{
  const std::vector<zvMeasurement> measurements = source->Read();
  this->RemoveLines(source, measurements);
  for (const zvMeasurement& measurement : measurements)
  {
    this->UpdateLine(source, measurement);
  }
}

void zvMeasurementList::RemoveLines(
  zvMeasurementSource* source, const std::vector<zvMeasurement>& left)
{
  for (int row = static_cast<int>(this->Lines.size()) - 1; row >= 0; --row)
  {
    const Line& line = this->Lines[static_cast<std::size_t>(row)];
    const bool isLeft = std::any_of(left.begin(), left.end(),
      [&line](const zvMeasurement& one) { return one.Id == line.Measurement.Id; });
    if (line.Source == source && !isLeft)
    {
      this->beginRemoveRows(QModelIndex(), row, row);
      this->Lines.erase(this->Lines.begin() + row);
      this->endRemoveRows();
    }
  }
  this->ForgetNumbers();
}

// An empty list begins to count anew.
void zvMeasurementList::ForgetNumbers()
{
  if (this->Lines.empty())
  {
    this->Numbers.clear();
  }
}

void zvMeasurementList::UpdateLine(zvMeasurementSource* source, const zvMeasurement& measurement)
{
  const int row = this->FindRow(source, measurement.Id);
  if (row < 0)
  {
    const int end = static_cast<int>(this->Lines.size());
    const QString name =
      QString("%1 %2").arg(measurement.Kind).arg(++this->Numbers[measurement.Kind]);
    this->beginInsertRows(QModelIndex(), end, end);
    this->Lines.push_back({ source, measurement, name, name });
    this->endInsertRows();
    return;
  }
  Line& line = this->Lines[static_cast<std::size_t>(row)];
  if (!AreEqual(line.Measurement, measurement))
  {
    line.Measurement = measurement;
    emit dataChanged(this->index(row, 0), this->index(row, ColumnCount - 1));
  }
}

int zvMeasurementList::FindRow(const zvMeasurementSource* source, int id) const
{
  const auto found = std::find_if(this->Lines.begin(), this->Lines.end(),
    [source, id](const Line& line) { return line.Source == source && line.Measurement.Id == id; });
  return found == this->Lines.end() ? -1 : static_cast<int>(found - this->Lines.begin());
}

bool zvMeasurementList::HasRow(int row) const
{
  return row >= 0 && row < static_cast<int>(this->Lines.size());
}

//------------------------------------------------------------------------------
// Lines are copied before a source is asked: it may change them.
void zvMeasurementList::GoTo(int row)
{
  if (this->HasRow(row))
  {
    const Line line = this->Lines[static_cast<std::size_t>(row)];
    line.Source->GoTo(line.Measurement.Id);
  }
}

void zvMeasurementList::SetHidden(int row, bool hidden)
{
  if (this->HasRow(row))
  {
    const Line line = this->Lines[static_cast<std::size_t>(row)];
    line.Source->SetHidden(line.Measurement.Id, hidden);
  }
}

bool zvMeasurementList::IsHidden(int row) const
{
  return this->HasRow(row) && this->Lines[static_cast<std::size_t>(row)].Measurement.IsHidden;
}

void zvMeasurementList::Rename(int row, const QString& name)
{
  if (this->HasRow(row))
  {
    Line& line = this->Lines[static_cast<std::size_t>(row)];
    line.Name = name.simplified().isEmpty() ? line.FirstName : name.simplified();
    emit dataChanged(this->index(row, NameColumn), this->index(row, NameColumn));
  }
}

void zvMeasurementList::Remove(int row)
{
  if (this->HasRow(row))
  {
    const Line line = this->Lines[static_cast<std::size_t>(row)];
    line.Source->Remove(line.Measurement.Id);
  }
}

bool zvMeasurementList::Edit(int row)
{
  if (!this->HasRow(row))
  {
    return false;
  }
  const Line line = this->Lines[static_cast<std::size_t>(row)];
  return line.Source->Edit(line.Measurement.Id);
}

void zvMeasurementList::RemoveAll()
{
  for (zvMeasurementSource* source : std::vector<zvMeasurementSource*>(this->Sources))
  {
    source->RemoveAll();
  }
}

bool zvMeasurementList::RemoveUnderMouse()
{
  return std::any_of(this->Sources.begin(), this->Sources.end(),
    [](zvMeasurementSource* source) { return source->RemoveUnderMouse(); });
}

std::vector<zvMeasurementRow> zvMeasurementList::GetRows() const
{
  std::vector<zvMeasurementRow> rows;
  for (const Line& line : this->Lines)
  {
    const zvMeasurement& one = line.Measurement;
    rows.push_back({ one.Kind.toStdString(), line.Name.toStdString(), one.View.toStdString(),
      one.Slice.toStdString(), one.Value.toStdString(), one.Unit.toStdString() });
  }
  return rows;
}

//------------------------------------------------------------------------------
int zvMeasurementList::rowCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : static_cast<int>(this->Lines.size());
}

int zvMeasurementList::columnCount(const QModelIndex& parent) const
{
  return parent.isValid() ? 0 : ColumnCount;
}

QString zvMeasurementList::Text(const Line& line, int column) const
{
  const zvMeasurement& one = line.Measurement;
  switch (column)
  {
    case NameColumn:
      return line.Name;
    case KindColumn:
      return one.Kind;
    case ViewColumn:
      return one.View;
    case SliceColumn:
      return one.Slice;
    default:
      return one.Unit.isEmpty() ? one.Value : one.Value + " " + one.Unit;
  }
}

QVariant zvMeasurementList::data(const QModelIndex& index, int role) const
{
  if (!index.isValid() || !this->HasRow(index.row()))
  {
    return QVariant();
  }
  const Line& line = this->Lines[static_cast<std::size_t>(index.row())];
  switch (role)
  {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
      return this->Text(line, index.column());
    case Qt::CheckStateRole:
      return index.column() == NameColumn
        ? QVariant(line.Measurement.IsHidden ? Qt::Unchecked : Qt::Checked)
        : QVariant();
    case Qt::TextAlignmentRole:
      return index.column() == SliceColumn ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                           : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
      return QVariant();
  }
}

QVariant zvMeasurementList::headerData(int section, Qt::Orientation orientation, int role) const
{
  const bool isText = orientation == Qt::Horizontal && role == Qt::DisplayRole;
  return isText && section >= 0 && section < ColumnCount ? QVariant(tr(Headers[section]))
                                                         : QVariant();
}

Qt::ItemFlags zvMeasurementList::flags(const QModelIndex& index) const
{
  const Qt::ItemFlags usual = this->QAbstractTableModel::flags(index);
  return index.isValid() && index.column() == NameColumn
    ? usual | Qt::ItemIsEditable | Qt::ItemIsUserCheckable
    : usual;
}

bool zvMeasurementList::setData(const QModelIndex& index, const QVariant& value, int role)
{
  if (!index.isValid() || index.column() != NameColumn)
  {
    return false;
  }
  switch (role)
  {
    case Qt::EditRole:
      this->Rename(index.row(), value.toString());
      return true;
    case Qt::CheckStateRole:
      this->SetHidden(index.row(), value.toInt() != Qt::Checked);
      return true;
    default:
      return false;
  }
}
