// Where the output of scripts and of the plug-in goes while a panel is shown.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace desk::panel {

enum class OutputSource {
  Script,  ///< what it prints
  Plugin,  ///< whatever else is written to standard output
  Desk,    ///< why a service failed
  Error,   ///< a script that failed
};

/// Receives each line, made visible and without its end. Comes from the thread that runs scripts.
using ConsoleSink = std::function<void(OutputSource source, const std::string& line)>;

/// Writes a line to standard error; one of the desk's or an error with the program's name.
void echo(OutputSource source, const std::string& line);

/// Catches standard output, in its true order, and hands it on line by line. One per process; the
/// services' log comes here too. Standard output is what it was before when it is destroyed.
class Console {
 public:
  /// Throws Error when standard output cannot be caught.
  explicit Console(ConsoleSink sink);
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  /// Whole lines that are written nowhere.
  void say(OutputSource source, std::string_view text);

  /// Hands on what was written since, a line without an end too.
  void flush();

  /// Writes to the real standard output.
  void answer(std::string_view text) const;

  /// Whose output it is that is written while this lives; without one it is the plug-in's.
  class OutputScope {
   public:
    OutputScope(Console& console, OutputSource source);
    ~OutputScope();
    OutputScope(const OutputScope&) = delete;
    OutputScope& operator=(const OutputScope&) = delete;

   private:
    Console& console_;
    const OutputSource before_;
  };

 private:
  void drain();
  void take(OutputSource source, std::string_view text);
  void endLine();

  const ConsoleSink sink_;
  OutputSource current_ = OutputSource::Plugin;
  std::string line_;  ///< a line that has no end yet
  OutputSource lineSource_ = OutputSource::Plugin;
  int caught_;  ///< takes the place of standard output
  int real_;
};

}  // namespace desk::panel
