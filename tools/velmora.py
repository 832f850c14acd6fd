# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads files of Velmora into NumPy arrays.

    import velmora
    values = velmora.read_endpoints("endpoints.csv")
    project = velmora.read_project("study.velmora")
"""

import csv
import struct
from array import array

import numpy as np


def read_endpoints(path):
    """Reads the file of "Save endpoint values as CSV...": a dict of its columns as arrays.

    There is one row for each data set, model, sample and dose that was evaluated. data_set and
    sample count from 0. selected and in_target are bool. An endpoint or a weight that is not a
    number is NaN.
    """
    def number(text):
        return np.nan if text == "NA" else float(text)

    names = {}
    kinds = {"data_set": ("q", int), "sample": ("q", int), "selected": ("b", int),
             "in_target": ("b", int),
             "model": ("q", lambda name: names.setdefault(name, len(names)))}
    with open(path, newline="", encoding="utf-8") as file:
        lines = csv.reader(file)
        heading = next(lines)
        kinds = [kinds.get(name, ("d", number)) for name in heading]
        columns = [array(kind) for kind, _ in kinds]
        for line in lines:
            for column, (_, read), text in zip(columns, kinds, line):
                column.append(read(text))
    values = {name: np.array(column) for name, column in zip(heading, columns)}
    values["model"] = np.array(list(names), dtype=str)[values["model"]]
    for name in ("selected", "in_target"):
        values[name] = values[name] == 1
    return values


def read_project(path):
    """Reads a project, as project-file.md describes it: a dict of

    settings  doses, lower and upper bound as typed, population, log_scale, method, ofv
    models    model, endpoint, weight: the expressions
    omega     model, row, column, value, file_column: covariances of the ETAs; if file_column is
              not 0, COL<file_column> replaces the value
    chosen    data_set, level, dose: the minimum effective doses, NaN for none
    cache     data_set, model, sample, dose_number, endpoint: the cached endpoints
    results   a list with, for each model, data_set, sample and the columns of its raw_results
              files, COL<n> if a name is missing or used twice

    Each is a dict of arrays of the same length; settings is a dict of values. Models, data sets,
    samples and dose numbers count from 0, rows and columns of omega from 1. From a file that ends
    early, the dict has the complete parts.
    """
    item = _items(path)
    project = {}
    if "upper" in item:
        populations = ("mean", "median", "75th percentile", "25th percentile")
        project["settings"] = {
            "doses": item["doses"], "lower": item["lower"], "upper": item["upper"],
            "population": populations[item["population"]], "log_scale": item["log_scale"],
            "method": ("average", "selection")[item["method"]],
            "ofv": ("one per model", "individual")[item["ofv"]]}
    if "weights" in item:
        project["models"] = {"model": np.arange(len(item["endpoints"])),
                             "endpoint": np.array(item["endpoints"], dtype=str),
                             "weight": np.array(item["weights"], dtype=str)}
    if "omega_columns" in item:
        omega = _rows(item["omega"], ("model", "row", "column"), "value")
        columns = _rows(item["omega_columns"], ("model", "row", "column"), "file_column")
        omega["row"] += 1
        omega["column"] += 1
        omega["file_column"] = columns["file_column"].astype(int) + 1
        project["omega"] = omega
    if "levels" in item:
        project["chosen"] = _rows(item["chosen"], ("data_set", "level"), "dose")
        project["chosen"]["level"] = item["levels"][project["chosen"]["level"]]
    if "cache" in item:
        places = ("data_set", "model", "sample", "dose_number")
        project["cache"] = _rows(item["cache"], places, "endpoint")
    if "headings" in item:
        headings = item["headings"] + [[]] * len(item["results"])
        project["results"] = [_results(*model) for model in zip(item["results"], headings)]
    return project


def _items(path):
    """The items of a project before the first incomplete one."""
    with open(path, "rb") as file:
        data = file.read()
    place = 0

    def take(code):
        nonlocal place
        value, = struct.unpack_from(">" + code, data, place)
        place += struct.calcsize(code)
        return value

    def array_of(kind):
        def read():
            nonlocal place
            values = np.frombuffer(data, ">" + kind, take("I"), place)
            place += values.nbytes
            return values.astype(kind)
        return read

    def text():
        nonlocal place
        size = take("I")
        size = 0 if size == 0xFFFFFFFF else size
        place += size
        if place > len(data):
            raise ValueError("the file ends")
        return data[place - size:place].decode("utf-16-be")

    def list_of(read):
        return lambda: [read() for _ in range(take("I"))]

    numbers, integers, texts = array_of("f8"), array_of("i4"), list_of(text)
    tables = list_of(list_of(list_of(numbers)))
    readers = {
        "results": tables, "headings": list_of(texts), "doses": text, "endpoints": texts,
        "omega": list_of(list_of(numbers)), "omega_columns": list_of(list_of(integers)),
        "population": lambda: take("i"), "weights": texts, "log_scale": lambda: take("?"),
        "method": lambda: take("i"), "ofv": lambda: take("i"), "lower": text, "upper": text,
        "chosen": list_of(numbers), "level_texts": texts, "levels": numbers, "cache": tables}
    item = {}
    try:
        for name, read in readers.items():
            item[name] = read()
    except (struct.error, ValueError):
        pass
    return item


def _rows(nested, places, value):
    """Nested lists of arrays as columns: the index at each depth, and the number."""
    columns = {places[0]: np.arange(len(nested))}
    for depth, name in enumerate(places[1:], 2):
        counts = [len(part) for part in nested]
        columns = {key: np.repeat(column, counts) for key, column in columns.items()}
        columns[name] = np.concatenate([np.arange(0)] + [np.arange(count) for count in counts])
        if depth < len(places):
            nested = [element for part in nested for element in part]
    columns[value] = np.concatenate([np.zeros(0)] + nested)
    return columns


def _results(results, heading):
    """The results of a model, [data set][sample]. Its heading comes in pieces, as names that
    contain commas were cut there."""
    counts = [len(data_set) for data_set in results]
    columns = {"data_set": np.repeat(np.arange(len(counts)), counts),
               "sample": np.concatenate([np.arange(0)] + [np.arange(count) for count in counts])}
    samples = [sample for data_set in results for sample in data_set]
    width = max([0] + [len(sample) for sample in samples])
    values = np.full((len(samples), width), np.nan)
    for row, sample in zip(values, samples):
        row[:len(sample)] = sample
    names = next(csv.reader([",".join(heading)]), [])
    for index in range(width):
        name = names[index] if index < len(names) else ""
        columns[name if name and name not in columns else f"COL{index + 1}"] = values[:, index]
    return columns
