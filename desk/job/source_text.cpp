#include "desk/job/source_text.h"

#include <algorithm>
#include <utility>

#include "desk/base/text.h"

namespace desk::job {

namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr std::size_t kCharactersPerStep = 128;

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
  std::size_t characters = 0;
  for (std::size_t at = 0; at < bytes_.size(); at = characterEnd(at)) {
    if (characters++ % kCharactersPerStep == 0) characterStarts_.push_back(at);
    if (bytes_[at] == '\n') lineStarts_.push_back(at + 1);
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
  if (end - start > kCharactersPerStep) return charactersBefore(end) - charactersBefore(start);
  std::size_t characters = 0;
  for (std::size_t at = start; at < end; at = characterEnd(at)) ++characters;
  return characters;
}

std::size_t SourceText::charactersBefore(std::size_t offset) const {
  const auto next = std::upper_bound(characterStarts_.begin(), characterStarts_.end(), offset);
  if (next == characterStarts_.begin()) return 0;
  const auto steps = static_cast<std::size_t>(next - characterStarts_.begin()) - 1;
  std::size_t characters = steps * kCharactersPerStep;
  for (std::size_t at = *(next - 1); at < offset; at = characterEnd(at)) ++characters;
  return characters;
}

std::size_t SourceText::offsetOf(std::size_t character) const {
  const std::size_t step = character / kCharactersPerStep;
  if (step >= characterStarts_.size()) return bytes_.size();
  std::size_t at = characterStarts_[step];
  for (std::size_t i = character % kCharactersPerStep; i > 0 && at < bytes_.size(); --i) {
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

Position SourceText::positionInBytes(int line, int byteColumn) const {
  if (byteColumn < 1) return line < 1 || line > lineCount() ? Position{} : Position{line, 0};
  std::size_t start = markSize_;
  for (; line > 1; --line) {
    const std::size_t end = bytes_.find_first_of("\r\n", start);
    if (end == std::string::npos) return {};
    start = end + (bytes_.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
  return position(start + static_cast<std::size_t>(byteColumn) - 1);
}

std::string describe(const Element& element) {
  if (element.bar == 0) return "the header";
  std::string text = "bar " + std::to_string(element.bar);
  if (element.piece != 0) text = "piece " + std::to_string(element.piece) + " of " + text;
  if (element.work != 0) text = "work " + std::to_string(element.work) + " of " + text;
  return text;
}

}  // namespace desk::job
