"""Files and functions stay small enough to be read at once."""
import re

import sources

FILE_LIMITS = {".cpp": 500, ".h": 350}
FUNCTION_LIMIT = 60
CONTAINER = re.compile(r"\b(namespace|class|struct|union|enum|extern)\b")


def check_file(name, text):
    findings = []
    for suffix, limit in FILE_LIMITS.items():
        lines = text.count("\n")
        if name.endswith(suffix) and lines > limit:
            findings.append(f"{name}: {lines} lines, limit {limit}")
    return findings


def check_functions(name, text):
    return [f"{name}:{line}: function of {length} lines, limit {FUNCTION_LIMIT}"
            for line, length in functions(text) if length > FUNCTION_LIMIT]


def functions(text):
    """(first line, number of lines) of each function body with its head."""
    code = re.sub(r"^[ \t]*#(?:.*\\\n)*.*", sources.blank, sources.without_comments_and_literals(text), flags=re.MULTILINE)
    open_blocks, head, line, head_line = [], "", 1, 1
    for char in code:
        if char == "{":
            open_blocks.append((is_function(head, open_blocks), head_line))
            head = ""
        elif char == "}" and open_blocks:
            is_body, first = open_blocks.pop()
            if is_body:
                yield first, line - first + 1
            head = ""
        elif char == ";":
            head = ""
        else:
            if not head.strip() and not char.isspace():
                head_line = line
            head += char
        line += char == "\n"


def is_function(head, open_blocks):
    """A head with a parameter list, outside of any function body, that opens no namespace or type."""
    if any(inside for inside, _ in open_blocks) or head.count("(") != head.count(")"):
        return False
    return "(" in head and not CONTAINER.search(re.sub(r"<[^<>]*>", "", head.split("(")[0]))


def main():
    findings = []
    for name in sources.files("src", "tests", "bench", suffixes=tuple(FILE_LIMITS)):
        text = sources.read(name)
        findings += check_file(name, text)
        if name.startswith("src/"):
            findings += check_functions(name, text)
    sources.report(findings)


if __name__ == "__main__":
    main()
