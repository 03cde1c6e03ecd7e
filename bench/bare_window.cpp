// A bare window with as many labels as are asked for: what start-up is measured against.
#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QTimer>
#include <cstdlib>
#include <iostream>

namespace {

class BareWindow : public QWidget {
 public:
  explicit BareWindow(int widgets) {
    constexpr int columns = 20;
    auto* grid = new QGridLayout(this);
    for (int i = 0; i + 1 < widgets; ++i) grid->addWidget(new QLabel(QString::number(i)), i / columns, i % columns);
    resize(1180, 760);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    if (mIsPainted) return;
    mIsPainted = true;
    QTimer::singleShot(0, this, [this] {
      std::cerr << "window painted: " << findChildren<QWidget*>().size() + 1 << " widgets" << std::endl;
    });
  }

 private:
  bool mIsPainted = false;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  BareWindow window(argc > 1 ? std::atoi(argv[1]) : 1);
  window.show();
  return QApplication::exec();
}
