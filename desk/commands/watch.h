// Following files while somebody works on them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace desk::commands {

using Files = std::vector<std::string>;

/// Calls `look` with the files that `list` gives, and again whenever there are others or one of
/// them was saved, until SIGINT or SIGTERM says that it is enough. A file that is still being
/// written is waited for.
void watchFiles(const std::function<Files()>& list, const std::function<void(const Files&)>& look);

}  // namespace desk::commands
