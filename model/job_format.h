// The formats of a job file and what tells them apart before one is read: one row each.
//
// What reads a format stands in `module/readers.h`. A further format is a row here, a row there,
// and a folder like `json/` and `xml/`.
#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

namespace model {

/// The formats. Their values are those of `nFileType`.
enum class JobFormat { Json, Xml };

/// One row of the table of formats.
struct JobFormatRow {
  JobFormat format;
  const char* name;            ///< what people call it
  std::string_view ending;     ///< of a file's name, in this very spelling
  const char* flashDirectory;  ///< where such jobs lie on the controller
  const char* usbDirectory;    ///< where they lie below the mount path of the USB disk
};

// --- texts fixed by the scripts ------------------------------------------------------------------

// The order is that in which the loading commands try the endings.
inline constexpr JobFormatRow kJobFormats[] = {
    {JobFormat::Json, "JSON", ".json", "/mnt/data/CustomFileDir/JsonFile/", "json/"},
    {JobFormat::Xml, "XML", ".xml", "/mnt/data/CustomFileDir/XmlFile/", "xml/"},
};

// -------------------------------------------------------------------------------------------------

constexpr const JobFormatRow& rowOf(JobFormat format) {
  return kJobFormats[static_cast<std::size_t>(format)];
}
static_assert(rowOf(JobFormat::Json).format == JobFormat::Json &&
                  rowOf(JobFormat::Xml).format == JobFormat::Xml,
              "the rows stand in the order of the formats");

/// Whether a file's name ends as those of a format do.
constexpr bool hasEnding(std::string_view name, JobFormat format) {
  const std::string_view ending = rowOf(format).ending;
  return name.size() >= ending.size() && name.substr(name.size() - ending.size()) == ending;
}

/// The format as which a panel reads a file of that name. Any other name is tried as JSON.
constexpr JobFormat formatOfName(std::string_view name) {
  for (const JobFormatRow& row : kJobFormats) {
    if (hasEnding(name, row.format)) return row.format;
  }
  return JobFormat::Json;
}

}  // namespace model
