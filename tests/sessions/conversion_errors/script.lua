-- Numbers that cannot be converted, and names too short for a file type, raise errors that a script
-- can catch; afterwards everything still answers.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "MaterialCount")
session.only("get_print", "sNameProduct", "sProfileCode")

session.part("a bar without a number: only asking for all cuts converts it")
session.ask("getjson_Flash", "no_bar_number.json")
session.ask("get_cut", "")
session.ask("get_cut", "")
session.part("the bar gets its number")
session.ask("getjson_Flash", "bar_number_8.json")
session.ask("get_cut", "8")
session.ask("get_cut", "")

session.part("holes need a cut length, MaxY and MaxZ that are numbers")
for _, file in ipairs({"no_max_y.json", "letters.json", "out_of_range.json", "too_small.json", "trailing_letters.json"}) do
  session.ask("getjson_Flash", file)
  session.ask("get_hole")
end

session.part("names of four characters and less; after them JSON is current")
session.ask("getjson_Flash", "good.xml")
for _, name in ipairs({"", "a.js", ".xml"}) do
  for _, command in ipairs({"getjson_Flash", "getjson_uDisk"}) do
    local done, message = pcall(cus_ParseModule[command], name)
    print(command, name, done, message:find("basic_string::substr", 1, true) ~= nil)
  end
end
session.ask("get_print")
session.ask("getjson_Flash", ".json")
session.ask("getjson_Flash", "a.xml")
