// Looks names up in the lists of the contract.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace desk::doctor {

/// A list of the contract.
class Names {
 public:
  template <std::size_t kSize>
  constexpr Names(const char* const (&names)[kSize]) : begin_(names), end_(names + kSize) {}
  const char* const* begin() const { return begin_; }
  const char* const* end() const { return end_; }

 private:
  const char* const* begin_;
  const char* const* end_;
};

inline bool isAmong(const std::string& name, const Names& names) {
  return std::any_of(names.begin(), names.end(), [&](std::string_view entry) {
    if (entry.back() != '*') return name == entry;
    entry.remove_suffix(1);
    return name.compare(0, entry.size(), entry) == 0;
  });
}

}  // namespace desk::doctor
