#include "fit/pieces.h"

#include <utility>

#include "strand/check.h"
#include "strand/joints.h"

namespace kurvo::outline {
namespace {

void Put(Vec2 p, double* to) {
  to[0] = p.x;
  to[1] = p.y;
  to[2] = 0;
}

}  // namespace

void Pieces::Line(Vec2 end) { Add(LineBetween(at_, end), end); }

void Pieces::Arc(Vec2 centre, double radius, bool clockwise, Vec2 end) {
  auto [curve, arc] = OwnedCurve::New<KurvoArc>(CV_ARC);
  arc->radius = frame_.LengthOutwards(radius);
  Put(frame_.Outwards(centre), arc->centre);
  Put({0, 0}, arc->normal);
  arc->normal[2] = clockwise ? -1 : 1;
  Put(at_, arc->start);
  Put(end, arc->end);
  Add(std::move(curve), end);
}

void Pieces::Quadratic(Vec2 control, Vec2 end) {
  auto [curve, bezier] = OwnedCurve::New<KurvoBezier>(CV_BEZIER, int32_t{2});
  Put(at_, bezier->points[0]);
  Put(frame_.Outwards(control), bezier->points[1]);
  Put(end, bezier->points[2]);
  Add(std::move(curve), end);
}

void Pieces::Cubic(Vec2 control0, Vec2 control1, Vec2 end) {
  auto [curve, bezier] = OwnedCurve::New<KurvoBezier>(CV_BEZIER, int32_t{3});
  Put(at_, bezier->points[0]);
  Put(frame_.Outwards(control0), bezier->points[1]);
  Put(frame_.Outwards(control1), bezier->points[2]);
  Put(end, bezier->points[3]);
  Add(std::move(curve), end);
}

void Pieces::Copy(const Curve& curve) {
  OwnedCurve copy = CopyOf(curve);
  Ends ends;
  EndsOf(curve, ends);
  if (curve.type == CV_ARC) {
    auto& arc = *static_cast<KurvoArc*>(copy->data);
    Put({0, 0}, arc.normal);
    arc.normal[2] = BlockOf<KurvoArc>(curve).normal[2] < 0 ? -1 : 1;
    for (double* p : {arc.centre, arc.start, arc.end}) p[2] = 0;
  } else {
    auto& bezier = *static_cast<KurvoBezier*>(copy->data);
    for (int i = 0; i <= bezier.degree; ++i) bezier.points[i][2] = 0;
  }
  Add(std::move(copy), ends.end);
}

void Pieces::Add(OwnedCurve curve, Vec2 end) {
  curve.Get()->attr = source_->attr;
  curve.Get()->attr_p1 = source_->attr_p1;
  curve.Get()->attr_p2 = source_->attr_p2;
  chain_.Add(std::move(curve));
  at_ = end;
}

}  // namespace kurvo::outline
