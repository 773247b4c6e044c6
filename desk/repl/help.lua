-- help, exit and quit at the prompt.
--
-- Takes the script module, the texts of its functions by their names, and the text for help().
local module, texts, overview, write = ...
local exit, next, rawget, select, setmetatable, type = os.exit, next, rawget, select, setmetatable, type

local textOf = {}
for name, text in next, texts do
  local member = rawget(module, name)
  if member ~= nil then textOf[member] = text end
  textOf[name] = text
end
textOf[module] = overview

local function help(...)
  if select("#", ...) == 0 then return write(overview) end
  local value = ...
  local text = value ~= nil and textOf[value]
  local what = value == nil and "nil" or "this " .. type(value)
  write(text or "No help for " .. what .. ". help() names what there is help for.\n")
end

-- A global that says what it is for when its name alone is typed, and does it when it is called.
local function word(hint, action)
  return setmetatable({}, {
    __tostring = function() return hint end,
    __call = function(_, ...) return action(...) end,
  })
end

_G.help = word("Type help() for the functions of the module, help(job.get_cut) for one of them.", help)
_G.exit = word("Use exit() or Ctrl-D to end.", exit)
_G.quit = word("Use quit() or Ctrl-D to end.", exit)
