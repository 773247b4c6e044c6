// Keeps standard output free for the answer of a command.
#pragma once

namespace desk {

/// While it lives, what anyone writes to standard output goes elsewhere: the plug-in's lines, say.
class OutputDetour {
 public:
  enum class To { Nowhere, StandardError };

  /// Throws Error when there is no such way.
  explicit OutputDetour(To to);
  ~OutputDetour();
  OutputDetour(const OutputDetour&) = delete;
  OutputDetour& operator=(const OutputDetour&) = delete;

 private:
  int saved_;
};

}  // namespace desk
