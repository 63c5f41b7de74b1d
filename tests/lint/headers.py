"""Each header of src/ compiles alone. Takes the flags of its folder from compile_commands.json of the build folder."""
import concurrent.futures
import json
import os
import shlex
import shutil
import subprocess
import sys

import sources

KEPT = ("-D", "-I", "-std", "-f", "-W")
DROPPED = ("-fsanitize", "-fno-sanitize", "-fuse-ld")


def flags_by_folder(build):
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        commands = json.load(file)
    found = {}
    for command in commands:
        folder = os.path.dirname(os.path.relpath(command["file"], os.path.join(sources.TOP, "src")))
        found.setdefault(folder, flags_of(shlex.split(command["command"])))
    return found


def flags_of(words):
    flags = []
    for index, word in enumerate(words):
        if word == "-isystem":
            flags += words[index:index + 2]
        elif word.startswith(KEPT) and not word.startswith(DROPPED):
            flags.append(word)
    return flags


def flags_for(header, by_folder):
    """Those of the nearest folder above that has a source; nothing if there is none."""
    folder = os.path.dirname(header)
    while folder and folder not in by_folder:
        folder = os.path.dirname(folder)
    return by_folder.get(folder)


def compile_alone(header, flags, scratch):
    """The compiler's complaint about a source that includes the header and nothing else; empty if there is none."""
    stem = os.path.join(scratch, header.replace("/", "_"))
    with open(stem + ".cpp", "w", encoding="utf-8") as file:
        file.write(f'#include "{header}"\n')
    cache = [shutil.which("ccache")] if shutil.which("ccache") else []
    done = subprocess.run([*cache, "c++", *flags, "-Werror", "-c", stem + ".cpp", "-o", stem + ".o"],
                          capture_output=True, text=True)
    return "" if done.returncode == 0 else done.stderr or f"status {done.returncode}"


def check(header, by_folder, scratch):
    flags = flags_for(header, by_folder)
    if flags is None:
        return [f"{header}: no source of its folder is compiled"]
    complaint = compile_alone(header, flags, scratch)
    return [f"{header} does not compile alone:\n{complaint}"] if complaint else []


def main():
    build = sys.argv[1]
    scratch = os.path.join(build, "lint_headers")
    os.makedirs(scratch, exist_ok=True)
    by_folder = flags_by_folder(build)
    headers = [name[len("src/"):] for name in sources.files("src", suffixes=".h")]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        results = pool.map(lambda header: check(header, by_folder, scratch), headers)
    sources.report([finding for result in results for finding in result])


if __name__ == "__main__":
    main()
