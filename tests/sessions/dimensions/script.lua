-- get_Dimensions answers with the rows behind the last work of another piece: which order of works
-- gives how many rows. Panels in the field rely on it.
package.path = "../?.lua"
local session = require("session")

-- Letters stand for the works of the job, in order.
for _, order in ipairs({"AAA", "AAB", "BAA", "ABA", "BAB", "AABAA", "none"}) do
  session.part("works of " .. order)
  session.ask("getjson_Flash", order .. ".json")
  session.ask("get_Dimensions", "A")
end
session.part("a piece without works, a barcode that is nowhere")
session.ask("getjson_Flash", "AAA.json")
session.ask("get_Dimensions", "idle")
session.ask("get_Dimensions", "a")
session.ask("get_Dimensions", "")
