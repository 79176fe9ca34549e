"""Answers `searchpath find`, `shadows` and `verify` as the tool does, by the Python module. What the module
does not offer is left to the tool, which is called SEARCHPATH_TOOL."""

import getopt
import json
import os
import sys

import searchpath

FLAGS = ["all", "explain", "json", "recursive", "quiet", "update"]
VALUES = ["as=", "ext=", "from=", "path=", "policy=", "receipt="]


class NotOffered(Exception):
    pass


class Line:
    """A command line of the tool."""

    def __init__(self, words):
        try:
            options, self.names = getopt.gnu_getopt(words, "a", FLAGS + VALUES)
        except getopt.GetoptError:
            raise NotOffered from None
        self.given = {option.lstrip("-") for option, _ in options}
        self.values = {}
        for option, value in options:
            self.values.setdefault(option.lstrip("-"), []).append(value)
        self.rules = self.one("as") or "environment"
        self.question = {"extensions": self.values.get("ext", [])}
        if self.one("policy") not in (None, "file-system"):
            self.question["ignore_case"] = self.one("policy") == "ignore-case"
        if self.one("from"):
            self.question["from_folder"] = self.one("from")

    def one(self, option):
        return self.values.get(option, [None])[-1]

    def environment(self):
        folders = []
        for part in self.values.get("path") or self.stop():
            if part[:1] == "@" or part == "-":
                with open(part[1:] or 0, errors="surrogateescape") as lines:
                    folders += filter(None, lines.read().splitlines())
            else:
                folders += [each for each in part.split(":") if each or self.rules == "program"]
        return searchpath.Environment(folders, "recursive" in self.given, self.rules)

    def stop(self):
        raise NotOffered


def find(line):
    if not line.names or "explain" in line.given and "json" not in line.given:
        raise NotOffered
    environment = line.environment()
    if "receipt" in line.given:
        if line.given & {"all", "a", "explain"}:
            raise NotOffered
        receipt = environment.find_with_receipt(line.names, **line.question)
        answers = [[path] if path else [] for _, path in receipt.answers()]
    elif "explain" in line.given:
        answers = [environment.explain(name, **line.question) for name in line.names]
        for explained in answers:
            print_object(explained)
        return 0 if all(explained["path"] for explained in answers) else 1
    elif "json" in line.given:
        raise NotOffered
    elif line.given & {"all", "a"}:
        answers = [environment.find_all(name, **line.question) for name in line.names]
    else:
        found = [environment.find(name, **line.question) for name in line.names]
        answers = [[path] if path else [] for path in found]
    for path in sum(answers, []):
        print(path)
    if "receipt" in line.given:
        receipt.save(line.one("receipt"))
    return 0 if all(answers) else 1


def shadows(line):
    if line.names:
        raise NotOffered
    del line.question["extensions"]
    found = line.environment().shadows(extensions=line.values.get("ext", []), **line.question)
    if any(hidden["kind"] == "unreadable" for shadow in found for hidden in shadow["hidden"]):
        raise NotOffered  # the tool also says what cannot be read, and why
    for shadow in found:
        if "json" in line.given:
            print_object(shadow)
            continue
        print(f'"{shadow["name"]}" means {shadow["path"]} and hides')
        for hidden in shadow["hidden"]:
            print(f'  {hidden["kind"].replace("-", " "):10}  {hidden["path"]}')
    return 1 if found else 0


def verify(line):
    if len(line.names) != 1:
        raise NotOffered
    changes = searchpath.Receipt.load(line.names[0]).verify()
    for name, before, after in changes:
        word = "changed" if before and after else "gone" if before else "new"
        if "json" in line.given:
            print_object({"change": word, "name": name, "old": before, "new": after})
        else:
            print(f"{word:7}  " + " -> ".join(path for path in (before, after) if path))
    if changes and "update" in line.given:
        changes.renew().save(line.names[0])
        return 0
    return 1 if changes else 0


def print_object(found):
    print(json.dumps(found, ensure_ascii=False, separators=(",", ":")))


def main(words):
    command = {"find": find, "shadows": shadows, "verify": verify}[words[0]]
    sys.stdout.reconfigure(errors="surrogateescape")
    try:
        status = command(Line(words[1:]))
        sys.stdout.flush()
    except NotOffered:
        os.execv(os.environ["SEARCHPATH_TOOL"], ["searchpath", *words])
    except (OSError, ValueError) as failure:
        print(f"searchpath: {failure}", file=sys.stderr)
        status = 2
    with open(os.environ["SEARCHPATH_ANSWERED"], "a") as answered:
        answered.write(" ".join(words) + "\n")
    os._exit(status)  # what cannot be written has been reported


if __name__ == "__main__":
    main(sys.argv[1:])
