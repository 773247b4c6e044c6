#include "desk/job/source_text.h"

#include <algorithm>
#include <utility>

#include "desk/base/text.h"

namespace desk::job {

namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr std::size_t kBytesPerMark = 128;

}  // namespace

std::string positionText(const Position& at) {
  const std::string column = at.column > 0 ? ":" + std::to_string(at.column) : "";
  return std::to_string(at.line) + column;
}

SourceText::SourceText(std::string name, std::string bytes)
    : name_(std::move(name)),
      bytes_(std::move(bytes)),
      markSize_(bytes_.compare(0, 3, kByteOrderMark) == 0 ? 3 : 0),
      lineStarts_{markSize_} {
  findLines();
  if (!isAscii(bytes_)) markCharacters();
}

void SourceText::findLines() {
  for (std::size_t end = bytes_.find('\n'); end != std::string::npos;
       end = bytes_.find('\n', end + 1)) {
    lineStarts_.push_back(end + 1);
  }
}

void SourceText::markCharacters() {
  marks_.reserve(bytes_.size() / kBytesPerMark + 1);
  std::size_t characters = 0;
  for (std::size_t at = 0; at < bytes_.size(); at = characterEnd(at), ++characters) {
    if (at >= marks_.size() * kBytesPerMark) marks_.push_back({at, characters});
  }
}

std::size_t SourceText::characterEnd(std::size_t start) const {
  if (static_cast<unsigned char>(bytes_[start]) < 0x80) return start + 1;
  return start + std::max<std::size_t>(utf8CharacterSize(bytes_, start), 1);
}

std::string_view SourceText::line(int number, int column) const {
  if (number < 1 || number > lineCount()) return {};
  const auto index = static_cast<std::size_t>(number);
  std::size_t start = lineStarts_[index - 1];
  std::size_t end = number < lineCount() ? lineStarts_[index] - 1 : bytes_.size();
  if (end > start && bytes_[end - 1] == '\r') --end;
  if (column > 1) start = offsetOf(charactersBefore(start) + static_cast<std::size_t>(column) - 1);
  return std::string_view(bytes_).substr(start, end - std::min(start, end));
}

std::size_t SourceText::charactersBetween(std::size_t start, std::size_t end) const {
  if (marks_.empty()) return end - start;
  if (end - start > kBytesPerMark) return charactersBefore(end) - charactersBefore(start);
  std::size_t characters = 0;
  for (std::size_t at = start; at < end; at = characterEnd(at)) ++characters;
  return characters;
}

std::size_t SourceText::charactersBefore(std::size_t offset) const {
  if (marks_.empty()) return offset;
  std::size_t index = std::min(offset / kBytesPerMark, marks_.size() - 1);
  if (marks_[index].start > offset) --index;  // the first one starts at 0
  std::size_t characters = marks_[index].charactersBefore;
  for (std::size_t at = marks_[index].start; at < offset; at = characterEnd(at)) ++characters;
  return characters;
}

std::size_t SourceText::offsetOf(std::size_t character) const {
  if (marks_.empty()) return std::min(character, bytes_.size());
  const auto next = std::upper_bound(
      marks_.begin(), marks_.end(), character,
      [](std::size_t wanted, const Mark& mark) { return wanted < mark.charactersBefore; });
  const Mark& mark = *(next - 1);
  std::size_t at = mark.start;
  for (std::size_t i = mark.charactersBefore; i < character && at < bytes_.size(); ++i) {
    at = characterEnd(at);
  }
  return at;
}

Position SourceText::position(std::size_t offset) const {
  offset = std::clamp(offset, markSize_, std::max(markSize_, bytes_.size()));
  const auto next = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
  const std::size_t column = charactersBetween(*(next - 1), offset) + 1;
  return {static_cast<int>(next - lineStarts_.begin()), static_cast<int>(column)};
}

std::string describe(const Element& element) {
  if (element.bar == 0) return "the header";
  std::string text;
  const auto add = [&](const char* name, int number) {
    if (number == 0) return;
    if (!text.empty()) text += " of ";
    (text += name) += std::to_string(number);
  };
  add("work ", element.work);
  add("piece ", element.piece);
  add("bar ", element.bar);
  return text;
}

}  // namespace desk::job
