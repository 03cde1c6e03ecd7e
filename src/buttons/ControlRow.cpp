#include "buttons/ControlRow.h"

#include <QContextMenuEvent>
#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "buttons/AssignmentText.h"
#include "platform/Images.h"
#include "platform/Localization.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NumberBadge.h"
#include "widgets/Palettes.h"
#include "widgets/PopUpButton.h"
#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

constexpr int widestName = 120;
constexpr int columnGap = 8;
constexpr int sidePadding = 4;
constexpr int naturalHeight = 27;
constexpr int leastHeight = 22;
constexpr int greatestHeight = 36;
constexpr int gapBetweenPopUps = 2;
constexpr int greatestPopUpHeight = 30;
constexpr int widestOfLeast = 220;
constexpr int repeatButtonSize = 22;
constexpr int repeatIconSize = 16;
constexpr float groundOpacity = 0.12F;

// The two families at the right share one column.
bool isAtTheLeft(ControlFamily family) {
  return family == ControlFamily::ThumbGrid;
}

int widthOfNames(ControlFamily family, const QFontMetrics& metrics) {
  int widest = 0;
  for (const ControlDescriptor& control : controlTable) {
    if (isAtTheLeft(control.family) != isAtTheLeft(family)) continue;
    widest = std::max(widest, metrics.horizontalAdvance(localized(control.nameKey)));
  }
  return std::min(widest, widestName);
}

// The functions of mouse buttons are not cut; names that people have given may be.
int leastWidth(const PopUpButton& popUp) {
  const QString category = localized("lkeyMouseButton") + QStringLiteral(": ");
  int widest = 0;
  for (const char* key : mouseButtonNameKeys) widest = std::max(widest, popUp.widthOf(category + localized(key)));
  return std::min(widest, widestOfLeast);
}

bool isKeyboard(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

}  // namespace

QString spokenName(const ControlDescriptor& control) {
  const bool isKey = control.family == ControlFamily::ThumbGrid;
  return localized(isKey ? "lkeyControlKeyName" : "lkeyControlName")
      .arg(control.number)
      .arg(localized(control.nameKey));
}

ControlRow::ControlRow(const ControlDescriptor& control, QWidget* parent)
    : QWidget(parent),
      mControl(control),
      mBadge(new NumberBadge(this)),
      mName(new ElidedLabel(this)),
      mPopUp(new PopUpButton(this)),
      mRepeatButton(new QToolButton(this)) {
  const QString field = QLatin1String(control.fieldName);
  setObjectName(field + QStringLiteral("Row"));
  setAccessibleName(spokenName(control));
  setMaximumHeight(greatestHeight);
  mBadge->setText(QString::number(control.number));
  mBadge->setProperty(SkarnStyle::textRoleProperty, QStringLiteral("caption"));
  mName->setObjectName(field + QStringLiteral("Label"));
  mName->setText(localized(control.nameKey));
  mName->setProperty(SkarnStyle::textRoleProperty, QStringLiteral("muted"));
  mName->setFixedWidth(widthOfNames(control.family, fontMetrics()));
  mPopUp->setObjectName(field);
  mPopUp->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  mPopUp->setMaximumHeight(greatestPopUpHeight);
  mPopUp->setMinimumWidth(leastWidth(*mPopUp));
  mPopUp->setAccessibleName(spokenName(control));
  mPopUp->installEventFilter(this);
  makeRepeatButton();

  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(sidePadding, gapBetweenPopUps / 2, 0, gapBetweenPopUps / 2);
  layout->setSpacing(columnGap);
  layout->addWidget(mBadge);
  layout->addWidget(mName);
  layout->addWidget(mPopUp, 1);
  layout->addWidget(mRepeatButton);
  connect(mPopUp->menu(), &QMenu::aboutToShow, this, [this] { emit hovered(true); });
  connect(mPopUp->menu(), &QMenu::aboutToHide, this, [this] { emit hovered(underMouse() || mIsReached); });
}

