// Keeps standard output free for the answer of a command.
#pragma once

namespace desk {

/// While it lives, what anyone writes to standard output goes elsewhere: the plug-in's lines, say.
class StdoutRedirect {
 public:
  enum class To { Nowhere, StandardError };

  /// Throws Error when there is no such way.
  explicit StdoutRedirect(To to);
  ~StdoutRedirect();
  StdoutRedirect(const StdoutRedirect&) = delete;
  StdoutRedirect& operator=(const StdoutRedirect&) = delete;

 private:
  int saved_;
};

}  // namespace desk
