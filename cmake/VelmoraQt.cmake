# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Finds Qt, and the QCustomPlot built with it. All other files use Qt::Core and the like, and
# QCustomPlot::QCustomPlot, for every version.
set(VELMORA_QT 5 CACHE STRING "Major version of Qt, 5 or 6")
set_property(CACHE VELMORA_QT PROPERTY STRINGS 5 6)

if(VELMORA_QT EQUAL 5)
  find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Widgets PrintSupport Concurrent)
  find_package(QCustomPlot CONFIG REQUIRED)
elseif(VELMORA_QT EQUAL 6)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets PrintSupport Concurrent)
  find_package(QCustomPlotQt6 CONFIG REQUIRED)
  add_library(QCustomPlot::QCustomPlot ALIAS QCustomPlotQt6::QCustomPlotQt6)
else()
  message(FATAL_ERROR "VELMORA_QT is ${VELMORA_QT}, but has to be 5 or 6")
endif()
