// Runs work from the event loop as soon as all given widgets have been painted once, so that what blocks the main
// thread never leaves a window empty.
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QWidget>
#include <functional>

namespace skarn {

class AfterPaint : public QObject {
  Q_OBJECT

 public:
  // The work is dropped when the context or the first widget goes first. A desktop that shows no frames at all (a
  // locked screen) does not hold the work up for longer than a second.
  static void run(const QList<QWidget*>& widgets, QObject* context, std::function<void()> work);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  AfterPaint(const QList<QWidget*>& widgets, QObject* context, std::function<void()> work);
  void finish();

  QSet<QObject*> mWaiting;
  QPointer<QObject> mContext;
  std::function<void()> mWork;
};

}  // namespace skarn
