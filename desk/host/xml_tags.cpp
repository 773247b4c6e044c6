#include <algorithm>
#include <cstring>
#include <string>

#include "desk/host/documents.h"
#include "desk/host/settings.h"

namespace deskhost {
namespace {

constexpr char kReference[] = "&#";

/// Markup that runs to its own end mark whatever it holds. The last one is any other declaration.
struct Section {
  std::string_view start, end;
};
constexpr Section kSections[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<!", ">"}};

/// Most bytes are passed over by memchr. The zero byte behind the text ends the loop over a tag.
class TagWalk {
 public:
  explicit TagWalk(const std::string& text)
      : text_(text),
        end_(text.c_str() + text.size()),
        hasReferences_(text.find(kReference) != std::string::npos) {}

  bool run(DocumentFault& fault) {
    const char* at = text_.c_str();
    while (!isRefused_) {
      const char* const start = next('<', at);
      if (hasReferences_) countReferences(at, start);
      if (start == end_) break;
      at = start[1] == '!' || start[1] == '?' ? afterSection(start) : walkTag(start);
    }
    if (isRefused_) fault = std::move(fault_);
    return !isRefused_;
  }

 private:
  /// The first `byte` from there on, else the end.
  const char* next(char byte, const char* from) const {
    const void* found = std::memchr(from, byte, static_cast<std::size_t>(end_ - from));
    return found == nullptr ? end_ : static_cast<const char*>(found);
  }

  void refuse(const char* at, const std::string& reason) {
    if (isRefused_) return;
    isRefused_ = true;
    fault_ = faultAt(text_, static_cast<std::size_t>(at - text_.data()), reason);
  }

  void refuseBeyond(const char* at, std::size_t most, const char* what) {
    refuse(at, "more than " + std::to_string(most) + what);
    fault_.isOnlyHere = true;
  }

  const char* afterSection(const char* start) const {
    const std::string_view rest(start, static_cast<std::size_t>(end_ - start));
    for (const Section& section : kSections) {
      if (rest.compare(0, section.start.size(), section.start) != 0) continue;
      return start + std::min(rest.find(section.end, section.start.size()), rest.size());
    }
    return start + 1;
  }

  /// Returns the tag's '>', or the end. Each attribute has one '=' outside of quotes.
  const char* walkTag(const char* start) {
    std::size_t attributes = 0;
    const char* at = start + 1;
    for (;; ++at) {
      while (static_cast<unsigned char>(*at) > '>') ++at;
      if (*at == '>' || at >= end_) break;
      if (*at == '=' && ++attributes == maxAttributes_ + 1) {
        refuseBeyond(start, maxAttributes_, " attributes in one element");
      }
      if (*at == '"' || *at == '\'') at = std::min(valueEnd(at), end_ - 1);
    }
    countLevel(start, at);
    return at;
  }

  /// The mark that ends a value, else the end.
  const char* valueEnd(const char* mark) {
    const char* const end = next(*mark, mark + 1);
    if (hasReferences_) countReferences(mark, end);
    return end;
  }

  void countLevel(const char* start, const char* end) {
    const char* name = start + 1;
    while (static_cast<unsigned char>(*name) <= ' ' && name < end) ++name;
    if (*name == '/') {
      if (open_ == 0) {
        refuse(start, "an end tag closes no element");
        fault_.isBehind = true;
      }
      --open_;
    } else if (end[-1] != '/') {
      ++open_;
    }
  }

  /// Those of one text or value: from each, the library searches for a ';' up to its end.
  void countReferences(const char* from, const char* to) {
    const std::string_view text(from, static_cast<std::size_t>(to - from));
    std::size_t unfinished = 0;
    std::size_t last = 0;
    for (std::size_t at = text.find(kReference); at < text.size();
         at = text.find(kReference, at + 1)) {
      if (text.substr(last, at - last).find(';') != std::string_view::npos) unfinished = 0;
      last = at;
      if (++unfinished <= settings().maxXmlReferences) continue;
      refuseBeyond(from + at, settings().maxXmlReferences, " character references without a ';'");
      return;
    }
  }

  const std::string& text_;
  const char* const end_;
  const bool hasReferences_;
  const std::size_t maxAttributes_ = settings().maxXmlAttributes;
  std::size_t open_ = 0;
  bool isRefused_ = false;
  DocumentFault fault_;
};

}  // namespace

bool checkXmlTags(const std::string& text, DocumentFault& fault) {
  const std::size_t zero = text.find('\0');
  if (zero != std::string::npos && zero + 1 < text.size()) {
    fault = faultAt(text, zero, "there are bytes after a zero byte");
    fault.isBehind = true;
    return false;
  }
  return TagWalk(text).run(fault);
}

}  // namespace deskhost
