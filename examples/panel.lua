-- The cut list of a job on the panel, one page at a time. Copy it and make it your own.
--
--   cusdesk panel                    the shipped job
--   cusdesk panel --job mine.json    a job of your own
--
-- docs/panel.md tells what the table `panel` offers.

local jobs = require("cus_ParseModule")

local file = panel.job or "window.json"

-- What the columns show of a cut, and how wide each is: a digit.
local kColumns = {
  {title = "#", width = 2, text = function(_, number) return number end},
  {title = "Bar", width = 2, key = "BarNumber"},
  {title = "Profile 型材", width = 5, key = "BarName"},
  {title = "长度 mm", width = 4, key = "CutLength"},
  {title = "Ends 角度", width = 4, text = function(cut) return cut.SxB .. "° / " .. cut.DxB .. "°" end},
  {title = "Barcode 条码", width = 5, key = "BarCode"},
}

local cuts = {}

local function rowOf(cut, number)
  local row = {}
  for i, column in ipairs(kColumns) do
    row[i] = column.key and cut[column.key] or column.text(cut, number)
  end
  return row
end

--- Reads the job and shows it, on the page where the operator is.
local function load()
  local answer = jobs.getjson_Flash(file)
  print(("%s: %s (errorCode %d)"):format(file, answer.info, answer.errorCode))
  cuts = answer.errorCode == 0 and jobs.get_cut("") or {}
  print(("%d cuts"):format(#cuts))
  panel.update(#cuts)
end

local titles, widths = {}, {}
for i, column in ipairs(kColumns) do titles[i], widths[i] = column.title, column.width end

-- As many rows as can be read and touched at this height.
panel.grid(math.max(panel.height // 44 - 1, 1), #kColumns, table.concat(widths, ":"))
panel.head(titles)
panel.rows(function(first, last)
  local rows = {}
  for number = first, last do rows[#rows + 1] = cuts[number] and rowOf(cuts[number], number) end
  return rows
end)

function panel.on_click(number)
  local cut = cuts[number]
  if cut == nil then return end
  print(("Cut %d: %s mm of %s, bar %s"):format(number, cut.CutLength, cut.BarName, cut.BarNumber))
end

panel.on_job = load

load()
