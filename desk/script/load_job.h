// A job for a script, loaded before it begins.
#pragma once

#include <string>

#include "desk/job/job_file.h"
#include "desk/script/script_engine.h"

namespace desk::script {

/// Loads `file`, which may lie anywhere on this PC or be "-", with getjson_Flash. Throws Error when
/// it cannot be read or does not load.
job::PresentedJob loadJob(ScriptEngine& engine, const std::string& file);

}  // namespace desk::script
