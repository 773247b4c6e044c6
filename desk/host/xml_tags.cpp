#include "desk/host/documents.h"

#include <algorithm>
#include <string>

#include "desk/host/settings.h"

namespace deskhost {
namespace {

/// Markup that runs to its own end mark whatever it holds. The last one is any other declaration.
struct Section {
  std::string_view start, end;
};
constexpr Section kSections[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<!", ">"}};

int lineOf(std::string_view text, std::size_t at) {
  const std::string_view before = text.substr(0, at);
  return 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

class TagWalk {
 public:
  explicit TagWalk(std::string_view text) : text_(text) {}

  bool run(DocumentFault& fault) {
    while ((at_ = text_.find('<', at_)) < text_.size()) {
      const std::size_t start = at_;
      if (skipSection()) continue;
      walkTag();
      if (reason_.empty()) continue;
      fault = {lineOf(text_, start), 0, reason_};
      return false;
    }
    return true;
  }

 private:
  bool skipSection() {
    for (const Section& section : kSections) {
      if (text_.compare(at_, section.start.size(), section.start) != 0) continue;
      const std::size_t end = text_.find(section.end, at_ + section.start.size());
      at_ = std::min(end, text_.size());
      return true;
    }
    return false;
  }

  /// Goes past the tag's '>'. Each attribute has one '=' outside of quotes.
  void walkTag() {
    const std::size_t name = text_.find_first_not_of(" \t\r\n", at_ + 1);
    const bool closes = name < text_.size() && text_[name] == '/';
    std::size_t attributes = 0;
    for (++at_; at_ < text_.size() && text_[at_] != '>'; ++at_) {
      const char byte = text_[at_];
      if (byte == '=') ++attributes;
      if (byte == '"' || byte == '\'') at_ = std::min(text_.find(byte, at_ + 1), text_.size() - 1);
    }
    if (attributes > settings().maxXmlAttributes) {
      reason_ =
          "more than " + std::to_string(settings().maxXmlAttributes) + " attributes in one element";
    }
    countLevel(closes);
  }

  void countLevel(bool closes) {
    const bool empty = at_ < text_.size() && text_[at_ - 1] == '/';
    if (closes && open_ == 0 && reason_.empty()) reason_ = "an end tag closes no element";
    if (closes && open_ > 0) --open_;
    if (!closes && !empty) ++open_;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t open_ = 0;
  std::string reason_;
};

}  // namespace

bool checkXmlTags(std::string_view text, DocumentFault& fault) {
  const std::size_t zero = text.find('\0');
  if (zero != std::string_view::npos && zero + 1 < text.size()) {
    fault = {lineOf(text, zero), 0, "there are bytes after a zero byte"};
    return false;
  }
  return TagWalk(text).run(fault);
}

}  // namespace deskhost
