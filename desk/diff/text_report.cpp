#include <algorithm>
#include <array>
#include <unordered_map>

#include "desk/base/text.h"
#include "desk/diff/reports.h"

namespace desk::diff {

namespace {

/// So many pieces of a group are named; the others are counted.
constexpr std::size_t kNamed = 8;

constexpr char kPlain[] = "\033[0m";

/// How a kind of difference is marked.
struct Mark {
  const char* sign;
  const char* colour;
};
constexpr std::array<Mark, 4> kMarks = {{
    {"+", "\033[32m"},  // added
    {"-", "\033[31m"},  // gone
    {"~", "\033[33m"},  // changed
    {">", "\033[36m"},  // moved
}};

/// Differences that are told together.
struct Group {
  const Difference* first;
  std::vector<std::string> names;
};

/// Whether the bars of a piece are told with it: where they are what differs, or name it.
bool tellsBars(const Difference& difference) {
  return difference.kind != Kind::Changed || difference.isByNumber;
}

/// The number of a bar that tells where a piece is, with its place where a piece moved between two
/// of that number.
std::string barText(const Spot& spot, const Difference& of) {
  const bool isTwice = of.kind == Kind::Moved && of.before.bar == of.after.bar;
  return spot.bar + (isTwice ? " (place " + std::to_string(spot.at.bar) + ")" : "");
}

/// Equal for pieces that are told together.
std::string alikeKeyOf(const Difference& difference) {
  std::string key(nameOf(difference.kind));
  if (tellsBars(difference)) {
    key += barText(difference.before, difference) + '\0' + barText(difference.after, difference);
  }
  for (const Change& change : difference.changes) {
    for (const std::string* text : {&change.work, &change.key, &change.before, &change.after}) {
      key += '\0' + *text;
    }
  }
  return key;
}

std::vector<Group> groupsOf(const std::vector<Difference>& differences) {
  std::vector<Group> groups;
  std::unordered_map<std::string, std::size_t> pieces;
  for (const Difference& difference : differences) {
    std::size_t group = groups.size();
    if (difference.level == model::Level::Piece) {
      group = pieces.emplace(alikeKeyOf(difference), group).first->second;
    }
    if (group == groups.size()) groups.push_back({&difference, {}});
    groups[group].names.push_back(difference.name);
  }
  return groups;
}

/// A value as it stands; in quotation marks where one would not see it.
std::string valueText(const std::string& value) {
  const std::string text = escapeControls(value);
  const bool isSeen = !text.empty() && text.front() != ' ' && text.back() != ' ';
  return isSeen ? text : "\"" + text + "\"";
}

std::string changeText(const Change& change) {
  if (change.key.empty()) {
    return change.before.empty() ? "+ " + escapeControls(change.after)
                                 : "- " + escapeControls(change.before);
  }
  const std::string work = change.work.empty() ? "" : escapeControls(change.work) + " ";
  return work + change.key + ": " + valueText(change.before) + " -> " + valueText(change.after);
}

std::string titleOf(const Group& group, bool all) {
  const Difference& first = *group.first;
  if (first.level == model::Level::Header) return "header";
  if (first.level == model::Level::Bar) return "bar " + escapeControls(first.name);
  const std::string names =
      escapeControls(joinedFirst(group.names, all ? group.names.size() : kNamed));
  const bool isOne = group.names.size() == 1;
  std::string where;
  if (first.kind == Kind::Moved) {
    where = " from bar " + barText(first.before, first) + " to bar " + barText(first.after, first);
  } else if (isOne || tellsBars(first)) {
    where = " of bar " + (first.kind == Kind::Added ? first.after : first.before).bar;
  }
  where = escapeControls(where);
  if (isOne) return "piece " + names + where;
  return countText(group.names.size(), "piece") + where + ": " + names;
}

/// "1 bar added, 2 pieces changed"
std::string countsText(const JobDiff& diff) {
  std::vector<std::string> texts;
  for (const model::Level level : {model::Level::Header, model::Level::Bar, model::Level::Piece}) {
    for (const Kind kind : {Kind::Added, Kind::Gone, Kind::Changed, Kind::Moved}) {
      const auto count = std::count_if(
          diff.differences.begin(), diff.differences.end(),
          [&](const Difference& one) { return one.level == level && one.kind == kind; });
      const std::string name = model::kLevels[static_cast<std::size_t>(level)].name;
      const bool isOnlyOne = level == model::Level::Header;
      if (count > 0) {
        texts.push_back((isOnlyOne ? name : countText(static_cast<std::size_t>(count), name)) +
                        " " + nameOf(kind));
      }
    }
  }
  std::size_t unknown = 0;
  for (const UnknownKeys& one : diff.unknown) unknown += one.keys.size();
  if (unknown > 0) texts.push_back(countText(unknown, "key") + " of one format only");
  return texts.empty() ? "no differences" : joined(texts, ", ");
}

}  // namespace

std::string textReport(const JobDiff& diff, const Files& files, const Terminal& terminal,
                       bool all) {
  const auto coloured = [&](Kind kind, const std::string& text) {
    const Mark& mark = kMarks[static_cast<std::size_t>(kind)];
    const std::string line = std::string(mark.sign) + " " + text;
    return (terminal.hasColour ? mark.colour + line + kPlain : line) + "\n";
  };
  std::string text;
  if (!diff.isSame()) {
    text = "- " + escapeControls(files.before) + "\n+ " + escapeControls(files.after) + "\n\n";
  }
  for (const Group& group : groupsOf(diff.differences)) {
    text += coloured(group.first->kind, titleOf(group, all));
    for (const Change& change : group.first->changes) text += "    " + changeText(change) + "\n";
  }
  for (const UnknownKeys& unknown : diff.unknown) {
    text += std::string("  ") + model::rowOf(unknown.format).name + " jobs have no " +
            model::kLevels[static_cast<std::size_t>(unknown.level)].name + " values for " +
            joined(unknown.keys, ", ") + "\n";
  }
  return text + (diff.isSame() ? "" : "\n") + countsText(diff) + "\n";
}

}  // namespace desk::diff
