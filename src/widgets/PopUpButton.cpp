#include "widgets/PopUpButton.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>
#include <utility>

#include "widgets/ControlPainting.h"
#include "widgets/Hover.h"
#include "widgets/PlainToolTip.h"
#include "widgets/TitleText.h"

namespace skarn {

namespace {

constexpr int longestItem = 440;  // device-independent pixels of text
constexpr int itemIconSize = 16;
constexpr int verticalPadding = 3;
constexpr int usualLength = 24;  // characters
constexpr int leastLength = 6;

// One line without columns.
QString inOneLine(QString title) {
  for (const char break_ : {'\n', '\r', '\t'}) title.replace(QLatin1Char(break_), QLatin1Char(' '));
  return title;
}

}  // namespace

// A menu whose items are found by typing the beginning of their titles.
class PopUpButton::ItemMenu : public QMenu {
 public:
  ItemMenu(PopUpButton* button, QWidget* parent) : QMenu(parent), mButton(button) {}

  // Without opening its submenu.
  void makeActive(QAction* item) {
    QMenu* submenu = item->menu();
    item->setMenu(static_cast<QMenu*>(nullptr));
    setActiveAction(item);
    item->setMenu(submenu);
  }

 protected:
  void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override {
    QMenu::initStyleOption(option, action);
    if (action == nullptr || action->isSeparator()) return;
    option->text = escapedTitle(fontMetrics().elidedText(inOneLine(titleOf(*action)), Qt::ElideMiddle, longestItem));
  }

  void mousePressEvent(QMouseEvent* event) override {
    const QRect buttonRect(mButton->mapToGlobal(QPoint()), mButton->size());
    // The press that closes the menu must not open it again.
    if (!rect().contains(event->position().toPoint()))
      setAttribute(Qt::WA_NoMouseReplay, buttonRect.contains(event->globalPosition().toPoint()));
    QMenu::mousePressEvent(event);
  }

  void showEvent(QShowEvent* event) override {
    mTyped.clear();
    QMenu::showEvent(event);
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Space) {
      QKeyEvent enter(event->type(), Qt::Key_Return, event->modifiers());
      QMenu::keyPressEvent(&enter);
      return;
    }
    if (find(*event)) return;
    QMenu::keyPressEvent(event);
  }

 private:
  bool find(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.isEmpty() || !text.at(0).isPrint() || (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)))
      return false;
    if (!mSinceLastKey.isValid() || mSinceLastKey.elapsed() > QApplication::keyboardInputInterval()) mTyped.clear();
    mSinceLastKey.start();
    // One letter again and again goes through all that begin with it.
    const bool isRepeated = mTyped == text;
    if (!isRepeated) mTyped += text;
    if (QAction* item = nextBeginningWith(mTyped, isRepeated || mTyped == text)) makeActive(item);
    return true;
  }

  QAction* nextBeginningWith(const QString& beginning, bool afterActive) const {
    const QList<QAction*> items = actions();
    const qsizetype first = std::max<qsizetype>(items.indexOf(activeAction()) + (afterActive ? 1 : 0), 0);
    for (qsizetype step = 0; step < items.size(); ++step) {
      QAction* item = items.at((first + step) % items.size());
      if (item->isVisible() && item->isEnabled() && titleOf(*item).startsWith(beginning, Qt::CaseInsensitive))
        return item;
    }
    return nullptr;
  }

  PopUpButton* mButton;
  QString mTyped;
  QElapsedTimer mSinceLastKey;
};

PopUpButton::PopUpButton(QWidget* parent) : QToolButton(parent), mMenu(new ItemMenu(this, this)) {
  setMenu(mMenu);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAttribute(Qt::WA_Hover);
  connect(this, &QAbstractButton::clicked, this, &PopUpButton::openMenu);
  connect(mMenu, &QMenu::aboutToShow, this, &PopUpButton::prepareMenu);
  endHoverWithMenu(*this, *mMenu);
}

PopUpButton::~PopUpButton() = default;

void PopUpButton::removeAllItems() {
  mMenu->close();
  for (const Item& item : mItems) {
    mMenu->removeAction(item.action);
    // Its handler may be running.
    if (QMenu* submenu = item.action->menu()) submenu->deleteLater();
    item.action->setParent(nullptr);
    item.action->deleteLater();
  }
  mItems.clear();
  mSelected = -1;
  showTitle(QString());
}

