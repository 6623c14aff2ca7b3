#ifndef zvNoticeBar_h
#define zvNoticeBar_h

#include <QFrame>

class QLabel;

/// A strip above the view that tells what the user has to know of the volume, until it is closed.
class zvNoticeBar : public QFrame
{
  Q_OBJECT

public:
  explicit zvNoticeBar(QWidget* parent = nullptr);

  /// Show sentences, one a line; hide the strip if there are none.
  void ShowNotices(const QStringList& notices);
  QString GetText() const;

private:
  QLabel* Text; // owned by Qt's tree of widgets
};

#endif
