#include "desk/doctor/arm_attributes.h"

#include <cstdint>
#include <iterator>

namespace desk::doctor {

namespace {

constexpr unsigned kArmV7 = 10;
constexpr unsigned kNewestOfArmV7 = 13;  // ARMv6-M to ARMv7E-M lie in between

constexpr const char* kArchitectures[] = {
    "",        "ARMv4",   "ARMv4T", "ARMv5T",  "ARMv5TE",  "ARMv5TEJ",  "ARMv6",   "ARMv6KZ",
    "ARMv6T2", "ARMv6K",  "ARMv7",  "ARMv6-M", "ARMv6S-M", "ARMv7E-M",  "ARMv8-A", "ARMv8-R",
    "ARMv8-M", "ARMv8-M", "",       "",        "",         "ARMv8.1-M", "ARMv9-A"};
constexpr const char* kFloatingPoint[] = {"",
                                          "VFPv1",
                                          "VFPv2",
                                          "VFPv3",
                                          "VFPv3-D16",
                                          "VFPv4",
                                          "VFPv4-D16",
                                          "floating point of ARMv8",
                                          "floating point of ARMv8"};

template <std::size_t kSize>
std::string wordFor(const char* const (&words)[kSize], unsigned number) {
  return number < kSize ? words[number] : "number " + std::to_string(number);
}

/// Takes values off the front of a section.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : left_(bytes) {}
  bool atEnd() const { return left_.empty(); }

  std::uint32_t word() {
    std::uint32_t value = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) value |= std::uint32_t{byte()} << shift;
    return value;
  }
  unsigned number() {  // unsigned LEB128
    unsigned value = 0;
    for (unsigned shift = 0; !atEnd(); shift += 7) {
      const unsigned char next = byte();
      if (shift < 28) value |= (next & 0x7FU) << shift;
      if ((next & 0x80U) == 0) break;
    }
    return value;
  }
  std::string_view text() {
    const std::string_view text = left_.substr(0, left_.find('\0'));
    take(text.size() + 1);
    return text;
  }
  Bytes take(std::size_t size) {
    const std::string_view taken = left_.substr(0, size);
    left_.remove_prefix(taken.size());
    return Bytes(taken);
  }

 private:
  unsigned char byte() {
    if (left_.empty()) return 0;
    const auto value = static_cast<unsigned char>(left_.front());
    left_.remove_prefix(1);
    return value;
  }

  std::string_view left_;
};

enum Tag : unsigned {
  kCpuRawName = 4,
  kCpuName = 5,
  kArchitecture = 6,
  kProfile = 7,
  kThumb = 9,
  kFloat = 10,
  kSimd = 12,
  kCompatibility = 32
};

void readFileAttributes(Bytes bytes, ArmProcessor& processor) {
  while (!bytes.atEnd()) {
    const unsigned tag = bytes.number();
    const bool isText = tag == kCpuRawName || tag == kCpuName || tag == kCompatibility ||
                        (tag > kCompatibility && tag % 2 == 1);
    const unsigned value = !isText || tag == kCompatibility ? bytes.number() : 0;
    if (isText) bytes.text();
    if (tag == kArchitecture) processor.architecture = value;
    if (tag == kProfile) processor.profile = value;
    if (tag == kThumb) processor.thumb = value;
    if (tag == kFloat) processor.floatingPoint = value;
    if (tag == kSimd) processor.simd = value;
  }
}

}  // namespace

std::string ArmProcessor::words() const {
  if (architecture == 0) return "";
  std::string text = wordFor(kArchitectures, architecture);
  if (architecture == kArmV7 && profile != 0) text += std::string("-") + static_cast<char>(profile);
  if (thumb == 2 || thumb == 3) text += ", Thumb-2";
  if (floatingPoint != 0) text += ", " + wordFor(kFloatingPoint, floatingPoint);
  if (simd != 0) text += ", NEON";
  return text;
}

std::string ArmProcessor::beyondOldest() const {
  if (architecture > kNewestOfArmV7) return wordFor(kArchitectures, architecture);
  if (simd != 0) return "NEON";
  const bool fits = floatingPoint <= 2 || floatingPoint == 4;
  return fits ? "" : wordFor(kFloatingPoint, floatingPoint);
}

ArmProcessor readArmAttributes(std::string_view section) {
  constexpr std::uint32_t kSizeField = 4;
  ArmProcessor processor;
  if (section.substr(0, 1) != "A") return processor;
  Bytes bytes(section.substr(1));
  while (!bytes.atEnd()) {
    const std::uint32_t size = bytes.word();
    if (size < kSizeField) break;
    Bytes vendor = bytes.take(size - kSizeField);
    if (vendor.text() != "aeabi") continue;
    while (!vendor.atEnd()) {
      const unsigned scope = vendor.number();
      const std::uint32_t length = vendor.word();
      if (length <= kSizeField) break;
      const Bytes attributes = vendor.take(length - kSizeField - 1);
      if (scope == 1) readFileAttributes(attributes, processor);  // 1: of the whole file
    }
  }
  return processor;
}

}  // namespace desk::doctor
