// Shows the pages of a help book, and the results of a search in it as a page of their own, which Back and Forward
// find again.
#pragma once

#include <QTextBrowser>
#include <memory>

#include "platform/HelpPages.h"

namespace skarn {

class HelpBrowser : public QTextBrowser {
  Q_OBJECT

 public:
  explicit HelpBrowser(QWidget* parent = nullptr);

  // path: an existing HTML file of the book that is searched from now on.
  void showPage(const QString& path);
  // Lists the pages that hold the words. The result of a search in progress of typing replaces the one before.
  void showResults(const QString& words);
  // The first page of the book.
  void showContents();

 protected:
  QVariant loadResource(int type, const QUrl& name) override;

 private:
  QString resultsPage(const QString& words);

  std::unique_ptr<HelpPages> mPages;
};

}  // namespace skarn
