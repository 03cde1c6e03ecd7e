// The Macros tab in a window, over a delegate that writes down every call and answers as the test says.
#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <functional>
#include <map>
#include <vector>

#include "macros/MacroControllerDelegate.h"
#include "macros/MouseMacrosController.h"
#include "model/MacroEvents.h"
#include "model/eventParser.h"
#include "platform/Localization.h"
#include "support/RecordingNotificationCenter.h"
#include "support/SampleSettings.h"
#include "widgets/PullDownButton.h"

namespace skarn::test {

// Every call as text, "name(argument, argument)", with whole dictionaries.
class RecordingMacros : public MacroControllerDelegate {
 public:
  explicit RecordingMacros(MouseMacrosController& answering) : tab(answering) {}

  std::optional<vorn::ReturnStatus> addMacroWithSettings(const PropertyList& macro) override {
    note("addMacroWithSettings(" + text(macro) + ")");
    return answerToAdd;
  }
  void deleteMacroAtIndex(int macro) override { note(QStringLiteral("deleteMacroAtIndex(%1)").arg(macro)); }
  void renameMacroAtIndex(int macro, std::string_view name) override {
    note(QStringLiteral("renameMacroAtIndex(%1, %2)").arg(macro).arg(QString::fromStdString(std::string(name))));
  }
  void reloadMacros() override { note("reloadMacros()"); }
  void getMacroDetailsForMacroAtIndex(int macro) override {
    note(QStringLiteral("getMacroDetailsForMacroAtIndex(%1)").arg(macro));
    if (answersDetails) tab.updateSelectedMacroWithMacroDetails(lines[macro].arrayOrEmpty());
  }
  PropertyList getSequenceDetails(std::uint8_t macro, std::uint8_t event) override {
    note(QStringLiteral("getSequenceDetails(%1, %2)").arg(macro).arg(event));
    const auto found = sequences.find(event);
    return found != sequences.end() ? found->second : sequence;
  }
  void updateSequenceInfo(std::uint8_t macro, std::uint8_t event, const PropertyList& newDict) override {
    note(QStringLiteral("updateSequenceInfo(%1, %2, %3)").arg(macro).arg(event).arg(text(newDict)));
  }
  void updateFurtherSequenceInfo(std::uint8_t macro, std::uint8_t event, const PropertyList& newDict) override {
    note(QStringLiteral("updateFurtherSequenceInfo(%1, %2, %3)").arg(macro).arg(event).arg(text(newDict)));
  }
  std::optional<vorn::ReturnStatus> replaceSequence(const PropertyList& replacement, int macro,
                                                    const PropertyList& record) override {
    expectedSequences.push_back(record[vorn::keys::Sequence]);
    note(QStringLiteral("replaceSequence(%1, %2, %3)")
             .arg(text(replacement))
             .arg(macro)
             .arg(QString::fromStdString(record[vorn::keys::MacroName].toString())));
    return answerToReplace;
  }
  void removeEventAtIndex(int event, int macro) override {
    note(QStringLiteral("removeEventAtIndex(%1, %2)").arg(event).arg(macro));
  }
  void removeAllEventsForMacroAtIndex(int macro) override {
    note(QStringLiteral("removeAllEventsForMacroAtIndex(%1)").arg(macro));
  }
  void setAllEventsDelay(int delay, int macro, bool hasNoDelay) override {
    note(QStringLiteral("setAllEventsDelay(%1, %2, %3)").arg(delay).arg(macro).arg(yesNo(hasNoDelay)));
  }
  void setNewDelay(int milliseconds, int event, int macro) override {
    note(QStringLiteral("setNewDelay(%1, %2, %3)").arg(milliseconds).arg(event).arg(macro));
  }
  void startMacroRecording(bool append, int macro) override {
    note(QStringLiteral("startMacroRecording(%1, %2)").arg(yesNo(append)).arg(macro));
  }
  void stopMacroRecording() override { note("stopMacroRecording()"); }
  void saveRecordedEventsForMacroAtIndex(int macro, bool isNewRecording) override {
    note(QStringLiteral("saveRecordedEventsForMacroAtIndex(%1, %2)").arg(macro).arg(yesNo(isNewRecording)));
  }
  void startEditHID() override { note("startEditHID()"); }
  void stopSingleKeyRecording() override { note("stopSingleKeyRecording()"); }

