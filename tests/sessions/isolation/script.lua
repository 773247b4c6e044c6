-- Hostile names and addresses are refused with a line that says why, and nothing outside of the root
-- and the disk is read or written. Were a canary read, which is a job that loads, its mark would show.
local root, server = os.getenv("JOB_ROOT"), os.getenv("JOB_SERVER")
assert(os.execute([[
  set -e; canary="$PWD/web/canary.json"; cd "$JOB_ROOT"; cp "$canary" .; cp "$canary" ..
  mkdir ../outside; cp "$canary" ../outside; cd mnt/data/CustomFileDir; cp "$canary" .; cd JsonFile
  ln -s "$JOB_ROOT/../outside/canary.json" link_out.json; ln -s "$JOB_ROOT/../outside" linked
  ln -s ../new link_nowhere.json; ln -s /dev/zero link_device.json; mkfifo pipe.json
  cp "$canary" large.json; truncate -s 67108865 large.json]]))

--- Every name below the root and beside it, and what the files hold.
local function everything()
  return io.popen([[cd "$JOB_ROOT/.." && find . -not -name cutCurIndex.txt | sort &&
    find . -type f -size -2k -exec cksum {} +]]):read("a")
end

local function try(name, ...)
  local done, answer = pcall(cus_ParseModule[name], ...)
  local label = cus_ParseModule.get_print()[1]
  print(name, done and answer.errorCode or answer, label and label.sProfileCode or "nothing read")
end

local before = everything()
for _, name in ipairs({"../canary.json", "../../../../../canary.json", "..\\canary.json",
                       "%2e%2e/canary.json", root .. "/canary.json", "\xff\xfe.json",
                       ("a"):rep(300) .. ".json", "canary.json\0.xml", "line\nbreak\x1b[2J.json",
                       "$(touch x).json"}) do
  try("getjson_Flash", name)
  try("getjson_uDisk", name)
end
for _, name in ipairs({"link_out.json", "linked/canary.json", "link_nowhere.json",
                       "link_device.json", "pipe.json", "large.json"}) do
  try("getjson_Flash", name)
end
for _, address in ipairs({
  "file://" .. root .. "/canary.json", root .. "/canary.json", "ftp://127.0.0.1/a",
  "javascript:alert(1)", "data:application/json,{}", "", "http://[::1", server .. "99999/",
  server .. "/canary.json\r\nX-Injected: yes\r\n\r\n", server .. "/canary.json HTTP/1.1",
  "-o /tmp/x " .. server .. "/canary.json", "http://no.such.host.invalid/",
}) do
  try("getjson_url", address, "download")
end
for _, target in ipairs({"../../../../../../planted", "linked/planted", "\xff"}) do
  try("getjson_url", server .. "/canary.json", target)
end
print(everything() == before and "nothing changed" or everything())
