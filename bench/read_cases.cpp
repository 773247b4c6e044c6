#include <memory>

#include "bench/cases.h"
#include "bench/jobs.h"
#include "module/readers.h"

namespace bench {
namespace {

struct Nothing {};

Nothing prepareNothing() {
  return {};
}

void addJsonCases(const std::string& name, const Shape& shape) {
  const int iterations = iterationsFor(shape.pieces);
  addCase(name + "parse", iterations, prepareNothing,
          [=](Nothing) { return parsedJson(jsonTextOf(shape)); });
  addCase(name + "copy", iterations, prepareNothing,
          [=](Nothing) { return Json::Value(jsonDocumentOf(shape)); });
  addCase(
      name + "free", iterations,
      [=] { return std::make_unique<Json::Value>(jsonDocumentOf(shape)); },
      [](std::unique_ptr<Json::Value>& document) {
        document.reset();
        return 0;
      });
  addCase(
      name + "read", iterations, [] { return std::make_unique<JsonAnalysis>(); },
      [=](std::unique_ptr<JsonAnalysis>& reader) {
        return readJson(*reader, jsonDocumentOf(shape));
      });
}

void addXmlCases(const std::string& name, const Shape& shape) {
  const int iterations = iterationsFor(shape.pieces);
  addCase(name + "parse", iterations, prepareNothing,
          [=](Nothing) { return parsedXml(xmlTextOf(shape)); });
  addCase(
      name + "free", iterations, [=] { return parsedXml(xmlTextOf(shape)); },
      [](std::unique_ptr<tinyxml2::XMLDocument>& document) {
        document.reset();
        return 0;
      });
  addCase(
      name + "read", iterations, [] { return std::make_unique<XmlAnalysis>(); },
      [=](std::unique_ptr<XmlAnalysis>& reader) {
        return reader->analysisData(xmlDocumentOf(shape).RootElement());
      });
}

}  // namespace

void addReadCases() {
  for (const int pieces : {160, 1000, 8000, 10000, 80000, 100000}) {
    const std::string size = "/" + std::to_string(pieces) + "/";
    Shape shape;
    shape.pieces = pieces;
    addJsonCases("json.first" + size, shape);
    addXmlCases("xml" + size, shape);
    shape.headerLast = true;
    addXmlCases("xml.header_last" + size, shape);
    shape.headerLast = false;
    shape.secondSpelling = true;
    addJsonCases("json.second" + size, shape);
  }
}

}  // namespace bench
