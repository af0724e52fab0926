# Writes a header after which every function of the interface tells that it is called.
# usage: cmake -DKERNEL=exports.txt -DOUTLINE=outline_exports.txt -DOUT=spies.h -P spies.cmake
file(STRINGS ${KERNEL} kernel)
file(STRINGS ${OUTLINE} outline)
set(spies "")
set(list "")
foreach(name IN LISTS kernel outline)
  string(APPEND spies "constexpr Spy<&::${name}> kSpied${name}{\"${name}\"};\n"
                      "#define ${name} kSpied${name}\n")
  string(APPEND list "    \"${name}\",\n")
endforeach()
file(WRITE ${OUT} "const std::set<std::string> kInterface = {\n${list}};\n${spies}")
