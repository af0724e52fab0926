# kurvo_target(<target>): what every target of this project is compiled with. All of it is private
# to the target, so nothing reaches a consumer.

set(KURVO_WARNINGS -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wcast-qual
    -Wformat=2 -Wundef -Wimplicit-fallthrough)
# A float that creeps in. Clang means long double by it too, which the tests compute with on
# purpose.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  list(APPEND KURVO_WARNINGS -Wdouble-promotion)
endif()
# False alarms on strings that are joined (GCC bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  list(APPEND KURVO_WARNINGS -Wno-restrict)
endif()
set(KURVO_WARNINGS_C -Wstrict-prototypes -Wmissing-prototypes)
set(KURVO_WARNINGS_CXX -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual)

# The same source gives the same bits: no fused multiply-add unless it is written down.
set(KURVO_CODEGEN -ffp-contract=off)

set(KURVO_INSTRUMENTATION "")
if(KURVO_SANITIZE)
  list(APPEND KURVO_INSTRUMENTATION -fsanitize=${KURVO_SANITIZE} -fno-sanitize-recover=all
       -fno-omit-frame-pointer)
endif()
if(KURVO_COVERAGE)
  list(APPEND KURVO_INSTRUMENTATION --coverage -fprofile-update=atomic)
endif()

function(kurvo_target target)
  set_target_properties(${target} PROPERTIES
    C_STANDARD 99 C_STANDARD_REQUIRED ON C_EXTENSIONS OFF
    CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF
    COMPILE_WARNING_AS_ERROR ${KURVO_WERROR})
  target_compile_options(${target} PRIVATE
    ${KURVO_WARNINGS}
    "$<$<COMPILE_LANGUAGE:C>:${KURVO_WARNINGS_C}>"
    "$<$<COMPILE_LANGUAGE:CXX>:${KURVO_WARNINGS_CXX}>"
    ${KURVO_CODEGEN}
    ${KURVO_INSTRUMENTATION})
  target_link_options(${target} PRIVATE ${KURVO_INSTRUMENTATION})
endfunction()

# kurvo_c_program(<target>): a program in C on the public interface. The sanitizers of clang want
# the C++ runtime in the program, even when only the library is C++.
function(kurvo_c_program target)
  target_link_libraries(${target} PRIVATE Kurvo::kurvo)
  if(KURVO_SANITIZE AND CMAKE_C_COMPILER_ID MATCHES "Clang")
    set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  endif()
endfunction()

# kurvo_library_objects(<target>): the objects of a shared library, whose calls of its own functions
# bind inside it.
function(kurvo_library_objects target)
  kurvo_target(${target})
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  set_target_properties(${target} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# kurvo_shared_library(<target> <version> <node> <exports file>): a library of which nothing is seen
# but the names of the file: visibility hides our own code, the version script also what the standard
# library's templates leave behind. The names carry the version of the interface, <node>_<major>, so
# that a program that needs a newer one is told when it starts.
function(kurvo_shared_library target version node exports_file)
  kurvo_target(${target})
  string(REGEX MATCH "^[0-9]+" major ${version})
  set_target_properties(${target} PROPERTIES
    LINKER_LANGUAGE CXX
    VERSION ${version}
    SOVERSION ${major})

  set(version_script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${exports_file})
  file(STRINGS ${exports_file} exported_names)
  list(JOIN exported_names ";\n    " exported_names)
  file(CONFIGURE OUTPUT ${version_script} @ONLY
    CONTENT "@node@_@major@ {\n  global:\n    @exported_names@;\n  local:\n    *;\n};\n")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${version_script})

  # Calls from one exported function to another bind inside the library, past the PLT.
  target_link_options(${target} PRIVATE
    -Wl,-Bsymbolic-functions -Wl,--version-script=${version_script})
  # The others are all looked up when the library is loaded, and their table is read-only from then
  # on.
  target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now)
  # Clang puts the sanitizer's runtime into the program only, so there the library's own link stays
  # open.
  if(NOT (KURVO_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang"))
    target_link_options(${target} PRIVATE -Wl,-z,defs)
  endif()
endfunction()
