#!/usr/bin/python3
"""model_test.py TORVE_BATCH SCHEMA: networks as other programs get them.

The traffic equations are solved from the JSON alone, the file's keys are compared with it one by one,
and each mistake that is planted into a network is found, and nothing else.
"""

import json
import os
import re
import subprocess
import sys
import tempfile

import jsonschema
import numpy as np

# Two servers behind a queue, with feedback, and a way out for each of two classes.
NETWORK = {
    "calls": 'tel x1=80 y1=170 x2=102 y2=184 id=1 name="calls" value4=6 servers=2',
    "line": 'queue x1=200 y1=100 x2=200 y2=200 id=2 name="line" servers=50 int1=2',
    "cpu": 'node x1=300 y1=100 x2=300 y2=200 id=3 name="cpu" servers=2 ps_mode=3',
    "disk": 'nodeb x1=400 y1=100 x2=400 y2=200 id=4 name="di\\xe5sk" attr1="Heads" servers=4',
    "frame": "vbox x1=10 y1=10 x2=600 y2=400 id=5",
    "in": "arc x1=1 y1=1 x2=2 y2=2 id=10 from=1 to=2",
    "served": "arc x1=1 y1=1 x2=2 y2=2 id=11 from=2 to=3 probability=1",
    "store": 'arc x1=1 y1=1 x2=2 y2=2 id=12 from=3 to=4 probability=0.5 bends="300,50 -4,5"',
    "again": 'arc x1=1 y1=1 x2=2 y2=2 id=13 from=3 from_x=x1-5 from_y=y2+3 to=2 name="again"',
    "leave": "arc x1=1 y1=1 x2=2 y2=2 id=14 from=3",
    "back": "arc x1=1 y1=1 x2=2 y2=2 id=15 from=4 to=3 spin=left note=\"a \\\" b\"",
}
# What is wrong when a figure's line is another one: the figure's number, its name, and of its words.
MISTAKES = (
    ({"calls": None, "in": None}, {(None, "", "no source")}),
    ({"in": "arc x1=1 y1=1 x2=2 y2=2 id=10 to=2", "calls": 'tel x1=80 y1=170 x2=102 y2=184 id=1 name="calls"'},
     {(10, "", "begins nowhere"), (1, "calls", "no way out")}),
    ({"served": "arc x1=1 y1=1 x2=2 y2=2 id=11 from=2 to=3 probability=0.99999"}, {(2, "line", "add to 0.99999,")}),
    ({"served": "arc x1=1 y1=1 x2=2 y2=2 id=11 from=2 to=3 probability=0.9999991"}, set()),
    ({"store": "arc x1=1 y1=1 x2=2 y2=2 id=12 from=3 to=4 probability=0.5 class=\"a\""}, set()),
    ({"back": "arc x1=1 y1=1 x2=2 y2=2 id=15 from=4 to=3 probability=0.5 class=\"a\""}, {(4, "diåsk", "class a")}),
    ({"cpu": 'node x1=300 y1=100 x2=300 y2=200 id=3 name="cpu"'}, {(3, "cpu", "no servers")}),
    ({"back": None}, {(4, "diåsk", "no way out")}),
    ({"line": 'queue x1=200 y1=100 x2=200 y2=200 id=2 name="again"'}, {(13, "again", "of 2")}),
    ({"frame": "vbox x1=10 y1=10 x2=600 y2=400 id=5 label=6\nlabel x1=1 y1=1 x2=9 y2=11 text=\"f\" id=6"}, set()),
)


def model(network, *options):
    with open("a.vob", "w") as file:
        file.write("torve-diagram 2\n\n# a network\r\n" + "\n".join(network) + "\n")
    done = subprocess.run([BATCH, "model", "a.vob", *options], capture_output=True, text=True)
    assert done.stderr == "", done.stderr
    return done.returncode, done.stdout


def as_json(network):
    status, text = model(network, "--json")
    diagram = json.loads(text)
    assert text == json.dumps(diagram, indent=1, ensure_ascii=False) + "\n", "laid out as read by people"
    jsonschema.validate(diagram, SCHEMA)
    assert status == (2 if diagram["findings"] else 0)
    return diagram


