// kurvo mark: notches across outlines.
#include <unistd.h>

#include <memory>
#include <optional>
#include <vector>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "geometry/notches.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Lengths.
constexpr double kLongest = 1e9;
constexpr double kLeastNotch = 1e-6;

struct MarkOptions {
  struct At {
    std::string element;
    std::vector<LengthOption> lengths;
  };

  std::string input;
  InputOptions reading;
  OutputOptions output;
  std::vector<At> at;
  LengthOption notch = {5, 1};
};

// "120mm,250mm" or "path#front:120mm,250mm".
MarkOptions::At ParseAt(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  MarkOptions::At at;
  if (colon != text.npos) at.element = text.substr(0, colon);
  at.lengths =
      ParseLengths("--at", colon == text.npos ? text : text.substr(colon + 1), 0, kLongest);
  return at;
}

int RunMark(const MarkOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  std::vector<NotchRequest> requests;
  for (const MarkOptions::At& at : options.at) {
    NotchRequest& request = requests.emplace_back();
    request.element = at.element;
    for (const LengthOption& length : at.lengths) request.lengths.push_back(length.In(drawing));
  }
  std::optional<Progress> progress(std::in_place, STDERR_FILENO, "marking", std::size_t{0});
  const std::vector<Notch> notches =
      NotchesOn(context, drawing, requests, options.notch.In(drawing));
  const Drawing marked = WithNotches(context, drawing, notches);
  progress.reset();
  return Deliver(context, options.reading, options.output, {{options.input, &drawing}},
                 {.drawing = [&] { return ResultOf(marked); },
                  .picture =
                      [&] {
                        return NotchPicture(context, drawing, notches, BaseName(options.input),
                                            options.output.size);
                      },
                  .table = [&] { return NotchTable(context, notches); },
                  .json = [&] { return NotchJson(context, OneLine(options.input), notches); }});
}

}  // namespace

Command AddMarkCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<MarkOptions>();
  CLI::App* mark = app.add_subcommand("mark", "Put notches across outlines at lengths along them");
  AddDrawing(*mark, options->input);
  mark->add_option_function<std::vector<std::string>>(
          "--at",
          [options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) options->at.push_back(ParseAt(text));
          },
          "How far from the start of the outlines, all or those of an element; may be given "
          "several times")
      ->required()
      ->allow_extra_args(false)
      ->type_name("[ELEMENT:]LENGTH,...");
  AddLength(*mark, "--notch", options->notch, kLeastNotch, kLongest,
            "How long notches are, half of it to either side; 5mm unless given");
  AddReading(*mark, options->reading, stage);
  AddOutputs(*mark, options->output,
             "Write the drawing with its notches, a path behind each element, to this SVG file",
             "Write a picture of the drawing and its notches to this SVG file");
  mark->footer(
      "An element is named by its id or as tables name it: front or path#front. Without a name the "
      "outlines\nare marked that are long enough. Notches of the element front are the element "
      "front-notches.");
  return {mark, [options] { return RunMark(*options); }};
}

}  // namespace kurvo::tools
