-- Tables for the terminal whose columns line up in any script: Chinese characters fill two columns,
-- combining marks none.
--
--   local aligned = require("aligned_table")
--   io.write(aligned.format({{key = "name"}, {key = "length", right = true}}, rows))

local aligned = {}

-- First and last code point of the characters that fill two columns, in ascending order.
local kWide = {
  {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x4DBF},   {0x4E00, 0xA4CF},
  {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
  {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
  {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
}

-- Combining marks, joiners and variation selectors: they sit on the character before.
local kMarks = {
  {0x0300, 0x036F}, {0x0483, 0x0489}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200D},
  {0x20D0, 0x20F0}, {0x302A, 0x302D}, {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
}

local function isIn(ranges, code)
  for _, range in ipairs(ranges) do
    if code <= range[2] then return code >= range[1] end
  end
  return false
end

--- How many columns of the screen a text fills. Text that is not UTF-8 counts a column per byte.
function aligned.width(text)
  if not utf8.len(text) then return #text end
  local width = 0
  for _, code in utf8.codes(text) do
    if not isIn(kMarks, code) then width = width + (isIn(kWide, code) and 2 or 1) end
  end
  return width
end

--- The text of a cell: numbers without needless decimals, nothing for nil.
local function cellText(value)
  if value == nil then return "" end
  if type(value) == "number" then return string.format("%.10g", value) end
  return tostring(value)
end

local function pad(text, width, right)
  local blanks = string.rep(" ", width - aligned.width(text))
  return right and blanks .. text or text .. blanks
end

--- Formats rows as the lines of a table, each with a line end.
-- `columns` is a list of {key = ..., title = ..., right = ...}: the field of a row that the column
-- shows, its heading (by default the key), and whether it is aligned to the right.
function aligned.format(columns, rows)
  local widths = {}
  for i, column in ipairs(columns) do
    widths[i] = aligned.width(column.title or column.key)
    for _, row in ipairs(rows) do
      widths[i] = math.max(widths[i], aligned.width(cellText(row[column.key])))
    end
  end

  local lines = {}
  local function addLine(textOf)
    local cells = {}
    for i, column in ipairs(columns) do
      cells[i] = pad(textOf(column, widths[i]), widths[i], column.right)
    end
    lines[#lines + 1] = table.concat(cells, "  "):gsub(" +$", "") .. "\n"
  end

  addLine(function(column) return column.title or column.key end)
  addLine(function(_, width) return string.rep("-", width) end)
  for _, row in ipairs(rows) do
    addLine(function(column) return cellText(row[column.key]) end)
  end
  return table.concat(lines)
end

return aligned
