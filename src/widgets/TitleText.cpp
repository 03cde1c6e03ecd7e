#include "widgets/TitleText.h"

namespace skarn {

QString escapedTitle(QString title) {
  return title.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString unescapedTitle(QString escaped) {
  return escaped.replace(QLatin1String("&&"), QLatin1String("&"));
}

}  // namespace skarn
