-- What an element leaves out it takes from the one before, also from the file before; bars, pieces
-- and works never carry over.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "Height", "Length", "CutLength", "SxB",
             "DxB", "BarCode", "BarName")
session.only("get_print", "sProfileCode", "sProfileName", "sColor", "sLengthProduct", "sCutAngle")

local function askAll()
  session.ask("get_cut", "")
  session.ask("get_work", "")
  session.ask("get_print")
end

session.ask("getjson_Flash", "first.json")
askAll()
session.part("a second file that leaves nearly everything out")
session.ask("getjson_Flash", "second.json")
askAll()
session.part("a third one without bars")
session.ask("getjson_Flash", "no_bars.json")
askAll()
