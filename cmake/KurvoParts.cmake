# What is built beside the library, which needs nothing unless threads are asked for: each part that
# is set to AUTO where the packages are that it needs.

list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})

# kurvo_part(<variable> <what> <CMake package>:<Debian package>...): settles whether a part is
# built. When a package is missing AUTO, the default at the top level, leaves the part out and says
# so; ON stops. What is found is known to the directories below.
function(kurvo_part variable what)
  set(default OFF)
  if(PROJECT_IS_TOP_LEVEL AND NOT variable IN_LIST KURVO_ONLY_WHEN_ASKED)
    set(default AUTO)
  endif()
  set(${variable} ${default} CACHE STRING
      "Build ${what}: ON, OFF, or AUTO for where the packages are")
  set_property(CACHE ${variable} PROPERTY STRINGS AUTO ON OFF)
  set(wanted "${${variable}}")
  if(NOT wanted)
    set(${variable} OFF PARENT_SCOPE)
    return()
  endif()

  set(missing "")
  foreach(need IN LISTS ARGN)
    string(REPLACE ":" ";" need ${need})
    list(GET need 0 package)
    list(GET need 1 debian_package)
    find_package(${package} QUIET)
    if(NOT ${package}_FOUND)
      list(APPEND missing "${package} (Debian package ${debian_package})")
    endif()
  endforeach()
  list(JOIN missing ", " missing)

  if(NOT missing)
    set(${variable} ON PARENT_SCOPE)
  elseif(wanted STREQUAL "AUTO")
    message(STATUS "Left out: ${what}, for want of ${missing}")
    set(${variable} OFF PARENT_SCOPE)
  else()
    message(FATAL_ERROR
            "${variable} is ${wanted}, but ${what} cannot be built for want of ${missing}")
  endif()
endfunction()

# Not where a package happens to lie: what the library needs would hang on the machine that built it,
# and whoever runs it needs that too.
set(KURVO_ONLY_WHEN_ASKED KURVO_PARALLEL)
kurvo_part(KURVO_PARALLEL "long loops on several threads" TBB:libtbb-dev)

kurvo_part(KURVO_BUILD_TOOL "the client" CLI11:libcli11-dev pugixml:libpugixml-dev
           nlohmann_json:nlohmann-json3-dev fmt:libfmt-dev utf8cpp:libutfcpp-dev Boost:libboost-dev
           ZLIB:zlib1g-dev)

set(test_needs GTest:libgtest-dev Freetype:libfreetype-dev DejaVu:fonts-dejavu-core)
if(KURVO_BUILD_TOOL)
  list(APPEND test_needs PNG:libpng-dev)
endif()
kurvo_part(KURVO_BUILD_TESTS "the tests and examples" ${test_needs})

kurvo_part(KURVO_BUILD_BENCH "the benchmarks" benchmark:libbenchmark-dev)

# The sanitizers' runtime would have to be in the interpreter.
if(KURVO_SANITIZE)
  set(KURVO_PYTHON OFF)
else()
  list(APPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/python)
  kurvo_part(KURVO_PYTHON "the Python package"
             "KurvoPython:python3-dev, python3-numpy, pybind11-dev")
endif()
