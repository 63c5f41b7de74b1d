"""What all lint checks share: the project's files, C++ text without comments, and the report."""
import os
import re
import sys

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SKIPPED = {"build", ".git", "__pycache__"}
TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"'
    r"|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'",
    re.DOTALL)


def files(*folders, suffixes=None):
    """Paths relative to the project, sorted; all its files without arguments."""
    found = []
    for folder in folders or [""]:
        for path, names, leaves in os.walk(os.path.join(TOP, folder)):
            names[:] = [name for name in names if name not in SKIPPED]
            found += [os.path.relpath(os.path.join(path, leaf), TOP) for leaf in leaves
                      if leaf not in SKIPPED]
    return sorted(name for name in found if suffixes is None or name.endswith(suffixes))


def read(name):
    """The text of a file, or None of a binary one."""
    with open(os.path.join(TOP, name), "rb") as file:
        data = file.read()
    return None if b"\0" in data else data.decode("utf-8")


def without_comments(text):
    """Comments become blanks; lines stay where they are."""
    return TOKEN.sub(lambda m: blank(m) if m.group().startswith(("//", "/*")) else m.group(), text)


def without_comments_and_literals(text):
    return TOKEN.sub(blank, text)


def blank(match):
    return re.sub(r"[^\n]", " ", match.group())


def literals(text):
    """(line, literal) of every string literal."""
    for match in TOKEN.finditer(text):
        if match.group().startswith(('"', "R")):
            yield text.count("\n", 0, match.start()) + 1, match.group()


def report(findings):
    """Prints the findings and ends with a status that says whether there were any."""
    for finding in findings:
        print(finding)
    sys.exit(1 if findings else 0)
