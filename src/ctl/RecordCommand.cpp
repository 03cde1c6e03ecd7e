#include <csignal>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ctl/Commands.h"
#include "ctl/Settings.h"
#include "ctl/Text.h"
#include "model/MacroEvents.h"
#include "model/RememberedRecord.h"
#include "model/SettingsKeys.h"
#include "model/VrCoreUtility.h"
#include "ports/DistributedNotificationCenter.h"
#include "ports/PortWatch.h"

namespace vorn::ctl {

namespace {

struct Target {
  PropertyList macros;  // as they were when the recording began
  std::int64_t position = 0;
};

// The macro that the word means, or a new one of this name.
Result<Target> targetOf(Context& context, const std::string& word) {
  const auto bundle = allSettings(context.engine);
  if (!bundle) return bundle.failure();
  const PropertyList& macros = (*bundle)[keys::Macros];
  if (!context.line.isNew) {
    const auto position = macroNamed(*bundle, word);
    if (!position) return position.failure();
    return Target{macros, *position};
  }
  const PropertyList macro =
      PropertyList::dictionary({{keys::MacroName, VrCoreUtility::generateName(macros, word, keys::MacroName)}});
  const auto answer =
      change(context.engine, MessageID::AddMacro, PropertyList::dictionary({{requestKeys::MacroContents, macro}}));
  if (!answer) return answer.failure();
  return Target{macros.appending(macro), static_cast<std::int64_t>(macros.size())};
}

// Prints what is recorded as it is told, and counts it.
class Recording {
 public:
  Recording(Context& context, Target target)
      : mContext(context),
        mTarget(std::move(target)),
        mRemembered(mTarget.macros, mTarget.position, keys::MacroName),
        mWatch(enginePortName, [this] {
          mFailure = Failure{ExitStatus::NoEngine, "the core engine has gone, and what was recorded with it"};
          end();
        }) {
    DistributedNotificationCenter::defaultCenter().addObserver(
        this, notificationNames::macroSequence(wiredProductID),
        [this](const Notification& news) { take(news.userInfo); });
  }
  ~Recording() { DistributedNotificationCenter::defaultCenter().removeObserver(this); }
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  Outcome run() {
    auto failure = record();
    if (failure && failure->status == ExitStatus::Refused && mContext.line.isNew && takeBack()) {
      failure->text += "; the new macro is deleted again";
    }
    return failure;
  }

 private:
  Outcome record() {
    // From now on a signal saves what was recorded.
    for (const int number : {SIGINT, SIGTERM}) mContext.engine.loop().onSignal(number, [this] { end(); });
    auto failure = ask(MessageID::StartMacroRecording, mTarget.position);
    if (failure) return failure;
    mHasBegun = true;
    tell(titleOf("Recording macro", mTarget.position, mRemembered.name()), entry());
    for (const PropertyList& lines : std::exchange(mEarly, {})) show(lines);
    waitForEnd();
    if (mFailure && mFailure->status == ExitStatus::NoEngine) return mFailure;
    const Failure takenOver{ExitStatus::Refused, "another program has begun to record"};
    failure = mIsTakenOver ? takenOver : save();
    if (failure && mIsTakenOver) return takenOver;
    // Whoever stopped reading along has the recording all the same.
    return failure ? failure : mFailure;
  }

  // Deletes the macro that was made for the recording, unless somebody gave it events meanwhile or is about to.
  bool takeBack() {
    const auto bundle = allSettings(mContext.engine);
    if (!bundle) return false;
    const PropertyList& macros = (*bundle)[keys::Macros];
    const auto position = mRemembered.placeIn(macros);
    return position && position != mMacroOfOther && macroEvents(macros.at(*position)).isEmpty() &&
           !deleteMacroAt(mContext.engine, *bundle, *position);
  }

