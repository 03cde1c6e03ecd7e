#include "platform/HelpPages.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>
#include <algorithm>
#include <utility>

namespace skarn {

namespace {

constexpr int excerptLength = 140;
constexpr int excerptLead = 50;                  // of it, before the match
constexpr qint64 largestPage = 4 * 1024 * 1024;  // bytes

QStringList wordsOf(const QString& text) {
  static const QRegularExpression gaps(QStringLiteral("\\s+"));
  return text.split(gaps, Qt::SkipEmptyParts);
}

// Cut at words, with dots where something was left out.
QString excerptAround(const QString& text, qsizetype match) {
  qsizetype from = std::max<qsizetype>(0, match - excerptLead);
  if (from > 0) from = text.indexOf(QLatin1Char(' '), from) + 1;
  if (from > match) from = match;
  qsizetype to = std::min(text.size(), from + excerptLength);
  if (to < text.size()) to = std::max(text.lastIndexOf(QLatin1Char(' '), to), match + 1);
  return (from > 0 ? QStringLiteral("… ") : QString()) + text.sliced(from, to - from) +
         (to < text.size() ? QStringLiteral(" …") : QString());
}

}  // namespace

HelpPages::HelpPages(QString folder) : mFolder(std::move(folder)) {}

void HelpPages::read() {
  if (std::exchange(mIsRead, true)) return;
  const QDir folder(mFolder);
  for (const QString& name : folder.entryList({QStringLiteral("*.html")}, QDir::Files | QDir::Readable, QDir::Name)) {
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::ReadOnly)) continue;
    QTextDocument document;
    document.setHtml(QString::fromUtf8(file.read(largestPage)));
    QString title = document.metaInformation(QTextDocument::DocumentTitle);
    if (title.isEmpty()) title = name;
    mPages.push_back({name, title, wordsOf(document.toPlainText()).join(QLatin1Char(' '))});
  }
}

std::vector<HelpHit> HelpPages::search(const QString& text) {
  const QStringList words = wordsOf(text);
  if (words.isEmpty()) return {};
  read();
  struct Ranked {
    bool isInTitle;
    qsizetype matches;
    HelpHit hit;
  };
  std::vector<Ranked> found;
  for (const Page& page : mPages) {
    const auto holds = [&page](const QString& word) {
      return page.text.contains(word, Qt::CaseInsensitive) || page.title.contains(word, Qt::CaseInsensitive);
    };
    if (!std::ranges::all_of(words, holds)) continue;
    Ranked ranked{false, 0, {page.name, page.title, {}}};
    qsizetype first = page.text.size();
    for (const QString& word : words) {
      ranked.isInTitle = ranked.isInTitle || page.title.contains(word, Qt::CaseInsensitive);
      ranked.matches += page.text.count(word, Qt::CaseInsensitive);
      const qsizetype match = page.text.indexOf(word, 0, Qt::CaseInsensitive);
      if (match >= 0) first = std::min(first, match);
    }
    ranked.hit.excerpt = excerptAround(page.text, first < page.text.size() ? first : 0);
    found.push_back(std::move(ranked));
  }
  std::ranges::stable_sort(found, [](const Ranked& left, const Ranked& right) {
    return std::pair(left.isInTitle, left.matches) > std::pair(right.isInTitle, right.matches);
  });
  std::vector<HelpHit> hits;
  hits.reserve(found.size());
  for (Ranked& ranked : found) hits.push_back(std::move(ranked.hit));
  return hits;
}

}  // namespace skarn
