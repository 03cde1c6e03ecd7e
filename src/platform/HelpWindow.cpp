#include "platform/HelpWindow.h"

#include <QAction>
#include <QHBoxLayout>
#include <QShortcut>
#include <QTextBrowser>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "platform/Localization.h"

namespace skarn {

namespace {

constexpr QSize naturalSize(760, 620);
constexpr int barMargin = 8;
constexpr qreal pageMargin = 24;

QToolButton* navigationButton(QWidget* parent, const char* name, Qt::ArrowType arrow, const QString& text,
                              QKeySequence::StandardKey shortcut) {
  auto* button = new QToolButton(parent);
  button->setObjectName(QLatin1String(name));
  button->setArrowType(arrow);
  button->setAutoRaise(true);
  button->setEnabled(false);
  button->setToolTip(text);
  button->setAccessibleName(text);
  button->setShortcut(QKeySequence(shortcut));
  return button;
}

}  // namespace

HelpWindow& HelpWindow::shared() {
  static QPointer<HelpWindow> window;
  if (window.isNull()) window = new HelpWindow;
  return *window;
}

HelpWindow::HelpWindow()
    : mBrowser(new QTextBrowser(this)),
      mBack(navigationButton(this, "helpBack", Qt::LeftArrow, localized("lkeyHelpBack"), QKeySequence::Back)),
      mForward(
          navigationButton(this, "helpForward", Qt::RightArrow, localized("lkeyHelpForward"), QKeySequence::Forward)) {
  setObjectName(QStringLiteral("helpWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  // An open help page must not keep the application alive.
  setAttribute(Qt::WA_QuitOnClose, false);
  resize(naturalSize);

  mBrowser->setFrameShape(QFrame::NoFrame);
  mBrowser->document()->setDocumentMargin(pageMargin);
  mBrowser->setOpenExternalLinks(true);

  auto* bar = new QHBoxLayout;
  bar->setContentsMargins(barMargin, barMargin, barMargin, barMargin);
  bar->addWidget(mBack);
  bar->addWidget(mForward);
  bar->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(bar);
  layout->addWidget(mBrowser);
  mBrowser->setFocus();

  connect(mBack, &QToolButton::clicked, mBrowser, &QTextBrowser::backward);
  connect(mForward, &QToolButton::clicked, mBrowser, &QTextBrowser::forward);
  connect(mBrowser, &QTextBrowser::backwardAvailable, mBack, &QWidget::setEnabled);
  connect(mBrowser, &QTextBrowser::forwardAvailable, mForward, &QWidget::setEnabled);
  auto* closeKey = new QShortcut(QKeySequence(QKeySequence::Close), this);
  connect(closeKey, &QShortcut::activated, this, &QWidget::close);
}

void HelpWindow::showPage(const QString& title, const QString& path) {
  setWindowTitle(title);
  mBrowser->setSource(QUrl::fromLocalFile(path));
  if (isMinimized()) {
    showNormal();
  } else {
    show();
  }
  raise();
  activateWindow();
}

}  // namespace skarn
