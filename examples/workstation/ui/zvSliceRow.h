#ifndef zvSliceRow_h
#define zvSliceRow_h

#include <QColor>
#include <QWidget>

class QLabel;
class QSlider;
class QSpinBox;

/// One plane's slice: a name in the colour of the plane, a slider and a number, always equal.
class zvSliceRow : public QWidget
{
  Q_OBJECT

public:
  zvSliceRow(
    const QString& name, const QColor& color, const QString& toolTip, QWidget* parent = nullptr);

  /// Show a slice of so many, counted from 0. Emits nothing.
  void ShowSlice(int index, int count);
  int GetSlice() const;

signals:
  /// The user has chosen a slice.
  void chosen(int index);

private:
  void Choose(int index);

  QSlider* Slider; // the three are owned by Qt's tree of widgets
  QSpinBox* Number;
  QLabel* Count;
};

#endif
