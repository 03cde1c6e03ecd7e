#include "ctl/FocusWords.h"

#include <string_view>

#include "protocol/Focus.h"

namespace vorn::ctl {

namespace {

namespace words = focus::keys;

std::string applicationOf(const PropertyList& state) {
  std::string text = state[words::Name].toString();
  for (const auto key : {words::Identifier, words::Executable}) {
    const std::string value = state[key].toString();
    if (!value.empty() && value != text) text += (text.empty() ? "" : ", ") + value;
  }
  if (!text.empty()) return text;
  return state[words::Source].string().empty() ? "unknown" : "the bare desktop";
}

std::string sourceOf(std::string_view source) {
  if (source == focus::sources::X11) return "the window manager of the X server";
  if (source == focus::sources::Wlroots) return "the compositor";
  if (source == focus::sources::KWin) return "KWin";
  if (source == focus::sources::Bus) return "a program, over the session bus";
  return source.empty() ? "nothing" : std::string(source);
}

std::string remedyOf(std::string_view need) {
  if (need == focus::needs::GnomeExtension) return "the GNOME Shell extension of this program, enabled";
  if (need == focus::needs::KDE) return "a KWin that takes scripts";
  if (need == focus::needs::Display) return "a display of this session that the engine can reach";
  if (need == focus::needs::Compositor) return "a window manager or compositor that tells which window is in front";
  return std::string(need);
}

std::string choiceOf(const PropertyList& state) {
  const std::string profile = state[words::Profile].toString();
  if (!profile.empty()) return "\"" + profile + "\"";
  return state[words::IsUsed].toBool() ? "none for this application" : "none follows an application";
}

}  // namespace

std::vector<std::string> linesOfFocus(const PropertyList& state) {
  std::vector<std::string> lines = {"In front:  " + applicationOf(state),
                                    "Told by:   " + sourceOf(state[words::Source].string()),
                                    "Profile:   " + choiceOf(state)};
  const std::string_view need = state[words::Needs].string();
  if (!need.empty()) lines.push_back("Needs:     " + remedyOf(need));
  return lines;
}

}  // namespace vorn::ctl
