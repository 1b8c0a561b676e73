#!/usr/bin/python3
"""Generates the DXF test corpus with ezdxf (an independent DXF writer).

Usage: /usr/bin/python3 tests/host/dxf/make_corpus.py OUTDIR

Writes, for every DXF version from R2000 to R2018:
  full_<ver>.dxf  a drawing with layers in every state, linetypes, every common entity
                  kind and property, XDATA, extension dictionaries and foreign objects;
  od_<ver>.dxf    a drawing carrying Object Data in the host's layout (tables in the
                  named object dictionary under ZARVEL_OD_TABLES, records in each
                  entity's extension dictionary under ZARVEL_OD);
and ogr_features.dxf, converted by ogr2ogr from ogr_features.geojson beside this script.

The output is byte-for-byte reproducible: ezdxf's metadata is fixed and, since ezdxf
orders some objects by string hash, the script re-runs itself with a fixed hash seed.
"""
import os
import re
import shutil
import subprocess
import sys

if os.environ.get("PYTHONHASHSEED") != "0":
    os.environ["PYTHONHASHSEED"] = "0"
    os.execv(sys.executable, [sys.executable] + sys.argv)

import ezdxf  # noqa: E402
from ezdxf.enums import TextEntityAlignment  # noqa: E402
from ezdxf.render import MeshBuilder, forms  # noqa: E402
from ezdxf.acis import api as acis  # noqa: E402

ezdxf.options.write_fixed_meta_data_for_testing = True

VERSIONS = ["R2000", "R2004", "R2007", "R2010", "R2013", "R2018"]
HERE = os.path.dirname(os.path.abspath(__file__))
NON_ASCII = "Zürich Łódź 東京"
# ctime() format, as found in the ACIS header.
CTIME_TEXT = re.compile(r"[A-Z][a-z]{2} [A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d \d{4}")
CTIME = re.compile(CTIME_TEXT.pattern.encode())
FIXED_CTIME = "Sat Jan  1 00:00:00 2000"
OD_TYPES = {"integer": 1, "real": 2, "character": 3, "point": 4}


# ---------------------------------------------------------------- full drawing

def add_tables(doc):
    doc.appids.add("ACME_APP")
    doc.linetypes.add("ACME_DASHDOT", [1.0, 0.5, -0.2, 0.0, -0.3],
                      description="Dash dot __ . __ .")
    doc.linetypes.add("ACME_DOTS", [0.2, 0.0, -0.2], description=". . . .")
    # A complex linetype with embedded text refers to a text style.
    doc.linetypes.add(
        "ACME_GAS",
        'A,.5,-.2,["GAS",STANDARD,S=.1,U=0.0,X=-0.1,Y=-.05],-.25',
        description="Gas line ----GAS----", length=1)

    layers = doc.layers
    layers.add("Walls", color=1, linetype="ACME_DASHDOT", lineweight=35)
    layers.add("Frozen", color=2).freeze()
    layers.add("Locked", color=3).lock()
    layers.add("Off", color=4).off()
    every = layers.add("FrozenLockedOff", color=5, linetype="ACME_DOTS")
    every.freeze()
    every.lock()
    every.off()
    layers.add("TrueColour", color=6, true_color=ezdxf.rgb2int((255, 128, 0)),
               lineweight=200)
    layers.add("NoPlot", color=8, plot=False, transparency=0.25)
    layers.add("Gas", color=30, linetype="ACME_GAS", lineweight=13)
    layers.add("Paper", color=140)
    layers.add("Zürich_Łódź_東京", color=11)


