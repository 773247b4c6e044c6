#include "desk/view/query.h"

#include <algorithm>
#include <vector>

namespace desk::view {

namespace {

constexpr std::size_t kMostDigits = 9;

/// False for what is no such number.
bool readNumber(const std::string& text, std::size_t& number) {
  const auto isDigit = [](char byte) { return byte >= '0' && byte <= '9'; };
  const bool isOne =
      !text.empty() && text.size() <= kMostDigits && std::all_of(text.begin(), text.end(), isDigit);
  if (isOne) number = std::stoul(text);
  return isOne;
}

}  // namespace

std::string valueOf(const Query& query, const std::string& name) {
  const auto found = query.find(name);
  return found == query.end() ? "" : found->second;
}

std::size_t wholeNumber(const Query& query, const std::string& name, std::size_t otherwise) {
  const std::string text = valueOf(query, name);
  std::size_t number = otherwise;
  if (text.empty() || readNumber(text, number)) return number;
  throw Refusal(400, name + " is no number");
}

Window windowOf(const Query& query) {
  return {wholeNumber(query, "from", 0),
          std::min(wholeNumber(query, "count", kMostRows), kMostRows)};
}

std::string idOf(const job::Element& element) {
  std::string id;
  for (const int number : {element.bar, element.piece, element.work}) {
    if (number > 0) id += (id.empty() ? "" : ".") + std::to_string(number);
  }
  return id;
}

bool isIn(const job::Element& element, const job::Element& whole) {
  return element.bar == whole.bar && (whole.piece == 0 || element.piece == whole.piece) &&
         (whole.work == 0 || element.work == whole.work);
}

job::Element elementOf(const std::string& id) {
  std::vector<std::size_t> numbers;
  for (std::size_t start = 0; start <= id.size() && numbers.size() <= 3;) {
    const std::size_t end = std::min(id.find('.', start), id.size());
    if (!readNumber(id.substr(start, end - start), numbers.emplace_back())) numbers.back() = 0;
    start = end + 1;
  }
  const bool hasZero = std::find(numbers.begin(), numbers.end(), 0) != numbers.end();
  if (hasZero || numbers.size() > 3) throw Refusal(400, "no id of a bar, piece or work");
  numbers.resize(3);
  const auto at = [&](std::size_t level) { return static_cast<int>(numbers[level]); };
  return {at(0), at(1), at(2)};
}

}  // namespace desk::view
