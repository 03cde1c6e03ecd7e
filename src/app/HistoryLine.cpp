#include "app/HistoryLine.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLayoutItem>
#include <QPainter>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "widgets/ElidedLabel.h"

namespace skarn {

namespace {

constexpr int gap = 12;
constexpr int padding = 12;
constexpr int cornerRadius = 6;
constexpr int aboveBorder = 8;  // no page has controls so far down
constexpr int longest = 640;

}  // namespace

HistoryLine::HistoryLine(QWidget& window, QWidget& border, const QLayoutItem& room, QWidget& refuge)
    : QFrame(&window),
      mWindow(window),
      mBorder(border),
      mRoom(room),
      mRefuge(refuge),
      mText(new ElidedLabel(this)),
      mButton(new QPushButton(this)) {
  setObjectName(QStringLiteral("mHistoryBar"));
  mText->setObjectName(QStringLiteral("mHistoryLine"));
  mButton->setObjectName(QStringLiteral("mHistoryLineButton"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(padding, 2, padding, 2);
  row->setSpacing(gap);
  row->addWidget(mText, 1);
  row->addWidget(mButton);
  connect(mButton, &QPushButton::clicked, this, [this] {
    // It may say something else, or nothing.
    const std::function<void()> pressed = mOffer.pressed;
    if (pressed) pressed();
  });
  mTimer.setSingleShot(true);
  connect(&mTimer, &QTimer::timeout, this, &HistoryLine::timeIsUp);
  window.installEventFilter(this);
  border.installEventFilter(this);
  border.parentWidget()->installEventFilter(this);
  mButton->installEventFilter(this);
  hide();
}

void HistoryLine::say(const QString& text, LineButton button) {
  mOffer = std::move(button);
  mText->setText(text);
  if (mOffer.text.isEmpty() && hasKeyboard()) mRefuge.setFocus();
  mButton->setText(mOffer.text);
  mButton->setVisible(!mOffer.text.isEmpty());
  takePlace();
  show();
  raise();
  startTime();
  QAccessibleEvent told(mText, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

void HistoryLine::fallSilent() {
  mTimer.stop();
  if (hasKeyboard()) mRefuge.setFocus();
  hide();
  mText->clear();
  mOffer = {};
}

QString HistoryLine::text() const {
  return mText->text();
}

bool HistoryLine::hasKeyboard() const {
  return mWindow.focusWidget() == mButton;
}

void HistoryLine::startTime() {
  mTimer.stop();
  if (mLifetime) mTimer.start(mOffer.lifetime.value_or(*mLifetime));
}

void HistoryLine::timeIsUp() {
  if (underMouse() || hasKeyboard()) return;
  fallSilent();
}

void HistoryLine::takePlace() {
  const QPoint origin = mBorder.mapTo(&mWindow, QPoint(0, 0));
  const int room = std::max(mRoom.geometry().width() - 2 * gap, 0);
  const int width = std::min({sizeHint().width(), room, longest, mWindow.width()});
  const int height = std::max(sizeHint().height(), mButton->sizeHint().height() + 4);
  const int roomBegin = origin.x() - mBorder.x() + mRoom.geometry().left() + gap;
  const int centred = origin.x() + (mBorder.width() - width) / 2;
  const int x = std::max(std::min(centred, roomBegin + room - width), roomBegin);
  // A window that is smaller than its contents shows it all the same.
  setGeometry(std::clamp(x, 0, std::max(mWindow.width() - width, 0)),
              std::clamp(origin.y() - aboveBorder, 0, std::max(mWindow.height() - height, 0)), width, height);
}

bool HistoryLine::eventFilter(QObject* watched, QEvent* event) {
  if (watched == mButton) {
    if (event->type() == QEvent::FocusOut) startTime();
  } else if (!isHidden() && (event->type() == QEvent::Resize || event->type() == QEvent::Move ||
                             event->type() == QEvent::LayoutRequest)) {
    takePlace();
  }
  return false;
}

void HistoryLine::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::FontChange && !isHidden()) takePlace();
}

void HistoryLine::enterEvent(QEnterEvent* event) {
  QFrame::enterEvent(event);
  mTimer.stop();
}

void HistoryLine::leaveEvent(QEvent* event) {
  QFrame::leaveEvent(event);
  if (!isHidden()) startTime();
}

void HistoryLine::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return fallSilent();
  QFrame::keyPressEvent(event);
}

void HistoryLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::AlternateBase));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

}  // namespace skarn
