// Fuzz target: XML jobs through the host's loader and one reader, and every query.
#include "fuzz/reader_target.h"
#include "fuzz/target.h"

namespace {

constexpr char kName[] = "/mnt/data/CustomFileDir/XmlFile/job.xml";

XmlAnalysis& reader() {
  static XmlAnalysis instance;
  return instance;
}

}  // namespace

std::size_t fuzzing::slotCount() {
  return xmlSlots().size();
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzzing::setUpServices();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzing::plant(fuzzing::xmlSlots(), data, size, std::string("root") + kName);
  fuzzing::readAndAsk(reader(), fuzzing::kStod | fuzzing::kNullText, [](XmlAnalysis& xml) {
    const int code = xml.xmlAnalysis(kName);
    fuzzing::require(code == 0 || code == -2, "a code that no file can bring about");
    return code;
  });
  return 0;
}
