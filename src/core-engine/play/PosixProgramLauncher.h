// Starts applications as processes of their own: in their own session, without the engine's files and signal handling,
// and without becoming its children. What they end with is nobody's concern.
//
// The program of a bundle NAME.app is that of the "CFBundleExecutable" in its Contents/Info.plist (or Info.plist), in
// the folder MacOS beside it, or beside it. A program that wants a terminal runs in x-terminal-emulator.
#pragma once

#include <string>
#include <vector>

#include "core-engine/play/ApplicationEntry.h"
#include "core-engine/play/ProgramLauncher.h"
#include "core-engine/storage/FileSystem.h"

namespace vorn::engine {

class PosixProgramLauncher : public ProgramLauncher {
 public:
  explicit PosixProgramLauncher(FileSystem& files) : mFiles(files) {}  // the file system outlives the launcher

  bool launch(const std::string& path, std::string& error) override;

 private:
  std::optional<LaunchCommand> commandOfBundle(const std::string& path, std::string& error);
  std::optional<LaunchCommand> commandOfEntry(const std::string& path, std::string& error);

  FileSystem& mFiles;
};

}  // namespace vorn::engine
