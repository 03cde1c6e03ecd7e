#include "widgets/Hover.h"

#include <QCursor>
#include <QEvent>
#include <QMenu>

namespace skarn {

namespace {

void endHover(QWidget& button) {
  button.setAttribute(Qt::WA_UnderMouse, false);
  button.update();
}

class HoverWatch : public QObject {
 public:
  explicit HoverWatch(QWidget& button) : QObject(&button), mButton(button) { button.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::WindowBlocked) endHover(mButton);
    return QObject::eventFilter(watched, event);
  }

 private:
  QWidget& mButton;
};

}  // namespace

void endHoverWithMenu(QWidget& button, QMenu& menu) {
  auto* watch = new HoverWatch(button);
  QObject::connect(&menu, &QMenu::aboutToHide, watch, [&button] {
    if (!button.rect().contains(button.mapFromGlobal(QCursor::pos()))) endHover(button);
    button.update();
  });
}

}  // namespace skarn
