#include "desk/base/table.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "desk/base/json_document.h"
#include "desk/base/numbers.h"
#include "desk/base/terminal.h"
#include "desk/base/text.h"

namespace desk {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowest = 6;
constexpr std::size_t kNarrowestWithLine = 12;

bool looksLikeNumber(const std::string& text) {
  char* end = nullptr;
  std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == '\0';
}

/// The line that a value was read from; empty for a value that stands in no file.
std::string lineOf(const Cell& cell) {
  if (cell.origin.line == 0) return "";
  return " (" + std::to_string(cell.origin.line) + (cell.origin.carried ? "*)" : ")");
}

std::string shown(const Cell& cell, bool where) {
  return escapeControls(cell.text) + (where ? lineOf(cell) : "");
}

/// The same in so many columns. What does not fit is cut from the value, not from its line.
std::string shown(const Cell& cell, bool where, std::size_t columns) {
  const std::string line = where ? lineOf(cell) : "";
  return truncatedToColumns(escapeControls(cell.text), columns - std::min(line.size(), columns)) +
         line;
}

/// How the columns of a table are laid out.
struct Layout {
  std::vector<std::size_t> widths;
  NumberColumns numbers;  ///< stand to the right
};

Layout layoutOf(const TextTable& table, bool where) {
  Layout layout{{}, NumberColumns(table.keys.size())};
  for (const std::string& key : table.keys) layout.widths.push_back(displayWidth(key));
  for (const auto& row : table.rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      layout.widths[i] = std::max(layout.widths[i], displayWidth(shown(row[i], where)));
    }
    layout.numbers.add(row);
  }
  return layout;
}

/// Cuts the widest columns down until all fit into `room`. False when they would say too little.
bool shrink(std::vector<std::size_t>& widths, std::size_t room, std::size_t narrowest) {
  std::size_t total = (widths.size() - 1) * kGap;
  for (const std::size_t width : widths) total += width;
  for (; total > room; --total) {
    const auto widest = std::max_element(widths.begin(), widths.end());
    if (*widest <= narrowest) return false;
    --*widest;
  }
  return true;
}

template <class TextOf>
std::string line(const Layout& layout, TextOf textOf) {
  std::string text;
  for (std::size_t i = 0; i < layout.widths.size(); ++i) {
    const std::size_t width = layout.widths[i];
    text += padded(truncatedToColumns(textOf(i), width), width, layout.numbers.has(i)) +
            std::string(kGap, ' ');
  }
  text.erase(text.find_last_not_of(' ') + 1);
  return text + "\n";
}

std::string columnsText(const TextTable& table, bool where, const Layout& layout) {
  std::string text = line(layout, [&](std::size_t i) { return table.keys[i]; });
  text += line(layout, [&](std::size_t i) { return std::string(layout.widths[i], '-'); });
  for (const auto& row : table.rows) {
    text += line(layout, [&](std::size_t i) { return shown(row[i], where, layout.widths[i]); });
  }
  return text;
}

/// Each row by itself.
std::string recordsText(const TextTable& table, bool where, const Terminal& terminal) {
  std::string text;
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    text += (row == 0 ? "row " : "\nrow ") + std::to_string(row + 1) + "\n" +
            recordText(table, row, where, terminal);
  }
  return text;
}

bool hasCarried(const TextTable& table) {
  const auto isCarried = [](const Cell& cell) { return cell.origin.carried; };
  return std::any_of(table.rows.begin(), table.rows.end(), [&](const auto& row) {
    return std::any_of(row.begin(), row.end(), isCarried);
  });
}

std::string quotedField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string out = "\"";
  for (const char byte : text) out += byte == '"' ? std::string("\"\"") : std::string(1, byte);
  return out + "\"";
}

std::string csvLine(const std::vector<std::string>& fields) {
  std::string line;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    line += (i == 0 ? "" : ",") + quotedField(fields[i]);
  }
  return line + "\r\n";
}

