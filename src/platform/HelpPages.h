// The texts of a help book's pages, for searching. Main thread.
#pragma once

#include <QString>
#include <vector>

namespace skarn {

struct HelpHit {
  QString page;     // file name in the book's folder
  QString title;    // of the page
  QString excerpt;  // some words around the first match
};

class HelpPages {
 public:
  // The pages lie in the folder as .html files; each is read when the first search needs it.
  explicit HelpPages(QString folder);

  const QString& folder() const { return mFolder; }

  // The pages that hold every word of the text, upper and lower case being the same: first those with a word in their
  // title, then by the number of matches. A text without a word finds nothing.
  std::vector<HelpHit> search(const QString& text);

 private:
  struct Page {
    QString name;
    QString title;
    QString text;
  };
  void read();

  QString mFolder;
  std::vector<Page> mPages;
  bool mIsRead = false;
};

}  // namespace skarn
