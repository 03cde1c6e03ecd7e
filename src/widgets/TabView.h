// A tab widget whose tabs begin at the page's margin, over a hairline as wide as the window. Screen readers call its
// pages like their tabs. Main thread.
#pragma once

#include <QTabWidget>

namespace skarn {

class TabView : public QTabWidget {
  Q_OBJECT

 public:
  explicit TabView(QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void namePages();
};

}  // namespace skarn
