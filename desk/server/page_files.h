// The files of the page, built into the program.
#pragma once

#include <cstddef>
#include <vector>

namespace desk::server {

struct PageFile {
  const char* path;  ///< of its address
  const char* type;  ///< its media type
  const char* bytes;
  std::size_t size;
};

/// All of them. What desk/panel/page/ held when the program was built.
const std::vector<PageFile>& pageFiles();

}  // namespace desk::server
