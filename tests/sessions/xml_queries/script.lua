-- Every query on a small XML job, as whole rows: what a JSON job gives, but for what XML has no
-- elements for and what only the JSON reader answers.
package.path = "../?.lua"
local session = require("session")

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
