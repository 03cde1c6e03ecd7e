#include "widgets/Alert.h"

#include <QLabel>
#include <QPushButton>

#include "widgets/SkarnStyle.h"
#include "widgets/TitleText.h"

namespace skarn {

namespace {

constexpr int leastTextWidth = 320;

}  // namespace

Alert::Alert(QWidget* window) : QMessageBox(window) {
  setObjectName(QStringLiteral("alert"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::WindowModal);
  setIcon(QMessageBox::Warning);
  setTextFormat(Qt::PlainText);
}

// The labels are the message box's own; what they say tells which is which.
QLabel* Alert::labelOf(const QString& shown, const QLabel* other) const {
  for (QLabel* label : findChildren<QLabel*>()) {
    if (label != other && !shown.isEmpty() && label->text() == shown) return label;
  }
  return nullptr;
}

void Alert::layOutTexts() {
  QLabel* title = labelOf(text());
  QLabel* description = labelOf(informativeText(), title);
  if (title != nullptr) title->setProperty(SkarnStyle::textRoleProperty, QStringLiteral("title"));
  if (description != nullptr) {
    description->setTextFormat(Qt::PlainText);
    description->setMinimumWidth(leastTextWidth);
  }
}

void Alert::makeTextSelectable() {
  if (QLabel* description = labelOf(informativeText(), labelOf(text()))) {
    description->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  }
}

Alert* Alert::show(QWidget* window, const QString& message, const QString& informativeText, const QStringList& buttons,
                   Ended ended) {
  auto* alert = new Alert(window);
  if (window != nullptr) alert->setWindowTitle(window->window()->windowTitle());
  alert->setText(message);
  alert->setInformativeText(informativeText);
  alert->layOutTexts();
  QList<QPushButton*> made;
  for (const QString& title : buttons) {
    made << alert->addButton(escapedTitle(title), made.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
  }
  if (!made.isEmpty()) {
    alert->setDefaultButton(made.constFirst());
    alert->setEscapeButton(made.constLast());
  }
  connect(alert, &QDialog::finished, alert, [alert, made, ended = std::move(ended)] {
    const auto pressed = made.indexOf(qobject_cast<QPushButton*>(alert->clickedButton()));
    const auto index = pressed >= 0 ? pressed : made.size() - 1;
    if (ended) ended(firstButtonReturn + static_cast<int>(index));
  });
  alert->open();
  return alert;
}

Alert* Alert::ask(QWidget* window, const QString& message, const QString& informativeText, const QString& action,
                  const QString& cancel, Ended ended) {
  Alert* alert = show(window, message, informativeText, {action, cancel}, std::move(ended));
  alert->setDefaultButton(qobject_cast<QPushButton*>(alert->escapeButton()));
  return alert;
}

}  // namespace skarn
