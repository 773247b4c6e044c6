// How much room a drawing's texts take.
#pragma once

#include <string>

namespace desk::draw {

/// How a text is set.
struct Lettering {
  double size;  ///< height of the em square, mm
  bool bold;
};

constexpr Lettering kName{5.0, true};  ///< of the job
constexpr Lettering kTitle{3.2, true};
constexpr Lettering kSum{3.0, false};
constexpr Lettering kNumber{3.2, true};
constexpr Lettering kLabel{2.6, false};
constexpr Lettering kRemark{2.8, true};

/// How wide `text` is at most, mm. Viewers choose the face, so this is on the wide side.
/// @param text UTF-8 that XML can hold
double widthOf(const std::string& text, const Lettering& lettering);

/// `text` when it fits into `room` mm, else its beginning and an ellipsis; empty when not even that
/// fits.
std::string fitted(const std::string& text, double room, const Lettering& lettering);

}  // namespace desk::draw
