#include "desk/job/json_positions.h"

#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <memory>
#include <utility>

namespace desk::job {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

/// An object or array that the walk is in.
struct Container {
  bool hasKeys;  ///< an object
  std::size_t start;
  std::size_t firstKey;               ///< index of its first key among those of the open ones
  std::size_t pendingKey = kNowhere;  ///< its value has not come yet
};

/// What a string between quotation marks says.
std::string decoded(std::string_view string) {
  const std::string_view inner = string.substr(1, string.size() - 2);
  if (inner.find('\\') == kNowhere) return std::string(inner);
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Json::Value value;
  reader->parse(string.data(), string.data() + string.size(), &value, nullptr);
  return value.asString();
}

bool endsScalar(char byte) {
  constexpr std::string_view kEnds(" \t\r\n,:/]}\"{[\0", 13);
  const bool isDigit = byte >= '0' && byte <= '9';
  return !isDigit && kEnds.find(byte) != kNowhere;
}

/// A number as standard JSON writes it, or a word.
bool isStandardScalar(std::string_view text) {
  if (text.empty() || std::string_view("+-0123456789").find(text[0]) == kNowhere) return true;
  const auto takeDigits = [&] {
    const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(count);
    return count;
  };
  const auto take = [&](std::string_view any) {
    const bool found = !text.empty() && any.find(text[0]) != kNowhere;
    if (found) text.remove_prefix(1);
    return found;
  };
  take("-");
  const bool startsWithZero = !text.empty() && text[0] == '0';
  const std::size_t whole = takeDigits();
  if (whole == 0 || (startsWithZero && whole > 1)) return false;
  if (take(".") && takeDigits() == 0) return false;
  if (!take("eE")) return text.empty();
  take("+-");
  return takeDigits() > 0 && text.empty();
}

}  // namespace

/// Walks over the text once, token by token.
class KeyWalk {
 public:
  KeyWalk(std::string_view text, JsonPositions& result)
      : text_(text), at_(result.start_), result_(result) {
    while (at_ < text_.size()) step();
  }

 private:
  void step() {
    switch (text_[at_]) {
      case ' ':
      case '\t':
      case '\r':
      case '\n':
      case ':':
      case '\0':
        ++at_;
        break;
      case ',':
        comma_ = at_++;
        break;
      case '/':
        noteLeniency("a comment", at_);
        skipComment();
        break;
      case '}':
      case ']':
        if (comma_ != kNowhere) noteLeniency("a comma with nothing behind it", comma_);
        close();
        break;
      default:
        value();
    }
  }

  void value() {
    const std::size_t start = at_;
    comma_ = kNowhere;
    const bool opens = text_[start] == '{' || text_[start] == '[';
    text_[start] == '"' ? skipString() : opens ? void(++at_) : skipScalar();
    if (!open_.empty() && open_.back().hasKeys) {
      Container& object = open_.back();
      if (object.pendingKey == kNowhere) {
        object.pendingKey = start;
        keys_.push_back(text_.substr(start, at_ - start));
        return;
      }
      result_.keyedValues_.push_back({start, std::exchange(object.pendingKey, kNowhere)});
    }
    if (opens) open_.push_back({text_[start] == '{', start, keys_.size()});
  }

  void close() {
    comma_ = kNowhere;
    ++at_;
    if (open_.empty()) return;
    if (open_.back().hasKeys && !isLikeOneBefore(open_.back())) noteLostKeys(open_.back());
    keys_.resize(open_.back().firstKey);
    open_.pop_back();
  }

  /// Whether an object has the keys of the one before it at its depth, which lost none.
  bool isLikeOneBefore(const Container& object) const {
    if (open_.size() >= complete_.size()) return false;
    const Keys& before = complete_[open_.size()];
    const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(object.firstKey);
    return std::equal(first, keys_.end(), before.begin(), before.end());
  }

  void noteLostKeys(const Container& object) {
    std::unordered_map<std::string, std::size_t> last;
    const auto first = keys_.begin() + static_cast<std::ptrdiff_t>(object.firstKey);
    for (auto key = first; key != keys_.end(); ++key) {
      const auto start = static_cast<std::size_t>(key->data() - text_.data());
      const auto [entry, isNew] = last.try_emplace(decoded(*key), start);
      if (isNew) continue;
      result_.lostKeys_[object.start].push_back({entry->first, entry->second, start});
      entry->second = start;
    }
    if (last.size() < static_cast<std::size_t>(keys_.end() - first)) return;
    if (open_.size() >= complete_.size()) complete_.resize(open_.size() + 1);
    complete_[open_.size()].assign(first, keys_.end());
  }

  void skipString() {
    std::size_t control = kNowhere;
    bool isEscaped = false;
    for (++at_; at_ < text_.size() && (isEscaped || text_[at_] != '"'); ++at_) {
      const auto byte = static_cast<unsigned char>(text_[at_]);
      isEscaped = byte == '\\' && !isEscaped;
      if (byte < 0x20 && control == kNowhere) control = at_;
    }
    at_ = std::min(at_ + 1, text_.size());
    if (control != kNowhere) noteLeniency("a control character inside of a text", control);
  }

  void skipComment() {
    const std::string_view mark = text_.compare(at_, 2, "//") == 0 ? "\n" : "*/";
    const std::size_t end = text_.find(mark, at_ + 2);
    at_ = end == kNowhere ? text_.size() : end + mark.size();
  }

  void skipScalar() {
    const std::size_t start = at_;
    while (at_ < text_.size() && !endsScalar(text_[at_])) ++at_;
    const std::string_view scalar = text_.substr(start, at_ - start);
    // The library reads a lone sign as 0.
    if (scalar == "-") {
      noteLeniency("a sign without a number, read as 0,", start);
    } else if (!isStandardScalar(scalar)) {
      noteLeniency("a number with a plus, a leading zero or no digit behind its point", start);
    }
  }

  void noteLeniency(const char* what, std::size_t offset) {
    for (Leniency& known : result_.leniencies_) {
      if (std::string_view(known.what) != what) continue;
      ++known.count;
      return;
    }
    result_.leniencies_.push_back({what, offset, 1});
  }

  std::string_view text_;
  std::size_t at_;
  std::size_t comma_ = kNowhere;               ///< the last comma, while nothing has followed it
  using Keys = std::vector<std::string_view>;  ///< with their quotation marks

  std::vector<Container> open_;
  Keys keys_;                   ///< of the open objects, those of the outermost first
  std::vector<Keys> complete_;  ///< of the last object that lost none, by depth
  JsonPositions& result_;
};

JsonPositions::JsonPositions(std::string_view text, std::size_t start) : start_(start) {
  if (start_ > 0) leniencies_.push_back({"a byte order mark", 0, 1});
  KeyWalk(text, *this);
}

std::size_t JsonPositions::placeOf(std::ptrdiff_t valueOffset) const {
  return start_ + static_cast<std::size_t>(valueOffset);
}

std::size_t JsonPositions::keyOf(std::ptrdiff_t valueOffset) const {
  const std::size_t place = placeOf(valueOffset);
  const auto found =
      std::lower_bound(keyedValues_.begin(), keyedValues_.end(), place,
                       [](const KeyedValue& one, std::size_t value) { return one.value < value; });
  return found == keyedValues_.end() || found->value != place ? place : found->key;
}

const std::vector<LostKey>& JsonPositions::lostKeysOf(std::ptrdiff_t objectOffset) const {
  static const std::vector<LostKey> kNone;
  const auto found = lostKeys_.find(placeOf(objectOffset));
  return found == lostKeys_.end() ? kNone : found->second;
}

}  // namespace desk::job
