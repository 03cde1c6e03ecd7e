#include "widgets/AccessibleSheets.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QDialog>

namespace skarn {

namespace {

class AccessibleSheet : public QAccessibleWidget {
 public:
  explicit AccessibleSheet(QWidget* dialog) : QAccessibleWidget(dialog, QAccessible::Dialog) {}

  int childCount() const override { return widget()->isVisible() ? QAccessibleWidget::childCount() : 0; }
  QAccessibleInterface* child(int index) const override {
    return index < childCount() ? QAccessibleWidget::child(index) : nullptr;
  }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
  if (className != QLatin1String("QDialog")) return nullptr;
  return new AccessibleSheet(static_cast<QDialog*>(object));
}

}  // namespace

void installAccessibleSheets() {
  QAccessible::installFactory(&makeAccessible);
}

}  // namespace skarn
