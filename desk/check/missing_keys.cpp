#include "desk/check/missing_keys.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "desk/base/text.h"
#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace desk::check {

namespace {

using model::JobFormat;

struct MissableKey {
  const char* spelling;
  Severity severity;
  bool isText;
};

/// The keys of one kind of element, and those of each severity.
struct Table {
  std::vector<MissableKey> keys;
  std::array<KeySet, 3> bySeverity{};

  void add(const char* spelling, Severity severity, bool isText) {
    bySeverity[static_cast<std::size_t>(severity)] |= KeySet{1} << keys.size();
    keys.push_back({spelling, severity, isText});
  }

  template <class Rows>
  void addRows(const Rows& rows, Level level) {
    for (const auto& row : rows) {
      const bool isText =
          row.key.kind != model::KeyKind::Integer && row.key.kind != model::KeyKind::Number;
      const Severity severity = steersMachine(level, row.key.spelling) ? Severity::Error
                                : row.note.need == model::Need::Always ? Severity::Warning
                                                                       : Severity::Note;
      add(row.key.spelling, severity, isText);
    }
  }
};

using Tables = std::array<Table, std::size(model::kLevels)>;

Table& at(Tables& tables, Level level) {
  return tables[static_cast<std::size_t>(level)];
}

Tables jsonTables() {
  Tables tables;
  at(tables, Level::Header).addRows(json_keys::kHeaderRows, Level::Header);
  at(tables, Level::Bar).addRows(json_keys::kBarRows, Level::Bar);
  Table& piece = at(tables, Level::Piece);
  piece.addRows(json_keys::kPieceRows, Level::Piece);
  for (const auto& label : json_keys::kLabelFields) {
    piece.add(label.spelling, Severity::Warning, true);
  }
  piece.addRows(json_keys::kCutRows, Level::Cut);
  at(tables, Level::Work).addRows(json_keys::kWorkRows, Level::Work);
  return tables;
}

Tables xmlTables() {
  Tables tables;
  at(tables, Level::Header).addRows(xml_elements::kHeaderRows, Level::Header);
  at(tables, Level::Bar).addRows(xml_elements::kBarRows, Level::Bar);
  at(tables, Level::Piece).addRows(xml_elements::kPieceRows, Level::Piece);
  at(tables, Level::Cut).addRows(xml_elements::kCutRows, Level::Cut);
  at(tables, Level::Work).addRows(xml_elements::kWorkRows, Level::Work);
  return tables;
}

const Table& tableOf(Level level, JobFormat format) {
  static const Tables kTables[] = {jsonTables(), xmlTables()};
  static_assert(std::size(kTables) == std::size(model::kJobFormats));
  return kTables[static_cast<std::size_t>(format)][static_cast<std::size_t>(level)];
}

static_assert(std::size(json_keys::kPiece) + std::size(json_keys::kLabelFields) +
                      std::size(json_keys::kCut) <=
                  64,
              "a set has a bit for each key");

constexpr std::size_t kMostSets = 1000;  ///< that are told of a file

/// "\"a\", \"b\" and 3 more"
std::string namesText(const std::vector<std::string>& keys) {
  std::vector<std::string> names;
  names.reserve(keys.size());
  for (const std::string& key : keys) names.push_back('"' + key + '"');
  return joinedFirst(names, 4);
}

}  // namespace

const char* spellingOf(unsigned bit, Level level, JobFormat format) {
  return tableOf(level, format).keys[bit].spelling;
}

void MissingKeys::add(Level level, KeySet keys, bool isEmpty, const Element& element,
                      const Place& place) {
  const Table& table = tableOf(level, format_);
  for (const Severity severity : {Severity::Note, Severity::Warning, Severity::Error}) {
    const KeySet some = keys & table.bySeverity[static_cast<std::size_t>(severity)];
    if (some == 0) continue;
    if (sets_.size() == kMostSets && sets_.count({level, severity, isEmpty, some}) == 0) continue;
    First& first =
        sets_.try_emplace({level, severity, isEmpty, some}, First{element, place}).first->second;
    ++first.count;
  }
}

Finding MissingKeys::findingOf(const Set& set, const First& first) const {
  const auto& [level, severity, isEmpty, keys] = set;
  const Table& table = tableOf(level, format_);
  std::vector<std::string> names;
  bool hasText = false;
  bool hasNumber = false;
  for (std::size_t bit = 0; bit < table.keys.size(); ++bit) {
    if ((keys >> bit & 1) == 0) continue;
    names.emplace_back(table.keys[bit].spelling);
    (table.keys[bit].isText ? hasText : hasNumber) = true;
  }
  const bool isOne = first.count == 1;
  std::string message = describe(first.element);
  if (!isOne) message += " and " + std::to_string(first.count - 1) + " more";
  if (isEmpty) {
    message += (isOne ? " has no text in " : " have no text in ") + namesText(names) +
               ", which clears nothing";
  } else if (names.size() == 1) {
    message += (isOne ? " has no " : " have no ") + namesText(names);
  } else {
    message += (isOne ? " lacks " : " lack ") + std::to_string(names.size()) + " values (" +
               namesText(names) + ")";
  }
  message += ": a panel that had a job before keeps that job's, one just started has ";
  message += !hasNumber ? "none" : hasText ? "none or 0" : "0";
  Finding finding{isEmpty ? rules::kEmptyElement : rules::kMissingKey,
                  severity,
                  first.place,
                  message,
                  first.element,
                  names.size() == 1 ? names.front() : ""};
  finding.lacks = std::move(names);
  return finding;
}

void MissingKeys::report(Findings& findings) const {
  for (const auto& [set, first] : sets_) findings.push_back(findingOf(set, first));
  if (sets_.size() == kMostSets) findings.back().message += kMoreOfRule;
}

}  // namespace desk::check
