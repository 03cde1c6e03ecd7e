#include "buttons/CommonChords.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "model/HidUsages.h"
#include "model/SettingsKeys.h"
#include "platform/Localization.h"

namespace skarn {

namespace keys = vorn::keys;

namespace {

// The left modifiers of a keyboard report; the right ones follow.
constexpr unsigned control = 1;
constexpr unsigned shift = 2;
constexpr unsigned alt = 4;
constexpr unsigned command = 8;
constexpr unsigned leftModifiers = 0x0f;
constexpr unsigned bitsOfASide = 4;

constexpr int letter(char capital) {
  return vorn::hid::firstKey + (capital - 'A');
}

constexpr int tab = 43;
constexpr int f4 = 61;
constexpr int insert = 73;
constexpr int deleteForward = 76;

struct Chord {
  unsigned modifiers;
  int usage;
  const char* meaningKey;
};

constexpr std::array chords = {
    Chord{control, letter('C'), "lkeyChordCopy"},
    Chord{control, letter('V'), "lkeyChordPaste"},
    Chord{control, letter('X'), "lkeyChordCut"},
    Chord{control, letter('Z'), "lkeyChordUndo"},
    Chord{control, letter('Y'), "lkeyChordRedo"},
    Chord{control | shift, letter('Z'), "lkeyChordRedo"},
    Chord{control, letter('S'), "lkeyChordSave"},
    Chord{control | shift, letter('S'), "lkeyChordSaveAs"},
    Chord{control, letter('A'), "lkeyChordSelectAll"},
    Chord{control, letter('F'), "lkeyChordFind"},
    Chord{control, letter('P'), "lkeyChordPrint"},
    Chord{control, letter('N'), "lkeyChordNew"},
    Chord{control, letter('O'), "lkeyChordOpen"},
    Chord{control, letter('W'), "lkeyChordClose"},
    Chord{alt, f4, "lkeyChordCloseWindow"},
    Chord{control, letter('Q'), "lkeyChordQuit"},
    Chord{control, letter('T'), "lkeyChordNewTab"},
    Chord{control | shift, letter('T'), "lkeyChordReopenTab"},
    Chord{control, tab, "lkeyChordNextTab"},
    Chord{control | shift, tab, "lkeyChordPreviousTab"},
    Chord{control, letter('R'), "lkeyChordReload"},
    Chord{control, letter('B'), "lkeyChordBold"},
    Chord{control, letter('I'), "lkeyChordItalic"},
    Chord{control, letter('U'), "lkeyChordUnderline"},
    Chord{alt, tab, "lkeyChordSwitchWindow"},
    Chord{command, letter('L'), "lkeyChordLockScreen"},
    Chord{alt, vorn::hid::leftArrow, "lkeyChordBack"},
    Chord{alt, vorn::hid::rightArrow, "lkeyChordForward"},
    Chord{control, insert, "lkeyChordCopy"},
    Chord{shift, insert, "lkeyChordPaste"},
    Chord{shift, deleteForward, "lkeyChordCut"},
};

}  // namespace

QString commonMeaning(const vorn::PropertyList& record) {
  const auto held = static_cast<std::uint8_t>(record[keys::Param2].toInt());
  const unsigned modifiers = (held | held >> bitsOfASide) & leftModifiers;
  const int usage = record[keys::Param1].toInt();
  const auto* const found = std::ranges::find_if(
      chords, [&](const Chord& chord) { return chord.modifiers == modifiers && chord.usage == usage; });
  return found == chords.end() ? QString() : localized(found->meaningKey);
}

}  // namespace skarn
