"""find_file.py NAME FOLDER...: prints every file that NAME could mean on the path of these folders."""

import os
import sys

import searchpath

name, *folders = sys.argv[1:]
found = searchpath.Environment(folders).find_all(name)
sys.stdout.buffer.writelines(os.fsencode(path) + b"\n" for path in found)
sys.exit(not found)
