#!/usr/bin/python3
"""Prints a canonical text summary of a DXF file as ezdxf (an independent reader) sees it.

Usage: /usr/bin/python3 tests/host/dxf/dxf_summary.py [--no-handles] [--skip-od] FILE

Two files holding the same drawing give the same summary, so diffing summaries checks a
writer against a reader it does not share code with. Covered: header variables, classes,
symbol tables, block definitions, model and paper space entities in order (properties,
geometry, attributes, vertices, XDATA, extension dictionaries), the named object dictionary
tree, any object not reached from it, the host's Object Data (ZARVEL_OD_TABLES definitions
and each entity's ZARVEL_OD records, decoded) and ezdxf's audit.

--no-handles  leaves handles out; a reference prints as the kind (and name) of its target.
--skip-od     ignores the Object Data entries, for comparing with a drawing that has none.
Geometry is rounded to 12 significant digits; Object Data reals print exactly.
Exit status 1 with a message on stderr when ezdxf cannot read the file.
"""
import argparse
import hashlib
import re
import sys

import ezdxf

OD_TABLES_KEY = "ZARVEL_OD_TABLES"
OD_RECORDS_KEY = "ZARVEL_OD"
OD_TYPES = {1: "integer", 2: "real", 3: "character", 4: "point"}
OD_VALUE_CODES = {90: 1, 40: 2, 1: 3, 10: 4}  # group code -> OD type
# Not part of the drawing: refreshed by every save, or (the GUIDs and $TDCREATE) made up
# afresh by ezdxf whenever it loads a file, so they never show what the file holds.
VOLATILE_HEADER = {"$TDCREATE", "$TDUPDATE", "$TDUUPDATE", "$TDINDWG", "$TDUSRTIMER",
                   "$VERSIONGUID", "$FINGERPRINTGUID"}
HANDLE_HEADER = {"$HANDSEED"}
REFERENCE_HEADER = {"$CMATERIAL", "$INTERFEREOBJVS", "$INTERFEREVPVS", "$DRAGVS"}
WRITER_METADATA = {"EZDXF_META"}
UNICODE_ESCAPE = re.compile(r"\\U\+([0-9A-Fa-f]{4})")


def is_handle_code(code):
    # 5/105 (own handle) are left out on purpose: attributes named "handle" are skipped by
    # name, and DIMSTYLE uses 5 for a block name.
    return code == 1005 or 320 <= code <= 369 or 390 <= code <= 399 \
        or 480 <= code <= 481


