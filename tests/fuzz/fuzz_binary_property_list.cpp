#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/RoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string error;
  const std::optional<vorn::PropertyList> value = vorn::decodeBinaryPropertyList({data, size}, &error);
  const std::string fault = vorn::test::faultOfRoundTrip(value, error);
  if (!fault.empty()) {
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
  }
  return 0;
}
