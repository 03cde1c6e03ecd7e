#include "model/RecordLimits.h"

#include <vector>

namespace vorn {

namespace {

constexpr std::size_t valueSize = 8;

}  // namespace

std::size_t recordSize(const PropertyList& record) {
  std::vector<const PropertyList*> open{&record};
  std::size_t size = 0;
  while (!open.empty()) {
    const PropertyList& value = *open.back();
    open.pop_back();
    size += valueSize + value.string().size() + value.bytes().size();
    for (const PropertyList& element : value.elements()) open.push_back(&element);
    if (!value.isDictionary()) continue;
    for (std::size_t index = 0; index < value.size(); ++index) {
      size += value.keyAt(index).size();
      open.push_back(&value.valueAt(index));
    }
  }
  return size;
}

bool isWithinRecordLimits(const PropertyList& record) {
  struct Container {
    const PropertyList* value;
    std::size_t depth;
  };
  std::vector<Container> open;
  std::size_t size = 0;
  const auto visit = [&](const PropertyList& value, std::size_t depth) {
    size += valueSize + value.string().size() + value.bytes().size();
    if (value.size() > 0) open.push_back({&value, depth});
  };
  visit(record, 1);
  while (size <= maximumRecordSize && !open.empty()) {
    const auto [container, depth] = open.back();
    open.pop_back();
    if (depth > maximumRecordDepth) return false;
    // A container too long is refused before it is walked.
    if (container->size() > maximumRecordSize / valueSize) return false;
    for (const PropertyList& element : container->elements()) visit(element, depth + 1);
    if (!container->isDictionary()) continue;
    for (std::size_t index = 0; index < container->size(); ++index) {
      size += container->keyAt(index).size();
      visit(container->valueAt(index), depth + 1);
    }
  }
  return size <= maximumRecordSize;
}

}  // namespace vorn
