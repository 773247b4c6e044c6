"""Every gate of check_boundary.py shuts: plug-ins with one fault each are refused for that fault.

Usage: broken_plugins_test.py CHECK BOUNDARY_JSON STRIP FOLDER
"""

import pathlib
import re
import subprocess
import sys

# What is wrong with each plug-in, as patterns over whole lines.
FAULTS = {
    "new_c_library": [r"imports reallocarray of GLIBC_2\.26, newer than the oldest controllers have"],
    "new_cpp_runtime": [r"imports std::from_chars\(.*\) of GLIBCXX_3\.4\.29, newer than .*"],
    "surplus_import": [r"imports luaL_error, which the host does not offer"],
    "wrong_exports": [r"exports spareHelper", r"does not export onClick\(void\*, int, int, .*\)"],
    "foreign_library": [r"needs libtinyxml2\.so\.\d+, which is not of the standard runtime"],
    "executable_stack": [r"has an executable stack"],
    "writable_tables": [r"is not fully relocated and write-protected at load"],
    "search_path": [r"has a library search path of its own"],
}


def main():
    *check, folder = sys.argv[1:]
    failed = False
    for name, patterns in FAULTS.items():
        plugin = pathlib.Path(folder, f"{name}.so")
        answer = subprocess.run([sys.executable, *check, plugin], capture_output=True, text=True,
                                timeout=60)
        lines = [line.split(": ", 1)[1] for line in answer.stdout.splitlines()[:-1]]
        expected = len(lines) == len(patterns) and all(map(re.fullmatch, patterns, lines))
        if answer.returncode != 1 or not expected:
            failed = True
            print(f"{name}: exit {answer.returncode}, found {lines}\n{answer.stderr}")
    built = {path.stem for path in pathlib.Path(folder).glob("*.so")}
    assert built == set(FAULTS), built ^ set(FAULTS)
    sys.exit(1 if failed else 0)


main()
