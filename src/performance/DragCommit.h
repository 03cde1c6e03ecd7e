// Turns the many values of a slider's drag into one commit: a scheduled commit runs from the event loop once the slider
// is no longer held. Keys and the wheel hold no slider, so each of their steps is committed at once. Main thread.
#pragma once

#include <QTimer>
#include <functional>
#include <optional>

class QSlider;

namespace skarn {

class DragCommit {
 public:
  // The slider outlives this object.
  DragCommit(QSlider& slider, std::function<void()> commit);

  // Asks for a commit. A pending one is replaced: at most one is pending.
  void schedule();
  // Forgets the pending commit. Gives the value that it would have committed, unless the slider is still held: its
  // value is then not chosen yet.
  std::optional<int> cancel();

 private:
  void commitUnlessHeld();

  QSlider& mSlider;
  std::function<void()> mCommit;
  QTimer mTimer;
  bool mIsPending = false;
};

}  // namespace skarn
