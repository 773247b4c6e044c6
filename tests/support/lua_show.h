// What test scripts print of an answer.
#pragma once

/// A Lua chunk that defines show(value): a table as text, its keys in order, else the value itself.
inline constexpr char kShow[] = R"(
function show(value)
  if type(value) ~= 'table' then return tostring(value) end
  local keys, parts = {}, {}
  for key in pairs(value) do keys[#keys + 1] = key end
  table.sort(keys, function(a, b) return tostring(a) < tostring(b) end)
  for _, key in ipairs(keys) do parts[#parts + 1] = tostring(key) .. '=' .. show(value[key]) end
  return '{' .. table.concat(parts, ',') .. '}'
end)";
