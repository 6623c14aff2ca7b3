#ifndef zvLoadBar_h
#define zvLoadBar_h

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

/// How far a load is, and a button that cancels it. Hidden while nothing loads.
class zvLoadBar : public QWidget
{
  Q_OBJECT

public:
  explicit zvLoadBar(QWidget* parent = nullptr);

  void Begin(const QString& name);
  /// \param fraction  the part done, 0 to 1.
  void ShowProgress(double fraction);
  void End();

  QPushButton* GetCancelButton() const { return this->Cancel; }

signals:
  void cancelled();

private:
  QLabel* Name; // the three are owned by Qt's tree of widgets
  QProgressBar* Bar;
  QPushButton* Cancel;
};

#endif
