#include "app/AfterPaint.h"

#include <QEvent>
#include <QTimer>
#include <chrono>
#include <utility>

namespace skarn {

using namespace std::chrono_literals;

void AfterPaint::run(const QList<QWidget*>& widgets, QObject* context, std::function<void()> work) {
  new AfterPaint(widgets, context, std::move(work));
}

AfterPaint::AfterPaint(const QList<QWidget*>& widgets, QObject* context, std::function<void()> work)
    : QObject(widgets.constFirst()), mContext(context), mWork(std::move(work)) {
  for (QWidget* widget : widgets) {
    mWaiting.insert(widget);
    widget->installEventFilter(this);
  }
  QTimer::singleShot(1s, this, &AfterPaint::finish);
}

bool AfterPaint::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Paint && mWaiting.remove(watched) && mWaiting.isEmpty()) {
    // The paint itself is still under way.
    QTimer::singleShot(0, this, &AfterPaint::finish);
  }
  return false;
}

void AfterPaint::finish() {
  const auto work = std::exchange(mWork, nullptr);
  if (!work) return;
  deleteLater();
  if (mContext) work();
}

}  // namespace skarn
