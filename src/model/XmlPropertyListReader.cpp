// Reads XML property lists with expat. Entities of the document's own and external ones are refused, so that nothing
// is loaded from elsewhere and nothing expands.
#include <expat.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/PropertyListCodec.h"
#include "model/XmlScalars.h"

namespace vorn {

namespace {

enum class Element { Plist, Dict, Array, Key, String, Integer, Real, True, False, Data, Date, Unknown };

Element elementNamed(std::string_view name) noexcept {
  constexpr std::pair<std::string_view, Element> names[] = {
      {"plist", Element::Plist},   {"dict", Element::Dict},       {"array", Element::Array}, {"key", Element::Key},
      {"string", Element::String}, {"integer", Element::Integer}, {"real", Element::Real},   {"true", Element::True},
      {"false", Element::False},   {"data", Element::Data},       {"date", Element::Date}};
  for (const auto& [known, element] : names) {
    if (known == name) return element;
  }
  return Element::Unknown;
}

bool isContainer(Element element) noexcept {
  return element == Element::Dict || element == Element::Array;
}

bool holdsElements(Element element) noexcept {
  return element == Element::Plist || isContainer(element);
}

class XmlReader {
 public:
  XmlReader() : mParser(XML_ParserCreate(nullptr)) {
    XML_SetUserData(mParser.get(), this);
    XML_SetElementHandler(
        mParser.get(),
        [](void* self, const XML_Char* name, const XML_Char**) { static_cast<XmlReader*>(self)->start(name); },
        [](void* self, const XML_Char*) { static_cast<XmlReader*>(self)->end(); });
    XML_SetCharacterDataHandler(mParser.get(), [](void* self, const XML_Char* text, int length) {
      static_cast<XmlReader*>(self)->text({text, static_cast<std::size_t>(length)});
    });
    XML_SetEntityDeclHandler(mParser.get(), [](void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                               const XML_Char*, const XML_Char*, const XML_Char*) {
      static_cast<XmlReader*>(self)->fail("entity declarations are not supported");
    });
    XML_SetSkippedEntityHandler(mParser.get(), [](void* self, const XML_Char* name, int) {
      static_cast<XmlReader*>(self)->fail(std::string(name) + " is no entity of a property list");
    });
  }

  std::optional<PropertyList> read(BytesView bytes, std::string* error) {
    const XML_Status status =
        XML_Parse(mParser.get(), reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()), XML_TRUE);
    if (status == XML_STATUS_OK && mError.empty()) {
      if (mResult) return mResult;
      mError = "there is no value";
    }
    if (error != nullptr) {
      if (mError.empty()) mError = XML_ErrorString(XML_GetErrorCode(mParser.get()));
      *error = "line " + std::to_string(XML_GetCurrentLineNumber(mParser.get())) + ": " + mError;
    }
    return std::nullopt;
  }

 private:
  struct Open {
    Element element;
    std::vector<std::string> keys;  // of a dictionary; one more than the values while a value is expected
    std::vector<PropertyList> values;
  };
  struct Free {
    void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
  };

  void fail(std::string message) {
    if (!mError.empty()) return;
    mError = std::move(message);
    XML_StopParser(mParser.get(), XML_FALSE);
  }

  void start(std::string_view name) {
    if (!mError.empty()) return;
    const Element element = elementNamed(name);
    if (element == Element::Unknown) return fail(std::string(name.substr(0, 40)) + " is no element of a property list");
    if (!mOpen.empty() && !holdsElements(mOpen.back().element)) return fail("a value holds an element");
    if (element == Element::Plist ? !mOpen.empty() : !placeFor(element)) {
      return fail(std::string(name) + " is not expected here");
    }
    if (isContainer(element) && ++mDepth > maximumDepth) return fail("the property list is nested too deeply");
    if (++mElements > maximumExpandedCount) return fail("the property list has too many elements");
    mOpen.push_back({element, {}, {}});
    mText.clear();
  }

  bool placeFor(Element element) const {
    if (mOpen.empty()) return element != Element::Key;
    const Open& parent = mOpen.back();
    if (parent.element == Element::Dict)
      return (element == Element::Key) == (parent.keys.size() == parent.values.size());
    return element != Element::Key && (parent.element == Element::Array || parent.values.empty());
  }

  void text(std::string_view part) {
    if (!mError.empty()) return;
    if (mOpen.empty() || !holdsElements(mOpen.back().element)) {
      mText += part;
    } else if (part.find_first_not_of(" \t\r\n") != std::string_view::npos) {
      fail("there is text between the elements");
    }
  }

  void end() {
    if (!mError.empty()) return;
    Open open = std::move(mOpen.back());
    mOpen.pop_back();
    if (isContainer(open.element)) --mDepth;
    if (open.element == Element::Key) {
      mOpen.back().keys.push_back(std::move(mText));
      mText.clear();
      return;
    }
    std::optional<PropertyList> value = valueOf(open);
    if (!value) return;
    mText.clear();
    if (mOpen.empty()) {
      mResult = std::move(value);
    } else {
      mOpen.back().values.push_back(std::move(*value));
    }
  }

  // The value of an element that has ended; nothing after a failure.
  std::optional<PropertyList> valueOf(Open& open) {
    switch (open.element) {
      case Element::Plist:
        if (open.values.empty()) break;
        return std::move(open.values.front());
      case Element::Array:
        return PropertyList::array(std::move(open.values));
      case Element::Dict:
        return dictionaryOf(open);
      case Element::String:
        return PropertyList(mText);
      case Element::True:
        return PropertyList(true);
      case Element::False:
        return PropertyList(false);
      case Element::Integer:
        return checked(detail::parseInteger(mText), "an integer is malformed");
      case Element::Real:
        return checked(detail::parseReal(mText), "a real is malformed");
      case Element::Date:
        return checked(detail::parseDate(mText), "a date is malformed");
      case Element::Data: {
        const std::optional<Bytes> bytes = detail::parseBase64(mText);
        if (!bytes) break;
        return PropertyList::data(*bytes);
      }
      case Element::Key:
      case Element::Unknown:
        break;
    }
    fail(open.element == Element::Plist ? "there is no value" : "data is malformed");
    return std::nullopt;
  }

  std::optional<PropertyList> dictionaryOf(Open& open) {
    if (open.keys.size() != open.values.size()) {
      fail("a key has no value");
      return std::nullopt;
    }
    std::vector<PropertyList::Pair> entries;
    entries.reserve(open.keys.size());
    for (std::size_t i = 0; i < open.keys.size(); ++i) entries.emplace_back(open.keys[i], std::move(open.values[i]));
    return PropertyList::dictionary(std::move(entries));
  }

  template <typename T>
  std::optional<PropertyList> checked(const std::optional<T>& value, const char* message) {
    if (value) return PropertyList(*value);
    fail(message);
    return std::nullopt;
  }

  std::unique_ptr<XML_ParserStruct, Free> mParser;
  std::vector<Open> mOpen;
  std::string mText;
  std::size_t mElements = 0;
  std::size_t mDepth = 0;  // open arrays and dictionaries
  std::optional<PropertyList> mResult;
  std::string mError;
};

}  // namespace

std::optional<PropertyList> decodeXmlPropertyList(BytesView bytes, std::string* error) {
  if (bytes.size() > maximumSize) {
    if (error != nullptr) *error = "the property list is too large";
    return std::nullopt;
  }
  return XmlReader().read(bytes, error);
}

}  // namespace vorn
