#include "app/KeyUsages.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace skarn {

namespace hid = vorn::hid;
using vorn::HidUsage;

namespace {

struct Pair {
  int key = 0;
  hid::Usage usage = 0;
};

// The characters of a keyboard of the United States, without and with Shift, and the keys that every layout has.
constexpr std::array pairs = {Pair{Qt::Key_Exclam, 30},
                              Pair{Qt::Key_At, 31},
                              Pair{Qt::Key_NumberSign, 32},
                              Pair{Qt::Key_Dollar, 33},
                              Pair{Qt::Key_Percent, 34},
                              Pair{Qt::Key_AsciiCircum, 35},
                              Pair{Qt::Key_Ampersand, 36},
                              Pair{Qt::Key_Asterisk, 37},
                              Pair{Qt::Key_ParenLeft, 38},
                              Pair{Qt::Key_0, 39},
                              Pair{Qt::Key_ParenRight, 39},
                              Pair{Qt::Key_Return, 40},
                              Pair{Qt::Key_Escape, 41},
                              Pair{Qt::Key_Backspace, 42},
                              Pair{Qt::Key_Tab, 43},
                              Pair{Qt::Key_Backtab, 43},
                              Pair{Qt::Key_Space, 44},
                              Pair{Qt::Key_Minus, 45},
                              Pair{Qt::Key_Underscore, 45},
                              Pair{Qt::Key_Equal, 46},
                              Pair{Qt::Key_Plus, 46},
                              Pair{Qt::Key_BracketLeft, 47},
                              Pair{Qt::Key_BraceLeft, 47},
                              Pair{Qt::Key_BracketRight, 48},
                              Pair{Qt::Key_BraceRight, 48},
                              Pair{Qt::Key_Backslash, 49},
                              Pair{Qt::Key_Bar, 49},
                              Pair{Qt::Key_Semicolon, 51},
                              Pair{Qt::Key_Colon, 51},
                              Pair{Qt::Key_Apostrophe, 52},
                              Pair{Qt::Key_QuoteDbl, 52},
                              Pair{Qt::Key_QuoteLeft, 53},
                              Pair{Qt::Key_AsciiTilde, 53},
                              Pair{Qt::Key_Comma, 54},
                              Pair{Qt::Key_Less, 54},
                              Pair{Qt::Key_Period, 55},
                              Pair{Qt::Key_Greater, 55},
                              Pair{Qt::Key_Slash, 56},
                              Pair{Qt::Key_Question, 56},
                              Pair{Qt::Key_CapsLock, 57},
                              Pair{Qt::Key_Print, 70},
                              Pair{Qt::Key_SysReq, 70},
                              Pair{Qt::Key_ScrollLock, 71},
                              Pair{Qt::Key_Pause, 72},
                              Pair{Qt::Key_Insert, 73},
                              Pair{Qt::Key_Home, 74},
                              Pair{Qt::Key_PageUp, 75},
                              Pair{Qt::Key_Delete, 76},
                              Pair{Qt::Key_End, 77},
                              Pair{Qt::Key_PageDown, 78},
                              Pair{Qt::Key_Right, 79},
                              Pair{Qt::Key_Left, 80},
                              Pair{Qt::Key_Down, 81},
                              Pair{Qt::Key_Up, 82},
                              Pair{Qt::Key_NumLock, 83},
                              Pair{Qt::Key_Enter, 88},
                              Pair{Qt::Key_Menu, 101},
                              Pair{Qt::Key_Help, 117},
                              Pair{Qt::Key_Undo, 122},
                              Pair{Qt::Key_Cut, 123},
                              Pair{Qt::Key_Copy, 124},
                              Pair{Qt::Key_Paste, 125},
                              Pair{Qt::Key_Find, 126},
                              Pair{Qt::Key_VolumeMute, 127},
                              Pair{Qt::Key_VolumeUp, 128},
                              Pair{Qt::Key_VolumeDown, 129},
                              Pair{Qt::Key_Control, hid::leftControl},
                              Pair{Qt::Key_Shift, hid::leftShift},
                              Pair{Qt::Key_Alt, hid::leftAlt},
                              Pair{Qt::Key_Meta, hid::leftCommand},
                              Pair{Qt::Key_Super_L, hid::leftCommand},
                              Pair{Qt::Key_Super_R, hid::rightCommand},
                              Pair{Qt::Key_AltGr, hid::rightAlt}};

// On the number pad, with its digits and without them.
constexpr std::array padPairs = {
    Pair{Qt::Key_Slash, 84},  Pair{Qt::Key_Asterisk, 85}, Pair{Qt::Key_Minus, 86},    Pair{Qt::Key_Plus, 87},
    Pair{Qt::Key_Enter, 88},  Pair{Qt::Key_1, 89},        Pair{Qt::Key_End, 89},      Pair{Qt::Key_2, 90},
    Pair{Qt::Key_Down, 90},   Pair{Qt::Key_3, 91},        Pair{Qt::Key_PageDown, 91}, Pair{Qt::Key_4, 92},
    Pair{Qt::Key_Left, 92},   Pair{Qt::Key_5, 93},        Pair{Qt::Key_Clear, 93},    Pair{Qt::Key_6, 94},
    Pair{Qt::Key_Right, 94},  Pair{Qt::Key_7, 95},        Pair{Qt::Key_Home, 95},     Pair{Qt::Key_8, 96},
    Pair{Qt::Key_Up, 96},     Pair{Qt::Key_9, 97},        Pair{Qt::Key_PageUp, 97},   Pair{Qt::Key_0, 98},
    Pair{Qt::Key_Insert, 98}, Pair{Qt::Key_Period, 99},   Pair{Qt::Key_Comma, 99},    Pair{Qt::Key_Delete, 99},
    Pair{Qt::Key_Equal, 103}};

// The right ones of the modifiers, by their X11 key symbols (X11/keysymdef.h), which Wayland tells too.
constexpr std::array rightModifiers = {Pair{0xffe2, hid::rightShift},   Pair{0xffe4, hid::rightControl},
                                       Pair{0xffe8, hid::rightCommand}, Pair{0xffea, hid::rightAlt},
                                       Pair{0xffec, hid::rightCommand}, Pair{0xfe03, hid::rightAlt}};

template <std::size_t N>
std::optional<hid::Usage> find(const std::array<Pair, N>& in, int key) {
  const auto found = std::ranges::find(in, key, &Pair::key);
  return found == in.end() ? std::nullopt : std::optional(found->usage);
}

bool isModifierKey(int key) {
  return key == Qt::Key_Control || key == Qt::Key_Shift || key == Qt::Key_Alt || key == Qt::Key_Meta ||
         key == Qt::Key_AltGr;
}

// On the number pad: by what Qt says of it, which is nothing on Wayland, or by the X11 key symbol, XK_KP_Space to
// XK_KP_Equal.
bool isOnPad(const QKeyEvent& event) {
  const quint32 symbol = event.nativeVirtualKey();
  return event.modifiers().testFlag(Qt::KeypadModifier) || (symbol >= 0xff80 && symbol <= 0xffbd);
}

std::optional<hid::Usage> usageOfName(const QKeyEvent& event) {
  const int key = event.key();
  if (isOnPad(event)) {
    if (const auto usage = find(padPairs, key)) return usage;
  }
  if (isModifierKey(key)) {
    if (const auto usage = find(rightModifiers, static_cast<int>(event.nativeVirtualKey()))) return usage;
  }
  if (key >= Qt::Key_A && key <= Qt::Key_Z) return static_cast<hid::Usage>(hid::firstKey + (key - Qt::Key_A));
  if (key >= Qt::Key_1 && key <= Qt::Key_9) return static_cast<hid::Usage>(30 + (key - Qt::Key_1));
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return static_cast<hid::Usage>(58 + (key - Qt::Key_F1));
  if (key >= Qt::Key_F13 && key <= Qt::Key_F24) return static_cast<hid::Usage>(104 + (key - Qt::Key_F13));
  return find(pairs, key);
}

// A key that types a character, which another layout may put elsewhere.
bool isCharacter(hid::Usage usage) {
  return (usage >= hid::firstKey && usage <= hid::lastCharacterKey) || (usage >= 45 && usage <= 56) || usage == 100 ||
         (usage >= 135 && usage <= 137);
}
bool isDigitOfTheRow(hid::Usage usage) {
  return usage >= 30 && usage <= 39;
}
bool isLetter(int key) {
  return key >= Qt::Key_A && key <= Qt::Key_Z;
}

}  // namespace