class Summary:
    def __init__(self, doc, handles, skip_od):
        self.doc = doc
        self.handles = handles
        self.skip_od = skip_od
        self.lines = []
        self.seen = set()  # handles of objects already printed
        self.od_tables = {}

    # ------------------------------------------------------------ formatting

    def out(self, depth, text):
        self.lines.append("  " * depth + text)

    @staticmethod
    def num(v):
        s = "%.12g" % (0.0 if abs(v) < 1e-12 else v)
        return "0" if s == "-0" else s

    def text(self, s):
        # R2000/R2004 files carry non-code-page characters as \U+XXXX, which ezdxf leaves
        # escaped: decode so the same text compares equal whatever encoding was written.
        s = UNICODE_ESCAPE.sub(lambda m: chr(int(m.group(1), 16)), s)
        return '"%s"' % s.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")

    def ref(self, handle):
        if self.handles:
            return "#" + str(handle)
        target = self.doc.entitydb.get(handle) if handle else None
        if target is None:
            return "@null" if handle in (None, "", "0") else "@dangling"
        name = target.dxf.get("name") if target.dxf.is_supported("name") else None
        return "@" + target.dxftype() + ("" if name is None else ":" + name)

    def value(self, v, code=None):
        if code is not None and is_handle_code(code):
            return self.ref(v)
        if v is None:
            return "none"
        if isinstance(v, bool):
            return str(int(v))
        if isinstance(v, int):
            return str(v)
        if isinstance(v, float):
            return self.num(v)
        if isinstance(v, str):
            return self.text(v)
        if isinstance(v, (bytes, bytearray)):
            return "bytes[%d]:%s" % (len(v), hashlib.md5(v).hexdigest()[:12])
        try:
            return "(" + ", ".join(self.num(float(c)) for c in v) + ")"
        except TypeError:  # not a vector: a sequence of values or vectors
            return "[" + ", ".join(self.value(c) for c in v) + "]"

    def tags(self, depth, tags):
        for tag in tags:
            self.out(depth, "%d %s" % (tag.code, self.value(tag.value, tag.code)))

    def attribs(self, obj, skip=("handle", "owner")):
        parts = []
        for name, v in sorted(obj.dxf.all_existing_dxf_attribs().items()):
            if name in skip:
                continue
            attr = type(obj).DXFATTRIBS.get(name)
            parts.append("%s=%s" % (name, self.value(v, attr.code if attr else None)))
        return " ".join(parts)

    def heading(self, obj, label=None):
        h = "#%s " % obj.dxf.handle if self.handles and obj.dxf.handle else ""
        return h + (label or obj.dxftype())

    # --------------------------------------------------------------- objects

    def extras(self, depth, obj):
        """What any DXF object may carry: app data, reactors, XDATA, extension dictionary."""
        for app, tags in sorted((getattr(obj.appdata, "data", None) or {}).items()):
            self.out(depth, "appdata %s" % app)
            self.tags(depth + 1, tags)
        reactors = obj.get_reactors()
        if reactors:
            self.out(depth, "reactors " + " ".join(sorted(self.ref(h) for h in reactors)))
        if obj.xdata:
            for app in sorted(obj.xdata.data):
                self.out(depth, "xdata %s" % self.text(app))
                self.tags(depth + 1, obj.get_xdata(app))
        if obj.has_extension_dict:
            xdict = obj.get_extension_dict().dictionary
            self.dictionary(depth, "xdict", xdict, in_xdict=True)

    def dictionary(self, depth, key, d, in_xdict=False):
        entries = []
        for k, v in d.items():
            if self.skip_od and in_xdict and k == OD_RECORDS_KEY:
                self.mark_seen(v)
            else:
                entries.append((k, v))
        self.seen.add(d.dxf.handle)
        if in_xdict and not entries:
            # With --skip-od an extension dictionary left empty by removing Object Data
            # counts as none at all.
            if not self.skip_od:
                self.out(depth, "xdict (empty)")
            return
        self.out(depth, "%s: %s %s" % (key, self.heading(d), self.attribs(d)))
        self.extras(depth + 1, d)
        for k, v in sorted(entries, key=lambda kv: kv[0]):
            if in_xdict and k == OD_RECORDS_KEY and v.dxftype() == "XRECORD":
                self.seen.add(v.dxf.handle)
                self.od_records(depth + 1, v)
            else:
                self.obj(depth + 1, k, v)

    def obj(self, depth, key, o):
        if isinstance(o, str):  # an entry whose target ezdxf could not resolve
            self.out(depth, "%s: %s" % (key, self.ref(o)))
            return
        if o.dxf.handle in self.seen:
            self.out(depth, "%s: (see %s)" % (key, self.ref(o.dxf.handle)))
            return
        if o.dxftype() in ("DICTIONARY", "ACDBDICTIONARYWDFLT"):
            self.dictionary(depth, key, o)
            return
        self.seen.add(o.dxf.handle)
        self.out(depth, "%s: %s %s" % (key, self.heading(o), self.attribs(o)))
        self.extras(depth + 1, o)
        if o.dxftype() == "XRECORD":
            self.tags(depth + 1, o.tags)

    # ----------------------------------------------------------- Object Data

    def od_definitions(self):
        tables = self.doc.rootdict.get(OD_TABLES_KEY)
        if tables is None:
            return
        self.out(0, "OD TABLES")
        if tables.dxftype() != "DICTIONARY":
            self.out(1, "ERROR %s is a %s, not a DICTIONARY" % (OD_TABLES_KEY, tables.dxftype()))
            return
        for name, xrec in sorted(tables.items(), key=lambda kv: kv[0]):
            self.out(1, "%s %s" % (self.heading(xrec, "table"), self.text(name)))
            if isinstance(xrec, str) or xrec.dxftype() != "XRECORD":
                self.out(2, "ERROR entry is not an XRECORD")
                continue
            columns, errors = [], []
            tags = list(xrec.tags)
            i = 0
            while i < len(tags):
                group = tags[i:i + 4]
                codes = [t.code for t in group]
                if codes[:3] != [2, 70, 3] or len(group) < 4:
                    errors.append("column %d: expected 2,70,3,value got %s" % (len(columns), codes))
                    break
                kind = group[1].value
                if OD_VALUE_CODES.get(group[3].code) != kind:
                    errors.append("column %s: type %s with default code %d"
                                  % (group[0].value, kind, group[3].code))
                columns.append((group[0].value, kind))
                self.out(2, "%s %s %s default=%s" % (
                    self.text(group[0].value), OD_TYPES.get(kind, "type%s" % kind),
                    self.text(group[2].value), self.od_value(group[3])))
                i += 4
            for e in errors:
                self.out(2, "ERROR " + e)
            self.od_tables[name] = columns

    def od_value(self, tag):
        if tag.code == 90:
            return str(tag.value)
        if tag.code == 40:
            return repr(float(tag.value))  # exact: OD values compare exactly
        if tag.code == 10:
            return "(" + ", ".join(repr(float(c)) for c in tag.value) + ")"
        return self.text(tag.value)

    def od_records(self, depth, xrec):
        records, current = [], None
        for tag in xrec.tags:
            if tag.code == 2:
                current = (tag.value, [])
                records.append(current)
            elif current is None or tag.code not in OD_VALUE_CODES:
                self.out(depth, "od ERROR unexpected tag %d %s" % (tag.code, self.value(tag.value)))
            else:
                current[1].append(tag)
        for table, values in records:
            line = "od %s: %s" % (self.text(table), ", ".join(self.od_value(t) for t in values))
            columns = self.od_tables.get(table)
            if columns is None:
                line += "  ERROR no such table"
            elif [OD_VALUE_CODES[t.code] for t in values] != [k for _, k in columns]:
                line += "  ERROR values do not match the columns"
            self.out(depth, line)

    # -------------------------------------------------------------- entities

    def entity(self, depth, e):
        self.seen.add(e.dxf.handle)
        self.out(depth, "%s %s" % (self.heading(e), self.attribs(e)))
        self.extras(depth + 1, e)
        t = e.dxftype()
        d = depth + 1
        if t == "LWPOLYLINE":
            for p in e.get_points("xyseb"):
                self.out(d, "v " + self.value(p))
        elif t == "POLYLINE":
            for v in e.vertices:
                self.entity(d, v)
            self.entity(d, e.seqend)
        elif t == "INSERT":
            for a in e.attribs:
                self.entity(d, a)
            if e.attribs and e.seqend is not None:
                self.entity(d, e.seqend)
        elif t == "SPLINE":
            for name in ("control_points", "fit_points", "knots", "weights"):
                values = list(getattr(e, name))
                if values:
                    self.out(d, "%s %s" % (name, " ".join(self.value(v) for v in values)))
        elif t == "MLINE":
            for v in e.vertices:
                self.out(d, "v %s dir=%s miter=%s lines=%s fills=%s" % (
                    self.value(v.location), self.value(v.line_direction),
                    self.value(v.miter_direction),
                    self.value([list(p) for p in v.line_params]),
                    self.value([list(p) for p in v.fill_params])))
        elif t in ("HATCH", "MPOLYGON"):
            self.hatch(d, e)
        elif t == "MTEXT":
            self.out(d, "text " + self.text(e.text))
        elif t in ("3DSOLID", "REGION", "BODY", "SURFACE"):
            data = e.sab if e.has_binary_data else "\n".join(e.sat).encode("utf8")
            self.out(d, "acis %s" % self.value(bytes(data)))
        elif t == "LEADER":
            for v in e.vertices:
                self.out(d, "v " + self.value(v))
        elif t == "VIEWPORT":
            names = e.frozen_layer_names if hasattr(e, "frozen_layer_names") else []
            if names:
                self.out(d, "frozen " + " ".join(self.text(n) for n in names))

    def hatch(self, d, e):
        for path in e.paths:
            kind = type(path).__name__
            self.out(d, "path %s flags=%d" % (kind, path.path_type_flags))
            if kind == "PolylinePath":
                self.out(d + 1, "closed=%d" % path.is_closed)
                for v in path.vertices:
                    self.out(d + 1, "v " + self.value(v))
            else:
                for edge in path.edges:
                    fields = sorted((k, v) for k, v in vars(edge).items()
                                    if not k.startswith("_"))
                    self.out(d + 1, "%s %s" % (type(edge).__name__, " ".join(
                        "%s=%s" % (k, self.value(v)) for k, v in fields)))
            refs = getattr(path, "source_boundary_objects", [])
            if refs:
                self.out(d + 1, "sources " + " ".join(self.ref(h) for h in refs))
        if e.pattern:
            for line in e.pattern.lines:
                self.out(d, "pattern angle=%s base=%s offset=%s dashes=%s" % (
                    self.num(line.angle), self.value(line.base_point),
                    self.value(line.offset), self.value(list(line.dash_length_items))))
        if e.gradient:
            g = e.gradient
            self.out(d, "gradient %s" % " ".join("%s=%s" % (k, self.value(v)) for k, v in
                                                 sorted(vars(g).items()) if v is not None))
        if e.seeds:
            self.out(d, "seeds " + " ".join(self.value(s) for s in e.seeds))

    # -------------------------------------------------------------- sections

    def header(self):
        self.out(0, "VERSION %s encoding=%s" % (self.doc.dxfversion, self.doc.encoding))
        self.out(0, "HEADER")
        skip = VOLATILE_HEADER | (set() if self.handles else HANDLE_HEADER)
        for name in sorted(self.doc.header.varnames()):
            if name not in skip:
                v = self.doc.header[name]
                self.out(1, "%s %s" % (name, self.ref(v) if name in REFERENCE_HEADER
                                       else self.value(v)))

    def classes(self):
        self.out(0, "CLASSES")
        for c in sorted(self.doc.classes.classes.values(), key=lambda c: c.dxf.name):
            self.out(1, self.attribs(c, skip=("handle", "owner", "instance_count")))

    def tables(self):
        d = self.doc
        for title, table in (("LAYERS", d.layers), ("LINETYPES", d.linetypes),
                             ("STYLES", d.styles), ("DIMSTYLES", d.dimstyles),
                             ("APPIDS", d.appids), ("UCS", d.ucs), ("VIEWS", d.views),
                             ("VPORTS", d.viewports)):
            self.out(0, title)
            for entry in sorted(table, key=lambda t: (t.dxf.name, t.dxf.handle or "")):
                self.seen.add(entry.dxf.handle)
                label = "%s %s" % (entry.dxftype(), self.text(entry.dxf.name))
                extra = ""
                if entry.dxftype() == "LAYER":
                    states = [s for s, on in (("frozen", entry.is_frozen()),
                                              ("locked", entry.is_locked()),
                                              ("off", entry.is_off())) if on]
                    extra = " state=" + (",".join(states) or "normal")
                self.out(1, "%s %s%s" % (self.heading(entry, label),
                                         self.attribs(entry, ("handle", "owner", "name")),
                                         extra))
                self.extras(2, entry)
                if entry.dxftype() == "LTYPE" and entry.pattern_tags.tags:
                    self.out(2, "pattern " + " ".join(
                        "%d=%s" % (t.code, self.value(t.value, t.code))
                        for t in entry.pattern_tags.tags))

    def blocks(self):
        self.out(0, "BLOCKS")
        for block in sorted(self.doc.blocks, key=lambda b: b.name):
            if block.is_any_layout:
                continue  # printed with the layouts
            self.block_header(1, block)
            for e in block:
                self.entity(2, e)

    def block_header(self, depth, block):
        rec, blk = block.block_record, block.block
        for o in (rec, blk, block.endblk):
            self.seen.add(o.dxf.handle)
        self.out(depth, "%s %s | %s" % (
            self.heading(rec, "BLOCK %s" % self.text(block.name)),
            self.attribs(rec, ("handle", "owner", "name", "layout")),
            self.attribs(blk, ("handle", "owner", "name", "name2"))))
        self.extras(depth + 1, rec)
        self.extras(depth + 1, blk)

    def layouts(self):
        for name in self.doc.layouts.names_in_taborder():
            layout = self.doc.layouts.get(name)
            self.out(0, "LAYOUT %s" % self.text(name))
            self.block_header(1, self.doc.blocks.get(layout.block_record_name))
            for e in layout:
                self.entity(1, e)

    def objects(self):
        self.out(0, "ROOT DICTIONARY")
        root = self.doc.rootdict
        self.seen.add(root.dxf.handle)
        self.extras(1, root)
        for key, o in sorted(root.items(), key=lambda kv: kv[0]):
            if key in WRITER_METADATA or key == OD_TABLES_KEY:
                self.mark_seen(o)
                continue
            self.obj(1, key, o)
        # ezdxf keeps hidden objects (e.g. ACDSDATA-related or orphans) in OBJECTS too.
        rest = [o for o in self.doc.objects if o.dxf.handle not in self.seen]
        if rest:
            self.out(0, "OTHER OBJECTS")
            for o in rest:
                self.obj(1, "-", o)

    def mark_seen(self, o):
        if isinstance(o, str):
            return
        self.seen.add(o.dxf.handle)
        if o.dxftype() == "DICTIONARY":
            for _, v in o.items():
                if not isinstance(v, str):
                    self.mark_seen(v)

    def audit(self):
        auditor = self.doc.audit()
        self.out(0, "AUDIT errors=%d fixes=%d" % (len(auditor.errors), len(auditor.fixes)))
        for entry in auditor.errors + auditor.fixes:
            msg = entry.message
            if not self.handles:
                msg = re.sub(r"#[0-9A-Fa-f]+", "#?", msg)
            self.out(1, msg)

    def run(self):
        self.header()
        self.classes()
        self.tables()
        if not self.skip_od:
            self.od_definitions()
        self.blocks()
        self.layouts()
        self.objects()
        self.audit()  # last: auditing may change the document
        return "\n".join(self.lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("file")
    parser.add_argument("--no-handles", action="store_true")
    parser.add_argument("--skip-od", action="store_true")
    args = parser.parse_args()
    try:
        doc = ezdxf.readfile(args.file)
    except Exception as exc:  # any failure to read is the answer, not a crash
        print("dxf_summary: ezdxf cannot read %s: %s: %s"
              % (args.file, type(exc).__name__, exc), file=sys.stderr)
        return 1
    # Undecodable bytes reach us as surrogates; show them rather than fail.
    sys.stdout.reconfigure(encoding="utf-8", errors="backslashreplace")
    sys.stdout.write(Summary(doc, not args.no_handles, args.skip_od).run())
    return 0


if __name__ == "__main__":
    sys.exit(main())
