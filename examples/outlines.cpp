#include <cstdio>
#include <kurvo.hpp>
int main() {
  kurvo::Context context;
  auto plate = kurvo::Region::Rectangle({{0, 0}, {90, 40}}, context).value();
  auto hole = kurvo::Region::Circle({20, 20}, 8, context).value();
  plate.Add(hole[0], context).value();
  plate.SetRule(kurvo::Fill::kEvenOdd);
  for (const kurvo::Chain& loop : plate) {
    auto nearest = loop.NearestTo({40, 20}, context).value();
    std::printf("%.3f long, %g away\n", loop.Length(context).value(), nearest.distance);
  }
  if (plate.Locate({20, 20}, context)->where == kurvo::Where::kOutside) std::puts("a hole");
}
