#include "desk/doctor/remarks.h"

#include "desk/base/text.h"

namespace desk::doctor {

namespace {

constexpr std::size_t kLongestList = 6;

std::string wordsFor(const std::string& architecture) {
  if (architecture == "x86-64") return "64-bit PC (x86-64)";
  if (architecture == "arm64") return "64-bit ARM (arm64)";
  if (architecture == "armhf") return "32-bit ARM with hardware floating point (armhf)";
  return architecture;
}

}  // namespace

std::string machineWords(const ElfFile& file) {
  const std::string processor = file.processor.words();
  return wordsFor(file.architecture) + (processor.empty() ? "" : ", " + processor);
}

std::string listed(const std::vector<std::string>& names) {
  return joinedFirst(names, kLongestList);
}

std::vector<Remark> judged(const std::string& subject, Weight weight,
                           const std::vector<std::string>& problems, const std::string& otherwise) {
  if (problems.empty()) return {{Weight::Fine, subject, otherwise}};
  std::vector<Remark> remarks;
  remarks.reserve(problems.size());
  for (const std::string& text : problems) remarks.push_back({weight, subject, text});
  return remarks;
}

}  // namespace desk::doctor