  // What was called since the last look.
  QStringList take() { return std::exchange(mCalls, {}); }

  static QString text(const PropertyList& value) { return QString::fromStdString(value.description()); }

  MouseMacrosController& tab;
  std::map<int, PropertyList> lines;  // of each macro
  PropertyList sequence = PropertyList::dictionary();
  std::map<int, PropertyList> sequences;  // where they differ from it, by row
  bool answersDetails = true;
  std::optional<vorn::ReturnStatus> answerToAdd = vorn::ReturnStatus::Done;
  std::optional<vorn::ReturnStatus> answerToReplace = vorn::ReturnStatus::Done;
  std::vector<PropertyList> expectedSequences;      // of the macros whose sequences were to be replaced
  std::function<void(const QString& call)> onCall;  // during a call

 private:
  static QString yesNo(bool value) { return value ? QStringLiteral("YES") : QStringLiteral("NO"); }
  void note(const QString& call) {
    mCalls << call;
    if (onCall) onCall(call);
  }

  QStringList mCalls;
};

// Lines of so many events: an event, and a delay and an event for each further one.
inline PropertyList linesOfEvents(int events) {
  std::vector<PropertyList> lines;
  for (int event = 0; event < events; ++event) {
    if (event > 0) lines.emplace_back("0.020 seconds delay\n");
    lines.emplace_back("Key Press " + std::to_string(event));
  }
  return PropertyList::array(std::move(lines));
}

// The lines of a record's events.
inline PropertyList linesOf(const PropertyList& record) {
  return vorn::eventParser::getMessagesArray(vorn::macroEvents(record));
}

inline PropertyList macrosNamed(const QStringList& names) {
  std::vector<PropertyList> records;
  for (const QString& name : names) records.push_back(macro(name.toStdString(), {}));
  return PropertyList::array(std::move(records));
}

// What "+" adds.
inline PropertyList newMacro(const char* name) {
  return PropertyList::dictionary({{"MacroName", name},
                                   {"delay", 20},
                                   {"ResponseMsgPortName", "SkarnConfiguratorReplyPort"},
                                   {"sequence", PropertyList::dictionary()}});
}

// The call that adds it.
inline QString added(const char* name) {
  return "addMacroWithSettings(" + RecordingMacros::text(newMacro(name)) + ")";
}

struct MacrosFixture {
  explicit MacrosFixture(const QStringList& names = {"Fireball", "Greeting", "Build order"}) : delegate(*tab) {
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(tab);
    window.resize(1180, 760);
    delegate.lines = {{0, linesOfEvents(3)}, {1, linesOfEvents(1)}};
    tab->setMMacroDelegate(&delegate);
    tab->setMMacrosWindow(&window);
    tab->setMNotificationCenter(&center);
    tab->setBeep([this] { ++beeps; });
    tab->setMMacrosSettingsArray(macrosNamed(names));
    tab->refreshTableDisplay();
    tab->tabViewDidSelectTabViewItem(tab);
    window.show();
    QApplication::setActiveWindow(&window);
  }
  ~MacrosFixture() {
    // A name that is being edited is committed when its window goes.
    tab->setMMacroDelegate(nullptr);
    tab->setMNotificationCenter(nullptr);
  }

