#include "platform/WebPages.h"

#include <QFile>
#include <array>

#include "model/PropertyListCodec.h"
#include "platform/Bundle.h"
#include "platform/Localization.h"
#include "platform/SettingsText.h"
#include "widgets/Alert.h"

namespace skarn {

namespace {

constexpr const char* resource = "addresses.plist";
// In the order of WebPage.
constexpr std::array<std::string_view, 4> keysOfPages = {"Community", "News", "Guild", "Support"};

}  // namespace

QUrl addressOf(WebPage page) {
  const QString path = Bundle::mainBundle().resourcePath(QLatin1String(resource));
  const auto addresses = vorn::readPropertyListFile(QFile::encodeName(path).toStdString());
  if (!addresses) return {};
  return QUrl(textOf(*addresses, keysOfPages[static_cast<std::size_t>(page)]));
}

void openPage(QWidget* window, WebPage page, const OpenAddress& open) {
  const QUrl address = addressOf(page);
  if (address.isEmpty() || !open || open(address)) return;
  Alert::show(window, localized("lkeyPageNotOpenedTitle"),
              localized("lkeyPageNotOpenedDesc") + QLatin1String("\n\n") + address.toDisplayString(),
              {localized("lkeyOK")})
      ->makeTextSelectable();
}

}  // namespace skarn
