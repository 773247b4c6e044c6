#!/usr/bin/env python3
"""Instructions and memory of the commands over documents of many shapes: both grow with the size.

Usage: growth.py CUSDESK VIEWER COUNTER JOBS [SHAPE...]

VIEWER is the test program view_documents, COUNTER qemu's plug-in libcount_instructions.so.
"""
import concurrent.futures
import functools
import os
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

SIZE = 600  # of a shape whose instructions are counted; again at four times that
MOST_GROWTH = 4.8  # n log n is below
NOISE = 2_000_000  # instructions
MEMORY_PER_BYTE, LEAST_MEMORY, DOCUMENT = 100, 64 << 20, 1_000_000

LOAD = """local job = require "cus_ParseModule"
job.getjson_Flash(arg[1])
for _, name in ipairs {"get_cut", "get_work", "get_Dimensions"} do pcall(job[name], "") end
pcall(job.get_hole) pcall(job.get_print)
"""
COMMANDS = {
    "run": ["run", "load.lua", "{name}"],
    "check": ["check", "{file}"],
    "sarif": ["check", "--format", "sarif", "{file}"],
    "works": ["show", "--where", "--format", "json", "{file}", "works"],
    "pieces": ["show", "--format", "json", "{file}", "pieces"],
    "diff": ["diff", "{file}", "{file}"],
    "draw": ["draw", "{file}", "-o", "picture.svg"],
    "view": [],  # by the program that answers as the page's server does
}
# What the page asks first, and the answers of each kind that cost most.
VIEW = ["summary", "bars", "bar?group=0", "findings?count=500", "piece?id=1.1", "source?line=1",
        "table?name=works&sort=Name&filter=w&count=500", "table?name=cuts&find=1.1"]

JOB = '{"Version":"1.0","Bar":[%s]}'
PIECES = JOB % '{"BarNumber":1,"MaxY":40,"MaxZ":40,"length":6000,"piece":[%s]}'
WORKS = PIECES % '{"PieceNumber":1,"BarCode":"A","cut":{"Length":"900"},"work":[%s]}'
XML_JOB = "<Job><Version>1.0</Version>%s</Job>"
XML_PIECES = XML_JOB % "<Bar><BarNumber>1</BarNumber>%s</Bar>"
XML_PIECE = "<Piece><PieceNumber>%d</PieceNumber><BarCode>B%d</BarCode><CtrsZ>1</CtrsZ></Piece>"


def piece(i, code="B%d"):
    return ('{"PieceNumber":%d,"BarCode":"%s","cut":{"Length":"%d","sxB":"45","dxB":"135"},'
            '"work":[{"Name":"Lock","ProfiLav":1,"PositionX":%d,"PositionY":5}]}'
            % (i, code.replace("%d", str(i)), 100 + i % 7, i % 90))


def listed(n, element):
    return ",".join(element(i) if callable(element) else element for i in range(n))


