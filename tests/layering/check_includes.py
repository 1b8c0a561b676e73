#!/usr/bin/env python3
"""Checks every #include "..." of the sources against the layering rules.

The link graph keeps the module and the host apart; this keeps their headers
apart too, so that a module file cannot even include a host header, and the
geometry cannot read drawing-file tags. Each source folder has a rule: the
prefixes it may include. A bare "Name.h" must be a private header beside the
including file. Exits 1 and names file, line, include and rule on a breach.
"""
import os
import re
import sys

MODULE = ["frame", "oddata", "search", "records", "resources", "values", "tableeditor",
          "tables", "attributes", "report", "conversion", "convert", "grid"]
MODULE_PREFIXES = [m + "/" for m in MODULE]
# The grid stands on no Object Data type.
OD_HEADERS = ["platform/ObjectData.h", "platform/OdTypes.h", "platform/OdValue.h",
              "platform/Host.h"]

# (folder, allowed prefixes, forbidden headers, what the rule says), first match wins.
RULES = [
    ("src/platform/", ["platform/"], [], "the port includes only its own headers"),
    ("src/grid/", ["grid/", "platform/"], OD_HEADERS,
     "the grid includes only its own headers and the port's, and no Object Data type"),
] + [
    ("src/%s/" % m, ["platform/"] + MODULE_PREFIXES, [],
     "the module (src/%s) includes only platform/ and module headers" % m)
    for m in MODULE if m != "grid"
] + [
    ("src/host/db/", ["platform/", "host/db/"], [],
     "the database includes only platform/ and host/db/ headers"),
    ("src/host/geometry/", ["platform/", "host/db/", "host/geometry/"], [],
     "the geometry includes only platform/, host/db/ and host/geometry/ headers: "
     "it reads no drawing-file tags"),
    ("src/host/dxf/", ["platform/", "host/db/", "host/dxf/"], [],
     "the drawing files include only platform/, host/db/ and host/dxf/ headers"),
    ("src/host/", ["platform/", "host/"], [],
     "the host includes only platform/ and host/ headers, never the module's"),
]

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')


def rule_of(path):
    for folder, allowed, forbidden, text in RULES:
        if path.startswith(folder):
            return allowed, forbidden, text
    return None


def check(root):
    breaches = []
    for base, _, files in os.walk(os.path.join(root, "src")):
        for name in sorted(files):
            if not name.endswith((".h", ".cpp")):
                continue
            full = os.path.join(base, name)
            path = os.path.relpath(full, root).replace(os.sep, "/")
            rule = rule_of(path)
            if rule is None:
                breaches.append("%s: no layering rule covers this folder" % path)
                continue
            allowed, forbidden, text = rule
            with open(full, encoding="utf-8", errors="replace") as f:
                for number, line in enumerate(f, 1):
                    m = INCLUDE.match(line)
                    if not m:
                        continue
                    header = m.group(1)
                    if "/" not in header:
                        if not os.path.exists(os.path.join(base, header)):
                            breaches.append('%s:%d: #include "%s" is no private header beside '
                                            "the file; include other libraries' headers by "
                                            "their folder" % (path, number, header))
                        continue
                    if header in forbidden or not any(header.startswith(p) for p in allowed):
                        breaches.append('%s:%d: #include "%s" breaks the layering: %s'
                                        % (path, number, header, text))
    return breaches


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "..")
    breaches = check(os.path.abspath(root))
    for b in breaches:
        print(b)
    if breaches:
        print("%d include(s) break the layering." % len(breaches))
        return 1
    print("Every include keeps to the layering.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
