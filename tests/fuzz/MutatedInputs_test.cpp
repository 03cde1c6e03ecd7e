// A million damaged binary lists and a hundred thousand damaged XML lists, the same in every run, in shares that can
// run side by side. Each decodes to nothing with a reason, or to a value that goes round.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <random>

#include "fuzz/RoundTrip.h"

namespace vorn {
namespace {

using Random = std::mt19937_64;

constexpr int shares = 4;
constexpr int binaryMutations = 1000000 / shares;
constexpr int xmlMutations = 100000 / shares;
constexpr std::size_t trailer = 32;

std::size_t below(Random& random, std::size_t limit) {
  return limit == 0 ? 0 : random() % limit;
}

std::vector<PropertyList> smallValues() {
  const PropertyList shared = PropertyList::dictionary({{"command", 1}, {"param1", 4}, {"param2", 0}});
  PropertyList deep = PropertyList::array();
  for (int i = 0; i < 20; ++i) deep = PropertyList::array({deep, deep});
  std::vector<PropertyList> many;
  for (int i = 0; i < 40; ++i) many.push_back(PropertyList::dictionary({{"i", i}, {"k", i % 3}}));
  return {PropertyList::dictionary(),
          PropertyList::array({1, 300, 70000, -1, std::numeric_limits<std::uint64_t>::max(), 0.5, true, false}),
          PropertyList::dictionary({{"a", shared}, {"b", shared}, {"c", PropertyList::array({shared, shared})}}),
          PropertyList::dictionary({{"text", "more than fifteen letters"}, {"t\u00e9xt", "\u20ac\U0001F600"}}),
          PropertyList::array({PropertyList::data(Bytes(20, 7)), PropertyList::Date{1.5}, PropertyList::Uid{300}, ""}),
          deep,
          PropertyList::array(std::vector<PropertyList>(many.begin(), many.begin() + 12)),
          PropertyList::dictionary({{"MacroName", "Macro"},
                                    {"delay", 20},
                                    {"sequence", PropertyList::dictionary({{"0", shared}, {"1", shared}})}})};
}

std::vector<Bytes> binaryCorpus() {
  std::vector<Bytes> corpus;
  for (const PropertyList& value : smallValues()) corpus.push_back(encodeBinaryPropertyList(value).value());
  return corpus;
}

std::vector<Bytes> xmlCorpus() {
  std::vector<Bytes> corpus;
  for (const std::string_view text :
       {"<plist><dict><key>a</key><integer>1</integer><key>b</key><array><true/><false/></array></dict></plist>",
        "<?xml version=\"1.0\"?><!DOCTYPE "
        "plist><plist><array><real>1.5</real><string>&amp;&#233;</string></array></plist>",
        "<array><date>2012-02-29T00:00:00Z</date><data>SGVsbG8=</data><integer>0xff</integer><dict/></array>",
        "<plist><string><![CDATA[text]]></string><!-- comment --></plist>"}) {
    corpus.emplace_back(text.begin(), text.end());
  }
  return corpus;
}

// Values that stand at the edges of what a byte may mean.
std::uint8_t interestingByte(Random& random) {
  constexpr std::array<std::uint8_t, 24> bytes = {0x00, 0x01, 0x07, 0x08, 0x09, 0x0F, 0x10, 0x13,
                                                  0x14, 0x1F, 0x22, 0x33, 0x4F, 0x5F, 0x6F, 0x7F,
                                                  0x80, 0x8F, 0xA1, 0xAF, 0xC0, 0xD1, 0xDF, 0xFF};
  return bytes[below(random, bytes.size())];
}

void flipBits(Bytes& bytes, Random& random) {
  for (std::size_t i = 1 + below(random, 4); i > 0 && !bytes.empty(); --i) {
    bytes[below(random, bytes.size())] ^= static_cast<std::uint8_t>(1u << below(random, 8));
  }
}

void setBytes(Bytes& bytes, Random& random) {
  for (std::size_t i = 1 + below(random, 3); i > 0 && !bytes.empty(); --i) {
    bytes[below(random, bytes.size())] = interestingByte(random);
  }
}

// Takes a piece of another list into this one, in place of what was there or between it.
void splice(Bytes& bytes, const Bytes& other, Random& random) {
  const std::size_t start = below(random, other.size());
  const std::size_t size = below(random, std::min<std::size_t>(other.size() - start, 40) + 1);
  const auto from = other.begin() + static_cast<std::ptrdiff_t>(start);
  const std::size_t place = below(random, bytes.size());
  const auto to = bytes.begin() + static_cast<std::ptrdiff_t>(place);
  if ((random() & 1) != 0) {
    bytes.insert(to, from, from + static_cast<std::ptrdiff_t>(size));
  } else {
    std::copy_n(from, std::min(size, bytes.size() - place), to);
  }
}

void truncate(Bytes& bytes, Random& random) {
  bytes.resize(below(random, bytes.size() + 1));
}

// Takes bytes out of the middle, so that the trailer stays.
void cut(Bytes& bytes, Random& random) {
  const std::size_t start = below(random, bytes.size());
  const std::size_t size = below(random, std::min<std::size_t>(bytes.size() - start, 16) + 1);
  const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(start);
  bytes.erase(from, from + static_cast<std::ptrdiff_t>(size));
}

// Changes the low bytes of one number of the trailer, or a width.
void editTrailer(Bytes& bytes, Random& random) {
  if (bytes.size() < trailer) return;
  constexpr std::array<std::size_t, 6> places = {6, 7, 15, 23, 31, 30};
  bytes[bytes.size() - trailer + places[below(random, places.size())]] = static_cast<std::uint8_t>(random());
}

// Changes the table of offsets, which lies before the trailer.
void editOffsets(Bytes& bytes, Random& random) {
  if (bytes.size() <= trailer) return;
  const std::size_t end = bytes.size() - trailer;
  bytes[end - 1 - below(random, std::min<std::size_t>(end, 30))] = static_cast<std::uint8_t>(random());
}

// The first six changes fit any input, the last two are for the binary form.
constexpr std::size_t changesOfAnyForm = 6;
constexpr std::size_t changesOfTheBinaryForm = 8;

void mutate(Bytes& bytes, const std::vector<Bytes>& corpus, std::size_t changes, Random& random) {
  for (std::size_t rounds = 1 + below(random, 3); rounds > 0; --rounds) {
    if (bytes.empty()) return;
    switch (below(random, changes)) {
      case 0:
        flipBits(bytes, random);
        break;
      case 1:
      case 2:
        setBytes(bytes, random);
        break;
      case 3:
        splice(bytes, corpus[below(random, corpus.size())], random);
        break;
      case 4:
        truncate(bytes, random);
        break;
      case 5:
        cut(bytes, random);
        break;
      case 6:
        editTrailer(bytes, random);
        break;
      default:
        editOffsets(bytes, random);
    }
  }
}

std::string hexadecimal(const Bytes& bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned>(byte));
    text += digits.data();
  }
  return text;
}

