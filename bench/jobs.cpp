#include "bench/jobs.h"

#include <json/reader.h>

#include <map>
#include <stdexcept>
#include <utility>

#include "json/json_reading.h"
#include "module/readers.h"

namespace bench {
namespace {

/// The element of a shape, made by `make` when it is new.
template <class Kept, class Make>
Kept& keptFor(const Shape& shape, Make make) {
  static std::map<Shape, Kept> all;
  const auto found = all.find(shape);
  return found != all.end() ? found->second : all.emplace(shape, make()).first->second;
}

DATA_T modelOf(const Shape& shape) {
  JsonAnalysis reader;
  if (readJson(reader, jsonDocumentOf(shape)) != 0) throw std::logic_error("a made job is no job");
  return std::move(reader.data);
}

}  // namespace

Json::Value parsedJson(const std::string& text) {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value root;
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &root, &errors)) {
    throw std::logic_error(errors);
  }
  return root;
}

std::unique_ptr<tinyxml2::XMLDocument> parsedXml(const std::string& text) {
  auto document = std::make_unique<tinyxml2::XMLDocument>(true, tinyxml2::PRESERVE_WHITESPACE);
  if (document->Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
    throw std::logic_error(document->ErrorStr());
  }
  return document;
}

int readJson(JsonAnalysis& reader, const Json::Value& document) {
  // The reader's own member takes the document by value, and its copy is not what a load costs.
  json_reading::Unwatched nobody;
  return json_reading::Reading<json_reading::Unwatched>(reader, nobody).data(document);
}

const std::string& jsonTextOf(const Shape& shape) {
  return keptFor<std::string>(shape, [&] { return jsonJob(shape); });
}

const std::string& xmlTextOf(const Shape& shape) {
  return keptFor<std::string>(shape, [&] { return xmlJob(shape); });
}

const Json::Value& jsonDocumentOf(const Shape& shape) {
  return keptFor<Json::Value>(shape, [&] { return parsedJson(jsonTextOf(shape)); });
}

tinyxml2::XMLDocument& xmlDocumentOf(const Shape& shape) {
  return *keptFor<std::unique_ptr<tinyxml2::XMLDocument>>(
      shape, [&] { return parsedXml(xmlTextOf(shape)); });
}

void makeCurrent(const Shape& shape) {
  static const DATA_T* current = nullptr;
  static DATA_T* owner = nullptr;
  DATA_T& wanted = keptFor<DATA_T>(shape, [&] { return modelOf(shape); });
  nFileType = fileTypeOf(model::JobFormat::Json);
  if (current == &wanted) return;
  // The job moves in and out of the reader: records of a large one are not copied.
  if (owner != nullptr) std::swap(json.data, *owner);
  std::swap(json.data, wanted);
  current = owner = &wanted;
  json.getAllBarCodeToMap();
}

}  // namespace bench
