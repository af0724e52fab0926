#include "robust/table.h"

#include <ostream>

namespace kurvo_test {

void PrintTo(const Entry& entry, std::ostream* out) { *out << entry.name; }

const std::vector<Entry>& Table() {
  static const std::vector<Entry> kTable = [] {
    std::vector<Entry> table;
    for (const auto part : {StateEntries(), RecordEntries(), VectorEntries(), IncidenceEntries(),
                            QueryEntries(), BuildEntries(), ChangeEntries(), RelationEntries()})
      table.insert(table.end(), part.begin(), part.end());
    return table;
  }();
  return kTable;
}

}  // namespace kurvo_test
