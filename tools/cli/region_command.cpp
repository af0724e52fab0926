#include "cli/region_command.h"

#include "picture/pictures.h"

namespace kurvo::tools {

int DeliverRegions(Context& context, const InputOptions& input, const OutputOptions& options,
                   const std::vector<Source>& sources, const RegionReport& report, Look look) {
  return Deliver(context, input, options, sources,
                 {.drawing = [&] { return ResultOf(report.drawing, report.regions, look); },
                  .picture = [&] { return RegionPicture(context, report, options.size); },
                  .table = [&] { return RegionTable(report); },
                  .json = [&] { return RegionJson(report); }});
}

}  // namespace kurvo::tools
