// The client as its users run it: samples, options, bad input.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <algorithm>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "output_file.h"
#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

// The last line of the table: "N outlines  lines arcs Beziers rational degree box".
std::vector<std::string> Totals(const std::string& table) {
  const std::size_t end = table.find_last_not_of('\n');
  const std::size_t start = table.rfind('\n', end);
  std::vector<std::string> words;
  std::string word;
  for (const char c : table.substr(start + 1, end - start) + " ") {
    if (c != ' ') {
      word += c;
    } else if (!word.empty()) {
      words.push_back(word);
      word.clear();
    }
  }
  return words;
}

TEST(Client, DrawsEverySample) {
  // Counted by hand in the files; corners of rect elements included.
  const struct {
    const char* name;
    const char *outlines, *lines, *arcs, *beziers, *rational, *degree;
  } rows[] = {
      {"bracket", "19", "18", "50", "0", "4", "2"},
      {"letters", "7", "22", "0", "21", "0", "3"},
      {"bodice", "16", "28", "8", "9", "1", "3"},
  };
  for (const auto& row : rows) {
    const TemporaryDirectory directory;
    const std::string picture = directory.File("out.svg");
    const ProcessResult result =
        Client({"draw", std::string(KURVO_SAMPLES) + "/" + row.name + ".svg", "-o", picture});
    ASSERT_EQ(result.exit_code, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    const std::vector<std::string> totals = Totals(result.output);
    ASSERT_GE(totals.size(), 7u) << result.output;
    EXPECT_EQ(totals[0], row.outlines) << row.name;
    EXPECT_EQ(totals[2], row.lines) << row.name;
    EXPECT_EQ(totals[3], row.arcs) << row.name;
    EXPECT_EQ(totals[4], row.beziers) << row.name;
    EXPECT_EQ(totals[5], row.rational) << row.name;
    EXPECT_EQ(totals[6], row.degree) << row.name;
    EXPECT_EQ(directory.FileCount(), 1u) << "a temporary file was left";
    EXPECT_TRUE(pugi::xml_document().load_file(picture.c_str())) << row.name;
    const std::string content = FileContent(picture);
    EXPECT_EQ(content.find("nan"), std::string::npos) << row.name;
    EXPECT_EQ(content.find("inf"), std::string::npos) << row.name;
  }
}

TEST(Client, PrintsATable) {
  const TemporaryDirectory directory;
  const std::string input = directory.Write(
      "in.svg", "<svg><path id='p' d='M0 0H30A10 10 0 0130 20L0 20Z M5 5Q10 0 15 5'/></svg>");
  EXPECT_EQ(Client({"draw", input}).output,
            "outline     line  arc  Bezier  rational  degree          start   end      box\n"
            "path#p.1       3    1       0         0       2  closed  (0, 0)  (0, 0)   "
            "(0, 0) - (40, 20)\n"
            "path#p.2       0    0       1         0       2  open    (5, 5)  (15, 5)  "
            "(5, 0) - (15, 5)\n"
            "2 outlines     3    1       1         0       2                           "
            "(0, 0) - (40, 20)\n");
  EXPECT_EQ(Client({"draw", "-q", input}).output, "");
}

TEST(Client, OptionsLeaveThingsOut) {
  const TemporaryDirectory directory;
  const std::string input =
      directory.Write("in.svg", "<svg><path d='M0 0C0 9 9 9 9 0'/><circle r='2'/></svg>");
  // The parts of the picture, by what only they contain.
  const std::string control = "stroke=\"#94a3b8\"", points = "<circle", boxes = "#c4b5a0",
                    legend = "<text", combs = "#c026d3";
  const std::vector<std::string> parts = {control, points, boxes, legend, combs};
  const struct {
    std::vector<std::string> options;
    std::vector<std::string> missing;
  } rows[] = {
      {{}, {combs}},
      {{"--comb"}, {}},
      {{"--no-control", "--no-legend"}, {control, legend, combs}},
      {{"--no-points", "--no-boxes", "--no-legend"}, {points, boxes, legend, combs}},
      {{"--curves-only"}, parts},
      {{"--curves-only", "--comb"}, parts},
      {{"--curves-only", "--fill"}, parts},
  };
  for (const auto& row : rows) {
    const std::string picture = directory.File("out.svg");
    std::vector<std::string> arguments = {"draw", input, "-o", picture};
    arguments.insert(arguments.end(), row.options.begin(), row.options.end());
    ASSERT_EQ(Client(arguments).exit_code, 0);
    const std::string content = FileContent(picture);
    for (const std::string& part : parts) {
      const bool missing =
          std::find(row.missing.begin(), row.missing.end(), part) != row.missing.end();
      EXPECT_EQ(content.find(part) == std::string::npos, missing)
          << part << " with " << testing::PrintToString(row.options);
    }
  }
}

TEST(Client, HelpAndVersionSayWhatTheyShould) {
  const ProcessResult version = Client({"--version"});
  EXPECT_EQ(version.exit_code, 0);
  EXPECT_EQ(version.output, "kurvo " KURVO_VERSION "\n");
  const ProcessResult help = Client({"--help"});
  EXPECT_EQ(help.exit_code, 0);
  EXPECT_NE(help.output.find("kurvo draw part.svg -o curves.svg"), std::string::npos);
  const ProcessResult draw_help = Client({"draw", "--help"});
  EXPECT_EQ(draw_help.exit_code, 0);
  EXPECT_NE(draw_help.output.find("--curves-only"), std::string::npos);
}

TEST(Client, WrongOptionsAreStatusOne) {
  const std::string sample = KURVO_SAMPLES "/letters.svg";
  const struct {
    std::vector<std::string> arguments;
    const char* problem;
  } rows[] = {
      {{}, "A subcommand is required"},
      {{"draw"}, "input is required"},
      {{"paint", "x.svg"}, "There is no subcommand paint"},
      {{"--colour"}, "The following argument was not expected: --colour"},
      {{"draw", "--colour"}, "The following argument was not expected: --colour"},
      {{"draw", "--colour", "x.svg"}, "The following argument was not expected: --colour"},
      {{"draw", "x.svg", "b\nc", "d"}, "The following argument was not expected: b?c"},
      {{"draw", "x.svg", "--size", "nan"}, "--size: not a number from 16 to 32768"},
      {{"draw", "x.svg", "--size", "100\nx"}, "Could not convert: --size = 100?x"},
      {{"draw", "x.svg", "--stroke-width", "-1"},
       "--stroke-width: not a number from 1e-06 to 1e+06"},
      {{"draw", sample, "-o", ""}, "--output: the name of the file is empty"},
      {{"split", sample, "--parts", "2", "-o", ""}, "--output: the name of the file is empty"},
  };
  for (const auto& row : rows) {
    const ProcessResult result = Client(row.arguments);
    EXPECT_EQ(result.exit_code, 1) << row.problem;
    EXPECT_EQ(result.output, "") << row.problem;
    EXPECT_EQ(result.errors, std::string("kurvo: ") + row.problem + " (try --help)\n");
  }
}

TEST(Client, OutputThatCannotBePrintedIsStatusOne) {
  for (const std::string arguments : {"--version", "--help", "draw --help", "draw \"$1\""}) {
    const ProcessResult result = RunProcess({"sh", "-c", "\"$0\" " + arguments + " >/dev/full",
                                             KURVO_TOOL, KURVO_SAMPLES "/letters.svg"});
    EXPECT_EQ(result.exit_code, 1) << arguments;
    EXPECT_EQ(result.errors, "kurvo: standard output cannot be written\n") << arguments;
  }
}

// An svg element around `body`, which starts at offset 5.
std::string Svg(const std::string& body) { return "<svg>" + body + "</svg>"; }

TEST(Client, BadInputIsOneLineAndStatusTwo) {
  const struct {
    std::string content;
    const char* message;
  } rows[] = {
      {"", "offset 0: not well-formed XML: No document element found"},
      {"<svg><path d='M0 0H1'", "offset 20: not well-formed XML: Error parsing start element tag"},
      {"<svg><g></svg>", "offset 10: not well-formed XML: Start-end tags mismatch"},
      {"<svg><g/>", "offset 8: not well-formed XML: Start-end tags mismatch"},
      {"<html/>", "not an SVG drawing: the root element is <html>"},
      {"\x1f\x8b\x08", "compressed SVG; unpack it with gunzip first"},
      {Svg("<path d='M0 0'/><path d='L0 0'/>"),
       "path[2], offset 0 in d: path data must begin with M or m, found 'L'"},
      {Svg("<path id='wing' d='M0 0L1 x'/>"),
       "path#wing, offset 7 in d: expected a number, found 'x'"},
      {Svg("<path d='M0 0H1e999'/>"), "path[1], offset 5 in d: number out of range: 1e999"},
      {Svg("<path id='a\nb' d='0'/>"),
       "path#a?b, offset 0 in d: path data must begin with M or m, found '0'"},
      {Svg("<g transform='spin(3)'><path/></g>"),
       "g[1], offset 0 in transform: unknown transform 'spin'"},
      {Svg("<g transform='scale(1e15)'><line x2='1e15' /></g>"),
       "line[1], offset 32: coordinates out of range"},
      {Svg("<circle r='-1'/>"), "circle[1], offset 0 in r: must not be negative"},
      {Svg("<circle r='1em'/>"), "circle[1], offset 1 in r: unknown unit 'em'"},
      {Svg("<circle r='ten'/>"), "circle[1], offset 0 in r: expected a number, found 't'"},
      {Svg("<circle r='1 2'/>"),
       "circle[1], offset 2 in r: expected one length, found '2' after it"},
      {Svg("<circle r='5%'/>"),
       "circle[1], offset 1 in r: a percentage, and the drawing has no size"},
      {Svg("<rect width='1' height='1' rx='-1'/>"),
       "rect[1], offset 0 in rx: must not be negative"},
      {Svg("<polygon points='1 2 3'/>"),
       "polygon[1], offset 5 in points: expected a y coordinate, found the end"},
      {Svg("<polyline points='1 2 3;4'/>"),
       "polyline[1], offset 5 in points: expected a number, found ';'"},
      {Svg("<use href='#x'/>"), "use[1], offset 0 in href: there is no element with the id 'x'"},
      {Svg("<use href='other.svg#x'/>"),
       "use[1], offset 0 in href: refers to another file: other.svg#x"},
      {Svg("<line x2='1' style='transform:scale(2)'/>"),
       "line[1], offset 5: a transform in a style cannot be read, only the attribute"},
      {"<svg viewBox='0 0 1'/>", "svg[1], offset 0 in viewBox: expected 4 numbers"},
      {Svg("<svg viewBox='0 0 0 1'/>"), "svg[2], offset 0 in viewBox: the size must be positive"},
  };
  for (const auto& row : rows) {
    const TemporaryDirectory directory;
    const std::string input = directory.Write("in.svg", row.content);
    const ProcessResult result = Client({"draw", input, "-o", directory.File("out.svg")});
    EXPECT_EQ(result.exit_code, 2) << row.content;
    EXPECT_EQ(result.errors, "kurvo: " + input + ": " + row.message + "\n");
    EXPECT_EQ(result.output, "") << row.content;
    EXPECT_EQ(directory.FileCount(), 1u) << "an output was left for " << row.content;
  }
}

TEST(Client, UseThatShowsItselfIsRefused) {
  std::string laughs = "<line id='l0' x2='1'/>";
  for (int i = 1; i <= 12; ++i) {
    laughs += "<g id='l" + std::to_string(i) + "'>";
    for (int k = 0; k < 10; ++k) laughs += "<use href='#l" + std::to_string(i - 1) + "'/>";
    laughs += "</g>";
  }
  const struct {
    std::string content;
    const char* message;
  } rows[] = {
      {Svg("<g id='a'><use href='#a'/></g>"), "use is nested more than 32 deep: it shows itself"},
      {Svg("<defs>" + laughs + "</defs><use href='#l12'/>"),
       "use elements show more than 200000 elements"},
  };
  for (const auto& row : rows) {
    const TemporaryDirectory directory;
    const ProcessResult result = Client({"draw", directory.Write("in.svg", row.content)});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_NE(result.errors.find(row.message), std::string::npos) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
  }
}

TEST(Client, FilesAreNeverHalfWritten) {
  const TemporaryDirectory directory;
  const std::string good = directory.Write("good.svg", "<svg><line x2='1'/></svg>");
  const std::string bad = directory.Write("bad.svg", "<svg><line x2='1'/><path d='x'/></svg>");
  const std::string output = directory.Write("out.svg", "what was there");

  EXPECT_EQ(Client({"draw", bad, "-o", output}).exit_code, 2);
  EXPECT_EQ(FileContent(output), "what was there");

  const struct {
    std::string output;
    const char* problem;
  } rows[] = {
      {good, "is the input; choose another output"},
      {directory.File("none/out.svg"), "cannot be written: No such file or directory"},
      {directory.File("."), "cannot be written: not a regular file"},
  };
  for (const auto& row : rows) {
    const ProcessResult result = Client({"draw", good, "-o", row.output});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.errors, "kurvo: " + row.output + ": " + row.problem + "\n");
    EXPECT_EQ(result.output, "");
  }
  EXPECT_EQ(FileContent(good), "<svg><line x2='1'/></svg>");

  EXPECT_EQ(Client({"draw", directory.File("none.svg")}).errors,
            "kurvo: " + directory.File("none.svg") + ": cannot be opened\n");
  EXPECT_EQ(Client({"draw", directory.File("none.svg")}).exit_code, 2);

  EXPECT_EQ(Client({"draw", good, "-o", output}).exit_code, 0);
  EXPECT_EQ(FileContent(output).rfind("<svg", 0), 0u);
  EXPECT_EQ(directory.FileCount(), 3u);
}

