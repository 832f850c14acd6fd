# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Reads files of Velmora into data frames; needs only base R:
#
#   source("velmora.R")
#   values <- read_velmora_endpoints("endpoints.csv")
#   project <- read_velmora_project("study.velmora")

# Reads the file of "Save endpoint values as CSV...": one row for each data set, model, sample and
# dose that was evaluated. data_set and sample count from 0. selected and in_target are logical.
# An endpoint or a weight that is not a number is NA.
read_velmora_endpoints <- function(path) {
  values <- read.csv(path, encoding = "UTF-8", colClasses = c(
    data_set = "integer", model = "character", sample = "integer", dose = "numeric",
    endpoint = "numeric", weight = "numeric", selected = "integer", in_target = "integer"))
  values$model[is.na(values$model)] <- "NA" # a model of that name
  values$selected <- values$selected == 1
  values$in_target <- values$in_target == 1
  values
}

# Reads a project, as project-file.md describes it: a list of
#   settings  one row: doses, lower and upper bound as typed, population, log_scale, method, ofv
#   models    model, endpoint, weight: the expressions
#   omega     model, row, column, value, file_column: covariances of the ETAs; if file_column is
#             not 0, COL<file_column> replaces the value
#   chosen    data_set, level, dose: the minimum effective doses, NaN for none
#   cache     data_set, model, sample, dose_number, endpoint: the cached endpoints
#   results   one data frame per model: data_set, sample and the columns of its raw_results
#             files, COL<n> if a name is missing or used twice
# Models, data sets, samples and dose numbers count from 0, rows and columns of omega from 1.
# From a file that ends early, the list has the complete parts.
read_velmora_project <- function(path) {
  item <- .velmora_items(path)
  project <- list()
  if (!is.null(item$upper)) {
    populations <- c("mean", "median", "75th percentile", "25th percentile")
    project$settings <- data.frame(
      doses = item$doses, lower = item$lower, upper = item$upper,
      population = populations[item$population + 1], log_scale = item$log_scale,
      method = c("average", "selection")[item$method + 1],
      ofv = c("one per model", "individual")[item$ofv + 1])
  }
  if (!is.null(item$weights)) {
    project$models <- data.frame(
      model = seq_along(item$endpoints) - 1L, endpoint = item$endpoints,
      weight = item$weights[seq_along(item$endpoints)])
  }
  if (!is.null(item$omega_columns)) {
    omega <- .velmora_rows(item$omega, c("model", "row", "column"), "value")
    columns <- .velmora_rows(item$omega_columns, c("model", "row", "column"), "file_column")
    omega[c("row", "column")] <- omega[c("row", "column")] + 1L
    project$omega <- data.frame(omega, file_column = as.integer(columns$file_column + 1))
  }
  if (!is.null(item$levels)) {
    chosen <- .velmora_rows(item$chosen, c("data_set", "level"), "dose")
    chosen$level <- item$levels[chosen$level + 1]
    project$chosen <- chosen
  }
  if (!is.null(item$cache)) {
    places <- c("data_set", "model", "sample", "dose_number")
    project$cache <- .velmora_rows(item$cache, places, "endpoint")
  }
  if (!is.null(item$headings)) {
    project$results <- Map(.velmora_results, item$results, item$headings[seq_along(item$results)])
  }
  project
}

# The items of a project before the first incomplete one.
.velmora_items <- function(path) {
  file <- file(path, "rb")
  on.exit(close(file))
  take <- function(what, count, size) {
    values <- readBin(file, what, count, size, endian = "big")
    if (length(values) < count) stop("the file ends")
    values
  }
  integer <- function() take("integer", 1, 4)
  flag <- function() take("raw", 1, 1) != 0
  count <- function() {
    elements <- integer()
    if (elements < 0 || elements > file.size(path)) stop("no count")
    elements
  }
  text <- function() {
    size <- integer() # -1 for none
    if (size <= 0) "" else iconv(list(take("raw", size, 1)), "UTF-16BE", "UTF-8")
  }
  numbers <- function() take("double", count(), 8)
  integers <- function() take("integer", count(), 4)
  texts <- function() vapply(seq_len(count()), function(i) text(), "")
  tables <- function(row) function() lapply(seq_len(count()), function(i) row())

  readers <- list(
    results = tables(tables(tables(numbers))), headings = tables(texts), doses = text,
    endpoints = texts, omega = tables(tables(numbers)), omega_columns = tables(tables(integers)),
    population = integer, weights = texts, log_scale = flag, method = integer, ofv = integer,
    lower = text, upper = text, chosen = tables(numbers), level_texts = texts, levels = numbers,
    cache = tables(tables(tables(numbers))))
  item <- list()
  for (name in names(readers)) {
    value <- tryCatch(readers[[name]](), error = function(problem) NULL)
    if (is.null(value)) break
    item[[name]] <- value
  }
  item
}

# Nested lists of numbers as one data frame: the index at each depth, and the number.
.velmora_rows <- function(nested, places, value) {
  rows <- list(seq_along(nested) - 1L)
  for (depth in seq_along(places)[-1]) {
    counts <- lengths(nested)
    rows <- c(lapply(rows, rep, times = counts), list(sequence(counts) - 1L))
    nested <- unlist(nested, recursive = FALSE)
  }
  rows <- c(rows, list(as.numeric(nested)))
  as.data.frame(setNames(rows, c(places, value)))
}

# The results of a model, list(data set)(sample). Its heading comes in pieces, as names that
# contain commas were cut there.
.velmora_results <- function(results, heading) {
  samples <- unlist(results, recursive = FALSE)
  width <- max(0L, lengths(samples))
  values <- vapply(seq_len(width), function(i) vapply(samples, `[`, 0, i), numeric(length(samples)))
  dim(values) <- c(length(samples), width)
  names <- scan(text = paste(heading, collapse = ","), what = "", sep = ",", quiet = TRUE)
  names <- c("data_set", "sample", names, rep("", width))[seq_len(width + 2)]
  useless <- names == "" | duplicated(names)
  names[useless] <- paste0("COL", seq_along(names) - 2)[useless]
  counts <- lengths(results)
  rows <- data.frame(rep(seq_along(results) - 1L, counts), sequence(counts) - 1L, values)
  setNames(rows, names)
}
