#include "module/readers.h"

JsonAnalysis json;
XmlAnalysis xml;
int nFileType = kJsonJob;

const DATA_T* currentJob() {
  switch (nFileType) {
    case kJsonJob:
      return &json.data;
    case kXmlJob:
      return &xml.data;
    default:
      return nullptr;
  }
}
