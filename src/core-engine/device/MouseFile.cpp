#include "core-engine/device/MouseFile.h"

#include <optional>
#include <utility>
#include <vector>

#include "model/PropertyListCodec.h"
#include "model/Utf8.h"

namespace vorn::engine {

namespace {

namespace words {
constexpr std::string_view Chosen = "chosen";
constexpr std::string_view Mice = "mice";
constexpr std::string_view Name = "name";
constexpr std::string_view Controls = "controls";
constexpr std::string_view Resolution = "resolution";
}  // namespace words

// One that can be shown and sent: UTF-8 without control characters.
bool isPlain(std::string_view text) {
  if (text.size() > MouseFile::maximumTextLength) return false;
  while (!text.empty()) {
    const Utf8Character character = firstCharacter(text);
    if (!character.isValid || isControlCharacter(character.code)) return false;
    text.remove_prefix(character.length);
  }
  return true;
}

bool isID(std::string_view text) {
  return !text.empty() && isPlain(text);
}

KnownMouse mouseOf(const PropertyList& stored) {
  KnownMouse mouse;
  if (isPlain(stored[words::Name].string())) mouse.name = stored[words::Name].toString();
  mouse.record.controls = ControlMap::fromRecord(stored[words::Controls]);
  const std::int64_t resolution = stored[words::Resolution].toInt64();
  if (resolution >= mice::minimumResolution && resolution <= mice::maximumResolution)
    mouse.record.resolution = static_cast<std::int32_t>(resolution);
  return mouse;
}

PropertyList storedOf(const KnownMouse& mouse) {
  PropertyList stored =
      PropertyList::dictionary({{words::Name, mouse.name}, {words::Controls, mouse.record.controls.record()}});
  return mouse.record.resolution == 0 ? stored : stored.with(words::Resolution, mouse.record.resolution);
}

// Nothing for what is no such file.
std::optional<KnownMice> miceOf(const PropertyList& stored) {
  const PropertyList& mice = stored[words::Mice];
  if (!isID(stored[words::Chosen].string()) || !mice.isDictionary()) return std::nullopt;
  KnownMice result;
  result.chosen = stored[words::Chosen].toString();
  for (std::size_t index = 0; index < mice.size() && result.mice.size() < MouseFile::maximumMice; ++index) {
    const std::string_view id = mice.keyAt(index);
    if (isID(id) && id != mice::virtualMouse) result.mice.emplace(id, mouseOf(mice.valueAt(index)));
  }
  return result;
}

PropertyList storedOf(const KnownMice& mice) {
  std::vector<PropertyList::Pair> entries;
  for (const auto& [id, mouse] : mice.mice) entries.emplace_back(id, storedOf(mouse));
  return PropertyList::dictionary(
      {{words::Chosen, mice.chosen}, {words::Mice, PropertyList::dictionary(std::move(entries))}});
}

}  // namespace

KnownMouse KnownMice::of(std::string_view id) const {
  const auto found = mice.find(id);
  return found == mice.end() ? KnownMouse() : found->second;
}

KnownMice KnownMice::with(std::string_view id, KnownMouse mouse) const {
  KnownMice result = *this;
  if (id != chosen && mouse.record == MouseRecord()) {
    result.mice.erase(std::string(id));
  } else {
    result.mice.insert_or_assign(std::string(id), std::move(mouse));
  }
  return result;
}

KnownMice KnownMice::withChosen(std::string_view id, std::string_view name) const {
  KnownMice result = *this;
  const std::string before = std::exchange(result.chosen, id);
  if (before != mice::virtualMouse) result = result.with(before, of(before));
  if (id == mice::virtualMouse) return result;
  return result.with(id, {std::string(name), of(id).record});
}

KnownMice KnownMice::withChosenAs(std::string_view id, std::string_view name) const {
  KnownMice result = *this;
  result.chosen = id;
  result.mice.erase(chosen);
  return result.with(id, {std::string(name), of(chosen).record});
}

MouseFile::MouseFile(FileSystem& files, Log& log, const std::string& folder)
    : mFiles(files), mLog(log), mFolder(folder), mPath(folder + "/mouse.plist") {}

KnownMice MouseFile::load() {
  Bytes bytes;
  std::string reason = "it does not name a mouse";
  const std::error_code error = mFiles.read(mPath, maximumSize, bytes);
  if (error == std::errc::no_such_file_or_directory) return {};
  if (error) {
    reason = error.message();
  } else if (const auto stored = decodePropertyList(bytes, &reason)) {
    if (auto mice = miceOf(*stored)) return *std::move(mice);
  }
  mLog.line("cannot use " + mPath + ", so the virtual mouse is used: " + reason);
  std::string newPath;
  const std::error_code moveError = setAside(mFiles, mPath, newPath);
  mIsDamaged = static_cast<bool>(moveError);
  mLog.line(moveError ? "cannot move " + mPath + " aside: " + moveError.message() : "it is kept as " + newPath);
  return {};
}

std::error_code MouseFile::save(const KnownMice& mice) {
  const auto bytes = encodeBinaryPropertyList(storedOf(mice));
  if (!bytes || bytes->size() > maximumSize) return std::make_error_code(std::errc::file_too_large);
  if (mIsDamaged) {
    std::string newPath;
    const std::error_code error = setAside(mFiles, mPath, newPath);
    if (error && error != std::errc::no_such_file_or_directory) return error;
    mIsDamaged = false;
  }
  return replaceSynced(mFiles, mFolder, "mouse.plist", "mouse.new.plist", *bytes);
}

}  // namespace vorn::engine
