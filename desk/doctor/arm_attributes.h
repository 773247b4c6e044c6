// What processor a file for 32-bit ARM was compiled for, as its .ARM.attributes section says.
#pragma once

#include <string>
#include <string_view>

namespace desk::doctor {

/// Numbers as the ARM EABI gives them; 0 where the file says nothing.
struct ArmProcessor {
  unsigned architecture = 0;  ///< 10: ARMv7
  unsigned profile = 0;       ///< 'A', 'R' or 'M'
  unsigned thumb = 0;         ///< 2: Thumb-2
  unsigned floatingPoint = 0;
  unsigned simd = 0;  ///< NEON

  /// "ARMv7-A, Thumb-2, VFPv3-D16"; empty when the file says nothing.
  std::string words() const;
  /// What it has that ARMv7 processors with VFPv3-D16 lack, as "NEON"; empty: nothing.
  std::string beyondOldest() const;
};

/// Reads the contents of the section; what is damaged counts as not said.
ArmProcessor readArmAttributes(std::string_view section);

}  // namespace desk::doctor
