// The process-wide state that all script states and parts share, and the table of the readers.
//
// Both readers live from the load of the library to its unload and are refilled by every read. The
// host serialises all calls: there are no locks.
#pragma once

#include <string>

#include "json/json_analysis.h"
#include "model/job_format.h"
#include "xml/xml_analysis.h"

// --- names fixed by the host ---------------------------------------------------------------------

extern JsonAnalysis json;
extern XmlAnalysis xml;

/// Which reader holds the current job: the value of a `model::JobFormat`. Written by the file
/// commands only, read by all others; any other value makes the queries answer with nothing.
extern int nFileType;

// -------------------------------------------------------------------------------------------------

constexpr int fileTypeOf(model::JobFormat format) {
  return static_cast<int>(format);
}

/// What the commands need of the reader of a format.
struct JobReader {
  DATA_T* job;                           ///< what it holds
  int (*read)(const std::string& path);  ///< returns a result code
  int (*download)(const std::string& url, const std::string& name);
  const char* notObtained;  ///< what a script is told when the file could not be obtained
};

const JobReader& readerOf(model::JobFormat format);

/// The reader of the current job, null when `nFileType` names none.
const JobReader* currentReader();

/// The current job, null when `nFileType` names no reader.
const DATA_T* currentJob();
