#ifndef zvHelpOverlay_h
#define zvHelpOverlay_h

#include <QWidget>

#include <array>

class QLabel;
class QMenuBar;

/// A sheet over the whole window that tells every key and what the mouse does. The keys are read
/// from the actions of the menus when it is shown, so that it always tells what holds. A click or
/// any key closes it.
class zvHelpOverlay : public QWidget
{
  Q_OBJECT

public:
  /// \param window  the sheet covers it. \param menus  whose actions it tells; outlives the sheet.
  zvHelpOverlay(QWidget* window, const QMenuBar* menus);

  /// Show the sheet, or close it.
  void Toggle();

  /// Everything that it tells at present, as rich text.
  QString GetText() const;

protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

private:
  void Cover();
  void Write();

  const QMenuBar* Menus;
  static constexpr std::size_t Columns = 2; // of keys
  QLabel* Mouse;                            // owned by Qt's tree of widgets, as the next
  std::array<QLabel*, Columns> Keys;
};

#endif
