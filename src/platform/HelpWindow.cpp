#include "platform/HelpWindow.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include "platform/HelpBrowser.h"
#include "platform/Images.h"
#include "platform/Localization.h"

namespace skarn {

namespace {

constexpr QSize naturalSize(760, 620);
constexpr int barMargin = 8;
constexpr qreal pageMargin = 24;
constexpr int searchWidth = 240;

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
    : mBrowser(new HelpBrowser(this)),
      mBack(navigationButton(this, "helpBack", Qt::LeftArrow, localized("lkeyHelpBack"), QKeySequence::Back)),
      mForward(
          navigationButton(this, "helpForward", Qt::RightArrow, localized("lkeyHelpForward"), QKeySequence::Forward)),
      mContents(new QToolButton(this)),
      mSearch(new QLineEdit(this)) {
  setObjectName(QStringLiteral("helpWindow"));
  setWindowIcon(applicationIcon());
  setAttribute(Qt::WA_DeleteOnClose);
  // An open help page must not keep the application alive.
  setAttribute(Qt::WA_QuitOnClose, false);
  resize(naturalSize);

  mBrowser->document()->setDocumentMargin(pageMargin);
  mContents->setObjectName(QStringLiteral("helpContents"));
  mContents->setText(localized("lkeyHelpContents"));
  mContents->setAutoRaise(true);
  mSearch->setObjectName(QStringLiteral("helpSearch"));
  mSearch->setPlaceholderText(localized("lkeyHelpSearch"));
  mSearch->setAccessibleName(localized("lkeyHelpSearch"));
  mSearch->setClearButtonEnabled(true);
  mSearch->setFixedWidth(searchWidth);

  auto* bar = new QHBoxLayout;
  bar->setContentsMargins(barMargin, barMargin, barMargin, barMargin);
  bar->addWidget(mBack);
  bar->addWidget(mForward);
  bar->addWidget(mContents);
  bar->addStretch();
  bar->addWidget(mSearch);
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
  connect(mContents, &QToolButton::clicked, mBrowser, &HelpBrowser::showContents);
  connect(mSearch, &QLineEdit::textEdited, this, &HelpWindow::search);
  connect(mSearch, &QLineEdit::returnPressed, this, [this] { mBrowser->setFocus(); });
  auto* findKey = new QShortcut(QKeySequence(QKeySequence::Find), this);
  connect(findKey, &QShortcut::activated, this, [this] {
    mSearch->setFocus();
    mSearch->selectAll();
  });
  auto* closeKey = new QShortcut(QKeySequence(QKeySequence::Close), this);
  connect(closeKey, &QShortcut::activated, this, &QWidget::close);
}

void HelpWindow::search(const QString& words) {
  if (words.trimmed().isEmpty()) {
    mBrowser->showContents();
  } else {
    mBrowser->showResults(words);
  }
}

void HelpWindow::showPage(const QString& title, const QString& path) {
  setWindowTitle(title);
  mSearch->clear();
  mBrowser->showPage(path);
  if (isMinimized()) {
    showNormal();
  } else {
    show();
  }
  raise();
  activateWindow();
}

}  // namespace skarn
