#ifndef zvMeasurementSource_h
#define zvMeasurementSource_h

#include <QObject>
#include <QString>

#include <vector>

/// What a mark in a view measures, as a line of the list. Texts are ready to be shown; numbers have
/// a decimal point whatever the language (zvMeasurementSource::Number).
struct zvMeasurement
{
  int Id = 0;    // of the mark in its source, which never gives it to another mark
  QString Kind;  // "Ruler"; marks of one kind are numbered: "Ruler 1", "Ruler 2"
  QString View;  // "Axial"; empty for a mark in space
  QString Slice; // its number, or a word; empty where it has none
  QString Value; // "12.34"; several numbers with a blank between; the text of a note
  QString Unit;  // "mm", "mm^2"; empty for none
  bool IsHidden = false;
};

/// Somewhere that measurements come from: the marks of a view, or of all views. The list asks the
/// source to do what its user wants; the source tells the list when there is something else to
/// read.
class zvMeasurementSource : public QObject
{
  Q_OBJECT

public:
  using QObject::QObject;

  /// The measurements as they are now, oldest first.
  virtual std::vector<zvMeasurement> Read() const = 0;

  /// \name What the list asks for; an id that is not known is ignored
  ///@{
  /// Bring the views to where the mark is.
  virtual void GoTo(int id) = 0;
  virtual void SetHidden(int id, bool hidden) = 0;
  virtual void Remove(int id) = 0;
  virtual void RemoveAll() = 0;
  /// Let the user change what a double click on the line cannot: the text of a note. \return false
  /// if there is nothing of the kind.
  virtual bool Edit(int id);
  /// Remove the mark that is under the mouse. \return false if there is none.
  virtual bool RemoveUnderMouse();
  ///@}

  /// A number as measurements show it: two decimals.
  static QString Number(double number);

signals:
  /// Emitted after every change of what Read gives; emitting it without one does no harm.
  void changed();
};

#endif
