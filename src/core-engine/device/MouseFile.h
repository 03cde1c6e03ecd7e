// Which mouse the engine uses, and what it was told of each: "mouse.plist" in the folder of the settings, apart from
// them, since it belongs to this machine. One thread at a time.
//
//   chosen   the ID of the mouse; "virtual" for the virtual one
//   mice     by their IDs, of the chosen one and of each that was taught or corrected: name, controls (ControlMap), and
//            resolution (DPI; missing where nobody has corrected it)
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <system_error>

#include "core-engine/Log.h"
#include "core-engine/device/RealMice.h"
#include "core-engine/storage/FileSystem.h"
#include "protocol/Mice.h"

namespace vorn::engine {

struct KnownMouse {
  std::string name;  // as it told itself last; may be empty
  MouseRecord record;
  friend bool operator==(const KnownMouse&, const KnownMouse&) = default;
};

struct KnownMice {
  std::string chosen{mice::virtualMouse};
  std::map<std::string, KnownMouse, std::less<>> mice;  // by their IDs

  // What nobody has told of is a mouse without a name.
  KnownMouse of(std::string_view id) const;
  // The same after this; a mouse that is not chosen and of which nothing is known but its name is left out.
  KnownMice with(std::string_view id, KnownMouse mouse) const;
  KnownMice withChosen(std::string_view id, std::string_view name) const;
  // The chosen one has this ID now, and what was known of it stays known.
  KnownMice withChosenAs(std::string_view id, std::string_view name) const;
  friend bool operator==(const KnownMice&, const KnownMice&) = default;
};

class MouseFile {
 public:
  // What is larger is none.
  static constexpr std::size_t maximumSize = std::size_t{4} * 1024 * 1024;
  static constexpr std::size_t maximumMice = 1000;       // what comes behind them is not read
  static constexpr std::size_t maximumTextLength = 256;  // bytes of an ID or a name

  // Both outlive the file. Nothing is touched yet.
  MouseFile(FileSystem& files, Log& log, const std::string& folder);

  // The virtual mouse where there is no file, or none that can be used: such a one is kept as "mouse.plist.damaged-N".
  KnownMice load();
  // Returns when it is on the disk. After an error the file is what it was, or, where the disk took all but the last
  // word, what it was to be.
  std::error_code save(const KnownMice& mice);

 private:
  FileSystem& mFiles;
  Log& mLog;
  std::string mFolder;
  std::string mPath;
  bool mIsDamaged = false;  // and still in the way: a save would overwrite it
};

}  // namespace vorn::engine
