"""Lua stub, luacheck settings and the words on keys: they say what scripts really get.

Usage: scripts_test.py CUSDESK SOURCE_DIR
"""

import json
import pathlib
import re
import subprocess
import sys
import unittest
import xml.etree.ElementTree as ElementTree

from cusdesk import Folder, run

SOURCE = pathlib.Path(sys.argv.pop()).resolve()
STUB = SOURCE / "schema/cus_ParseModule.lua"
LUACHECKRC = SOURCE / "schema/cus_ParseModule.luacheckrc"

# Prints what every function answers with: "function<TAB>key<TAB>type<TAB>value".
DUMP = """
local job = require("cus_ParseModule")
local function dump(name, row)
  for key, value in pairs(row) do
    print("@", name, key, math.type(value) or type(value), value)
  end
end
local function rows(name, list) for _, row in ipairs(list) do dump(name, row) end end
dump("getjson_Flash", job.getjson_Flash(arg[1]))
for _, label in ipairs(job.get_cut("")) do dump("get_cut", label) end
rows("get_work", job.get_work(""))
for _, work in ipairs(job.get_work("")) do
  rows("get_work", job.get_work(work.BarCode))
  rows("get_Dimensions", job.get_Dimensions(work.BarCode))
end
rows("get_hole", job.get_hole())
rows("get_print", job.get_print())
"""


def run_lua(script, *words, root=None):
    options = ["--root", root] if root else []
    return run(*options, "run", "-", *words, input=script, check=True).stdout


def answers(name, root=None):
    """Every (function, key, type, value) that scripts get for a job."""
    lines = run_lua(DUMP, name, root=root).splitlines()
    return {tuple(line.split("\t")[1:5]) for line in lines if line.startswith("@\t")}


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
        _, functions = stub_classes()
        lines = run_lua("for name in pairs(cus_ParseModule) do print('@', name) end")
        self.assertEqual(set(functions), set(re.findall(r"^@\t(\w+)$", lines, re.M)))
        for name, (parameters, _) in functions.items():
            for count in range(len(parameters)):
                words = ", ".join(["'a.lua'"] * count)
                said = run_lua(f"print(pcall(cus_ParseModule.{name}{', ' if words else ''}{words}))")
                self.assertIn(f"bad argument #{count + 1} to", said, name)

    def test_rows_and_types_are_those_that_scripts_get(self):
        classes, functions = stub_classes()
        got = {}
        for function, key, kind, _ in answers("window.json"):
            got.setdefault(function, {})[key] = "number" if kind == "float" else kind
        self.assertEqual(set(got), {"getjson_Flash", "get_work", "get_cut", "get_hole", "get_print",
                                    "get_Dimensions"})
        for function, keys in got.items():
            said = classes[functions[function][1].removesuffix("[]")]
            said = {key.removesuffix("?"): kind.replace("cus_ParseModule.Code", "integer")
                    for key, kind in said.items()}
            self.assertEqual(said, keys, function)

    def test_codes_are_those_of_the_plugin(self):
        source = (SOURCE / "module/load_commands.cpp").read_text(encoding="utf-8")
        table = re.search(r"kLoadMessages\[\] = \{\n(.*?)\};", source, re.S).group(1)
        said = re.findall(r"^---\| (-?\d+) # ", STUB.read_text(encoding="utf-8"), re.M)
        self.assertEqual(said, re.findall(r"\{(-?\d+),", table))

    def test_lua_compiles_it(self):
        subprocess.run(["luac5.3", "-p", STUB], check=True)


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
        self.assertIn("(W113)", self.check("print(undefined_name)"))


def said_of(description):
    """The script rows that a key's description names: {(function, key)}."""
    rows = re.search(r"Scripts: (.*?)\.( |$)", description)
    return {tuple(row.split(" ")) for row in rows.group(1).split(", ")} if rows else set()


def rows_holding(value, rows):
    """The rows that hold a value, as text or as number."""
    def same(text):
        try:
            return float(text) == float(value)
        except ValueError:
            return text == str(value)
    return {(function, key) for function, key, _, text in rows if same(text)}


class Descriptions(Folder):
    """Every key gets a value of its own, which must turn up in the rows that its words name."""

    def answers_to(self, name, text):
        kind = "JsonFile" if name.endswith(".json") else "XmlFile"
        self.write(f"mnt/data/CustomFileDir/{kind}/{name}", text)
        return answers(name, self.folder)

    def test_of_json_keys(self):
        schema = json.loads((SOURCE / "schema/cutting-job.schema.json").read_text(encoding="utf-8"))
        values = iter(range(7001, 8000))
        meant = []

        def made(part):
            result = {}
            for key, rule in part["properties"].items():
                if "$ref" in rule:
                    result[key] = made(schema["definitions"][rule["$ref"].split("/")[-1]])
                elif rule["type"] == "array":
                    name = rule["items"]["$ref"].split("/")[-1]
                    result[key] = [made(schema["definitions"][name])]
                elif rule["type"] == "boolean" or "const" in rule:
                    result[key] = rule.get("const", True)
                else:
                    value = next(values)
                    result[key] = str(value) if rule["type"] == "string" else value
                    meant.append((key, value, rule["description"]))
            return result

        job = made(schema)
        rows = self.answers_to("job.json", json.dumps(job))
        self.assertGreater(len(meant), 60)
        for key, value, description in meant:
            self.assertEqual(rows_holding(value, rows), said_of(description), key)

    def test_of_xml_elements(self):
        job = ElementTree.parse(SOURCE / "examples/mnt/usb/xml/recut.xml").getroot()
        for parent, name in ((job, "Bar"), (job.find("Bar"), "Piece"), (job.find(".//Piece"), "Work")):
            for surplus in parent.findall(name)[1:]:
                parent.remove(surplus)
        values = iter(range(7001, 8000))
        space = {"xs": "http://www.w3.org/2001/XMLSchema"}
        xsd = ElementTree.parse(SOURCE / "schema/cutting-job.xsd")
        meant = []
        for level in xsd.findall("xs:complexType", space):
            parent = {"header": job, "bar": job.find("Bar")}.get(level.get("name"))
            if parent is None:
                parent = job.find(".//" + level.get("name").capitalize())
            for element in level.findall(".//xs:element", space):
                words = element.findtext(".//xs:documentation", namespaces=space)
                if words is None or element.get("name") == "Version":
                    continue
                value = next(values)
                parent.find(element.get("name")).text = str(value)
                meant.append((element.get("name"), value, words))
        rows = self.answers_to("job.xml", ElementTree.tostring(job, encoding="unicode"))
        self.assertEqual(len(meant), 3 + 8 + 11 + 3 + 5)
        for key, value, words in meant:
            self.assertEqual(rows_holding(value, rows), said_of(words), key)


unittest.main()