def add_common_entities(doc, msp):
    """One entity of each kind, with a spread of common properties."""
    msp.add_point((1, 2, 3), dxfattribs={"layer": "Walls"})
    line = msp.add_line((0, 0), (10, 5), dxfattribs={
        "layer": "Walls", "color": 1, "linetype": "ACME_DOTS",
        "ltscale": 2.5, "lineweight": 50})
    line.rgb = (10, 20, 30)
    line.transparency = 0.5
    msp.add_line((0, 1, 2), (3, 4, 5), dxfattribs={"thickness": 1.5, "invisible": 1})
    msp.add_arc((5, 5), 2.5, 30, 300, dxfattribs={"layer": "Gas"})
    # An arc in a tilted object coordinate system.
    msp.add_arc((1, 2, 3), 1, 0, 90, dxfattribs={"extrusion": (0.6, 0, 0.8)})
    msp.add_circle((0, 0), 4, dxfattribs={"layer": "TrueColour", "color": 256})
    msp.add_circle((2, 2), 1, dxfattribs={"extrusion": (0, 0, -1), "color": 0})
    msp.add_ellipse((0, 0), major_axis=(3, 1), ratio=0.5)
    msp.add_ellipse((10, 10, 1), major_axis=(0, 2, 0), ratio=0.25,
                    start_param=0.5, end_param=4.0)

    msp.add_lwpolyline([(0, 0, 0, 0, 0.5), (5, 0, 0.2, 0.4, 0), (5, 5, 0, 0, -1),
                        (0, 5, 0, 0, 0)], format="xyseb", close=True,
                       dxfattribs={"elevation": 2.5, "layer": "Walls"})
    msp.add_lwpolyline([(0, 0), (1, 1), (2, 0)], format="xy",
                       dxfattribs={"const_width": 0.1, "thickness": 2})
    msp.add_polyline2d([(0, 0, 0.5), (4, 0, 0), (4, 4, -0.25), (0, 4, 0)],
                       format="xyb", close=True, dxfattribs={"elevation": (0, 0, 1.5)})
    msp.add_polyline3d([(0, 0, 0), (1, 2, 3), (4, 5, 6), (7, 8, 0)])
    mesh = msp.add_polyface()
    mesh.append_face([(0, 0, 0), (1, 0, 0), (1, 1, 1), (0, 1, 1)])
    mesh.append_face([(1, 0, 0), (2, 0, 0), (2, 1, 0), (1, 1, 1)])

    fit = [(0, 0), (2, 3), (5, 1), (8, 4), (10, 0)]
    msp.add_spline(fit, degree=3)  # fit points only
    msp.add_open_spline([(0, 0), (2, 4), (6, 4), (8, 0)], degree=2)
    msp.add_rational_spline([(0, 0, 0), (2, 4, 1), (6, 4, 2), (8, 0, 0), (10, 2, 1)],
                            weights=[1, 0.5, 2, 0.75, 1], degree=3)
    msp.add_spline().set_closed([(0, 0, 0), (4, 0, 0), (4, 4, 0), (0, 4, 0)], degree=3)

    msp.add_mline([(0, 0), (10, 0), (10, 10)], dxfattribs={"layer": "Walls"})

    # A dimension brings its anonymous *D block with it.
    msp.add_linear_dim(base=(0, 8), p1=(0, 6), p2=(10, 6)).render()
    msp.add_leader([(0, 0), (5, 5), (8, 5)])
    msp.add_solid([(0, 0), (1, 0), (0, 1), (1, 1)])
    msp.add_3dface([(0, 0, 0), (1, 0, 1), (1, 1, 2), (0, 1, 1)])
    msp.add_xline((0, 0, 0), (1, 1, 0))
    msp.add_ray((1, 1, 1), (0, 0, 1))

    msp.add_text("Left aligned", height=0.5, rotation=15)
    msp.add_text(NON_ASCII, height=1.0, dxfattribs={"layer": "Zürich_Łódź_東京"})\
        .set_placement((5, 5), align=TextEntityAlignment.MIDDLE_CENTER)
    msp.add_text("Fit text %%d %%c %%p", height=0.4)\
        .set_placement((0, 0), (10, 0), align=TextEntityAlignment.FIT)
    msp.add_text("Right", dxfattribs={"style": "Standard", "oblique": 10,
                                      "width": 0.8, "text_generation_flag": 2})\
        .set_placement((3, 3), align=TextEntityAlignment.BOTTOM_RIGHT)
    # Long enough to be split into several group-3 chunks.
    long_text = "\\PAbsatz ".join(["{\\fArial|b1;Fett} " + NON_ASCII + " ~ " + str(i) * 40
                                  for i in range(10)])
    msp.add_mtext(long_text, dxfattribs={"char_height": 0.35, "width": 12,
                                         "attachment_point": 5, "rotation": 30,
                                         "insert": (1, 2, 0)})
    msp.add_mtext("Single line", dxfattribs={"char_height": 0.5})


