#include "app/MouseMainWindow.h"

#include <QAbstractSpinBox>
#include <QCoreApplication>
#include <QEvent>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSlider>
#include <QTabBar>
#include <QWindow>
#include <initializer_list>

#include "app/HistoryLine.h"
#include "app/StateStrip.h"
#include "platform/Images.h"
#include "ui_MouseMainWindow.h"
#include "widgets/AccessibleSheets.h"
#include "widgets/Palettes.h"

namespace skarn {

namespace {

constexpr QSize expectedFrame{2, 40};

}  // namespace

MouseMainWindow::MouseMainWindow(QWidget* parent) : QWidget(parent), mUi(std::make_unique<Ui::MouseMainWindow>()) {
  installAccessibleSheets();
  mUi->setupUi(this);
  // Where these fill their ground, the window itself is never painted, and nobody learns when it is.
  mUi->mScrollArea->viewport()->setAutoFillBackground(false);
  mUi->MouseMainViewController->setAutoFillBackground(false);
  mStateStrip = new StateStrip(mUi->mMouseTabView);
  mHistoryLine = new HistoryLine(*this, *mUi->footerLine, *mUi->footerSpacer, *mUi->mMouseTabView->tabBar());
  // The tabs have the keyboard first; the picture before them is the last.
  QWidget::setTabOrder(mUi->mAppySettings, mUi->mChooseMouse);
  // As it lies: before the buttons at the right of the footer.
  QWidget::setTabOrder(mUi->mCommunityVornGuildLink, mHistoryLine);
  // The frame that the desktop puts around the window is not known yet.
  resize(size().boundedTo(screen()->availableSize() - expectedFrame));
  for (QWidget* control : findChildren<QWidget*>()) {
    if (qobject_cast<QSlider*>(control) || qobject_cast<QAbstractSpinBox*>(control)) control->installEventFilter(this);
  }
  mUi->mDeviceLogo->setPixmap(image(QStringLiteral("mouse-small.png")));
  // It lies over the button.
  mUi->mDeviceLogo->setAttribute(Qt::WA_TransparentForMouseEvents);
  mUi->mDeviceLogo->raise();
  setWindowIcon(applicationIcon());
  // From the help window too, but not past a sheet, as the window itself cannot be closed under one.
  new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this, this, &QWidget::close, Qt::ApplicationShortcut);
  showProfileName(QString());
  tintIcons();
}

MouseMainWindow::~MouseMainWindow() = default;

void MouseMainWindow::showProfileName(const QString& name) {
  mUi->mHeaderProfileName->setText(name);
  for (QWidget* part :
       std::initializer_list<QWidget*>{mUi->mHeaderProfileCaption, mUi->mHeaderProfileDot, mUi->mHeaderProfileName}) {
    part->setVisible(!name.isEmpty());
  }
}

void MouseMainWindow::setSettingsEnabled(bool isEnabled) {
  mUi->mMouseTabView->setEnabled(isEnabled);
  mUi->mAppySettings->setEnabled(isEnabled);
}

void MouseMainWindow::comeToFront(const QString& activationToken) {
  // The desktop grants focus to a window that shows the token of the program that asked.
  if (!activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

bool MouseMainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QWidget::eventFilter(watched, event);
  // Who scrolls the window does not mean to change what comes under the pointer.
  const QScrollBar* bar = mUi->mScrollArea->verticalScrollBar();
  if (bar->maximum() == bar->minimum() || static_cast<QWidget*>(watched)->hasFocus()) return false;
  QCoreApplication::sendEvent(mUi->mScrollArea->viewport(), event);
  return true;
}

void MouseMainWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) tintIcons();
}

void MouseMainWindow::tintIcons() {
  const QColor text = palette().color(QPalette::WindowText);
  mUi->mCommunityFBLink->setIcon(QIcon(tintedImage(QStringLiteral("communityDiscussion.png"), text)));
  mUi->mCommunityTwitterLink->setIcon(QIcon(tintedImage(QStringLiteral("communityNews.png"), text)));
  mUi->mCommunityVornGuildLink->setIcon(QIcon(tintedImage(QStringLiteral("communityGuild.png"), text)));
  mUi->mUndoButton->setIcon(tintedIcon(QStringLiteral("undo.png"), text));
  mUi->mRedoButton->setIcon(tintedIcon(QStringLiteral("redo.png"), text));
  mUi->mHistoryButton->setIcon(tintedIcon(QStringLiteral("history.png"), text));
  mUi->mWindowSettings->setIcon(tintedIcon(QStringLiteral("settings.png"), text));
  mUi->mHelpButton->setIcon(QIcon(tintedImage(QStringLiteral("help.png"), text)));

  QPalette dot = palette();
  dot.setColor(QPalette::WindowText, accentColor(palette()));
  mUi->mHeaderProfileDot->setPalette(dot);
}

}  // namespace skarn
