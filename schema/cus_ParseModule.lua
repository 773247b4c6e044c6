---@meta cus_ParseModule
-- luacheck: ignore

---Result code of a load. Other codes are the downloader's own.
---@alias cus_ParseModule.Code
---| 0 # loaded
---| -2 # no such file, or it is no document
---| -3 # the header declares no version "1.0"
---| -4 # the bars could not be read: "Version" is another text while "version" is "1.0"
---| -5 # the pieces could not be read
---| -6 # the works could not be read
---| integer

---What a loading function answers with.
---@class cus_ParseModule.LoadResult
---@field errorCode cus_ParseModule.Code 0, or what went wrong
---@field info string the same as a message in Chinese

---One machining work on a piece, a row of get_work.
---@class cus_ParseModule.Work
---@field BarCode? string barcode of the piece; only in rows of get_work("")
---@field Name string name of the operation
---@field PositionX number position along the piece
---@field PositionY number position across the profile
---@field PositionZ number position in height on the profile
---@field MaxY string width of the profile
---@field MaxZ string height of the profile
---@field Cut_Length string length of the piece

---One cut, a row of get_cut.
---@class cus_ParseModule.Cut
---@field BarNumber string number of the bar
---@field Height string height of the profile: MaxZ of the first bar of the JSON job
---@field Length string length of the bar
---@field CutLength string length of the piece
---@field SxB string angle of the left end, degrees
---@field DxB string angle of the right end, degrees
---@field CutNumBer string how many pieces the bar holds
---@field BarCode string barcode of the piece; empty unless all cuts of a JSON job are asked for
---@field BarName string name of the bar
---@field MaterialCount string highest bar number when all cuts of a JSON job were last asked for

---One distinct work of a JSON job, a row of get_hole.
---@class cus_ParseModule.Hole
---@field name string name of the operation
---@field length number length of the first piece that has it
---@field width number width of that piece's profile
---@field height number height of that piece's profile

---The label of one piece, a row of get_print.
---@class cus_ParseModule.Label
---@field sProfileCode string the piece's mark
---@field sProfileName string drawing of the profile's cross section
---@field sProfileLength string length of the bar
---@field sNameProduct string name of the bar
---@field sColor string colour of the bar
---@field sIndoorColor string always empty
---@field sOutdoorColor string always empty
---@field sLengthProduct string what is left over of the bar
---@field sPosition string always empty
---@field sWindow string always empty
---@field sCutAngle string the cut angles in the words of the label
---@field sProcess string always empty
---@field sMaterialHeight string always empty

---Dimensions of a piece, a row of get_Dimensions.
---@class cus_ParseModule.Dimensions
---@field MaxY string width of the profile
---@field MaxZ string height of the profile
---@field Cut_Length string length of the piece

---Loads cutting jobs and answers questions about them. Also a global of that name.
---@class cus_ParseModule
cus_ParseModule = {}

---Loads a job file from the USB disk. Names that end in .xml are XML jobs, all others JSON jobs.
---@param name string file name of at least five bytes, with its extension
---@return cus_ParseModule.LoadResult # code and message
function cus_ParseModule.getjson_uDisk(name) end

---Loads a job file from the controller's flash. Names that end in .xml are XML jobs, all others JSON jobs.
---@param name string file name of at least five bytes, with its extension
---@return cus_ParseModule.LoadResult # code and message
function cus_ParseModule.getjson_Flash(name) end

---Downloads a JSON job to the flash and loads it. While an XML file is the current job it always fails.
---@param url string http or https address
---@param name string name of the file to keep, without extension
---@return cus_ParseModule.LoadResult # code and message
function cus_ParseModule.getjson_url(url, name) end

---The works of all pieces with a barcode, in file order.
---@param barcode string barcode of the piece; "" for the works of all pieces
---@return cus_ParseModule.Work[] # one row for each work
function cus_ParseModule.get_work(barcode) end

---The cuts of all bars with a number, in file order.
---@param barNumber string number of the bar; "" for the cuts of all bars
---@return cus_ParseModule.Cut[] # one row for each piece
function cus_ParseModule.get_cut(barNumber) end

---The distinct works of a JSON job by name, each with the dimensions of the first piece that has it.
---@return cus_ParseModule.Hole[] # one row for each name; none for an XML job
function cus_ParseModule.get_hole() end

---The labels of all pieces, in file order.
---@return cus_ParseModule.Label[] # one row for each piece
function cus_ParseModule.get_print() end

---The dimensions of a piece, once for each of its works behind the last work of another piece. get_work(barcode) always has them.
---@param barcode string barcode of the piece
---@return cus_ParseModule.Dimensions[] # equal rows, often none
function cus_ParseModule.get_Dimensions(barcode) end

---Writes two texts to the progress file, a line each.
---@param first string first line
---@param second string second line
---@return string # the second text, whether or not the file could be written
function cus_ParseModule.save_cutCurIndex(first, second) end

return cus_ParseModule
