-- What may follow what was typed, and what may have been meant.
--
-- Takes what it calls when it is loaded, as scripts may change any global, and calls no metamethod.
-- Returns complete, isName and meant.
local nearest = (...).nearest
local find, gmatch, match, sub = string.find, string.gmatch, string.match, string.sub
local globals, next, rawget, type = _G, next, rawget, type
local getmetatable, sort = debug.getmetatable, table.sort

local reserved = {}
for word in gmatch("and break do else elseif end false for function goto if in local nil not or "
                   .. "repeat return then true until while", "%l+") do
  reserved[word] = true
end

-- Whether `text` can be written as a name, without quotes.
local function isName(text)
  return find(text, "^[A-Za-z_][A-Za-z0-9_]*$") ~= nil and not reserved[text]
end

local mostTables = 10  -- that stand for one another as __index

-- The value that __index names.
local function fallback(value)
  local metatable = getmetatable(value)
  return metatable and rawget(metatable, "__index")
end

local function field(value, name)
  for _ = 1, mostTables do
    if value == nil then return nil end
    local own
    if type(value) == "table" then own = rawget(value, name) end
    if own ~= nil then return own end
    value = fallback(value)
  end
end

-- The names under which a value has fields that begin with `beginning`, as keys.
local function namesOf(value, beginning, functionsOnly)
  local names = {}
  for _ = 1, mostTables do
    if value == nil then break end
    for name, member in next, type(value) == "table" and value or {} do
      if type(name) == "string" and sub(name, 1, #beginning) == beginning and isName(name)
          and (not functionsOnly or type(member) == "function") then
        names[name] = true
      end
    end
    value = fallback(value)
  end
  return names
end

local function sorted(names)
  local list = {}
  for name in next, names do list[#list + 1] = name end
  sort(list)
  return list
end

-- The name before the cursor: of a global or a word of the language, or behind "." and ":" that of a
-- field. Returns how many bytes of it are there, and the names that begin with them, in order.
local function complete(before)
  local typed = match(before, "[A-Za-z0-9_.:]*$")
  local value, separator = globals, nil
  for name, mark in gmatch(typed, "([A-Za-z0-9_]*)([.:])") do
    value, separator = field(value, name), mark
  end
  local beginning = match(typed, "[A-Za-z0-9_]*$")
  local names = namesOf(value, beginning, separator == ":")
  for word in next, separator and {} or reserved do
    if sub(word, 1, #beginning) == beginning then names[word] = true end
  end
  return #beginning, sorted(names)
end

-- The known name nearest to `name` where that stands in `path` without a value.
local function meantIn(path, name)
  local value, front = globals, ""
  for part, mark in gmatch(path .. ".", "([A-Za-z0-9_]+)([.:])") do
    local member = field(value, part)
    if member == nil then
      local near = part == name and nearest(name, sorted(namesOf(value, "")))
      return near and front .. near
    end
    value, front = member, front .. part .. mark
  end
end

-- What was meant by a name in `chunk` that has no value: the one that `failure` is about, or without
-- a failure a chunk that is nothing but a field. Nil when nobody knows.
local function meant(chunk, failure)
  local kind, name = match(failure or "", "a nil value %((%l+) '([^'\n]*)'%)")
  if not failure then name = match(chunk, "^=?%s*[A-Za-z0-9_.]+%.([A-Za-z0-9_]+)%s*$") end
  if not name or kind == "local" or kind == "upvalue" then return nil end
  for path in gmatch(chunk, "[A-Za-z_][A-Za-z0-9_.:]*") do
    local near = meantIn(path, name)
    if near then return near end
  end
end

return complete, isName, meant
