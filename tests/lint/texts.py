"""German text for people stands in base/texts_de.def alone; code holds catalogue names only (catalogue_names.txt)."""
import fnmatch
import re

import sources

TABLE = "src/base/texts_de.def"
UMLAUT = re.compile(r"[äöüÄÖÜß]|\\u00(?:[eE]4|[fF]6|[fF][cC]|[cC]4|[dD]6|[dD][cC]|[dD][fF])")
WORDS = re.compile(r"(?i)\b(?:nicht|wird|wurde|und|oder|ist|keine?|einen?|eine[rm]|bitte|kann|der|das|mit)\b")


class Allowed:
    def __init__(self, text):
        rows = [row.strip() for row in text.splitlines() if row.strip() and not row.startswith("#")]
        self.files = [row.split()[1] for row in rows if row.startswith("file ")]
        names = [row for row in rows if not row.startswith("file ")]
        self.names = re.compile("|".join(re.escape(name) for name in sorted(names, key=len, reverse=True)) or "$^")

    def is_data(self, name):
        return any(fnmatch.fnmatchcase(name, pattern) for pattern in self.files)


def check(allowed, name, text):
    if allowed.is_data(name):
        return []
    findings = []
    for line, literal in sources.literals(text):
        rest = allowed.names.sub("", literal)
        if UMLAUT.search(rest) or WORDS.search(rest):
            findings.append(f"{name}:{line}: German text outside the table: {literal}")
    return findings


def main():
    allowed = Allowed(sources.read("tests/lint/catalogue_names.txt"))
    findings = []
    for name in sources.files("src", suffixes=(".h", ".cpp")):
        if name != TABLE:
            findings += check(allowed, name, sources.read(name))
    sources.report(findings)


if __name__ == "__main__":
    main()
