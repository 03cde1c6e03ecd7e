// The engine's mice as the window knows them: which there are, which one is in use, and what that one can do. Nothing
// here waits; the list follows the engine's news. Main thread.
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "app/MouseDescription.h"
#include "link/EngineLink.h"

namespace skarn {

class MouseChoice : public QObject {
  Q_OBJECT

 public:
  using Outcome = vorn::MiceAnswer::Outcome;
  // Called once; not where the engine goes before it answers.
  using Done = std::function<void(Outcome outcome)>;

  // The link outlives the choice.
  explicit MouseChoice(vorn::EngineLink& link);
  ~MouseChoice() override;

  // From now on there is an engine to ask. Does nothing while there was one.
  void begin();
  // There is none any more, and nothing is known.
  void end();

  // Whether the engine has told its mice.
  bool isKnown() const { return mIsKnown; }
  // Whether it has said that it offers no choice.
  bool isRefused() const { return mIsRefused; }
  // In the engine's order, the virtual one last. Empty while nothing is known.
  const std::vector<MouseDescription>& mice() const { return mMice; }
  // nullptr where none is, or nothing is known. Valid until the next change.
  const MouseDescription* inUse() const;
  // Whether this window has asked for another mouse and has no answer yet: the one before goes, and is not missed.
  bool isChoosing() const { return mIsChoosing; }

  void choose(const QString& id, Done done);
  // The next that the mouse in use sends becomes the control; an empty one ends that. taught tells how it ended.
  void teach(const std::string& control, Done done);
  // An empty one: all controls.
  void forget(const std::string& control, Done done);
  // In DPI; 0 for what the system knows.
  void setResolution(int resolution, Done done);

 signals:
  void changed();
  void taught(const vorn::TaughtControl& taught);

 private:
  void refresh();
  void take(const vorn::MiceAnswer& answer);
  void change(const vorn::MiceRequest& request, Done done);
  // Asks in this session of the engine; an answer in another one is nobody's.
  template <typename Work>
  void ask(const vorn::MiceRequest& request, Work work);

  vorn::EngineLink& mLink;
  bool mIsThere = false;
  unsigned mSession = 0;
  bool mIsKnown = false;
  bool mIsRefused = false;
  bool mIsChoosing = false;
  bool mIsFetching = false;
  bool mMustFetch = false;
  std::vector<MouseDescription> mMice;
};

}  // namespace skarn
