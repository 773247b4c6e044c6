-- A script that decodes the job with a JSON library: cjson, dkjson or dkjson_lpeg.
local folder, file, library = arg[1], arg[2], arg[3]
package.path = folder .. "/?.lua;" .. package.path

local decode
if library == "cjson" then
  decode = require("cjson").decode
elseif library == "dkjson" then
  decode = require("dkjson").decode
else
  decode = require("dkjson").use_lpeg().decode
end

local function whole(number) return ("%d"):format(number) end

local function worksOf(job)
  local rows, first = {}, {}
  for _, bar in ipairs(job.Bar) do
    local maxY, maxZ = whole(bar.MaxY), whole(bar.MaxZ)
    for _, piece in ipairs(bar.piece) do
      local code = piece.BarCode
      local dimensions = first[code]
      if not dimensions then
        dimensions = { maxY, maxZ, piece.cut.Length }
        first[code] = dimensions
      end
      for _, work in ipairs(piece.work) do
        rows[#rows + 1] = {
          BarCode = code, Name = work.Name,
          PositionX = work.PositionX, PositionY = work.PositionY, PositionZ = work.PositionZ,
          MaxY = dimensions[1], MaxZ = dimensions[2], Cut_Length = dimensions[3],
        }
      end
    end
  end
  return rows
end

local function cutsOf(job)
  local rows, highest = {}, 0
  local height = whole(job.Bar[1].MaxZ)
  for _, bar in ipairs(job.Bar) do highest = math.max(highest, bar.BarNumber) end
  highest = whole(highest)
  for _, bar in ipairs(job.Bar) do
    local number, length, pieces = whole(bar.BarNumber), whole(bar.length), whole(#bar.piece)
    for _, piece in ipairs(bar.piece) do
      local cut = piece.cut
      rows[#rows + 1] = {
        BarNumber = number, Height = height, Length = length, CutLength = cut.Length,
        SxB = cut.sxB, DxB = cut.dxB == "135" and "45" or cut.dxB, CutNumBer = pieces,
        BarCode = piece.BarCode, BarName = bar.BarName, MaterialCount = highest,
      }
    end
  end
  return rows
end

local function labelsOf(job)
  local rows = {}
  for _, bar in ipairs(job.Bar) do
    local length, left = whole(bar.length), whole(bar.BarLeftLength)
    for _, piece in ipairs(bar.piece) do
      rows[#rows + 1] = {
        sProfileCode = piece.mark, sProfileName = bar.DXF_Name, sProfileLength = length,
        sNameProduct = bar.BarName, sColor = bar.BarColor, sIndoorColor = "", sOutdoorColor = "",
        sLengthProduct = left, sPosition = "", sWindow = "", sCutAngle = piece.cut_angle_convert,
        sProcess = "", sMaterialHeight = "",
      }
    end
  end
  return rows
end

require("measure")(function()
  local input = assert(io.open(file, "rb"))
  local job = decode(input:read("a"))
  input:close()
  return worksOf(job), cutsOf(job), labelsOf(job)
end)
