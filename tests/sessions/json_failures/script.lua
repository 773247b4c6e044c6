-- Each way for a JSON job to fail: code, message, the lines in their order, and what still answers.
package.path = "../?.lua"
local session = require("session")
session.only("get_cut", "BarNumber", "CutLength", "BarCode")

local function try(name, why)
  session.part(why)
  session.ask("getjson_Flash", "good.json")
  session.ask("getjson_Flash", name)
  session.ask("get_cut", "")
  session.ask("get_work", "P1")
end

try("missing.json", "no such file: the job before still answers")
try("broken.json", "no JSON: the same")
try("no_version.json", "no version: the job before is gone")
try("number_version.json", "a version that is no text")
try("array.json", "a root that is no object")
try("two_versions.json", "one spelling passes the root's test, the other fails that of the bars")
try("version_by_second_spelling.json", "the second spelling does where the first is no text")
