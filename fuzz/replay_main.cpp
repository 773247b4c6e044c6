// Runs kept inputs through a target: replay FOLDER...
//
// In a folder whose name ends in "jobs" every file is a document, planted into each place that the
// target knows; every other folder holds inputs as the fuzzer makes them.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/target.h"

namespace {

namespace fs = std::filesystem;

std::string read(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void run(const std::string& input) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

/// Runs one file as often as it takes; returns how often.
std::size_t runFile(const fs::path& file, bool planted) {
  const std::string text = read(file);
  const std::size_t places = planted ? fuzzing::slotCount() : 0;
  std::fprintf(stderr, "%s\n", file.c_str());
  if (places == 0) run(text);
  for (std::size_t place = 0; place < places; ++place) {
    run(std::string(1, static_cast<char>(place)) + text);
  }
  return std::max<std::size_t>(places, 1);
}

bool endsWithJobs(const std::string& folder) {
  return folder.size() >= 4 && folder.compare(folder.size() - 4, 4, "jobs") == 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t inputs = 0;
  std::size_t executions = 0;
  LLVMFuzzerInitialize(&argc, &argv);
  for (int i = 1; i < argc; ++i) {
    std::vector<fs::path> files(fs::directory_iterator(argv[i]), {});
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) executions += runFile(file, endsWithJobs(argv[i]));
    inputs += files.size();
  }
  std::fprintf(stderr, "replayed %zu kept inputs in %zu executions\n", inputs, executions);
  return inputs == 0 ? 1 : 0;
}
