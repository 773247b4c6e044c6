-- Required oddities of XML jobs: the last Cut wins, a piece without Cut keeps the one before, also
-- over files; the first of several values wins; texts are taken as they stand.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "Height", "Length", "CutLength", "SxB",
             "DxB", "BarCode", "BarName")
session.only("get_print", "sProfileCode", "sProfileName", "sColor", "sLengthProduct", "sCutAngle")

session.ask("getjson_Flash", "cuts.xml")
session.ask("get_cut", "")
session.part("a second file: its first piece has no Cut, texts that are missing or empty keep theirs")
session.ask("getjson_Flash", "carry_over.xml")
session.ask("get_cut", "")
session.ask("get_work", "")
session.ask("get_print")
session.part("texts")
session.ask("getjson_Flash", "texts.xml")
session.ask("get_work", "")
session.ask("get_cut", "")
session.ask("get_print")
