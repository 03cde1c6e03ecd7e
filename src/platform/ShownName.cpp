#include "platform/ShownName.h"

namespace skarn {

namespace {

constexpr int longestShown = 60;

}  // namespace

QString shownName(const QString& name) {
  if (name.size() <= longestShown) return name;
  return name.left(longestShown / 2) + QStringLiteral("…") + name.right(longestShown / 2);
}

}  // namespace skarn
