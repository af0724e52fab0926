#include "support/curve_text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

namespace kurvo_test {
namespace {

Numbers ReadNumbers(std::istream& text) {
  Numbers numbers;
  for (double x; (text >> std::ws).good() && !std::strchr("|()!", text.peek()) && text >> x;)
    numbers.push_back(x);
  return numbers;
}

// Those that follow, each in parentheses.
std::vector<Owned> ReadCurves(std::istream& text) {
  std::vector<Owned> curves;
  while ((text >> std::ws).peek() == '(') {
    text.ignore();
    curves.push_back(Make(text));
    text >> std::ws;
    text.ignore();
  }
  return curves;
}

int32_t TypeOf(char letter) {
  constexpr char kLetters[] = "brBR";
  constexpr int32_t kTypes[] = {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE};
  return kTypes[std::strchr(kLetters, letter) - kLetters];
}

Owned OfDegree(int32_t type, int degree) {
  Numbers points, knots;
  for (int i = 0; i <= degree; ++i) {
    points.insert(points.end(), {4. * i / degree, std::sin(i)});
    if (IsRational(type)) points.push_back(1 + .5 * std::cos(i));
  }
  for (int i = 0; IsSpline(type) && i < 2 * degree + 2; ++i) knots.push_back(i > degree);
  return MakeFreeForm(type, points, knots);
}

struct Content {
  Numbers structure;  // types, orders and counts
  Numbers numbers;

  explicit Content(const Curve& cv) { Append(cv); }
  void Append(const Curve& cv) {
    const auto append = [&](const double* from, int count) {
      numbers.insert(numbers.end(), from, from + count);
    };
    structure.push_back(cv.data ? cv.type : -cv.type);
    if (!cv.data) return;
    if (cv.type == CV_LINE || cv.type == CV_ARC)
      return append(static_cast<double*>(cv.data), cv.type == CV_LINE ? 6 : 13);
    if (cv.type == CV_SEGCV) {
      const auto& block = *static_cast<KurvoSegcv*>(cv.data);
      structure.push_back(block.count);
      for (int i = 0; i < block.count; ++i) Append(block.curves[i]);
      return append(block.widths, block.count);
    }
    const FreeForm form(cv);
    structure.insert(structure.end(), {double(form.order), double(form.count)});
    append(form.points, form.count * form.stride);
    if (form.knots) append(form.knots, form.count + form.order);
  }
};

}  // namespace

Owned Line(double x0, double y0, double x1, double y1) {
  Owned cv;
  auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(cv.get(), CV_LINE));
  KurvoclSetCoord(line->start, x0, y0, 0);
  KurvoclSetCoord(line->end, x1, y1, 0);
  return cv;
}

Owned Arc(double x, double y, double r, double angle, double sweep) {
  Owned cv;
  auto* arc = static_cast<KurvoArc*>(KurvocvMallocCurve(cv.get(), CV_ARC));
  arc->radius = r;
  KurvoclSetCoord(arc->centre, x, y, 0);
  KurvoclSetCoord(arc->normal, 0, 0, sweep < 0 ? -1 : 1);
  KurvoclSetCoord(arc->start, x + r * std::cos(angle), y + r * std::sin(angle), 0);
  const double to = angle + sweep;
  KurvoclSetCoord(arc->end, x + r * std::cos(to), y + r * std::sin(to), 0);
  return cv;
}

Owned MakeFreeForm(int32_t type, const Numbers& points, const Numbers& knots) {
  const std::size_t size = IsRational(type) ? 3 : 2;
  const auto count = static_cast<int32_t>(points.size() / size);
  Owned cv;
  if (knots.empty())
    KurvocvMallocCurve(cv.get(), type, count - 1);
  else
    KurvocvMallocCurve(cv.get(), type, static_cast<int32_t>(knots.size()) - count, count);
  const FreeForm form(*cv);
  for (std::size_t i = 0; i < points.size() / size; ++i) {
    double* const to = form.point(static_cast<int>(i));
    KurvoclSetCoord(to, points[i * size], points[i * size + 1], 0);
    if (size == 3) to[3] = points[i * size + 2];
  }
  if (!knots.empty()) std::copy(knots.begin(), knots.end(), form.knots);
  return cv;
}

