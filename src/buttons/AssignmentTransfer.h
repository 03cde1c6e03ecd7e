// How an assignment goes from one control to another one, and from one keymap or profile to another. Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "buttons/ControlTable.h"
#include "model/PropertyList.h"

namespace skarn {

// The controls among which one that is the left click stays it: the first ones of the table.
inline constexpr std::size_t leftClickCandidates = 5;

struct Assignment {
  int command = 0;
  vorn::PropertyList param1 = 0;
  vorn::PropertyList param2 = 0;
  friend bool operator==(const Assignment&, const Assignment&) = default;
};

Assignment assignmentOf(const vorn::PropertyList& record);
// The group with the control's record changed; what else the record holds stays.
vorn::PropertyList withAssignment(const vorn::PropertyList& group, std::string_view button,
                                  const Assignment& assignment);

// What a control is given to do what it does out of the box, or nothing. defaultProfile: the factory's.
Assignment defaultAssignment(std::string_view groupKey, std::string_view button,
                             const vorn::PropertyList& defaultProfile);
Assignment disabledAssignment(std::string_view groupKey, std::string_view button,
                              const vorn::PropertyList& defaultProfile);
// Whether the record makes the control do what it does out of the box. factory: its record in the factory's profile.
bool isFactory(const vorn::PropertyList& record, const vorn::PropertyList& factory);

enum class TransferProblem {
  None,
  Diagonal,   // no other control can do what a diagonal of the direction pad does out of the box
  NeverHeld,  // a direction of the wheel has nothing that ends with its release
  Gone,       // the macro or the profile that it plays or switches to
  OwnProfile,
  Cycle,  // stands in every keymap, and so changes places in none
  LastLeftClick,
  NoChange,
};

struct Transfer {
  std::optional<Assignment> assignment;  // nothing where there is a problem
  TransferProblem problem = TransferProblem::None;
  std::string gone{};  // the name of what is gone
};

// What the other control is given to do what the record makes this one do. A key that it sends anyway is its default.
Transfer transferred(const vorn::PropertyList& record, const ControlDescriptor& from, const ControlDescriptor& to,
                     const vorn::PropertyList& defaultProfile);

// What assignments point at by its position.
struct Lists {
  vorn::PropertyList macros;
  vorn::PropertyList profiles;
  int activeProfile = 0;
};

// The assignment as it must be now, to play and switch to the same as then.
Transfer retargeted(const Assignment& assignment, const Lists& then, const Lists& now);

// --- Groups: a dictionary with "Keys" and "Buttons", such as a keymap.

const vorn::PropertyList& recordIn(const vorn::PropertyList& groups, const ControlDescriptor& control);
vorn::PropertyList withAssignment(const vorn::PropertyList& groups, const ControlDescriptor& control,
                                  const Assignment& assignment);
// Whether one of the controls that are to have a left click has it before and none has it after.
bool givesAwayLeftClick(const vorn::PropertyList& before, const vorn::PropertyList& after);

// A control that does not take part in a change of all, and why.
struct LeftOut {
  const ControlDescriptor* control;
  TransferProblem problem;
  std::string gone{};  // the name of what is gone
};

// Groups after a change; those before where there is a problem.
struct GroupsChange {
  vorn::PropertyList groups;
  TransferProblem problem = TransferProblem::None;
  std::vector<LeftOut> leftOut{};
};

// Each of the two does what the other one did.
GroupsChange swapped(const vorn::PropertyList& groups, const ControlDescriptor& one, const ControlDescriptor& other,
                     const vorn::PropertyList& defaultProfile);
// Every control does what it does out of the box, but for the first that has the left click where one is to have it.
// What cycles the keymaps goes on doing so and is left out: without it there would be no way on from this one.
GroupsChange cleared(const vorn::PropertyList& groups, const vorn::PropertyList& defaultProfile);
// Every control does what it does in the copy. What has gone since, and the profile itself, is nothing to play or to
// switch to: there the control has its default and is left out. So is what cycles the keymaps already; it goes on.
GroupsChange pasted(const vorn::PropertyList& groups, const vorn::PropertyList& copy, const Lists& then,
                    const Lists& now, const vorn::PropertyList& defaultProfile);
// The controls that cycle the keymaps after a change and did not before: they are to do so in every keymap.
std::vector<const ControlDescriptor*> newCycles(const vorn::PropertyList& before, const vorn::PropertyList& after);

}  // namespace skarn
