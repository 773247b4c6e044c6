// The process-wide state that all script states and parts share.
//
// Both readers live from the load of the library to its unload and are refilled by every read. The
// host serialises all calls: there are no locks.
#pragma once

#include "json/json_analysis.h"
#include "xml/xml_analysis.h"

// --- names fixed by the host ---------------------------------------------------------------------

extern JsonAnalysis json;
extern XmlAnalysis xml;

/// Which reader holds the current job. Written by the file commands only, read by all others; a
/// value other than these two makes the queries answer with nothing.
extern int nFileType;

constexpr int kJsonJob = 0;
constexpr int kXmlJob = 1;

/// The current job, null when `nFileType` names no reader.
const DATA_T* currentJob();
