// Notches and pages.
#include <fmt/format.h>

#include "geometry/curve_ask.h"
#include "report/json.h"
#include "report/reports.h"
#include "report/text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;

std::string SizeText(const Sheet& sheet, const Paper& paper) {
  return ShortNumber(sheet.mm_per_unit * paper.width) + " x " +
         ShortNumber(sheet.mm_per_unit * paper.height) + " mm";
}

}  // namespace

std::string NotchTable(Context& context, const std::vector<Notch>& notches) {
  TextTable table({{"outline"}, {"at", kRight}, {"point"}, {"notch"}, {""}});
  for (const Notch& notch : notches) {
    table.Add({notch.outline, ShortNumber(notch.at), PointText(notch.point),
               PointText(StartOf(context, notch.line)), PointText(EndOf(context, notch.line))});
  }
  return table.Text() +
         fmt::format("{} {}\n", notches.size(), notches.size() == 1 ? "notch" : "notches");
}

std::string NotchJson(Context& context, const std::string& name,
                      const std::vector<Notch>& notches) {
  JsonLines json;
  json.Add("file", name);
  json.AddList("notches", notches, [&](const Notch& notch, std::size_t) -> Json {
    return {{"outline", notch.outline},
            {"at", notch.at},
            {"point", notch.point},
            {"start", StartOf(context, notch.line)},
            {"end", EndOf(context, notch.line)}};
  });
  return json.Take();
}

std::string PageTable(const PageReport& report) {
  TextTable table({{"page"}, {"outlines", kRight}, {"printed"}});
  for (const Page& page : report.pages.pages)
    table.Add({PageName(page), std::to_string(page.outlines), BoundsText(page.printed)});
  const Pages& pages = report.pages;
  const std::size_t empty = pages.rows * pages.columns - pages.pages.size();
  return table.Text() + fmt::format("{} of {}, {} and {}, {} left out as empty\n",
                                    CountText(pages.pages.size(), "page"),
                                    SizeText(report.drawing.sheet, report.paper),
                                    CountText(pages.rows, "row"),
                                    CountText(pages.columns, "column"), empty);
}

std::string PageJson(const PageReport& report) {
  JsonLines json;
  json.Add("file", report.name);
  json.Add("rows", report.pages.rows);
  json.Add("columns", report.pages.columns);
  json.AddList("pages", report.pages.pages, [](const Page& page, std::size_t) -> Json {
    return {{"page", PageName(page)},    {"row", page.row + 1},     {"column", page.column + 1},
            {"outlines", page.outlines}, {"printed", page.printed}, {"sheet", page.sheet}};
  });
  return json.Take();
}

}  // namespace kurvo::tools
