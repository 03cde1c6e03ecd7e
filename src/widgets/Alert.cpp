#include "widgets/Alert.h"

#include <QPushButton>

namespace skarn {

Alert::Alert(QWidget* window) : QMessageBox(window) {
  setObjectName(QStringLiteral("alert"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::WindowModal);
  setIcon(QMessageBox::Warning);
  setTextFormat(Qt::PlainText);
}

Alert* Alert::show(QWidget* window, const QString& message, const QString& informativeText, const QStringList& buttons,
                   Ended ended) {
  auto* alert = new Alert(window);
  alert->setText(message);
  alert->setInformativeText(informativeText);
  QList<QPushButton*> made;
  for (const QString& title : buttons) {
    QString shown = title;
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    made << alert->addButton(shown, made.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
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

}  // namespace skarn
