"""Prints what the plug-in costs, in countable terms, on PCs and on both kinds of controllers.

Instructions are counted by callgrind on a PC and by qemu on ARM, where whole runs with and without
the part that counts are set against each other.
Usage: cost_table.py BUILD     with the builds for ARM in BUILD/armhf and BUILD/arm64
"""

import os
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../tests/bench"))
import instructions_test  # noqa: E402

# What is shown, and the part of cuscost that it is.
PARTS = [
    ("instructions per piece read, JSON", "json_read"),
    ("... with second spellings", "json_read_second_spelling"),
    ("instructions per piece read, XML", "xml_read"),
    ("instructions per row of get_work", "works"),
    ("instructions per row of get_cut", "cuts"),
    ("instructions per row of get_print", "labels"),
    ("instructions per row of get_hole", "holes"),
]
# Name, build folder, emulator, strip.
MACHINES = [
    ("x86-64", ".", None, "strip"),
    ("armhf", "armhf", "qemu-arm", "arm-linux-gnueabihf-strip"),
    ("arm64", "arm64", "qemu-aarch64", "aarch64-linux-gnu-strip"),
]
PIECES = 8000


def emulator(build, folder, name, *options):
    return [name, *options, "-L", os.path.join(build, "sysroots", folder)] if name else []


def emulated_run(command):
    run = subprocess.run(command, check=True, capture_output=True, text=True)
    count = int(run.stdout.split()[1])
    return int(re.search(r"^instructions (\d+)$", run.stderr, re.M)[1]), count


def instructions(build, folder, qemu):
    program = os.path.join(build, folder, "bin/cuscost")
    if qemu is None:
        return instructions_test.measure(program)
    counter = os.path.join(build, "bin/libcount_instructions.so")
    prefix = emulator(build, folder, qemu, "-plugin", counter)
    costs = {}
    for _, part in PARTS:
        whole, count = emulated_run([*prefix, program, part])
        rest, _ = emulated_run([*prefix, program, part, "prepare"])
        costs[part] = (whole - rest) / count
    return costs


def memory(build, folder, qemu):
    """Bytes per piece of document and records together, which is the most a load holds, by format."""
    program = os.path.join(build, folder, "bin/cusmemory")
    output = subprocess.run([*emulator(build, folder, qemu), program, str(PIECES)], check=True,
                            capture_output=True, text=True).stdout
    lines = [line.split() for line in output.splitlines()]
    return {form: (int(document) + int(model)) / PIECES
            for form, _, _, document, model, _ in lines}


def code_size(build, folder, strip):
    plugin = os.path.join(build, folder, "libCustom_LuaParseModule.so")
    with tempfile.TemporaryDirectory() as scratch:
        stripped = os.path.join(scratch, "stripped.so")
        subprocess.run([strip, "-o", stripped, plugin], check=True)
        return os.path.getsize(stripped)


def row(what, values):
    print(f"| {what:42} |" + "".join(f" {value:>10,.0f} |" for value in values))


def main():
    build = os.path.abspath(sys.argv[1])
    costs = [instructions(build, folder, qemu) for _, folder, qemu, _ in MACHINES]
    sizes = [memory(build, folder, qemu) for _, folder, qemu, _ in MACHINES]
    print(f"| {'':42} |" + "".join(f" {name:>10} |" for name, *_ in MACHINES))
    print("|" + "-" * 44 + "|" + "-----------:|" * len(MACHINES))
    for what, part in PARTS:
        row(what, [cost[part] for cost in costs])
    row("peak heap per piece of a load, JSON, bytes", [size["json"] for size in sizes])
    row("peak heap per piece of a load, XML, bytes", [size["xml"] for size in sizes])
    row("the plug-in, stripped, bytes",
        [code_size(build, folder, strip) for _, folder, _, strip in MACHINES])


if __name__ == "__main__":
    main()
