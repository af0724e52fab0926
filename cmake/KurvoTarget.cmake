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
