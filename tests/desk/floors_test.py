#!/usr/bin/env python3
"""Inside desk/ a file includes its own folder and lower floors only."""
import pathlib
import re
import sys

desk = pathlib.Path(sys.argv[1])
FLOORS = {"base": 0, "host": 1, "job": 2, "script": 2, "commands": 4}  # all others are subjects: 3
SUBJECTS = 3

floor = lambda folder: FLOORS.get(folder, SUBJECTS)
wrong = []
for file in sorted(desk.rglob("*.[ch]*")):
    own = file.relative_to(desk).parts[0]
    for target in re.findall(r'#include "desk/(\w+)/', file.read_text()) if file.parent != desk else []:
        if own != target and floor(target) > floor(own):
            wrong.append(f"{file} includes desk/{target}/, a floor above its own")
sys.exit("\n".join(wrong) or 0)
