# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Compiler settings shared by every target; nothing is set globally.
add_library(velmora_options INTERFACE)

# Results follow the written arithmetic bit for bit: no contraction into fused
# multiply-add. Release builds have message contexts, too.
target_compile_options(velmora_options INTERFACE -ffp-contract=off)
target_compile_definitions(velmora_options INTERFACE QT_MESSAGELOGCONTEXT)

target_compile_options(velmora_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual)
if(VELMORA_WERROR)
  target_compile_options(velmora_options INTERFACE -Werror)
endif()

if(VELMORA_SANITIZE)
  target_compile_options(velmora_options INTERFACE
    -fsanitize=${VELMORA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # Qt checks every access to a container, which may hide faults from the sanitizers.
  target_compile_definitions(velmora_options INTERFACE QT_FORCE_ASSERTS)
  target_link_options(velmora_options INTERFACE -fsanitize=${VELMORA_SANITIZE})
endif()

# A library of the project: its sources, the shared settings, and the project's root as
# include path. It is static unless BUILD_SHARED_LIBS is set.
function(velmora_add_library name)
  add_library(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE velmora_options)
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
endfunction()
