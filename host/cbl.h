// Documents and downloads that the panel runtime offers the plug-in.
#pragma once

#include <string>

namespace Json {
class Value;
}
namespace tinyxml2 {
class XMLDocument;
class XMLElement;
}  // namespace tinyxml2

// --- names fixed by the host ---------------------------------------------------------------------

namespace cbl {

/// Loads the JSON document at `path` into `root`.
/// @param path absolute path on the controller
/// @param root the caller's value; its content is unspecified after a failure
/// @param flag the plug-in passes false
/// @return 0 or more on success, negative when there is no such document or it is not JSON.
///         Throws nothing of its own.
int loadJsonFile(const std::string& path, Json::Value& root, bool flag);

/// Loads the XML document at `path` into `document` and points `root` at its root element.
/// `root` belongs to `document` and lives as long as that does.
/// @return 0 or more on success, negative when there is no such document or it is not XML
int loadXmlFile(const std::string& path, tinyxml2::XMLDocument& document,
                tinyxml2::XMLElement*& root);

/// Fetches one URL into a file. `get` blocks the caller until the transfer ends.
class CHttpDownload {
 public:
  CHttpDownload();
  ~CHttpDownload();  // NOLINT(performance-trivially-destructible): the host says what it does

  /// @param url     http or https address
  /// @param target  absolute path on the controller of the file to write; empty: keep nothing
  /// @param third   the plug-in passes an empty text
  /// @param a, b    the plug-in passes 0 and -1
  /// @return 0 or more on success. Negative on failure, and then `target` is as it was before.
  int get(const std::string& url, const std::string& target, const std::string& third, long long a,
          long long b);
};

}  // namespace cbl
