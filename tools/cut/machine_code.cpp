#include "cut/machine_code.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr double kSteps = 1e4;  // that numbers are rounded to, in a millimetre
constexpr double kWidestArc = 2 * std::numbers::pi / 3;
constexpr double kSweepSlack = 1e-9;  // relative

// mm: an arc that leaves its chord by less is a line. Its centre would not say where it lies.
constexpr double kFlat = 1e-4;

double Rounded(double value) { return std::round(value * kSteps) / kSteps; }
Point Rounded(Point p) { return {Rounded(p.x), Rounded(p.y)}; }

std::string Word(char letter, double value) {
  std::string text = fmt::format("{:.4f}", value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return letter + (text == "-0" ? "0" : text);
}

class CodeWriter {
 public:
  explicit CodeWriter(const MachineOptions& options) : options_(options) {}

  std::string Write(const CutPlan& plan) {
    const bool is_grbl = options_.dialect == Dialect::kGrbl;
    text_ = is_grbl ? "G21 G90 G17 G94\nM5\n" : "%\nG21 G90 G91.1 G17 G94 G40 G61\nM5\n";
    for (const MachineCut& cut : plan.cuts) WriteCut(cut);
    text_ += "G0 X0 Y0\nM2\n";
    if (!is_grbl) text_ += "%\n";
    return std::move(text_);
  }

 private:
  void WriteCut(const MachineCut& cut) {
    at_ = Rounded((cut.lead_in.empty() ? cut.segments : cut.lead_in).front().from);
    text_ += "G0 " + Place(at_) + "\n";
    text_ +=
        (options_.dialect == Dialect::kGrbl ? "M4 " : "M3 ") + Word('S', options_.power) + "\n";
    const std::string feed = " " + Word('F', options_.feed);
    says_feed_ = feed;
    for (const auto* segments : {&cut.lead_in, &cut.segments}) {
      for (const DxfSegment& segment : *segments) WriteSegment(segment);
    }
    text_ += "M5\n";
  }

  void WriteSegment(const DxfSegment& segment) {
    const double parts = std::ceil(std::fabs(segment.sweep) / kWidestArc - kSweepSlack);
    if (segment.sweep == 0) return WriteLine(segment.to);
    for (const DxfSegment& part : Divided(segment, std::max(1, static_cast<int>(parts))))
      WriteArc(part);
  }

  void WriteLine(Point to) {
    const Point end = Rounded(to);
    if (end.x == at_.x && end.y == at_.y) return;
    text_ += "G1 " + Place(end) + Feed();
    at_ = end;
  }

  // The centre lies on the bisector of the rounded ends, where the sagitta s is that of the arc:
  // r = (c^2 + s^2) / (2 s) with half the chord c.
  void WriteArc(const DxfSegment& arc) {
    const Point end = Rounded(arc.to), half = 0.5 * (end - at_);
    const double s = arc.radius * (1 - std::cos(arc.sweep / 2)), c = Size(half);
    if (!(s > kFlat) || c == 0) return WriteLine(arc.to);
    const double height = (c - s) * (c + s) / (2 * s);  // of the centre above the chord
    const double sign = arc.sweep > 0 ? 1 : -1;
    const Point offset = half + (sign * height / c) * Point{-half.y, half.x};
    text_ += (arc.sweep > 0 ? "G3 " : "G2 ") + Place(end) + " " + Word('I', Rounded(offset.x)) +
             " " + Word('J', Rounded(offset.y)) + Feed();
    at_ = end;
  }

  static std::string Place(Point p) { return Word('X', p.x) + " " + Word('Y', p.y); }

  // With the first line of a cut.
  std::string Feed() { return std::exchange(says_feed_, {}) + "\n"; }

  const MachineOptions options_;
  std::string text_;
  std::string says_feed_;
  Point at_;  // as it is written
};

}  // namespace

std::string MachineCode(const CutPlan& plan, const MachineOptions& options) {
  return CodeWriter(options).Write(plan);
}

}  // namespace kurvo::tools
