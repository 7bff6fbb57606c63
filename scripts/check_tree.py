#!/usr/bin/env python3
"""Checks that read the tree and compile nothing: who includes whom, where the system shows, lengths and words."""

import os
import re
import sys

SKIPPED_FOLDERS = {".git", "build", "corpus", "out", "__pycache__"}
CODE = (".h", ".cpp", ".inc")
TEXT = CODE + (".md", ".txt", ".cmake", ".in", ".json", ".py", "")
LONGEST_FILE = 600

# Which folders of rastel/ a folder may include besides its own.
LOWER = {
    "math": {"platform"},
    "platform": set(),
    "image": {"platform"},
    "surface": {"image", "platform"},
    "alpha": {"surface", "image", "platform"},
    "raster": {"surface", "image", "platform"},
}
LOWER["composite"] = LOWER["alpha"] | {"alpha", "raster", "math"}
LOWER["text"] = LOWER["composite"] | {"composite"}
LOWER["display"] = LOWER["composite"] | {"composite"}
# The manager hands out temporaries to everybody, so its header, full of forward declarations, is seen from below.
SEEN_BY_ALL = {"rastel/display/display_manager.h"}
# Bodies know more than headers do: the members of a class may live in the folder of their subject, as a plane's
# triangles do in raster, and a body knows the classes that its header only names.
BODY_EXTRA = {"surface": {"alpha"}, "alpha": {"raster"}, "raster": {"alpha", "composite", "math"}}

SYSTEM_TEST = re.compile(
    r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(?:_WIN32|_WIN64|WIN32|__MINGW\w*|_MSC_VER|__linux__|__unix__|__APPLE__)\b"
)
SYSTEM_HEADER = re.compile(
    r"(?:windows|windowsx|unistd|fcntl|dlfcn|poll|pthread|signal|spawn|sched|ddraw|d3d9|d3dx9|gdiplus|wingdi|winuser|objbase"
    r"|(?:sys|xcb|X11|arpa|netinet|linux)/.*)(?:\.h)?"
)
# Programs meet the system where they open a window or start a server; such a file has the system in its name.
SYSTEM_FILE = re.compile(r"_(?:xcb|win32|posix)(?:_\w+)?\.(?:h|cpp)$")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')

# Words that say where the text was written, not what the code does.
FORBIDDEN = [
    re.compile(r"\b[Ss]pec(?:ification)?\s(?:says|demands|asks)"),
    re.compile(r"\b[Pp]arts?\s\d+\.\d"),
    re.compile(r"\b[Ii]ssue\s#?\d"),
    re.compile(r"(?<![\w.])/wor[k]\b"),
]
MAY_SAY_ANYTHING = {"DEVELOPERS.md"}

problems = []


def report(path, line, what):
    problems.append(f"{path}:{line}: {what}" if line else f"{path}: {what}")


def tree():
    for folder, folders, files in os.walk("."):
        folders[:] = sorted(f for f in folders if f not in SKIPPED_FOLDERS and not f.startswith("build-"))
        for name in sorted(files):
            path = os.path.relpath(os.path.join(folder, name), ".")
            if os.path.splitext(name)[1] in TEXT and not os.path.islink(path):
                yield path


def check_direction(path, line, header):
    here = path.split("/")
    there = header.split("/")
    if header in SEEN_BY_ALL or here[0] != "rastel" or there[0] != "rastel" or len(here) < 3 or len(there) < 3:
        return
    allowed = LOWER.get(here[1])
    if allowed is None:
        report(path, line, f"folder {here[1]} has no place in the order of folders (scripts/check_tree.py)")
        return
    if not path.endswith(".h"):
        allowed = allowed | BODY_EXTRA.get(here[1], set())
    if there[1] != here[1] and there[1] not in allowed:
        report(path, line, f"{here[1]} may not know {there[1]} ({header})")


def check_system(path, line, text, match):
    if path.startswith("rastel/platform/") or SYSTEM_FILE.search(path):
        return
    if SYSTEM_TEST.match(text):
        report(path, line, "tests for an operating system outside rastel/platform/")
    if not match:
        return
    header = match.group(2)
    # Tests of the platform layer look at the real system beside it.
    if SYSTEM_HEADER.fullmatch(header) and not path.startswith("tests/platform/"):
        report(path, line, f"a header of the operating system outside rastel/platform/: {header}")
    if path.startswith("rastel/") and re.match(r"rastel/platform/(?:windows|portable)/", header):
        report(path, line, f"reaches into one system's half of the platform layer: {header}")


def check_code(path, lines):
    own = os.path.splitext(path)[0] + ".h"
    includes = []
    for line, text in enumerate(lines, 1):
        match = INCLUDE.match(text)
        check_system(path, line, text, match)
        if match:
            includes.append(match.group(2))
            check_direction(path, line, match.group(2))
    if path.endswith(".h") and "#pragma once" not in lines:
        report(path, 0, "no #pragma once")
    if path.endswith(".cpp") and os.path.exists(own) and includes and not own.endswith(includes[0]):
        report(path, 0, "its own header should be the first include, so that nothing hides what that lacks")


def check_words(path, lines):
    if path in MAY_SAY_ANYTHING:
        return
    for line, text in enumerate(lines, 1):
        for pattern in FORBIDDEN:
            if pattern.search(text):
                report(path, line, f"says where it was written rather than what it is: {text.strip()}")


def check_readme():
    for path in ("README.md", "examples/hello/hello.cpp"):
        if not os.path.exists(path):
            report(path, 0, "missing")
            return
    with open("README.md", encoding="utf-8") as file:
        blocks = re.findall(r"^```cpp\n(.*?)^```$", file.read(), re.MULTILINE | re.DOTALL)
    with open("examples/hello/hello.cpp", encoding="utf-8") as file:
        if file.read() not in blocks:
            report("README.md", 0, "its listing differs from examples/hello/hello.cpp")


def main():
    os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
    for path in tree():
        try:
            with open(path, encoding="utf-8") as file:
                content = file.read()
        except UnicodeDecodeError:
            report(path, 0, "not UTF-8")
            continue
        lines = content.splitlines()
        if path.endswith(CODE):
            check_code(path, lines)
        if len(lines) > LONGEST_FILE and not path.endswith((".md", ".txt")):
            report(path, 0, f"{len(lines)} lines; look for the second idea and move it out")
        if content and not content.endswith("\n"):
            report(path, 0, "no end of line at the end")
        check_words(path, lines)
    check_readme()
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
