// What the C++ face adds to the functions that it calls: ownership, errors, traps taken away.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>
#include <vector>

#include "kurvo.hpp"
#include "robust/allocation.h"
#include "support/basics.h"

namespace kurvo {
namespace {

using kurvo_test::kInfinity;
constexpr double kPi = std::numbers::pi;

// All that makes, takes over or moves something, answers thrown away; its last code.
int UseAll() {
  Context c;
  const Point points[] = {{0, 0}, {1, 3}, {3, -2}, {4, 0}};
  const double knots[] = {0, 0, 0, 0, 1, 1, 1, 1}, cuts[] = {0.25, 0.5};
  const auto cubic = Curve::Bezier(points), line = Curve::Line({0, 0}, {4, 0});
  const auto spline = Curve::BSpline(4, points, knots), circle = Curve::Arc({1, 0}, 2, 0, 7);
  const auto wide = Curve::Arc({2, 0}, {4, 0}, {3, -1}), fit = Curve::Through(points, 3, c);
  int code = c.Last().code;
  for (const auto* made : {&cubic, &line, &spline, &circle, &wide, &fit}) {
    if (!*made) return made->error().code;
    const Curve& curve = **made;
    Curve copy = curve.Copy(c).value_or(Curve());
    Curve moved = std::move(copy);
    copy = std::move(moved);
    const auto run = [&](const auto& result) { code = result ? code : result.error().code; };
    run(curve.Converted(CV_SEGCV, c));
    run(curve.Converted(CV_RBSPLINE, c));
    run(curve.Split(0.5, c));
    run(curve.Split(cuts, c));
    run(curve.Intersect(*cubic, c));
    run(curve.Offset(0.1, 0.01, c));
    Curve taken[] = {std::move(copy), curve.Copy(c).value_or(Curve())};
    auto chain = Chain::Of(taken);
    if (!chain) return chain.error().code;
    run(chain->Copy(c));
    run(chain->Joined(c));
    run(chain->Append(curve, c));
    chain->begin()->Clear();
    auto block = Allocate(16, c);
    run(block);
    if (block) run(Reallocate(*block, 32, c));
    run(Parameters::Of(cuts));
    Cvseq handed = chain->Release();
    EXPECT_EQ(chain->size(), 0U);
    Chain::Adopt(handed);
  }
  const auto run = [&](const auto& result) { code = result ? code : result.error().code; };
  const auto disc = Region::Circle({1, 2}, 3, c), box = Region::Rectangle({{0, 0}, {9, 4}}, c);
  if (!disc || !box) return disc ? box.error().code : disc.error().code;
  auto copy = box->Copy(c);
  run(copy);
  if (copy) run(copy->Add((*disc)[0], c));
  const auto packed = box->Pack(c);
  run(packed);
  if (packed) run(Region::Unpack(packed->words, packed->numbers, c));
  const auto many = Region::Combine(Operation::kUnion, {&*disc, 1}, c);
  if (!many && many.error().code == KURVO_ERR_MEMORY) run(many);
  return code;
}

TEST(Face, LeavesNothingBehindAlsoWhereMemoryFails) {
  const int64_t before = kurvo_test::LiveBlocks();
  UseAll();
  EXPECT_EQ(kurvo_test::LiveBlocks(), before);
  kurvo_test::WatchMemory({}, 0xFF);
  UseAll();
  const int64_t requests = kurvo_test::UnwatchMemory().requests;
  ASSERT_GT(requests, 100);
  for (const bool from_then : {false, true})
    for (int64_t granted = 0; granted < requests; ++granted) {
      kurvo_test::WatchMemory({granted, from_then}, 0xFF);
      const int code = UseAll();
      kurvo_test::UnwatchMemory();
      ASSERT_EQ(kurvo_test::LiveBlocks(), before) << granted;
      ASSERT_TRUE(!from_then || code != KURVO_ERR_NONE) << granted;
    }
}

TEST(Face, MovedFromIsEmptyAndAnswers) {
  Context c;
  Curve curve = Curve::Line({0, 0}, {1, 0}).value();
  curve.Get()->attr = 7;
  Curve other = std::move(curve);
  EXPECT_TRUE(curve.Empty());                                     // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(curve.Position(0, c).error().code, KURVO_ERR_CURVE);  // NOLINT
  EXPECT_EQ(curve.Start(c).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(curve.Derivative(0, c).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(curve.Split(0.5, c).error().code, KURVO_ERR_RANGE);
  EXPECT_EQ(curve.NearestTo({}, c).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(curve.ClosestTo(other, c).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(curve.Intersect(other, c).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(curve.size(), 0U);
  EXPECT_EQ(other.Get()->attr, 7);
  Curve& itself = other;
  other = std::move(itself);
  EXPECT_EQ(other.Position(0.5, c).value(), (Point{0.5, 0, 0}));
  Chain chain = Chain::Of({&other, 1}).value();
  EXPECT_TRUE(other.Empty());
  const Chain taken = std::move(chain);
  EXPECT_EQ(chain.size(), 0U);  // NOLINT
  EXPECT_EQ(taken.size(), 1U);
}

TEST(Face, ErrorsTellTheirStory) {
  Context c;
  const Curve empty, line = Curve::Line({0, 0}, {1, 0}).value();
  const auto none = empty.Position(0.5, c);
  ASSERT_FALSE(none);
  EXPECT_STREQ(none.error().Name(), "KURVO_ERR_CURVE");
  EXPECT_STREQ(none.error().function, "KurvocvPosition");
  EXPECT_EQ(none.error().Severity(), KURVO_SEVERITY_ERROR);
  EXPECT_FALSE(c.Ok());
  EXPECT_THROW(static_cast<void>(none.value()), BadResult);
  EXPECT_EQ(none.value_or(Point{1, 2, 3}), (Point{1, 2, 3}));
  EXPECT_EQ(line.Position(0.5, c)->x, 0.5);  // not silenced by the error before it
  EXPECT_TRUE(c.Ok());

  const auto unit = Unit({0, 0, 0}, c);
  EXPECT_TRUE(unit);
  ASSERT_TRUE(c.Warning());
  EXPECT_STREQ(c.Warning()->Name(), "KURVO_WARN_SHORT_VECTOR");
  EXPECT_STREQ(Error{0x7FFFFFFF}.Name(), "");

  // Makers refuse sizes that no record has.
  const Point points[] = {{0, 0}, {1, 1}};
  const double knots[] = {0, 0, 1, 1};
  EXPECT_TRUE(Curve::BSpline(2, points, knots));
  EXPECT_EQ(Curve::BSpline(3, points, knots).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(Curve::BSpline(0, points, knots).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(Curve::BSpline(2, points, {knots, 3}).error().code, KURVO_ERR_CURVE);
  EXPECT_EQ(Curve::Bezier(std::span<const Point>()).error().code, KURVO_ERR_CURVE);
}

TEST(Face, RegionsOwnTheirLoops) {
  Context c;
  Region plate = Region::Rectangle({{0, 0}, {9, 4}}, c).value();
  ASSERT_TRUE(plate.Add(Region::Circle({4, 2}, 1, c).value()[0], c));
  plate.SetRule(Fill::kEvenOdd);
  ASSERT_EQ(plate.size(), 2U);
  EXPECT_EQ(plate[0].size(), 4U);
  EXPECT_NEAR(plate[1].Bounds(c).value().max.x, 5, 1e-12);
  const Packed packed = plate.Pack(c).value();
  Region again = Region::Unpack(packed.words, packed.numbers, c).value();
  EXPECT_EQ(again.Rule(), Fill::kEvenOdd);
  EXPECT_TRUE(std::ranges::equal(again.Pack(c).value().numbers, packed.numbers));
  Region other = std::move(again);
  EXPECT_EQ(again.size(), 0U);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(Region::Adopt(other.Release()).size(), 2U);

  // Joints are closed as far as is said; what fails in an expression is what comes of it.
  Curve half[] = {Curve::Arc({0, 0}, 2, 0, kPi).value()};
  const Chain open = Chain::Of(half).value();
  const auto refused = Region::Of(open, c);
  EXPECT_EQ(refused.error().code, KURVO_ERR_CHAIN_ENDS);
  EXPECT_EQ(Region::Of(open, c, 4).value()[0].size(), 2U);
  EXPECT_EQ((plate - (refused ^ plate)).error().code, KURVO_ERR_CHAIN_ENDS);
  EXPECT_EQ((plate & refused).error().code, KURVO_ERR_CHAIN_ENDS);
  EXPECT_STREQ(Error{KURVO_ERR_TOO_LARGE}.Name(), "KURVO_ERR_TOO_LARGE");
}

TEST(Face, OptionsAreHandedOver) {
  const double dashes[] = {2, 1};
  double asked = 0;
  const Options options{.tol = 1,
                        .gap = 2,
                        .miter_limit = 3,
                        .dashes = dashes,
                        .phase = 4,
                        .join = Join::kBevel,
                        .cap = Cap::kSquare,
                        .with_origins = true,
                        .proceed = [&](double done) { return asked = done, false; }};
  const KurvoOptions all = options.Record(), none = Options().Record();
  const KurvoOptions want = {sizeof want, KURVO_WITH_ORIGINS, 1,        2,      3, 4, 2, 2, 2, 0,
                             dashes,      all.proceed,        all.user, nullptr};
  EXPECT_EQ(std::memcmp(&all, &want, sizeof want), 0);
  EXPECT_EQ(all.proceed(0.5, all.user), 0);
  EXPECT_EQ(asked, 0.5);
  KurvoOptions defaults{};
  defaults.size = sizeof defaults;
  EXPECT_EQ(std::memcmp(&none, &defaults, sizeof none), 0);
}

TEST(Face, ScopesPutBackWhatTheyChanged) {
  Context c;
  {
    EpsilonScope scope(c, 1e-3);
    Epsilon0Scope scope0(c, 1e-4);
    EXPECT_EQ(c.Epsilon(), 1e-3);
    EXPECT_EQ(c.Epsilon0(), 1e-4);
    EpsilonScope refused(c, -1);
    EXPECT_EQ(c.Epsilon(), 1e-3);
  }
  EXPECT_EQ(c.Epsilon(), 1e-6);
  EXPECT_EQ(c.Epsilon0(), 1e-6);
  for (int i = 0; i < KURVO_STACK_SIZE; ++i) KurvoclPushEpsilon(1e-4, c.Get());
  { EpsilonScope too_many(c, 1e-3); }
  EXPECT_EQ(c.Get()->depth, KURVO_STACK_SIZE);
}

// Against the nearest of many points of the curve.
TEST(Face, NearestIsTheTrueOne) {
  Context c;
  kurvo_test::Random random;
  const auto point = [&] { return Point{random.Uniform(-1, 2), random.Uniform(-1, 2), 0}; };
  for (int round = 0; round < 300; ++round) {
    std::vector<Point> points(2 + static_cast<std::size_t>(round % 4));
    std::vector<WeightedPoint> weighted;
    for (Point& p : points) {
      p = point();
      weighted.push_back({p.x, p.y, 0, random.Uniform(0.5, 2)});
    }
    Curve inner[] = {Curve::Arc(point(), 1, 1, 4).value(), Curve::Bezier(points).value()};
    Curve outer[] = {Curve::RationalBezier(weighted).value(), Curve::Composite(inner).value()};
    outer[1] = outer[1].ToChain(c).value()[1].Copy(c).value();
    const Curve curve = round % 3 == 0   ? Curve::Bezier(points).value()
                        : round % 3 == 1 ? Curve::RationalBezier(weighted).value()
                                         : Curve::Composite(outer).value();
    const Point p = point();
    const Nearest nearest = curve.NearestTo(p, c).value();
    double least = kInfinity;
    const Interval all = curve.Domain();
    for (int i = 0; i <= 2000; ++i) {
      const double t = all.from + (all.to - all.from) * i / 2000;
      least = std::min(least, Distance(curve.Position(t, c).value(), p));
    }
    EXPECT_LE(nearest.distance, least + 1e-9) << round;
    EXPECT_NEAR(Distance(curve.Position(nearest.t, c).value(), p), nearest.distance, 1e-9) << round;
  }
}

TEST(Face, CirclesAndWideArcsStayWhole) {
  Context c;
  for (const bool ccw : {true, false}) {
    const Curve circle = Curve::Arc({1, 2}, {4, 6}, {4, 6}, ccw).value();
    ASSERT_EQ(circle.size(), 4U);
    EXPECT_NEAR(circle.Length(c).value(), 10 * kPi, 1e-12);
    EXPECT_EQ(circle.Start(c).value(), circle.End(c).value());
    EXPECT_TRUE(circle.Derivative(0.4, c));  // also on arc pieces
    EXPECT_NEAR(Size(circle.Curvature(1, c).value()), 0.2, 1e-12);
  }
  EXPECT_EQ(Curve::Arc({0, 0}, 1, 0, 2 * kPi).value().size(), 4U);
  EXPECT_EQ(Curve::Arc({0, 0}, {0, 0}, {0, 0}).value().Type(), CV_ARC);
  const KurvoArc record = {2, {1, 0, 0}, {0, 0, -1}, {3, 0, 0}, {3, 0, 0}};
  EXPECT_EQ(std::memcmp(Curve::Arc(record).value().AsArc(), &record, sizeof record), 0);

  for (const double sweep : {1.0, kPi, 4.0, 6.2, -kPi, -4.0, -6.2}) {
    Curve arc = Curve::Arc({0, 0}, 1, 0.3, sweep).value();
    Curve onward = Curve::Line(arc.End(c).value(), {5, 5}).value();
    const auto check = [&](const Result<Curve>& made, double share) {
      ASSERT_TRUE(made) << sweep;
      for (const double t : {0.1, 0.35, 0.5, 0.8}) {
        const Point p = made->Position(t * share, c).value();
        const double angle = std::remainder(std::atan2(p.y, p.x) - 0.3 - sweep * t, 2 * kPi);
        EXPECT_NEAR(std::hypot(p.x, p.y), 1, 1e-9) << sweep;
        EXPECT_NEAR(angle, 0, std::fabs(sweep) * 0.03) << sweep;  // not by angle quite
      }
    };
    check(arc.Converted(CV_SEGCV, c), 1);
    check(arc.Converted(CV_RBSPLINE, c), 1);
    EXPECT_EQ(arc.Converted(CV_RBEZIER, c).has_value(), std::fabs(sweep) < 3) << sweep;
    const double whole = std::fabs(sweep) + onward.Length(c).value();
    Curve both[] = {std::move(arc), std::move(onward)};
    check(Chain::Of(both).value().Joined(c), std::fabs(sweep) / whole);
  }
}

TEST(Face, AttributesAreCopied) {
  Context c;
  Curve pieces[] = {Curve::Line({0, 0}, {1, 0}).value(), Curve::Line({1, 0}, {0, 0}).value()};
  pieces[1].Get()->attr_p2 = 5;
  Curve composite = Curve::Composite(pieces).value();
  composite.Get()->attr = 3;
  const Curve copy = composite.Copy(c).value();
  EXPECT_EQ(copy.Get()->attr, 3);
  EXPECT_EQ(copy.begin()[1].Get()->attr_p2, 5U);
  Chain chain = composite.ToChain(c).value();
  EXPECT_EQ(chain[1].Get()->attr_p2, 5U);
  chain[0].Get()->attr = 9;
  ASSERT_TRUE(chain.Append(chain[0], c));
  EXPECT_EQ(chain.Copy(c).value()[2].Get()->attr, 9);
  EXPECT_EQ(chain.Append(chain[0], c).error().code, KURVO_ERR_CHAIN_BREAK);
}

TEST(Face, ViewsShowTheRecord) {
  Context c;
  const Point points[] = {{0, 0}, {1, 2}, {3, 2}, {4, 0}, {5, 5}, {6, 1}};
  const double knots[] = {2, 2, 2, 3, 4, 5, 7, 7, 7};
  const Curve spline = Curve::BSpline(3, points, knots).value();
  EXPECT_TRUE(std::ranges::equal(spline.ControlPoints(), points));
  EXPECT_TRUE(std::ranges::equal(spline.KnotVector(), knots));
  EXPECT_TRUE(spline.WeightedPoints().empty());
  EXPECT_EQ(spline.Domain().from, 2);
  EXPECT_EQ(spline.Domain().to, 7);
  EXPECT_EQ(spline.size(), 1U);
  const auto name = [](const auto& block) -> int {
    if constexpr (requires { block.knots; })
      return block.order;
    else
      return 0;
  };
  EXPECT_EQ(spline.Visit(name), 3);
  ASSERT_TRUE(spline.As<KurvoBSpline>());
  EXPECT_EQ(spline.As<KurvoBSpline>()->order, 3);
  EXPECT_FALSE(spline.As<KurvoBezier>() || spline.AsArc());
  EXPECT_STREQ(TypeName(spline.Type()), "B-spline");
  EXPECT_STREQ(TypeName(Curve().Type()), "");
  EXPECT_EQ(Curve().Visit(name), 0);

  Curve one[] = {Curve::Bezier({{0, 0}, {1, 2}, {3, 2}, {4, 0}, {5, 5}, {6, 1}}).value()};
  const auto halves = one[0].Split(0.5, c).value();  // of any degree
  EXPECT_EQ(halves.first.End(c).value(), halves.second.Start(c).value());
  const Curve composite = Curve::Composite(one).value();
  EXPECT_EQ(composite.Bounds(c).value().max.x, 6);  // also of one piece
  EXPECT_EQ(Curve::Composite({}).value().Bounds(c).error().code, KURVO_ERR_CURVE);

  const Curve line = Curve::Line({0, 1}, {6, 1}).value();
  const Meetings meetings = line.Intersect(spline, c).value();
  ASSERT_GT(meetings.a.size(), 1U);
  for (std::size_t i = 0; i < meetings.a.size(); ++i)
    EXPECT_TRUE(Same(line.Position(meetings.a[i], c).value(),
                     spline.Position(meetings.b[i], c).value(), c));
}

TEST(Face, ChainsAreSeenWithoutOwningThem) {
  Context c;
  std::vector<Curve> lines;
  for (int i = 0; i < 3; ++i) lines.push_back(Curve::Line({i * 1.0, 0}, {i + 1.0, 0}).value());
  const auto length = [&](const ChainView& chain) { return chain->Length(c).value(); };
  EXPECT_EQ(length(lines), 3);
  EXPECT_EQ(length(lines[1]), 1);
  EXPECT_EQ(length(std::vector<Curve>()), 0);
  EXPECT_EQ(lines[2].End(c).value().x, 3);
  Curve composite = Curve::Composite(lines).value();
  EXPECT_EQ(length(composite), 3);
  const Curve piece = std::move(composite.begin()[1]);
  EXPECT_EQ(piece.Start(c).value().x, 1);
  EXPECT_FALSE(composite.Length(c));
}

TEST(Face, ChainsLocate) {
  Context c;
  const Curve circle = Curve::Arc({0, 0}, 2, 0, 2 * kPi).value();
  const Chain chain = circle.ToChain(c).value();
  EXPECT_EQ(chain.Locate({0, 0}, c).value(), Where::kInside);
  EXPECT_EQ(chain.Locate({2, 0}, c).value(), Where::kOn);
  EXPECT_EQ(chain.Locate({3, 0}, c).value(), Where::kOutside);
  EXPECT_EQ(chain.Sense(c).value().normal.z, 1);
  EXPECT_NEAR(chain.Bounds(c).value().min.x, -2, 1e-12);
  EXPECT_TRUE(std::ranges::equal(chain.Vertices(0.1, c).value(), chain.Flatten(0.1, c)->points));
}

}  // namespace
}  // namespace kurvo
