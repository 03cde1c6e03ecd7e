// Help books: folders of HTML pages, shown in a help window with Back and Forward. Main thread.
#pragma once

#include <QString>

class QWidget;

namespace skarn {

class HelpBook {
 public:
  HelpBook() = delete;

  // Registers a folder of pages under a title; a second registration of the title replaces the first. Without the
  // folder nothing is registered and the result is false.
  static bool registerBook(const QString& title, const QString& folder);

  // Shows a page, given relative to the book's folder, in the help window, which is made on first use, named
  // "helpWindow" and brought to the front. Without the book or the page nothing is shown and the result is null.
  // The window belongs to itself and is deleted when it is closed.
  static QWidget* openPage(const QString& title, const QString& page);
};

}  // namespace skarn
