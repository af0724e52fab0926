# What the Python package is built with: an interpreter with numpy, its headers, and pybind11.
# Python3_EXECUTABLE says which interpreter. Unless it does, or a virtual environment is active, the
# system's is taken, since that is the one that Debian's packages are for, whatever comes first in
# PATH.
if(NOT Python3_EXECUTABLE AND NOT DEFINED ENV{VIRTUAL_ENV} AND EXISTS /usr/bin/python3)
  set(Python3_EXECUTABLE /usr/bin/python3)
endif()
find_package(Python3 3.9 QUIET COMPONENTS Interpreter Development.Module)
if(Python3_FOUND)
  execute_process(COMMAND ${Python3_EXECUTABLE} -c "import numpy; print(numpy.__version__)"
    OUTPUT_VARIABLE KurvoPython_NUMPY OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  find_package(pybind11 2.10 QUIET CONFIG)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(KurvoPython
  REQUIRED_VARS Python3_EXECUTABLE Python3_FOUND pybind11_FOUND KurvoPython_NUMPY)
if(KurvoPython_FOUND AND NOT KurvoPython_FIND_QUIETLY)
  message(STATUS
    "Python package for ${Python3_EXECUTABLE} ${Python3_VERSION} with numpy ${KurvoPython_NUMPY}")
endif()
