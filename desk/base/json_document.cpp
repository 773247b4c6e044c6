#include "desk/base/json_document.h"

#include <json/writer.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <unordered_map>
#include <utility>

#include "desk/base/numbers.h"

namespace desk {

namespace {

constexpr std::size_t kLongestLine = 74;

class Document {
 public:
  explicit Document(const std::vector<std::string>& order) {
    for (const std::string& name : order) ranks_.emplace(name, ranks_.size());
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    scalars_.reset(builder.newStreamWriter());
  }

  std::string write(const Json::Value& root) {
    append(root, "\n");
    return text_ + "\n";
  }

  std::string write(std::size_t size, const std::function<Json::Value(std::size_t)>& elementAt) {
    for (std::size_t i = 0; i < size; ++i) {
      text_ += i == 0 ? "[\n  " : ",\n  ";
      append(elementAt(i), "\n  ");
    }
    return text_ + (size == 0 ? "[]\n" : "\n]\n");
  }

 private:
  /// @param line what begins a line of the value's parent
  void append(const Json::Value& value, const std::string& line) {
    if (value.empty() || (!value.isArray() && !value.isObject())) {
      text_ += scalar(value);
    } else if (value.isObject()) {
      appendObject(value, line);
    } else {
      appendArray(value, line);
    }
  }

  void appendObject(const Json::Value& object, const std::string& line) {
    const char* between = "";
    text_ += '{';
    for (const std::string& name : namesOf(object)) {
      text_ += between + line + "  " + scalar(name) + ": ";
      append(object[name], line + "  ");
      between = ",";
    }
    text_ += line + "}";
  }

  void appendArray(const Json::Value& array, const std::string& line) {
    if (const std::string together = onOneLine(array); !together.empty()) {
      text_ += together;
      return;
    }
    const char* between = "";
    text_ += '[';
    for (const Json::Value& element : array) {
      text_ += between + line + "  ";
      append(element, line + "  ");
      between = ",";
    }
    text_ += line + "]";
  }

  /// A short array of scalars; empty for others.
  std::string onOneLine(const Json::Value& array) {
    std::string text = "[";
    for (const Json::Value& element : array) {
      if ((element.isArray() || element.isObject()) && !element.empty()) return "";
      text += (text.size() == 1 ? " " : ", ") + scalar(element);
      if (text.size() > kLongestLine) return "";
    }
    return text + " ]";
  }

  std::string scalar(const Json::Value& value) {
    if (value.type() == Json::realValue) return shortestText(value.asDouble());
    std::ostringstream stream;
    scalars_->write(value, &stream);
    return stream.str();
  }

  std::vector<std::string> namesOf(const Json::Value& object) const {
    std::vector<std::string> names = object.getMemberNames();
    const auto rank = [&](const std::string& name) {
      const auto found = ranks_.find(name);
      const auto start = static_cast<std::size_t>(object[name].getOffsetStart());
      return std::make_pair(found == ranks_.end() ? ranks_.size() : found->second, start - 1);
    };
    std::stable_sort(names.begin(), names.end(),
                     [&](const std::string& a, const std::string& b) { return rank(a) < rank(b); });
    return names;
  }

  std::unordered_map<std::string, std::size_t> ranks_;
  std::unique_ptr<Json::StreamWriter> scalars_;
  std::string text_;
};

}  // namespace

std::string jsonDocument(const Json::Value& root, const std::vector<std::string>& order) {
  return Document(order).write(root);
}

std::string compactJson(const Json::Value& root) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  builder["precision"] = 15;
  return Json::writeString(builder, root);
}

std::string jsonArray(std::size_t size, const std::function<Json::Value(std::size_t)>& elementAt,
                      const std::vector<std::string>& order) {
  return Document(order).write(size, elementAt);
}

}  // namespace desk
