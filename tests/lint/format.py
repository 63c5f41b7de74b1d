"""All sources stand as clang-format writes them."""
import subprocess

import sources


def check(names):
    done = subprocess.run(["clang-format", "--dry-run", "-Werror", *names], cwd=sources.TOP, capture_output=True, text=True)
    return [] if done.returncode == 0 else [done.stderr or f"status {done.returncode}"]


def main():
    sources.report(check(sources.files("src", "tests", "bench", suffixes=(".h", ".cpp"))))


if __name__ == "__main__":
    main()
