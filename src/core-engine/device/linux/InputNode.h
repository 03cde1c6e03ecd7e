// An event node of the kernel that is read, and kept from everybody else while it is grabbed. One thread at a time.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "core-engine/device/linux/ReportReader.h"
#include "core-engine/device/linux/ReportTranslator.h"
#include "model/FileDescriptor.h"

struct libevdev;

namespace vorn::engine {

class InputNode {
 public:
  using Time = ReportReader::Time;
  using ReportHandler = ReportReader::Handler;

  static Time now();
  // Nothing, with the reason in errno, where that cannot be done.
  static std::unique_ptr<InputNode> open(const std::string& path);

  ~InputNode();
  InputNode(const InputNode&) = delete;
  InputNode& operator=(const InputNode&) = delete;

  int descriptor() const { return mDescriptor.get(); }
  HighResolutionWheels highResolutionWheels() const;

  // False, with the reason in errno: EBUSY where another program has grabbed it.
  bool grab();
  void letGo();
  bool isGrabbed() const { return mIsGrabbed; }
  // Whether a key or button of it is down now, or a hat out of its middle, told or not.
  bool isAnythingDown() const;

  // Tells of the reports that have come, but of a flood only of its beginning: some hundred events. What is left may
  // not make the descriptor readable. Where the kernel's buffer ran over, what has changed since is told as one report.
  ReportReader::Result read(const ReportHandler& handler);

  // A new description of this node, for a copy of it: its name, numbers, codes and properties. The caller frees it;
  // nullptr when the node is gone.
  libevdev* description() const;

 private:
  struct Free {
    void operator()(libevdev* node) const;
  };

  explicit InputNode(int descriptor) : mDescriptor(descriptor) {}

  FileDescriptor mDescriptor;
  std::unique_ptr<libevdev, Free> mNode;
  ReportReader mReader;
  bool mIsGrabbed = false;
};

}  // namespace vorn::engine
