#include "profiles/FollowingText.h"

#include <string_view>

#include "platform/Localization.h"
#include "protocol/Focus.h"

namespace skarn {

namespace {

namespace needs = vorn::focus::needs;
namespace sources = vorn::focus::sources;
namespace words = vorn::focus::keys;

QString tellerOf(std::string_view source) {
  if (source == sources::X11) return localized("lkeyFollowingX11");
  if (source == sources::Wlroots) return localized("lkeyFollowingWayland");
  if (source == sources::KWin) return localized("lkeyFollowingKDE");
  return localized("lkeyFollowingProgram");
}

QString remedyFor(std::string_view need) {
  if (need == needs::GnomeExtension) return localized("lkeyFollowingNeedsExtension");
  if (need == needs::KDE) return localized("lkeyFollowingNeedsKDE");
  if (need == needs::Display) return localized("lkeyFollowingNeedsDisplay");
  return localized("lkeyFollowingNeedsDesktop");
}

}  // namespace

QString followingText(const vorn::PropertyList& focus, bool isAskedFor) {
  const std::string_view need = focus[words::Needs].string();
  if (!need.empty()) return remedyFor(need);
  const std::string_view source = focus[words::Source].string();
  if (source.empty()) return {};
  return localized(isAskedFor ? "lkeyFollowingWorks" : "lkeyFollowingOffer").arg(tellerOf(source));
}

}  // namespace skarn
