// What processor a file for 32-bit ARM needs, from the bytes of its .ARM.attributes section.
#include "desk/doctor/arm_attributes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The section with these attributes of the whole file, fewer than 100 bytes of them.
std::string section(const std::string& attributes) {
  const auto size = [](std::size_t bytes) {
    return static_cast<char>(bytes) + std::string(3, '\0');
  };
  const std::string file = "\1" + size(attributes.size() + 5) + attributes;
  const std::string vendor = std::string("aeabi") + '\0' + file;
  return "A" + size(vendor.size() + 4) + vendor;
}

TEST(ArmAttributes, SayTheProcessorAndWhatOldOnesLack) {
  struct Row {
    std::string bytes;
    const char* words;
    const char* beyond;
  };
  const std::string cpu(
      "\5"
      "7-A\0",
      5);  // a name, which counts for nothing
  const Row rows[] = {
      {section(cpu + "\6\12\7A\11\2\12\4"), "ARMv7-A, Thumb-2, VFPv3-D16", ""},
      {section(cpu + "\6\12\7A\11\2\12\3\14\1"), "ARMv7-A, Thumb-2, VFPv3, NEON", "NEON"},
      {section("\6\12\12\5"), "ARMv7, VFPv4", "VFPv4"},
      {section("\6\16\12\7"), "ARMv8-A, floating point of ARMv8", "ARMv8-A"},
      {section("\6\x7F"), "number 127", "number 127"},
      {section("\6\6\12\2").substr(0, 18), "ARMv6", ""},  // cut short
      {"A\1", "", ""},
      {"", "", ""},
  };
  for (const Row& row : rows) {
    const desk::doctor::ArmProcessor processor = desk::doctor::readArmAttributes(row.bytes);
    EXPECT_EQ(processor.words(), row.words);
    EXPECT_EQ(processor.beyondOldest(), row.beyond) << row.words;
  }
}

}  // namespace
