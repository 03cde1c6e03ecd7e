#include "app/FocusState.h"

#include <QPointer>
#include <utility>

namespace skarn {

using vorn::PropertyList;

FocusState::FocusState(vorn::EngineLink& link) : mLink(link) {}

FocusState::~FocusState() {
  mLink.watchFocus({});
}

void FocusState::begin() {
  if (std::exchange(mIsLookedAt, true)) return;
  mLink.watchFocus([this] { refresh(); });
  refresh();
}

void FocusState::rest() {
  if (!std::exchange(mIsLookedAt, false)) return;
  mLink.watchFocus({});
  ++mSession;
  mIsFetching = false;
  mMustFetch = false;
}

void FocusState::end() {
  rest();
  take({});
}

void FocusState::refresh() {
  // News that come meanwhile are asked for once.
  mMustFetch = mIsFetching;
  if (std::exchange(mIsFetching, true)) return;
  mLink.askFocus([self = QPointer(this), session = mSession](const PropertyList& state) {
    if (!self || self->mSession != session) return;
    self->mIsFetching = false;
    self->take(state);
    if (std::exchange(self->mMustFetch, false)) self->refresh();
  });
}

void FocusState::take(const PropertyList& state) {
  if (state == mState) return;
  mState = state;
  emit changed();
}

}  // namespace skarn
