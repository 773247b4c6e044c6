-- Bar numbers and barcodes that occur twice: which rows come, and whose values they carry.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "CutLength", "CutNumBer", "BarCode",
             "BarName", "MaterialCount")

session.ask("getjson_Flash", "job.json")
session.ask("get_cut", "1")
session.ask("get_cut", "")
session.ask("get_work", "X")
session.ask("get_work", "")
session.ask("get_hole")
