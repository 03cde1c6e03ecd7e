// The field that finds controls by what they do or are. Main thread.
#pragma once

#include <QObject>
#include <functional>

#include "buttons/ControlTable.h"

class QLabel;
class QLineEdit;

namespace skarn {

class ControlRows;

// Whether a text holds all words that are looked for, whatever their case. A single letter and a number have to be a
// word of the text, or nearly every text would do; anything else is found within its words too.
bool holdsAll(const QString& text, const QString& wanted);

class ControlSearch : public QObject {
  Q_OBJECT

 public:
  using WordsOf = std::function<QString(const ControlDescriptor&)>;

  // The field, the label that says how many were found, and the rows outlive it. wordsOf: all that a control can be
  // found by. Escape empties the field; Return, in it, goes to the first control that was found.
  ControlSearch(QLineEdit& field, QLabel& count, ControlRows& rows, WordsOf wordsOf);

  // Looks again, after the words have changed.
  void refresh();
  void begin();
  void clear();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void goToFirst();

  QLineEdit& mField;
  QLabel& mCount;
  ControlRows& mRows;
  WordsOf mWordsOf;
};

}  // namespace skarn
