// Writes a made job to standard output: make_job json|xml PIECES
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/made_job.h"

int main(int argc, char** argv) {
  const std::string format = argc == 3 ? argv[1] : "";
  if (format != "json" && format != "xml") {
    std::fputs("usage: make_job json|xml PIECES\n", stderr);
    return 2;
  }
  bench::Shape shape;
  shape.pieces = static_cast<int>(std::strtol(argv[2], nullptr, 10));
  const std::string text = format == "json" ? bench::jsonJob(shape) : bench::xmlJob(shape);
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() ? 0 : 1;
}
