-- Names on the USB disk: the extension alone, in small letters, decides reader and directory.
package.path = "../?.lua"
local session = require("session")

--- Every job here has one piece and bears its origin as the name of its bar.
local function showJob()
  local label = cus_ParseModule.get_print()[1]
  print("job: " .. (label and label.sNameProduct or "none"))
end

local function try(name)
  session.part(name)
  session.ask("getjson_uDisk", name)
  showJob()
end

try("job.json")
try("job.xml")
try("job.txt")    -- tried as JSON, and here it is JSON
try("job.JSON")   -- an unknown type too, but the file exists
try("job.XML")    -- XML text where JSON is expected
try("JOB.json")   -- no such file
try("x.json.xml")
try("flash.json") -- in flash, not on the disk
session.ask("getjson_Flash", "flash.json")
showJob()
