"""Checks what the plug-in takes from its host and offers to it, and prints its size.

Reads the library with the binary utilities of the build, not with cusdesk's own reader.
Usage: check_boundary.py BOUNDARY_JSON STRIP PLUGIN
"""

import json
import os
import re
import subprocess
import sys
import tempfile

ARCHITECTURES = {"Advanced Micro Devices X86-64": "x86-64", "AArch64": "arm64", "ARM": "armhf"}
WEAK = ("_ITM_", "__gmon_start__")  # hooks that every compiler leaves open


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def symbols(plugin, which):
    """Yields (name, version) of the dynamic symbols; version is empty for the host's own."""
    for line in output_of("nm", "-D", "-C", which, plugin).splitlines():
        name = re.sub(r"^\s*[0-9a-f]*\s+[A-Za-z]\s+", "", line)
        name, _, version = name.partition("@")
        yield name, version.lstrip("@")


def newer_than_floor(version, floors):
    family, _, number = version.rpartition("_")
    if family not in floors or not number[:1].isdigit():
        return version != ""  # GLIBC_PRIVATE and its like
    return numbers(number) > numbers(floors[family])


def numbers(version):
    return tuple(int(part) for part in version.split("."))


def matches(name, patterns):
    return any(re.fullmatch(pattern, name) for pattern in patterns)


def loading_faults(header, boundary):
    for library in re.findall(r"NEEDED.*\[(.*)\]", header):
        if library not in boundary["runtime"]:
            yield f"needs {library}, which is not of the standard runtime"
    if re.search(r"GNU_STACK.*RWE", header) or "GNU_STACK" not in header:
        yield "has an executable stack"
    if "GNU_RELRO" not in header or "BIND_NOW" not in header:
        yield "is not fully relocated and write-protected at load"
    if "TEXTREL" in header:
        yield "has text relocations"
    if re.search(r"\((RPATH|RUNPATH)\)", header):
        yield "has a library search path of its own"


def import_faults(plugin, boundary, floors):
    for name, version in symbols(plugin, "--undefined-only"):
        if newer_than_floor(version, floors):
            yield f"imports {name} of {version}, newer than the oldest controllers have"
        if not version and not name.startswith(WEAK) and not matches(name, boundary["imports"]):
            yield f"imports {name}, which the host does not offer"
    if "__stack_chk_fail" not in (name for name, _ in symbols(plugin, "--undefined-only")):
        yield "has no stack protector"


def export_faults(plugin, boundary):
    exported = [name for name, _ in symbols(plugin, "--defined-only")]
    for name in exported:
        if not matches(name, boundary["exports"]):
            yield f"exports {name}"
    for name in boundary["entry_points"] + boundary["callbacks"] + boundary["must_export"]:
        if name not in exported:
            yield f"does not export {name}"
    if re.search(r"\bUNIQUE\b", output_of("readelf", "--dyn-syms", "-W", plugin)):
        yield "has unique symbols, so dlclose would never unload it"


def stripped_size(strip, plugin):
    with tempfile.TemporaryDirectory() as folder:
        target = os.path.join(folder, "stripped.so")
        output_of(strip, "-o", target, plugin)
        return os.path.getsize(target)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        boundary = json.load(file)
    strip, plugin = sys.argv[2:]
    header = output_of("readelf", "-h", "-d", "-l", "-W", plugin)
    architecture = ARCHITECTURES[re.search(r"Machine:\s+(.*)", header).group(1)]
    found = [
        *loading_faults(header, boundary),
        *import_faults(plugin, boundary, boundary["floors"][architecture]),
        *export_faults(plugin, boundary),
    ]
    for fault in found:
        print(f"{plugin}: {fault}")
    print(f"{architecture}: {stripped_size(strip, plugin)} bytes stripped")
    sys.exit(1 if found else 0)


main()
