#include "module/readers.h"

JsonAnalysis json;
XmlAnalysis xml;
int nFileType = fileTypeOf(model::JobFormat::Json);

// In the order of the formats.
static constexpr JobReader kReaders[] = {
    {&json.data, [](const std::string& path) { return json.jsonAnalysis(path); },
     [](const std::string& url, const std::string& name) { return json.getJson(url, name); },
     "json文件获取失败"},
    {&xml.data, [](const std::string& path) { return xml.xmlAnalysis(path); },
     [](const std::string& url, const std::string& name) { return xml.getXml(url, name); },
     "xml文件获取失败"},
};
static_assert(std::size(kReaders) == std::size(model::kJobFormats), "every format has its reader");

const JobReader& readerOf(model::JobFormat format) {
  return kReaders[static_cast<std::size_t>(format)];
}

const JobReader* currentReader() {
  const auto type = static_cast<std::size_t>(nFileType);
  return type < std::size(kReaders) ? &kReaders[type] : nullptr;
}

const DATA_T* currentJob() {
  const JobReader* const reader = currentReader();
  return reader == nullptr ? nullptr : reader->job;
}
