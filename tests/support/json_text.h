// JSON documents written into tests.
#pragma once

#include <json/json.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace test_support {

/// Parses a document; throws when the test's own text is no JSON. A single quote stands for a
/// double one, so that documents stay readable in C++.
inline Json::Value parseJsonText(std::string text) {
  for (char& c : text) {
    if (c == '\'') c = '"';
  }
  Json::CharReaderBuilder builder;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  Json::Value root;
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &root, &errors)) {
    throw std::invalid_argument(errors + " in " + text);
  }
  return root;
}

/// A job with this text between the braces of its one piece.
inline std::string jobWithPiece(const std::string& piece) {
  return "{'Version': '1.0', 'Bar': [{'piece': [{" + piece + "}]}]}";
}

}  // namespace test_support
