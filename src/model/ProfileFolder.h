// All profiles in one folder: a file for each, as RecordFile.h has it, named by its place and its name ("2
// Work.SkarnProfile"), so that a list of the folder has them in their order. Pure but for the files themselves; any
// thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/PropertyList.h"
#include "model/RecordFile.h"

namespace vorn {

// The ending of such a folder's name: "SkarnProfiles".
inline constexpr std::string_view profileFolderExtension = "SkarnProfiles";

// The name of the file of a profile at a place, counted from 0. What no file name can hold is a hyphen in it, and a
// long name is cut.
std::string profileFileName(const PropertyList& profile, std::size_t place);

// Makes the folder with a file for each profile: all of it or, on failure, nothing. What exists under the path is left
// alone, and that is a failure.
std::optional<RecordFileProblem> writeProfileFolder(const std::string& path, const PropertyList& profiles);

struct ProfileFolderEntry {
  std::string path;
  RecordFileContents contents;
};
struct ProfileFolder {
  std::vector<ProfileFolderEntry> entries;   // in the order of their places, those without one by their names
  std::optional<RecordFileProblem> problem;  // of the folder as a whole
};
// Reads every file of the folder whose name has the ending of profile files, up to so many.
inline constexpr std::size_t maximumFolderEntries = 50;
ProfileFolder readProfileFolder(const std::string& path);

}  // namespace vorn
