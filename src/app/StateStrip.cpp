#include "app/StateStrip.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <utility>

#include "widgets/ElidedLabel.h"

namespace skarn {

namespace {

constexpr int pageMargin = 24;
constexpr int gap = 8;
constexpr int padding = 10;
constexpr int cornerRadius = 6;

}  // namespace

StateStrip::StateStrip(QTabWidget* tabs)
    : QFrame(tabs->parentWidget()), mTabs(tabs), mText(new ElidedLabel(this)), mButton(new QPushButton(this)) {
  setObjectName(QStringLiteral("mStateBar"));
  mText->setObjectName(QStringLiteral("mStateStrip"));
  mButton->setObjectName(QStringLiteral("mStateButton"));
  mText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(padding, 2, padding, 2);
  row->setSpacing(gap);
  row->addWidget(mText, 1);
  row->addWidget(mButton);
  connect(mButton, &QPushButton::clicked, this, &StateStrip::buttonClicked);
  tabs->installEventFilter(this);
  tabs->tabBar()->installEventFilter(this);
  // After the tabs, before what is on their pages.
  QWidget::setTabOrder(tabs->tabBar(), mButton);
  hide();
}

void StateStrip::say(const QString& text, const StripButton& button) {
  const bool isNews = text != mText->text() && !text.isEmpty();
  mText->setText(text);
  showButton(button);
  setVisible(!text.isEmpty());
  takePlace();
  if (!isNews) return;
  QAccessibleEvent event(mText, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

void StateStrip::showButton(const StripButton& button) {
  const bool canBePressed = !button.text.isEmpty() && button.isEnabled;
  if (!canBePressed && window()->focusWidget() == mButton) {
    mTabs->tabBar()->setFocus();
    mTakesKeyboardBack = true;
  }
  mButton->setText(button.text);
  mButton->setToolTip(button.toolTip);
  mButton->setEnabled(button.isEnabled);
  mButton->setVisible(!button.text.isEmpty());
  if (button.text.isEmpty()) mTakesKeyboardBack = false;
  if (!canBePressed || !std::exchange(mTakesKeyboardBack, false)) return;
  if (window()->focusWidget() == mTabs->tabBar()) mButton->setFocus();
}

QString StateStrip::text() const {
  return mText->text();
}

void StateStrip::paintNow() {
  layout()->activate();
  repaint();
}

void StateStrip::takePlace() {
  if (isHidden()) return;
  const QRect bar(mTabs->mapTo(parentWidget(), mTabs->tabBar()->pos()), mTabs->tabBar()->size());
  const int left = bar.left() + mTabs->tabBar()->tabRect(mTabs->count() - 1).right() + pageMargin;
  const int right = mTabs->geometry().right() + 1 - pageMargin;
  const int height = std::min(sizeHint().height(), bar.height() - 4);
  const int width = std::min(sizeHint().width(), std::max(right - left, 0));
  setGeometry(right - width, bar.top() + (bar.height() - height) / 2, width, height);
  raise();
}

bool StateStrip::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize || event->type() == QEvent::Move) takePlace();
  return false;
}

void StateStrip::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::FontChange) takePlace();
}

void StateStrip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().color(QPalette::AlternateBase));
  painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
}

}  // namespace skarn