def add_blocks(doc, msp):
    door = doc.blocks.new("DOOR", base_point=(0, 0))
    door.add_line((0, 0), (0, 2))
    door.add_arc((0, 0), 2, 0, 90)
    door.add_attdef("NUMBER", (0.2, 0.2), dxfattribs={"height": 0.25, "prompt": "Door no."})
    door.add_attdef("OWNER", (0.2, 0.6), dxfattribs={"height": 0.25, "flags": 1})
    door.add_attdef("CITY", (0.2, 1.0), text="Zürich", dxfattribs={"height": 0.25})

    ref = msp.add_blockref("DOOR", (20, 0), dxfattribs={
        "xscale": 1.5, "yscale": 2, "zscale": 1, "rotation": 45, "layer": "Walls"})
    ref.add_auto_attribs({"NUMBER": "A-101", "OWNER": "Łódź GmbH", "CITY": "東京"})
    msp.add_blockref("DOOR", (25, 0)).add_auto_attribs({"NUMBER": "A-102"})
    msp.add_blockref("DOOR", (30, 0), dxfattribs={
        "column_count": 3, "row_count": 2, "column_spacing": 3, "row_spacing": 4})

    nested = doc.blocks.new("NESTED", base_point=(1, 1))
    nested.add_blockref("DOOR", (0, 0))
    nested.add_circle((0, 0), 3)
    msp.add_blockref("NESTED", (40, 0))

    # A dynamic-block-like pair: a definition and an anonymous representation that
    # points back at it the way dynamic block references do.
    dyn = doc.blocks.new("DYN_WINDOW")
    dyn.add_lwpolyline([(0, 0), (2, 0), (2, 1), (0, 1)], close=True)
    rep = doc.blocks.new_anonymous_block("U")
    rep.add_lwpolyline([(0, 0), (3, 0), (3, 1), (0, 1)], close=True)
    doc.appids.add("AcDbBlockRepBTag")
    rep.block_record.set_xdata("AcDbBlockRepBTag", [
        (1070, 1), (1005, dyn.block_record.dxf.handle)])
    dyn_ref = msp.add_blockref(rep.name, (50, 0))
    rep_dict = dyn_ref.new_extension_dict().dictionary.add_new_dict(
        "AcDbBlockRepresentation")
    rep_dict.add_xrecord("AcDbRepData").reset([
        (70, 1), (340, dyn.block_record.dxf.handle)])


def add_hatches(msp):
    solid = msp.add_hatch(color=3)
    solid.paths.add_polyline_path([(0, 0, 0), (10, 0, 0.5), (10, 10, 0), (0, 10, 0)],
                                  is_closed=True, flags=1)
    solid.paths.add_polyline_path([(2, 2), (4, 2), (4, 4)], is_closed=True, flags=16)

    pattern = msp.add_hatch(dxfattribs={"layer": "Walls"})
    pattern.set_pattern_fill("ANSI31", color=5, scale=0.5, angle=15)
    edges = pattern.paths.add_edge_path(flags=1)
    edges.add_line((0, 0), (10, 0))
    edges.add_arc((10, 5), 5, -90, 90)
    edges.add_ellipse((5, 10), major_axis=(5, 0), ratio=0.4, start_angle=0,
                      end_angle=180)
    edges.add_spline(control_points=[(0, 10), (-2, 6), (2, 3), (0, 0)], degree=3)
    pattern.set_seed_points([(5, 5)])

    if msp.doc.dxfversion < "AC1018":
        return  # gradient fills start with R2004
    gradient = msp.add_hatch()
    gradient.set_gradient((255, 0, 0), (0, 0, 255), rotation=30, name="CYLINDER")
    gradient.paths.add_polyline_path([(20, 0), (25, 0), (25, 5)], is_closed=True)


def add_acis(doc, msp):
    """REGION and 3DSOLID with a real (small) ACIS body: SAT text up to R2010, SAB after."""
    square = MeshBuilder()
    square.add_face([(0, 0, 0), (4, 0, 0), (4, 4, 0), (0, 4, 0)])
    bodies = [(msp.add_region(), square),
              (msp.add_3dsolid(dxfattribs={"layer": "Walls"}), forms.cube())]
    for n, (entity, mesh) in enumerate(bodies, 1):
        acis.export_dxf(entity, [acis.body_from_mesh(mesh)])
        # The ACIS header carries the export time; pin it (same length) for reproducibility.
        if entity.has_binary_data:
            entity.sab = CTIME.sub(FIXED_CTIME.encode(), entity.sab)
        else:
            entity.sat = [CTIME_TEXT.sub(FIXED_CTIME, line) for line in entity.sat]
        if entity.dxf.hasattr("uid"):  # R2013+: replace ezdxf's random GUID of the body
            entity.dxf.uid = "{00000000-0000-0000-0000-%012d}" % n


