-- Scripts reach the module by its global name or by require, and a bad argument stops no panel.
package.path = "../?.lua"
local session = require("session")

local names = {}
for name, value in pairs(cus_ParseModule) do names[#names + 1] = name .. ": " .. type(value) end
table.sort(names)
print(table.concat(names, "\n"))
print(require("cus_ParseModule") == cus_ParseModule, package.loaded.cus_ParseModule == cus_ParseModule)

session.part("missing arguments, and some that are no text")
for _, name in ipairs({"get_work", "get_cut", "get_Dimensions", "getjson_uDisk", "getjson_Flash"}) do
  session.ask(name)
  session.ask(name, {})
end
session.ask("getjson_url", "http://127.0.0.1")
session.ask("getjson_url", true, {})
session.ask("save_cutCurIndex", "1")

session.part("before any job")
session.ask("get_work", "")
session.ask("get_work", "P1")
session.ask("get_cut", "")
session.ask("get_cut", 1)
session.ask("get_hole")
session.ask("get_print")
session.ask("get_Dimensions", "P1")
