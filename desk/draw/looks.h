// How the elements of a drawing look, by their class.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace desk::draw {

/// Properties as a style sheet writes them, which are presentation attributes too: a page whose
/// content policy knows no inline styles takes those, and its own style sheet goes before them.
struct Look {
  const char* kind;        ///< class of the element
  const char* properties;  ///< "fill:#fff;stroke:#777"
};

/// Of all texts; the other classes add to it.
constexpr Look kTextLook{"", "font-family:sans-serif;font-size:2.6px;fill:#1a1a1a"};

constexpr Look kLooks[] = {
    {"paper", "fill:#fff"},
    {"name", "font-size:5px;font-weight:bold"},
    {"page", "text-anchor:end;fill:#555"},
    {"continued", "fill:#555"},
    {"title", "font-size:3.2px;font-weight:bold"},
    {"sum", "font-size:3px;text-anchor:end"},
    {"remark", "font-size:2.8px;font-weight:bold;fill:#b00020"},
    {"number", "font-size:3.2px;font-weight:bold;text-anchor:middle"},
    {"middle", "text-anchor:middle"},
    {"right", "text-anchor:end"},
    {"rest", "text-anchor:middle;font-style:italic;fill:#555"},
    {"bar", "fill:#eee;stroke:#777;stroke-width:.2"},
    {"open", "fill:none;stroke:#777;stroke-width:.2;stroke-dasharray:1 .8"},
    {"piece", "fill:#cfe0f0;stroke:#22394f;stroke-width:.25"},
    {"over", "fill:#f6c6c6;stroke:#b00020;stroke-width:.25"},
    {"end", "stroke:#b00020;stroke-width:.7"},
    {"w", "stroke:#fff;stroke-width:.12"},
    {"w0", "fill:#b3401f"},
    {"w1", "fill:#1b4f9c"},
    {"w2", "fill:#2f7d32"},
    {"w3", "fill:#7a2c8f"},
    {"w4", "fill:#111"},
    {"other", "fill:#888"},
};

/// All of them as a style sheet, for a document of its own.
std::string styleSheet();

/// Calls `push(name, value)` for each property of properties as above.
template <class Push>
void eachProperty(std::string_view properties, Push push) {
  while (!properties.empty()) {
    const std::string_view property = properties.substr(0, properties.find(';'));
    const std::size_t colon = property.find(':');
    push(std::string(property.substr(0, colon)), std::string(property.substr(colon + 1)));
    properties.remove_prefix(std::min(property.size() + 1, properties.size()));
  }
}

}  // namespace desk::draw
