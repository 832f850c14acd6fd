# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares what velmora.py, velmora.R (by tools.R) and a plain reading make of the tour's files:
tools.py FOLDER FILE..."""
import csv
import glob
import sys

import numpy as np

sys.path.insert(0, "tools")
import velmora


def number(text):
    try:
        return float.fromhex(text) if "0x" in text else float(text)
    except ValueError:
        return np.nan


def read_plainly(path):
    with open(path, newline="", encoding="utf-8") as file:
        heading, *lines = csv.reader(file)
    return heading, list(zip(*lines)) or [()] * len(heading)


def compare(table, path):
    heading, columns = read_plainly(path)
    assert list(table) == heading, (path, list(table), heading)
    for name, texts in zip(heading, columns):
        values = np.atleast_1d(table[name])
        if values.dtype.kind == "U":
            agree = list(values) == list(texts)
        else:
            agree = np.array_equal(values, [number(text) for text in texts], equal_nan=True)
        assert agree, f"{path}: {name} differs"


def check_results(results, patterns):
    for model, pattern in zip(results, patterns, strict=True):
        rows = []
        for data_set in range(20 if "%" in pattern else 1):
            heading, columns = read_plainly(pattern.replace("%", str(data_set)))
            rows += zip(*columns)
        assert list(model)[2:] == heading
        plain = [[number(text) for text in row] for row in rows]
        assert np.array_equal(np.column_stack(list(model.values())[2:]), plain, equal_nan=True)


folder, *paths = sys.argv[1:]
for path in paths:
    if path.endswith(".csv"):
        table = velmora.read_endpoints(path)
        compare(table, path)
        compare(table, path + ".R.csv")
        continue
    project = velmora.read_project(path)
    tables = {f"results{model}": table for model, table in enumerate(project.pop("results"))}
    tables.update(project)
    assert sorted(glob.glob(path + ".R.*")) == sorted(f"{path}.R.{name}.csv" for name in tables)
    for name, table in tables.items():
        compare(table, f"{path}.R.{name}.csv")
assert "cache" not in velmora.read_project(f"{folder}/cut.velmora")
assert list(velmora.read_project(f"{folder}/unnamed.velmora")["results"][0])[2:] == ["COL1", "COL2"]
documented = velmora.read_project(f"{folder}/documented.velmora")
assert documented["settings"] == {
    "doses": "0,1", "lower": "0.4", "upper": "inf", "population": "mean", "log_scale": True,
    "method": "selection", "ofv": "individual"}
assert documented["models"]["endpoint"] == ["THETA1*DOSE+ETA1"]
assert documented["omega"]["value"] == [0.25] and documented["omega"]["file_column"] == [0]
assert documented["results"][0]["ofv"] == [7.5] and documented["chosen"]["level"] == [50]

models = ("emax", "exponential", "linear", "quadratic", "sigemax")
biomarker = velmora.read_project(f"{folder}/biomarker.velmora")
check_results(biomarker["results"],
              [f"examples/biomarker/raw_results_{name}.csv" for name in models])
assert biomarker["omega"]["file_column"] == [24]
assert biomarker["settings"]["lower"] == "0.4" and biomarker["settings"]["method"] == "average"

values = velmora.read_endpoints(f"{folder}/biomarker/3-endpoints.csv")
_, (doses, probability) = read_plainly(f"{folder}/biomarker/3-probability-average-without-eta.csv")
_, places = np.unique(values["dose"], return_inverse=True)
inside = np.bincount(places, values["weight"] * values["in_target"]) / 1001
assert np.allclose(100 * inside, [number(text) for text in probability], rtol=1e-12)

simulation = velmora.read_project(f"{folder}/simulation.velmora")
check_results(simulation["results"], [
    f"examples/simulation/raw_results_estimation_model{model}_data%.csv" for model in range(3)])
heading, (_, *doses) = read_plainly(f"{folder}/simulation/4-dose-choice.csv")
chosen = simulation["chosen"]
assert list(chosen["level"][:9]) == [float(level) for level in heading[1:]]
plain = [[number(text) for text in level] for level in doses]  # 6 digits
assert np.allclose(chosen["dose"].reshape(20, 9).T, plain, equal_nan=True)
linear = {name: column[simulation["cache"]["model"] == 0]
          for name, column in simulation["cache"].items()}
slope = simulation["results"][0]["THETA2"]
assert np.allclose(linear["endpoint"], np.repeat(slope, 11) * linear["dose_number"] / 10)
