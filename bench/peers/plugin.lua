-- The plug-in itself.
local folder, job = arg[1], arg[2]:match("[^/]*$")
package.path = folder .. "/?.lua;" .. package.path
local panel = require("cus_ParseModule")

require("measure")(function()
  assert(panel.getjson_Flash(job).errorCode == 0)
  return panel.get_work(""), panel.get_cut(""), panel.get_print()
end)