def add_extras(doc, msp):
    """XDATA, hyperlinks, extension dictionaries and objects of an unknown application."""
    tagged = list(msp.query("LINE CIRCLE LWPOLYLINE"))[:4]
    for n, e in enumerate(tagged):
        e.set_xdata("ACME_APP", [
            (1000, "acme %d %s" % (n, NON_ASCII)), (1002, "{"), (1070, n), (1071, 100000 + n),
            (1040, 1.25 * n), (1010, (n, n + 1, n + 2)), (1002, "}"), (1005, e.dxf.handle)])
    tagged[0].set_hyperlink("https://example.com/zürich", "Zürich site", "#view1")
    tagged[1].set_hyperlink("file:///tmp/plan.pdf")

    for e in tagged[1:3]:
        xdict = e.new_extension_dict()
        xdict.add_xrecord("ACME_XREC").reset([
            (1, "foreign record"), (40, 3.5), (90, 42), (10, (1, 2, 3)), (330, e.dxf.handle)])

    acme = doc.rootdict.add_new_dict("ACME_DATA")
    acme.add_xrecord("SETTINGS").reset([(1, "mode"), (70, 3), (1, NON_ASCII), (40, 0.1)])
    sub = acme.add_new_dict("NESTED")
    sub.add_xrecord("EMPTY").reset([])
    sub.add_xrecord("POINTS").reset([(10, (0, 0, 0)), (11, (1.5, 2.5, 3.5)), (62, 7)])


def add_paper_space(doc):
    paper = doc.layout("Layout1")
    paper.add_viewport(center=(100, 100), size=(150, 100), view_center_point=(10, 10),
                       view_height=50)
    paper.add_line((0, 0), (200, 0), dxfattribs={"layer": "Paper"})
    paper.add_text("Title: " + NON_ASCII, height=5, dxfattribs={"layer": "Paper"})
    paper.add_circle((180, 20), 8, dxfattribs={"true_color": ezdxf.rgb2int((0, 128, 64))})
    doc.layouts.new("Second sheet").add_lwpolyline([(0, 0), (10, 10), (20, 0)])


def build_full(version):
    doc = ezdxf.new(version)
    msp = doc.modelspace()
    add_tables(doc)
    add_common_entities(doc, msp)
    add_blocks(doc, msp)
    add_hatches(msp)
    add_acis(doc, msp)
    add_extras(doc, msp)
    add_paper_space(doc)
    return doc


# ----------------------------------------------------------- Object Data drawing

def od_value_tags(kind, value):
    code = {"integer": 90, "real": 40, "character": 1, "point": 10}[kind]
    return [(code, tuple(value) if kind == "point" else value)]


OD_TABLES = {
    "TPMID_x": [("ID", "integer", "Feature id", 0),
                ("NAME", "character", "Name of the feature", ""),
                ("AREA", "real", "Area in m²", 0.0),
                ("LABEL", "point", "Label point", (0.0, 0.0, 0.0))],
    "Roads": [("ROAD_NO", "integer", "Road number", -1),
              ("LENGTH", "real", "Length", 1.5),
              ("SURFACE", "character", "Surface — Belag", "asphalt"),
              ("START", "point", "Start", (1.0, 2.0, 3.0)),
              ("CITY", "character", "", "Łódź")],
}


def od_definition_tags(columns):
    tags = []
    for name, kind, description, default in columns:
        tags += [(2, name), (70, OD_TYPES[kind]), (3, description)]
        tags += od_value_tags(kind, default)
    return tags


def add_od_tables(doc, names):
    """The ZARVEL_OD_TABLES dictionary, holding the definitions of the named tables of OD_TABLES."""
    tables = doc.rootdict.add_new_dict("ZARVEL_OD_TABLES")
    for name in names:
        tables.add_xrecord(name).reset(od_definition_tags(OD_TABLES[name]))


