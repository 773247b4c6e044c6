-- The progress file holds the two values of the last call, and the script gets the second one back.
package.path = "../?.lua"
local session = require("session")

local directory = os.getenv("JOB_ROOT") .. "/mnt/data/CustomFileDir"

local function showFile()
  for line in io.lines(directory .. "/cutCurIndex.txt", "L") do
    print("  " .. session.text((line:gsub("\n", "\\n"))))
  end
end

session.ask("save_cutCurIndex", "12 a longer first text", "34")
showFile()
session.ask("save_cutCurIndex", "", "5")
showFile()
session.ask("save_cutCurIndex", 6, 7)
showFile()

session.part("the directory is missing, and is not made")
assert(os.rename(directory, directory .. "Gone"))
session.ask("save_cutCurIndex", "8", "9")
print(io.open(directory .. "/cutCurIndex.txt"))
