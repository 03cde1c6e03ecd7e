// All sheets, panels and alerts of the window keep the same promises: the keyboard begins in what is filled first and
// goes back to where it was; Return does what the default button says, from every field, and what another button says
// where that has the keyboard; Escape cancels and sends nothing; an OK that would change nothing says so; and nothing
// is lost by a Return. A class for each table of them.
#pragma once

#include <QAbstractItemView>
#include <QLabel>

#include "app/SheetBench.h"
#include "support/PanelTest.h"
#include "widgets/SkarnStyle.h"

namespace skarn::test {

inline std::string described(const Sent& sent) {
  std::string text;
  for (const auto& request : sent.requests)
    text += std::to_string(static_cast<int>(request.messageID)) + " " + request.body.description() + "\n";
  for (const auto& request : sent.history)
    text += "history " + std::to_string(static_cast<int>(request.call)) + " " + std::to_string(request.change) + "\n";
  for (const auto& request : sent.mice)
    text += "mice " + std::to_string(static_cast<int>(request.call)) + " " + request.name + "\n";
  return text.empty() ? "nothing\n" : text;
}

inline bool isButton(const QWidget& widget) {
  return qobject_cast<const QPushButton*>(&widget) != nullptr;
}

// A sheet of the table, open in a window of its own.
struct OpenSheet : SheetBench {
  explicit OpenSheet(const SheetCase& which) : is(which) { open(); }

  void open() {
    // One that has closed is still there for a moment.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    giveKeyboardTo(is.from);
    is.open(*this);
    dialog = window.findChild<QDialog*>(QLatin1String(is.window));
    QVERIFY(dialog != nullptr && dialog->isVisible());
    QApplication::setActiveWindow(dialog);
    // At the right, whoever has the keyboard.
    ok = nullptr;
    for (auto* button : dialog->findChildren<QPushButton*>()) {
      if (is.isToolkits ? button->isDefault() : ok == nullptr || button->x() > ok->x()) ok = button;
    }
    QVERIFY(ok != nullptr);
    take();
  }
  bool isOpen() { return isShown(is.window); }
  void change() {
    if (is.change != nullptr) is.change(*this);
  }
  // What the keyboard reaches, in the order of Tab.
  QList<QWidget*> stops() {
    QList<QWidget*> all;
    QWidget* first = dialog->focusWidget() ? dialog->focusWidget() : dialog;
    QWidget* each = first;
    do {
      const bool isReached = each->isVisible() && each->isEnabled() && (each->focusPolicy() & Qt::TabFocus) != 0 &&
                             each->window() == dialog && each != dialog && each->focusProxy() == nullptr;
      if (isReached) all << each;
      each = each->nextInFocusChain();
    } while (each != first);
    return all;
  }

  const SheetCase& is;
  QDialog* dialog = nullptr;
  QPushButton* ok = nullptr;
};

#define COMPARE_SENT(actual, expected)                                                               \
  do {                                                                                               \
    const Sent actualSent = actual;                                                                  \
    const Sent expectedSent = expected;                                                              \
    QVERIFY2(actualSent == expectedSent,                                                             \
             ("\nsent " + described(actualSent) + "instead of " + described(expectedSent)).c_str()); \
  } while (false)

class SheetPromises : public QObject {
  Q_OBJECT

 public:
  static void initMain() { useOwnHome(); }

 protected:
  SheetPromises(std::vector<SheetCase> sheets, std::vector<AlertCase> alerts)
      : mSheets(std::move(sheets)), mAlerts(std::move(alerts)) {}

 private slots:
  void initTestCase() {
    QApplication::setStyle(new SkarnStyle);
    QVERIFY(writeTestFile(qEnvironmentVariable("XDG_DATA_HOME") + "/applications/editor.desktop",
                          "[Desktop Entry]\nType=Application\nName=Editor\nExec=editor\n"));
  }

  void the_keyboard_begins_in_what_is_filled_first_data() { addSheets(); }
  void the_keyboard_begins_in_what_is_filled_first() {
    QFETCH(std::size_t, index);
    if (mSheets[index].field == nullptr) QSKIP("the toolkit decides");
    OpenSheet sheet(mSheets[index]);
    QVERIFY(sheet.dialog->focusWidget() != nullptr);
    QCOMPARE(sheet.dialog->focusWidget()->objectName(), QLatin1String(sheet.is.field));
  }

  void the_keyboard_goes_back_to_where_it_was_data() { addSheets(); }
  void the_keyboard_goes_back_to_where_it_was() {
    QFETCH(std::size_t, index);
    OpenSheet sheet(mSheets[index]);
    sheet.change();
    QTest::keyClick(sheet.dialog, Qt::Key_Escape);
    QVERIFY(!sheet.isOpen());
    QVERIFY(sheet.window.focusWidget() != nullptr);
    QCOMPARE(sheet.window.focusWidget()->objectName(), QLatin1String(sheet.is.from));
    if (sheet.is.confirmed == nullptr || sheet.is.staysOpen || sheet.is.isToolkits) return;
    sheet.open();
    sheet.change();
    QTest::keyClick(sheet.dialog->focusWidget(), Qt::Key_Return);
    QVERIFY(!sheet.isOpen());
    QCOMPARE(sheet.window.focusWidget()->objectName(), QLatin1String(sheet.is.from));
  }

