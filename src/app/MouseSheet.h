// The mice that the engine has found, from which a person chooses the one to use, and what is to be told of that one:
// its controls and its resolution. It follows the mice while it is open. Main thread.
#pragma once

#include <QDialog>
#include <QPointer>
#include <memory>

#include "app/MouseChoice.h"

namespace skarn {

namespace Ui {
class MouseSheet;
}

class MouseModel;
class MouseResolutionSheet;
class TeachingSheet;

class MouseSheet : public QDialog {
  Q_OBJECT

 public:
  // Opens on the window and deletes itself when it closes. The choice outlives it.
  static MouseSheet* open(QWidget* window, MouseChoice& choice);
  ~MouseSheet() override;

 private:
  MouseSheet(QWidget* window, MouseChoice& choice);
  void setUpTable();
  void wireButtons();
  void fitTable();
  // The selection stays where it is, whatever comes and goes.
  void showMice();
  void showSelected();
  void describe(const MouseDescription* mouse);
  void updateOK(const MouseDescription* mouse);
  void updateTools(const MouseDescription* mouse);
  void use();
  void teach();
  void correctResolution();
  void forget();
  void say(const QString& done, MouseChoice::Outcome outcome);
  const MouseDescription* selected() const;
  void select(int row);

  std::unique_ptr<Ui::MouseSheet> mUi;
  MouseChoice& mChoice;
  MouseModel* mModel;
  QPointer<TeachingSheet> mTeaching;
  QPointer<MouseResolutionSheet> mResolution;
};

}  // namespace skarn