  void take(const PropertyList& news) {
    // What is told before the start is answered belongs to a recording that the start ends.
    if (!mHasBegun && mContext.engine.isAwaitingAnswer()) return;
    const PropertyList& client = news[newsKeys::ResponseMsgPortName];
    if (client.isString() && client.string() != mContext.engine.replyPortName()) {
      mIsTakenOver = true;
      mMacroOfOther = news[newsKeys::MacroID].toInt64();
    }
    if (mIsTakenOver) return end();
    const PropertyList& lines = news[newsKeys::MessagesArray];
    if (mHasBegun) return show(lines);
    mEarly.push_back(lines);
  }

  void end() {
    mHasEnded = true;
    mContext.engine.loop().stop();
  }

  void waitForEnd() {
    RunLoop& loop = mContext.engine.loop();
    RunLoop::Timer timer = 0;
    if (mContext.line.duration) timer = loop.addTimer(*mContext.line.duration, [this] { end(); });
    bool isConnected = true;
    while (!mHasEnded && isConnected) isConnected = loop.run();
    loop.removeTimer(timer);
    if (!isConnected) mFailure = Failure{ExitStatus::NoEngine, "the session bus is gone"};
  }

  Outcome save() {
    if (auto failure = outcomeOf(change(mContext.engine, MessageID::StopMacroRecording, PropertyList::dictionary())))
      return failure;
    if (mRows == 0)
      return Failure{ExitStatus::Refused,
                     mContext.line.isNew ? "nothing was typed" : "nothing was typed; the macro is as it was"};
    // Others may have changed the list meanwhile: the recording goes with its macro.
    const auto bundle = allSettings(mContext.engine);
    if (!bundle) return bundle.failure();
    const auto position = mRemembered.placeIn((*bundle)[keys::Macros]);
    if (!position) return Failure{ExitStatus::Refused, "the macro is gone, and what was recorded with it"};
    mTarget.position = *position;
    if (auto failure = ask(MessageID::SaveRecordedEvents, *position)) return failure;
    // Between two events stands a delay, and before the first one where it follows others.
    const std::size_t events = (mRows + 1) / 2;
    tell(titleOf("Macro", *position, mRemembered.name()) + ": " + std::to_string(events) +
             (events == 1 ? " event recorded" : " events recorded"),
         entry().with("events", static_cast<std::int64_t>(events)));
    return std::nullopt;
  }

  Outcome ask(MessageID messageID, std::int64_t position) {
    return outcomeOf(
        change(mContext.engine, messageID,
               PropertyList::dictionary({{requestKeys::MacroID, position},
                                         {requestKeys::IsAppendRecording, mContext.line.isAppending ? 1 : 0}})));
  }

  void show(const PropertyList& lines) {
    for (const PropertyList& line : lines.elements()) {
      ++mRows;
      const std::string text = withoutLineBreak(line.string());
      tell(text, PropertyList::dictionary({{"line", text}}));
    }
  }

  // Who reads along sees each line at once; who stopped reading ends the recording.
  void tell(const std::string& text, const PropertyList& value) {
    mContext.output.either(text, value);
    if (mFailure) return;
    mFailure = mContext.output.flush();
    if (mFailure) end();
  }
  PropertyList entry() const {
    return PropertyList::dictionary({{"id", mTarget.position}, {"name", mRemembered.name()}});
  }

  Context& mContext;
  Target mTarget;
  RememberedRecord mRemembered;
  bool mHasBegun = false;  // and its title is told
  bool mHasEnded = false;
  bool mIsTakenOver = false;
  std::optional<std::int64_t> mMacroOfOther;  // that another program has begun to record
  std::vector<PropertyList> mEarly;           // lines between the answer to the start and the title
  Outcome mFailure;
  PortWatch mWatch;
  std::size_t mRows = 0;
};

}  // namespace

Outcome recordMacro(Context& context, const Arguments& arguments) {
  if (arguments[0].empty()) return Failure{ExitStatus::Usage, "a macro needs a name"};
  if (context.line.isNew && context.line.isAppending)
    return Failure{ExitStatus::Usage, "a new macro has nothing to append to"};
  const auto target = targetOf(context, arguments[0]);
  if (!target) return target.failure();
  return Recording(context, *target).run();
}

}  // namespace vorn::ctl
