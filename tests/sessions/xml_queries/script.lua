-- Every query on a small XML job: what a JSON job gives, but for what XML has no
-- elements for and what only the JSON reader answers.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "Height", "Length", "CutLength", "SxB", "DxB",
             "CutNumBer", "BarCode", "BarName", "MaterialCount")
session.only("get_print", "sProfileCode", "sProfileName", "sProfileLength", "sNameProduct", "sColor",
             "sIndoorColor", "sLengthProduct", "sCutAngle")

session.ask("getjson_Flash", "job.xml")
session.ask("get_work", "")
session.ask("get_work", "P2")
session.ask("get_work", "unknown")
session.ask("get_cut", "")
session.ask("get_cut", "b 2")
session.ask("get_cut", "2")
session.ask("get_hole")
session.ask("get_print")
session.ask("get_Dimensions", "P2")
session.ask("get_Dimensions", "P1")
