// The jobs that the cases share: made once per shape, kept until the end of the program.
#pragma once

#include <json/value.h>
#include <tinyxml2.h>

#include <memory>
#include <string>

#include "bench/made_job.h"
#include "model/job_records.h"

class JsonAnalysis;

namespace bench {

/// The host's documents, parsed as the host does it: the library's own parser and nothing else.
Json::Value parsedJson(const std::string& text);
std::unique_ptr<tinyxml2::XMLDocument> parsedXml(const std::string& text);

/// Reads a document that the caller keeps. Returns the reader's code.
int readJson(JsonAnalysis& reader, const Json::Value& document);

/// Everything that a shape gives rise to. Each is made when first asked for.
const std::string& jsonTextOf(const Shape& shape);
const std::string& xmlTextOf(const Shape& shape);
const Json::Value& jsonDocumentOf(const Shape& shape);
tinyxml2::XMLDocument& xmlDocumentOf(const Shape& shape);

/// Makes the shape's job the current one, of the JSON reader.
void makeCurrent(const Shape& shape);

}  // namespace bench
