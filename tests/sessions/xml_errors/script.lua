-- An XML job that breaks off raises an error. The bars finished by then answer, and nothing of the
-- broken bar turns up in the next job.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "CutLength", "SxB", "BarName")
session.only("get_work", "BarCode", "Name", "PositionX", "PositionY", "PositionZ")

for _, file in ipairs({
  "no_ctrsz.xml", "empty_ctrsz.xml", "letters.xml", "out_of_range.xml", "no_position.xml",
}) do
  session.part(file)
  session.ask("getjson_Flash", file)
  session.ask("get_work", "")
  session.ask("get_cut", "")
  session.ask("getjson_Flash", "good.xml")
  session.ask("get_work", "")
  session.ask("get_cut", "")
end

session.part("what cannot be read at all leaves the job before as it is")
for _, file in ipairs({"missing.xml", "unclosed.xml", "two_roots.xml", "empty.xml"}) do
  session.ask("getjson_Flash", file)
end
session.ask("get_cut", "")
