// What a page asks with: windows of long lists, elements of a job.
#pragma once

#include <stdexcept>
#include <string>

#include "desk/job/source_text.h"
#include "desk/view/job_view.h"

namespace desk::view {

/// What cannot be answered, as a text for the user.
struct Refusal : std::runtime_error {
  /// @param code 400 for a question that makes no sense, 404 for what is not there
  Refusal(unsigned code, const std::string& text) : std::runtime_error(text), status(code) {}
  unsigned status;
};

/// Empty for what is not given.
std::string valueOf(const Query& query, const std::string& name);

/// A whole number of at most nine digits. Throws Refusal for anything else.
std::size_t wholeNumber(const Query& query, const std::string& name, std::size_t otherwise);

/// Some rows of many.
struct Window {
  std::size_t from = 0;
  std::size_t count = 0;

  bool has(std::size_t row) const { return row >= from && row - from < count; }
};

/// As many rows as a page may ask for at a time.
constexpr std::size_t kMostRows = 500;

/// What "from" and "count" ask for.
Window windowOf(const Query& query);

/// "1.2.3" for a work, "1.2" for a piece, "1" for a bar; empty for the header.
std::string idOf(const job::Element& element);

/// Whether an element is `whole` or part of it.
bool isIn(const job::Element& element, const job::Element& whole);

/// The element of an id. Throws Refusal for what is none.
job::Element elementOf(const std::string& id);

}  // namespace desk::view
