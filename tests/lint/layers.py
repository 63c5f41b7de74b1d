"""The #include lines of src/ against the diagram kept in layers.txt."""
import fnmatch
import re

import sources

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^">]+)[">]', re.MULTILINE)


class Diagram:
    def __init__(self, text):
        self.folders, self.reserved, self.doors, self.nowhere, self.public = {}, {}, {}, [], []
        for line in text.splitlines():
            words = line.split("#")[0].split()
            if words:
                getattr(self, "read_" + words[0])(words[1:])

    def read_folder(self, words):
        self.folders[words[0]] = set(words[2:])

    def read_only(self, words):
        self.reserved[words[0]] = words[2]

    def read_door(self, words):
        self.doors[words[0]] = words[2]

    def read_nowhere(self, words):
        self.nowhere += words

    def read_public(self, words):
        self.public += words

    def folder_of(self, name):
        """The named folder with the longest path that holds the file."""
        fitting = [folder for folder in self.folders if name.startswith(folder + "/")]
        return max(fitting, key=len, default=None)


def check(diagram, name, text):
    """name is relative to src/."""
    own = diagram.folder_of(name)
    if own is None:
        return [f"{name}: its folder is not in layers.txt"]
    findings = []
    for quote, included in INCLUDE.findall(sources.without_comments(text)):
        fault = fault_of(diagram, own, quote, included)
        if fault:
            findings.append(f"{name}: {included} {fault}")
    return findings


def fits(included, patterns):
    return any(fnmatch.fnmatchcase(included, pattern) for pattern in patterns)


def fault_of(diagram, own, quote, included):
    if quote == "<":
        if diagram.reserved.get(included, own) != own:
            return "belongs to " + diagram.reserved[included]
        if fits(included, diagram.nowhere):
            return "exists on one operating system only"
        return None
    if included.endswith(".moc"):
        return None
    other = diagram.folder_of(included)
    if other is None:
        return "is no path from src/"
    if diagram.doors.get(included) == own:
        return None
    if other != own and other not in diagram.folders[own]:
        return f"is not below {own}"
    if own.startswith("apps/") and other != own and not fits(included, diagram.public):
        return "is not public"
    return None


def main():
    diagram = Diagram(sources.read("tests/lint/layers.txt"))
    findings = []
    for name in sources.files("src", suffixes=(".h", ".cpp")):
        findings += check(diagram, name[len("src/"):], sources.read(name))
    sources.report(findings)


if __name__ == "__main__":
    main()
