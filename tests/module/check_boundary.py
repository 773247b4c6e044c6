"""Checks what the plug-in takes from its host and offers to it.

Usage: check_boundary.py PLUGIN
"""

import re
import subprocess
import sys

RUNTIME = {"libstdc++.so.6", "libgcc_s.so.1", "libc.so.6", "libm.so.6"}

# The newest symbol versions that a controller of each architecture is sure to have.
FLOORS = {
    "Advanced Micro Devices X86-64": {"GLIBC": (2, 14)},
    "AArch64": {"GLIBC": (2, 17)},
    "ARM": {"GLIBC": (2, 4)},
}
COMMON_FLOORS = {"GLIBCXX": (3, 4, 21), "CXXABI": (1, 3, 9)}

# What the host supplies, as patterns over demangled names.
IMPORTS = [
    r"luaL_(checklstring|requiref|setfuncs|len)",
    r"lua_(createtable|settop|pushstring|pushinteger|pushnumber|settable|rawseti)",
    r"Json::Value::(Value|~Value)\(.*\)",
    r"Json::Value::(isMember|operator\[\])\(char const\*\) const",
    r"Json::Value::is(Null|String|Int|Double|Bool|Array|Object)\(\) const",
    r"Json::Value::as(CString|String|Int|Double|Bool)(\[abi:cxx11\])?\(\) const",
    r"Json::Value::operator==\(Json::Value const&\) const",
    r"Json::Value::(begin|end)\(\) const",
    r"Json::ValueIteratorBase::(increment|deref|isEqual)\(.*\)( const)?",
    r"tinyxml2::XMLDocument::~?XMLDocument\(.*\)",
    r"tinyxml2::XMLNode::(FirstChildElement|NextSiblingElement)\(char const\*\) const",
    r"tinyxml2::XMLElement::GetText\(\) const",
    r"cbl::(loadJsonFile|loadXmlFile|CHttpDownload::~?CHttpDownload|CHttpDownload::get)\(.*\)",
    r"CHmiMedia::getUdiskPath\(.*\)",
    r"UTILITY::(CTime|CSVGCreator)::~?\w+(\[abi:cxx11\])?\(.*\)( const)?",
]

EXPORTS = [
    r"Custom_RegLuaLib|Custom_SetFunPoint|main|json|xml|nFileType",
    r"reg_cus_ParseModule\(void\*\)|luaopen_cus_ParseModule\(lua_State\*\)",
    r"onCreate\(\)|on(Destroy|Init|Click|PLCRead|FillPartShowAttr)\(void\*.*\)",
    r"(JsonAnalysis|XmlAnalysis|CLuaParseModulePart|CSVGLuaParseModule)::.*",
]
MUST_EXPORT = [
    "Custom_RegLuaLib", "Custom_SetFunPoint", "main", "json", "xml", "nFileType",
    "reg_cus_ParseModule(void*)", "luaopen_cus_ParseModule(lua_State*)",
    "onCreate()", "onDestroy(void*)", "onInit(void*, void*)",
    "onClick(void*, int, int, tagPOINT const&, void*)", "onPLCRead(void*, void*)",
    "CLuaParseModulePart::CLuaParseModulePart()", "CSVGLuaParseModule::CSVGLuaParseModule()",
    "JsonAnalysis::getMaterialCount()", "XmlAnalysis::analysisWork(tinyxml2::XMLElement*)",
]


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def symbols(plugin, which):
    """Yields (name, version) of the dynamic symbols; version is empty for the host's own."""
    for line in output_of("nm", "-D", "-C", which, plugin).splitlines():
        name = re.sub(r"^\s*[0-9a-f]*\s+[A-Za-z]\s+", "", line)
        name, _, version = name.partition("@")
        yield name, version.lstrip("@")


def newer_than_floor(version, floors):
    family, _, number = version.partition("_")
    if family not in floors or not number[:1].isdigit():
        return False
    return tuple(int(part) for part in number.split(".")) > floors[family]


def faults(plugin):
    header = output_of("readelf", "-h", "-d", "-l", "-W", plugin)
    machine = re.search(r"Machine:\s+(.*)", header).group(1)
    floors = {**COMMON_FLOORS, **FLOORS[machine]}
    for library in re.findall(r"NEEDED.*\[(.*)\]", header):
        if library not in RUNTIME:
            yield f"needs {library}, which is not of the standard runtime"
    if re.search(r"GNU_STACK.*RWE", header):
        yield "has an executable stack"
    if "GNU_RELRO" not in header:
        yield "has no relro segment"
    for name, version in symbols(plugin, "--undefined-only"):
        if newer_than_floor(version, floors):
            yield f"imports {name} of {version}, newer than the oldest controllers have"
        weak = name.startswith(("_ITM_", "__gmon_start__"))
        if not version and not weak and not any(re.fullmatch(p, name) for p in IMPORTS):
            yield f"imports {name}, which the host does not offer"
    exported = [name for name, _ in symbols(plugin, "--defined-only")]
    for name in exported:
        if not any(re.fullmatch(p, name) for p in EXPORTS):
            yield f"exports {name}"
    for name in MUST_EXPORT:
        if name not in exported:
            yield f"does not export {name}"


def main():
    found = list(faults(sys.argv[1]))
    for fault in found:
        print(f"{sys.argv[1]}: {fault}")
    sys.exit(1 if found else 0)


main()