TEST(Client, AFullDiskLeavesWhatWasThere) {
  const TemporaryDirectory directory;
  const std::string output = directory.Write("out.svg", "what was there");
  // Files of this shell end after one block.
  const ProcessResult result =
      RunProcess({"sh", "-c", "ulimit -f 1; exec \"$0\" \"$@\"", KURVO_TOOL, "draw", "-q",
                  KURVO_SAMPLES "/bracket.svg", "-o", output});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.errors, "kurvo: " + output + ": cannot be written: File too large\n");
  EXPECT_EQ(FileContent(output), "what was there");
  EXPECT_EQ(directory.FileCount(), 1u) << "a temporary file was left";
}

// The write that reaches the limit is where the signal comes.
void WriteInterrupted(const std::string& path, int interrupt) {
  static int signal_to_raise;
  signal_to_raise = interrupt;
  const rlimit limit = {512, 512};
  setrlimit(RLIMIT_FSIZE, &limit);
  signal(SIGXFSZ, [](int) { raise(signal_to_raise); });
  WriteWholeFile(path, std::string(4096, 'x'));
}

TEST(ClientDeathTest, AnInterruptLeavesNoTemporaryFile) {
  for (const int interrupt : {SIGHUP, SIGINT, SIGTERM}) {
    const TemporaryDirectory directory;
    EXPECT_EXIT(WriteInterrupted(directory.File("out.svg"), interrupt),
                testing::KilledBySignal(interrupt), "");
    EXPECT_EQ(directory.FileCount(), 0u) << interrupt;
  }
}

// A drawing without outlines is drawn, empty, and says what was left out.
TEST(Client, TextHasNoOutline) {
  const TemporaryDirectory directory;
  const std::string input = directory.Write("in.svg", "<svg><text>A</text><text>B</text></svg>");
  const ProcessResult result = Client({"draw", input, "-o", directory.File("out.svg")});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.errors, "kurvo: " + input + ": note: 2 text elements have no outline\n");
  EXPECT_TRUE(pugi::xml_document().load_file(directory.File("out.svg").c_str()));
}

}  // namespace
}  // namespace kurvo::tools
