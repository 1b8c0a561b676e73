#!/usr/bin/python3
"""The records and table definitions a transcript leaves, as an independent reader (ezdxf) finds
them in the saved file.

Usage: /usr/bin/python3 tests/scripts/check_saved_records.py ZARVEL SCRIPTS WORKDIR NAME...

Each NAME.scr of SCRIPTS (over NAME.dxf when there is one) runs twice. The first run saves the
drawing, and ezdxf decodes every record of every entity of the saved file. The second run replays
the script and lists, before it quits, the records of all selectable entities and of each entity
that the file says carries any. Both views must agree entity by entity, record by record, value by
value, in the text forms that the listing prints; and the tables it lists must be those the file
defines, column by column.
"""
import os
import re
import subprocess
import sys

import ezdxf

ENTITY_LINE = re.compile(r"^([0-9A-F]+) \S+ ")


def real_text(v):
    # As the listing prints a real: twelve decimals, trailing zeros dropped but one.
    text = "%.12f" % v
    text = text.rstrip("0")
    return text + "0" if text.endswith(".") else text


def value_text(tag):
    if tag.code == 90:
        return str(tag.value)
    if tag.code == 40:
        return real_text(float(tag.value))
    if tag.code == 10:
        return ",".join("%f" % float(c) for c in tag.value)
    return tag.value


def saved_records(path):
    """handle -> ["table: v1, v2", ...] for every entity with records."""
    doc = ezdxf.readfile(path)
    found = {}
    for layout in doc.layouts:
        for e in layout:
            if not e.has_extension_dict:
                continue
            xdict = e.get_extension_dict().dictionary
            xrec = xdict.get("ZARVEL_OD")
            if xrec is None:
                continue
            records = []
            for tag in xrec.tags:
                if tag.code == 2:
                    records.append([tag.value, []])
                else:
                    records[-1][1].append(value_text(tag))
            found[e.dxf.handle.upper()] = ["%s: %s" % (t, ", ".join(v)) for t, v in records]
    return found


TYPE_WORDS = {1: "integer", 2: "real", 3: "character", 4: "point"}


def saved_definitions(path):
    """The table definitions as ODTABLES lists them: "Table: COL type default, ..."."""
    doc = ezdxf.readfile(path)
    tables = doc.rootdict.get("ZARVEL_OD_TABLES")
    lines = []
    for name in sorted(tables.keys() if tables is not None else []):
        columns, column = [], None
        for tag in tables[name].tags:
            if tag.code == 2:
                column = [tag.value, "", ""]
                columns.append(column)
            elif tag.code == 70:
                column[1] = TYPE_WORDS.get(tag.value, "unknown")
            elif tag.code in (90, 40, 1, 10):
                column[2] = value_text(tag) or '""'
        lines.append(name + ":" + ",".join(" %s %s %s" % tuple(c) for c in columns))
    return lines


def listed_definitions(transcript):
    """The lines of the last ODTABLES of the transcript."""
    tail = transcript[transcript.rindex("Command: ODTABLES"):].splitlines()[1:]
    end = next(i for i, line in enumerate(tail) if line.startswith("Command:"))
    return [line for line in tail[:end] if line != "No tables."]


def script_without_quit(path):
    with open(path, encoding="utf-8") as f:
        lines = f.read().splitlines()
    # Blank lines are answers (Enter); only the closing QUIT goes.
    if lines and lines[-1].strip().upper() == "QUIT":
        lines.pop()
    return "\n".join(lines) + "\n"


def run(zarvel, drawing, script, out=None):
    args = [zarvel] + ([drawing] if drawing else []) + ["-s", "-"] + (["-o", out] if out else [])
    done = subprocess.run(args, input=script.encode("utf-8"), capture_output=True, check=True)
    return done.stdout.decode("utf-8")


def listed_records(transcript):
    """handle -> record lines, from the last ODLIST of the transcript."""
    tail = transcript[transcript.rindex("Command: ODLIST"):].splitlines()
    found, current = {}, None
    for line in tail:
        m = ENTITY_LINE.match(line)
        if m:
            current = found.setdefault(m.group(1), [])
        elif line.startswith("  ") and current is not None:
            current.append(line[2:])
    return {h: r for h, r in found.items() if r}


def drawing_of(scripts, name):
    # NAME.dxf, or the drawing the script names in a line "; drawing: X.dxf".
    with open(os.path.join(scripts, name + ".scr"), encoding="utf-8") as f:
        for line in f:
            if line.startswith("; drawing: "):
                return os.path.join(scripts, line[len("; drawing: "):].strip())
    drawing = os.path.join(scripts, name + ".dxf")
    return drawing if os.path.exists(drawing) else None


def check(zarvel, scripts, work, name):
    drawing = drawing_of(scripts, name)
    script = script_without_quit(os.path.join(scripts, name + ".scr"))
    out = os.path.join(work, name + "-saved.dxf")
    run(zarvel, drawing, script + "QUIT\n", out)
    in_file = saved_records(out)
    handles = " ".join("#" + h for h in sorted(in_file))
    transcript = run(zarvel, drawing,
                     script + "ODTABLES\nODLIST\nALL %s\n\nQUIT\n" % handles)
    listed = listed_records(transcript)
    problems = []
    defined, listed_defs = saved_definitions(out), listed_definitions(transcript)
    if defined != listed_defs:
        problems.append("%s definitions: file %s, listing %s" % (name, defined, listed_defs))
    for h in sorted(set(in_file) | set(listed)):
        if in_file.get(h) != listed.get(h):
            problems.append("%s %s: file %s, listing %s" % (name, h, in_file.get(h), listed.get(h)))
    if not in_file:
        problems.append("%s: the saved file holds no records" % name)
    return problems


def main():
    zarvel, scripts, work = sys.argv[1:4]
    os.makedirs(work, exist_ok=True)
    problems = []
    for name in sys.argv[4:]:
        problems += check(zarvel, scripts, work, name)
    for p in problems:
        print(p)
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
