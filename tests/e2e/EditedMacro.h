// The Macros tab of the real window over a macro whose events are edited, and what the real engine has of them.
#pragma once

#include <QDebug>

#include "e2e/OpenMacros.h"
#include "macros/MacroMenus.h"
#include "model/MacroEdits.h"
#include "model/eventParser.h"

namespace skarn::test {

using Events = std::vector<vorn::PropertyList>;

inline vorn::PropertyList key(bool isPress, int delay, int usage) {
  return vorn::macroEvent(isPress, delay, {keyboardPage, static_cast<vorn::hid::Usage>(usage)});
}
inline vorn::PropertyList click(bool isPress, int delay, int button) {
  return vorn::macroEvent(isPress, delay, {buttonPage, static_cast<vorn::hid::Usage>(button)});
}

// A typed after 0 ms and let go after 50, B after 100 and let go after 60.
inline Events twoStrokes() {
  return {key(true, 0, keyA), key(false, 50, keyA), key(true, 100, keyB), key(false, 60, keyB)};
}

inline void add(OtherClient& other, const char* name, Events events) {
  other.ask(vorn::MessageID::AddMacro,
            vorn::PropertyList::dictionary(
                {{vorn::requestKeys::MacroContents,
                  vorn::PropertyList::dictionary(
                      {{vorn::keys::MacroName, name},
                       {vorn::keys::Delay, 20},
                       {vorn::keys::Sequence,
                        vorn::PropertyList::dictionary(
                            {{vorn::keys::Events, vorn::PropertyList::array(std::move(events))}})}})}}));
}

// The window with the macro "Combo" of two strokes, selected, before the empty macro "Other".
class EditedMacro : public OpenMacros {
 public:
  EditedMacro() {
    awaitAnnouncement();
    find<QTableView>("mMacroTableView")->selectRow(0);
  }

  QTableView* table() { return find<QTableView>("mMacroDetailsTableView"); }
  void select(const std::vector<int>& rows) {
    table()->clearSelection();
    for (const int row : rows) {
      const QModelIndex line = table()->model()->index(row, 0);
      table()->scrollTo(line);
      QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::ControlModifier, table()->visualRect(line).center());
    }
  }
  void press(Qt::Key pressed, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(table(), pressed, modifiers); }
  void choose(int tag) { chooseFromGear("mSettingsMacroDetails", tag); }
  // Whether the engine has these events, and the window their lines.
  bool has(const Events& events, int macro = 0) {
    const vorn::PropertyList expected = vorn::PropertyList::array(events);
    const vorn::PropertyList stored =
        other.bundle()[vorn::keys::Macros].at(macro)[vorn::keys::Sequence][vorn::keys::Events].arrayOrEmpty();
    if (!(stored == expected)) qWarning("stored: %s", stored.description().c_str());
    QStringList expectedLines;
    const vorn::PropertyList texts = vorn::eventParser::getMessagesArray(expected);
    for (const vorn::PropertyList& line : texts.elements()) expectedLines << QString::fromStdString(line.toString());
    if (lines() != expectedLines) qWarning() << lines();
    return stored == expected && lines() == expectedLines;
  }

  OtherClient other;
};

}  // namespace skarn::test
