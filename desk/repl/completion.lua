-- What may follow what was typed.
--
-- Takes what it calls when it is loaded, as scripts may change any global, and calls no metamethod.
-- Returns complete and isName.
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

-- The name before the cursor: of a global or a word of the language, or behind "." and ":" that of a
-- field. Returns how many bytes of it are there, and the names that begin with them, in order.
local function complete(before)
  local typed = match(before, "[A-Za-z0-9_.:]*$")
  local value, separator = globals, nil
  for name, mark in gmatch(typed, "([A-Za-z0-9_]*)([.:])") do
    value, separator = field(value, name), mark
  end
  local beginning = match(typed, "[A-Za-z0-9_]*$")
  local names = {}
  for _ = 1, mostTables do
    if value == nil then break end
    for name, member in next, type(value) == "table" and value or {} do
      if type(name) == "string" and sub(name, 1, #beginning) == beginning and isName(name)
          and (separator ~= ":" or type(member) == "function") then
        names[name] = true
      end
    end
    value = fallback(value)
  end
  for word in next, separator and {} or reserved do
    if sub(word, 1, #beginning) == beginning then names[word] = true end
  end
  local list = {}
  for name in next, names do list[#list + 1] = name end
  sort(list)
  return #beginning, list
end

return complete, isName
