#include <algorithm>
#include <charconv>
#include <cmath>

#include "model/PropertyList.h"
#include "model/PropertyListCodec.h"
#include "model/XmlScalars.h"

namespace vorn {

namespace {

// Writes one line and stops soon after the limit; nesting deeper than the codecs allow is cut as well.
class Describer {
 public:
  explicit Describer(std::size_t maximum) : mMaximum(maximum) {}

  void describe(const PropertyList& value, std::size_t depth) {
    switch (value.type()) {
      case PropertyList::Type::None:
        mText += "none";
        break;
      case PropertyList::Type::Boolean:
        mText += value.toBool() ? "true" : "false";
        break;
      case PropertyList::Type::Integer:
        mText += std::to_string(value.toInt64());
        break;
      case PropertyList::Type::Unsigned:
        mText += std::to_string(value.toUnsigned());
        break;
      case PropertyList::Type::Real:
        real(value.toDouble());
        break;
      case PropertyList::Type::String:
        quoted(value.string());
        break;
      case PropertyList::Type::Data:
        data(value.bytes());
        break;
      case PropertyList::Type::Date:
        mText += detail::formatDate(value.date());
        break;
      case PropertyList::Type::Uid:
        mText += "uid " + std::to_string(value.uid().value);
        break;
      case PropertyList::Type::Array:
      case PropertyList::Type::Dictionary:
        container(value, depth);
        break;
    }
  }

  std::string finish() {
    if (mText.size() > mMaximum) {
      std::size_t end = mMaximum;
      while (end > 0 && (static_cast<unsigned char>(mText[end]) & 0xC0) == 0x80) --end;  // never within a character
      mText.resize(end);
      mText += "...";
    }
    return std::move(mText);
  }

 private:
  bool full() const { return mText.size() > mMaximum; }

  void real(double number) {
    char digits[32];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, number);
    mText.append(digits, end.ptr);
    // Told apart from an integer of the same value.
    if (std::isfinite(number) && std::string_view(digits, end.ptr).find_first_of(".e") == std::string_view::npos) {
      mText += ".0";
    }
  }

  void quoted(std::string_view text) {
    mText += '"';
    for (const char character : text.substr(0, mMaximum)) {
      switch (character) {
        case '"':
        case '\\':
          (mText += '\\') += character;
          break;
        case '\n':
          mText += "\\n";
          break;
        case '\r':
          mText += "\\r";
          break;
        case '\t':
          mText += "\\t";
          break;
        default:
          if (static_cast<unsigned char>(character) < 0x20 || character == 0x7F) {
            mText += "\\x";
            hex(static_cast<std::uint8_t>(character));
          } else {
            mText += character;
          }
      }
    }
    mText += '"';
  }

  void data(BytesView bytes) {
    mText += '<';
    for (const std::uint8_t byte : bytes.first(std::min(bytes.size(), mMaximum))) hex(byte);
    mText += '>';
  }

  void hex(std::uint8_t byte) {
    constexpr char digits[] = "0123456789abcdef";
    (mText += digits[byte >> 4]) += digits[byte & 15];
  }

  void container(const PropertyList& value, std::size_t depth) {
    const bool dictionary = value.isDictionary();
    mText += dictionary ? '{' : '[';
    if (depth == maximumDepth) {
      mText += "...";
    } else {
      for (std::size_t i = 0; i < value.size() && !full(); ++i) {
        if (i != 0) mText += ", ";
        if (dictionary) {
          quoted(value.keyAt(i));
          mText += ": ";
        }
        describe(dictionary ? value.valueAt(i) : value.elements()[i], depth + 1);
      }
    }
    mText += dictionary ? '}' : ']';
  }

  std::string mText;
  std::size_t mMaximum;
};

}  // namespace

std::string PropertyList::description(std::size_t maximum) const {
  Describer describer(maximum);
  describer.describe(*this, 1);
  return describer.finish();
}

}  // namespace vorn
