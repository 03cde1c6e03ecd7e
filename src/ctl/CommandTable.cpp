#include "ctl/CommandTable.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "ctl/Commands.h"
#include "ctl/Names.h"
#include "ctl/Text.h"

namespace vorn::ctl {

namespace {

constexpr std::size_t any = SIZE_MAX;

constexpr Command table[] = {
    {"status", "", 0, 0, "", "what the engine and the mouse are at; starts none", status, true},
    {"profiles list", "", 0, 0, "", "list the profiles; * marks the active one", listProfiles},
    {"profiles switch", "PROFILE", 1, 1, "", "make a profile the active one", switchProfile},
    {"profiles add", "[NAME]", 0, 1, "", "add a profile with the factory settings", addProfile},
    {"profiles copy", "PROFILE [NAME]", 1, 2, "", "add a copy of a profile", copyProfile},
    {"profiles rename", "PROFILE NAME", 2, 2, "", "rename a profile", renameProfile},
    {"profiles delete", "PROFILE", 1, 1, "", "delete a profile", deleteProfile},
    {"profiles move", "PROFILE POSITION", 2, 2, "", "put a profile at another place of the list", moveProfile},
    {"profiles compare", "PROFILE PROFILE", 2, 2, "", "print what differs between two profiles", compareProfiles},
    {"profiles export", "PROFILE FILE|-", 1, 2, "--all", "write a profile to FILE.SkarnProfile", exportProfile},
    {"profiles import", "FILE", 1, 1, "--all", "add the profile of a file", importProfile},
    {"get", "KEY|--list", 0, 1, "--profile --list", "print a value of a profile, e.g. DPIX or Stages/0/dpix", getValue},
    {"set", "KEY VALUE", 2, 2, "--profile", "change a value of a profile", setValue},
    {"macros list", "", 0, 0, "", "list the macros", listMacros},
    {"macros show", "MACRO", 1, 1, "", "print the events of a macro", showMacro},
    {"macros record", "MACRO", 1, 1, "--append --new --seconds", "record what is typed, until SIGINT or SIGTERM",
     recordMacro},
    {"macros rename", "MACRO NAME", 2, 2, "", "rename a macro", renameMacro},
    {"macros delete", "MACRO", 1, 1, "", "delete a macro", deleteMacro},
    {"macros export", "MACRO FILE|-", 2, 2, "", "write a macro to FILE.SkarnMacro", exportMacro},
    {"macros import", "FILE", 1, 1, "", "add the macro of a file", importMacro},
    {"assign", "CONTROL ACTION...", 2, any, "--profile --with --repeat --switch-back", "change what a control does",
     assign},
    {"assignments", "", 0, 0, "--profile --keymap", "print what every control does", listAssignments},
    {"keys", "", 0, 0, "", "print the name of every key", listKeys},
    {"undo", "", 0, 0, "", "take the last change of the settings back", undoChange},
    {"redo", "", 0, 0, "", "make the change again that was undone last", redoChange},
    {"history list", "", 0, 0, "", "list the changes of the settings, the newest first", listHistory},
    {"history go", "CHANGE", 1, 1, "", "undo or redo up to this number of the list; 0: undo all", goToChange},
    {"history", "", 0, 0, "", "the same as history list", listHistory},
    {"backups list", "", 0, 0, "", "list the settings of before the first change of each day", listBackups},
    {"backups restore", "DATE", 1, 1, "", "put a backup in the place of the settings", restoreBackup},
    {"monitor", "", 0, 0, "", "print what the engine tells, until SIGINT or SIGTERM", monitor},
    {"mice list", "", 0, 0, "", "list the mice; * marks the one in use", listMice},
    {"mice use", "MOUSE", 1, 1, "", "use another mouse, from now on", useMouse},
    {"mice show", "[MOUSE]", 0, 1, "", "print what is known of a mouse, or of the one in use", showMouse},
    {"mice teach", "CONTROL", 1, 1, "", "make the next key or button of the mouse this control", teachMouse},
    {"mice forget", "[CONTROL]", 0, 1, "", "forget what was taught, for one control or for all", forgetTaught},
    {"mice resolution", "DPI", 1, 1, "", "correct what the mouse counts in an inch; 0: as it was", setResolution},
    {"doctor", "", 0, 0, "", "look for what keeps mice from working, and how to mend it", doctor, true},
    {"focus", "", 0, 0, "", "print which application is in front, and the profile that follows it", showFocus},
    {"device plug", "wired|wireless", 1, 1, "", "plug the virtual mouse in", plugDevice},
    {"device unplug", "", 0, 0, "", "take the virtual mouse away", unplugDevice},
    {"device press", "CONTROL", 1, 1, "", "press a control", pressControl},
    {"device release", "CONTROL", 1, 1, "", "release a control", releaseControl},
    {"device click", "CONTROL", 1, 1, "", "press and release a control", clickControl},
    {"device type", "KEY", 1, 1, "--press --release", "press and release a key of another device", typeKey},
    {"device battery", "PERCENT", 1, 1, "", "set the battery level, 0 to 100", setBattery},
    {"device charging", "battery|charging|none|usual", 1, 1, "", "set the charging status", setCharging},
    {"device firmware", "VERSION", 1, 1, "--failing", "set the firmware version", setFirmware},
    {"device state", "", 0, 0, "", "print the state of the virtual mouse", deviceState},
    {"device output", "", 0, 0, "", "print and take what it sent to the desktop", deviceOutput},
    {"complete", "[-- WORD...]", 0, any, "", "for shells: print what may stand as the last word", complete, true},
};

Failure wrong(std::string text) {
  return {ExitStatus::Usage, std::move(text)};
}

Outcome complaint(const Command& command, const CommandLine& line, std::size_t argumentCount) {
  for (const std::string& option : line.commandOptions) {
    if (!takesOption(command, option)) return wrong(std::string(command.name) + " takes no option " + option);
  }
  if (argumentCount >= command.minimum && argumentCount <= command.maximum) return std::nullopt;
  const std::string usage = std::string(command.name) + (command.arguments.empty() ? "" : " ");
  return wrong("usage: vornctl " + usage + std::string(command.arguments));
}

// The one or two words of a command's name; the second may be empty.
std::pair<std::string_view, std::string_view> wordsOf(const Command& command) {
  const std::size_t blank = std::min(command.name.find(' '), command.name.size());
  const std::string_view first = command.name.substr(0, blank);
  return {first, blank == command.name.size() ? std::string_view() : command.name.substr(blank + 1)};
}

// How far the words are from the command's name; nothing where they are not near to it.
std::optional<std::size_t> distanceTo(const Command& command, const Arguments& words) {
  const auto [first, second] = wordsOf(command);
  const bool isFirst = isNear(words[0], first);
  if (second.empty()) return isFirst ? std::optional(distance(words[0], first)) : std::nullopt;
  if (isFirst && words.size() > 1 && isNear(words[1], second)) {
    return distance(words[0], first) + distance(words[1], second);
  }
  // "list profiles", or "list" alone.
  if (words[0] != second) return std::nullopt;
  return words.size() > 1 && isNear(words[1], first) ? 1 + distance(words[1], first) : 3;
}

// What may follow the first word of commands of two words.
std::string followersOf(std::string_view word) {
  Names followers;
  std::string_view group;
  for (const Command& command : table) {
    const auto [first, second] = wordsOf(command);
    if (second.empty() || !isNear(word, first)) continue;
    group = first;
    followers.emplace_back(second);
  }
  return followers.empty() ? "; --help lists them"
                           : "; \"" + std::string(group) + "\" takes " + alternatives(followers);
}

Failure unknownCommand(const Arguments& words) {
  Names nearest;
  std::optional<std::size_t> least;
  for (const Command& command : table) {
    const auto each = distanceTo(command, words);
    if (!each || (least && *each > *least)) continue;
    if (!least || *each < *least) nearest.clear();
    least = each;
    nearest.emplace_back(command.name);
  }
  const std::string said = words.size() > 1 ? words[0] + " " + words[1] : words[0];
  return wrong("unknown command \"" + said + "\"" + didYouMean(nearest, followersOf(words[0])));
}

}  // namespace

std::span<const Command> commandTable() {
  return table;
}

bool takesOption(const Command& command, std::string_view option) {
  const auto spaced = [](std::string_view words) { return std::string(" ").append(words).append(" "); };
  return spaced(command.options).find(spaced(option)) != std::string::npos;
}

Result<Invocation> findCommand(const CommandLine& line) {
  const auto& words = line.words;
  if (words.empty()) return wrong("no command; --help lists them");
  const std::string pair = words.size() > 1 ? words[0] + " " + words[1] : "";
  for (const Command& command : table) {
    const bool isPair = command.name == pair;
    if (!isPair && command.name != words[0]) continue;
    const std::ptrdiff_t used = isPair ? 2 : 1;
    Invocation result{&command, Arguments(words.begin() + used, words.end())};
    if (auto failure = complaint(command, line, result.arguments.size())) return *failure;
    return result;
  }
  return unknownCommand(words);
}

std::string helpText() {
  std::string text =
      "Usage: vornctl [OPTION]... COMMAND [ARGUMENT]...\n"
      "Shows and changes the settings of the mouse through its core engine.\n"
      "\n";
  constexpr std::size_t width = 42;
  for (const Command& command : table) {
    std::string left = "  " + std::string(command.name) + " " + std::string(command.arguments);
    text += padded(std::move(left), width) + std::string(command.summary) + "\n";
  }
  return text +
         "\n"
         "PROFILE and MACRO are a number, counted from 1, or a name, MOUSE is an ID or a part of a name. CONTROL is a\n"
         "number from 1 to 27, a name (Tab, wheel-up) or an identifier (id:20). KEY of a keyboard is a name (F5) or a\n"
         "chord (ctrl+shift+k). ACTION is one of\n"
         "  default | disable | button 1-8|double | scroll up|down | forward | backward\n"
         "  key KEY [--with MODIFIER]... | macro MACRO [--repeat 1-10|held|toggle] | profile PROFILE\n"
         "  keymap 1-8|cycle [--switch-back] | stage up|down | sensitivity on-the-fly|temporary | launch PATH\n"
         "\n"
         "  --profile PROFILE  of get, set, assign and assignments: another profile than the active one\n"
         "  --keymap 1-8       of assignments: another keymap than the one in force\n"
         "  --all FOLDER       of profiles export and import: all profiles, into or from a folder instead of a file\n"
         "  --list             of get: every setting and what set takes for it, instead of one value\n"
         "  --append           of macros record: behind the events that the macro has\n"
         "  --new              of macros record: into a new macro of this name\n"
         "  --seconds SECONDS  of macros record: no longer than this\n"
         "  --press, --release  of device type: only the one, not both\n"
         "  --failing          of device firmware: a version that is not told\n"
         "  --json             print JSON; positions count from 0 there\n"
         "  --timeout SECONDS  how long to wait for each answer (default: 5)\n"
         "  --no-start         do without an engine that does not run, instead of having the session start it\n"
         "  --help, --version  print and end\n"
         "\n"
         "Ends with 0 when done, 1 when refused, 2 on a wrong command line, 3 without an engine or session bus,\n"
         "4 without an answer in time, 5 on trouble with a file.\n";
}

}  // namespace vorn::ctl
