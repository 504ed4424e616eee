"""Command line: python3 -m tavgen DESCRIPTION OUTDIR [--list] [--check]."""

from __future__ import annotations

import argparse
import os
import sys

from .cpp import Emitter, GeneratorError
from .parser import DescriptionError, parse_file


def write_if_changed(path: str, text: str) -> bool:
    # Unchanged files keep their time stamps, so a description edit rebuilds only what moved.
    try:
        with open(path, encoding="utf-8") as f:
            if f.read() == text:
                return False
    except FileNotFoundError:
        pass
    os.makedirs(os.path.dirname(path), exist_ok=True)
    tmp = path + ".tmp"
    with open(tmp, "w", encoding="utf-8") as f:
        f.write(text)
    os.replace(tmp, path)
    return True


def main(argv=None) -> int:
    ap = argparse.ArgumentParser(prog="tavgen", description="Generate the metaclass family of a metamodel.")
    ap.add_argument("description")
    ap.add_argument("outdir", nargs="?")
    ap.add_argument("--list", action="store_true", help="print the files that would be written, relative to OUTDIR")
    ap.add_argument("--check", action="store_true", help="only parse and validate")
    ap.add_argument("--deferred", action="store_true", help="print the properties not emitted yet, and why")
    ap.add_argument("--stamp", help="file touched after a successful run")
    ap.add_argument("-I", "--import-path", action="append", default=[], metavar="DIR",
                    help="where imported descriptions are looked for after the description's own folder")
    args = ap.parse_args(argv)
    try:
        mm = parse_file(args.description, args.import_path)
    except DescriptionError as e:
        print(f"tavgen: error: {e}", file=sys.stderr)
        return 1
    except OSError as e:
        print(f"tavgen: error: {e}", file=sys.stderr)
        return 1
    if args.check:
        return 0
    em = Emitter(mm, os.path.basename(args.description))
    try:
        files = em.run()
    except GeneratorError as e:
        print(f"tavgen: error: {e}", file=sys.stderr)
        return 1
    if args.deferred:
        for cls, prop, why in em.P.deferred():
            print(f"{cls}.{prop}: {why}")
        return 0
    if args.list:
        for name in sorted(files):
            print(name)
        return 0
    if not args.outdir:
        ap.error("OUTDIR is required")
    for name, text in files.items():
        write_if_changed(os.path.join(args.outdir, name), text)
    if args.stamp:
        with open(args.stamp, "w", encoding="utf-8") as f:
            f.write("\n".join(sorted(files)) + "\n")
    return 0


if __name__ == "__main__":
    sys.exit(main())
