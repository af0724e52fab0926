// Letters as fonts have them, 1000 units high: outer contours clockwise, of lines, quadratics and
// cubics. Tests and benchmarks share them.
#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace kurvo_test {

// The last line of a contour is left out.
// clang-format off
constexpr const char* kGlyphs[] = {
    // o, e, 8, B, k; O, S, a, f
    "M500 0Q250 0 125 125Q0 250 0 500Q0 750 125 875Q250 1000 500 1000Q750 1000 875 875Q1000 750 1000 500Q1000 250 875 125Q750 0 500 0M500 150Q675 150 762 237Q850 325 850 500Q850 675 762 762Q675 850 500 850Q325 850 237 762Q150 675 150 500Q150 325 237 237Q325 150 500 150",
    "M1000 420L160 420Q180 285 270 217Q360 150 510 150Q700 150 850 270L930 140Q740 0 510 0Q270 0 135 135Q0 270 0 500Q0 730 135 865Q270 1000 510 1000Q750 1000 875 860Q1000 720 1000 500M840 560Q820 700 735 775Q650 850 510 850Q370 850 280 775Q190 700 165 560",
    "M260 530Q160 600 160 740Q160 860 255 930Q350 1000 500 1000Q650 1000 745 930Q840 860 840 740Q840 600 740 530Q870 460 870 300Q870 160 765 80Q660 0 500 0Q340 0 235 80Q130 160 130 300Q130 460 260 530M500 110Q730 110 730 300Q730 470 500 470Q270 470 270 300Q270 110 500 110M500 570Q700 570 700 735Q700 890 500 890Q300 890 300 735Q300 570 500 570",
    "M100 0L100 1000L520 1000Q690 1000 780 930Q870 860 870 740Q870 590 720 530Q910 480 910 280Q910 140 805 70Q700 0 520 0M240 110L510 110Q640 110 705 155Q770 200 770 290Q770 465 510 465L240 465M240 575L500 575Q730 575 730 735Q730 890 500 890L240 890",
    "M100 0L100 1000L240 1000L240 540L700 1000L880 1000L420 545L900 0L720 0L320 450L240 370L240 0",
    "M500 0C224 0 0 200 0 480C0 790 224 1000 500 1000C776 1000 1000 790 1000 480C1000 200 776 0 500 0M500 120C690 120 850 280 850 490C850 720 690 880 500 880C310 880 150 720 150 490C150 280 310 120 500 120",
    "M860 800C780 930 660 1000 500 1000C290 1000 140 890 140 720C140 560 250 480 470 430C680 385 740 340 740 260C740 170 640 110 500 110C370 110 260 170 190 270L90 190C170 70 320 0 500 0C730 0 880 110 880 275C880 430 780 510 540 565C340 610 280 650 280 730C280 820 370 890 500 890C610 890 700 840 760 740",
    "M820 0L680 0L680 140C600 50 500 0 380 0C180 0 60 100 60 270C60 450 200 540 460 550L680 560C680 700 600 770 470 770C370 770 260 740 160 680L160 820C270 870 370 900 480 900C700 900 820 780 820 560M680 440L470 430C290 420 200 370 200 275C200 180 270 120 390 120C560 120 680 250 680 420",
    "M120 0L330 680L180 680L210 780L360 780L400 860C450 960 560 1000 730 1000C790 1000 850 990 900 970L870 880C830 900 790 905 745 905C640 905 570 890 540 840L505 780L760 780L730 680L470 680L260 0",
    // R and % of contours that overlap, a ribbon that crosses itself
    "M100 0L100 1000L540 1000Q860 1000 860 720Q860 430 540 430L240 430L240 0M240 545L530 545Q715 545 715 720Q715 885 530 885L240 885M420 500L560 500L900 0L740 0",
    "M240 560Q140 560 80 620Q20 680 20 780Q20 880 80 940Q140 1000 240 1000Q340 1000 400 940Q460 880 460 780Q460 680 400 620Q340 560 240 560M240 670Q350 670 350 780Q350 890 240 890Q130 890 130 780Q130 670 240 670M760 0Q660 0 600 60Q540 120 540 220Q540 320 600 380Q660 440 760 440Q860 440 920 380Q980 320 980 220Q980 120 920 60Q860 0 760 0M760 110Q870 110 870 220Q870 330 760 330Q650 330 650 220Q650 110 760 110M180 0L700 1000L820 1000L300 0",
    "M0 0C1500 1000 -500 1000 1000 0L1000 -100C-700 1100 1700 1100 0 -100",
};
// clang-format on
constexpr int kGlyphCount = sizeof kGlyphs / sizeof *kGlyphs;
constexpr int kSimpleGlyphCount = 9;  // the first ones, whose contours do not cross

// Control points of the pieces of a contour: 2 of a line, 3 or 4 of a curve.
template <class Point>
using Contour = std::vector<std::vector<Point>>;

// place(x, y) makes a point of what is written.
template <class Place, class Point = decltype(std::declval<Place>()(0., 0.))>
std::vector<Contour<Point>> ContoursOf(const std::string& path, const Place& place) {
  std::istringstream text(path);
  std::vector<Contour<Point>> contours;
  Point at = {};
  const auto next = [&] {
    double x = 0, y = 0;
    text >> x >> y;
    return place(x, y);
  };
  const auto close = [&] {
    if (contours.empty()) return;
    const Point start = contours.back()[0][0];
    if (at.x != start.x || at.y != start.y) contours.back().push_back({at, start});
  };
  bool is_new = true;
  for (char command; text >> command;) {
    if (command == 'M') {
      close();
      at = next();
      is_new = true;
      continue;
    }
    if (is_new) contours.emplace_back();
    is_new = false;
    std::vector<Point> piece = {at};
    for (int n = command == 'L' ? 1 : command == 'Q' ? 2 : 3; n > 0; --n) piece.push_back(next());
    at = piece.back();
    contours.back().push_back(piece);
  }
  close();
  return contours;
}

}  // namespace kurvo_test
