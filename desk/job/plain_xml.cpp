#include "desk/job/strict_xml.h"

#include <algorithm>
#include <array>

#include "desk/base/text.h"

namespace desk::job {

namespace {

struct Declaration {
  std::string_view text, encoding;
};
constexpr Declaration kDeclarations[] = {
    {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "UTF-8"},
    {"<?xml version=\"1.0\" encoding=\"utf-8\"?>", "utf-8"},
    {"<?xml version=\"1.0\"?>", ""},
    {"", ""},
};

/// What a byte may be part of.
enum Use : unsigned char { kNothing = 0, kText = 1, kBlank = 2, kName = 4, kNameStart = 8 };

constexpr std::array<unsigned char, 256> makeUses() {
  std::array<unsigned char, 256> uses{};
  for (std::size_t byte = 0x20; byte < uses.size(); ++byte) uses[byte] = kText;
  for (const char blank : {' ', '\t', '\r', '\n'}) {
    uses[static_cast<unsigned char>(blank)] = kText | kBlank;
  }
  // A ']' may be the first of those that must not stand in front of a '>'.
  for (const char mark : {'<', '&', ']'}) uses[static_cast<unsigned char>(mark)] = kNothing;
  for (std::size_t i = 0; i < 26; ++i) uses['a' + i] = uses['A' + i] = kText | kName | kNameStart;
  for (std::size_t i = 0; i < 10; ++i) uses['0' + i] = kText | kName;
  uses['_'] = kText | kName | kNameStart;
  uses['-'] = uses['.'] = kText | kName;
  return uses;
}

class PlainWalk {
 public:
  explicit PlainWalk(std::string_view content) : rest_(content) {}

  bool run() {
    while (!rest_.empty()) {
      skip(open_.empty() ? kBlank : kText);
      if (!rest_.empty() && !tag()) return false;
    }
    return hasRoot_ && open_.empty();
  }

 private:
  std::string_view skip(Use use) {
    static constexpr auto kUses = makeUses();
    const auto isOther = [&](char byte) {
      return (kUses[static_cast<unsigned char>(byte)] & use) == 0;
    };
    const auto end = std::find_if(rest_.begin(), rest_.end(), isOther);
    const std::string_view skipped = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(skipped.size());
    return skipped;
  }

  bool take(char mark) {
    const bool isThere = !rest_.empty() && rest_.front() == mark;
    if (isThere) rest_.remove_prefix(1);
    return isThere;
  }

  bool tag() {
    if (!take('<')) return false;
    if (take('/')) return endTag();
    if (open_.empty() && hasRoot_) return false;
    hasRoot_ = true;
    const std::string_view all = rest_;
    if (skip(kNameStart).empty()) return false;
    skip(kName);
    const std::string_view name = all.substr(0, all.size() - rest_.size());
    if (take('/')) return take('>');
    open_.push_back(name);
    return take('>');
  }

  bool endTag() {
    if (open_.empty() || skip(kName) != open_.back()) return false;
    open_.pop_back();
    return take('>');
  }

  std::string_view rest_;
  std::vector<std::string_view> open_;  ///< the names of the open elements
  bool hasRoot_ = false;
};

/// The two code points beyond those that stand for characters, as they are not in XML.
bool hasNonCharacter(std::string_view text) {
  return text.find("\xEF\xBF\xBE") != std::string_view::npos ||
         text.find("\xEF\xBF\xBF") != std::string_view::npos;
}

}  // namespace

std::optional<std::string_view> encodingOfPlainXml(std::string_view document) {
  if (!isAscii(document) && (hasNonCharacter(document) || !isUtf8(document))) return {};
  const Declaration* declaration = kDeclarations;
  while (!startsWith(document, declaration->text)) ++declaration;
  if (!PlainWalk(document.substr(declaration->text.size())).run()) return {};
  return declaration->encoding;
}

}  // namespace desk::job
