"""The plug-in is fit for controllers, and takes and offers exactly the names in boundary.txt.

Whether it is fit, `cusdesk doctor` says; the names are read with the build's binary utilities.
Usage: check_boundary.py CUSDESK STRIP PLUGIN
"""

import difflib
import os
import pathlib
import subprocess
import sys
import tempfile

CUSDESK, STRIP, PLUGIN = sys.argv[1:]
NAMES = pathlib.Path(__file__).with_name("boundary.txt")
STRING = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
WEAK = ("_ITM_", "__gmon_start__")  # hooks that every compiler leaves open


def names(verb, which):
    """Without those that have a version: these are the standard runtime's, which the doctor judges."""
    symbols = subprocess.run(["nm", "-D", "-C", "--format=just-symbols", which, PLUGIN], check=True,
                             capture_output=True, text=True).stdout.splitlines()
    return {f"{verb} {name.replace(STRING, 'std::string')}\n" for name in symbols
            if "@" not in name and not name.startswith(WEAK)}


def main():
    doctor = subprocess.run([CUSDESK, "doctor", PLUGIN], check=False).returncode
    found = sorted(names("takes", "--undefined-only") | names("offers", "--defined-only"))
    changes = list(difflib.unified_diff(NAMES.read_text(encoding="utf-8").splitlines(True), found,
                                        str(NAMES), PLUGIN, n=0))
    guarded = b"__stack_chk_fail" in pathlib.Path(PLUGIN).read_bytes()
    print("".join(changes) + ("" if guarded else "no stack protector"))
    with tempfile.TemporaryDirectory() as folder:
        stripped = os.path.join(folder, "stripped.so")
        subprocess.run([STRIP, "-o", stripped, PLUGIN], check=True)
        print(f"{os.path.getsize(stripped)} bytes stripped")
    sys.exit(doctor != 0 or bool(changes) or not guarded)


main()
