"""Words that do not belong into the project. The patterns are written so that they do not find themselves."""
import re

import sources

EVERYWHERE = [
    (r"(?i)\bspec[i]fication\b|\bspec[.]md\b|\bthe[ ]spec\b|\bPart[ ][1-6]\.\d", "names a document that is not here"),
    (r"(?i)\bissue[ ]#?\d", "names an entry of a tracker"),
    (r"/(?:work|farm|home)/|bash[_]jobs", "is a path of one machine"),
]
IN_CODE = [
    (r"\b(?:TO[D]O|FIX[M]E|XX[X]|HA[C]K|[s]tub)\b|not[ ]implemented", "marks unfinished work"),
]
IN_TESTS = [
    (r"DIS[A]BLED_|GTEST_[S]KIP\(\) *;|Q[S]KIP\(\"\"\)", "switches a test off without a reason"),
]


def check(name, text):
    rules = list(EVERYWHERE)
    if name.startswith(("src/", "tests/", "bench/")):
        rules += IN_CODE
    if name.startswith("tests/"):
        rules += IN_TESTS
    findings = []
    for number, line in enumerate(text.splitlines(), 1):
        for pattern, fault in rules:
            match = re.search(pattern, line)
            if match:
                findings.append(f"{name}:{number}: '{match.group()}' {fault}")
    return findings


def main():
    findings = []
    for name in sources.files():
        text = sources.read(name)
        if text is not None:
            findings += check(name, text)
    sources.report(findings)


if __name__ == "__main__":
    main()
