#include "widgets/Notice.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "widgets/SkarnStyle.h"

namespace skarn {

namespace {

class AccessibleNotice : public QAccessibleWidget {
 public:
  explicit AccessibleNotice(Notice* notice) : QAccessibleWidget(notice, QAccessible::Notification), mNotice(notice) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? mNotice->text() : QAccessibleWidget::text(kind);
  }

 private:
  Notice* mNotice;
};

QAccessibleInterface* accessibleNotice(const QString&, QObject* object) {
  auto* notice = qobject_cast<Notice*>(object);
  return notice == nullptr ? nullptr : new AccessibleNotice(notice);
}

}  // namespace

Notice::Notice(QWidget* parent) : ElidedLabel(parent) {
  // Again does nothing more.
  QAccessible::installFactory(accessibleNotice);
  setProperty(SkarnStyle::textRoleProperty, QStringLiteral("caption"));
  QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
  hide();
  mTimer.setSingleShot(true);
  connect(&mTimer, &QTimer::timeout, this, &Notice::fallSilent);
}

void Notice::say(const QString& text) {
  setText(text);
  show();
  mTimer.start(lifetime);
  QAccessibleEvent told(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

void Notice::fallSilent() {
  mTimer.stop();
  hide();
  clear();
}

}  // namespace skarn