QAction* PopUpButton::addItem(const QString& title) {
  auto* item = new QAction(escapedTitle(title), this);
  connect(item, &QAction::triggered, this, [this, item] { choose(item); });
  mItems.push_back({item, {}, {}});
  return item;
}

void PopUpButton::setSubmenu(QAction* item, const QString& objectName, std::function<void(QMenu&)> fill) {
  const int index = indexOf(item);
  if (index < 0) return;
  mItems[static_cast<std::size_t>(index)].submenuName = objectName;
  mItems[static_cast<std::size_t>(index)].fill = std::move(fill);
}

QString PopUpButton::itemTitle(int index) const {
  const QAction* item = itemAt(index);
  return item ? titleOf(*item) : QString();
}

QAction* PopUpButton::itemAt(int index) const {
  return index >= 0 && index < numberOfItems() ? mItems[static_cast<std::size_t>(index)].action : nullptr;
}

void PopUpButton::selectItem(int index) {
  mSelected = itemAt(index) ? index : -1;
  showTitle(itemTitle(mSelected));
}

bool PopUpButton::selectItemWithTitle(const QString& title) {
  const auto found =
      std::find_if(mItems.begin(), mItems.end(), [&title](const Item& item) { return titleOf(*item.action) == title; });
  mSelected = found == mItems.end() ? -1 : static_cast<int>(found - mItems.begin());
  showTitle(title);
  return mSelected >= 0;
}

void PopUpButton::setValidator(std::function<bool(const QAction&)> validator) {
  mValidator = std::move(validator);
}

void PopUpButton::openMenu() {
  if (mItems.empty() || !isEnabled() || mMenu->isVisible()) return;
  prepareMenu();
  mMenu->setAccessibleName(accessibleName());
  mMenu->setMinimumWidth(width());
  mMenu->popup(placeOfMenu());
  if (QAction* selected = itemAt(mSelected)) mMenu->makeActive(selected);
  update();
}

void PopUpButton::prepareMenu() {
  for (const Item& item : mItems) {
    item.action->setCheckable(true);
    item.action->setChecked(indexOf(item.action) == mSelected);
    mMenu->addAction(item.action);
    if (!item.fill || item.action->menu()) continue;
    auto* submenu = new ItemMenu(this, mMenu);
    submenu->setObjectName(item.submenuName);
    connect(submenu, &QMenu::aboutToShow, this,
            [this, action = item.action, submenu] { fillSubmenu(action, *submenu); });
    item.action->setMenu(submenu);
  }
  validateItems(*mMenu);
}

