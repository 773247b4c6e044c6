// What a file looks like that is not what its name says.
#pragma once

#include <string>

#include "model/job_format.h"

namespace desk::check {

/// "UTF-16LE" or "UTF-16BE" for a text that starts as such: with a byte order mark, or with a
/// character of ASCII. Empty for others.
std::string utf16Name(const std::string& bytes);

/// Whether bytes that are no UTF-8 are Chinese text in GBK as it is usually written.
bool looksLikeGbk(const std::string& bytes);

/// What a text is instead that a reader of this format refused, as a sentence without its full
/// stop: a job of the other format, or a script. Empty where nothing speaks for that.
std::string likeness(const std::string& bytes, model::JobFormat format);

}  // namespace desk::check
