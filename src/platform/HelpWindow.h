// The window that shows the pages of a help book, with Back, Forward, Contents and a search field. Deletes itself when
// it is closed.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

class QLineEdit;
class QToolButton;

namespace skarn {

class HelpBrowser;

class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  // The one help window; made when there is none.
  static HelpWindow& shared();

  // path: an existing HTML file. Links inside the book are followed here, others in the web browser.
  void showPage(const QString& title, const QString& path);

 private:
  HelpWindow();

  void search(const QString& words);

  HelpBrowser* mBrowser;
  QToolButton* mBack;
  QToolButton* mForward;
  QToolButton* mContents;
  QLineEdit* mSearch;
};

}  // namespace skarn
