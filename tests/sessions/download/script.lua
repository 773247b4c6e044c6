-- A download replaces the job's file only when it is complete and a job file; the reader follows.
package.path = "../?.lua"
local session = require("session")

--- Every job here has one piece and bears its origin as the name of its bar.
local function showJob()
  local label = cus_ParseModule.get_print()[1]
  print("job: " .. (label and label.sNameProduct or "none"))
end

local server, refused = os.getenv("JOB_SERVER"), os.getenv("JOB_REFUSED")

local function try(address, name)
  session.part(address .. " to " .. name)
  session.ask("getjson_url", address, name)
  showJob()
end

try(server .. "/new.json", "job")
try(server .. "/redirect/newer.json", "another")
session.part("what was fetched lies in flash")
session.ask("getjson_Flash", "job.json")
showJob()
session.ask("getjson_Flash", "another.json")
showJob()

session.part("what fails leaves the job of before, and its file")
session.ask("getjson_Flash", "old.json")
for _, address in ipairs({
  server .. "/missing.json", server .. "/status/500", server .. "/cutoff/new.json", server .. "/loop",
  server .. "/page.html", refused .. "/new.json", "file:///new.json", "",
}) do
  try(address, "old")
end
try(server .. "/new.json", "no/such/directory")
session.ask("getjson_Flash", "old.json")
showJob()

session.part("a complete file that is no job of version 1.0")
try(server .. "/no_version.json", "old")

session.part("with an XML job current a download names no file, and so reads none")
session.ask("getjson_Flash", "job.xml")
try(server .. "/job.xml", "fetched")
session.ask("getjson_Flash", "fetched.xml")
showJob()
try(server .. "/missing.xml", "fetched")
