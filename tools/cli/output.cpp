#include "cli/output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "cli/progress.h"
#include "cli/whole_file.h"
#include "dxf/writer.h"
#include "geometry/grid.h"
#include "report/csv.h"
#include "report/text.h"
#include "svg/curve_file.h"
#include "svg/drawing_writer.h"
#include "svg/gzip.h"
#include "svg/input.h"
#include "svg/sheet.h"

namespace kurvo::tools {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFaults = 20;  // that are named

constexpr const char* kAssumed =
    ": warning: the drawing has no physical size; a pixel is taken as 1/96 in\n";
constexpr char kEach = '%';  // in the name of a file for each part

void RefuseSource(const std::vector<Source>& sources, std::vector<std::string> files,
                  const std::string& output) {
  for (const Source& source : sources) files.push_back(source.path);
  for (const std::string& file : files) {
    std::error_code ignored;
    if (fs::equivalent(file, output, ignored)) {
      throw std::runtime_error(OneLine(output) + ": is the input; choose another output");
    }
  }
}

void Note(const std::vector<Source>& sources) {
  for (const Source& source : sources) {
    if (source.drawing == nullptr) continue;
    const std::string start = "kurvo: " + OneLine(source.path) + ": ";
    const std::vector<std::string>& faults = source.drawing->faults;
    const std::size_t named = std::min(faults.size(), kMostFaults);
    for (std::size_t i = 0; i < named; ++i) std::cerr << start << "left out: " << faults[i] << "\n";
    if (faults.size() > named) {
      std::cerr << start << "left out: " << faults.size() - named << " more elements\n";
    }
    for (const std::string& note : source.drawing->notes) std::cerr << start << note << "\n";
  }
}

bool HasFaults(const std::vector<Source>& sources) {
  return std::any_of(sources.begin(), sources.end(), [](const Source& source) {
    return source.drawing != nullptr && !source.drawing->faults.empty();
  });
}

// The unit of what is printed, where it is known or was asked for; empty for units of the drawing.
std::string UnitOf(const InputOptions& input, const std::vector<Source>& sources) {
  if (!input.unit.empty()) return input.unit;
  const Drawing* drawing = sources.front().drawing;
  if (drawing == nullptr) return {};
  const double em = drawing->sheet.units_per_em;
  if (em > 0 && !drawing->sheet.physical) return "1/" + ShortNumber(em) + " em";
  if (!drawing->sheet.physical) return {};
  const double mm = drawing->sheet.mm_per_unit;
  const std::string_view name = UnitName(mm);
  return name.empty() ? ShortNumber(mm) + " mm" : std::string(name);
}

std::string GridText(const GridReport& grid) {
  std::string text = "grid " + ShortNumber(grid.size) + ": ";
  text +=
      grid.moved > 0 ? "points moved by " + ShortNumber(grid.moved) + " at most" : "no point moved";
  if (grid.vanished > 0) text += ", " + CountText(grid.vanished, "outline") + " vanished";
  return text + "\n";
}

std::string ReportText(const std::string& unit, const std::optional<GridReport>& grid,
                       const OutputOptions& options, const Products& products) {
  if (options.quiet) return {};
  if (!options.json && !options.csv) {
    return products.table() + (grid ? GridText(*grid) : "") +
           (unit.empty() ? "" : "unit: " + unit + "\n");
  }
  std::string json = products.json();
  if (options.csv) return CsvText(Json::parse(json), unit);
  constexpr std::string_view kBegin = "{\n";
  if (grid) {
    const Json rounding = {
        {"size", grid->size}, {"moved", grid->moved}, {"vanished", grid->vanished}};
    json.insert(kBegin.size(), fmt::format("  \"grid\": {},\n", JsonText(rounding)));
  }
  if (!unit.empty()) json.insert(kBegin.size(), fmt::format("  \"unit\": \"{}\",\n", unit));
  return json;
}

PathAccuracy AccuracyOf(const LengthOption& deviation, const Result& result) {
  PathAccuracy accuracy = {.share = kDrawingDeviation};
  if (deviation.number > 0) accuracy.length = deviation.On(result.source.sheet);
  return accuracy;
}

GridOptions GridOf(const OutputOptions& options, const Sheet& sheet) {
  return {.size = options.grid.On(sheet),
          .share = kDrawingDeviation,
          .deviation = options.deviation.On(sheet)};
}

// The result with its points on the grid, and what was done for that added to the report.
Drawing OnGrid(Context& context, const OutputOptions& options, const Result& result,
               std::optional<GridReport>& report) {
  Drawing drawing = DrawingOf(context, result);
  const GridReport own = RoundToGrid(context, GridOf(options, drawing.sheet), drawing);
  if (!report) report = own;
  report->moved = std::max(report->moved, own.moved);
  return drawing;
}

// The name of a file with that of a part in it.
std::string Named(std::string file, const std::string& part) {
  return file.replace(file.find(kEach), 1, part);
}

std::string DrawingIn(Context& context, const OutputOptions& options, const Result& result) {
  const std::string end = options.format.empty() ? fs::path(options.drawing).extension().string()
                                                 : "." + options.format;
  if (options.r12 && end != ".dxf") throw std::runtime_error("--r12 is about DXF files");
  if (end == ".json") return CurveFileText(context, result);
  const PathAccuracy accuracy = AccuracyOf(options.deviation, result);
  if (end == ".dxf") {
    if (!result.source.sheet.physical)
      std::cerr << "kurvo: " << OneLine(options.drawing) << kAssumed;
    return DxfText(context, result, options.r12 ? DxfVersion::kR12 : DxfVersion::kR2000, accuracy);
  }
  const std::string text = DrawingText(context, result, accuracy);
  return end == ".svgz" ? Packed(text) : text;
}

void Write(const std::string& file, const std::string& content) {
  if (file.empty()) return;
  if (file == kStandardStream) {
    Print(content);
  } else {
    WriteWholeFile(file, content);
  }
}

}  // namespace

