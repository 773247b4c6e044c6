#include <json/value.h>
#include <tinyxml2.h>

#include <array>
#include <cstring>
#include <string>
#include <unordered_map>

#include "desk/host/documents.h"
#include "desk/host/settings.h"
#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace deskhost {
namespace {

using tinyxml2::XMLElement;

/// Below these a text stands in its record itself.
constexpr std::size_t kOwnMemory = 16;

/// The elements of a level, and what one without values takes at most in any command, as measured.
struct ListRow {
  const char* jsonKeys[2];
  const char* xmlName;
  std::size_t bytes;
};
constexpr ListRow kLists[] = {
    {{json_keys::kBars, json_keys::kBarsSecond}, xml_elements::kBars, 2200},
    {{json_keys::kPieces, nullptr}, xml_elements::kPieces, 7000},
    {{json_keys::kWorks, nullptr}, xml_elements::kWorks, 3000},
};
constexpr std::size_t kLevels = std::size(kLists);

/// What the records of a document may still take.
class RecordMemory {
 public:
  explicit RecordMemory(std::size_t documentBytes)
      : left_(settings().recordBytes + documentBytes * settings().recordBytesPerByte) {}

  /// Notes a text of an element. Elements of its level hold it until there is another one.
  void text(std::size_t level, std::string_view key, std::size_t size) {
    Texts& texts = texts_[level];
    const std::size_t bytes = size < kOwnMemory ? 0 : size;
    if (bytes == 0 && texts.total == 0) return;
    std::size_t& kept = texts.sizes[key];
    texts.total += bytes - kept;
    kept = bytes;
  }

  /// Whether there is room for one more element.
  bool add(std::size_t level) {
    const std::size_t bytes = kLists[level].bytes + kCopies * texts_[level].total;
    const bool fits = bytes <= left_;
    if (fits) left_ -= bytes;
    return fits;
  }

 private:
  static constexpr std::size_t kCopies = 6;  ///< of a text: in records, rows, cells, output

  struct Texts {
    std::unordered_map<std::string_view, std::size_t> sizes;
    std::size_t total = 0;
  };

  std::size_t left_;
  std::array<Texts, kLevels> texts_;
};

class JsonElements {
 public:
  explicit JsonElements(std::size_t documentBytes) : memory_(documentBytes) {}

  /// The first element below `parent` for which there is no room, else null.
  const Json::Value* firstBeyond(const Json::Value& parent, std::size_t level = 0) {
    if (level == kLevels || !parent.isObject()) return nullptr;
    for (const char* key : kLists[level].jsonKeys) {
      if (key == nullptr || !parent[key].isArray()) continue;
      for (const Json::Value& element : parent[key]) {
        noteTexts(element, level);
        if (!memory_.add(level)) return &element;
        if (const Json::Value* found = firstBeyond(element, level + 1)) return found;
      }
    }
    return nullptr;
  }

 private:
  /// Those of the element and of its cut.
  void noteTexts(const Json::Value& element, std::size_t level) {
    if (!element.isObject()) return;
    for (auto member = element.begin(); member != element.end(); ++member) {
      const char* end = nullptr;
      const char* const name = member.memberName(&end);
      const std::string_view key(name, static_cast<std::size_t>(end - name));
      const char* text = nullptr;
      if (member->getString(&text, &end)) {
        memory_.text(level, key, static_cast<std::size_t>(end - text));
      } else if (key == json_keys::kCutOfPiece) {
        noteTexts(*member, level);
      }
    }
  }

  RecordMemory memory_;
};

bool isCut(const XMLElement& element) {
  return std::strcmp(element.Name(), xml_elements::kCuts) == 0;
}

class XmlElements {
 public:
  explicit XmlElements(std::size_t documentBytes) : memory_(documentBytes) {}

  const XMLElement* firstBeyond(const XMLElement& parent, std::size_t level = 0) {
    if (level == kLevels) return nullptr;
    const char* const name = kLists[level].xmlName;
    for (auto* element = parent.FirstChildElement(name); element != nullptr;
         element = element->NextSiblingElement(name)) {
      noteTexts(*element, level);
      if (!memory_.add(level)) return element;
      if (const XMLElement* found = firstBeyond(*element, level + 1)) return found;
    }
    return nullptr;
  }

 private:
  void noteTexts(const XMLElement& element, std::size_t level) {
    for (auto* child = element.FirstChildElement(); child != nullptr;
         child = child->NextSiblingElement()) {
      const char* const text = child->GetText();
      if (text != nullptr) memory_.text(level, child->Name(), std::strlen(text));
      if (text == nullptr && isCut(*child)) noteTexts(*child, level);
    }
  }

  RecordMemory memory_;
};

std::string reasonFor(std::size_t documentBytes) {
  return "the records up to here take more memory than a document of " +
         std::to_string(documentBytes) + " bytes is granted";
}

}  // namespace

bool checkElements(const Json::Value& root, std::string_view text, DocumentFault& fault) {
  const Json::Value* const beyond = JsonElements(text.size()).firstBeyond(root);
  if (beyond == nullptr) return true;
  fault = faultAt(text, static_cast<std::size_t>(beyond->getOffsetStart()), reasonFor(text.size()));
  fault.isOnlyHere = true;
  return false;
}

bool checkElements(const XMLElement& root, std::size_t documentBytes, DocumentFault& fault) {
  const XMLElement* const beyond = XmlElements(documentBytes).firstBeyond(root);
  if (beyond == nullptr) return true;
  fault = {beyond->GetLineNum(), 0, reasonFor(documentBytes), true};
  return false;
}

}  // namespace deskhost
