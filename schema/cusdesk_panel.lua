---@meta _
-- luacheck: ignore

---The table part, in cusdesk only.
---@class cusdesk.panel
---@field job? string what to give to getjson_Flash for the file given with --job
---@field width integer of the table, in pixels
---@field height integer of the table, in pixels
---@field on_click? fun(index?: integer) a row was clicked; nil when nothing is in it
---@field on_page? fun(direction: "up"|"down") a page key; without it the page is turned
---@field on_job? fun() a job file that was read has changed; without it the script starts anew
panel = {}

---Sets the rows of a page, the columns and their widths.
---@param rows integer rows of a page, up to 65535
---@param cols integer columns
---@param widths? string one digit for each column with ":" between, such as "2:1:1"
function panel.grid(rows, cols, widths) end

---Sets the texts of the head.
---@param titles any[] one for each column
function panel.head(titles) end

---Says what there is to show. A function is called with the first and the last row to show.
---@param list any[][]|fun(first: integer, last: integer): any[][] rows, each a list of cells
function panel.rows(list) end

---Shows the rows of the current page.
---@param total? integer how many rows there are; without it the length of the list
function panel.update(total) end

---The current page and how many there are; with a direction, turns the page.
---@overload fun(direction: "up"|"down"): boolean
---@return integer current
---@return integer count
function panel.page() end

---The number of the selected row in the whole list.
---@return integer? index
function panel.index() end

---Sets what stands at the top: 0 the first row, 1 the last one.
---@param order 0|1 follow it with panel.update
function panel.order(order) end

---Back to an empty table.
function panel.reset() end