Owned MakeComposite(const Numbers& widths, std::vector<Owned>&& pieces) {
  Owned cv;
  auto* block = static_cast<KurvoSegcv*>(
      KurvocvMallocCurve(cv.get(), CV_SEGCV, static_cast<int32_t>(pieces.size())));
  std::copy(widths.begin(), widths.end(), block->widths);
  for (std::size_t i = 0; i < pieces.size(); ++i) block->curves[i] = pieces[i].Release();
  return cv;
}

Owned Make(std::istream& text) {
  char letter = 'e';
  text >> letter;
  if (letter == 'd' || text.peek() == '^') {
    while (text.good() && !std::isdigit(text.peek())) text.ignore();
    int n = 0;
    text >> n;
    if (letter != 'd') return OfDegree(TypeOf(letter), n);
    std::string nested = "l 0 0 1 2";
    for (; n > 0; --n) nested = "c 1 (" + nested + ")";
    return Make(nested);
  }
  const Numbers n = ReadNumbers(text);
  switch (letter) {
    case 'l':
      return Line(n[0], n[1], n[2], n[3]);
    case 'a':
      return Arc(n[0], n[1], n[2], n[3], n[4]);
    case 'b':
    case 'r':
      return MakeFreeForm(TypeOf(letter), n);
    case 'B':
    case 'R':
      text.ignore();  // the bar
      return MakeFreeForm(TypeOf(letter), n, ReadNumbers(text));
    case 'c':
      return MakeComposite(n, ReadCurves(text));
    default:
      return Owned(CV_LINE);
  }
}

Owned Make(const std::string& text) {
  std::istringstream stream(text);
  return Make(stream);
}

Chain::Chain(const std::string& text) {
  std::istringstream stream(text);
  *this = Chain(ReadCurves(stream));
}

Owned Copy(const Curve& cv) {
  Globals g;
  Owned copy;
  KurvocvCopyCurve(&cv, copy.get(), &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return copy;
}

std::string Text(const std::string& head, const Numbers& numbers) {
  std::ostringstream text;
  text.precision(17);
  text << head;
  for (const double x : numbers) text << ' ' << x;
  return text.str();
}

FreeForm::FreeForm(const Curve& cv) {
  const auto* const block = static_cast<const char*>(cv.data);
  std::memcpy(&order, block, sizeof order);
  std::memcpy(&points, block + 8, sizeof points);
  const bool spline = IsSpline(cv.type);
  if (spline) {
    std::memcpy(&count, block + 4, sizeof count);
    std::memcpy(&knots, block + 16, sizeof knots);
  } else {
    count = ++order;
    knots = nullptr;
  }
  stride = IsRational(cv.type) ? 4 : 3;
}

Numbers Knots(const Curve& cv) {
  const FreeForm form(cv);
  return {form.knots, form.knots + form.order + form.count};
}

Numbers ControlPoints(const Curve& cv) {
  const FreeForm form(cv);
  return {form.points, form.point(form.count)};
}

Numbers AllNumbers(const Curve& cv) { return Content(cv).numbers; }

double LargestGap(const Numbers& a, const Numbers& b) {
  if (a.size() != b.size()) return kInfinity;
  double gap = 0;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!(gap >= std::fabs(a[i] - b[i]))) gap = std::fabs(a[i] - b[i]);
  return gap;
}

testing::AssertionResult IsCurve(const Curve& cv, const Curve& want, double bound) {
  const Content a(cv), b(want);
  if (a.structure == b.structure && bound >= LargestGap(a.numbers, b.numbers))
    return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << Text("structure", a.structure) << Text(", numbers", a.numbers)
         << Text("\nmust be", b.structure) << Text(", ", b.numbers);
}

testing::AssertionResult IsCurve(const Curve& cv, const std::string& want, double bound) {
  return IsCurve(cv, *Make(want), bound);
}

std::pair<double, double> Domain(const Curve& cv) {
  if (IsSpline(cv.type)) {
    const FreeForm form(cv);
    const double start = form.knots[form.order - 1];
    return {start, form.knots[form.count] - start};
  }
  if (cv.type != CV_SEGCV) return {0, 1};
  const auto& b = *static_cast<KurvoSegcv*>(cv.data);
  double sum = 0;
  for (int i = 0; i < b.count; ++i) sum += b.widths[i];
  return {0, sum};
}

Point At(const Curve& cv, double t) {
  Globals g;
  Point p;
  KurvocvPosition(&cv, t, p, &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return p;
}

Point PointAt(const Curve& cv, double fraction) {
  const auto [start, length] = Domain(cv);
  return At(cv, start + fraction * length);
}

}  // namespace kurvo_test
