// What goes to the standard streams beside a command's answer.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace desk {

/// Receives each line of the log, control characters spelled out, without prefix and line end.
/// Calls never overlap.
using LogSink = std::function<void(const std::string& line)>;

/// Writes one line to the desk's log, which tells why a service failed. Whatever `line` holds stays
/// one line: see `escapeControls`. Never throws; a line that cannot be written is lost.
void log(std::string_view line) noexcept;

/// Sends the lines elsewhere and gives back the sink before. An empty sink is the default one:
/// "cusdesk: <line>" on standard error. A sink must not log.
LogSink setLogSink(LogSink sink);

/// While it lives, what anyone writes to standard output goes elsewhere: the plug-in's lines, say.
/// Keeps standard output free for the answer of a command.
class StdoutRedirect {
 public:
  enum class To {
    StandardOutput,  ///< nothing is changed
    Nowhere,
    StandardError,
  };

  /// Throws Error when there is no such way.
  explicit StdoutRedirect(To to);
  ~StdoutRedirect();
  StdoutRedirect(const StdoutRedirect&) = delete;
  StdoutRedirect& operator=(const StdoutRedirect&) = delete;

 private:
  int saved_ = -1;  ///< the real one; none where nothing was changed
};

}  // namespace desk
