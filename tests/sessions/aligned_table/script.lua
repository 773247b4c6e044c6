-- Columns line up whatever the cells hold: wide characters, combining marks, bytes that are no text.
package.path = os.getenv("JOB_ROOT") .. "/?.lua"
local aligned = require("aligned_table")

for _, case in ipairs({
  {"ab", 2}, {"", 0}, {"窗", 2}, {"1号料车", 7}, {"ｗ：", 4}, {"、。「」", 8}, {"カ\u{3099}", 2}, {"e\u{301}", 1},
  {"°×–", 3}, {"한글", 4}, {"\u{1F6AA}", 2}, {"\u{20000}", 2}, {"\xFF\xE7\xAA", 3}, {"a\u{200B}b", 2},
}) do
  local width = aligned.width(case[1])
  if width ~= case[2] then print(("width of %q is %d, not %d"):format(case[1], width, case[2])) end
end

io.write(aligned.format({
  {key = "name", title = "名称"}, {key = "length", title = "长", right = true}, {key = "remark"},
}, {
  {name = "外框", length = 1200.0, remark = "e\u{301}"},
  {name = "P65-01", length = 4.25},
  {length = "12", remark = false, ignored = "x"},
}))
io.write(aligned.format({{key = "head only"}}, {}))
