// The rules of cusdesk check, each of which docs/check.md explains under its id.
#pragma once

#include <cstddef>

#include "desk/check/finding.h"

namespace desk::check {

struct Rule {
  const char* id;
  Severity usual;  ///< findings may be graver where the value steers the machine, or lighter
  const char* help;
};

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
inline constexpr char kDuplicateBarCode[] = "duplicate-barcode";
inline constexpr char kDuplicateNumber[] = "duplicate-number";
inline constexpr char kDoesNotFit[] = "does-not-fit";
inline constexpr char kOtherJob[] = "other-job";
inline constexpr char kLenientJson[] = "lenient-json";
inline constexpr char kNotUtf8[] = "not-utf8";
inline constexpr char kZeroByte[] = "zero-byte";
}  // namespace rules

inline constexpr Rule kRules[] = {
    {rules::kSyntax, Severity::Error, "the file is no document, so nothing of it is loaded"},
    {rules::kTrailingText, Severity::Error, "there is more text behind the document"},
    {rules::kFileName, Severity::Warning, "the file's name decides how it is read"},
    {rules::kVersion, Severity::Error, "the job does not declare version \"1.0\""},
    {rules::kWrongType, Severity::Warning, "a value of the wrong type is ignored"},
    {rules::kUnknownKey, Severity::Warning, "no reader knows the key or element"},
    {rules::kShadowedKey, Severity::Warning, "another key takes the place of this one"},
    {rules::kDuplicateKey, Severity::Warning, "of equal keys only the last one counts"},
    {rules::kNotAnObject, Severity::Error, "an array element without keys repeats the one before"},
    {rules::kCarriedOver, Severity::Warning, "a missing value is that of an earlier element"},
    {rules::kLabelMisplaced, Severity::Warning, "a lower-case label key fills another field"},
    {rules::kLabelNotRead, Severity::Warning, "label fields are not read without the first one"},
    {rules::kAngle135, Severity::Note, "a right angle of \"135\" is stored as \"45\""},
    {rules::kMissingElement, Severity::Error, "loading raises without this element's text"},
    {rules::kEmptyElement, Severity::Warning, "an empty element does not clear the value before"},
    {rules::kRepeatedElement, Severity::Warning, "of repeated elements only one counts"},
    {rules::kIgnoredText, Severity::Warning, "text at this place is not read"},
    {rules::kAttribute, Severity::Warning, "attributes are not read"},
    {rules::kNeverStored, Severity::Note, "the text of this element is never stored"},
    {rules::kRaises, Severity::Error, "a script command raises an error"},
    {rules::kNotANumber, Severity::Warning, "a length or an angle is no number"},
    {rules::kDuplicateBarCode, Severity::Warning, "several pieces bear one barcode"},
    {rules::kDuplicateNumber, Severity::Warning, "several pieces bear one bar and piece number"},
    {rules::kDoesNotFit, Severity::Error, "the pieces are longer than their bar"},
    {rules::kOtherJob, Severity::Warning, "an XML job's cuts show values of a JSON job"},
    {rules::kLenientJson, Severity::Note, "the panel's library takes what JSON does not have"},
    {rules::kNotUtf8, Severity::Warning, "bytes that are no UTF-8"},
    {rules::kZeroByte, Severity::Warning, "for scripts a text ends at its first zero byte"},
};

}  // namespace desk::check
