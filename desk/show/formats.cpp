#include "desk/show/formats.h"

#include <algorithm>
#include <cstdlib>

#include "desk/check/reports.h"
#include "desk/display_width.h"
#include "desk/host/log.h"
#include "desk/json_output.h"

namespace desk::show {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowest = 4;

bool looksLikeNumber(const std::string& text) {
  char* end = nullptr;
  std::strtod(text.c_str(), &end);
  return end != text.c_str() && *end == '\0';
}

std::string shown(const Cell& cell, bool where) {
  std::string text = deskhost::visible(cell.text);
  if (!where || cell.origin.line == 0) return text;
  return text + " (" + std::to_string(cell.origin.line) + (cell.origin.carried ? "*)" : ")");
}

/// The widths of the columns, cut down to `room` from the widest on.
void shrink(std::vector<std::size_t>& widths, std::size_t room) {
  std::size_t total = (widths.size() - 1) * kGap;
  for (const std::size_t width : widths) total += width;
  while (total > room) {
    const auto widest = std::max_element(widths.begin(), widths.end());
    if (*widest <= kNarrowest) return;
    --*widest;
    --total;
  }
}

std::string quotedField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string out = "\"";
  for (const char byte : text) out += byte == '"' ? std::string("\"\"") : std::string(1, byte);
  return out + "\"";
}

std::string csvLine(const std::vector<std::string>& fields) {
  std::string line;
  for (const std::string& field : fields) line += (line.empty() ? "" : ",") + quotedField(field);
  return line + "\r\n";
}

}  // namespace

std::string tableText(const Table& table, bool where, const Terminal& terminal) {
  const std::size_t columns = table.keys.size();
  std::vector<std::size_t> widths;
  std::vector<bool> toRight(columns, true);
  for (const std::string& key : table.keys) widths.push_back(displayWidth(key));
  bool carried = false;
  for (const auto& row : table.rows) {
    for (std::size_t i = 0; i < columns; ++i) {
      widths[i] = std::max(widths[i], displayWidth(shown(row[i], where)));
      if (!looksLikeNumber(row[i].text)) toRight[i] = false;
      carried |= row[i].origin.carried;
    }
  }
  if (terminal.isTerminal) shrink(widths, terminal.columns);
  std::string text;
  const auto addLine = [&](const auto& textOf) {
    std::string line;
    for (std::size_t i = 0; i < columns; ++i) {
      line += padded(fitted(textOf(i), widths[i]), widths[i], toRight[i]) +
              std::string(i + 1 < columns ? kGap : 0, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  };
  addLine([&](std::size_t i) { return table.keys[i]; });
  addLine([&](std::size_t i) { return std::string(widths[i], '-'); });
  for (const auto& row : table.rows) {
    addLine([&](std::size_t i) { return shown(row[i], where); });
  }
  if (where) text += carried ? "\n(line)  * carried over from an earlier element\n" : "\n(line)\n";
  return text;
}

std::string csvText(const Table& table, bool where) {
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

std::string jsonText(const Table& table, bool where) {
  Json::Value rows(Json::arrayValue);
  for (const auto& row : table.rows) {
    Json::Value object(Json::objectValue);
    for (std::size_t i = 0; i < row.size(); ++i) {
      const Cell& cell = row[i];
      Json::Value value =
          cell.isNumber ? Json::Value(cell.number) : Json::Value(check::asUtf8(cell.text));
      Json::Value& member = object[table.keys[i]];
      if (!where) {
        member = value;
        continue;
      }
      member["value"] = value;
      if (cell.origin.line == 0) continue;
      member["line"] = cell.origin.line;
      if (cell.origin.column > 0) member["column"] = cell.origin.column;
      member["carried"] = cell.origin.carried;
      member["element"] = cell.origin.element;
    }
    rows.append(object);
  }
  return jsonDocument(rows);
}

}  // namespace desk::show
