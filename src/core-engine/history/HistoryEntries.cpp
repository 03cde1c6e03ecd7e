#include "core-engine/history/HistoryEntries.h"

#include <algorithm>
#include <utility>

#include "model/RecordLimits.h"

namespace vorn::engine {

namespace {

std::size_t sizeOf(const HistoryEntry& entry) {
  std::size_t size = recordSize(entry.description);
  for (const Edit& each : entry.edits)
    size += recordSize(each.place) + recordSize(each.before) + recordSize(each.after);
  return size;
}

}  // namespace

HistoryEntries::HistoryEntries(std::vector<HistoryEntry> entries, std::size_t undone, std::uint64_t lastID) {
  for (HistoryEntry& each : entries) add(std::move(each));
  mUndone = std::min(undone, mEntries.size());
  mLastID = std::max(mLastID, lastID);
}

void HistoryEntries::take(const HistoryStep& step) {
  const auto drop = [this](std::size_t position) {
    mSize -= mSizes[position];
    mEntries.erase(mEntries.begin() + static_cast<std::ptrdiff_t>(position));
    mSizes.erase(mSizes.begin() + static_cast<std::ptrdiff_t>(position));
  };
  const std::size_t standing = this->standing();
  if (step.endsUndone) {
    while (mEntries.size() > standing) drop(mEntries.size() - 1);
  }
  if (step.dropsLast && !mEntries.empty()) drop(mEntries.size() - 1);
  for (const std::uint64_t id : step.gone) {
    const auto found = std::find_if(mEntries.begin(), mEntries.end(), [id](const auto& each) { return each.id == id; });
    if (found != mEntries.end()) drop(static_cast<std::size_t>(found - mEntries.begin()));
  }
  if (step.added) add(*step.added);
  mUndone = std::min(step.undone, mEntries.size());
}

void HistoryEntries::add(HistoryEntry entry) {
  mLastID = std::max(mLastID, entry.id);
  mSizes.push_back(sizeOf(entry));
  mSize += mSizes.back();
  mEntries.push_back(std::move(entry));
  while (mEntries.size() > maximumCount || (mSize > maximumSize && mEntries.size() > 1)) dropOldest();
}

void HistoryEntries::dropOldest() {
  mSize -= mSizes.front();
  mEntries.pop_front();
  mSizes.pop_front();
}

}  // namespace vorn::engine
