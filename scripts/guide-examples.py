#!/usr/bin/env python3
"""guide-examples.py (--prefix DIR | --install-from BUILD) WORK [GUIDE]

Builds every ```cpp block of the guide (docs/guide.md by default) as a
program of its own, exactly as printed, against an installed ZEMath found
through find_package, runs each and checks that it exits with 0 and, where
the guide shows its output in the ```text block that follows it, that it
prints exactly that. --prefix names an installed prefix; --install-from
installs the build tree BUILD into WORK/prefix first. The programs are built
with -Wall -Wextra -Werror and run without LD_LIBRARY_PATH."""

import argparse
import os
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def examples(guide):
    """[line, code, expected output or None] of every ```cpp block."""
    found, block, kind, start, previous = [], None, None, 0, None
    for number, line in enumerate(open(guide, encoding="utf-8"), 1):
        fence = line.strip()
        if block is None:
            if fence.startswith("```"):
                block, kind, start = [], fence[3:], number
        elif fence == "```":
            if kind == "cpp":
                found.append([start, "".join(block), None])
            elif kind == "text" and previous == "cpp":
                found[-1][2] = "".join(block)
            previous, block = kind, None
        else:
            block.append(line)
    return found


def main():
    parser = argparse.ArgumentParser()
    where = parser.add_mutually_exclusive_group(required=True)
    where.add_argument("--prefix")
    where.add_argument("--install-from")
    parser.add_argument("work")
    parser.add_argument("guide", nargs="?", default=os.path.join(ROOT, "docs", "guide.md"))
    args = parser.parse_args()

    work = os.path.abspath(args.work)
    os.makedirs(work, exist_ok=True)
    prefix = args.prefix
    if args.install_from:
        prefix = os.path.join(work, "prefix")
        subprocess.run(["cmake", "--install", args.install_from, "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)

    found = examples(args.guide)
    targets = []
    for index, (line, code, _) in enumerate(found, 1):
        name = "example%02d" % index
        with open(os.path.join(work, name + ".cpp"), "w", encoding="utf-8") as source:
            source.write(code)
        targets.append(name)
    with open(os.path.join(work, "CMakeLists.txt"), "w", encoding="utf-8") as project:
        project.write("cmake_minimum_required(VERSION 3.20)\nproject(GuideExamples LANGUAGES CXX)\n"
                      "find_package(ZEMath CONFIG REQUIRED)\n")
        for name in targets:
            project.write("add_executable(%s %s.cpp)\ntarget_link_libraries(%s PRIVATE ZEMath::ZEMath)\n"
                          "target_compile_options(%s PRIVATE -Wall -Wextra -Werror)\n" % (name, name, name, name))

    build = os.path.join(work, "build")
    subprocess.run(["cmake", "-S", work, "-B", build, "-DCMAKE_PREFIX_PATH=" + os.path.abspath(prefix)],
                   check=True, stdout=subprocess.DEVNULL)
    made = subprocess.run(["cmake", "--build", build, "-j", str(os.cpu_count() or 2), "--", "-k"],
                          capture_output=True, text=True)

    environment = {k: v for k, v in os.environ.items() if k != "LD_LIBRARY_PATH"}
    failures = 0
    for name, (line, _, expected) in zip(targets, found):
        program = os.path.join(build, name)
        where = "%s (the block at %s:%d)" % (name, os.path.relpath(args.guide), line)
        if not os.path.exists(program):
            print("FAIL %s does not compile" % where)
            failures += 1
            continue
        run = subprocess.run([program], capture_output=True, text=True, env=environment, timeout=120)
        if run.returncode != 0:
            print("FAIL %s exits with %d\n%s%s" % (where, run.returncode, run.stdout, run.stderr))
            failures += 1
        elif expected is not None and run.stdout != expected:
            print("FAIL %s prints\n%sinstead of\n%s" % (where, run.stdout, expected))
            failures += 1
        else:
            print("ok   %s%s" % (where, "" if expected is None else ", output as shown"))
    if made.returncode != 0:
        print(made.stdout[-20000:] + made.stderr[-20000:])
    print("%d of %d examples of the guide fail" % (failures, len(found)))
    return 1 if failures or not found else 0


if __name__ == "__main__":
    sys.exit(main())
