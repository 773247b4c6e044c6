#include "desk/job/strict_xml.h"

#include <algorithm>

#include "desk/base/text.h"

namespace desk::job {

namespace {

/// Markup in which references mean nothing.
struct Section {
  std::string_view start, end;
};
constexpr Section kSections[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};

/// "&#0;", "&#x00;", ...
bool isZeroReference(std::string_view text) {
  if (!startsWith(text, "&#")) return false;
  text.remove_prefix(2);
  if (startsWith(text, "x")) text.remove_prefix(1);
  const std::size_t digits = text.find_first_not_of('0');
  return digits > 0 && digits < text.size() && text[digits] == ';';
}

}  // namespace

std::vector<std::size_t> zeroReferences(std::string_view document) {
  std::vector<std::size_t> places;
  if (document.find("&#") == std::string_view::npos) return places;
  for (std::size_t at = 0; (at = document.find_first_of("<&", at)) < document.size(); ++at) {
    const std::string_view rest = document.substr(at);
    if (isZeroReference(rest)) places.push_back(at);
    for (const Section& section : kSections) {
      if (!startsWith(rest, section.start)) continue;
      at = std::min(document.find(section.end, at + section.start.size()), document.size() - 1);
      break;
    }
  }
  return places;
}

}  // namespace desk::job