/// A whole number without a fraction of zeros.
Json::Value numberValue(const Cell& cell) {
  const bool isWhole = std::abs(cell.number) < 1e15 && std::trunc(cell.number) == cell.number;
  return isWhole ? Json::Value(static_cast<Json::Int64>(cell.number)) : Json::Value(cell.number);
}

}  // namespace

void NumberColumns::add(const std::vector<Cell>& row) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (row[i].text.empty()) continue;
    (looksLikeNumber(row[i].text) ? hasNumber_ : hasText_)[i] = true;
  }
}

Cell numberCell(double number) {
  const std::string text = hundredthsText(number);
  return {text, true, std::strtod(text.c_str(), nullptr)};
}

std::string tableText(const TextTable& table, bool where, const Terminal& terminal,
                      TooWide tooWide) {
  Layout layout = layoutOf(table, where);
  const std::size_t narrowest = tooWide == TooWide::Folded ? terminal.columns
                                : where                    ? kNarrowestWithLine
                                                           : kNarrowest;
  const bool fits = !terminal.isTerminal || table.rows.empty() ||
                    shrink(layout.widths, terminal.columns, narrowest);
  std::string text = fits ? columnsText(table, where, layout) : recordsText(table, where, terminal);
  if (!where) return text;
  return text + "\n(line)" +
         (hasCarried(table) ? "  * carried over from an earlier element\n" : "\n");
}

std::string recordText(const TextTable& table, std::size_t row, bool where,
                       const Terminal& terminal) {
  std::size_t width = 0;
  for (const std::string& key : table.keys) width = std::max(width, displayWidth(key));
  std::string text;
  for (std::size_t i = 0; i < table.keys.size(); ++i) {
    std::string value =
        "  " + padded(table.keys[i], width, false) + "  " + shown(table.rows[row][i], where);
    value.erase(value.find_last_not_of(' ') + 1);
    text += value + "\n";
  }
  return terminal.isTerminal ? foldedToColumns(text, terminal.columns) : text;
}

std::string csvText(const TextTable& table, bool where) {
  std::vector<std::string> heading;
  for (const std::string& key : table.keys) {
    heading.push_back(key);
    if (where) heading.insert(heading.end(), {key + " line", key + " carried"});
  }
  std::string text = csvLine(heading);
  for (const auto& row : table.rows) {
    std::vector<std::string> fields;
    for (const Cell& cell : row) {
      fields.push_back(cell.text);
      if (!where) continue;
      fields.push_back(cell.origin.line == 0 ? "" : std::to_string(cell.origin.line));
      fields.emplace_back(cell.origin.carried ? "yes" : "");
    }
    text += csvLine(fields);
  }
  return text;
}

std::string jsonText(const TextTable& table, bool where) {
  return jsonArray(table.rows.size(), [&](std::size_t row) { return jsonRow(table, row, where); },
                   {"value", "line", "column", "carried", "element"});
}

Json::Value jsonRows(const TextTable& table, bool where) {
  Json::Value rows(Json::arrayValue);
  for (std::size_t row = 0; row < table.rows.size(); ++row) {
    rows.append(jsonRow(table, row, where));
  }
  return rows;
}

Json::Value originValue(const Source& origin) {
  if (origin.line == 0) return {};
  Json::Value value;
  value["line"] = origin.line;
  if (origin.column > 0) value["column"] = origin.column;
  value["carried"] = origin.carried;
  value["element"] = origin.element;
  return value;
}

Json::Value jsonRow(const TextTable& table, std::size_t row, bool where) {
  Json::Value object(Json::objectValue);
  for (std::size_t i = 0; i < table.rows[row].size(); ++i) {
    const Cell& cell = table.rows[row][i];
    Json::Value value = cell.isNumber ? numberValue(cell) : Json::Value(asUtf8(cell.text));
    Json::Value& member = object[table.keys[i]];
    (where ? member["value"] : member) = value;
    member.setOffsetStart(static_cast<std::ptrdiff_t>(i) + 1);
    if (!where) continue;
    const Json::Value origin = originValue(cell.origin);
    for (const std::string& name : origin.getMemberNames()) member[name] = origin[name];
  }
  return object;
}

}  // namespace desk
