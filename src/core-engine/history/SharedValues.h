// Equal values are held once. What is read from a file is all of its own, and takes many times the memory of what it
// was written from, where a profile that came and went a hundred times is one. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "model/PropertyList.h"

namespace vorn::engine {

class SharedValues {
 public:
  // An equal value that shares all of its parts with equal ones of the values before. It holds nothing of the given
  // one, so that the memory that a reader made goes with that.
  PropertyList shared(const PropertyList& value);

 private:
  struct Found {
    PropertyList value;
    std::uint64_t fingerprint;
  };
  Found found(const PropertyList& value);
  Found foundStored(const PropertyList& value);
  Found foundText(const PropertyList& value);
  Found foundContainer(const PropertyList& value);
  template <typename Make>
  Found kept(std::uint64_t fingerprint, const PropertyList& value, const Make& make);

  std::unordered_multimap<std::uint64_t, PropertyList> mValues;  // by their fingerprints; texts and containers
  std::unordered_map<const void*, Found> mSeen;                  // what the given value holds, by its storage
};

}  // namespace vorn::engine
