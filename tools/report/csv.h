// Reports as tables of comma-separated values (RFC 4180).
#pragma once

#include <string>

#include "report/json.h"

namespace kurvo::tools {

// The records of the lists of a report as rows, a line for each, below the names of the columns;
// with several lists the first column names the list. A list within a record gives a row for each
// of its values beside what the record says. Points and boxes take a column for each coordinate,
// what is missing is empty, and numbers have the digits of the JSON. A unit that is known stands in
// the last column.
std::string CsvText(const Json& report, const std::string& unit);

}  // namespace kurvo::tools
