#include "desk/base/log.h"

#include <cstdio>
#include <mutex>
#include <utility>

#include "desk/base/utf8.h"

namespace desk {
namespace {

std::mutex sinkMutex;

LogSink& currentSink() {
  static LogSink sink;
  return sink;
}

void writeToStandardError(const std::string& line) {
  const std::string whole = "cusdesk: " + line + "\n";
  std::fwrite(whole.data(), 1, whole.size(), stderr);
}

bool isControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return first < 0x20 || first == 0x7F;
  // U+0080 to U+009F: terminals take them as escape sequences too.
  return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

void spellOut(std::string& out, char byte) {
  constexpr char kDigits[] = "0123456789abcdef";
  const auto value = static_cast<unsigned char>(byte);
  switch (byte) {
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      break;
  }
  out += "\\x";
  out += kDigits[value >> 4];
  out += kDigits[value & 0xF];
}

}  // namespace

void log(std::string_view line) noexcept {
  try {
    const std::string text = escapeControls(line);
    const std::lock_guard<std::mutex> lock(sinkMutex);
    currentSink() ? currentSink()(text) : writeToStandardError(text);
  } catch (...) {
    // The caller is already reporting a failure; it must not turn into another one.
  }
}

LogSink setLogSink(LogSink sink) {
  const std::lock_guard<std::mutex> lock(sinkMutex);
  return std::exchange(currentSink(), std::move(sink));
}

std::string escapeControls(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t size = utf8CharacterSize(text, at);
    const std::string_view character = text.substr(at, size == 0 ? 1 : size);
    if (size != 0 && !isControl(character)) {
      out += character;
    } else {
      for (const char byte : character) spellOut(out, byte);
    }
    at += character.size();
  }
  return out;
}

}  // namespace desk
