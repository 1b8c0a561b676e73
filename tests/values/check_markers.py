#!/usr/bin/python3
"""The markers of set from text, saved and read back with an independent reader (ezdxf).

Usage: /usr/bin/python3 tests/values/check_markers.py ZARVEL DRAWING WORKDIR

DRAWING is tests/scripts/settext.dxf. After one run at a tolerance of 2 the saved file holds
a yellow layer zarvel_error, a block zarvel_error of one circle of radius 1 coloured by block,
and one reference of it on that layer, scaled by 2 and coloured by layer, at each of the four
rival texts; a second run adds four more. Undone, the run leaves none of them.
"""
import os
import subprocess
import sys

import ezdxf

RUN = """-ODDEFINE
Labels
NAME
Character
-

-ODATTACH
Labels

ALL

ZARVEL_SETTEXT
Labels
NAME
2


"""
RIVALS = {(22.0, 2.0), (28.0, 8.0), (22.0, 21.0), (28.0, 21.0)}
failures = []


def check(condition, message):
    if not condition:
        failures.append(message)


def saved(zarvel, drawing, script, out):
    subprocess.run([zarvel, drawing, "-s", "-", "-o", out], input=script.encode(), check=True,
                   stdout=subprocess.DEVNULL)
    return ezdxf.readfile(out)


def markers(doc):
    return [e for e in doc.modelspace().query("INSERT") if e.dxf.name == "zarvel_error"]


def main():
    zarvel, drawing, work = sys.argv[1:4]
    os.makedirs(work, exist_ok=True)

    doc = saved(zarvel, drawing, RUN, os.path.join(work, "marked.dxf"))
    layer = doc.layers.get("zarvel_error") if doc.layers.has_entry("zarvel_error") else None
    check(layer is not None, "no layer zarvel_error")
    if layer is not None:
        check(layer.rgb == (255, 255, 0), f"layer colour {layer.rgb}")
        check(layer.is_on() and not layer.is_frozen() and not layer.is_locked(), "layer state")
    block = doc.blocks.get("zarvel_error")
    check(block is not None, "no block zarvel_error")
    if block is not None:
        circles = [(e.dxf.center, e.dxf.radius, e.dxf.color) for e in block]
        check(len(circles) == 1 and circles[0][0] == (0, 0, 0) and circles[0][1] == 1.0
              and circles[0][2] == 0, f"block holds {circles}")
    found = markers(doc)
    check({(m.dxf.insert.x, m.dxf.insert.y) for m in found} == RIVALS and len(found) == 4,
          f"markers at {[tuple(m.dxf.insert) for m in found]}")
    for m in found:
        check(m.dxf.layer == "zarvel_error" and m.dxf.color == 256, f"marker {m.dxf.handle}")
        check((m.dxf.xscale, m.dxf.yscale, m.dxf.zscale) == (2, 2, 2), f"scale {m.dxf.handle}")

    # A second run marks the same rivals again, beside the first markers.
    again = RUN[RUN.index("ZARVEL_SETTEXT"):]
    twice = saved(zarvel, drawing, RUN + again, os.path.join(work, "twice.dxf"))
    check(len(markers(twice)) == 8, f"{len(markers(twice))} markers after two runs")

    undone = saved(zarvel, drawing, RUN + "UNDO\n1\n", os.path.join(work, "undone.dxf"))
    check(not undone.layers.has_entry("zarvel_error"), "layer left after UNDO")
    check(undone.blocks.get("zarvel_error") is None, "block left after UNDO")
    check(not markers(undone), "markers left after UNDO")

    for f in failures:
        print("FAIL:", f)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
