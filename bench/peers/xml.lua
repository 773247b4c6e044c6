-- A script that reads the job with an XML parser: as events ("sax") or as a tree ("lom").
local folder, file, way = arg[1], arg[2], arg[3]
package.path = folder .. "/?.lua;" .. package.path

local repeating = { Bar = true, Piece = true, Work = true }

-- Puts a finished element into the one around it.
local function put(parent, name, value)
  if repeating[name] then
    local list = parent[name]
    if not list then
      list = {}
      parent[name] = list
    end
    list[#list + 1] = value
  elseif parent[name] == nil then
    parent[name] = value
  end
end

local function readEvents(text)
  local parent, open, texts = nil, {}, {}
  local root
  local parser = require("lxp").new({
    StartElement = function()
      open[#open + 1] = {}
      texts[#open] = nil
    end,
    CharacterData = function(_, part)
      local depth = #open
      texts[depth] = texts[depth] and texts[depth] .. part or part
    end,
    EndElement = function(_, name)
      local depth = #open
      local element = open[depth]
      if next(element) == nil then element = texts[depth] end
      open[depth] = nil
      parent = open[depth - 1]
      if parent then put(parent, name, element) else root = element end
    end,
  })
  assert(parser:parse(text))
  assert(parser:parse())
  parser:close()
  return root
end

local function simplify(node)
  local element = {}
  for _, child in ipairs(node) do
    if type(child) == "table" then put(element, child.tag, simplify(child)) end
  end
  return next(element) == nil and node[1] or element
end

local function readTree(text)
  return simplify(assert(require("lxp.lom").parse(text)))
end

local function worksOf(job)
  local rows, first = {}, {}
  for _, bar in ipairs(job.Bar) do
    for _, piece in ipairs(bar.Piece) do
      local code = piece.BarCode
      local dimensions = first[code]
      if not dimensions then
        dimensions = { bar.MaxY, bar.MaxZ, piece.Cut.Length }
        first[code] = dimensions
      end
      for _, work in ipairs(piece.Work) do
        rows[#rows + 1] = {
          BarCode = code, Name = work.Name, PositionX = tonumber(work.PositionX),
          PositionY = tonumber(work.PositionY), PositionZ = tonumber(work.PositionZ),
          MaxY = dimensions[1], MaxZ = dimensions[2], Cut_Length = dimensions[3],
        }
      end
    end
  end
  return rows
end

-- Height, barcode and material count are those of a JSON job, and there is none.
local function cutsOf(job)
  local rows = {}
  for _, bar in ipairs(job.Bar) do
    local pieces = ("%d"):format(#bar.Piece)
    for _, piece in ipairs(bar.Piece) do
      local cut = piece.Cut
      rows[#rows + 1] = {
        BarNumber = bar.BarNumber, Height = "", Length = bar.Length, CutLength = cut.Length,
        SxB = cut.sxB, DxB = cut.dxB, CutNumBer = pieces, BarCode = "", BarName = bar.BarName,
        MaterialCount = "0",
      }
    end
  end
  return rows
end

local function labelsOf(job)
  local rows = {}
  for _, bar in ipairs(job.Bar) do
    for _ = 1, #bar.Piece do
      rows[#rows + 1] = {
        sProfileCode = "", sProfileName = bar.DXF_Name, sProfileLength = bar.Length,
        sNameProduct = bar.BarName, sColor = bar.Color, sIndoorColor = "", sOutdoorColor = "",
        sLengthProduct = bar.LeftLength, sPosition = "", sWindow = "", sCutAngle = "",
        sProcess = "", sMaterialHeight = "",
      }
    end
  end
  return rows
end

require("measure")(function()
  local input = assert(io.open(file, "rb"))
  local job = (way == "sax" and readEvents or readTree)(input:read("a"))
  input:close()
  return worksOf(job), cutsOf(job), labelsOf(job)
end)
