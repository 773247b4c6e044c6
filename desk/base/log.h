// The desk's log: why a service failed, one line per event.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace desk {

/// Receives each line, already made visible, without prefix and line end. Calls never overlap.
using LogSink = std::function<void(const std::string& line)>;

/// Writes one line. Whatever `line` holds stays one line: see `escapeControls`. Never throws; a
/// line that cannot be written is lost.
void log(std::string_view line) noexcept;

/// Sends the lines elsewhere and gives back the sink before. An empty sink is the default one:
/// "cusdesk: <line>" on standard error. A sink must not log.
LogSink setLogSink(LogSink sink);

/// `text` with control characters and bytes that are no UTF-8 spelled out, as in "\n" or "\x1b".
/// A backslash stays as it is.
std::string escapeControls(std::string_view text);

}  // namespace desk
