#include "core-engine/history/HistoryJournal.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "core-engine/history/HistoryRecords.h"
#include "core-engine/history/SharedValues.h"
#include "core-engine/storage/Fingerprint.h"
#include "model/PropertyListCodec.h"

namespace vorn::engine {

namespace {

constexpr std::string_view magic = "VornHistory1\n";
constexpr std::size_t sizeBytes = 4;
constexpr std::size_t fingerprintBytes = 8;
constexpr std::size_t checkedBytes = sizeBytes + fingerprintBytes;
constexpr std::size_t headBytes = checkedBytes + fingerprintBytes;
constexpr int byteBits = 8;

void appendNumber(Bytes& to, std::uint64_t number, std::size_t size) {
  for (std::size_t each = 0; each < size; ++each) {
    to.push_back(static_cast<std::uint8_t>(number >> (byteBits * static_cast<int>(each))));
  }
}

std::uint64_t numberIn(BytesView bytes) {
  std::uint64_t number = 0;
  for (std::size_t each = bytes.size(); each-- > 0;) number = number << byteBits | bytes[each];
  return number;
}

struct Record {
  std::uint64_t fingerprint = 0;
  BytesView contents;
};

std::uint64_t checksumOf(BytesView checked, BytesView contents, std::uint64_t before) {
  return fingerprintOf(contents, fingerprintOf(checked, before));
}

// Up to the first one that is none.
std::vector<Record> recordsIn(BytesView bytes) {
  if (bytes.size() < magic.size() || !std::equal(magic.begin(), magic.end(), bytes.begin())) return {};
  bytes = bytes.subspan(magic.size());
  std::vector<Record> records;
  for (std::uint64_t checksum = 0; bytes.size() >= headBytes;) {
    const BytesView checked = bytes.first(checkedBytes);
    const std::size_t size = numberIn(checked.first(sizeBytes));
    if (size > bytes.size() - headBytes) break;
    const BytesView contents = bytes.subspan(headBytes, size);
    checksum = checksumOf(checked, contents, checksum);
    if (numberIn(bytes.subspan(checkedBytes, fingerprintBytes)) != checksum) break;
    records.push_back({numberIn(checked.subspan(sizeBytes)), contents});
    bytes = bytes.subspan(headBytes + size);
  }
  return records;
}

// Of the file that they come from, where it is whole.
std::size_t sizeOf(const std::vector<Record>& records) {
  std::size_t size = magic.size();
  for (const Record& each : records) size += headBytes + each.contents.size();
  return size;
}

// The history that the records come to; nothing where one of them is none. Entries are much alike: what is equal in
// them is there once, as it was before it was written.
std::optional<HistoryEntries> entriesOf(std::span<const Record> records) {
  SharedValues values;
  std::optional<HistoryEntries> entries;
  for (const Record& each : records) {
    const auto decoded = decodeBinaryPropertyList(each.contents);
    if (!decoded) return std::nullopt;
    const PropertyList record = values.shared(*decoded);
    if (!entries) {
      entries = entriesIn(record);
      if (!entries) return std::nullopt;
    } else if (const auto step = stepIn(record)) {
      entries->take(*step);
    } else {
      return std::nullopt;
    }
  }
  return entries;
}

}  // namespace

HistoryJournal::HistoryJournal(FileSystem& files, Log& log, const std::string& folder, History& history)
    : mFiles(files), mLog(log), mPath(folder + "/history"), mHistory(history) {}

HistoryJournal::~HistoryJournal() {
  close();
}

void HistoryJournal::close() {
  if (mFile >= 0) mFiles.close(std::exchange(mFile, -1));
}

void HistoryJournal::load(std::uint64_t fingerprint) {
  mFingerprint = fingerprint;
  Bytes bytes;
  if (const std::error_code error = mFiles.read(mPath, maximumFileSize, bytes)) {
    if (error == std::errc::file_too_large) putAside();
    return;
  }
  const std::vector<Record> records = recordsIn(bytes);
  const auto last = std::find_if(records.rbegin(), records.rend(),
                                 [fingerprint](const Record& each) { return each.fingerprint == fingerprint; });
  if (auto entries = entriesOf(std::span(records.begin(), last.base()))) return mHistory.restore(*std::move(entries));
  // Where it is whole, other settings have been put in place.
  if (last != records.rend() || sizeOf(records) != bytes.size()) putAside();
}

void HistoryJournal::putAside() {
  const std::string aside = mPath + ".damaged";
  const std::error_code error = mFiles.rename(mPath, aside);
  const std::string place = error ? "it cannot be kept as " + aside + ": " + error.message() : "it is kept as " + aside;
  mLog.line("the history in " + mPath + " is damaged and begins anew; " + place);
}

void HistoryJournal::willSave(const PropertyList& before, const PropertyList& after, const ChangeOrigin& origin) {
  mStep = mHistory.stepFor(before, after, origin);
  // What was no change of the settings is in no record.
  const bool hasMissedSteps = mHistory.revision() != mNextRevision;
  mNextRevision = mHistory.revision() + 1;
  if (hasMissedSteps || mSize > std::max(usualSize, mWholeSize)) close();
  if (mFile < 0) mWhole = mHistory.entries();
}

void HistoryJournal::keep(BytesView bytes) {
  mNextFingerprint = fingerprintOf(bytes);
  Bytes contents;
  if (mWhole) {
    contents.assign(magic.begin(), magic.end());
    mChecksum = 0;
    append(contents, recordOf(*mWhole), mFingerprint);
    mWholeSize = contents.size();
    mSize = 0;
  }
  const std::size_t sizeBefore = contents.size();
  append(contents, recordOf(mStep), mNextFingerprint);
  mSize += contents.size() - sizeBefore;
  std::error_code error = mWhole ? writeAnew(contents) : writeAll(mFiles, mFile, contents);
  if (!error) {
    mIsTold = false;
    return;
  }
  close();
  if (!std::exchange(mIsTold, true)) mLog.line("cannot keep the history in " + mPath + ": " + error.message());
}

void HistoryJournal::hasEnded(bool isSaved) {
  mWhole.reset();
  if (isSaved) {
    mFingerprint = mNextFingerprint;
  } else {
    // The last record leads nowhere.
    close();
  }
}

void HistoryJournal::append(Bytes& to, const PropertyList& record, std::uint64_t fingerprint) {
  const Bytes contents = encodeBinaryPropertyList(record).value_or(Bytes());
  const std::size_t start = to.size();
  appendNumber(to, contents.size(), sizeBytes);
  appendNumber(to, fingerprint, fingerprintBytes);
  mChecksum = checksumOf(BytesView(to).subspan(start), contents, mChecksum);
  appendNumber(to, mChecksum, fingerprintBytes);
  to.insert(to.end(), contents.begin(), contents.end());
}

std::error_code HistoryJournal::writeAnew(const Bytes& contents) {
  const std::string fresh = mPath + ".new";
  if (const std::error_code error = mFiles.create(fresh, mFile)) return error;
  std::error_code error = writeAll(mFiles, mFile, contents);
  if (!error) error = mFiles.rename(fresh, mPath);
  if (error) mFiles.remove(fresh);
  return error;
}

}  // namespace vorn::engine
