// The extension module kurvo._kurvo.
#include "bind.hpp"

namespace kurvo::python {

PYBIND11_MODULE(_kurvo, module) {
  module.doc() = "Curves, chains and regions of Kurvo; use the package kurvo.";
  BindContext(module);
  BindOptions(module);
  BindCurve(module);
  BindChain(module);
  BindRegion(module);
  BindBatch(module);
  module.attr("ON") = static_cast<int>(Where::kOn);
  module.attr("INSIDE") = static_cast<int>(Where::kInside);
  module.attr("OUTSIDE") = static_cast<int>(Where::kOutside);
  module.def("outline_version", &OutlineVersion,
             "10000 major + 100 minor + patch of the library for whole outlines.");
}

}  // namespace kurvo::python
