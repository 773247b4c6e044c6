-- Which spelling of a key wins, and which types of value count; what does not count is as if absent.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "Height", "Length", "CutLength", "SxB",
             "DxB", "CutNumBer", "BarCode", "BarName")
session.only("get_print", "sProfileCode", "sProfileName", "sColor", "sLengthProduct", "sCutAngle")

for _, file in ipairs({"spellings.json", "types.json"}) do
  session.part(file)
  session.ask("getjson_Flash", file)
  session.ask("get_cut", "")
  session.ask("get_work", "")
  session.ask("get_print")
end
