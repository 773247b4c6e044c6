#include "desk/base/json_output.h"

#include <json/writer.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace desk {

namespace {

/// The digits that every number of the document needs to read back as it is.
int digitsFor(const Json::Value& value) {
  if (value.type() == Json::realValue) {
    for (int digits = 15; digits < 17; ++digits) {
      char text[32] = "";
      std::snprintf(text, sizeof text, "%.*g", digits, value.asDouble());
      if (std::strtod(text, nullptr) == value.asDouble()) return digits;
    }
    return 17;
  }
  int digits = 15;
  if (!value.isArray() && !value.isObject()) return digits;
  for (const Json::Value& child : value) digits = std::max(digits, digitsFor(child));
  return digits;
}

}  // namespace

std::string jsonDocument(const Json::Value& root) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "  ";
  builder["emitUTF8"] = true;
  builder["enableYAMLCompatibility"] = true;
  builder["precision"] = digitsFor(root);
  return Json::writeString(builder, root) + "\n";
}

}  // namespace desk
