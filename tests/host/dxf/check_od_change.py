#!/usr/bin/python3
"""Checks, with an independent reader, what a zarvel command did to a drawing.

Usage: check_od_change.py BEFORE AFTER EXPECTATION

Everything but the Object Data must read the same in both files (compared through
dxf_summary.py --skip-od). EXPECTATION says what must have become of the records:
  rm-all           on the entities of model space whose layer is neither frozen, locked
                   nor off, every record of a user table is gone; records of the topology
                   tables (names beginning TPMCNTR_, TPMDESC_, TPMID_, TPMLINK_, TPMNODE_,
                   CNTR_) stay, in order; every other entity keeps all its records
  unchanged        every entity carries exactly the records it carried
"""
import os
import re
import subprocess
import sys

import ezdxf

UNICODE_ESCAPE = re.compile(r"\\U\+([0-9A-Fa-f]{4})")
SYSTEM_PREFIXES = ("TPMCNTR_", "TPMDESC_", "TPMID_", "TPMLINK_", "TPMNODE_", "CNTR_")
HERE = os.path.dirname(os.path.abspath(__file__))


def summary(path):
    return subprocess.run([sys.executable, os.path.join(HERE, "dxf_summary.py"), "--skip-od",
                           path], check=True, capture_output=True, text=True).stdout


def usable_model_space(path):
    """Handles of the entities of model space on a usable layer."""
    doc = ezdxf.readfile(path)
    handles = set()
    for e in doc.modelspace():
        layer = doc.layers.get(e.dxf.layer) if doc.layers.has_entry(e.dxf.layer) else None
        if layer is not None and (layer.is_frozen() or layer.is_locked() or layer.is_off()):
            continue
        handles.add(e.dxf.handle)
    return handles


def records(path):
    """Entity handle -> list of (table, values) in order."""
    doc = ezdxf.readfile(path)
    result = {}
    for e in doc.entitydb.values():
        if not hasattr(e, "has_extension_dict") or not e.has_extension_dict:
            continue
        xdict = e.get_extension_dict()
        if "ZARVEL_OD" not in xdict:
            continue
        recs = []
        for code, value in xdict["ZARVEL_OD"].tags:
            if code == 2:
                recs.append((value, []))
            elif recs:
                if isinstance(value, str):
                    # The reader leaves the escapes of old files; either case is one character.
                    value = UNICODE_ESCAPE.sub(lambda m: chr(int(m.group(1), 16)), value)
                recs[-1][1].append((code, value))
        result[e.dxf.handle] = recs
    return result


def main():
    before, after, expectation = sys.argv[1:4]
    if summary(before) != summary(after):
        sys.exit("the drawings differ in more than their Object Data")
    old, new = records(before), records(after)
    if expectation == "unchanged":
        expected = old
    elif expectation == "rm-all":
        usable = usable_model_space(before)
        expected = {}
        for handle, recs in old.items():
            kept = recs
            if handle in usable:
                kept = [r for r in recs if r[0].startswith(SYSTEM_PREFIXES)]
            if kept:
                expected[handle] = kept
    else:
        sys.exit("unknown expectation " + expectation)
    new = {h: r for h, r in new.items() if r}
    if new != expected:
        for h in sorted(set(new) | set(expected)):
            if new.get(h) != expected.get(h):
                print(f"entity {h}: expected {expected.get(h)}, found {new.get(h)}")
        sys.exit("the Object Data is not what the command should leave")
    print(f"ok: {len(old)} entities had records, {len(new)} have now")


if __name__ == "__main__":
    main()
