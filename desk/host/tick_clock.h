// Control over the tick clock, for runs that must come out the same each time.
#pragma once

#include <optional>

namespace deskhost {

/// Stops UTILITY::CTime at this count, in milliseconds; without a value it runs on by itself.
void setTickCount(std::optional<unsigned long long> ticks);

}  // namespace deskhost