using Decode = std::optional<PropertyList> (*)(BytesView, std::string*);

// Number of mutations that decoded to a value.
int runMutations(const std::vector<Bytes>& corpus, std::size_t changes, int count, int share, Decode decode) {
  Random random(static_cast<std::uint64_t>(share) * 1000003 + 273);
  int decoded = 0;
  for (int i = 0; i < count; ++i) {
    Bytes work = corpus[below(random, corpus.size())];
    mutate(work, corpus, changes, random);
    const Bytes bytes(work.begin(), work.end());  // in memory of its very size, so that a read beyond it is seen
    std::string error;
    const std::optional<PropertyList> value = decode(bytes, &error);
    decoded += value ? 1 : 0;
    const std::string fault = test::faultOfRoundTrip(value, error);
    if (!fault.empty()) {
      ADD_FAILURE() << fault << "\n" << hexadecimal(bytes);
      break;
    }
  }
  return decoded;
}

class MutatedInputs : public testing::TestWithParam<int> {};

TEST_P(MutatedInputs, OfTheBinaryFormAreRefusedOrGoRound) {
  const int decoded =
      runMutations(binaryCorpus(), changesOfTheBinaryForm, binaryMutations, GetParam(), decodeBinaryPropertyList);
  // Neither all nor none get through, or the mutations would prove nothing.
  EXPECT_GT(decoded, binaryMutations / 20);
  EXPECT_LT(decoded, binaryMutations * 19 / 20);
}

TEST_P(MutatedInputs, OfTheXmlFormAreRefusedOrGoRound) {
  const int decoded = runMutations(xmlCorpus(), changesOfAnyForm, xmlMutations, GetParam(), decodeXmlPropertyList);
  EXPECT_GT(decoded, xmlMutations / 200);
  EXPECT_LT(decoded, xmlMutations * 19 / 20);
}

INSTANTIATE_TEST_SUITE_P(InShares, MutatedInputs, testing::Range(0, shares));

}  // namespace
}  // namespace vorn
