#include "platform/KeyChooser.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "platform/Localization.h"
#include "support/QtTests.h"

using namespace skarn;

namespace {

struct Choosing {
  explicit Choosing(KeyChooser::Offers offers = KeyChooser::Offers::Keys) {
    installTranslations(QStringLiteral("en"));
    window.show();
    chooser = KeyChooser::open(&window, offers, [this](int usage, int modifiers) {
      chosen << QStringLiteral("%1/%2").arg(usage).arg(modifiers);
    });
  }
  template <typename Widget>
  Widget* find(const char* name) {
    return chooser->findChild<Widget*>(QLatin1String(name));
  }
  QStringList shown() {
    QStringList names;
    const auto* keys = find<QListView>("mKeyList")->model();
    for (int row = 0; row < keys->rowCount(); ++row) names << keys->index(row, 0).data().toString();
    return names;
  }

  QWidget window;
  QPointer<KeyChooser> chooser;
  QStringList chosen;
};

}  // namespace

class KeyChooserTest : public QObject {
  Q_OBJECT

 private slots:
  void lists_every_key_that_has_a_name_once();
  void finds_a_key_by_a_part_of_its_name_and_prefers_the_whole();
  void is_worked_by_the_keyboard_alone();
  void offers_nothing_where_nothing_is_found();
  void gives_the_modifiers_that_are_ticked();
  void gives_nothing_when_it_is_cancelled();
  void goes_with_the_sheet_that_it_is_for();
};

void KeyChooserTest::lists_every_key_that_has_a_name_once() {
  Choosing it;
  const QStringList names = it.shown();
  QCOMPARE(names.size(), 119);
  QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), names.size());
  for (const char* name :
       {"A", "0", "Delete (Backspace)", "Delete (Delete Forward)", "F24", "Numpad =", "Right Command"})
    QVERIFY2(names.contains(QLatin1String(name)), name);
  QVERIFY(it.chooser->findChildren<QCheckBox*>().isEmpty());
}

void KeyChooserTest::finds_a_key_by_a_part_of_its_name_and_prefers_the_whole() {
  Choosing it;
  it.find<QLineEdit>("mKeySearch")->setText(QStringLiteral("f2"));
  QCOMPARE(it.shown(), (QStringList{"F2", "F20", "F21", "F22", "F23", "F24"}));
  it.find<QLineEdit>("mKeySearch")->setText(QStringLiteral("backsp"));
  QCOMPARE(it.shown(), QStringList{"Delete (Backspace)"});
  // The letter, not the first key with one in its name.
  it.find<QLineEdit>("mKeySearch")->setText(QStringLiteral("e"));
  it.find<QPushButton>("mKeyChooserOK")->click();
  QCOMPARE(it.chosen, QStringList{"8/0"});
}

void KeyChooserTest::is_worked_by_the_keyboard_alone() {
  Choosing it;
  auto* search = it.find<QLineEdit>("mKeySearch");
  QCOMPARE(it.chooser->focusWidget(), search);
  QTest::keyClicks(search, QStringLiteral("arrow"));
  QTest::keyClick(search, Qt::Key_Down);
  QTest::keyClick(search, Qt::Key_Return);
  QCOMPARE(it.chosen, QStringList{"80/0"});
  QTRY_VERIFY(it.chooser.isNull());
}

void KeyChooserTest::offers_nothing_where_nothing_is_found() {
  Choosing it;
  it.find<QLineEdit>("mKeySearch")->setText(QStringLiteral("no such key"));
  QCOMPARE(it.shown(), QStringList());
  QVERIFY(!it.find<QPushButton>("mKeyChooserOK")->isEnabled());
  it.chooser->accept();
  QVERIFY(it.chooser->isVisible() && it.chosen.isEmpty());
}

void KeyChooserTest::gives_the_modifiers_that_are_ticked() {
  Choosing it(KeyChooser::Offers::KeysAndModifiers);
  const auto boxes = it.chooser->findChildren<QCheckBox*>();
  QStringList names;
  for (const QCheckBox* box : boxes) names << box->text();
  QCOMPARE(names, (QStringList{"Left Control", "Left Shift", "Left Alt", "Left Command"}));
  boxes[0]->setChecked(true);
  boxes[2]->setChecked(true);
  it.find<QLineEdit>("mKeySearch")->setText(QStringLiteral("F5"));
  it.chooser->accept();
  QCOMPARE(it.chosen, QStringList{"62/5"});
}

void KeyChooserTest::goes_with_the_sheet_that_it_is_for() {
  Choosing it;
  it.window.hide();
  QTRY_VERIFY(it.chooser.isNull());
  QVERIFY(it.chosen.isEmpty());
}

void KeyChooserTest::gives_nothing_when_it_is_cancelled() {
  Choosing it;
  it.find<QPushButton>("mKeyChooserCancel")->click();
  QTRY_VERIFY(it.chooser.isNull());
  QVERIFY(it.chosen.isEmpty());
}

SKARN_QTEST(KeyChooserTest)
#include "KeyChooser_test.moc"
