#include "part/svg_table.h"

#include <cstdint>
#include <utility>

#include "part/cell_text.h"
#include "part/table_layout.h"

namespace {

Table::Row cleanRow(const std::vector<std::string>& texts) {
  Table::Row row;
  row.reserve(texts.size());
  for (const std::string& text : texts) row.push_back(Table::cleanText(text));
  return row;
}

}  // namespace

CSVGLuaParseModule::CSVGLuaParseModule() = default;
CSVGLuaParseModule::~CSVGLuaParseModule() = default;

void CSVGLuaParseModule::SetSvgRect(tagRECT area) {
  content_.area = area;
}

void CSVGLuaParseModule::SetCell(unsigned short rows, unsigned short cols,
                                 const std::vector<float>& ratios) {
  content_.ratios.assign(ratios.begin(), ratios.end());
  content_.rows = rows;
  content_.cols = cols;
  content_.selectedRow = 0;
}

void CSVGLuaParseModule::DrawHeadText(const std::vector<std::string>& titles) {
  content_.head = cleanRow(titles);
}

void CSVGLuaParseModule::DrawBodyText(std::list<std::vector<std::string>*>& rows) {
  std::vector<Table::Row> body;
  body.reserve(rows.size());
  for (const std::vector<std::string>* row : rows) {
    body.push_back(row == nullptr ? Table::Row{} : cleanRow(*row));
  }
  content_.body = std::move(body);
}

bool CSVGLuaParseModule::Click(const tagPOINT& point) {
  const tagRECT& area = content_.area;
  const std::int64_t x = std::int64_t{point.x} - area.left;
  const std::int64_t y = std::int64_t{point.y} - area.top;
  const int height = Table::extent(area.top, area.bottom);
  if (!content_.hasGrid() || x < 0 || x >= Table::extent(area.left, area.right)) return false;
  if (y < 0 || y >= height) return false;
  const int band = Table::bandAt(height, content_.rows + 1, static_cast<int>(y));
  if (band == 0) return false;  // the head
  content_.selectedRow = band;
  return true;
}

int CSVGLuaParseModule::GetSelectedRow() const {
  return content_.selectedRow;
}

void CSVGLuaParseModule::GetSVGXml(std::string& svg) const {
  svg = Table::drawTable(content_);
}

void CSVGLuaParseModule::Reset() {
  Table::Content empty;
  empty.area = content_.area;
  content_ = std::move(empty);
}
