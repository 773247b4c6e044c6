// Measures what loading jobs of so many pieces takes of the memory: cusmemory PIECES...
// Prints a line per size and format, in bytes:
//   FORMAT PIECES TEXT DOCUMENT MODEL PEAK
// the length of the job file, what the host's document and the records take of the heap with the
// allocator's own share, and by how much the process has grown at the worst moment of a load.
#include <json/value.h>
#include <malloc.h>
#include <tinyxml2.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "bench/jobs.h"
#include "desk/host/settings.h"
#include "module/readers.h"
#include "tests/support/temp_tree.h"

namespace {

constexpr char kJobFile[] = "job";

long long heapBytes() {
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<long long>(heap.uordblks) + static_cast<long long>(heap.hblkhd);
}

/// By how many bytes the heap holds more while what make() returned lives.
template <class Make>
long long heapOf(Make&& make) {
  const long long before = heapBytes();
  const auto made = make();
  return heapBytes() - before;
}

/// A figure of /proc/self/status, for example "VmHWM:".
long long processBytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    long long kibibytes = 0;
    if (word == name && status >> kibibytes) return kibibytes * 1024;
  }
  return 0;
}

/// Gives back what is free and lets the process's peak start from here. Returns its size.
long long restartPeak() {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << 5;
  return processBytes("VmRSS:");
}

/// Loads the job file as a script would; prints the line.
template <class Load>
void report(const char* format, int pieces, const std::string& text, long long document,
            Load&& load) {
  const TempTree tree;
  tree.write(kJobFile, text);
  deskhost::settings().root = tree.path();
  const long long sizeBefore = restartPeak();
  const long long heapBefore = heapBytes();
  load("/" + std::string(kJobFile));
  const long long model = heapBytes() - heapBefore;
  const long long peak = processBytes("VmHWM:") - sizeBefore;
  std::printf("%s %d %zu %lld %lld %lld\n", format, pieces, text.size(), document, model, peak);
}

void reportJson(const bench::Shape& shape) {
  const std::string text = bench::jsonJob(shape);
  JsonAnalysis reader;
  report("json", shape.pieces, text, heapOf([&] { return bench::parsedJson(text); }),
         [&](const std::string& path) { reader.jsonAnalysis(path); });
}

void reportXml(const bench::Shape& shape) {
  const std::string text = bench::xmlJob(shape);
  XmlAnalysis reader;
  report("xml", shape.pieces, text, heapOf([&] { return bench::parsedXml(text); }),
         [&](const std::string& path) { reader.xmlAnalysis(path); });
}

}  // namespace

int main(int argc, char** argv) {
  deskhost::settings().maxDocumentBytes = std::size_t{1} << 30;
  for (int i = 1; i < argc; ++i) {
    bench::Shape shape;
    shape.pieces = static_cast<int>(std::strtol(argv[i], nullptr, 10));
    reportJson(shape);
    reportXml(shape);
  }
  return 0;
}
