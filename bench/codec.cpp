// Times of decoding and encoding the standard and the large settings bundle, beside libplist in the same run. Each
// figure is the median of many runs; what an operation allocates is freed outside its time. Ours is encoded twice: as
// it was decoded, and as it is built in memory, where no two records share their keys' storage by origin.
#include <plist/plist.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "model/PropertyListCodec.h"
#include "support/StandardBundle.h"

namespace {

using vorn::Bytes;
using vorn::PropertyList;

// Median time of an operation in microseconds; cleanUp runs after each, untimed.
double median(int runs, const std::function<void()>& operation, const std::function<void()>& cleanUp) {
  std::vector<double> times;
  for (int run = 0; run < runs; ++run) {
    const auto start = std::chrono::steady_clock::now();
    operation();
    const auto end = std::chrono::steady_clock::now();
    cleanUp();
    times.push_back(std::chrono::duration<double, std::micro>(end - start).count());
  }
  std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
  return times[static_cast<std::size_t>(runs / 2)];
}

struct Times {
  double decode;
  double encode;
};

Times timeOurs(const Bytes& bytes, const PropertyList& built, int runs, double& encodeBuilt) {
  std::optional<PropertyList> decoded;
  std::optional<Bytes> encoded;
  const double decode = median(
      runs, [&] { decoded = vorn::decodeBinaryPropertyList(bytes); }, [&] { decoded.reset(); });
  const std::optional<PropertyList> tree = vorn::decodeBinaryPropertyList(bytes);
  if (!tree || *tree != built) std::abort();
  const auto forget = [&] { encoded.reset(); };
  encodeBuilt = median(
      runs, [&] { encoded = vorn::encodeBinaryPropertyList(built); }, forget);
  return {decode, median(
                      runs, [&] { encoded = vorn::encodeBinaryPropertyList(*tree); }, forget)};
}

Times timeLibplist(const Bytes& bytes, int runs) {
  const auto* data = reinterpret_cast<const char*>(bytes.data());
  const auto size = static_cast<std::uint32_t>(bytes.size());
  plist_t decoded = nullptr;
  const double decode = median(
      runs, [&] { plist_from_bin(data, size, &decoded); }, [&] { plist_free(std::exchange(decoded, nullptr)); });
  plist_t tree = nullptr;
  plist_from_bin(data, size, &tree);
  if (tree == nullptr) std::abort();
  char* encoded = nullptr;
  std::uint32_t encodedSize = 0;
  const double encode = median(
      runs, [&] { plist_to_bin(tree, &encoded, &encodedSize); }, [&] { std::free(std::exchange(encoded, nullptr)); });
  plist_free(tree);
  return {decode, encode};
}

void compare(const char* name, const PropertyList& bundle, int runs, int runsOfLibplist) {
  const std::optional<Bytes> bytes = vorn::encodeBinaryPropertyList(bundle);
  if (!bytes) std::abort();
  double encodeBuilt = 0;
  const Times ours = timeOurs(*bytes, bundle, runs, encodeBuilt);
  const Times theirs = timeLibplist(*bytes, runsOfLibplist);
  std::printf("%s bundle, %zu bytes\n", name, bytes->size());
  const auto line = [](const char* what, double our, double their) {
    std::printf("  %-22s %9.1f us   libplist %9.1f us   %6.1f times faster\n", what, our, their, their / our);
  };
  line("decode", ours.decode, theirs.decode);
  line("encode", ours.encode, theirs.encode);
  line("encode, built in memory", encodeBuilt, theirs.encode);
}

}  // namespace

int main() {
  compare("standard", vorn::test::standardBundle(), 501, 101);
  compare("large", vorn::test::largeBundle(), 101, 11);
  return 0;
}
