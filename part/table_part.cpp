#include "part/table_part.h"

#include <algorithm>

#include "host/utility.h"

namespace {

constexpr std::uint64_t kRefreshInterval = 100;
// Half of the clock's range away from 0: the first refresh passes at any tick a clock really shows.
constexpr std::uint64_t kNeverRefreshed = std::uint64_t{1} << 63;

/// Reads "2:1:1" into `weights`. Stops with false where the text leaves that pattern.
bool readWeights(char const* widths, std::vector<std::uint16_t>& weights) {
  bool digitExpected = true;
  for (; *widths != '\0'; ++widths, digitExpected = !digitExpected) {
    if (!digitExpected && *widths != ':') return false;
    if (!digitExpected) continue;
    if (*widths < '0' || *widths > '9') return false;
    weights.push_back(static_cast<std::uint16_t>(*widths - '0'));
  }
  return true;
}

std::vector<float> ratiosOf(const std::vector<std::uint16_t>& weights) {
  std::uint16_t sum = 0;  // kept: wraps, the renderer only needs the proportions
  for (const std::uint16_t weight : weights) sum = static_cast<std::uint16_t>(sum + weight);
  // There is no share of nothing; the renderer takes ratios of 0 for equal widths.
  if (sum == 0) return std::vector<float>(weights.size(), 0.0F);
  std::vector<float> ratios;
  ratios.reserve(weights.size());
  for (const std::uint16_t weight : weights) {
    ratios.push_back(static_cast<float>(weight) / static_cast<float>(sum));
  }
  return ratios;
}

/// A row number of a page far beyond the end may not fit; then it stays as far off as it can.
std::int32_t toRow(std::int64_t row) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(row, INT32_MIN, INT32_MAX));
}

}  // namespace

CLuaParseModulePart::CLuaParseModulePart() : nLastRefreshTick(kNeverRefreshed), bRedraw(0) {
  InitLogic();
}

void CLuaParseModulePart::InitLogic() {
  nOrder = 0;
  nCols = 0;
  nPageRows = 0;
  nTotalRows = 0;
  nPageCount = 1;
  nCurPage = 1;
  nFirstRow = -1;
  nLastRow = -1;
}

int CLuaParseModulePart::Reset() {
  InitLogic();
  CSVGLuaParseModule::Reset();
  bRedraw = 1;
  return 1;
}

int CLuaParseModulePart::SetCell(unsigned short rows, unsigned short cols, char const* widths) {
  if (widths == nullptr) return 0;
  std::vector<std::uint16_t> weights;
  if (!readWeights(widths, weights)) return 0;
  if (*widths != '\0' && weights.size() != cols) return 0;
  CSVGLuaParseModule::SetCell(rows, cols, ratiosOf(weights));
  nPageRows = rows;
  nCols = cols;
  bRedraw = 1;
  return 1;
}

int CLuaParseModulePart::SetBodyText(std::list<std::vector<std::string>*>& rows) {
  if (nOrder == 1) rows.reverse();
  DrawBodyText(rows);
  return Refresh();
}

int CLuaParseModulePart::Update(unsigned short total, int& first, int& last) {
  if (total == 0 || nPageRows == 0) return 0;
  if (total != nTotalRows) {
    nTotalRows = total;
    const auto pages = static_cast<std::uint16_t>((total + nPageRows - 1) / nPageRows);
    if (pages != nPageCount) {
      nPageCount = pages;
      nCurPage = std::min(nCurPage, nPageCount);
    }
  }
  const std::int64_t rows = nPageRows;
  const std::int64_t before = rows * (nCurPage - 1);
  if (nOrder == 0) {
    const std::int64_t start = before + 1;
    const std::int64_t end = start + rows > total ? total : start + rows - 1;
    first = toRow(start > end ? end - rows + 1 : start);
    last = toRow(end);
  } else if (nOrder == 1) {
    const std::int64_t end = total - before;
    first = end - rows < 1 ? 1 : toRow(end - rows + 1);
    last = toRow(end);
  }
  nFirstRow = first;
  nLastRow = last;
  return 1;
}

int CLuaParseModulePart::PageUp() {
  if (nCurPage < 2) return 0;
  --nCurPage;
  return 1;
}

int CLuaParseModulePart::PageDown() {
  if (nCurPage >= nPageCount) return 0;
  ++nCurPage;
  return 1;
}

void CLuaParseModulePart::GetPage(unsigned short& cur, unsigned short& count) {
  cur = nCurPage;
  count = nPageCount;
}

int CLuaParseModulePart::GetIndex(int& index) {
  const std::int64_t selected = GetSelectedRow();
  if (selected == 0) return 0;
  if (nOrder == 0 && selected + nFirstRow - 1 <= nLastRow) {
    index = toRow(selected + nFirstRow - 1);
  } else if (nOrder == 1 && nLastRow - selected >= 0) {
    index = toRow(nLastRow - selected + 1);
  }
  return 1;
}

int CLuaParseModulePart::Refresh() {
  const std::uint64_t tick = UTILITY::CTime::get_instance()->getTickCount();
  if (tick - nLastRefreshTick < kRefreshInterval) return 0;
  nLastRefreshTick = tick;
  bRedraw = 1;
  return 1;
}

int CLuaParseModulePart::onInit(void* info) {
  if (info == nullptr) return -1;
  SetSvgRect(static_cast<const tagPARTINFO*>(info)->rect);
  return 0;
}

int CLuaParseModulePart::onClick(int, tagCLICKPARTTYPE type, tagPOINT const& pt, void*) {
  if (type == CLICKPART_CLICK && Click(pt)) bRedraw = 1;
  return 0;
}

int CLuaParseModulePart::onPLCRead(void*) {
  if (bRedraw == 0) return -1;
  bRedraw = 0;
  return 0;
}

int CLuaParseModulePart::onFillPartShowAttr(std::string& svg, void*) {
  GetSVGXml(svg);
  return 0;
}
