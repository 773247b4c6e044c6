"""A decimal comma: the desk answers as ever under such a locale, and what a host that changes its
locale makes of the conversions is as docs/robustness.md tells.

Usage: locale_test.py CUSDESK
"""

import os
import pathlib
import subprocess
import sys
import tempfile

JSON = """{"Version":"1.0","Bar":[{"BarNumber":7,"MaxY":60,"MaxZ":70,"piece":[
  {"BarCode":"j","cut":{"Length":"900.5"},"work":[{"Name":"drain","PositionX":12.5}]}]}]}"""
XML = """<Job><Version>1.0</Version><Bar><Piece><BarCode>x</BarCode><CtrsZ>0</CtrsZ>
  <Work><Name>drain</Name><ProfiLav>1</ProfiLav><PositionX>12.5</PositionX>
  <PositionY>1,5</PositionY><PositionZ>3</PositionZ></Work></Piece></Bar></Job>"""

SCRIPT = """
if arg[1] then assert(os.setlocale(arg[1])) end
local job = cus_ParseModule
-- A hundred-fold, so that the host's own way of writing numbers does not matter.
local function times100(number) return string.format('%d', number * 100 // 1) end
job.getjson_Flash('a.json')
print('#', 'JSON position', times100(job.get_work('')[1].PositionX))
print('#', 'hole length', times100(job.get_hole()[1].length))
job.getjson_Flash('a.xml')
print('#', 'XML positions', times100(job.get_work('')[1].PositionX),
      times100(job.get_work('')[1].PositionY))
"""

POINT = ["JSON position 1250", "hole length 90050", "XML positions 1250 100"]
# What stod makes of "900.5", "12.5" and "1,5" when the decimal mark is a comma.
COMMA = ["JSON position 1250", "hole length 90000", "XML positions 1200 150"]


def answers(cusdesk, base, locale, *arguments):
    environment = {**os.environ, "LOCPATH": str(base / "locales"), "LC_ALL": locale}
    done = subprocess.run([cusdesk, "--root", base, "run", base / "script.lua", *arguments],
                          capture_output=True, text=True, timeout=60, env=environment)
    lines = [line for line in done.stdout.splitlines() if line.startswith("#")]
    return [line[1:].replace("\t", " ").strip() for line in lines] or [done.stderr]


def main():
    cusdesk = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory(prefix="cus-locale-") as folder:
        base = pathlib.Path(folder)
        for name, text in (("JsonFile/a.json", JSON), ("XmlFile/a.xml", XML)):
            file = base / "mnt/data/CustomFileDir" / name
            file.parent.mkdir(parents=True)
            file.write_text(text)
        (base / "script.lua").write_text(SCRIPT)
        (base / "locales").mkdir()
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", base / "locales/comma"],
                       check=True)
        rows = [("under the C locale", answers(cusdesk, base, "C"), POINT),
                ("under a decimal comma", answers(cusdesk, base, "comma"), POINT),
                ("after setlocale", answers(cusdesk, base, "comma", "comma"), COMMA)]
    failed = False
    for what, got, expected in rows:
        print(f"locale: {what}: {'; '.join(got)}")
        if got != expected:
            print(f"  expected {expected}")
            failed = True
    sys.exit(1 if failed else 0)


main()
