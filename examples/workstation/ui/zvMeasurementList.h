#ifndef zvMeasurementList_h
#define zvMeasurementList_h

#include "zvMeasurementCsv.h"
#include "zvMeasurementSource.h"

#include <QAbstractTableModel>

#include <map>
#include <vector>

/// The measurements of all sources as a table, the oldest first. It knows no kind of mark: it reads
/// its sources whenever they have changed, and hands on to them what the user asks for. Names are
/// the list's own: a new line is named after its kind and a number, and the user may name it anew.
class zvMeasurementList : public QAbstractTableModel
{
  Q_OBJECT

public:
  enum Column
  {
    NameColumn, // with a check mark while the mark is shown; can be edited
    KindColumn,
    ViewColumn,
    SliceColumn,
    ValueColumn, // with its unit
    ColumnCount
  };

  explicit zvMeasurementList(QObject* parent = nullptr);

  /// Read a source from now on. It is not owned and may go at any time: its lines go with it.
  void AddSource(zvMeasurementSource* source);

  /// \name What the user does with a line; a row that is not there is ignored
  ///@{
  void GoTo(int row);
  void SetHidden(int row, bool hidden);
  bool IsHidden(int row) const;
  /// A name of blanks brings the first name back.
  void Rename(int row, const QString& name);
  void Remove(int row);
  bool Edit(int row);
  ///@}
  void RemoveAll();
  /// \return false if no source has a mark under the mouse.
  bool RemoveUnderMouse();

  /// The row of a source's mark, -1 if it is not there.
  int FindRow(const zvMeasurementSource* source, int id) const;

  /// The table for a file.
  std::vector<zvMeasurementRow> GetRows() const;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
  struct Line
  {
    zvMeasurementSource* Source;
    zvMeasurement Measurement;
    QString FirstName;
    QString Name;
  };
  void ReadSource(zvMeasurementSource* source);
  void RemoveLines(zvMeasurementSource* source, const std::vector<zvMeasurement>& left);
  void UpdateLine(zvMeasurementSource* source, const zvMeasurement& measurement);
  void ForgetNumbers();
  bool HasRow(int row) const;
  QString Text(const Line& line, int column) const;

  std::vector<zvMeasurementSource*> Sources;
  std::vector<Line> Lines;
  std::map<QString, int> Numbers; // the last one that each kind has used
};

#endif
