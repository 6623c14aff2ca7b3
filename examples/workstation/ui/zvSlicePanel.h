#ifndef zvSlicePanel_h
#define zvSlicePanel_h

#include "zvSliceRow.h"

#include <QGroupBox>

#include <array>

/// The slices of the three planes. Axes are 0, 1 and 2 for x, y and z.
class zvSlicePanel : public QGroupBox
{
  Q_OBJECT

public:
  explicit zvSlicePanel(QWidget* parent = nullptr);

  /// Emits nothing.
  void ShowSlice(int axis, int index, int count);
  zvSliceRow* GetRow(int axis) const { return this->Rows[static_cast<std::size_t>(axis)]; }

signals:
  void chosen(int axis, int index);

private:
  std::array<zvSliceRow*, 3> Rows; // owned by Qt's tree of widgets
};

#endif
