// Asks what a keymap is called. Main thread.
#pragma once

#include <QString>
#include <memory>

#include "buttons/AssignmentSheet.h"

namespace skarn {

namespace Ui {
class KeymapNameSheet;
}

class KeymapNameSheet : public AssignmentSheet {
  Q_OBJECT

 public:
  explicit KeymapNameSheet(QWidget* window);
  ~KeymapNameSheet() override;

  // Opens with the present name. OK waits for another one; an empty one takes the name away.
  void begin(const QString& subject, const QString& name);
  // Without blanks around it.
  QString name() const;

 private:
  void updateOK();

  std::unique_ptr<Ui::KeymapNameSheet> mUi;
  QString mPresentName;
};

}  // namespace skarn
