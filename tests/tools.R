# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Writes what velmora.R reads from each file as CSV files beside it, numbers with all bits.
source("tools/velmora.R")

dump <- function(frame, path) {
  columns <- lapply(frame, function(column) {
    if (is.double(column)) sprintf("%a", column) else if (is.logical(column)) +column else column
  })
  write.csv(as.data.frame(columns, optional = TRUE), paste0(path, ".csv"), row.names = FALSE)
}

for (path in commandArgs(TRUE)) {
  if (endsWith(path, ".csv")) {
    dump(read_velmora_endpoints(path), paste0(path, ".R"))
  } else {
    project <- read_velmora_project(path)
    for (name in setdiff(names(project), "results")) {
      dump(project[[name]], paste0(path, ".R.", name))
    }
    for (model in seq_along(project$results)) {
      dump(project$results[[model]], paste0(path, ".R.results", model - 1))
    }
  }
}
