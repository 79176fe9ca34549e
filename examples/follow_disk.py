"""follow_disk.py NAME FOLDER...: which folders are asked for NAME, then how its meaning changes next."""

import sys

import searchpath

name, *folders = sys.argv[1:]
with searchpath.Environment(folders).watch() as watch:
    for asked in watch.environment().explain(name)["asked"]:
        print(asked["outcome"], asked["folder"])
    receipt = watch.environment().find_with_receipt([name])
    while not receipt.verify():
        watch.wait()
        watch.environment()  # or else wait() would return at once from now on
    for change in receipt.verify():
        print("was", change.before, "and is", change.after)
