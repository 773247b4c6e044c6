// Fuzz target: JSON jobs through the host's loader and one reader, and every query.
#include "fuzz/reader_target.h"
#include "fuzz/target.h"

namespace {

constexpr char kName[] = "/mnt/data/CustomFileDir/JsonFile/job.json";

JsonAnalysis& reader() {
  static JsonAnalysis instance;
  return instance;
}

}  // namespace

std::size_t fuzzing::slotCount() {
  return jsonSlots().size();
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzzing::setUpServices();
  fuzzing::require(fuzzing::slotCount() <= 256, "more slots than a byte can tell");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzzing::plant(fuzzing::jsonSlots(), data, size, std::string("root") + kName);
  fuzzing::readAndAsk(reader(), fuzzing::kNone, [](JsonAnalysis& json) {
    const int code = json.jsonAnalysis(kName);
    fuzzing::require(code == 0 || (code >= -4 && code <= -2),
                     "a code that no file can bring about");
    return code;
  });
  return 0;
}
