// kurvo cut: machine code of what a drawing shows.
#include <unistd.h>

#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cut/machine_code.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Lengths.
constexpr double kWidestKerf = 1e3;
constexpr double kWidestGap = 1e9;
constexpr double kLongestLeadIn = 1e3;
constexpr double kGreatestDeviation = 1e3;
constexpr double kLeastDeviation = 1e-3;  // mm: ten times what numbers are rounded to

constexpr double kUsualDeviation = 0.01;  // mm
constexpr double kFastest = 1e6;          // mm a minute
constexpr double kSlowest = 1e-3;
constexpr double kGreatestPower = 1e6;

struct CutCommandOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  LengthOption kerf, gap, lead_in;
  LengthOption deviation = {kUsualDeviation, 1};
  MachineOptions machine;
  double rapid = 6000;
  std::int32_t dialect = 0;
  bool dry = false;
};

int RunCut(const CutCommandOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  const CutOptions lengths = {options.kerf.In(drawing), options.deviation.In(drawing),
                              options.gap.In(drawing), options.lead_in.In(drawing)};
  if (!(lengths.deviation * drawing.sheet.mm_per_unit >= kLeastDeviation))
    throw std::runtime_error("--deviation must be at least 0.001 mm");
  const CutPlan plan = [&] {
    Progress progress(STDERR_FILENO, "offset", CurveCount(drawing));
    return PlanCuts(context, drawing, lengths, [&] { progress.Step(); });
  }();
  MachineOptions machine = options.machine;
  machine.dialect = options.dialect == 0 ? Dialect::kGrbl : Dialect::kLinuxcnc;
  OutputOptions output = options.output;
  if (options.dry) output.drawing.clear();
  const CutReport report = {BaseName(options.input), plan, machine.feed, options.rapid};
  return Deliver(context, options.reading, output, {{options.input, &drawing}},
                 {.text = [&] { return MachineCode(plan, machine); },
                  .picture = [&] { return CutPicture(context, drawing, report, output.size); },
                  .table = [&] { return CutTable(report); },
                  .json = [&] { return CutJson(report); }});
}

void AddNumber(CLI::App& cut, const char* name, double& value, double low, double high,
               const char* unit, const char* about) {
  cut.add_option(name, value, about)->check(Between(low, high))->type_name(unit);
}

}  // namespace

Command AddCutCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<CutCommandOptions>();
  CLI::App* cut = app.add_subcommand("cut", "Make machine code that cuts out what a drawing shows");
  AddDrawing(*cut, options->input);
  AddLength(
      *cut, "--kerf", options->kerf, 0, kWidestKerf,
      "How much the beam takes away: half of it lies outside of outlines and inside of holes");
  AddLength(*cut, "--deviation", options->deviation, 0, kGreatestDeviation,
            "How far the cut may be off; 0.01 mm unless given, 0.001 mm at least");
  AddLength(*cut, "--gap", options->gap, 0, kWidestGap,
            "Join ends no farther apart than this; without it those that meet");
  AddLength(*cut, "--lead-in", options->lead_in, 0, kLongestLeadIn,
            "Come to closed outlines on quarter turns of this radius, smaller where it is tight");
  AddNumber(*cut, "--feed", options->machine.feed, kSlowest, kFastest, "MM/MIN",
            "How fast to cut, 1000 unless given");
  AddNumber(*cut, "--rapid", options->rapid, kSlowest, kFastest, "MM/MIN",
            "How fast the machine goes between cuts, 6000 unless given; for the time alone");
  AddNumber(*cut, "--power", options->machine.power, 0, kGreatestPower, "NUMBER",
            "What S says of the beam, 1000 unless given");
  AddChoice(*cut, "--dialect", options->dialect, {"grbl", "linuxcnc"},
            "What the machine understands: grbl unless given, or linuxcnc");
  cut->add_flag("--dry", options->dry, "Write no code, only print the lengths and the time");
  AddReading(*cut, options->reading, stage);
  cut->add_option("-o,--output", options->output.drawing, "Write the machine code to this file")
      ->type_name("FILE")
      ->group("Output");
  AddOutputs(*cut, options->output, nullptr,
             "Write a picture of the cuts, numbered in their order, to this SVG file");
  cut->footer(
      "Loose curves are joined, those that are there twice are cut once. A closed outline inside "
      "another is\na hole. What lies inside is cut first, the ways between are kept short. The "
      "code is in mm; its origin\nis that of a DXF drawing, or the lower left corner of the sheet. "
      "Open outlines are cut as they are.");
  return {cut, [options] { return RunCut(*options); }};
}

}  // namespace kurvo::tools
