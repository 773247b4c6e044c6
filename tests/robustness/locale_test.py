"""A decimal comma: the desk answers as ever under such a locale, and what a host that changes its
locale makes of the conversions is as docs/robustness.md tells.

Usage: locale_test.py CUSDESK
"""

import os
import subprocess
import unittest

import cusdesk

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


class Locale(cusdesk.Folder):
    def answers(self, locale, *arguments):
        environment = {**os.environ, "LOCPATH": str(self.folder / "locales"), "LC_ALL": locale}
        done = self.run_here("--root", ".", "run", "-", *arguments, input=SCRIPT, env=environment)
        lines = [line for line in done.stdout.splitlines() if line.startswith("#")]
        return [line[1:].replace("\t", " ").strip() for line in lines] or [done.stderr]

    def test_only_a_host_that_changes_its_locale_gets_other_numbers(self):
        self.write("mnt/data/CustomFileDir/JsonFile/a.json", JSON)
        self.write("mnt/data/CustomFileDir/XmlFile/a.xml", XML)
        (self.folder / "locales").mkdir()
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", self.folder / "locales/comma"],
                       check=True)
        self.assertEqual(self.answers("C"), POINT)
        self.assertEqual(self.answers("comma"), POINT)
        self.assertEqual(self.answers("comma", "comma"), COMMA)


unittest.main()
