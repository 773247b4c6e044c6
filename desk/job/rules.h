// The rules that a job is held against: the one place that knows what each is called, how grave it
// is, what the machine does and how to cure it. docs/check.md has a section for each.
#pragma once

#include <string_view>
#include <vector>

namespace desk::job {

/// By consequence.
enum class Severity {
  Note,     ///< what plausible jobs do on purpose
  Warning,  ///< what may go wrong
  Error,    ///< what raises, is lost or is cut wrong
};

/// "note", "warning", "error"
const char* nameOf(Severity severity);

/// A rule and its page. Texts are Markdown without markup but `code`.
struct Rule {
  const char* id;
  Severity usual;         ///< findings may be graver where the value steers the machine, or lighter
  const char* statement;  ///< what is so, as the part of a sentence
  const char* machine;    ///< what the machine does, whole sentences
  const char* cure;       ///< how to write it, a whole sentence or more
};

/// In the order of docs/check.md.
const std::vector<Rule>& allRules();

/// The rule with that id, null for none.
const Rule* findRule(std::string_view id);

// --- rule ids ------------------------------------------------------------------------------------

namespace rules {
inline constexpr char kSyntax[] = "syntax";
inline constexpr char kTrailingText[] = "trailing-text";
inline constexpr char kFileName[] = "file-name";
inline constexpr char kVersion[] = "version";
inline constexpr char kWrongType[] = "wrong-type";
inline constexpr char kUnknownKey[] = "unknown-key";
inline constexpr char kShadowedKey[] = "shadowed-key";
inline constexpr char kDuplicateKey[] = "duplicate-key";
inline constexpr char kNotAnObject[] = "not-an-object";
inline constexpr char kMissingKey[] = "missing-key";
inline constexpr char kCarriedOver[] = "carried-over";
inline constexpr char kLabelMisplaced[] = "label-misplaced";
inline constexpr char kLabelNotRead[] = "label-not-read";
inline constexpr char kAngle135[] = "angle-135";
inline constexpr char kMissingElement[] = "missing-element";
inline constexpr char kEmptyElement[] = "empty-element";
inline constexpr char kRepeatedElement[] = "repeated-element";
inline constexpr char kIgnoredText[] = "ignored-text";
inline constexpr char kAttribute[] = "attribute";
inline constexpr char kNeverStored[] = "never-stored";
inline constexpr char kRaises[] = "raises";
inline constexpr char kNotANumber[] = "not-a-number";
inline constexpr char kDecimalComma[] = "decimal-comma";
inline constexpr char kThousandsPoint[] = "thousands-point";
inline constexpr char kLength[] = "length";
inline constexpr char kAngle[] = "angle";
inline constexpr char kProfileSize[] = "profile-size";
inline constexpr char kLeftOver[] = "leftover";
inline constexpr char kUnit[] = "unit";
inline constexpr char kSide[] = "side";
inline constexpr char kEmptyName[] = "empty-name";
inline constexpr char kWorkBesidePiece[] = "work-beside-piece";
inline constexpr char kWorkOutsideProfile[] = "work-outside-profile";
inline constexpr char kWorkInCorner[] = "work-in-corner";
inline constexpr char kDuplicateBarCode[] = "duplicate-barcode";
inline constexpr char kDuplicateNumber[] = "duplicate-number";
inline constexpr char kDoesNotFit[] = "does-not-fit";
inline constexpr char kOtherJob[] = "other-job";
inline constexpr char kLenientJson[] = "lenient-json";
inline constexpr char kLenientXml[] = "lenient-xml";
inline constexpr char kNotUtf8[] = "not-utf8";
inline constexpr char kZeroByte[] = "zero-byte";
}  // namespace rules

}  // namespace desk::job