std::optional<HidUsage> usageOf(const QKeyEvent& event, bool tellsScanCodes) {
  const std::optional<hid::Usage> named = usageOfName(event);
  const auto ofName = named ? std::optional(HidUsage{hid::keyboardPage, *named}) : std::nullopt;
  const std::uint32_t code = event.nativeScanCode();
  const auto scanned =
      tellsScanCodes && code > vorn::xkbOffset ? vorn::usageOfKernelKey(code - vorn::xkbOffset) : std::nullopt;
  if (!scanned || scanned->page != hid::keyboardPage) return ofName;
  if (!named) return scanned;
  // No layout puts one of these letters on the row of the digits.
  if (isCharacter(scanned->usage) && isCharacter(*named))
    return isDigitOfTheRow(scanned->usage) && isLetter(event.key()) ? ofName : scanned;
  return ofName;
}

std::optional<HidUsage> usageOf(Qt::MouseButton button) {
  constexpr std::array<Qt::MouseButton, hid::lastFurtherButton> buttons = {
      Qt::LeftButton,   Qt::RightButton,  Qt::MiddleButton, Qt::ExtraButton1, Qt::ExtraButton2,
      Qt::ExtraButton3, Qt::ExtraButton4, Qt::ExtraButton5, Qt::ExtraButton6};
  const auto* const found = std::ranges::find(buttons, button);
  if (found == buttons.end()) return std::nullopt;
  return HidUsage{hid::buttonPage, static_cast<hid::Usage>(hid::primaryButton + std::distance(buttons.begin(), found))};
}

}  // namespace skarn