  template <typename Widget = QWidget>
  Widget* find(const char* name) {
    auto* widget = window.findChild<Widget*>(QLatin1String(name));
    if (widget == nullptr) qFatal("there is no %s", name);
    return widget;
  }
  void click(const char* button) { QTest::mouseClick(find(button), Qt::LeftButton); }
  QTableView* macros() { return tab->mMacroTableView(); }
  QTableView* lines() { return tab->mMacroDetailsTableView(); }
  QPoint placeOf(QTableView* table, int row) {
    const QModelIndex cell = table->model()->index(row, 0);
    table->scrollTo(cell);
    return table->visualRect(cell).center();
  }
  void clickRow(QTableView* table, int row, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(table->viewport(), Qt::LeftButton, keys, placeOf(table, row));
  }
  // Selects the macro and forgets the request for its lines.
  void selectMacro(int row) {
    clickRow(macros(), row);
    delegate.take();
  }
  static int selectedRow(QTableView* table) {
    const QModelIndexList rows = table->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.constFirst().row();
  }
  static QStringList rowsOf(QTableView* table) {
    QStringList rows;
    for (int row = 0; row < table->model()->rowCount(); ++row) {
      rows << table->model()->index(row, 0).data().toString();
    }
    return rows;
  }

  // The field in which a name is being typed; none otherwise.
  QLineEdit* editor() {
    // One that has ended may still be there, hidden.
    for (auto* field : macros()->viewport()->findChildren<QLineEdit*>()) {
      if (field->isVisible()) return field;
    }
    return nullptr;
  }
  // The alert that is shown; none otherwise.
  QMessageBox* alert() {
    for (auto* shown : window.findChildren<QMessageBox*>(QStringLiteral("alert"))) {
      if (shown->isVisible()) return shown;
    }
    return nullptr;
  }

  // Another list, as a reload brings it.
  void reload(const PropertyList& list) {
    tab->setMMacrosSettingsArray(list);
    tab->refreshTableDisplay();
  }

  QString recordTitle() { return tab->mRecordMacroDetails()->text(); }
  // The controls that can be used, of those that come and go.
  QStringList enabled() {
    QStringList names;
    for (const char* name : controlNames) {
      if (find(name)->isEnabled()) names << QLatin1String(name);
    }
    return names;
  }
  static QStringList without(const QStringList& names, const QStringList& removed) {
    QStringList left;
    for (const QString& name : names) {
      if (!removed.contains(name)) left << name;
    }
    return left;
  }
  static QStringList allControls() {
    QStringList names;
    for (const char* name : controlNames) names << QLatin1String(name);
    return names;
  }

  // Chooses the item with the tag from a gear menu, if it can be chosen.
  void chooseFromGear(const char* gear, int tag) {
    auto* button = find<PullDownButton>(gear);
    button->openMenu();
    QAction* item = itemOf(*button->menu(), tag);
    button->menu()->close();
    item->trigger();
  }
  // The menu of a right click on the row, or below the rows; it closes by itself.
  QMenu* rightClick(QTableView* table, int row = 0) {
    const QPoint below = table->viewport()->rect().bottomLeft() + QPoint(5, -5);
    QTest::mouseClick(table->viewport(), Qt::RightButton, {}, row < 0 ? below : placeOf(table, row));
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  static QAction* itemOf(const QMenu& menu, int tag) {
    for (QAction* item : taggedItems(menu)) {
      if (tagOf(*item) == tag) return item;
    }
    qFatal("the menu has no item %d", tag);
    return nullptr;
  }

  void record(const PropertyList& messages) {
    center.post("MacroSequence273", "", PropertyList::dictionary({{"messagesArray", messages}}));
  }
  void press(int key, int modifier = 0) {
    center.post("SingleKeyEvent1050", "", PropertyList::dictionary({{"singleKey", key}, {"singleKeyModif", modifier}}));
  }

  static constexpr const char* controlNames[] = {
      "mMacroTableView",        "mAddMacro",        "mDeleteMacro",        "mSettingsMacro",
      "mMacroDetailsTableView", "mAddMacroDetails", "mDeleteMacroDetails", "mSettingsMacroDetails",
      "mRecordMacroDetails"};

  const bool hasTexts = installTranslations(QStringLiteral("en"));  // before the tab takes its texts
  QWidget window;
  RecordingNotificationCenter center;
  int beeps = 0;
  MouseMacrosController* tab = new MouseMacrosController(&window);
  RecordingMacros delegate;
};

}  // namespace skarn::test
