// The exceptions that the plug-in's contract knows. Any other one is a finding.
#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "fuzz/surroundings.h"

namespace fuzzing {

enum Documented : unsigned {
  kNone = 0,
  kStoi = 1,       ///< a bar number that is none
  kStod = 2,       ///< a dimension or a position that is no number
  kNullText = 4,   ///< an XML element that must have a text and has none
  kShortName = 8,  ///< a file name of fewer than five characters
};

/// Which documented exception this is, kNone for any other.
inline Documented kindOf(const std::exception& error) {
  const std::string text = error.what();
  const bool outOfRange = typeid(error) == typeid(std::out_of_range);
  const bool conversion = outOfRange || typeid(error) == typeid(std::invalid_argument);
  if (conversion && text == "stoi") return kStoi;
  if (conversion && text == "stod") return kStod;
  if (outOfRange && text.rfind("basic_string::substr", 0) == 0) return kShortName;
  if (typeid(error) == typeid(std::logic_error) &&
      text == "basic_string::_M_construct null not valid") {
    return kNullText;
  }
  return kNone;
}

/// Runs `call` and returns its text, or "throws " and the text of an exception that is one of
/// `allowed`. Any other exception is a finding.
template <class Call>
std::string outcomeOf(unsigned allowed, Call&& call) {
  try {
    return call();
  } catch (const std::exception& error) {
    const bool expected = (kindOf(error) & allowed) != 0;
    if (!expected) std::fprintf(stderr, "%s: %s\n", typeid(error).name(), error.what());
    require(expected, "an exception that the contract does not know here");
    return std::string("throws ") + error.what();
  }
}

}  // namespace fuzzing