def throughputs(diagram):
    """What goes through each figure, by the equations flow = outside + flow x shares."""
    figures = {figure["id"]: figure for figure in diagram["figures"]}
    network = diagram["network"]
    order = network["stations"] + network["sources"]
    routes, outside = np.zeros((len(order), len(order))), np.zeros(len(order))
    for source in network["sources"]:
        rates = [p["value"] for p in figures[source]["properties"] if p["unit"] == "calls/s"]
        outside[order.index(source)] = rates[0]
    for arc in network["arcs"]:
        assert [s["class"] for s in arc["shares"]] == [""]
        if arc["to"] is not None:
            routes[order.index(arc["from"]), order.index(arc["to"])] += arc["shares"][0]["share"]
    flow = np.linalg.solve(np.eye(len(order)) - routes.T, outside)
    out = sum(flow[order.index(a["from"])] * a["shares"][0]["share"]
              for a in network["arcs"] if a["figure"] in network["sinks"])
    return dict(zip((figures[i]["name"] for i in order), flow)), out


def value_in(figure, key, figures):
    """What the JSON has for a key of the file, as the file writes it."""
    if key in ("from", "to"):
        return figure[key]["figure"]
    if hold := re.fullmatch("(from|to)_([xy])", key):
        end, axis = figure[hold[1]], hold[2]
        return f"{axis}{end[axis + '_of']}{end['d' + axis]:+d}"
    if key == "bends":
        return " ".join(f"{x},{y}" for x, y in figure["bends"])
    if key == "label":
        return [f["id"] for f in figures].index(figure["label"]) + 1
    if key.startswith("attr"):
        return figure["properties"][int(key[4:])]["line"]
    return figure.get(key, figure["other"].get(key))


def check_keys(network, diagram):
    for line, figure in zip("\n".join(network).split("\n"), diagram["figures"]):
        assert figure["kind"] == line.split()[0]
        held = {end for end in ("from", "to") if figure[end]}
        for key, bare, text in re.findall(r' ([\w.]+)=(?:([^" ]+)|"((?:[^"\\]|\\.)*)")', line):
            wanted = bare or text.replace("\\xe5", "å").replace('\\"', '"')
            if key in {"from": "x1 y1", "to": "x2 y2"}.get("from" if "from" in held else "", "").split():
                continue  # where it holds on says where it is
            if key in ("x2", "y2") and "to" in held:
                continue
            assert str(value_in(figure, key, diagram["figures"])) == wanted, (key, wanted, figure)


def main():
    diagram = as_json(NETWORK.values())
    assert diagram["findings"] == []
    check_keys(NETWORK.values(), diagram)
    # The cpu gets c = 6 + its quarter that comes again + the half that the disk gives back.
    flow, out = throughputs(diagram)
    expected = {"calls": 6, "line": 12, "cpu": 24, "diåsk": 12}
    assert flow.keys() == expected.keys() and abs(out - 6) < 1e-9
    for name, wanted in expected.items():
        assert abs(flow[name] - wanted) < 1e-9, (name, flow[name])
    words = {p["key"]: p for p in diagram["figures"][1]["properties"]}
    assert (words["servers"]["word"], words["servers"]["number"]) == ("exponential", 3)
    assert words["int1"]["word"] == "exponential"

    for changes, wanted in MISTAKES:
        network = [line for line in (NETWORK | changes).values() if line]
        diagram = as_json(network)
        check_keys(network, diagram)
        found = {(f["figure"], f["name"], f["text"]) for f in diagram["findings"]}
        fits = all(any(f[:2] == w[:2] and w[2] in f[2] for f in found) for w in wanted)
        assert fits and len(found) == len(wanted), (changes, found)
        status, text = model(network)
        lines = [line for line in text.splitlines() if line.startswith("finding")]
        assert status == (2 if wanted else 0) and len(lines) == len(wanted), text
        for figure, name, words in wanted:
            start = "finding: " if figure is None else f'finding {figure} "{name}": '
            assert any(line.startswith(start) and words in line for line in lines), text
    bad = subprocess.run([BATCH, "model", "none.vob"], capture_output=True, text=True)
    assert bad.returncode == 2 and bad.stdout == "" and "none.vob" in bad.stderr


BATCH, schema = (os.path.abspath(word) for word in sys.argv[1:])
with open(schema) as opened:
    SCHEMA = json.load(opened)
with tempfile.TemporaryDirectory() as directory:
    os.chdir(directory)
    main()
