#include "widgets/FieldUndo.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextEdit>
#include <QVBoxLayout>

#include "support/QtTests.h"

using namespace skarn;

namespace {

// A window in front with one of the fields.
template <typename Field>
struct Window : QWidget {
  Window() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(field);
    show();
    activateWindow();
    if (!QTest::qWaitForWindowActive(this)) QTest::qFail("the window is active", __FILE__, __LINE__);
    field->setFocus();
  }
  Field* field = new Field(this);
};

}  // namespace

class FieldUndoTest : public QObject {
  Q_OBJECT

 private slots:
  void a_line_undoes_what_was_typed_into_it() {
    Window<QLineEdit> window;
    window.field->setText(QStringLiteral("set"));
    QVERIFY(!canUndoTyping(window.field) && !canRedoTyping(window.field));
    QTest::keyClicks(window.field, QStringLiteral("typed"));
    QVERIFY(canUndoTyping(window.field) && !canRedoTyping(window.field));
    window.field->undo();
    QVERIFY(!canUndoTyping(window.field) && canRedoTyping(window.field));
  }

  void a_spin_box_undoes_what_is_not_its_value_yet() {
    Window<QSpinBox> window;
    window.field->setKeyboardTracking(false);
    window.field->setRange(0, 1000);
    window.field->selectAll();
    QTest::keyClicks(window.field, QStringLiteral("80"));
    QVERIFY(canUndoTyping(window.field));
    QTest::keyClick(window.field, Qt::Key_Return);
    QCOMPARE(window.field->value(), 80);
    QVERIFY(!canUndoTyping(window.field) && !canRedoTyping(window.field));
  }

  void a_text_of_several_lines_is_a_field_unless_it_is_only_read() {
    Window<QTextEdit> window;
    QTest::keyClicks(window.field, QStringLiteral("typed"));
    QVERIFY(isTextField(window.field) && canUndoTyping(window.field));
    window.field->setReadOnly(true);
    QVERIFY(!isTextField(window.field) && !canUndoTyping(window.field));
  }

  void what_is_no_text_field_undoes_nothing() {
    Window<QPushButton> window;
    const QComboBox list;
    for (const QWidget* field : std::initializer_list<const QWidget*>{nullptr, window.field, &list})
      QVERIFY(!isTextField(field) && !canUndoTyping(field) && !canRedoTyping(field));
  }

  void ending_what_is_typed_enters_it_and_keeps_the_keyboard() {
    Window<QSpinBox> window;
    window.field->setKeyboardTracking(false);
    window.field->setRange(0, 1000);
    window.field->selectAll();
    QTest::keyClicks(window.field, QStringLiteral("80"));
    QCOMPARE(window.field->value(), 0);
    endTyping(window);
    QCOMPARE(window.field->value(), 80);
    QVERIFY(window.field->hasFocus());
  }
};

SKARN_QTEST(FieldUndoTest)
#include "FieldUndo_test.moc"
