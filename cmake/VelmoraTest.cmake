# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Every test runs without a display, leaves the user's settings alone, and has a time limit,
# which is longer under the thread sanitizer.
function(velmora_set_up_test name)
  set(timeout 120)
  if(VELMORA_SANITIZE MATCHES "thread")
    set(timeout 300)
  endif()
  set(locale C)
  if(VELMORA_QT EQUAL 6) # which warns of C
    set(locale C.UTF-8)
  endif()
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${timeout}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=${locale};XDG_CONFIG_HOME=${PROJECT_BINARY_DIR}/test-settings;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0;TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan.supp:print_suppressions=0")
endfunction()

# A test program from <name>.cpp in the current folder, linked with the given
# libraries.
function(velmora_add_test name)
  add_executable(${name} ${name}.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PRIVATE ${ARGN} velmora_options Qt::Test)
  add_test(NAME ${name} COMMAND ${name})
  velmora_set_up_test(${name})
endfunction()
