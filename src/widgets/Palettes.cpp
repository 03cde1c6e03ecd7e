#include "widgets/Palettes.h"

namespace skarn {

namespace {

struct Shades {
  QRgb window, base, alternate, text, muted, disabled, button, hairline, quiet, dark, highlight, highlightedText, link;
};

constexpr Shades light = {.window = 0xfff7f7f8,
                          .base = 0xffffffff,
                          .alternate = 0xfff1f1f3,
                          .text = 0xff1d1f23,
                          .muted = 0xff5f636b,
                          .disabled = 0xffa0a3aa,
                          .button = 0xffffffff,
                          .hairline = 0xffd9dbdf,
                          .quiet = 0xffe9eaed,
                          .dark = 0xff9a9da5,
                          .highlight = 0xffe1e5ec,
                          .highlightedText = 0xff1d1f23,
                          .link = 0xffb23a15};

constexpr Shades dark = {.window = 0xff1f2023,
                         .base = 0xff26282c,
                         .alternate = 0xff2a2c31,
                         .text = 0xffecedef,
                         .muted = 0xffa5a9b1,
                         .disabled = 0xff6b6f77,
                         .button = 0xff2d2f34,
                         .hairline = 0xff3b3e44,
                         .quiet = 0xff34363c,
                         .dark = 0xff6b6f77,
                         .highlight = 0xff3a404b,
                         .highlightedText = 0xffffffff,
                         .link = 0xffff8a66};

QPalette paletteOf(const Shades& shades) {
  QPalette palette;
  const auto set = [&palette](QPalette::ColorRole role, QRgb color, QRgb disabled) {
    palette.setColor(QPalette::Active, role, color);
    palette.setColor(QPalette::Inactive, role, color);
    palette.setColor(QPalette::Disabled, role, disabled);
  };
  const auto ground = [&set](QPalette::ColorRole role, QRgb color) { set(role, color, color); };
  const auto ink = [&set, &shades](QPalette::ColorRole role, QRgb color) { set(role, color, shades.disabled); };
  ground(QPalette::Window, shades.window);
  ground(QPalette::Base, shades.base);
  ground(QPalette::AlternateBase, shades.alternate);
  ground(QPalette::Button, shades.button);
  ground(QPalette::Mid, shades.hairline);
  ground(QPalette::Midlight, shades.quiet);
  ground(QPalette::Light, shades.base);
  ground(QPalette::Dark, shades.dark);
  ground(QPalette::Shadow, 0xff000000);
  ground(QPalette::Highlight, shades.highlight);
  ground(QPalette::ToolTipBase, shades.base);
  ground(QPalette::ToolTipText, shades.text);
  ink(QPalette::WindowText, shades.text);
  ink(QPalette::Text, shades.text);
  ink(QPalette::ButtonText, shades.text);
  ink(QPalette::BrightText, shades.text);
  ink(QPalette::HighlightedText, shades.highlightedText);
  ink(QPalette::PlaceholderText, shades.muted);
  ink(QPalette::Link, shades.link);
  ink(QPalette::LinkVisited, shades.link);
  return palette;
}

}  // namespace

QPalette lightPalette() {
  return paletteOf(light);
}

QPalette darkPalette() {
  return paletteOf(dark);
}

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QColor accentColor(const QPalette& palette) {
  return isDark(palette) ? QColor(0xff, 0x7a, 0x52) : QColor(0xe4, 0x57, 0x2e);
}

}  // namespace skarn
