#!/usr/bin/env python3
"""Fails when a file of a layer includes a header of a layer above it, or when
the layer's library compiles a source of another layer.

usage: tav_layer_check.py TABLE LAYER STAMP ROOT... -- FILE... [--compiled SOURCE...]

TABLE is cmake/TavLayers.txt; ROOTs are the trees the table's paths are relative
to (the sources and the generated code). Files that LAYER does not own are passed
over, so a layer may hand in its folders' files wholesale. The SOURCEs its library
compiles must all be its own. STAMP is written when the layer is clean.
"""
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
# Public headers are included by their installed path.
INSTALLED = (("tav/", "export/include/tav/"), ("BRIX/", "platform/include/BRIX/"), ("hull/", "platform/include/hull/"))


def read_table(path):
    """Layers in order, owned path -> layer, and allowed includes by including path.
    A line that starts with blanks goes on with the layer above it."""
    layers, owned, allowed, current = [], {}, {}, None
    with open(path) as table:
        for number, line in enumerate(table, 1):
            words = line.split("#", 1)[0].split()
            if not words:
                continue
            if line[0].isspace() and current:
                paths = words
            elif words[0] == "layer" and len(words) >= 3:
                current, paths = words[1], words[2:]
                layers.append(current)
            elif words[0] == "allow" and len(words) == 3:
                current, paths = None, []
                allowed.setdefault(words[1].rstrip("/"), set()).add(words[2])
            else:
                sys.exit(f"{path}:{number}: expected 'layer <name> <path>...' or 'allow <path> <header>'")
            for entry in paths:
                owned[entry.rstrip("/")] = current
    return layers, owned, allowed


def owner(path, owned):
    """The layer of the longest owned entry that is path or one of its folders."""
    while path:
        if path in owned:
            return owned[path]
        path = os.path.dirname(path)
    return None


def repo_path(include, quoted, including):
    for prefix, folder in INSTALLED:
        if include.startswith(prefix):
            return folder + include[len(prefix):]
    # A bare quoted name is the including file's neighbour.
    return os.path.join(os.path.dirname(including), include) if quoted and "/" not in include else include


def is_allowed(path, include, allowed):
    while path:
        if include in allowed.get(path, ()):
            return True
        path = os.path.dirname(path)
    return False


def main(argv):
    if "--" not in argv or len(argv) < 5:
        sys.exit(__doc__)
    split = argv.index("--")
    table, layer, stamp, roots, files = argv[1], argv[2], argv[3], argv[4:split], argv[split + 1:]
    compiled = []
    if "--compiled" in files:
        at = files.index("--compiled")
        files, compiled = files[:at], files[at + 1:]
    layers, owned, allowed = read_table(table)
    if layer not in layers:
        sys.exit(f"{table}: no layer '{layer}'")
    rank = layers.index(layer)
    # The generated tree lies inside the source tree: the deepest root names a file.
    roots = sorted((os.path.realpath(r) for r in roots), key=len, reverse=True)

    def relative(name):
        full = os.path.realpath(name)
        return next((os.path.relpath(full, r) for r in roots if full.startswith(r + os.sep)), None)

    failures = []
    for name in compiled:
        rel = relative(name)
        holder = rel and owner(rel, owned)
        if holder != layer:
            failures.append(f"{name}: compiled into layer '{layer}' but owned by "
                            + (f"layer '{holder}'" if holder else "no layer"))
    for name in dict.fromkeys(files + compiled):
        rel = relative(name)
        if rel is None or owner(rel, owned) != layer:
            continue
        full = os.path.realpath(name)
        with open(full, encoding="utf-8", errors="replace") as source:
            for number, line in enumerate(source, 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                quote, include = match.groups()
                target = owner(repo_path(include, quote == '"', rel), owned)
                if target and layers.index(target) > rank and not is_allowed(rel, include, allowed):
                    failures.append(f"{name}:{number}: layer '{layer}' includes <{include}> "
                                    f"of layer '{target}' above it")
    if failures:
        if os.path.exists(stamp):
            os.remove(stamp)
        sys.exit("\n".join(failures))
    with open(stamp, "w"):
        pass


if __name__ == "__main__":
    main(sys.argv)