SHAPES = {
    "pieces": lambda n: PIECES % listed(n // 4, piece),
    "bars of one piece": lambda n: JOB % listed(
        n // 4, lambda i: '{"BarNumber":%d,"length":6000,"piece":[%s]}' % (i, piece(i))),
    "bars of one number": lambda n: JOB % listed(n, '{"BarNumber":1,"piece":[{"PieceNumber":1}]}'),
    "pieces of one barcode": lambda n: PIECES % listed(n // 4, lambda i: piece(i, "A")),
    "pieces {}": lambda n: PIECES % listed(n, "{}"),
    "pieces 0": lambda n: PIECES % listed(n, "0"),
    "bars {}": lambda n: JOB % listed(n, "{}"),
    "works {}": lambda n: WORKS % listed(n, "{}"),
    "works": lambda n: WORKS % listed(n, lambda i: '{"Name":"W%d","PositionX":%d}' % (i, i % 800)),
    "one long text": lambda n: PIECES % ('{"BarCode":"%s"}' % ("x" * 20 * n)),
    "a text carried": lambda n: PIECES % (piece(1, "B" * 90) + ',{"cut":{"Length":"9"}}' * n),
    "a text carried to the bound": lambda n: PIECES % (
        piece(1, "x" * (n // 7)) + ',{"cut":{"Length":"9"}}' * 90 + " " * n),
    "a text carried beyond": lambda n: PIECES % (piece(1, "x" * 20 * n) + ",{}" * n),
    "pieces to the bound": lambda n: PIECES % (("{}" + " " * 85 + ",") * n + "{}"),
    "works to the bound": lambda n: WORKS % (('{"PositionX":1}' + " " * 20 + ",") * n + "{}"),
    "bars to the bound": lambda n: JOB % (("{}" + " " * 28 + ",") * n + "{}"),
    "XML: bars to the bound": lambda n: XML_JOB % (("<Bar/>" + " " * 25) * n),
    "XML: pieces to the bound": lambda n: XML_PIECES % (
        ("<Piece><CtrsZ>1</CtrsZ></Piece>" + " " * 60) * n),
    "unknown keys": lambda n: '{"Version":"1.0",%s}' % listed(n, lambda i: '"BarNumbe%d":0' % i),
    "unknown keys of pieces": lambda n: PIECES % listed(n, '{"PieceNumbr":0}'),
    "equal keys": lambda n: '{%s}' % listed(n, '"Version":"1.0"'),
    "both spellings": lambda n: JOB % listed(n, '{"BarNumber":1,"barNumber":2}'),
    "wrong types": lambda n: PIECES % listed(n, '{"PieceNumber":[],"cut":0}'),
    "values of no list": lambda n: '{"Version":"1.0","x":[%s]}' % listed(n, "0"),
    "escapes": lambda n: PIECES % ('{"BarCode":"%s"}' % ("\\u00e4" * n)),
    "zero bytes in texts": lambda n: PIECES % listed(n, '{"BarCode":"a\\u0000b"}'),
    "texts that are no UTF-8": lambda n: (PIECES % ('{"BarCode":"%s"}' % ("\xff" * n))).encode(
        "latin-1"),
    "long numbers": lambda n: PIECES % ('{"PieceNumber":%s}' % ("9" * n)),
    "comments": lambda n: JOB % ("/* a */" * n),
    "lines": lambda n: JOB % ("\n" * n),
    "open brackets": lambda n: "[" * n,
    "wrong escapes": lambda n: JOB % listed(n, '["\\q"]'),
    "XML: pieces": lambda n: XML_PIECES % "".join(XML_PIECE % (i, i) for i in range(n // 4)),
    "elements <a/>": lambda n: XML_JOB % ("<a/>" * n),
    "bars <Bar/>": lambda n: XML_JOB % ("<Bar/>" * n),
    "pieces of one value": lambda n: XML_PIECES % ("<Piece><CtrsZ>1</CtrsZ></Piece>" * n),
    "unknown elements first": lambda n: XML_PIECES % ("<a/>" * n + XML_PIECE % (1, 1)),
    "values again": lambda n: XML_PIECES % ("<BarName>a</BarName>" * n),
    "attributes": lambda n: XML_JOB % (
        "<a %s/>" % " ".join('b%d=""' % i for i in range(200)) * (n // 100)),
    "one attribute each": lambda n: XML_JOB % ('<a b=""/>' * n),
    "references without an end": lambda n: "<J><Version>" + "&#" * n,
    "256 of them": lambda n: XML_JOB % (("<Name>%s</Name>" % ("&#" * 256)) * (n // 128)),
    "references": lambda n: XML_JOB % ("<Name>%s</Name>" % ("&#228;&amp;&a" * n)),
    "references to zero": lambda n: XML_PIECES % ("<BarName>a&#0;b</BarName>" * n),
    "comments in texts": lambda n: XML_JOB % ("<Name>%s</Name>" % ("a<!-- b -->" * n)),
    "texts between": lambda n: XML_JOB % ("a<b/>" * n),
    "end tags": lambda n: "<a/>" + "</a>" * n,
    "declarations": lambda n: "<!DOCTYPE a>" * n + XML_JOB % "",
    "nesting": lambda n: XML_JOB % (("<a>" * 90 + "</a>" * 90) * (n // 50)),
}


class Program:
    def __init__(self, programs, folder):
        self.program, self.viewer, self.counter = programs
        self.folder = pathlib.Path(folder)
        for name in ("Json", "Xml"):
            self.flash(name).mkdir(parents=True)
        (self.folder / "load.lua").write_text(LOAD)

    def flash(self, name):
        return self.folder / f"root/mnt/data/CustomFileDir/{name}File"

    def command(self, command, document):
        """Writes the document, and returns the command about it."""
        name = "Xml" if document.lstrip()[:1] == b"<" else "Json"
        file = self.flash(name) / f"shape.{name.lower()}"
        file.write_bytes(document)
        if command == "view":
            return [self.viewer, str(file), *VIEW]
        words = [word.format(name=file.name, file=file) for word in COMMANDS[command]]
        return [self.program, "--root", str(self.folder / "root"), *words]

    @functools.lru_cache(maxsize=None)
    def instructions(self, command, document):
        run = subprocess.run(
            ["qemu-" + platform.machine(), "-plugin", self.counter,
             *self.command(command, document)], cwd=self.folder, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE, text=True, timeout=300)
        return int(re.findall(r"^instructions (\d+)$", run.stderr, re.M)[-1])

    def memory(self, command, document):
        """Bytes at most."""
        process = subprocess.Popen(self.command(command, document), cwd=self.folder,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, _, usage = os.wait4(process.pid, 0)
        return usage.ru_maxrss << 10


def encoded(document):
    return document if isinstance(document, bytes) else document.encode()


def measured(program, make, command):
    """Growth, instructions for each byte, memory in percent of the bound, whether all is well."""
    none = b"<a/>" if encoded(make(SIZE))[:1] == b"<" else b"0"
    small, large = encoded(make(SIZE)), encoded(make(4 * SIZE))
    base, one, four = (program.instructions(command, each) for each in (none, small, large))
    document = encoded(make(SIZE * DOCUMENT // len(small)))
    memory = program.memory(command, document) / (MEMORY_PER_BYTE * len(document) + LEAST_MEMORY)
    is_well = four - base <= MOST_GROWTH * max(one - base, 0) + NOISE and memory <= 1
    return (four - base) / max(one - base, NOISE / 10), (four - base) / len(large), memory, is_well


def row(programs, name):
    """The measurements of a shape: as a line, and the largest of each; how many are beyond."""
    with tempfile.TemporaryDirectory() as folder:
        runner = Program(programs, folder)
        cells = [measured(runner, SHAPES[name], command) for command in COMMANDS]
    text = "".join(f"{growth:7.1f}{cost:7.0f}{memory:5.0%}{' ' if is_well else '!'}"
                   for growth, cost, memory, is_well in cells)
    largest = [max(cell[i] for cell in cells) for i in (0, 2)]
    return f"{name:28}{text}", largest, sum(not cell[3] for cell in cells)


def main():
    programs = list(map(os.path.abspath, sys.argv[1:4]))
    names = sys.argv[5:] or list(SHAPES)
    print("Of a document four times as large: times the instructions, instructions a byte. "
          "Of one of 1 MB: memory of the bound.")
    print(f"{'':28}" + "".join(f"{command:>20}" for command in COMMANDS))
    faults, most = 0, [0, 0]
    with concurrent.futures.ThreadPoolExecutor(int(sys.argv[4])) as pool:
        for line, largest, beyond in pool.map(lambda name: row(programs, name), names):
            print(line, flush=True)
            faults += beyond
            most = list(map(max, most, largest))
    print(f"growth: {len(names)} shapes, {len(COMMANDS)} commands; of four times the size at most "
          f"{most[0]:.1f} times the instructions, at 1 MB at most {most[1]:.0%} of the memory")
    sys.exit(f"{faults} are beyond" if faults else 0)


if __name__ == "__main__":
    main()
