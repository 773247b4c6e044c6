// Numbers from the texts of a job.
#pragma once

namespace model {

/// What std::stod makes of a text, without a std::string around it: leading blanks and trailing
/// text are passed over. Throws std::invalid_argument or std::out_of_range ("stod").
double toDouble(const char* text);

}  // namespace model
