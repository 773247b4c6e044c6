-- The version decides which queries answer; a root without child elements leaves the version of the
-- file before, and so does a file that names none.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "Height", "BarCode")
session.only("get_print", "sProfileCode", "sNameProduct")
session.only("get_work", "BarCode", "Name", "MaxY", "MaxZ", "Cut_Length")

local function try(name)
  session.part(name)
  session.ask("getjson_Flash", name)
  session.ask("get_work", "A")
  session.ask("get_work", "")
  session.ask("get_Dimensions", "A")
  session.ask("get_cut", "1")
  session.ask("get_cut", "")
  session.ask("get_print")
end

try("no_version.xml")
try("version_2.xml")
session.ask("getjson_Flash", "version_1.xml")
try("childless.xml")
try("no_version.xml")