  void tab_goes_in_the_order_of_reading_data() { addSheets(); }
  void tab_goes_in_the_order_of_reading() {
    QFETCH(std::size_t, index);
    if (mSheets[index].isToolkits) QSKIP("the toolkit decides");
    OpenSheet sheet(mSheets[index]);
    sheet.change();
    const QList<QWidget*> stops = sheet.stops();
    const auto place = [&](const QWidget* stop) {
      return QRect(stop->mapTo(sheet.dialog, QPoint(0, 0)), stop->size());
    };
    int wraps = 0;
    for (int i = 0; i < stops.size(); ++i) {
      const QRect here = place(stops[i]);
      const QRect next = place(stops[(i + 1) % stops.size()]);
      const bool isBehind = next.left() > here.right();
      const bool isBelow = next.top() > here.bottom();
      const bool isAbove = next.bottom() < here.top();
      if (!(isBehind || isBelow) || (isAbove && !isBehind)) ++wraps;
    }
    QVERIFY2(wraps <= 1, qPrintable(namesOf(stops)));
  }

  void an_ok_that_would_change_nothing_says_so_data() { addSheets(); }
  void an_ok_that_would_change_nothing_says_so() {
    QFETCH(std::size_t, index);
    if (mSheets[index].reason == nullptr) QSKIP("it always does something");
    OpenSheet sheet(mSheets[index]);
    if (sheet.is.idle != nullptr) sheet.is.idle(sheet);
    const QString reason = localized(sheet.is.reason);
    QCOMPARE(sheet.ok->isEnabled(), sheet.is.staysEnabled);
    QCOMPARE(sheet.ok->toolTip(), reason);
    if (sheet.is.staysEnabled && !sheet.is.isToolkits) QCOMPARE(linesThatSay(sheet, reason), 1);
    if (!sheet.ok->isEnabled()) {
      const bool isOnAnotherButton = isButton(*sheet.dialog->focusWidget());
      QTest::keyClick(sheet.dialog, Qt::Key_Return);
      QCOMPARE(sheet.isOpen(), !isOnAnotherButton);
      COMPARE_SENT(sheet.take(), Sent{});
    }
    if (sheet.is.change == nullptr) return;
    if (sheet.is.idle != nullptr) {
      QTest::keyClick(sheet.dialog, Qt::Key_Escape);
      sheet.open();
    }
    sheet.change();
    QVERIFY(sheet.ok->isEnabled());
    QCOMPARE(sheet.ok->toolTip(), QString());
    QCOMPARE(linesThatSay(sheet, reason), 0);
  }

  void return_confirms_from_every_field_data() { addSheets(); }
  void return_confirms_from_every_field() {
    QFETCH(std::size_t, index);
    const SheetCase& is = mSheets[index];
    if (is.confirmed == nullptr) QSKIP("it has nothing to confirm");
    OpenSheet sheet(is);
    sheet.change();
    int fields = 0;
    for (const QWidget* stop : sheet.stops()) fields += !isButton(*stop);
    if (is.isToolkits) fields = 0;
    for (int field = 0; field < std::max(fields, 1); ++field) {
      if (!sheet.isOpen()) {
        sheet.open();
        sheet.change();
      }
      QList<QWidget*> stops = sheet.stops();
      erase_if(stops, [](const QWidget* stop) { return isButton(*stop); });
      QWidget* stop = stops.isEmpty() || is.isToolkits ? sheet.dialog : stops[field];
      stop->setFocus(Qt::TabFocusReason);
      sheet.take();
      QTest::keyClick(stop, Qt::Key_Return);
      QVERIFY2(sheet.isOpen() == is.staysOpen, qPrintable(stop->objectName()));
      COMPARE_SENT(sheet.take(), is.confirmed(sheet));
      if (is.staysOpen) {
        QTest::keyClick(sheet.dialog, Qt::Key_Escape);
        sheet.take();
      }
    }
  }

  void return_presses_the_button_that_has_the_keyboard_data() { addSheets(); }
  void return_presses_the_button_that_has_the_keyboard() {
    QFETCH(std::size_t, index);
    const SheetCase& is = mSheets[index];
    if (is.isToolkits) QSKIP("the toolkit decides");
    OpenSheet sheet(is);
    sheet.change();
    int buttons = 0;
    for (QWidget* stop : sheet.stops()) {
      auto* button = qobject_cast<QPushButton*>(stop);
      if (button == nullptr) continue;
      ++buttons;
      button->setFocus(Qt::TabFocusReason);
      QVERIFY2(button->isDefault(), qPrintable(button->objectName()));
    }
    QVERIFY(buttons > 0);
  }

