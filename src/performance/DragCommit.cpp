#include "performance/DragCommit.h"

#include <QSlider>
#include <utility>

namespace skarn {

DragCommit::DragCommit(QSlider& slider, std::function<void()> commit) : mSlider(slider), mCommit(std::move(commit)) {
  mTimer.setSingleShot(true);
  mTimer.setInterval(0);
  QObject::connect(&mTimer, &QTimer::timeout, &mTimer, [this] { commitUnlessHeld(); });
  QObject::connect(&mSlider, &QSlider::sliderReleased, &mTimer, [this] {
    if (mIsPending) mTimer.start();
  });
}

void DragCommit::schedule() {
  mIsPending = true;
  mTimer.start();
}

std::optional<int> DragCommit::cancel() {
  const bool isChosen = std::exchange(mIsPending, false) && !mSlider.isSliderDown();
  mTimer.stop();
  return isChosen ? std::optional(mSlider.value()) : std::nullopt;
}

void DragCommit::commitUnlessHeld() {
  // A press on the groove changes the value before it counts as holding the slider.
  if (mSlider.isSliderDown()) return;
  mIsPending = false;
  mCommit();
}

}  // namespace skarn