std::string BaseName(const std::string& path) {
  return OneLine(fs::path(path).filename().string());
}

int Deliver(Context& context, const InputOptions& input, const OutputOptions& options,
            const std::vector<Source>& sources, const Products& products) {
  Stage& stage = *input.stage;
  if (!stage.is_last && !products.drawing) {
    throw std::runtime_error("only the last command of a pipe may make no drawing");
  }
  const bool is_report =
      stage.is_last && options.drawing != kStandardStream && options.picture != kStandardStream;
  std::optional<Progress> progress(std::in_place, STDERR_FILENO, "writing", std::size_t{0});
  std::optional<GridReport> grid;
  // Of what is written and piped.
  const auto in_place = [&](const Result& made) { return OnGrid(context, options, made, grid); };
  std::optional<Drawing> on_grid;
  if (options.grid.number > 0) on_grid = in_place(products.drawing());
  const auto result = [&] { return on_grid ? ResultOf(*on_grid) : products.drawing(); };
  std::string report, picture;
  std::vector<std::pair<std::string, std::string>> drawings;  // files and what is in them
  if (is_report) report = ReportText(UnitOf(input, sources), grid, options, products);
  if (!options.picture.empty()) {
    RefuseSource(sources, stage.files, options.picture);
    picture = products.picture();
  }
  if (!options.drawing.empty()) {
    if (options.drawing == options.picture) {
      throw std::runtime_error(OneLine(options.drawing) + ": cannot be drawing and picture");
    }
    if (products.parts && options.drawing.find(kEach) != std::string::npos) {
      for (const Part& part : products.parts()) {
        const std::string text = on_grid
                                     ? DrawingIn(context, options, ResultOf(in_place(part.result)))
                                     : DrawingIn(context, options, part.result);
        drawings.emplace_back(Named(options.drawing, part.name), text);
      }
    } else {
      drawings.emplace_back(
          options.drawing, products.text ? products.text() : DrawingIn(context, options, result()));
    }
    for (const auto& [file, text] : drawings) RefuseSource(sources, stage.files, file);
  }
  progress.reset();
  Write(options.picture, picture);
  for (const auto& [file, text] : drawings) Write(file, text);
  Note(sources);
  for (const Source& source : sources) stage.files.push_back(source.path);
  if (!stage.is_last) stage.made = DrawingOf(context, result());
  Print(report);
  return HasFaults(sources) ? kLeftOut : kSuccess;
}

}  // namespace kurvo::tools