def attach_rows(rows):
    """rows: [(what, entity, records)]; attaches each entity's records and gives the listing
    "handle  what" a script's comments quote."""
    listing = []
    for what, entity, records in rows:
        attach_od(entity, records)
        listing.append("%s  %s" % (entity.dxf.handle, what))
    return listing


def write_fixture(build, default_path):
    """Saves the drawing build() makes to the path given as the first argument, else to
    default_path, and prints the listing build() gives with it."""
    out = sys.argv[1] if len(sys.argv) > 1 else default_path
    doc, listing = build()
    doc.saveas(out)
    print("\n".join(listing))


def attach_od(entity, records, foreign=False):
    """records: [(table, [values in column order])], kept in attachment order."""
    tags = []
    for table, values in records:
        tags.append((2, table))
        for (_, kind, _, _), value in zip(OD_TABLES[table], values):
            tags += od_value_tags(kind, value)
    xdict = entity.new_extension_dict()
    if foreign:  # the OD entry shares the dictionary with another application's entry
        xdict.add_xrecord("ACME_XREC").reset([(1, "not ours"), (90, 7)])
    xdict.add_xrecord("ZARVEL_OD").reset(tags)


def build_od(version):
    doc = ezdxf.new(version)
    doc.layers.add("Parcels", color=3)
    doc.layers.add("Straßen", color=1)
    tables = doc.rootdict.add_new_dict("ZARVEL_OD_TABLES")
    for name, columns in OD_TABLES.items():
        tables.add_xrecord(name).reset(od_definition_tags(columns))

    msp = doc.modelspace()
    parcel = msp.add_lwpolyline([(0, 0), (20, 0), (20, 10), (0, 10)], close=True,
                                dxfattribs={"layer": "Parcels"})
    attach_od(parcel, [
        ("TPMID_x", [1, "Zürich", 200.0, (10, 5, 0)]),
        ("Roads", [7, 0.1, "gravel", (0, 0, 0), "東京"]),
        ("TPMID_x", [2, "Łódź", 1 / 3, (1.5, -2.25, 1e-9)]),
    ])
    road = msp.add_line((0, 0), (100, 0), dxfattribs={"layer": "Straßen"})
    attach_od(road, [
        ("Roads", [2147483647, 1e20, "", (0, 0, 0), "with, comma"]),
        ("Roads", [-2147483648, -1e-9, "  padded  ", (-1, -2, -3), "Zürich"]),
    ], foreign=True)
    attach_od(msp.add_circle((5, 5), 2), [("TPMID_x", [0, "", 0.0, (0, 0, 0)])])
    attach_od(msp.add_text("Łódź", height=2), [("Roads", [3, 2.5, "東京", (1, 1, 1), "x"])])
    msp.add_line((0, 10), (10, 10))  # no OD at all

    block = doc.blocks.new("TREE")
    attach_od(block.add_circle((0, 0), 1), [("TPMID_x", [99, "in block", 3.0, (0, 0, 0)])])
    ref = msp.add_blockref("TREE", (30, 30))
    attach_od(ref, [("TPMID_x", [5, "insert", 1.0, (30, 30, 0)])])

    paper = doc.layout("Layout1")
    attach_od(paper.add_line((0, 0), (50, 50)), [
        ("Roads", [11, 2.0, "paper", (5, 5, 0), "Zürich"]),
        ("TPMID_x", [12, "paper space", 4.0, (0, 0, 0)])])
    return doc


# ------------------------------------------------------------------------ main

def make_ogr(outdir):
    src = os.path.join(HERE, "ogr_features.geojson")
    dst = os.path.join(outdir, "ogr_features.dxf")
    if os.path.exists(dst):
        os.remove(dst)
    if shutil.which("ogr2ogr") is None:
        sys.exit("make_corpus: ogr2ogr not found (install gdal-bin)")
    # DXF has no attribute columns: the feature name becomes the layer.
    subprocess.run(["ogr2ogr", "-f", "DXF", dst, src,
                    "-sql", "SELECT name AS Layer FROM features"], check=True)


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_corpus.py OUTDIR")
    outdir = sys.argv[1]
    os.makedirs(outdir, exist_ok=True)
    for version in VERSIONS:
        build_full(version).saveas(os.path.join(outdir, "full_%s.dxf" % version))
        build_od(version).saveas(os.path.join(outdir, "od_%s.dxf" % version))
    make_ogr(outdir)


if __name__ == "__main__":
    main()