  void escape_cancels_from_everywhere_and_sends_nothing_data() { addSheets(); }
  void escape_cancels_from_everywhere_and_sends_nothing() {
    QFETCH(std::size_t, index);
    const SheetCase& is = mSheets[index];
    OpenSheet sheet(is);
    sheet.change();
    const auto count = is.isToolkits ? 1 : sheet.stops().size();
    for (int i = 0; i < count; ++i) {
      if (!sheet.isOpen()) {
        sheet.open();
        sheet.change();
        sheet.take();
      }
      const QList<QWidget*> stops = sheet.stops();
      QWidget* stop = is.isToolkits || i >= stops.size() ? sheet.dialog : stops[i];
      stop->setFocus(Qt::TabFocusReason);
      QTest::keyClick(stop, Qt::Key_Escape);
      QVERIFY2(!sheet.isOpen(), qPrintable(stop->objectName()));
      COMPARE_SENT(sheet.take(), is.cancelled(sheet));
    }
  }

  void escape_closes_a_list_that_is_open_before_the_sheet_data() { addSheets(); }
  void escape_closes_a_list_that_is_open_before_the_sheet() {
    QFETCH(std::size_t, index);
    const SheetCase& is = mSheets[index];
    if (is.isToolkits) QSKIP("the toolkit decides");
    OpenSheet sheet(is);
    const auto lists = sheet.dialog->findChildren<QComboBox*>();
    if (lists.isEmpty()) QSKIP("it has no list");
    for (QComboBox* list : lists) {
      list->showPopup();
      QTRY_VERIFY(list->view()->isVisible());
      QTest::keyClick(list->view(), Qt::Key_Escape);
      QTRY_VERIFY(!list->view()->isVisible());
      QVERIFY(sheet.isOpen());
    }
    COMPARE_SENT(sheet.take(), Sent{});
  }

  // --- Alerts

  void nothing_is_lost_by_return_or_escape_in_an_alert_data() { addAlerts(); }
  void nothing_is_lost_by_return_or_escape_in_an_alert() {
    QFETCH(std::size_t, index);
    if (mAlerts.empty()) QSKIP("it asks in no alert");
    const AlertCase& is = mAlerts[index];
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
      SheetBench bench;
      auto* alert = openAlert(bench, is);
      QCOMPARE(alert->defaultButton()->text(), localized("lkeyCancel"));
      QTest::keyClick(alert, key);
      QTRY_VERIFY(alertOf(bench.window) == nullptr);
      COMPARE_SENT(bench.take(), Sent{});
      QCOMPARE(bench.window.focusWidget()->objectName(), QLatin1String(is.from));
      verifyFileIs(bench, "before");
    }
  }

  void the_button_of_an_alert_does_what_it_says_data() { addAlerts(); }
  void the_button_of_an_alert_does_what_it_says() {
    QFETCH(std::size_t, index);
    if (mAlerts.empty()) QSKIP("it asks in no alert");
    const AlertCase& is = mAlerts[index];
    SheetBench bench;
    auto* alert = openAlert(bench, is);
    QTest::keyClick(alert->focusWidget(), Qt::Key_Tab);
    QCOMPARE(qobject_cast<QPushButton*>(alert->focusWidget())->text(), localized(is.action));
    QTest::keyClick(alert->focusWidget(), Qt::Key_Return);
    QTRY_VERIFY(alertOf(bench.window) == nullptr);
    Sent sent = bench.take();
    // What a deletion brings along is tested where it is made.
    const Sent expected = is.confirmed(bench);
    sent.requests.resize(std::min(sent.requests.size(), expected.requests.size()));
    COMPARE_SENT(sent, expected);
  }

 private:
  void addSheets() {
    QTest::addColumn<std::size_t>("index");
    std::size_t index = 0;
    for (const SheetCase& sheet : mSheets) QTest::newRow(sheet.name) << index++;
  }
  void addAlerts() {
    QTest::addColumn<std::size_t>("index");
    std::size_t index = 0;
    for (const AlertCase& alert : mAlerts) QTest::newRow(alert.name) << index++;
    if (mAlerts.empty()) QTest::newRow("none") << index;
  }
  static QString namesOf(const QList<QWidget*>& widgets) {
    QStringList names;
    for (const QWidget* widget : widgets) names << widget->objectName();
    return names.join(QLatin1Char(' '));
  }
  static int linesThatSay(const OpenSheet& sheet, const QString& words) {
    return static_cast<int>(std::ranges::count_if(sheet.dialog->findChildren<QLabel*>(), [&](const QLabel* label) {
      return label->isVisible() && label->text() == words;
    }));
  }
  static QMessageBox* openAlert(SheetBench& bench, const AlertCase& is) {
    bench.giveKeyboardTo(is.from);
    is.open(bench);
    QMessageBox* alert = alertOf(bench.window);
    if (alert == nullptr) qFatal("there is no alert");
    QApplication::setActiveWindow(alert);
    bench.take();
    return alert;
  }
  static void verifyFileIs(const SheetBench& bench, const QByteArray& content) {
    QFile file(bench.folder.filePath(QStringLiteral("There.SkarnProfile")));
    if (file.open(QIODevice::ReadOnly)) QCOMPARE(file.readAll(), content);
  }

  std::vector<SheetCase> mSheets;
  std::vector<AlertCase> mAlerts;
};

}  // namespace skarn::test
