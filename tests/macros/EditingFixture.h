// A Macros tab whose first macro and a line of it are selected, with the sheet for that line.
#pragma once

#include <QDialog>
#include <QTest>

#include "macros/MacrosFixture.h"
#include "widgets/KeyCaptureField.h"

namespace skarn::test {

inline PropertyList eventOf(int command, int page, int argument) {
  return PropertyList::dictionary(
      {{"command", command}, {"delay", 20}, {"page", page}, {"argument", argument}, {"note", "kept"}});
}

struct EditingFixture : MacrosFixture {
  explicit EditingFixture(int line) {
    delegate.sequence = eventOf(1, 7, 9);
    selectMacro(0);
    clickRow(lines(), line);
  }
  void edit() { chooseFromGear("mSettingsMacroDetails", 2); }
  bool isShown(const char* sheet) { return find(sheet)->isVisible(); }
  QLineEdit& delay() { return *find<QLineEdit>("mInputMacroDelay"); }
  KeyCaptureField& field() { return *find<KeyCaptureField>("mInputMacroEvent"); }
  QString key() { return field().text(); }
  bool hasSheet() { return isShown("mEditDelayWindow") || isShown("mEditEventWindow"); }
  // What OK of the open sheet sends, with a delay entered or a key caught.
  QStringList confirmed() {
    if (isShown("mEditDelayWindow")) {
      QTest::keyClicks(&delay(), "7");
      click("mMacroDelayOK");
    } else {
      press(4);
      click("mMacroEventEditOK");
    }
    return delegate.take();
  }
};

}  // namespace skarn::test
