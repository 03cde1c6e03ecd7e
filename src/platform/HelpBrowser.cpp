#include "platform/HelpBrowser.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include "platform/Localization.h"

namespace skarn {

namespace {

constexpr const char* searchScheme = "help-search";
constexpr const char* firstPage = "index.html";
constexpr const char* styleSheetName = "help.css";

bool isSearch(const QUrl& address) {
  return address.scheme() == QLatin1String(searchScheme);
}

}  // namespace

HelpBrowser::HelpBrowser(QWidget* parent) : QTextBrowser(parent) {
  setFrameShape(QFrame::NoFrame);
  setOpenExternalLinks(true);
}

void HelpBrowser::showPage(const QString& path) {
  const QString folder = QFileInfo(path).absolutePath();
  if (!mPages || mPages->folder() != folder) mPages = std::make_unique<HelpPages>(folder);
  setSource(QUrl::fromLocalFile(path));
}

void HelpBrowser::showContents() {
  if (mPages) setSource(QUrl::fromLocalFile(QDir(mPages->folder()).filePath(QLatin1String(firstPage))));
}

void HelpBrowser::showResults(const QString& words) {
  QUrl address;
  address.setScheme(QLatin1String(searchScheme));
  address.setPath(words);
  if (isSearch(source())) {
    // The words are still being typed: one step of the history for all of them.
    backward();
  }
  setSource(address, QTextDocument::HtmlResource);
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
  if (type == QTextDocument::HtmlResource && isSearch(name)) return resultsPage(name.path());
  return QTextBrowser::loadResource(type, name);
}

QString HelpBrowser::resultsPage(const QString& words) {
  const std::vector<HelpHit> hits = mPages ? mPages->search(words) : std::vector<HelpHit>();
  const QUrl styleSheet =
      mPages ? QUrl::fromLocalFile(QDir(mPages->folder()).filePath(QLatin1String(styleSheetName))) : QUrl();
  QString page =
      QStringLiteral(
          "<head><title>%1</title><link rel=\"stylesheet\" type=\"text/css\" href=\"%2\"></head>"
          "<h1>%1</h1>")
          .arg(localized("lkeyHelpResults").toHtmlEscaped(), styleSheet.toString(QUrl::FullyEncoded).toHtmlEscaped());
  if (hits.empty()) {
    return page + QStringLiteral("<p>%1</p>").arg(localized("lkeyHelpNothingFound").arg(words).toHtmlEscaped());
  }
  for (const HelpHit& hit : hits) {
    const QUrl address = QUrl::fromLocalFile(QDir(mPages->folder()).filePath(hit.page));
    page += QStringLiteral("<p><a href=\"%1\"><b>%2</b></a><br>%3</p>")
                .arg(address.toString(QUrl::FullyEncoded).toHtmlEscaped(), hit.title.toHtmlEscaped(),
                     hit.excerpt.toHtmlEscaped());
  }
  return page;
}

}  // namespace skarn
