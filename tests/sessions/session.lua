-- What the session scripts share: rows printed the same way every time, whole or the keys that the
-- case is about.
local module = require("cus_ParseModule")

local session = {}

local function isList(value)
  local count = 0
  for _ in pairs(value) do count = count + 1 end
  return count == #value
end

local function sortedKeys(row)
  local keys = {}
  for key in pairs(row) do keys[#keys + 1] = key end
  table.sort(keys, function(a, b) return tostring(a) < tostring(b) end)
  return keys
end

--- The value as Lua writes it, so that texts and numbers differ; keys in alphabetical order.
function session.text(value)
  if type(value) == "string" then return '"' .. value .. '"' end
  if type(value) ~= "table" then return tostring(value) end
  local fields = {}
  for _, key in ipairs(sortedKeys(value)) do
    local name = isList(value) and "" or tostring(key) .. "="
    fields[#fields + 1] = name .. session.text(value[key])
  end
  return "{" .. table.concat(fields, ", ") .. "}"
end

local shownKeys = {}

--- From now on rows of a command show these keys only: those that the case is about.
function session.only(command, ...)
  shownKeys[command] = {...}
end

local function shownPart(command, row)
  if not shownKeys[command] or type(row) ~= "table" then return row end
  local part = {}
  for _, key in ipairs(shownKeys[command]) do part[key] = row[key] end
  return part
end

--- Prints a result: the rows of a list one a line, anything else on one line.
function session.show(title, result, command)
  if type(result) ~= "table" or not isList(result) or #result == 0 then
    print(title .. " -> " .. session.text(result))
    return
  end
  print(title .. " ->")
  for index, row in ipairs(result) do
    print("  " .. index .. " " .. session.text(shownPart(command, row)))
  end
end

--- Calls a function of the module and prints its result, or the error that it raises.
function session.ask(name, ...)
  local done, result = pcall(module[name], ...)
  local arguments = session.text({...}):sub(2, -2)
  local title = name .. "(" .. arguments .. ")"
  if done then
    session.show(title, result, name)
  else
    print(title .. " raises " .. session.text(result))
  end
end

--- A heading between the parts of a session.
function session.part(title)
  print("== " .. title)
end

return session
