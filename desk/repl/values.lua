-- Lua values as people read them.
--
-- Takes what it calls when it is loaded, as scripts may change any global, and calls no metamethod but
-- __tostring. Returns valueText.
local isName, native = ...
local characterSize, escaped = native.characterSize, native.escaped
local fitted, width = native.fitted, native.width
local find, gsub, rep, sub = string.find, string.gsub, string.rep, string.sub
local concat, insert = table.concat, table.insert
local next, rawget, rawlen, tostring, type = next, rawget, rawlen, tostring, type
local getmetatable, numberType = debug.getmetatable, math.type

local indentation = 2
local escapes = {['"'] = '\\"', ["\\"] = "\\\\"}

-- As Lua source has it, but with all characters that can be seen as they are.
local function quoted(text)
  local out, at = {}, 1
  while at <= #text do
    local size = characterSize(text, at)  -- 0: no UTF-8
    local character = sub(text, at, at + (size == 0 and 0 or size - 1))
    out[#out + 1] = escapes[character] or escaped(character)
    at = at + #character
  end
  return '"' .. concat(out) .. '"'
end

-- In one line where that fits; else short entries next to one another, others line by line.
local function joined(entries, indent, columns)
  local line = "{" .. concat(entries, ", ") .. "}"
  local isShort = not find(line, "\n", 1, true)
  if isShort and width(line) + indent <= columns then return line end
  local out, column = {"{"}, columns
  for i = 1, #entries do
    local size = width(entries[i]) + 2
    local isNext = isShort and column + size <= columns
    if not isNext then column = indent + indentation end
    insert(out, (isNext and " " or "\n" .. rep(" ", column)) .. entries[i] .. ",")
    column = column + size
  end
  return concat(out) .. "\n" .. rep(" ", indent) .. "}"
end

local function comesBefore(a, b)
  if a.rank ~= b.rank then return a.rank < b.rank end
  if a.rank == 1 then return a.key < b.key end
  return a.text < b.text
end

-- The text for `value`: a table with what it holds, all else as tostring has it. Of `limits` see
-- prompt_code.h.
local function valueText(value, limits)
  if type(value) == "string" and limits.rawTexts then return value end
  local depths, depth, values = {}, 0, 0  -- depths: of the tables around the value at hand
  local write

  local function text(value)
    local most = 4 * limits.textColumns
    local all = quoted(sub(value, 1, most))
    if #value <= most and width(all) <= limits.textColumns then return all end
    return fitted(all .. " ", limits.textColumns) .. '" (' .. #value .. " bytes)"
  end

  local function described(key)
    local kind = type(key)
    if kind == "string" then
      return {rank = 2, key = key, text = isName(key) and key or "[" .. text(key) .. "]"}
    end
    return {rank = kind == "number" and 1 or 3, key = key, text = "[" .. tostring(key) .. "]"}
  end

  -- The first `room` keys outside the sequence, in order, and how many there are.
  local function otherKeys(tbl, length, room)
    local keys, count = {}, 0
    for key in next, tbl do
      if numberType(key) ~= "integer" or key < 1 or key > length then
        count = count + 1
        local new = described(key)
        local at = #keys + 1
        while at > 1 and comesBefore(new, keys[at - 1]) do at = at - 1 end
        if at <= room then insert(keys, at, new) end
        keys[room + 1] = nil
      end
    end
    return keys, count
  end

  local function entriesOf(tbl, indent)
    local entries, length, shown = {}, rawlen(tbl), 0
    local function isFull() return shown >= limits.entries or values > limits.values end
    while shown < length and not isFull() do
      shown = shown + 1
      entries[shown] = write(rawget(tbl, shown), indent)
    end
    local keys, count = otherKeys(tbl, length, limits.entries - shown)
    for i = 1, #keys do
      if isFull() then break end
      shown = shown + 1
      entries[shown] = keys[i].text .. " = " .. write(rawget(tbl, keys[i].key), indent)
    end
    local left = length + count - shown
    if left > 0 then insert(entries, "… " .. left .. " more") end
    return entries
  end

  function write(value, indent)
    values = values + 1
    if type(value) == "string" then return text(value) end
    local metatable = getmetatable(value)
    local hasOwnText = metatable and rawget(metatable, "__tostring") ~= nil
    if type(value) ~= "table" or hasOwnText then
      return limits.rawTexts and tostring(value) or (gsub(tostring(value), "[^\n]+", escaped))
    end
    if depths[value] then return "<cycle: " .. depth - depths[value] + 1 .. " up>" end
    if depth == limits.depth or values > limits.values then return "{…}" end
    depth = depth + 1
    depths[value] = depth
    local entries = entriesOf(value, indent + indentation)
    depths[value] = nil
    depth = depth - 1
    return joined(entries, indent, limits.columns)
  end

  return write(value, 0)
end

return valueText
