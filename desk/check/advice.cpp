#include "desk/check/advice.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>

#include "desk/base/command_line.h"
#include "desk/base/text.h"
#include "desk/job/traced_job.h"
#include "xml/xml_elements.h"

namespace desk::check {

using model::JobFormat;

namespace {

constexpr Level kLevels[] = {Level::Header, Level::Bar, Level::Piece, Level::Cut, Level::Work};

using Names = std::map<Level, std::vector<std::string>>;

template <class Table>
void append(std::vector<std::string>& names, const Table& table) {
  for (const auto& row : table) {
    names.push_back(row.spelling);
    if (row.secondSpelling != nullptr) names.push_back(row.secondSpelling);
  }
}

Names makeJsonNames() {
  using namespace json_keys;
  Names names;
  append(names[Level::Header], kHeader);
  append(names[Level::Bar], kBar);
  append(names[Level::Piece], kPiece);
  append(names[Level::Piece], kLabelFields);
  append(names[Level::Cut], kCut);
  append(names[Level::Work], kWork);
  names[Level::Header].insert(names[Level::Header].end(), {kBars, kBarsSecond});
  names[Level::Bar].push_back(kPieces);
  names[Level::Piece].insert(names[Level::Piece].end(), {kCutOfPiece, kWorks});
  return names;
}

Names makeXmlNames() {
  using namespace xml_elements;
  Names names;
  append(names[Level::Header], kHeader);
  append(names[Level::Bar], kBar);
  append(names[Level::Piece], kPiece);
  append(names[Level::Cut], kCut);
  append(names[Level::Work], kWork);
  names[Level::Header].push_back(kBars);
  names[Level::Bar].push_back(kPieces);
  names[Level::Piece].insert(names[Level::Piece].end(), {kCuts, kWorks});
  return names;
}

/// The names of fields that the two formats call differently: the other's name to this one's.
using Aliases = std::map<std::string, std::string>;

template <class Record, std::size_t count>
void addAliases(const model::Key<Record> (&xmlKeys)[count], bool toXml, Aliases& aliases) {
  for (const model::Key<Record>& xml : xmlKeys) {
    const std::size_t field = fieldOf(xml);
    if (field == std::size(FieldsOf<Record>::keys)) continue;
    const model::Key<Record>& json = FieldsOf<Record>::keys[field];
    for (const char* spelling : {json.spelling, json.secondSpelling}) {
      if (spelling == nullptr) continue;
      toXml ? aliases.emplace(spelling, xml.spelling) : aliases.emplace(xml.spelling, spelling);
    }
  }
}

Aliases aliasesAt(Level level, bool toXml) {
  using namespace xml_elements;
  Aliases aliases;
  if (level == Level::Header) addAliases(xml_elements::kHeader, toXml, aliases);
  if (level == Level::Bar) addAliases(xml_elements::kBar, toXml, aliases);
  if (level == Level::Piece) addAliases(xml_elements::kPiece, toXml, aliases);
  if (level == Level::Cut) addAliases(xml_elements::kCut, toXml, aliases);
  if (level == Level::Work) addAliases(xml_elements::kWork, toXml, aliases);
  return aliases;
}

std::string otherSpelling(const std::string& unknown, const std::vector<std::string>& names) {
  const std::string wanted = simplified(unknown);
  const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
    return simplified(name) == wanted;
  });
  return found == names.end() ? std::string() : *found;
}

std::string numberBehind(const std::string& name) {
  return name.substr(name.find_last_not_of("0123456789") + 1);
}

/// The names that do not number another thing than `unknown` does.
std::vector<std::string> ofSameNumber(const std::string& unknown,
                                      const std::vector<std::string>& names) {
  const std::string number = numberBehind(unknown);
  if (number.empty()) return names;
  std::vector<std::string> same;
  std::copy_if(names.begin(), names.end(), std::back_inserter(same),
               [&](const std::string& name) { return numberBehind(name) == number; });
  return same;
}

}  // namespace

const char* nameOf(Level level) {
  constexpr const char* kNames[] = {"the header", "a bar", "a piece", "a cut", "a work"};
  return kNames[static_cast<std::size_t>(level)];
}

std::string simplified(const std::string& name) {
  std::string text;
  for (const char byte : name) {
    if (byte == '_' || byte == '-' || byte == ' ') continue;
    text += static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
  }
  return text;
}

const std::vector<std::string>& namesAt(Level level, JobFormat format) {
  static const Names kNames[] = {makeJsonNames(), makeXmlNames()};
  static_assert(std::size(kNames) == std::size(model::kJobFormats));
  return kNames[static_cast<std::size_t>(format)].at(level);
}

bool leadsOn(const std::string& name) {
  constexpr const char* kNames[] = {"bar", "piece", "cut", "work"};
  return contains(kNames, simplified(name));
}

bool steersMachine(Level level, const std::string& name) {
  static const std::map<Level, std::vector<std::string>> kNames = {
      {Level::Header, {"Version", "Bar"}},
      {Level::Bar, {"BarNumber", "MaxY", "MaxZ", "Length", "Piece"}},
      {Level::Piece, {"BarCode", "PieceNumber", "Cut", "Work"}},
      {Level::Cut, {"Length", "sxB", "dxB"}},
      {Level::Work, {"Name", "ProfiLav", "PositionX", "PositionY", "PositionZ"}},
  };
  return !otherSpelling(name, kNames.at(level)).empty();
}

namespace {

Advice adviceFor(const std::string& unknown, Level level, JobFormat format) {
  std::string meant = otherSpelling(unknown, namesAt(level, format));
  const Aliases aliases = aliasesAt(level, format == JobFormat::Xml);
  if (const auto alias = aliases.find(unknown); meant.empty() && alias != aliases.end()) {
    meant = alias->second;
  }
  for (const Level other : kLevels) {
    if (!meant.empty() || other == level || !contains(namesAt(other, format), unknown)) continue;
    const bool steers = steersMachine(other, unknown);
    return {steers ? Severity::Error : Severity::Warning,
            std::string("; it belongs to ") + nameOf(other)};
  }
  if (meant.empty()) meant = nearest(unknown, ofSameNumber(unknown, namesAt(level, format)));
  if (meant.empty()) return {Severity::Warning, ""};
  return {steersMachine(level, meant) ? Severity::Error : Severity::Warning,
          "; did you mean \"" + meant + "\"?", meant};
}

}  // namespace

const Advice& Advisor::on(const std::string& unknown, Level level) {
  constexpr std::size_t kMostKnown = 1000;
  const auto name = std::make_pair(level, unknown);
  const auto known = known_.find(name);
  if (known != known_.end()) return known->second;
  if (known_.size() >= kMostKnown) known_.clear();
  return known_.emplace(name, adviceFor(unknown, level, format_)).first->second;
}

}  // namespace desk::check