void PopUpButton::fillSubmenu(QAction* item, QMenu& submenu) {
  const int index = indexOf(item);
  if (index < 0) return;
  submenu.clear();
  qDeleteAll(submenu.findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
  mItems[static_cast<std::size_t>(index)].fill(submenu);
  validateItems(submenu);
}

void PopUpButton::validateItems(const QMenu& menu) const {
  if (!mValidator) return;
  for (QAction* item : menu.actions()) {
    if (item->isSeparator()) continue;
    const bool isValid = mValidator(*item);
    // What is shown and off is so for another reason.
    if (isValid != item->isVisible()) item->setEnabled(isValid);
    item->setVisible(isValid);
  }
}

void PopUpButton::choose(const QAction* item) {
  const int index = indexOf(item);
  if (index < 0) return;
  selectItem(index);
  emit itemChosen(index);
}

int PopUpButton::indexOf(const QAction* item) const {
  const auto found = std::find_if(mItems.begin(), mItems.end(), [item](const Item& one) { return one.action == item; });
  return found == mItems.end() ? -1 : static_cast<int>(found - mItems.begin());
}

void PopUpButton::showTitle(const QString& title) {
  if (title == mShownTitle) return;
  mShownTitle = title;
  mShorterTexts.clear();
  mIsMuted = false;
  setText(escapedTitle(inOneLine(title)));
  describe();
}

void PopUpButton::describe() {
  QStringList words{mShownTitle};
  for (const QString& more : {mLockReason, mNote}) {
    if (!more.isEmpty()) words << more;
  }
  setAccessibleDescription(words.join(QStringLiteral(". ")));
}

void PopUpButton::setNote(const QString& note) {
  mNote = note;
  describe();
}

void PopUpButton::setShorterTexts(const QStringList& texts) {
  mShorterTexts = texts;
  update();
}

void PopUpButton::setMuted(bool muted) {
  mIsMuted = muted;
  update();
}

void PopUpButton::setLockReason(const QString& reason) {
  mLockReason = reason;
  setToolTip(reason);
  describe();
  update();
}

QString PopUpButton::drawnText() const {
  if (mShorterTexts.isEmpty()) return inOneLine(mShownTitle);
  const int width = textRect().width();
  for (const QString& text : mShorterTexts) {
    if (fontMetrics().horizontalAdvance(inOneLine(text)) <= width) return inOneLine(text);
  }
  return inOneLine(mShorterTexts.constLast());
}

QPoint PopUpButton::placeOfMenu() const {
  const QSize size = mMenu->sizeHint();
  const QRect button(mapToGlobal(QPoint()), this->size());
  const QRect available = screen()->availableGeometry();
  const int x = isRightToLeft() ? button.right() + 1 - size.width() : button.left();
  const bool fitsBelow = button.bottom() + size.height() <= available.bottom();
  const bool fitsAbove = button.top() - size.height() >= available.top();
  return {x, !fitsBelow && fitsAbove ? button.top() - size.height() : button.bottom() + 1};
}

int PopUpButton::widthOf(const QString& title) const {
  return fontMetrics().horizontalAdvance(inOneLine(title)) + fieldPadding + listChevronWidth;
}

QSize PopUpButton::sizeHint() const {
  return {fontMetrics().averageCharWidth() * usualLength + fieldPadding + listChevronWidth,
          fontMetrics().height() + 2 * verticalPadding};
}

QSize PopUpButton::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * leastLength + fieldPadding + listChevronWidth, fontMetrics().height() + 2};
}

bool PopUpButton::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && isEnabled() && !mShownTitle.isEmpty()) {
    const QString text = mNote.isEmpty() ? mShownTitle : mShownTitle + QLatin1Char('\n') + mNote;
    showPlainToolTip(*static_cast<QHelpEvent*>(event), text, this);
    return true;
  }
  return QToolButton::event(event);
}

void PopUpButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange && !isEnabled()) mMenu->close();
  QToolButton::changeEvent(event);
}

QRect PopUpButton::textRect() const {
  const QAction* selected = itemAt(mSelected);
  const int iconWidth = selected != nullptr && !selected->icon().isNull() ? itemIconSize + fieldPadding : 0;
  return rect().adjusted(fieldPadding + iconWidth, 0, -listChevronWidth, 0);
}

void PopUpButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool isLocked = !mLockReason.isEmpty() && !isEnabled();
  QStyleOptionComboBox option;
  option.initFrom(this);
  option.editable = false;
  option.subControls = QStyle::SC_ComboBoxFrame;
  if (!isLocked) option.subControls |= QStyle::SC_ComboBoxArrow;
  if (mMenu->isVisible()) option.state |= QStyle::State_On;
  style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, this);
  const auto visual = [this](const QRect& place) { return QStyle::visualRect(layoutDirection(), rect(), place); };
  if (isLocked) {
    const QRect place(rect().right() - listChevronWidth, 0, listChevronWidth, height());
    drawLock(&painter, visual(place), palette().color(QPalette::Normal, QPalette::PlaceholderText));
  }
  const QAction* selected = itemAt(mSelected);
  if (selected != nullptr && !selected->icon().isNull()) {
    const QRect place(fieldPadding, 0, itemIconSize, height());
    selected->icon().paint(&painter, visual(place), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  }
  const QRect place = visual(textRect());
  const QString text = fontMetrics().elidedText(drawnText(), Qt::ElideMiddle, place.width());
  const Qt::Alignment alignment = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
  style()->drawItemText(&painter, place, static_cast<int>(alignment), palette(), isEnabled(), text,
                        mIsMuted ? QPalette::PlaceholderText : QPalette::ButtonText);
}

void PopUpButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    openMenu();
  } else {
    event->ignore();
  }
}

// The press has opened the menu.
void PopUpButton::mouseReleaseEvent(QMouseEvent*) {}

void PopUpButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
    case Qt::Key_F4:
      openMenu();
      return;
    default:
      QToolButton::keyPressEvent(event);
  }
}

}  // namespace skarn
