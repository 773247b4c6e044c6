// Misspelt names of what leads to the next level, mended so that what is inside can be looked at.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <vector>

#include "desk/check/finding.h"

namespace tinyxml2 {
class XMLElement;
}

namespace desk::check {

/// A name that was mended.
struct Mend {
  Element element;    ///< the one that has it
  std::string name;   ///< as it is written
  std::string meant;  ///< as it was likely meant
};

/// Mends what findings from the index `from` on tell of names in a document that were surely meant
/// for bars, pieces, cuts or works: the element has nothing under the right name, and what it has
/// under the wrong one is of the right form. Says in those findings that it was done.
std::vector<Mend> mend(Json::Value& root, Findings& findings, std::size_t from);
std::vector<Mend> mend(tinyxml2::XMLElement& root, Findings& findings, std::size_t from);

/// Adds what a check of the mended document found inside of what was mended, and says so in it.
void addMended(Findings& findings, std::size_t from, const Findings& mended,
               const std::vector<Mend>& mends);

}  // namespace desk::check
