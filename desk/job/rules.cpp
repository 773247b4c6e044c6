#include "desk/job/rules.h"

#include <algorithm>

namespace desk::job {

const std::vector<Rule>& allRules() {
  static const std::vector<Rule> kRules = {
      {rules::kSyntax, Severity::Error, "the file is no document, so nothing of it is loaded",
       "nothing of the file is loaded. The loading command answers -2, and the queries answer from "
       "the job before of the same format, even if one of the other format was loaded since.",
       "mend the place, or let a JSON or XML library write the file."},
      {rules::kTrailingText, Severity::Error, "there is more text behind the document",
       "`cusdesk` refuses such a file; a panel may load the first document and drop the rest "
       "without a word.",
       "one document per file."},
      {rules::kFileName, Severity::Warning, "the file's name decides how it is read",
       "the last letters of the name decide which reader gets the file: `.xml` the XML reader, all "
       "else the JSON reader, capitals included. A name of fewer than five bytes raises.",
       "end the name in `.json` or `.xml`."},
      {rules::kVersion, Severity::Error, "the job does not declare version \"1.0\"",
       "a JSON job without it is not loaded (-3, or -4 when the wrong one of two spellings wins). "
       "An XML job loads, but `get_work` with a barcode, `get_cut` with a number and all "
       "dimensions "
       "stay empty.",
       "`\"Version\": \"1.0\"`, a text; in XML `<Version>1.0</Version>`."},
      {rules::kWrongType, Severity::Warning, "a value of the wrong type is ignored",
       "a value counts only if it has the type of its key. All others are as good as absent: the "
       "field keeps what it holds, which may be the value of an earlier bar, piece or job. Length "
       "and angles of a cut are texts, numbers and dimensions of a bar are integers.",
       "write the type that the message names. `null` clears nothing, and where a list belongs the "
       "list is lost; to clear a text write `\"\"`, for an empty list `[]`."},
      {rules::kUnknownKey, Severity::Warning, "no reader knows the key or element",
       "the value is ignored. Keys are compared byte for byte: another case is another key. XML "
       "jobs have names of their own for some fields.",
       "take the name that the message proposes, or leave the key out."},
      {rules::kShadowedKey, Severity::Warning, "another key takes the place of this one",
       "of two spellings the first one wins if it has the right type, and the other is never "
       "looked "
       "at. Label fields overwrite each other the other way round: see `label-misplaced`.",
       "keep one spelling."},
      {rules::kDuplicateKey, Severity::Warning, "of equal keys only the last one counts",
       "the JSON library keeps the last one. Other programs may keep the first.",
       "write each key once."},
      {rules::kNotAnObject, Severity::Error, "an array element without keys repeats the one before",
       "the element still counts, as one without any key: the piece before it is cut twice.",
       "leave the element out."},
      {rules::kMissingKey, Severity::Warning, "an element lacks a value that none before it had",
       "the field is empty, or 0, only on a panel that was just started. On any other it keeps the "
       "value of the job before: its customer, its angle, its side. It is an error where the value "
       "steers the machine: numbers, dimensions, barcodes, cuts and works.",
       "write every key in every element, `\"\"` or 0 if nothing else. Lists that are missing "
       "leave nothing behind: a piece without `work` has no works."},
      {rules::kCarriedOver, Severity::Warning, "a missing value is that of an earlier element",
       "readers never clear the element under construction. A piece without a cut is cut like the "
       "one before; a label shows the customer of another piece, or of yesterday's job. Empty "
       "texts, zeros and `false` stay like any other value.",
       "write every key in every element. `\"\"` clears a text; a number cannot be cleared, so "
       "write it."},
      {rules::kLabelMisplaced, Severity::Warning, "a lower-case label key fills another field",
       "lower-case label keys fill Field1 (1 to 10), Field11 (11 to 14) or Field15 (15 to 19), and "
       "the last one of each group wins.",
       "capitalise: `\"Field2\"`."},
      {rules::kLabelNotRead, Severity::Warning, "label fields are not read without the first one",
       "without a text under `Field1` or `field1` none of a piece's label fields is read, and the "
       "label shows those of the piece before.",
       "always write `\"Field1\"`, `\"\"` if need be."},
      {rules::kAngle135, Severity::Note, "a right angle of \"135\" is stored as \"45\"",
       "scripts get 45 for the right end. Nothing else is rewritten: not the left end, not "
       "`135.0`, "
       "nothing in XML jobs. Told once per file.",
       "none is needed if your scripts expect it."},
      {rules::kMissingElement, Severity::Error, "loading raises without this element's text",
       "`CtrsZ` of a piece and the four numbers of a work must be there and hold text. Loading "
       "raises where one does not; the bars before stay loaded, the rest of the file is not read. "
       "`check` ends there as well.",
       "write the element, with `0` if nothing else."},
      {rules::kEmptyElement, Severity::Warning, "an empty element does not clear the value before",
       "an element that holds nothing or blanks is as good as missing: the value before stays. An "
       "XML job has no way to clear a text.",
       "write a text that scripts take for \"none\", such as `-`."},
      {rules::kRepeatedElement, Severity::Warning, "of repeated elements only one counts",
       "of values the first one counts. A piece's cuts overwrite each other value by value, so "
       "what "
       "the last one lacks is that of an earlier one.",
       "write each value, and one cut per piece."},
      {rules::kIgnoredText, Severity::Warning, "text at this place is not read",
       "a value is the first text of its element and ends at a comment or at another element. Text "
       "between elements and around the root is not looked at. Entities that a document type "
       "declares are not known: `&note;` stays as it is written. It is an error where the value "
       "steers the machine.",
       "keep comments out of values, and write texts out."},
      {rules::kAttribute, Severity::Warning, "attributes are not read",
       "attributes are not read. Those that declare name spaces and schemas do no harm and are not "
       "told.",
       "make it an element of its own."},
      {rules::kNeverStored, Severity::Note, "the text of this element is never stored",
       "the field Extra_Pie holds the text of `holing_type`, whatever `Extra_Pie` says.",
       "write what the scripts need into `holing_type`."},
      {rules::kRaises, Severity::Error, "a script command raises an error",
       "a number that is none makes the named script command raise an error, or the loading of an "
       "XML job. What becomes of it depends on the panel's Lua; on 32-bit ARM it may end the "
       "panel.",
       "give every bar a number, `MaxY` and `MaxZ`, and every piece a length, before the first "
       "work."},
      {rules::kNotANumber, Severity::Warning, "a length, an angle or a count is no number",
       "lengths and angles stay texts. Scripts that convert them with `tonumber` get nil; those of "
       "the module that convert read the number in front and drop the rest. Bars and pieces are "
       "looked up by their numbers, which are whole and not below 0.",
       "plain decimal numbers, in the job's unit."},
      {rules::kDecimalComma, Severity::Error, "a comma stands in the place of the decimal point",
       "what reads the number ends at the comma: 65,5 becomes 65. `tonumber` gives nil.",
       "write a point: 65.5."},
      {rules::kThousandsPoint, Severity::Warning, "a point stands between thousands",
       "1.200 is one and a fifth, and the piece is cut so short. Only lengths below 100 mm are "
       "told that would be usual ones a thousand times as long. Two points end the number at the "
       "second one, which is an error.",
       "write 1200, without a separator."},
      {rules::kLength, Severity::Error, "a length that no bar or piece has",
       "a saw cannot be set to zero or less. What scripts make of it is theirs: nothing is cut, or "
       "the cut goes where the last one was.",
       "leave the piece out, or write its length from tip to tip."},
      {rules::kAngle, Severity::Error,
       "an angle that no cut has, or angles that the piece is too short for",
       "an angle is the one inside the piece, between its lower edge and the cut: 90 is square, "
       "and all lie between 0 and 180. Two cuts that meet within the profile leave no piece of "
       "that length.",
       "write 90 for a square end, and the length from tip to tip."},
      {rules::kProfileSize, Severity::Error, "a width or a height that no profile has",
       "`get_work`, `get_Dimensions`, `get_cut` and `get_hole` hand the size to the scripts, which "
       "set tools and clamps by it. More than 1000 mm is taken for a slip, and told as a warning.",
       "write the width and the height of the profile in millimetres."},
      {rules::kLeftOver, Severity::Warning, "more is said to be left over than can be",
       "the label of the remnant says a length that it does not have. Less than the pieces leave "
       "is no finding: saw blade and clamps take their share.",
       "write what is left behind the last cut, 0 for nothing."},
      {rules::kUnit, Severity::Error, "the unit of the job is not the millimetre",
       "no reader converts a length: 10 inches are cut as 10 mm. Millimetres in another spelling, "
       "such as `millimeter`, are a note.",
       "convert every length, and write `mm`."},
      {rules::kSide, Severity::Warning, "a side that no profile has",
       "a profile has four sides and two ends, which machines number from 0 or from 1. The work is "
       "left out, or done on another side.",
       "take the number from the machine's manual; it is a whole one."},
      {rules::kEmptyName, Severity::Warning, "a work has no name",
       "scripts choose the tool by the name, and `get_hole` lists each name once.",
       "write the name that the scripts expect."},
      {rules::kWorkBesidePiece, Severity::Error, "a work lies left or right of its piece",
       "the tool works on the neighbouring piece, on a clamp or in the air.",
       "count `PositionX` from the piece's left tip, not from the bar's end."},
      {rules::kWorkOutsideProfile, Severity::Warning,
       "a work lies outside of the cross section of its profile",
       "the tool works in the air, or runs into the table. Machines that do not count from the "
       "lower edge may mean it: switch the rule off for them.",
       "count `PositionY` and `PositionZ` from the lower edge, up to `MaxY` and `MaxZ`."},
      {rules::kWorkInCorner, Severity::Note,
       "a work lies in the corner that a slanted cut takes off",
       "a hole in the corner is cut away, wholly or in part. Pins that lock a corner lie there by "
       "design.",
       "none is needed for pins; else move the work inwards."},
      {rules::kDuplicateBarCode, Severity::Warning, "several pieces bear one barcode",
       "`get_work` with the barcode gives the works of both pieces, all with the dimensions of the "
       "first one, and so does `get_Dimensions`.",
       "a barcode for each piece."},
      {rules::kDuplicateNumber, Severity::Warning, "several pieces bear one bar and piece number",
       "`get_cut(\"\")` looks barcodes up by bar and piece number and finds that of the last piece "
       "for both.",
       "count the pieces within all bars of a number."},
      {rules::kDoesNotFit, Severity::Error, "the pieces are longer than their bar",
       "the last piece comes out short. Saw blade and clamps take room of their own, which is not "
       "counted here. It is a warning where the pieces fit once slanted ends of neighbours nest in "
       "each other, as those of equal angles do that share one cut.",
       "plan the pieces anew."},
      {rules::kOtherJob, Severity::Warning, "an XML job's cuts show values of a JSON job",
       "there is one reader for each format, and `get_cut` asks the JSON reader for height, "
       "barcodes and count whatever the job's format. The count of a JSON job is old in another "
       "way: it is that of the last `get_cut(\"\")`, which may have asked an earlier job. No job "
       "file can show that.",
       "do not use these three values of an XML job, and the count only of `get_cut(\"\")`."},
      {rules::kLenientJson, Severity::Note, "the panel's library takes what JSON does not have",
       "it loads; a sign without a number is read as 0. Other tools, and other versions of the "
       "panel's library, may refuse it.",
       "let a JSON library write the file."},
      {rules::kLenientXml, Severity::Note, "the panel's library takes what is no well-formed XML",
       "it loads; a reference that names no character stays as it is written. Other tools, and "
       "other versions of the panel's library, may refuse it. Only the first such place of a file "
       "is told.",
       "let an XML library write the file, as UTF-8; `&amp;` stands for an ampersand."},
      {rules::kNotUtf8, Severity::Warning, "bytes that are no UTF-8",
       "the bytes are kept as they are, and the panel shows something else, or nothing. A file in "
       "UTF-16 does not load.",
       "save the file as UTF-8."},
      {rules::kZeroByte, Severity::Warning, "for scripts a text ends at its first zero byte",
       "scripts get the text in front of the zero byte. A JSON barcode keeps the rest for itself, "
       "so no script can ask for its works.",
       "leave the zero byte out."},
  };
  return kRules;
}

const Rule* findRule(std::string_view id) {
  const std::vector<Rule>& rules = allRules();
  const auto found =
      std::find_if(rules.begin(), rules.end(), [&](const Rule& rule) { return rule.id == id; });
  return found == rules.end() ? nullptr : &*found;
}

const char* nameOf(Severity severity) {
  switch (severity) {
    case Severity::Note:
      return "note";
    case Severity::Warning:
      return "warning";
    case Severity::Error:
      break;
  }
  return "error";
}

}  // namespace desk::job
