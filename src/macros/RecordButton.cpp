#include "macros/RecordButton.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "widgets/ControlPainting.h"
#include "widgets/Palettes.h"

namespace skarn {

namespace {

constexpr int pulseMilliseconds = 1000;
constexpr int markSize = 10;
constexpr int markGap = 8;
// How dark the ground is at the two ends of a pulse, in percent of the accent; the text stays readable on all of them.
struct Darkness {
  int resting, pulsing;
};
constexpr Darkness onLight{118, 140};
constexpr Darkness onDark{100, 118};

QColor mixed(const QColor& from, const QColor& to, qreal share) {
  const auto part = [share](int one, int other) { return static_cast<int>(one + (other - one) * share); };
  return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

// What can be checked is a check box to the toolkit; this one is a button that stays down.
class AccessibleRecordButton : public QAccessibleWidget {
 public:
  explicit AccessibleRecordButton(RecordButton* button)
      : QAccessibleWidget(button, QAccessible::Button), mButton(button) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? mButton->text() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = mButton->isChecked();
    state.pressed = mButton->isDown();
    return state;
  }
  QStringList actionNames() const override {
    return mButton->isEnabled() ? QStringList{toggleAction(), pressAction(), setFocusAction()} : QStringList();
  }
  void doAction(const QString& action) override {
    if (!mButton->isEnabled()) return;
    if (action == toggleAction() || action == pressAction()) {
      mButton->click();
    } else {
      QAccessibleWidget::doAction(action);
    }
  }

 private:
  RecordButton* mButton;
};

QAccessibleInterface* accessibleRecordButton(const QString&, QObject* object) {
  auto* button = qobject_cast<RecordButton*>(object);
  return button == nullptr ? nullptr : new AccessibleRecordButton(button);
}

}  // namespace

RecordButton::RecordButton(QWidget* parent) : QPushButton(parent) {
  // Again does nothing more.
  QAccessible::installFactory(accessibleRecordButton);
  setCheckable(true);
  mPulse.setDuration(pulseMilliseconds);
  mPulse.setLoopCount(-1);
  mPulse.setStartValue(0.0);
  mPulse.setKeyValueAt(0.5, 1.0);
  mPulse.setEndValue(0.0);
  connect(&mPulse, &QVariantAnimation::valueChanged, this, [this] { update(); });
  connect(this, &QPushButton::toggled, this, &RecordButton::updatePulse);
}

QSize RecordButton::sizeHint() const {
  const QSize text = QPushButton::sizeHint();
  return {text.width() + markSize + markGap, text.height()};
}

void RecordButton::updatePulse() {
  const bool hasMotion = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
  const bool wanted = hasMotion && isChecked() && isEnabled() && isVisible();
  if (wanted == isPulsing()) return;
  if (wanted) {
    mPulse.start();
  } else {
    mPulse.stop();
  }
  update();
}

void RecordButton::showEvent(QShowEvent* event) {
  QPushButton::showEvent(event);
  updatePulse();
}

void RecordButton::hideEvent(QHideEvent* event) {
  QPushButton::hideEvent(event);
  updatePulse();
}

void RecordButton::changeEvent(QEvent* event) {
  QPushButton::changeEvent(event);
  if (event->type() == QEvent::EnabledChange || event->type() == QEvent::StyleChange) updatePulse();
}

QColor RecordButton::ground() const {
  const QColor accent = accentColor(palette());
  const Darkness darkness = isDark(palette()) ? onDark : onLight;
  const qreal share = isPulsing() ? mPulse.currentValue().toReal() : 0;
  return mixed(accent.darker(darkness.resting), accent.darker(darkness.pulsing), share);
}

void RecordButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QStyleOptionButton option;
  initStyleOption(&option);
  const bool isLit = isChecked() && isEnabled();
  if (isLit) {
    drawRounded(&painter, rect(), ground(), QPen(Qt::NoPen));
  } else {
    option.state &= ~QStyle::State_On;
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
  }
  QColor ink = palette().color(isEnabled() ? QPalette::Normal : QPalette::Disabled, QPalette::ButtonText);
  if (isLit) ink = palette().color(QPalette::Window);

  QFont bold = font();
  bold.setWeight(QFont::DemiBold);
  painter.setFont(bold);
  const int textWidth = painter.fontMetrics().horizontalAdvance(text());
  const int left = (width() - markSize - markGap - textWidth) / 2;
  const QRectF mark(left, (height() - markSize) / 2.0, markSize, markSize);
  painter.setPen(Qt::NoPen);
  painter.setBrush(isLit || !isEnabled() ? ink : accentColor(palette()));
  // A dot records, a square stops.
  if (isChecked()) {
    painter.drawRoundedRect(mark, 1.5, 1.5);
  } else {
    painter.drawEllipse(mark);
  }
  painter.setPen(ink);
  painter.drawText(QRect(left + markSize + markGap, 0, textWidth + markGap, height()), Qt::AlignLeft | Qt::AlignVCenter,
                   text());
  if (!hasFocus()) return;
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  focus.rect = style()->subElementRect(QStyle::SE_PushButtonFocusRect, &option, this);
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

}  // namespace skarn