void ControlRow::makeRepeatButton() {
  mRepeatButton->setObjectName(QLatin1String(mControl.repeatButton));
  mRepeatButton->setAccessibleName(localized("lkeyControlRepeat").arg(mControl.number));
  mRepeatButton->setToolTip(localized("lkeyMacroRepeat"));
  mRepeatButton->setFixedSize(repeatButtonSize, repeatButtonSize);
  mRepeatButton->setIconSize({repeatIconSize, repeatIconSize});
  mRepeatButton->setFocusPolicy(Qt::StrongFocus);
  mRepeatButton->hide();
  mRepeatButton->installEventFilter(this);
}

// The columns must not move when it comes and goes.
int ControlRow::roomForRepeatButton() const {
  return mRepeatButton->isHidden() ? columnGap + repeatButtonSize : 0;
}

QSize ControlRow::sizeHint() const {
  return {QWidget::sizeHint().width() + roomForRepeatButton(), naturalHeight};
}

QSize ControlRow::minimumSizeHint() const {
  return {QWidget::minimumSizeHint().width() + roomForRepeatButton(), leastHeight};
}

void ControlRow::setChanged(bool changed) {
  mBadge->setFilled(changed);
  updateStrength();
}

void ControlRow::updateStrength() {
  const bool isFound = mSearchResult == SearchResult::Found;
  const bool isPassed = mSearchResult == SearchResult::Passed;
  mPopUp->setMuted(isPassed || (!isFound && !isChanged()));
}

bool ControlRow::isChanged() const {
  return mBadge->isFilled();
}

void ControlRow::setMissing(bool isMissing) {
  if (std::exchange(mIsMissing, isMissing) == isMissing) return;
  const QString note = isMissing ? localized("lkeyMouseLacksControl") : QString();
  setToolTip(note);
  mPopUp->setNote(note);
}

void ControlRow::setHighlighted(bool highlighted) {
  if (highlighted == mIsHighlighted) return;
  mIsHighlighted = highlighted;
  update();
}

void ControlRow::setSearchResult(SearchResult result) {
  const SearchResult before = std::exchange(mSearchResult, result);
  if (before == result) return;
  updateStrength();
  const bool isFound = result == SearchResult::Found;
  if (isFound != (before == SearchResult::Found))
    mName->setForegroundRole(isFound ? QPalette::WindowText : QPalette::PlaceholderText);
  update();
}

bool ControlRow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == mRepeatButton && event->type() == QEvent::Show) {
    if (mRepeatButton->icon().isNull()) tintRepeatIcon();
  } else if (event->type() == QEvent::ContextMenu) {
    // A disabled button would swallow it.
    contextMenuEvent(static_cast<QContextMenuEvent*>(event));
    return true;
  } else if (event->type() == QEvent::FocusIn && isKeyboard(static_cast<QFocusEvent*>(event)->reason())) {
    mIsReached = true;
    emit hovered(true);
  } else if (event->type() == QEvent::FocusOut && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason &&
             std::exchange(mIsReached, false)) {
    emit hovered(false);
  }
  return QWidget::eventFilter(watched, event);
}

void ControlRow::enterEvent(QEnterEvent* event) {
  emit hovered(true);
  QWidget::enterEvent(event);
}

void ControlRow::leaveEvent(QEvent* event) {
  // A menu takes the pointer away; the control that it belongs to stays lit.
  if (!mPopUp->menu()->isVisible()) emit hovered(false);
  QWidget::leaveEvent(event);
}

void ControlRow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange && !mRepeatButton->icon().isNull()) tintRepeatIcon();
  QWidget::changeEvent(event);
}

void ControlRow::contextMenuEvent(QContextMenuEvent* event) {
  const bool isMouse = event->reason() == QContextMenuEvent::Mouse;
  emit menuAsked(mControl, isMouse ? event->globalPos() : mPopUp->mapToGlobal(QPoint(0, mPopUp->height())));
  event->accept();
}

void ControlRow::paintEvent(QPaintEvent*) {
  if (!mIsHighlighted && mSearchResult != SearchResult::Found) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  QColor ground = accentColor(palette());
  ground.setAlphaF(groundOpacity);
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(rect()), SkarnStyle::cornerRadius, SkarnStyle::cornerRadius);
}

void ControlRow::tintRepeatIcon() {
  mRepeatButton->setIcon(tintedIcon(QStringLiteral("repeat.png"), palette().color(QPalette::ButtonText)));
}

}  // namespace skarn
