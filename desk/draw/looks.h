// How the elements of a drawing look, by their class.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace desk::draw {

/// How a text is set.
struct Lettering {
  double size;  ///< height of the em square, mm: the smallest has capitals of 2 mm
  bool bold;
};

constexpr Lettering kName{5.0, true};  ///< of the job
constexpr Lettering kTitle{3.4, true};
constexpr Lettering kSum{3.0, false};
constexpr Lettering kNumber{3.2, true};
constexpr Lettering kLabel{2.8, false};
constexpr Lettering kRemark{2.8, true};

/// Properties as a style sheet writes them, which are presentation attributes too: a page whose
/// content policy knows no inline styles takes those, and its own style sheet goes before them.
struct Look {
  const char* kind;        ///< class of the element
  const char* properties;  ///< "fill:#fff;stroke:#777"
  const Lettering* lettering = nullptr;
};

/// Of all texts; the other classes add to it.
constexpr Look kTextLook{"", "font-family:sans-serif;fill:#1a1a1a", &kLabel};

constexpr Look kLooks[] = {
    {"paper", "fill:#fff"},
    {"name", "", &kName},
    {"page", "text-anchor:end;fill:#555"},
    {"title", "", &kTitle},
    {"sum", "text-anchor:end", &kSum},
    {"remark", "fill:#b00020", &kRemark},
    {"number", "text-anchor:middle", &kNumber},
    {"middle", "text-anchor:middle"},
    {"right", "text-anchor:end"},
    {"side", "text-anchor:end;fill:#555"},
    {"rest", "text-anchor:middle;font-style:italic;fill:#555"},
    {"bar", "fill:#eee;stroke:#777;stroke-width:.2"},
    {"open", "fill:none;stroke:#777;stroke-width:.3;stroke-dasharray:1 .8"},
    {"break", "fill:#fff;stroke:#777;stroke-width:.2"},
    {"piece", "fill:#cfe0f0;stroke:#22394f;stroke-width:.25"},
    {"over", "fill:#f6c6c6;stroke:#b00020;stroke-width:.25"},
    {"fine", "stroke-width:.06"},
    {"leader", "stroke:#777;stroke-width:.15"},
    {"end", "stroke:#b00020;stroke-width:.7"},
    {"w", "stroke:#fff;stroke-width:.12"},
    {"w0", "fill:#b3401f"},
    {"w1", "fill:#1b4f9c"},
    {"w2", "fill:#2f7d32"},
    {"w3", "fill:#7a2c8f"},
    {"w4", "fill:#111"},
    {"other", "fill:#888"},
};

/// All properties of a look: "text-anchor:end;font-size:3px".
std::string propertiesOf(const Look& look);

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
