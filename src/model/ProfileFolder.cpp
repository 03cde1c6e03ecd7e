#include "model/ProfileFolder.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <limits>
#include <random>
#include <tuple>
#include <utility>

#include "model/RegularFile.h"
#include "model/SettingsKeys.h"

namespace vorn {

namespace {

namespace files = std::filesystem;
using Kind = RecordFileProblem::Kind;

constexpr std::size_t longestName = 120;  // bytes
constexpr int maximumNames = 100;

RecordFileProblem problemOf(std::error_code error) {
  return {Kind::File, reasonOf(error), error};
}

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

std::string ending() {
  return "." + std::string(recordFileExtension(RecordKind::Profile));
}

// The number that a name begins with, and the name; those without a number come last.
std::pair<unsigned long, std::string> orderOf(const std::string& path) {
  std::string name = files::path(path).filename().string();
  unsigned long place = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), place);
  if (error != std::errc() || end == name.data()) place = std::numeric_limits<unsigned long>::max();
  return {place, std::move(name)};
}

// A folder beside the path, under a name that no other has: what a killed export left behind is in nobody's way.
std::error_code makeUnfinished(const std::string& path, files::path& unfinished) {
  std::random_device random;
  for (int name = 0; name < maximumNames; ++name) {
    unfinished = path + ".part-" + std::to_string(random());
    std::error_code error;
    if (files::create_directory(unfinished, error)) return {};
    if (error && error != std::errc::file_exists) return error;
  }
  return std::make_error_code(std::errc::file_exists);
}

std::optional<RecordFileProblem> writeAll(const files::path& folder, const PropertyList& profiles) {
  for (std::size_t place = 0; place < profiles.size(); ++place) {
    const PropertyList& profile = profiles.at(static_cast<std::int64_t>(place));
    const files::path file = folder / profileFileName(profile, place);
    if (auto problem = writeRecordFile(file.string(), profile, RecordKind::Profile)) return problem;
  }
  return std::nullopt;
}

}  // namespace

std::string profileFileName(const PropertyList& profile, std::size_t place) {
  std::string name(profile[keys::ProfileName].string());
  for (char& each : name) {
    if (each == '/' || static_cast<unsigned char>(each) < 0x20 || each == 0x7F) each = '-';
  }
  if (name.size() > longestName) {
    std::size_t size = longestName;
    while (size > 0 && isContinuation(name[size])) --size;
    name.resize(size);
  }
  return std::to_string(place + 1) + " " + name + ending();
}

std::optional<RecordFileProblem> writeProfileFolder(const std::string& path, const PropertyList& profiles) {
  std::error_code error;
  if (files::exists(files::symlink_status(path, error))) return problemOf(std::make_error_code(std::errc::file_exists));
  files::path unfinished;
  if ((error = makeUnfinished(path, unfinished))) return problemOf(error);
  auto problem = writeAll(unfinished, profiles);
  if (!problem) {
    files::rename(unfinished, path, error);
    if (error) problem = problemOf(error);
  }
  if (problem) files::remove_all(unfinished, error);
  return problem;
}

ProfileFolder readProfileFolder(const std::string& path) {
  std::error_code error;
  std::vector<std::string> paths;
  files::directory_iterator each(path, error);
  for (; !error && each != files::directory_iterator(); each.increment(error)) {
    std::string file = each->path().string();
    if (file.ends_with(ending())) paths.push_back(std::move(file));
  }
  if (error) return {{}, problemOf(error)};
  if (paths.empty()) return {{}, RecordFileProblem{Kind::Empty, "the folder holds no profiles"}};
  std::ranges::sort(paths, {}, orderOf);
  if (paths.size() > maximumFolderEntries) paths.resize(maximumFolderEntries);
  ProfileFolder folder;
  for (std::string& file : paths) {
    RecordFileContents contents = readRecordFile(file, RecordKind::Profile);
    folder.entries.push_back({std::move(file), std::move(contents)});
  }
  return folder;
}

}  // namespace vorn
