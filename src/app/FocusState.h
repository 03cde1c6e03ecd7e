// What the engine knows of the application in front, while somebody looks at it: nothing is asked else, since an engine
// that no profile needs it for would find it out for nobody. Nothing here waits. Main thread.
#pragma once

#include <QObject>

#include "link/EngineLink.h"

namespace skarn {

class FocusState : public QObject {
  Q_OBJECT

 public:
  // The link outlives it.
  explicit FocusState(vorn::EngineLink& link);
  ~FocusState() override;

  // From now on there is an engine to ask, and somebody looks. Does nothing while both were so.
  void begin();
  // Nobody looks any more; what is known stays.
  void rest();
  // There is no engine any more, and nothing is known.
  void end();

  // By the keys of protocol/Focus.h; none while nothing is known, or where the engine does not tell.
  const vorn::PropertyList& state() const { return mState; }

 signals:
  void changed();

 private:
  void refresh();
  void take(const vorn::PropertyList& state);

  vorn::EngineLink& mLink;
  bool mIsLookedAt = false;
  unsigned mSession = 0;
  bool mIsFetching = false;
  bool mMustFetch = false;
  vorn::PropertyList mState;
};

}  // namespace skarn
