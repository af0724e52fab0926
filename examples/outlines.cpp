#include <cstdio>
#include <kurvo.hpp>
int main() {
  kurvo::Context context;
  auto plate = kurvo::Region::Rectangle({{0, 0}, {90, 40}}, context).value();
  auto hole = kurvo::Region::Circle({20, 20}, 8, context).value();
  plate.Add(hole[0], context).value();
  plate.SetRule(kurvo::Fill::kEvenOdd);
  for (const kurvo::Chain& loop : plate) {
    auto box = loop.Bounds(context).value();
    std::printf("%zu curves, %g wide\n", loop.size(), box.max.x - box.min.x);
  }
}
