#!/usr/bin/python3
"""Edits that must leave a drawing whole, checked with an independent reader (ezdxf).

Usage: /usr/bin/python3 tests/host/dxf/check_edits.py ZARVEL WORKDIR

copy   COPY of everything in drawings of 2000, 2013 and 2018: each copy has all its
       original had (thickness, XDATA, the columns of a multiline text, its attributes'
       XDATA), its own handles wherever its XDATA named the original, and no part in the
       original's group.
erase  ERASE of a group member and of an image: the group no longer lists the member,
       the image definition no longer lists the image's reactor; after UNDO the drawing
       saves as the very file it was read from.
"""
import collections
import os
import subprocess
import sys

import ezdxf

DELTA = 100.0
failures = []


def check(condition, message):
    if not condition:
        failures.append(message)


def run(zarvel, drawing, script, out):
    subprocess.run([zarvel, drawing, "-s", "-", "-o", out], input=script.encode(), check=True,
                   stdout=subprocess.DEVNULL)
    return ezdxf.readfile(out)


def tags_of(path):
    lines = open(path, encoding="utf-8", errors="replace").read().splitlines()
    return [(int(lines[i]), lines[i + 1]) for i in range(0, len(lines) - 1, 2)]


def duplicate_handles(path):
    counts = collections.Counter(value for code, value in tags_of(path) if code == 5)
    return [h for h, n in counts.items() if n > 1]


def object_tags(path, handle):
    """The tags of the object with the handle, as the file has them."""
    tags = tags_of(path)
    for i, (code, value) in enumerate(tags):
        if code == 5 and value == handle and tags[i - 1][0] == 0:
            end = next(k for k in range(i, len(tags)) if tags[k][0] == 0)
            return tags[i - 1:end]
    return []


def copy_drawing(version, path):
    doc = ezdxf.new(version)
    doc.appids.add("ACME")
    msp = doc.modelspace()
    line = msp.add_line((0, 0), (10, 0), dxfattribs={"thickness": 2.5})
    line.set_xdata("ACME", [(1000, "line"), (1040, 3.5), (1005, line.dxf.handle)])
    group = doc.groups.new("PAIR")
    group.extend([line])
    line.set_reactors([group.dxf.handle])
    msp.add_polyline2d([(0, 5), (5, 5), (5, 8)], dxfattribs={"thickness": 1.5})
    msp.add_mtext_static_columns(["first column", "second column", "third"], width=10,
                                 gutter_width=1, height=20)
    doc.blocks.new("TAGGED").add_attdef("TAG", (0, 0))
    ref = msp.add_blockref("TAGGED", (30, 30))
    ref.add_attrib("TAG", "value", (30, 30)).set_xdata("ACME", [(1000, "attribute")])
    doc.saveas(path)


def xdata_of(e):
    return [tuple(t) for t in e.get_xdata("ACME")] if e.has_xdata("ACME") else None


def check_copy(zarvel, work):
    for version in ["R2000", "R2013", "R2018"]:
        source = os.path.join(work, "copy_%s.dxf" % version)
        out = os.path.join(work, "copy_%s_out.dxf" % version)
        copy_drawing(version, source)
        doc = run(zarvel, source, "COPY\nALL\n\n0,0\n%g,0\n" % DELTA, out)
        where = "copy %s: " % version
        check(not duplicate_handles(out), where + "handles twice: %s" % duplicate_handles(out))
        check(not doc.audit().has_errors, where + "ezdxf's audit finds errors")
        entities = list(doc.modelspace())
        check(len(entities) == 8, where + "%d entities, not 4 and their copies" % len(entities))
        half = len(entities) // 2
        group = [e.dxf.handle for e in doc.groups.get("PAIR")]
        for original, copy in zip(entities[:half], entities[half:]):
            what = where + "%s %s: " % (original.dxftype(), original.dxf.handle)
            check(copy.dxftype() == original.dxftype(), what + "its copy is a " + copy.dxftype())
            if original.dxf.is_supported("thickness"):
                check(copy.dxf.get("thickness") == original.dxf.get("thickness"),
                      what + "thickness %s" % copy.dxf.get("thickness"))
            self_named = [(1005, copy.dxf.handle) if t == (1005, original.dxf.handle) else t
                          for t in xdata_of(original) or []]
            check((xdata_of(copy) or []) == self_named, what + "XDATA %s" % xdata_of(copy))
            check(not copy.get_reactors(), what + "the copy has reactors")
            check(copy.dxf.handle not in group, what + "the copy joined the group")
            if original.dxftype() == "MTEXT":
                texts = [c.text for c in original.columns.linked_columns] if \
                    original.has_columns and original.columns.linked_columns else []
                copied = [c.text for c in copy.columns.linked_columns] if \
                    copy.has_columns and copy.columns.linked_columns else []
                check(copy.has_columns and copied == texts, what + "columns %s" % copied)
                check(copy.text == original.text, what + "text %r" % copy.text)
                check(abs(copy.dxf.insert.x - original.dxf.insert.x - DELTA) < 1e-9,
                      what + "the copy is not moved")
                for a, b in zip(original.columns.linked_columns if texts else [],
                                copy.columns.linked_columns if copied else []):
                    check(abs(b.dxf.insert.x - a.dxf.insert.x - DELTA) < 1e-9,
                          what + "a column of the copy is not moved")
            if original.dxftype() == "INSERT":
                check([xdata_of(a) for a in copy.attribs] == [xdata_of(a) for a in original.attribs],
                      what + "the attributes' XDATA")


def erase_drawing(path):
    doc = ezdxf.new("R2013")
    msp = doc.modelspace()
    members = [msp.add_line((0, 0), (1, 0)), msp.add_line((0, 1), (1, 1))]
    doc.groups.new("PAIR").extend(members)
    definition = doc.add_image_def("photo.png", size_in_pixel=(640, 480))
    images = [msp.add_image(definition, insert=(x, 10), size_in_units=(6.4, 4.8))
              for x in (10, 20)]
    doc.saveas(path)
    return members, images, definition.dxf.handle


def check_erase(zarvel, work):
    source = os.path.join(work, "erase.dxf")
    members, images, definition = erase_drawing(source)
    gone, kept = images
    script = "ERASE\n#%s #%s\n\n" % (members[0].dxf.handle, gone.dxf.handle)
    out = os.path.join(work, "erase_out.dxf")
    doc = run(zarvel, source, script, out)
    listed = [v for c, v in object_tags(out, doc.groups.get("PAIR").dxf.handle) if c == 340]
    check(listed == [members[1].dxf.handle], "erase: the group lists %s" % listed)
    reactors = doc.entitydb[definition].get_reactors()
    check(gone.dxf.image_def_reactor_handle not in reactors and
          kept.dxf.image_def_reactor_handle in reactors,
          "erase: the image definition's reactors are %s" % reactors)
    check(gone.dxf.image_def_reactor_handle not in doc.entitydb,
          "erase: the erased image's reactor is still there")
    undone = os.path.join(work, "erase_undone.dxf")
    run(zarvel, source, script + "UNDO\n1\n", undone)
    check(open(source, "rb").read() == open(undone, "rb").read(),
          "erase: after UNDO the drawing does not save as it was read")


def main():
    zarvel, work = sys.argv[1:3]
    os.makedirs(work, exist_ok=True)
    check_copy(zarvel, work)
    check_erase(zarvel, work)
    for f in failures:
        print("FAIL " + f)
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
