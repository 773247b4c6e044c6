-- Loads a cutting job and prints what a script can ask about it.
--
--   cusdesk run demo.lua [FILE [usb]]
--
-- FILE is a job in the controller's flash (by default window.json); with "usb", one on the USB disk.

package.path = (arg[0]:match("^.*/") or "./") .. "?.lua;" .. package.path
local aligned = require("aligned_table")
local jobs = require("cus_ParseModule")

local file = arg[1] or "window.json"
local isXml = file:sub(-4) == ".xml"

--- Ends the script: without a job there is nothing to show.
local function fail(reason)
  io.stderr:write(("demo: cannot load %s: %s\n"):format(file, reason))
  os.exit(1)
end

local function load()
  if not isXml and file:sub(-5) ~= ".json" then fail("a job's name ends in .json or .xml") end
  local command = arg[2] == "usb" and jobs.getjson_uDisk or jobs.getjson_Flash
  local result = command(file)
  print(("%s: %s (errorCode %d)"):format(file, result.info, result.errorCode))
  if result.errorCode ~= 0 then fail(result.info) end
end

local function show(title, columns, rows)
  print("\n" .. title)
  io.write(aligned.format(columns, rows))
end

--- The fields `key` of all rows, in order.
local function pluck(rows, key)
  local values = {}
  for i, row in ipairs(rows) do values[i] = row[key] end
  return values
end

--- Collects the rows that agree in all of `keys`, in the order in which they first turn up.
local function groupBy(rows, keys)
  local groups, known = {}, {}
  for _, row in ipairs(rows) do
    local values = {}
    for i, key in ipairs(keys) do values[i] = tostring(row[key]) end
    local id = table.concat(values, "\0")
    if not known[id] then
      known[id] = {}
      groups[#groups + 1] = known[id]
    end
    table.insert(known[id], row)
  end
  return groups
end

--- No command lists the bars, but every cut names its own. Cuts and labels come in the same order,
--- one of each per piece, so the label of a cut tells the rest about its bar.
local function showBars(cuts, labels)
  for i, cut in ipairs(cuts) do cut.label = labels[i] end
  local rows = {}
  for i, group in ipairs(groupBy(cuts, {"BarNumber"})) do
    local cut, label, used = group[1], group[1].label, 0
    for _, length in ipairs(pluck(group, "CutLength")) do used = used + (tonumber(length) or 0) end
    rows[i] = {
      bar = cut.BarNumber, profile = label.sProfileName, name = cut.BarName, colour = label.sColor,
      length = cut.Length, pieces = cut.CutNumBer, used = used, left = label.sLengthProduct,
    }
  end
  show("Bars (mm; \"left\" is what remains after the saw's kerfs)", {
    {key = "bar", right = true}, {key = "profile"}, {key = "name"}, {key = "colour"},
    {key = "length", right = true}, {key = "pieces", right = true}, {key = "used", right = true},
    {key = "left", right = true},
  }, rows)
end

--- Draws the ends of a piece: square or mitred.
local function ends(cut)
  return (cut.SxB == "90" and "|" or "/") .. "__" .. (cut.DxB == "90" and "|" or "\\")
end

local function showCuts(cuts)
  local rows = {}
  for i, group in ipairs(groupBy(cuts, {"BarNumber", "CutLength", "SxB", "DxB"})) do
    local cut = group[1]
    rows[i] = {
      BarNumber = cut.BarNumber, CutLength = cut.CutLength, SxB = cut.SxB, DxB = cut.DxB,
      ends = ends(cut), pieces = #group, BarCode = table.concat(pluck(group, "BarCode"), " "),
    }
  end
  show("Cuts: get_cut(\"\"), equal ones on a bar counted", {
    {key = "BarNumber", right = true}, {key = "CutLength", right = true},
    {key = "SxB", right = true}, {key = "DxB", right = true}, {key = "ends"},
    {key = "pieces", right = true}, not isXml and {key = "BarCode"} or nil,
  }, rows)
  if isXml then
    print("BarCode, Height and MaterialCount of a cut come from the JSON job read last: none here.")
  elseif cuts[1] then
    print(("Height %s (of the first bar's profile), MaterialCount %s (the highest bar number)")
      :format(cuts[1].Height, cuts[1].MaterialCount))
  end
end

--- "drain slot 150 450, hinge 60": each operation with its positions along the piece.
local function operations(works)
  local texts = {}
  for i, same in ipairs(groupBy(works, {"Name"})) do
    local positions = {}
    for j, x in ipairs(pluck(same, "PositionX")) do positions[j] = ("%.10g"):format(x) end
    texts[i] = same[1].Name .. " " .. table.concat(positions, " ")
  end
  return table.concat(texts, ", ")
end

local function showWorks(works)
  local rows = {}
  for i, group in ipairs(groupBy(works, {"BarCode"})) do
    local work = group[1]
    rows[i] = {
      BarCode = work.BarCode, MaxY = work.MaxY, MaxZ = work.MaxZ, Cut_Length = work.Cut_Length,
      operations = operations(group),
    }
  end
  show("Works: get_work(\"\"), one line for each piece that has any", {
    {key = "BarCode"}, {key = "MaxY", right = true}, {key = "MaxZ", right = true},
    {key = "Cut_Length", right = true}, {key = "operations", title = "operations at PositionX"},
  }, rows)
end

local function showHoles()
  if isXml then
    print("\nHoles: get_hole() answers for JSON jobs only; for an XML job it is always empty.")
    return
  end
  show("Holes: get_hole(), each operation with the piece that it first occurs on", {
    {key = "name"}, {key = "length", right = true}, {key = "width", right = true},
    {key = "height", right = true},
  }, jobs.get_hole())
end

local kLabelKeys = {
  "sProfileCode", "sProfileName", "sProfileLength", "sNameProduct", "sColor", "sIndoorColor",
  "sOutdoorColor", "sLengthProduct", "sPosition", "sWindow", "sCutAngle", "sProcess",
  "sMaterialHeight",
}

local function showLabels(labels)
  local columns, empty, rows = {{key = "labels", right = true}}, {}, {}
  for _, key in ipairs(kLabelKeys) do
    local isUsed = table.concat(pluck(labels, key)) ~= ""
    table.insert(isUsed and columns or empty, isUsed and {key = key} or key)
  end
  for i, group in ipairs(groupBy(labels, kLabelKeys)) do
    rows[i] = setmetatable({labels = #group}, {__index = group[1]})
  end
  show("Labels: get_print(), one for each piece, equal ones counted", columns, rows)
  print("Empty on every label: " .. table.concat(empty, ", "))
  if isXml then print("An XML job has no elements for sProfileCode and sCutAngle.") end
end

--- get_Dimensions answers for the piece whose works come last in the job, and for no other.
local function showDimensions(works)
  if #works == 0 then return end
  local barCode = works[#works].BarCode
  local rows = jobs.get_Dimensions(barCode)
  show(("Dimensions: get_Dimensions(%q), the first of %d equal rows"):format(barCode, #rows), {
    {key = "MaxY", right = true}, {key = "MaxZ", right = true}, {key = "Cut_Length", right = true},
  }, {rows[1]})
  print("There is a row for each work of the piece whose works come last in the job, and none for")
  print("other pieces: take their dimensions from get_work.")
end

load()
local cuts, works, labels = jobs.get_cut(""), jobs.get_work(""), jobs.get_print()
showBars(cuts, labels)
showCuts(cuts)
showWorks(works)
showHoles()
showLabels(labels)
showDimensions(works)
