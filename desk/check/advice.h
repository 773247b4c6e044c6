// What to tell about what no reader takes: a key at its place, or a file that is not what its name
// says.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "desk/check/finding.h"
#include "model/job_format.h"
#include "model/key_table.h"

namespace desk::check {

using model::Level;

/// "the header", "a bar", ...
const char* nameOf(Level level);

/// The names that a format knows at a level: keys of JSON objects or children of XML elements.
const std::vector<std::string>& namesAt(Level level, model::JobFormat format);

/// Whether a key, in any spelling, leads to the next level.
bool leadsOn(const std::string& name);

/// Whether what the key of this level fills decides what the machine does: bars and pieces
/// themselves, their numbers and dimensions, barcodes, cuts and works. Losing one is an error,
/// losing another value a warning.
bool steersMachine(Level level, const std::string& name);

/// A name without what people vary: case, blanks, dashes and underscores.
std::string simplified(const std::string& name);

struct Advice {
  Severity severity;    ///< an error when the key was likely meant for one that steers the machine
  std::string text;     ///< "did you mean ...?" with what separates it from a message; may be empty
  std::string meant{};  ///< the name of this level that it was likely meant for; may be empty
};

/// Tells what unknown names were likely meant for: another way to write a known one, the name that
/// the other format has for it, a name of another level, or the nearest one. It remembers what it
/// was asked, as a job repeats its names in every piece.
class Advisor {
 public:
  explicit Advisor(model::JobFormat format) : format_(format) {}

  /// Good until the next call.
  const Advice& on(const std::string& unknown, Level level);

 private:
  model::JobFormat format_;
  std::map<std::pair<Level, std::string>, Advice> known_;
};

/// "UTF-16LE" or "UTF-16BE" for a text that starts as such: with a byte order mark, or with a
/// character of ASCII. Empty for others.
std::string utf16Name(const std::string& bytes);

/// Whether bytes that are no UTF-8 are Chinese text in GBK as it is usually written.
bool looksLikeGbk(const std::string& bytes);

/// What a text is instead that a reader of this format refused, as a sentence without its full
/// stop: a job of the other format, or a script. Empty where nothing speaks for that.
std::string likeness(const std::string& bytes, model::JobFormat format);

}  // namespace desk::check
