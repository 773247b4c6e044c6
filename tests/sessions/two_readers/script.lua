-- Each reader keeps its job, the last file command says which one answers, and get_cut takes
-- Height, BarCode and MaterialCount from the JSON job even when an XML job is current.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "Height", "BarCode", "BarName", "MaterialCount")

local function load(name)
  session.part(name)
  session.ask("getjson_Flash", name)
end

load("job.xml")
session.ask("get_cut", "")
load("no_numbers.json") -- of a bar without pieces no number is needed, and a piece without one has its barcode
session.ask("get_cut", "5")
session.ask("get_cut", "")
load("small.json")
session.ask("get_cut", "")
load("job.xml")
session.ask("get_cut", "")
session.ask("get_cut", "1")
load("large.json")
session.part("of large.json all cuts were never asked for: the highest bar number is that of small.json")
load("job.xml")
session.ask("get_cut", "")
load("missing.json")
session.ask("get_cut", "")
load("missing.xml")
session.ask("get_cut", "")
load("no_version.json")
load("missing.xml")
session.ask("get_cut", "")
