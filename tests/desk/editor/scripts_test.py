"""Lua stub and luacheck settings: they say what scripts really get.

Usage: scripts_test.py CUSDESK SOURCE_DIR
"""

import pathlib
import re
import subprocess
import sys
import unittest

from cusdesk import run

SOURCE = pathlib.Path(sys.argv.pop()).resolve()
STUB = SOURCE / "schema/cus_ParseModule.lua"
PANEL_STUB = SOURCE / "schema/cusdesk_panel.lua"
LUACHECKRC = SOURCE / "schema/cus_ParseModule.luacheckrc"

# Prints what every function answers with: "@<TAB>function<TAB>key<TAB>type".
DUMP = """
local job = require("cus_ParseModule")
local function dump(name, row)
  for key, value in pairs(row) do
    print("@", name, key, type(value))
  end
end
local function rows(name, list) for _, row in ipairs(list) do dump(name, row) end end
dump("getjson_Flash", job.getjson_Flash("window.json"))
for _, label in ipairs(job.get_cut("")) do dump("get_cut", label) end
rows("get_work", job.get_work(""))
for _, work in ipairs(job.get_work("")) do
  rows("get_work", job.get_work(work.BarCode))
  rows("get_Dimensions", job.get_Dimensions(work.BarCode))
end
rows("get_hole", job.get_hole())
rows("get_print", job.get_print())
"""


def run_lua(script):
    """The lines that a script prints with "@" in front, split."""
    lines = run("run", "-", input=script, check=True).stdout.splitlines()
    return [line.split("\t")[1:] for line in lines if line.startswith("@\t")]


def stub_classes():
    """{class: {key: type}} and {function: (parameters, result)} as the stub has them."""
    text = STUB.read_text(encoding="utf-8")
    classes, functions = {}, {}
    for name, fields in re.findall(r"---@class cus_ParseModule\.(\w+)\n((?:---@field .*\n)*)", text):
        classes[name] = dict(re.findall(r"---@field (\w+\??) ([\w.]+)", fields))
    pattern = (r"((?:---@param \w+ string .*\n)*)---@return (\S+) # .+\n"
               r"function cus_ParseModule\.(\w+)\((.*)\) end")
    for parameters, result, name, names in re.findall(pattern, text):
        named = re.findall(r"---@param (\w+) ", parameters)
        assert named == ([n for n in names.split(", ") if n]), name
        functions[name] = (named, result.replace("cus_ParseModule.", ""))
    return classes, functions


class Stub(unittest.TestCase):
    def test_functions_are_those_of_the_module_with_their_arguments(self):
        classes, functions = stub_classes()
        names = run_lua("for name in pairs(cus_ParseModule) do print('@', name) end")
        self.assertEqual(sorted(functions), sorted(name for name, in names))
        for name, (parameters, result) in functions.items():
            self.assertIn(result.removesuffix("[]"), {*classes, "string"}, name)
            for count in range(len(parameters)):
                words = ", ".join(["'a.lua'"] * count)
                call = f"cus_ParseModule.{name}{', ' if words else ''}{words}"
                self.assertIn(f"bad argument #{count + 1} to", str(run_lua(f"print('@', pcall({call}))")))

    def test_rows_and_types_are_those_that_scripts_get(self):
        classes, functions = stub_classes()
        got = {}
        for function, key, kind in run_lua(DUMP):
            got.setdefault(function, {})[key] = kind
        self.assertEqual(set(got), {"getjson_Flash", "get_work", "get_cut", "get_hole", "get_print",
                                    "get_Dimensions"})
        for function, keys in got.items():
            said = classes[functions[function][1].removesuffix("[]")]
            said = {key.removesuffix("?"): kind.replace("cus_ParseModule.Code", "number")
                    for key, kind in said.items()}
            self.assertEqual(said, keys, function)

    def test_codes_are_those_of_the_plugin(self):
        source = (SOURCE / "module/load_commands.cpp").read_text(encoding="utf-8")
        table = re.search(r"kLoadMessages\[\] = \{\n(.*?)\};", source, re.S).group(1)
        said = re.findall(r"^---\| (-?\d+) # ", STUB.read_text(encoding="utf-8"), re.M)
        self.assertEqual(said, re.findall(r"\{(-?\d+),", table))

    def test_functions_of_the_panel_are_those_of_its_table(self):
        said = re.findall(r"^function panel\.(\w+)\(", PANEL_STUB.read_text(encoding="utf-8"), re.M)
        script = "for name, v in pairs(panel) do print('@', type(v), name) end"
        shown = run("panel", "--script", "/dev/stdin", "--svg", "/dev/null", input=script).stderr
        self.assertEqual(sorted(said), sorted(re.findall(r"^@\tfunction\t(\w+)$", shown, re.M)))

    def test_lua_compiles_them(self):
        subprocess.run(["luac5.3", "-p", STUB, PANEL_STUB], check=True)


class Luacheck(unittest.TestCase):
    def check(self, script):
        return subprocess.run(["luacheck", "--no-cache", "--no-color", "--codes", "--config",
                               LUACHECKRC, "-"], input=script, capture_output=True, text=True,
                              timeout=60, check=False).stdout

    def test_it_knows_the_module_and_finds_misspelt_functions(self):
        examples = [file.read_text(encoding="utf-8") for file in SOURCE.glob("examples/*.lua")]
        self.assertGreaterEqual(len(examples), 3)
        for script in ("print(cus_ParseModule.get_work(''))", *examples):
            self.assertIn("0 warnings / 0 errors", self.check(script))
        self.assertIn("(W143) accessing undefined field 'get_works' of global 'cus_ParseModule'",
                      self.check("print(cus_ParseModule.get_works(''))"))
        for script, warning in [
                ("local job = cus_ParseModule job.get_cuts('')", "W143"),
                ("print(undefined_name)", "W113"),
                ("panel.updat()", "W143"), ("panel.grid = nil", "W122"),
                ("function panel.on_clik(index) print(index) end", "W142"),
                ("function panel.on_click(index) print(index) end", "0 warnings")]:
            self.assertIn(warning, self.check(script), script)


unittest.main()
